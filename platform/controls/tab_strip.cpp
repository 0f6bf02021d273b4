#include "platform/controls/tab_strip.h"

#include <stdexcept>

namespace veldran::controls {

namespace {

void checkTab(const std::vector<Tab>& tabs, int index) {
    if (index < 1 || index > static_cast<int>(tabs.size())) {
        throw std::out_of_range("tab " + std::to_string(index) + " of " + std::to_string(tabs.size()));
    }
}

} // namespace

void TabStrip::AddTab(std::string caption, std::string toolTipText) {
    tabs_.push_back({std::move(caption), std::move(toolTipText)});
    Changed.raise();
}

void TabStrip::SetTabCaption(int index, std::string caption, std::string toolTipText) {
    checkTab(tabs_, index);
    tabs_[static_cast<std::size_t>(index - 1)] = {std::move(caption), std::move(toolTipText)};
    Changed.raise();
}

const Tab* TabStrip::SelectedTab() const {
    return selected_ == 0 ? nullptr : &tabs_[static_cast<std::size_t>(selected_ - 1)];
}

void TabStrip::Select(int index) {
    checkTab(tabs_, index);
    const auto life = lifeline();
    if (index != selected_) {
        selected_ = index;
        Changed.raise();
    }
    if (!life.expired()) {
        Click.raise();
    }
}

} // namespace veldran::controls
