#include "adapters/qt/tree_widget.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/drawn_icon.h"
#include "adapters/qt/key_codes.h"
#include "adapters/qt/text.h"
#include "adapters/qt/tree_delegate.h"
#include "adapters/qt/tree_model.h"
#include "adapters/qt/tree_search.h"
#include "adapters/qt/twips.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPointer>
#include <QStyle>
#include <QToolTip>
#include <utility>

namespace veldran::qt {

using controls::TreeHit;
using controls::TreeNode;

/// Hears the control and keeps the widget in step.
class TreeWidget::Link : public controls::TreeViewObserver {
public:
    Link(TreeWidget& widget, TreeModel& model) : widget_(widget), model_(model) {}

    void beforeAppend(TreeNode* parent, int first, int count) override {
        model_.beforeAppend(parent, first, count);
    }
    void afterAppend(TreeNode* parent, int first, int count) override {
        model_.afterAppend();
        if (parent != nullptr && parent->Expanded()) {
            widget_.setExpanded(model_.indexOf(parent), true);
        }
        showExpanded(parent, first, count);
    }
    void beforeRemove(TreeNode& node) override { model_.beforeRemove(node); }
    void afterRemove() override { model_.afterRemove(); }
    void beforeClear() override { model_.beforeClear(); }
    void afterClear() override { model_.afterClear(); }
    void nodeChanged(TreeNode& node) override {
        if (&node == widget_.tree_.SelectedItem()) {
            model_.nodeChanged(node); // assistive programs follow the selected row
            tellCheck(node.Checked());
        } else if (widget_.updatesEnabled()) {
            widget_.viewport()->update(); // one repaint, however many nodes change
        }                                 // else the end of the lock repaints
    }
    void expandedChanged(TreeNode& node) override {
        widget_.setExpanded(model_.indexOf(&node), node.Expanded());
    }
    void selectionChanged(TreeNode* node) override {
        selectedIsChecked_ = node != nullptr && node->Checked();
        if (node == nullptr) {
            widget_.selectionModel()->clear();
        } else {
            widget_.selectionModel()->setCurrentIndex(model_.indexOf(node),
                                                      QItemSelectionModel::ClearAndSelect);
        }
    }
    void scrollTo(TreeNode& node) override {
        const QModelIndex index = model_.indexOf(&node);
        const QRect row = widget_.visualRect(index);
        const bool inSight = row.isValid() && row.top() >= 0 && row.bottom() <= widget_.viewport()->height();
        widget_.scrollTo(index, inSight ? EnsureVisible : PositionAtCenter);
    }
    void refresh() override { widget_.viewport()->update(); }
    void redrawLocked(bool locked) override { widget_.setUpdatesEnabled(!locked); }

    /// What the control held before it was observed.
    void showAll() {
        showExpanded(nullptr, 0, widget_.tree_.RootCount());
        if (TreeNode* selected = widget_.tree_.SelectedItem()) {
            selectionChanged(selected);
        }
    }

private:
    /// The toolkit tells assistive programs that the selected row has changed, but not that its box has.
    void tellCheck(bool checked) {
        if (std::exchange(selectedIsChecked_, checked) == checked || !QAccessible::isActive()) {
            return;
        }
        QAccessibleInterface* tree = QAccessible::queryAccessibleInterface(&widget_);
        if (QAccessibleInterface* row = tree != nullptr ? tree->focusChild() : nullptr) {
            QAccessible::State changed;
            changed.checked = true;
            QAccessibleStateChangeEvent event(row, changed);
            QAccessible::updateAccessibility(&event);
        }
    }
    void showExpanded(const TreeNode* parent, int first, int count) {
        for (int i = first; i < first + count; ++i) {
            const TreeNode* node = parent != nullptr ? parent->ChildAt(i) : widget_.tree_.RootAt(i);
            if (node->Expanded()) {
                widget_.setExpanded(model_.indexOf(node), true);
                showExpanded(node, 0, node->ShownChildren());
            }
        }
    }

    TreeWidget& widget_;
    TreeModel& model_;
    bool selectedIsChecked_ = false;
};

TreeWidget::TreeWidget(controls::TreeView& tree, QWidget* parent)
    : QTreeView(parent), tree_(tree), model_(new TreeModel(tree, this)), delegate_(new TreeDelegate(this)),
      link_(std::make_unique<Link>(*this, *model_)) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setAnimated(false);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setIconSize(smallIconSize(*this));
    setTextElideMode(Qt::ElideRight);
    setItemDelegate(delegate_);
    tree_.SetObserver(link_.get());
    setModel(model_);
    header()->setSectionResizeMode(QHeaderView::Stretch);
    link_->showAll();
    tree_.SetHitTester([this](int x, int y) { return hitTest(x, y); });
    new ControlBinding(tree_, *this, this, {});
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { expandedByUser(index, true); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { expandedByUser(index, false); });
}

TreeWidget::~TreeWidget() {
    tree_.SetHitTester({});
    tree_.SetObserver(nullptr);
}

QStyleOptionViewItem TreeWidget::optionOf(const QModelIndex& index) const {
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    return option;
}

TreeHit TreeWidget::hitTest(int x, int y) const {
    const QModelIndex index = indexAt({x, y});
    if (!index.isValid()) {
        return {};
    }
    TreeNode* node = TreeModel::nodeOf(index);
    const QStyleOptionViewItem option = optionOf(index);
    if (x >= option.rect.left()) {
        return {node, delegate_->partAt(option, index, {x, y})};
    }
    const bool onButton = x >= option.rect.left() - indentation() && node->Children() > 0;
    return {node, onButton ? controls::treeHitButton : controls::treeHitIndent};
}

