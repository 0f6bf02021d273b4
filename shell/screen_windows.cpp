#include "shell/screen_windows.h"

#include "shell/form_window.h"
#include "shell/qt_screen.h"

#include <QApplication>
#include <QMdiArea>
#include <QWidget>
#include <algorithm>

namespace veldran::shell {

ScreenWindows::~ScreenWindows() {
    for (FormWindow* window : windows_) {
        window->onGone = nullptr;
    }
}

void ScreenWindows::ShowForm(std::shared_ptr<controls::Form> form, bool modal, std::intptr_t parent) {
    if (modal) {
        const PointerPause pause;
        QWidget* over = parent != 0 ? QWidget::find(static_cast<WId>(parent)) : nullptr;
        FormDialog dialog(std::move(form), over ? over : area_.window());
        dialog.showUntilUnloaded();
        return;
    }
    auto* window = new FormWindow(std::move(form));
    windows_.push_back(window);
    window->onGone = [this, window] {
        std::erase(windows_, window);
        if (windows_.empty()) {
            onLastGone_();
        }
    };
    window->showIn(area_);
}

bool ScreenWindows::owns(const QMdiSubWindow& window) const {
    return std::find(windows_.begin(), windows_.end(), &window) != windows_.end();
}

void ScreenWindows::bringToFront() {
    if (windows_.empty()) {
        return;
    }
    FormWindow* window = windows_.front();
    if (window->isMinimized()) {
        window->showNormal();
    }
    area_.setActiveSubWindow(window);
}

void ScreenWindows::DoEvents() {
    QCoreApplication::processEvents();
}

} // namespace veldran::shell
