#pragma once

#include "platform/controls/form.h"
#include "platform/event.h"

#include <QDialog>
#include <QMdiSubWindow>
#include <cstdint>
#include <functional>
#include <memory>

namespace veldran::qt {
class FormView;
}

namespace veldran::shell {

/// A document window that shows a form: its title, state and place follow the form, closing it asks the form.
/// Where the form is shown in several windows, their titles are numbered from the second one on.
/// Keeps the form until it is itself destroyed, which is after the form has unloaded.
class FormWindow final : public QMdiSubWindow {
public:
    explicit FormWindow(std::shared_ptr<controls::Form> form);
    ~FormWindow() override;

    controls::Form& form() { return *form_; }
    /// Puts the window into `area`, loads the form, shows and activates it. The form may unload itself
    /// meanwhile; the window then goes away.
    void showIn(QMdiArea& area);
    /// The form's window has become the active one; the form hears it once for each time.
    void activate();

    std::function<void()> onGone; ///< called when the form has been released

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void followForm();
    int freeNumber(const QMdiArea& area) const;
    QString title() const;
    void place();
    QPoint nextFreePlace(const QSize& room) const;
    void leave();

    std::shared_ptr<controls::Form> form_; // shared with the component
    qt::FormView* view_ = nullptr;
    bool active_ = false;
    int number_ = 0; ///< that tells windows of one form apart; the first one does not show it
    Subscription changed_;
    Subscription unloaded_;
};

/// A modal form in a dialog of its own.
class FormDialog final : public QDialog {
public:
    FormDialog(std::shared_ptr<controls::Form> form, QWidget* parent);
    ~FormDialog() override;

    /// Loads, shows and activates the form; returns when it has unloaded.
    void showUntilUnloaded();
    /// Escape and the window's close button ask the form.
    void reject() override;

private:
    std::shared_ptr<controls::Form> form_; // shared with the component
    qt::FormView* view_ = nullptr;
    Subscription changed_;
    Subscription unloaded_;
};

} // namespace veldran::shell
