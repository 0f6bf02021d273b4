#pragma once

#include <QStyledItemDelegate>

namespace veldran::qt {

/// Draws the rows of trees, lists and grids. A selected row keeps the colour of its text on a light ground,
/// so that a text that means something by its colour does so while it is selected.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Makes the ground of a selection light: tinted while its view has the focus, grey otherwise.
    static void softenSelection(QPalette& palette, bool focused);
    /// Pixels of a row with one line of text.
    static int rowHeight(const QFontMetrics& metrics);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace veldran::qt
