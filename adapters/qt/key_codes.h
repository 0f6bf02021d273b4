#pragma once

#include <Qt>

class QKeyEvent;

namespace veldran::qt {

/// The control suite's code of a pressed key; 0 for keys that its events do not carry.
int keyCodeOf(const QKeyEvent& event);
/// The control suite's shift bits.
int shiftOf(Qt::KeyboardModifiers modifiers);
/// The control suite's mouse button; 0 for buttons it does not know.
int buttonOf(Qt::MouseButton button);

} // namespace veldran::qt
