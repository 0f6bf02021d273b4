#include "shell/lock_keys.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace veldran::shell {

LockKeys::LockKeys(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

void LockKeys::set(bool& lock, bool on) {
    if (lock != on) {
        lock = on;
        if (onChanged) {
            onChanged();
        }
    }
}

bool LockKeys::eventFilter(QObject* watched, QEvent* event) {
    // A window sees each key once; the widgets below it would count the lock keys again.
    if (event->type() != QEvent::KeyPress || !watched->isWindowType()) {
        return false;
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    const QString text = key->text();
    if (key->key() == Qt::Key_CapsLock) {
        set(capitals_, !capitals_);
    } else if (key->key() == Qt::Key_NumLock) {
        set(numbers_, !numbers_);
    } else if (key->modifiers() & Qt::KeypadModifier) {
        if (!text.isEmpty() && text.at(0).isDigit()) {
            set(numbers_, true);
        } else if (key->key() >= Qt::Key_Home && key->key() <= Qt::Key_PageDown) {
            set(numbers_, false);
        }
    } else if (text.size() == 1 && text.at(0).isLetter() &&
               !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        const bool shift = key->modifiers() & Qt::ShiftModifier;
        set(capitals_, text.at(0).isUpper() != shift);
    }
    return false;
}

} // namespace veldran::shell
