#include "adapters/qt/form_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/lookup_field_view.h"
#include "adapters/qt/simple_views.h"
#include "adapters/qt/tab_strip_view.h"
#include "adapters/qt/tree_widget.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"

#include <QBoxLayout>
#include <QEvent>
#include <algorithm>

namespace veldran::qt {

namespace {

constexpr QSize designSize(820, 600);   ///< of a window that shows a chart comfortably
constexpr QSize smallestSize(460, 300); ///< search row and a few rows of the tree
constexpr int margin = 10;
constexpr int gap = 8;

QBoxLayout* columnOf(QWidget& widget, int edge) {
    auto* column = new QVBoxLayout(&widget);
    column->setContentsMargins(edge, edge, edge, edge);
    column->setSpacing(gap);
    return column;
}

} // namespace

FormView::FormView(controls::Form& form, QWidget* parent)
    : QWidget(parent), form_(form), content_(new QWidget(this)),
      resize_(find<controls::ResizeControl>("QRV_RESIZEFORM")) {
    layOut(*columnOf(*content_, margin));
    orderTabs();
    for (Place& place : places_) {
        place.changed = place.control->Changed.subscribe([this] { orderTabs(); });
    }
    focusMoved_ = form_.FocusMoved.subscribe([this](controls::Control* control) { giveFocusTo(control); });
    activated_ = form_.Activated.subscribe([this] { takeInitialFocus(); });
    takeInitialFocus();
}

FormView::~FormView() = default;

QWidget* FormView::viewOf(const controls::Control& control) const {
    const auto place = std::find_if(places_.begin(), places_.end(),
                                    [&](const Place& candidate) { return candidate.control == &control; });
    return place == places_.end() ? nullptr : place->focused;
}

QSize FormView::sizeHint() const {
    return designSize.expandedTo(minimumSizeHint());
}

QSize FormView::minimumSizeHint() const {
    return smallestSize.expandedTo(content_->minimumSizeHint());
}

bool FormView::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry(); // an area was shown or hidden: the smallest size follows
    }
    return QWidget::event(event);
}

void FormView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (resize_ == nullptr || !resize_->Started() || resize_->MayResize()) {
        content_->resize(size());
    }
}

template<class T>
T* FormView::find(std::string_view name) const {
    return dynamic_cast<T*>(form_.FindControl(name));
}

template<class View, class T>
View* FormView::place(std::string_view name, QWidget* parent) {
    auto* control = find<T>(name);
    if (control == nullptr) {
        return nullptr;
    }
    auto* view = new View(*control, parent);
    QWidget* focused = view->focusProxy() != nullptr ? view->focusProxy() : view;
    places_.push_back({control, focused, {}});
    return view;
}

QWidget* FormView::placeArea(std::string_view layoutName, QWidget* parent) {
    auto* area = new QWidget(parent);
    if (auto* layout = find<controls::Layout>(layoutName)) {
        new ControlBinding(*layout, *area, nullptr, {});
    }
    return area;
}

void FormView::layOut(QBoxLayout& column) {
    QWidget* area = placeArea("LAY_ATTIVAZIONE", content_);
    column.addWidget(area, 1);
    QBoxLayout& rows = *columnOf(*area, 0);
    layOutSearchRow(rows, area);
    layOutTree(rows, area);
    layOutButtons(column);
}

void FormView::layOutButtons(QBoxLayout& column) {
    QWidget* ofAccount = placeArea("LAY_ATTIVAZIONE", content_);
    auto* group = new QHBoxLayout(ofAccount);
    group->setContentsMargins(0, 0, 0, 0);
    group->setSpacing(gap);
    for (const char* name : {"BUT_CORRELAZIONI", "BUT_EDITCORRELAZIONI"}) {
        if (auto* button = place<ButtonView, controls::Button>(name, ofAccount)) {
            group->addWidget(button);
        }
    }
    auto* row = new QHBoxLayout;
    row->setSpacing(gap);
    row->addWidget(ofAccount);
    row->addStretch(1);
    if (auto* mode = place<ButtonView, controls::Button>("CMD_ATTIVAZIONI", content_)) {
        row->addWidget(mode);
    }
    column.addLayout(row);
}

void FormView::layOutSearchRow(QBoxLayout& column, QWidget* area) {
    auto* row = new QHBoxLayout;
    row->setSpacing(gap);
    auto* caption = place<LabelView, controls::Label>("LBL_CONTORICERCA", area);
    if (caption != nullptr) {
        row->addWidget(caption);
    }
    if (auto* code = place<LookupFieldView, controls::LookupField>("TXT_CONTORICERCA", area)) {
        row->addWidget(code);
        if (caption != nullptr) {
            caption->setBuddy(&code->edit());
        }
    }
    if (auto* description = place<LabelView, controls::Label>("LBB_DESCRCONTORICERCA", area)) {
        description->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        description->setMargin(3);
        description->setAutoFillBackground(true);
        description->setBackgroundRole(QPalette::AlternateBase);
        description->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        row->addWidget(description, 1);
    }
    if (auto* search = place<ButtonView, controls::Button>("BUT_RICERCA", area)) {
        row->addWidget(search);
    }
    column.addLayout(row);
}

void FormView::layOutTree(QBoxLayout& column, QWidget* area) {
    auto* block = new QVBoxLayout; // tabs, the filter they chose and what it lets through are one thing
    block->setSpacing(0);
    if (auto* filters = place<TabStripView, controls::TabStrip>("STR_FILTRI", area)) {
        block->addWidget(filters);
    }
    if (auto* filter = place<LabelView, controls::Label>("LBL_FILTRO_CORRENTE", area)) {
        QFont bold = filter->font();
        bold.setBold(true);
        filter->setFont(bold);
        filter->setMargin(3);
        filter->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
        filter->setAutoFillBackground(true);
        filter->setBackgroundRole(QPalette::AlternateBase);
        block->addWidget(filter);
    }
    if (auto* tree = place<TreeWidget, controls::TreeView>("TRW_CONTI", area)) {
        tree_ = &tree->tree();
        block->addWidget(tree, 1);
    }
    column.addLayout(block, 1);
}

void FormView::orderTabs() {
    std::vector<const Place*> order;
    std::vector<const Place*> moved;
    for (const Place& place : places_) {
        if (place.focused->focusPolicy() & Qt::TabFocus) {
            (place.control->TabIndex() > 0 ? moved : order).push_back(&place);
        }
    }
    std::stable_sort(moved.begin(), moved.end(), [](const Place* a, const Place* b) {
        return a->control->TabIndex() < b->control->TabIndex();
    });
    for (const Place* place : moved) {
        const auto at = std::min(order.size(), static_cast<std::size_t>(place->control->TabIndex() - 1));
        order.insert(order.begin() + static_cast<std::ptrdiff_t>(at), place);
    }
    std::vector<QWidget*> chain;
    std::transform(order.begin(), order.end(), std::back_inserter(chain),
                   [](const Place* place) { return place->focused; });
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
    if (widget != nullptr && !widget->hasFocus()) {
        widget->setFocus(Qt::OtherFocusReason);
    }
}

void FormView::takeInitialFocus() {
    if (form_.ActiveControl() != nullptr) {
        giveFocusTo(form_.ActiveControl());
    } else if (tree_ != nullptr) {
        tree_->SetFocus();
    }
}

} // namespace veldran::qt
