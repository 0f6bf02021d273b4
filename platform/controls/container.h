#pragma once

#include "platform/controls/control.h"

#include <vector>

namespace veldran::controls {

/// A control that holds controls: the form, its layouts (`LAY_...`), its group boxes (`GRB_...`).
class Container : public Control {
public:
    Container(Container& parent, std::string name) : Control(parent, std::move(name)) {}

    /// In the order of their declaration.
    const std::vector<Control*>& Controls() const { return controls_; }

protected:
    friend class Control;
    struct Root {}; ///< the form has no parent
    explicit Container(Root, std::string name);

private:
    const Container* asContainer() const override { return this; }

    std::vector<Control*> controls_;
};

/// An area shown or hidden as a whole.
class Layout final : public Container {
public:
    using Container::Container;
};

/// A frame with a caption around a group of controls.
class GroupBox final : public Container {
public:
    using Container::Container;
};

} // namespace veldran::controls
