#pragma once

#include "platform/controls/control.h"

namespace veldran::controls {

/// A control without a picture that stands in the tab order: reaching it with the Tab key raises `GotFocus`,
/// and the form decides where the focus goes from there. Its view paints nothing and takes no mouse.
class FocusCatcher final : public Control {
public:
    using Control::Control;
};

} // namespace veldran::controls
