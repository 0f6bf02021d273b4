#include "adapters/qt/tree_delegate.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

namespace veldran::qt {

namespace {

constexpr int rowPadding = 6; ///< pixels added to the height of a line of text

QColor blended(const QColor& over, const QColor& under, int percent) {
    const auto mix = [percent](int a, int b) { return (a * percent + b * (100 - percent)) / 100; };
    return QColor(mix(over.red(), under.red()), mix(over.green(), under.green()),
                  mix(over.blue(), under.blue()));
}

QStyle& styleOf(const QStyleOptionViewItem& option) {
    return option.widget != nullptr ? *option.widget->style() : *QApplication::style();
}

} // namespace

void TreeDelegate::softenSelection(QPalette& palette, bool focused) {
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        const QColor base = palette.color(group, QPalette::Base);
        const QColor mark = palette.color(group, focused ? QPalette::Highlight : QPalette::Mid);
        palette.setColor(group, QPalette::Highlight, blended(mark, base, focused ? 30 : 35));
    }
}

void TreeDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        option->palette.setColor(group, QPalette::HighlightedText,
                                 option->palette.color(group, QPalette::Text));
    }
    option->state &= ~QStyle::State_HasFocus; // the colour of the selection tells the focus
}

QSize TreeDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    size.setHeight(std::max(size.height(), option.fontMetrics.height() + rowPadding));
    return size;
}

controls::TreeHitFlags TreeDelegate::partAt(QStyleOptionViewItem option, const QModelIndex& index,
                                            const QPoint& point) const {
    initStyleOption(&option, index);
    const QStyle& style = styleOf(option);
    const auto at = [&](QStyle::SubElement part) {
        return style.subElementRect(part, &option, option.widget).contains(point);
    };
    if (at(QStyle::SE_ItemViewItemCheckIndicator)) {
        return controls::treeHitStateIcon;
    }
    if (at(QStyle::SE_ItemViewItemDecoration)) {
        return controls::treeHitIcon;
    }
    const QRect text = style.subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
    if (point.x() < text.left()) {
        return controls::treeHitNone;
    }
    const int end = text.left() + option.fontMetrics.horizontalAdvance(option.text) + rowPadding;
    return point.x() <= end ? controls::treeHitLabel : controls::treeHitRight;
}

bool TreeDelegate::cutsText(QStyleOptionViewItem option, const QModelIndex& index) const {
    initStyleOption(&option, index);
    const QRect text = styleOf(option).subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
    return option.fontMetrics.horizontalAdvance(option.text) > text.width() - rowPadding;
}

} // namespace veldran::qt
