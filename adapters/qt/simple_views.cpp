#include "adapters/qt/simple_views.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/field_edit.h"
#include "adapters/qt/text.h"
#include "platform/controls/container.h"
#include "platform/controls/simple_controls.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

namespace veldran::qt {

LabelView::LabelView(controls::Label& control, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
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

QSize LabelView::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(QStringLiteral("mmmm")), QLabel::minimumSizeHint().height()};
}

QRect LabelView::textRect() const {
    return contentsRect().adjusted(margin(), margin(), -margin(), -margin());
}

bool LabelView::isCut() const {
    return fontMetrics().horizontalAdvance(text()) > textRect().width();
}

void LabelView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawFrame(&painter);
    const QRect rect = textRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, rect.width());
    int flags = static_cast<int>(alignment());
    if (buddy() != nullptr) {
        flags |= style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) ? Qt::TextShowMnemonic
                                                                                 : Qt::TextHideMnemonic;
    }
    const bool pale = !isEnabled() || (buddy() != nullptr && !buddy()->isEnabled());
    QPalette colours = palette();
    if (pale) {
        colours.setCurrentColorGroup(QPalette::Disabled);
    }
    style()->drawItemText(&painter, rect, flags, colours, !pale, shown, foregroundRole());
}

bool LabelView::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isCut()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

ButtonView::ButtonView(controls::Button& control, QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    new ControlBinding(control, *this, this, [this, &control] { setText(toQt(control.Caption())); });
    connect(this, &QPushButton::clicked, this, [this, &control] {
        const QPointer<ButtonView> self(this);
        setFocus(Qt::OtherFocusReason);
        if (self) {
            control.ClickFromView();
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
