#include "adapters/qt/focus_moves.h"

#include <QWidget>

namespace veldran::qt {

namespace {

/// The window, or the document window within it, around `widget`.
const QWidget& windowAround(const QWidget& widget) {
    const QWidget* around = &widget;
    while (!around->isWindow() && around->windowType() != Qt::SubWindow) {
        around = around->parentWidget();
    }
    return *around;
}

bool takesFocus(const QWidget& widget) {
    const Qt::FocusPolicy policy = widget.focusPolicy();
    return (policy & Qt::TabFocus) != 0 && policy != Qt::TabFocus && widget.isEnabled() && widget.isVisible();
}

} // namespace

bool focusComesBack(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

void moveFocusOutOf(const QWidget& leaving) {
    QWidget* focused = leaving.window()->focusWidget();
    if (focused == nullptr || (focused != &leaving && !leaving.isAncestorOf(focused))) {
        return;
    }
    const QWidget& window = windowAround(leaving);
    for (QWidget* next = focused->nextInFocusChain(); next != focused; next = next->nextInFocusChain()) {
        if (window.isAncestorOf(next) && next != &leaving && !leaving.isAncestorOf(next) &&
            takesFocus(*next)) {
            next->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
    focused->clearFocus();
}

} // namespace veldran::qt
