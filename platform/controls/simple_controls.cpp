#include "platform/controls/simple_controls.h"

namespace veldran::controls {

void Label::StandBehind(const Control* control) {
    if (control != behind_) {
        behind_ = control;
        Changed.raise();
    }
}

void Button::ClickFromView() {
    if (CanTakeFocus()) {
        Click.raise();
    }
}

void ResizeControl::Start() {
    started_ = true;
    Changed.raise();
}

bool ResizeControl::MayResize() const {
    bool may = false;
    QueryResize.raise(may);
    return may;
}

} // namespace veldran::controls
