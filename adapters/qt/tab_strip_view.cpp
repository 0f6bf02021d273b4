#include "adapters/qt/tab_strip_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/text.h"
#include "platform/controls/tab_strip.h"

#include <QMouseEvent>
#include <QScopedValueRollback>

namespace veldran::qt {

TabStripView::TabStripView(controls::TabStrip& control, QWidget* parent)
    : QTabBar(parent), control_(control) {
    setExpanding(false);
    setFocusPolicy(Qt::StrongFocus);
    setUsesScrollButtons(true);
    new ControlBinding(control, *this, this, [this] { showTabs(); });
    connect(this, &QTabBar::currentChanged, this, [this](int index) {
        if (!showing_ && index >= 0) {
            control_.Select(index + 1);
        }
    });
}

void TabStripView::showTabs() {
    const QScopedValueRollback showing(showing_, true);
    const auto& tabs = control_.Tabs();
    while (count() > static_cast<int>(tabs.size())) {
        removeTab(count() - 1);
    }
    for (int i = 0; i < static_cast<int>(tabs.size()); ++i) {
        const auto& tab = tabs[static_cast<std::size_t>(i)];
        if (i >= count()) {
            addTab(toQt(tab.caption));
        } else if (tabText(i) != toQt(tab.caption)) {
            setTabText(i, toQt(tab.caption));
        }
        setTabToolTip(i, toQt(tab.toolTipText));
    }
    setCurrentIndex(control_.SelectedIndex() - 1);
}

void TabStripView::mousePressEvent(QMouseEvent* event) {
    const bool again = event->button() == Qt::LeftButton && currentIndex() >= 0 &&
                       tabAt(event->position().toPoint()) == currentIndex();
    QTabBar::mousePressEvent(event);
    if (again) {
        control_.Select(currentIndex() + 1);
    }
}

} // namespace veldran::qt
