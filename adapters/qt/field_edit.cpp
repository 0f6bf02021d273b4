#include "adapters/qt/field_edit.h"

#include "adapters/qt/focus_moves.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>

namespace veldran::qt {

bool isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

void giveFocusTo(QWidget& widget) {
    widget.setFocus(Qt::OtherFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(&widget)) {
        edit->selectAll(); // a window that is not active says nothing of the focus until it is
    }
}

void FieldEdit::moveOn() {
    if (window()->focusWidget() != this) { // it is, too, while its window is about to become active again
        return;
    }
    focusNextChild();
    if (QWidget* next = window()->focusWidget(); next != nullptr && !next->hasFocus()) {
        giveFocusTo(*next);
    }
}

void FieldEdit::keyPressEvent(QKeyEvent* event) {
    if (!isEnter(*event)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const QPointer<FieldEdit> self(this);
    const bool taken = takeOver();
    if (self && taken && enterMovesOn_) {
        moveOn();
    }
}

void FieldEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::OtherFocusReason) {
        selectAll();
    }
}

void FieldEdit::focusOutEvent(QFocusEvent* event) {
    const QPointer<FieldEdit> self(this);
    const Qt::FocusReason reason = event->reason();
    QLineEdit::focusOutEvent(event);
    if (focusComesBack(reason) || takeOver() || !self) {
        return;
    }
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) {
        giveFocusTo(*this);
    }
}

} // namespace veldran::qt
