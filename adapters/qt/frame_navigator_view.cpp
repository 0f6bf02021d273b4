#include "adapters/qt/frame_navigator_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/drawn_icon.h"
#include "adapters/qt/focus_moves.h"
#include "adapters/qt/navigator_icons.h"
#include "adapters/qt/text.h"
#include "platform/controls/frame_navigator.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <algorithm>
#include <utility>

namespace veldran::qt {

namespace {

constexpr int groupGap = 10;
constexpr int besidePosition = 4; ///< pixels between a long position and the arrows

} // namespace

class FrameNavigatorView::BarButton : public QToolButton {
public:
    BarButton(FrameNavigatorView& bar, std::string key, std::size_t index)
        : QToolButton(&bar), bar_(bar), key_(std::move(key)), index_(index) {
        setIcon(navigatorIcon(key_));
        setIconSize(smallIconSize(*this));
        setAutoRaise(true);
    }

    const std::string& key() const { return key_; }
    std::size_t index() const { return index_; }

protected:
    /// The style barely shows which flat button has the focus.
    void paintEvent(QPaintEvent* event) override {
        QToolButton::paintEvent(event);
        if (hasFocus()) {
            QPainter painter(this);
            painter.setPen(palette().color(QPalette::Highlight));
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
        }
    }

    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Up:
            bar_.step(static_cast<int>(index_) - 1, -1);
            break;
        case Qt::Key_Right:
        case Qt::Key_Down:
            bar_.step(static_cast<int>(index_) + 1, 1);
            break;
        case Qt::Key_Home:
            bar_.step(0, 1);
            break;
        case Qt::Key_End:
            bar_.step(static_cast<int>(bar_.buttons_.size()) - 1, -1);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!event->isAutoRepeat()) {
                click();
            }
            break;
        default:
            QToolButton::keyPressEvent(event);
        }
    }

private:
    FrameNavigatorView& bar_;
    std::string key_;
    std::size_t index_;
};

FrameNavigatorView::FrameNavigatorView(controls::FrameNavigator& control, QWidget* parent)
    : QWidget(parent), control_(control), position_(new QLabel(this)) {
    position_->setAlignment(Qt::AlignCenter);
    position_->setTextFormat(Qt::PlainText);
    position_->setMargin(besidePosition);
    position_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral(" 000 di 000 ")));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(1);
    for (const auto& button : control_.Buttons()) {
        addButton(button.key);
    }
    row->addStretch(1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* binding = new ControlBinding(control_, *this, nullptr, [this] { showState(); });
    for (BarButton* button : buttons_) {
        button->installEventFilter(binding);
        button->installEventFilter(this); // asked first: the button is known when the form hears of the bar
    }
}

void FrameNavigatorView::addButton(const std::string& key) {
    namespace keys = controls::navigatorKeys;
    auto* button = new BarButton(*this, key, buttons_.size());
    button->setObjectName(toQt(control_.Name() + "_" + key));
    auto* row = static_cast<QHBoxLayout*>(layout());
    if (key == keys::nuovo) {
        row->addSpacing(groupGap);
    }
    row->addWidget(button);
    if (key == keys::precedente) {
        row->addWidget(position_); // between the ways back and the ways on
    }
    connect(button, &QToolButton::clicked, this, [this, key] { control_.PressFromView(key); });
    buttons_.push_back(button);
    stops_.push_back(button);
}

FrameNavigatorView::BarButton* FrameNavigatorView::nearestEnabled(std::size_t index) const {
    BarButton* deleting = nullptr;
    for (std::size_t distance = 0; distance < buttons_.size(); ++distance) {
        for (const std::size_t at : {index + distance, index - distance}) {
            if (at >= buttons_.size() || !control_.Button(buttons_[at]->key()).enabled) {
                continue; // before the first button, an index has become a very large one
            }
            if (distance == 0 || buttons_[at]->key() != controls::navigatorKeys::elimina) {
                return buttons_[at];
            }
            deleting = buttons_[at];
        }
    }
    return deleting;
}

QWidget& FrameNavigatorView::focusPart() {
    return entry_ != nullptr ? static_cast<QWidget&>(*entry_) : *this;
}

void FrameNavigatorView::showState() {
    position_->setText(toQt(control_.PositionText()));
    for (BarButton* button : buttons_) {
        const auto& state = control_.Button(button->key());
        const QString caption = toQt(state.caption);
        const QString tip = toQt(state.toolTipText);
        button->setToolTip(tip.isEmpty() || tip == caption ? caption : caption + QStringLiteral(": ") + tip);
        button->setAccessibleName(caption);
        button->setAccessibleDescription(tip);
        if (state.enabled) {
            button->setEnabled(true); // before the one that has the focus is disabled
        }
    }
    chooseEntry();
    for (BarButton* button : buttons_) {
        if (!control_.Button(button->key()).enabled) {
            moveFocusOutOf(*button);
            button->setEnabled(false);
        }
    }
}

void FrameNavigatorView::chooseEntry() {
    const auto found = std::find_if(buttons_.begin(), buttons_.end(), [this](const BarButton* button) {
        return button->key() == control_.FocusedButton();
    });
    BarButton* named = found == buttons_.end() ? buttons_.front() : *found;
    if (std::exchange(named_, named) != named) {
        wanted_ = named;
    }
    entry_ = nearestEnabled(wanted_->index());
    for (BarButton* button : buttons_) {
        button->setFocusPolicy(button == entry_ ? Qt::StrongFocus : Qt::ClickFocus);
    }
    if (entry_ != nullptr && isAncestorOf(window()->focusWidget())) {
        entry_->setFocus(Qt::OtherFocusReason);
    }
}

void FrameNavigatorView::step(int index, int direction) {
    for (; index >= 0 && index < static_cast<int>(buttons_.size()); index += direction) {
        BarButton* button = buttons_[static_cast<std::size_t>(index)];
        if (button->isEnabled()) {
            button->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

bool FrameNavigatorView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        auto* button = static_cast<BarButton*>(watched);
        if (button != entry_) { // else the bar itself has moved it, or a window gives it back
            wanted_ = entry_ = button;
        }
        if (button == wanted_) { // a button that only stands in for it was named by nobody
            control_.FocusButton(button->key());
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace veldran::qt
