#pragma once

namespace veldran::qt {

/// A twip is 1/1440 inch. Views measure in logical pixels of 1/96 inch, whatever the scale of the screen.
inline constexpr int twipsPerPixel = 15;

} // namespace veldran::qt
