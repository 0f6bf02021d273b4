#pragma once

#include <QTabBar>

namespace veldran::controls {
class TabStrip;
}

namespace veldran::qt {

/// The tabs of a strip without pages. Clicking the selected tab selects it again, as the control does.
class TabStripView : public QTabBar {
public:
    explicit TabStripView(controls::TabStrip& control, QWidget* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void showTabs();

    controls::TabStrip& control_;
    bool showing_ = false;
};

} // namespace veldran::qt
