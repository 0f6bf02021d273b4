#pragma once

#include "platform/controls/container.h"

#include <cstdint>

namespace veldran::controls {

class PopupMenu;
struct PopupPlace;

/// Values of `WindowState` in the host contract.
enum FormWindowState : std::int16_t { windowNormal = 0, windowMinimized = 1, windowMaximized = 2 };

/// A form as the host's windows see it: caption, controls by name, focus, and the life of its window
/// (load, activate, query unload, unload). A window service shows it; a view draws its controls.
class Form : public Container {
public:
    explicit Form(std::string name);
    ~Form() override;

    FormWindowState WindowState() const { return windowState_; }
    void SetWindowState(FormWindowState state);

    /// The control of that name anywhere in the form, blind to case; nullptr when there is none.
    Control* FindControl(std::string_view name) const;
    Control* ActiveControl() const { return active_; }
    /// Moves the focus: `LostFocus` of the old control, then `GotFocus` of the new one, then `FocusMoved`.
    /// The view calls it when the user moves the focus; `Control::SetFocus` calls it for the code. A control
    /// that cannot take the focus is not given it; nullptr leaves the form without an active control.
    void MoveFocusTo(Control* control);

    bool IsLoaded() const { return loaded_; }
    /// Called once by the window service before the form is first shown.
    void Load();
    /// Called by the window service whenever the form's window becomes the active one.
    void Activate();
    /// Asks whether the form may close, and unloads it when it may. The window service calls it when the user
    /// closes the window, the form's own code when it unloads itself.
    /// \return false when the close was refused, and while an unload is already under way; nothing is
    /// released then.
    bool Unload();
    /// The form sees keys before its controls do. \return true when consumed.
    bool FormKeyDownFromView(int keyCode, int shift);

    mutable Event<> Loaded;
    mutable Event<> Activated;
    mutable Event<bool&> QueryUnload; ///< set the argument to true to refuse
    mutable Event<> Unloading;        ///< the form releases what it holds
    mutable Event<> Unloaded;         ///< the window is to go away; raised last
    mutable Event<Control*> FocusMoved;
    mutable Event<bool> RedrawLocked; ///< the view holds back its painting while it is true
    mutable Event<KeyEvent&> FormKeyDown;
    mutable Event<PopupMenu&, const PopupPlace&> PopupRequested; ///< the view is to show a menu

private:
    friend class Control;
    friend class FormRedrawLock;
    Form* asForm() override { return this; }
    static Control* findBelow(const Container& container, std::string_view name);
    void forget(Control& control);

    FormWindowState windowState_ = windowNormal;
    Control* active_ = nullptr;
    Control* target_ = nullptr; ///< of a focus move under way
    unsigned moves_ = 0;        ///< a handler's own focus move overtakes the one that called it
    bool loaded_ = false;
    bool unloading_ = false;
    int redrawLocks_ = 0;
};

/// Holds back the painting of a form's window while it lives. The form outlives it.
class FormRedrawLock {
public:
    explicit FormRedrawLock(Form& form);
    ~FormRedrawLock();
    FormRedrawLock(const FormRedrawLock&) = delete;
    FormRedrawLock& operator=(const FormRedrawLock&) = delete;

private:
    Form& form_;
};

} // namespace veldran::controls
