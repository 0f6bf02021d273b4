#pragma once

#include "adapters/qt/row_delegate.h"
#include "platform/controls/tree_view.h"

namespace veldran::qt {

/// Draws the rows of the tree: check box, image, text.
class TreeDelegate : public RowDelegate {
public:
    using RowDelegate::RowDelegate;

    /// The part of a row's item (right of the branch) under `point`.
    controls::TreeHitFlags partAt(QStyleOptionViewItem option, const QModelIndex& index,
                                  const QPoint& point) const;
    /// True when the row is too short for its text.
    bool cutsText(QStyleOptionViewItem option, const QModelIndex& index) const;

    /// The colour of a node is that of its text; its check box keeps that of all others.
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// The view alone toggles check boxes; the delegate's own way would do it once more.
    bool editorEvent(QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&, const QModelIndex&) override {
        return false;
    }
};

} // namespace veldran::qt
