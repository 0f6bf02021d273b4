#include "adapters/qt/field_edit.h"

#include "adapters/qt/focus_moves.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>

namespace veldran::qt {

bool isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

void FieldEdit::moveOn() {
    if (window()->focusWidget() == this) { // also while its window is about to become the active one again
        focusNextChild();
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
    QLineEdit::focusOutEvent(event);
    if (!focusComesBack(event->reason())) {
        takeOver();
    }
}

} // namespace veldran::qt
