#pragma once

#include "platform/controls/tree_view.h"

#include <QElapsedTimer>
#include <QTreeView>
#include <memory>

namespace veldran::qt {

class TreeDelegate;
class TreeModel;

/// Shows a tree control and reports what the user does with it. The check box answers a press of the left
/// button (press, check, release: in this order) and the space bar; double click, the branch arrow and the
/// keys Right, Left, +, - and * expand and collapse; typing finds an open row by code or word.
///
/// The control must outlive the widget.
class TreeWidget : public QTreeView {
public:
    /// '*' opens what is below the current row, level by level, until it has opened this many rows.
    static constexpr int expandAllLimit = 200;

    explicit TreeWidget(controls::TreeView& tree, QWidget* parent = nullptr);
    ~TreeWidget() override;

    controls::TreeView& tree() const { return tree_; }
    /// \param x,y pixels from the upper left corner of the viewport
    controls::TreeHit hitTest(int x, int y) const;

    void keyboardSearch(const QString& typed) override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    class Link;
    void reportMouse(QMouseEvent& event, void (controls::TreeView::*report)(const controls::MouseEvent&));
    void press(QMouseEvent& event);
    void expandedByUser(const QModelIndex& index, bool expanded);
    void expandBelow(const QModelIndex& top);
    QStyleOptionViewItem optionOf(const QModelIndex& index) const;

    controls::TreeView& tree_;
    TreeModel* model_;
    TreeDelegate* delegate_;
    std::unique_ptr<Link> link_;
    QString typed_;
    QElapsedTimer typedAt_;
};

} // namespace veldran::qt
