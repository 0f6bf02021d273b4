#include "adapters/qt/simple_views.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/field_edit.h"
#include "adapters/qt/text.h"
#include "platform/controls/container.h"
#include "platform/controls/simple_controls.h"

#include <QKeyEvent>
#include <QPointer>
#include <algorithm>

namespace veldran::qt {

LabelView::LabelView(controls::Label& control, QWidget* parent) : ElidingLabel(parent) {
    new ControlBinding(control, *this, nullptr, [this, &control] { setText(toQt(control.Caption())); });
}

void LabelView::standFor(QWidget& field) {
    setBuddy(&field);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    field.installEventFilter(this);
}

bool LabelView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        update();
    }
    return QLabel::eventFilter(watched, event);
}

ButtonView::ButtonView(controls::Button& control, QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    new ControlBinding(control, *this, this, [this, &control] { setText(toQt(control.Caption())); });
    connect(this, &QPushButton::clicked, this, [this, &control] {
        const QPointer<ButtonView> self(this);
        const QPointer<QWidget> before(window()->focusWidget()); // itself, unless its mnemonic was pressed
        setFocus(Qt::OtherFocusReason);
        if (self) {
            control.ClickFromView();
        }
        // What was refused leaves the user where the mnemonic was pressed.
        if (self && before && window()->focusWidget() == this && before->isEnabled() && before->isVisible()) {
            giveFocusTo(*before);
        }
    });
}

QSize ButtonView::sizeHint() const {
    constexpr int breath = 16; // pixels beside a long caption, which the style draws to the edges
    const QSize size = QPushButton::sizeHint();
    return {std::max(size.width(), fontMetrics().horizontalAdvance(text()) + 2 * breath), size.height()};
}

void ButtonView::keyPressEvent(QKeyEvent* event) {
    if (!isEnter(*event)) {
        QPushButton::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        click();
    }
}

CaptionView::CaptionView(const controls::Control& control, QWidget& field, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setBuddy(&field);
    changed_ = control.Changed.subscribe([this, &control] { showCaption(control); });
    showCaption(control);
}

void CaptionView::showCaption(const controls::Control& control) {
    setText(toQt(control.Caption()));
    setEnabled(control.Enabled());
    if (parentWidget() != nullptr) { // a widget without a parent would become a window
        setVisible(control.Visible());
    }
}

GroupBoxView::GroupBoxView(controls::GroupBox& control, QWidget* parent) : QGroupBox(parent) {
    new ControlBinding(control, *this, nullptr, [this, &control] {
        setTitle(toQt(control.Caption()).replace(QLatin1Char('&'), QStringLiteral("&&")));
    });
}

} // namespace veldran::qt
