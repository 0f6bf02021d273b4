#include "platform/controls/form.h"

#include "platform/text.h"

#include <utility>

namespace veldran::controls {

Form::Form(std::string name) : Container(Root{}, std::move(name)) {}

Form::~Form() = default;

void Form::SetWindowState(FormWindowState state) {
    if (state != windowState_) {
        windowState_ = state;
        Changed.raise();
    }
}

Control* Form::findBelow(const Container& container, std::string_view name) {
    for (Control* control : container.Controls()) {
        if (equalsIgnoringAsciiCase(control->Name(), name)) {
            return control;
        }
        if (const Container* inner = control->asContainer()) {
            if (Control* found = findBelow(*inner, name)) {
                return found;
            }
        }
    }
    return nullptr;
}

Control* Form::FindControl(std::string_view name) const {
    return findBelow(*this, name);
}

void Form::MoveFocusTo(Control* control) {
    if (control == active_ ||
        (control != nullptr && (control->OwnerForm() != this || !control->CanTakeFocus()))) {
        return;
    }
    const auto life = lifeline();
    const unsigned move = ++moves_;
    Control* old = std::exchange(active_, nullptr);
    target_ = control;
    if (old != nullptr) {
        old->LostFocus.raise();
        if (life.expired() || move != moves_) {
            return;
        }
    }
    control = std::exchange(target_, nullptr); // the handler may have destroyed or disabled it
    if (control != nullptr && control->CanTakeFocus()) {
        active_ = control;
        control->GotFocus.raise();
        if (life.expired() || move != moves_) {
            return;
        }
    }
    FocusMoved.raise(active_);
}

void Form::Load() {
    if (!loaded_) {
        loaded_ = true;
        Loaded.raise();
    }
}

void Form::Activate() {
    if (loaded_) {
        Activated.raise();
    }
}

bool Form::Unload() {
    if (!loaded_) {
        return true;
    }
    if (unloading_) {
        return false;
    }
    const auto life = lifeline();
    const auto done = [&] {
        if (!life.expired()) {
            unloading_ = false;
        }
    };
    unloading_ = true;
    try {
        bool refuse = false;
        QueryUnload.raise(refuse);
        if (life.expired()) {
            return true;
        }
        if (refuse) {
            done();
            return false;
        }
        Unloading.raise();
        if (life.expired()) {
            return true;
        }
    } catch (...) {
        done();
        throw;
    }
    loaded_ = false;
    done();
    Unloaded.raise(); // may destroy the form
    return true;
}

bool Form::FormKeyDownFromView(int keyCode, int shift) {
    KeyEvent event{keyCode, shift};
    FormKeyDown.raise(event);
    return event.keyCode == 0;
}

void Form::forget(Control& control) {
    if (active_ == &control) {
        active_ = nullptr;
    }
    if (target_ == &control) {
        target_ = nullptr;
    }
}

FormRedrawLock::FormRedrawLock(Form& form) : form_(form) {
    if (form_.redrawLocks_ == 0) {
        form_.RedrawLocked.raise(true); // when the view fails there is no lock
    }
    ++form_.redrawLocks_;
}

FormRedrawLock::~FormRedrawLock() {
    if (--form_.redrawLocks_ == 0) {
        form_.RedrawLocked.raise(false);
    }
}

} // namespace veldran::controls
