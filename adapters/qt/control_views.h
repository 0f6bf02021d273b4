#pragma once

#include "platform/controls/form.h"

#include <QWidget>
#include <functional>
#include <string_view>
#include <vector>

namespace veldran::qt {

/// The views of a form's controls. A layout asks for them by the control's name, in the order of the design,
/// which is the tab order as long as no customer layout changes it.
class ControlViews {
public:
    struct Place {
        controls::Control* control;
        std::function<QWidget*()> focused; ///< the widget that takes the focus now
        std::vector<QWidget*> tabStops;    ///< none for what takes no focus
    };

    explicit ControlViews(controls::Form& form) : form_(form) {}

    /// nullptr when the form has no such control; the same holds for what `place` gives.
    template<class T>
    T* find(std::string_view name) const {
        return dynamic_cast<T*>(form_.FindControl(name));
    }
    template<class View, class T>
    View* place(std::string_view name, QWidget* parent);
    /// An area of the form, which may consist of several widgets; an area that the form lacks is always
    /// visible.
    QWidget* placeArea(std::string_view layoutName, QWidget* parent) const;

    const std::vector<Place>& places() const { return places_; }
    /// The widget that takes the focus for `control`; nullptr when the control is not drawn.
    QWidget* viewOf(const controls::Control& control) const;
    /// Where the Tab key stops, one after the other.
    std::vector<QWidget*> tabChain() const;

private:
    controls::Form& form_;
    std::vector<Place> places_;
};

template<class View, class T>
View* ControlViews::place(std::string_view name, QWidget* parent) {
    auto* control = find<T>(name);
    if (control == nullptr) {
        return nullptr;
    }
    auto* view = new View(*control, parent);
    Place place{control, [view]() -> QWidget* { return view; }, {}};
    if constexpr (requires { view->focusPart(); }) {
        place.focused = [view] { return &view->focusPart(); };
    }
    if constexpr (requires { view->tabStops(); }) {
        place.tabStops = view->tabStops();
    } else if ((place.focused()->focusPolicy() & Qt::TabFocus) != 0) {
        place.tabStops = {place.focused()};
    }
    places_.push_back(std::move(place));
    return view;
}

} // namespace veldran::qt
