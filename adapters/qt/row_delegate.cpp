#include "adapters/qt/row_delegate.h"

#include "adapters/qt/colours.h"

#include <algorithm>

namespace veldran::qt {

namespace {

constexpr int rowPadding = 6; ///< pixels added to the height of a line of text

} // namespace

void RowDelegate::softenSelection(QPalette& palette, bool focused) {
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        const QColor base = palette.color(group, QPalette::Base);
        const QColor mark = palette.color(group, focused ? QPalette::Highlight : QPalette::Text);
        palette.setColor(group, QPalette::Highlight, blended(mark, base, focused ? 30 : 12));
    }
}

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        option->palette.setColor(group, QPalette::HighlightedText,
                                 option->palette.color(group, QPalette::Text));
    }
    option->state &= ~QStyle::State_HasFocus; // the colour of the selection tells the focus
}

int RowDelegate::rowHeight(const QFontMetrics& metrics) {
    return metrics.height() + rowPadding;
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    size.setHeight(std::max(size.height(), rowHeight(option.fontMetrics)));
    return size;
}

} // namespace veldran::qt
