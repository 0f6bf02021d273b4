#pragma once

#include "platform/controls/tree_view.h"

#include <QStyledItemDelegate>

namespace veldran::qt {

/// Draws the rows of the tree: check box, image, text. A selected row keeps the colour of its text on a light
/// ground, so that a correlated account stays red while it is selected.
class TreeDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Makes the ground of a selection light: tinted while its tree has the focus, grey otherwise.
    static void softenSelection(QPalette& palette, bool focused);
    /// The part of a row's item (right of the branch) under `point`.
    controls::TreeHitFlags partAt(QStyleOptionViewItem option, const QModelIndex& index,
                                  const QPoint& point) const;
    /// True when the row is too short for its text.
    bool cutsText(QStyleOptionViewItem option, const QModelIndex& index) const;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// The view alone toggles check boxes; the delegate's own way would do it once more.
    bool editorEvent(QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&, const QModelIndex&) override {
        return false;
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace veldran::qt
