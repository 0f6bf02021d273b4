#pragma once

#include "platform/controls/control.h"

namespace veldran::controls {

/// Text that the user reads; the caption is the text.
class Label final : public Control {
public:
    using Control::Control;

    /// The view is to place the label right behind `control`, which lives as long as the form; nullptr leaves
    /// it where it was designed.
    void StandBehind(const Control* control);
    const Control* StandsBehind() const { return behind_; }

private:
    const Control* behind_ = nullptr;
};

/// A push button. An "&" in the caption marks the mnemonic.
class Button final : public Control {
public:
    using Control::Control;

    /// The user pressed the button; ignored while it cannot take the focus.
    void ClickFromView();

    mutable Event<> Click;
};

/// Keeps a form's controls in proportion while its window is resized; the view does the arithmetic.
class ResizeControl final : public Control {
public:
    using Control::Control;

    /// The component whose form is kept; an opaque reference, cleared when the form unloads.
    void SetComponent(const void* component) { component_ = component; }
    const void* Component() const { return component_; }
    void Start();
    bool Started() const { return started_; }
    /// The one question of the control: may the form be resized now? False unless a handler answers true.
    bool MayResize() const;

    mutable Event<bool&> QueryResize;

private:
    const void* component_ = nullptr;
    bool started_ = false;
};

} // namespace veldran::controls
