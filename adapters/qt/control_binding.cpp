#include "adapters/qt/control_binding.h"

#include "adapters/qt/focus_moves.h"
#include "adapters/qt/key_codes.h"
#include "adapters/qt/text.h"
#include "platform/controls/form.h"

#include <QKeyEvent>
#include <QWidget>

namespace veldran::qt {

namespace {

/// Keys that a form may answer and that a host's menus may claim as well: the control is asked first.
bool belongsToControl(const QKeyEvent& event) {
    const bool clipboard = event.modifiers() == Qt::ControlModifier &&
                           (event.key() == Qt::Key_C || event.key() == Qt::Key_X || event.key() == Qt::Key_V);
    const bool menu =
        event.key() == Qt::Key_Menu || (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier);
    const bool list = event.key() == Qt::Key_F4 && (event.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    return clipboard || menu || list;
}

} // namespace

ControlBinding::ControlBinding(controls::Control& control, QWidget& shown, QWidget* focused, Refresh refresh)
    : QObject(&shown), control_(control), shown_(shown), named_(focused != nullptr ? *focused : shown),
      refresh_(std::move(refresh)) {
    shown_.setObjectName(toQt(control_.Name()));
    if (focused != nullptr) {
        focused->installEventFilter(this);
    }
    changed_ = control_.Changed.subscribe([this] { showProperties(); });
    showProperties();
}

void ControlBinding::showProperties() {
    if (refresh_) {
        refresh_();
    }
    const QString toolTip = toQt(control_.ToolTipText());
    if (shown_.toolTip() != toolTip) {
        shown_.setToolTip(toolTip);
    }
    const QString name = toQt(control_.AccessibleName()).remove(QLatin1Char('&'));
    if (named_.accessibleName() != name) {
        named_.setAccessibleName(name);
    }
    if (!control_.Enabled() || !control_.Visible()) {
        moveFocusOutOf(shown_);
    }
    shown_.setEnabled(control_.Enabled());
    if (shown_.parentWidget() != nullptr) { // a widget without a parent would become a window
        shown_.setVisible(control_.Visible());
    }
}

bool ControlBinding::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::FocusIn:
        if (controls::Form* form = control_.OwnerForm()) {
            form->MoveFocusTo(&control_);
        }
        break;
    case QEvent::ShortcutOverride:
        if (belongsToControl(static_cast<QKeyEvent&>(*event))) {
            event->accept();
            return true;
        }
        break;
    case QEvent::KeyPress: {
        const auto& key = static_cast<QKeyEvent&>(*event);
        const int code = keyCodeOf(key);
        if (code != 0 && control_.KeyDownFromView(code, shiftOf(key.modifiers()))) {
            event->accept();
            return true;
        }
        break;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace veldran::qt
