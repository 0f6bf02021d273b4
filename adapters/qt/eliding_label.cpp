#include "adapters/qt/eliding_label.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace veldran::qt {

namespace {

/// The toolkit's own tells the accessible name alone: nobody would hear what the label says.
class SpokenLabel final : public QAccessibleWidget {
public:
    explicit SpokenLabel(ElidingLabel& label)
        : QAccessibleWidget(&label, QAccessible::StaticText), label_(label) {}

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name) {
            return QAccessibleWidget::text(kind);
        }
        const QString name = label_.accessibleName();
        const QString shown = label_.text().trimmed();
        if (name.isEmpty()) {
            return shown;
        }
        const bool content = label_.buddy() == nullptr && !shown.isEmpty() && shown != name;
        return content ? name + QStringLiteral(": ") + shown : name;
    }
    QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override {
        auto all = QAccessibleWidget::relations(match);
        if (label_.buddy() != nullptr && (match & QAccessible::Labelled) != 0) {
            all.append({QAccessible::queryAccessibleInterface(label_.buddy()), QAccessible::Labelled});
        }
        return all;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

private:
    const ElidingLabel& label_;
};

QAccessibleInterface* spokenLabel(const QString&, QObject* object) {
    auto* label = dynamic_cast<ElidingLabel*>(object);
    return label != nullptr ? new SpokenLabel(*label) : nullptr; // the toolkit owns it
}

} // namespace

ElidingLabel::ElidingLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    QAccessible::installFactory(spokenLabel); // counts once, however often
}

QSize ElidingLabel::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(QStringLiteral("mmmm")), QLabel::minimumSizeHint().height()};
}

QRect ElidingLabel::textRect() const {
    return contentsRect().adjusted(margin(), margin(), -margin(), -margin());
}

bool ElidingLabel::isCut() const {
    return fontMetrics().horizontalAdvance(text()) > textRect().width();
}

void ElidingLabel::paintEvent(QPaintEvent*) {
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

bool ElidingLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isCut()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

} // namespace veldran::qt
