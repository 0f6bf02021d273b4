#pragma once

#include "platform/services/windows.h"

#include <functional>
#include <vector>

class QMdiArea;
class QMdiSubWindow;

namespace veldran::shell {

class FormWindow;

/// The windows of one open screen: document windows in the host's area, dialogs for modal forms.
class ScreenWindows final : public services::WindowService {
public:
    /// \param onLastGone called, outside any call of a form, when the screen's last form has been released
    ScreenWindows(QMdiArea& area, std::function<void()> onLastGone)
        : area_(area), onLastGone_(std::move(onLastGone)) {}
    ~ScreenWindows() override; ///< windows still open tell nobody any more
    ScreenWindows(const ScreenWindows&) = delete;
    ScreenWindows& operator=(const ScreenWindows&) = delete;

    void ShowForm(std::shared_ptr<controls::Form> form, bool modal, std::intptr_t parent) override;
    void DoEvents() override;

    /// Whether a document window belongs to this screen.
    bool owns(const QMdiSubWindow& window) const;
    int count() const { return static_cast<int>(windows_.size()); } ///< document windows not yet released
    /// Brings the screen's first document window to the front.
    void bringToFront();

private:
    QMdiArea& area_;
    std::function<void()> onLastGone_;
    std::vector<FormWindow*> windows_; ///< owned by the area; each tells when it goes
};

} // namespace veldran::shell