void TreeWidget::reportMouse(QMouseEvent& event,
                             void (controls::TreeView::*report)(const controls::MouseEvent&)) {
    const int button = buttonOf(event.button());
    if (button == 0) {
        return;
    }
    const QPoint at = event.position().toPoint();
    (tree_.*report)({button, shiftOf(event.modifiers()), at.x() * twipsPerPixel, at.y() * twipsPerPixel});
}

void TreeWidget::press(QMouseEvent& event) {
    event.accept();
    const QPointer<TreeWidget> self(this);
    reportMouse(event, &controls::TreeView::MouseDownFromView);
    if (!self || event.button() != Qt::LeftButton) {
        return;
    }
    const QPoint at = event.position().toPoint();
    const TreeHit hit = hitTest(at.x(), at.y());
    if (hit.node == nullptr) {
        return;
    }
    switch (hit.flags) {
    case controls::treeHitStateIcon:
        tree_.CheckFromView(*hit.node);
        break;
    case controls::treeHitButton:
        tree_.SetExpanded(*hit.node, !hit.node->Expanded());
        break;
    case controls::treeHitIndent:
        break;
    default:
        tree_.SelectFromView(*hit.node);
    }
}

void TreeWidget::mousePressEvent(QMouseEvent* event) {
    press(*event);
}

void TreeWidget::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    reportMouse(*event, &controls::TreeView::MouseUpFromView);
}

void TreeWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    const TreeHit hit = hitTest(at.x(), at.y());
    const bool onItem = hit.node != nullptr && hit.flags != controls::treeHitButton &&
                        hit.flags != controls::treeHitStateIcon && hit.flags != controls::treeHitIndent;
    const QPersistentModelIndex index = model_->indexOf(hit.node);
    const QPointer<TreeWidget> self(this);
    press(*event); // the second press of a check box or an arrow counts like the first
    if (!self || event->button() != Qt::LeftButton) {
        return;
    }
    tree_.DblClickFromView();
    if (self && onItem && index.isValid()) {
        TreeNode& node = *TreeModel::nodeOf(index);
        tree_.SetExpanded(node, !node.Expanded());
    }
}

void TreeWidget::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) { // dragging selects nothing
        QTreeView::mouseMoveEvent(event);
    }
}

void TreeWidget::contextMenuEvent(QContextMenuEvent* event) {
    event->accept(); // the tree answers by its key and mouse events; the window around it has nothing to show
}

void TreeWidget::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const QModelIndex current = currentIndex();
    if (event->key() == Qt::Key_Space) {
        if (plain && current.isValid() && !event->isAutoRepeat()) {
            tree_.CheckFromView(*TreeModel::nodeOf(current));
        }
    } else if (event->key() == Qt::Key_Asterisk) {
        expandBelow(current);
    } else if (event->modifiers().testFlag(Qt::ControlModifier) && event->matches(QKeySequence::Copy)) {
        event->accept(); // copying is the form's; the row's text is not meant
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void TreeWidget::expandedByUser(const QModelIndex& index, bool expanded) {
    const QPersistentModelIndex row(index);
    tree_.SetExpanded(*TreeModel::nodeOf(index), expanded);
    if (row.isValid() && TreeModel::nodeOf(row)->Expanded() != expanded) {
        setExpanded(row, !expanded); // a row without children has nothing to open
    }
}

void TreeWidget::expandBelow(const QModelIndex& top) {
    if (!top.isValid()) {
        return;
    }
    QList<QPersistentModelIndex> rows{top};
    int opened = 0;
    for (qsizetype i = 0; i < rows.size() && opened < expandAllLimit; ++i) {
        if (!rows[i].isValid()) {
            continue;
        }
        TreeNode& node = *TreeModel::nodeOf(rows[i]);
        if (!node.Expanded()) {
            tree_.SetExpanded(node, true);
            ++opened;
        }
        if (!rows[i].isValid()) {
            continue;
        }
        for (int child = 0; child < model_->rowCount(rows[i]) && rows.size() < i + 2 * expandAllLimit;
             ++child) {
            const QModelIndex index = model_->index(child, 0, rows[i]);
            if (model_->hasChildren(index)) {
                rows.append(index);
            }
        }
    }
}

void TreeWidget::keyboardSearch(const QString& typed) {
    const bool goesOn = typedAt_.isValid() && typedAt_.elapsed() < QApplication::keyboardInputInterval();
    typed_ = goesOn ? typed_ + typed : typed;
    typedAt_.start();
    TreeNode* start = tree_.SelectedItem();
    TreeNode* found = findTyped(tree_, start, !goesOn, typed_);
    if (found == nullptr && goesOn && typed_.count(typed) * typed.size() == typed_.size()) {
        found = findTyped(tree_, start, true, typed); // the same letter again: the next row of that letter
    }
    if (found != nullptr) {
        setCurrentIndex(model_->indexOf(found));
    }
}

void TreeWidget::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    TreeDelegate::softenSelection(row.palette, hasFocus());
    QTreeView::drawRow(painter, row, index);
}

bool TreeWidget::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto& help = static_cast<QHelpEvent&>(*event);
        const QModelIndex index = indexAt(help.pos());
        if (index.isValid() && delegate_->cutsText(optionOf(index), index)) {
            QToolTip::showText(help.globalPos(), toQt(TreeModel::nodeOf(index)->Text()), viewport(),
                               visualRect(index));
            return true;
        }
    }
    return QTreeView::viewportEvent(event);
}

void TreeWidget::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (current.isValid() && TreeModel::nodeOf(current) != tree_.SelectedItem()) {
        tree_.SelectFromView(*TreeModel::nodeOf(current));
    }
}

} // namespace veldran::qt
