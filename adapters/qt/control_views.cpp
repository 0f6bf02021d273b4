#include "adapters/qt/control_views.h"

#include "adapters/qt/control_binding.h"

#include <algorithm>

namespace veldran::qt {

QWidget* ControlViews::placeArea(std::string_view layoutName, QWidget* parent) const {
    auto* area = new QWidget(parent);
    if (auto* layout = find<controls::Layout>(layoutName)) {
        new ControlBinding(*layout, *area, nullptr, {});
    }
    return area;
}

QWidget* ControlViews::viewOf(const controls::Control& control) const {
    const auto place = std::find_if(places_.begin(), places_.end(),
                                    [&](const Place& candidate) { return candidate.control == &control; });
    return place == places_.end() ? nullptr : place->focused();
}

std::vector<QWidget*> ControlViews::tabChain() const {
    std::vector<const Place*> order;
    std::vector<const Place*> moved;
    for (const Place& place : places_) {
        if (!place.tabStops.empty()) {
            (place.control->TabIndex() > 0 ? moved : order).push_back(&place);
        }
    }
    std::stable_sort(moved.begin(), moved.end(), [](const Place* a, const Place* b) {
        return a->control->TabIndex() < b->control->TabIndex();
    });
    for (const Place* place : moved) {
        const auto at = std::min(order.size(), static_cast<std::size_t>(place->control->TabIndex() - 1));
        order.insert(order.begin() + static_cast<std::ptrdiff_t>(at), place);
    }
    std::vector<QWidget*> chain;
    for (const Place* place : order) {
        chain.insert(chain.end(), place->tabStops.begin(), place->tabStops.end());
    }
    return chain;
}

} // namespace veldran::qt
