#pragma once

#include "platform/controls/control.h"

#include <vector>

namespace veldran::controls {

struct Tab {
    std::string caption;
    std::string toolTipText;
};

/// A row of tabs without pages. Indexes are 1-based; 0 while no tab is selected.
class TabStrip final : public Control {
public:
    using Control::Control;

    const std::vector<Tab>& Tabs() const { return tabs_; }
    void AddTab(std::string caption, std::string toolTipText);
    void SetTabCaption(int index, std::string caption, std::string toolTipText);

    int SelectedIndex() const { return selected_; }
    /// nullptr while no tab is selected.
    const Tab* SelectedTab() const;
    /// Selects a tab and raises `Click`, as the control does for code and user alike; choosing the selected
    /// tab again raises it too. \throws std::out_of_range
    void Select(int index);

    mutable Event<> Click;

private:
    std::vector<Tab> tabs_;
    int selected_ = 0;
};

} // namespace veldran::controls
