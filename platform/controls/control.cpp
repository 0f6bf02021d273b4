#include "platform/controls/control.h"

#include "platform/controls/form.h"

#include <algorithm>

namespace veldran::controls {

Control::Control(std::string name) : parent_(nullptr), name_(std::move(name)) {}

Control::Control(Container& parent, std::string name) : parent_(&parent), name_(std::move(name)) {
    parent.controls_.push_back(this);
}

Control::~Control() {
    if (parent_ == nullptr) {
        return;
    }
    if (Form* form = OwnerForm()) {
        form->forget(*this);
    }
    std::erase(parent_->controls_, this);
}

Form* Control::OwnerForm() const {
    auto* top = const_cast<Control*>(this);
    while (top->parent_ != nullptr) {
        top = top->parent_;
    }
    return top->asForm();
}

void Control::SetCaption(std::string caption) {
    if (caption != caption_) {
        caption_ = std::move(caption);
        Changed.raise();
    }
}

void Control::SetToolTipText(std::string text) {
    if (text != toolTip_) {
        toolTip_ = std::move(text);
        Changed.raise();
    }
}

void Control::SetAccessibleName(std::string text) {
    if (text != accessibleName_) {
        accessibleName_ = std::move(text);
        Changed.raise();
    }
}

void Control::SetEnabled(bool enabled) {
    if (enabled != enabled_) {
        enabled_ = enabled;
        lostReach();
    }
}

void Control::SetVisible(bool visible) {
    if (visible != visible_) {
        visible_ = visible;
        lostReach();
    }
}

void Control::SetTabIndex(int index) {
    if (index != tabIndex_) {
        tabIndex_ = index;
        Changed.raise();
    }
}

void Control::lostReach() {
    const auto life = lifeline();
    Changed.raise(); // a view that hides the focused widget chooses the next one by itself
    if (life.expired()) {
        return;
    }
    if (Form* form = OwnerForm();
        form != nullptr && form->active_ != nullptr && !form->active_->CanTakeFocus()) {
        form->MoveFocusTo(nullptr);
    }
}

bool Control::CanTakeFocus() const {
    for (const Control* at = this; at != nullptr; at = at->parent_) {
        if (!at->enabled_ || !at->visible_) {
            return false;
        }
    }
    return true;
}

bool Control::HasFocus() const {
    const Form* form = OwnerForm();
    return form != nullptr && form->ActiveControl() == this;
}

void Control::SetFocus() {
    if (Form* form = OwnerForm(); form != nullptr && CanTakeFocus()) {
        form->MoveFocusTo(this);
    }
}

bool Control::KeyDownFromView(int keyCode, int shift) {
    const auto life = lifeline();
    if (Form* form = OwnerForm(); form != nullptr && form->FormKeyDownFromView(keyCode, shift)) {
        return true;
    }
    if (life.expired()) {
        return true;
    }
    KeyEvent event{keyCode, shift};
    KeyDown.raise(event);
    return event.keyCode == 0 || life.expired();
}

} // namespace veldran::controls
