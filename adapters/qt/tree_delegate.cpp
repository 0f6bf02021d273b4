#include "adapters/qt/tree_delegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace veldran::qt {

namespace {

constexpr int textPadding = 6; ///< pixels about the text of a row

QStyle& styleOf(const QStyleOptionViewItem& option) {
    return option.widget != nullptr ? *option.widget->style() : *QApplication::style();
}

} // namespace

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
    const int end = text.left() + option.fontMetrics.horizontalAdvance(option.text) + textPadding;
    return point.x() <= end ? controls::treeHitLabel : controls::treeHitRight;
}

void TreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const QVariant colour = index.data(Qt::ForegroundRole);
    if (!colour.isValid()) {
        RowDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle& style = styleOf(item);
    const QRect room = style.subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget)
                           .adjusted(textPadding / 2, 0, -textPadding / 2, 0);
    const QString text = item.fontMetrics.elidedText(item.text, item.textElideMode, room.width());
    item.text.clear();
    item.palette.setColor(QPalette::Text, option.palette.color(QPalette::Text));
    style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    painter->save();
    painter->setFont(item.font);
    painter->setPen(colour.value<QColor>());
    painter->drawText(room, static_cast<int>(item.displayAlignment), text);
    painter->restore();
}

bool TreeDelegate::cutsText(QStyleOptionViewItem option, const QModelIndex& index) const {
    initStyleOption(&option, index);
    const QRect text = styleOf(option).subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
    return option.fontMetrics.horizontalAdvance(option.text) > text.width() - textPadding;
}

} // namespace veldran::qt
