#include "adapters/qt/form_view.h"

#include "adapters/qt/activation_layout.h"
#include "adapters/qt/correlation_layout.h"
#include "adapters/qt/duplication_layout.h"
#include "adapters/qt/field_edit.h"
#include "adapters/qt/layout_parts.h"
#include "adapters/qt/popup_menus.h"
#include "adapters/qt/simple_views.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tree_view.h"

#include <QBoxLayout>
#include <QEvent>
#include <QScrollArea>

namespace veldran::qt {

namespace {

constexpr QSize designSize(180, 45);    ///< letters and lines of a window that shows all columns of its grid
constexpr QSize smallestSize(460, 300); ///< search row and a few rows of the tree
constexpr int margin = 10;

QSize pixelsOf(const QSize& lettersAndLines, const QFontMetrics& metrics) {
    return {lettersAndLines.width() * metrics.averageCharWidth(),
            lettersAndLines.height() * metrics.lineSpacing()};
}

} // namespace

FormView::FormView(controls::Form& form, QWidget* parent)
    : QWidget(parent), form_(form), scroll_(new QScrollArea(this)), content_(new QWidget), views_(form) {
    resize_ = views_.find<controls::ResizeControl>("QRV_RESIZEFORM");
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->setWidget(content_);
    content_->installEventFilter(this);
    layOut();
    orderTabs();
    for (const ControlViews::Place& place : views_.places()) {
        kept_.push_back(place.control->Changed.subscribe([this] { orderTabs(); }));
    }
    new PopupMenus(form_, *this, [this](const controls::Control& control) { return viewOf(control); });
    kept_.push_back(form_.FocusMoved.subscribe([this](controls::Control* control) { giveFocusTo(control); }));
    kept_.push_back(form_.Activated.subscribe([this] { takeInitialFocus(); }));
    kept_.push_back(form_.RedrawLocked.subscribe([this](bool locked) {
        redrawLocked_ = locked;
        setUpdatesEnabled(!locked);
    }));
    takeInitialFocus();
}

FormView::~FormView() = default;

QSize FormView::sizeHint() const {
    return isDialog_ ? content_->sizeHint()
                     : pixelsOf(designSize, fontMetrics()).expandedTo(minimumSizeHint());
}

QSize FormView::minimumSizeHint() const {
    return isDialog_ ? content_->minimumSizeHint() : smallestSize.expandedTo(content_->minimumSizeHint());
}

bool FormView::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked) {
        setUpdatesEnabled(true); // the user is asked something, over the form as it stands
    } else if (event->type() == QEvent::WindowUnblocked) {
        setUpdatesEnabled(!redrawLocked_);
    }
    return QWidget::event(event);
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry(); // an area was shown or hidden: the smallest size follows
    }
    return QWidget::eventFilter(watched, event);
}

void FormView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    scroll_->setWidgetResizable(resize_ == nullptr || !resize_->Started() || resize_->MayResize());
    scroll_->resize(size());
}

void FormView::layOut() {
    QBoxLayout& column = *columnOf(*content_, margin);
    if (QWidget* dialog = layOutDuplication(views_, content_)) {
        isDialog_ = true;
        column.addWidget(dialog);
        return;
    }
    column.addWidget(layOutActivation(views_, content_), 1);
    column.addWidget(layOutCorrelation(views_, content_), 1);
    auto* row = newRow();
    row->addWidget(layOutAccountButtons(views_, content_));
    row->addStretch(1);
    if (auto* mode = views_.place<ButtonView, controls::Button>("CMD_ATTIVAZIONI", content_)) {
        row->addWidget(mode);
    }
    column.addLayout(row);
}

void FormView::orderTabs() {
    std::vector<QWidget*> chain = views_.tabChain();
    if (chain == tabChain_) {
        return;
    }
    tabChain_ = std::move(chain);
    for (std::size_t i = 1; i < tabChain_.size(); ++i) {
        setTabOrder(tabChain_[i - 1], tabChain_[i]);
    }
}

void FormView::giveFocusTo(const controls::Control* control) {
    QWidget* widget = control != nullptr ? viewOf(*control) : nullptr;
    if (widget == nullptr) {
        return;
    }
    if (!widget->hasFocus()) {
        qt::giveFocusTo(*widget);
    }
    scroll_->ensureWidgetVisible(widget, margin, margin);
}

void FormView::takeInitialFocus() {
    if (form_.ActiveControl() != nullptr) {
        giveFocusTo(form_.ActiveControl());
    } else if (auto* tree = views_.find<controls::TreeView>("TRW_CONTI")) {
        tree->SetFocus();
    } else if (isDialog_ && !tabChain_.empty()) {
        tabChain_.front()->setFocus(Qt::OtherFocusReason);
    }
}

} // namespace veldran::qt
