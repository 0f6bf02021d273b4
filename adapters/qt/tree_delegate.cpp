#include "adapters/qt/tree_delegate.h"

#include "adapters/qt/colours.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace veldran::qt {

namespace {

constexpr int textPadding = 6; ///< pixels about the text of a row
/// Per cent of the colour of the text: the style's own edge of a box is hardly to be seen.
constexpr int edgeOfBox = 55;
constexpr int dark = 128;  ///< lightness below which a ground is dark
constexpr int lifted = 45; ///< per cent of white that a colour gets on a dark ground

/// A colour chosen for a light ground, as it can be read on this one.
QColor legible(const QColor& colour, const QColor& ground) {
    return ground.lightness() < dark ? blended(Qt::white, colour, lifted) : colour;
}

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
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle& style = styleOf(item);
    const QVariant colour = index.data(Qt::ForegroundRole);
    const QString text = item.text;
    if (colour.isValid()) { // the style would draw the check mark in the colour of the text, too
        item.text.clear();
        item.palette.setColor(QPalette::Text, option.palette.color(QPalette::Text));
    }
    style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    painter->save();
    painter->setPen(
        blended(option.palette.color(QPalette::Text), option.palette.color(QPalette::Base), edgeOfBox));
    painter->drawRect(style.subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, item.widget)
                          .adjusted(0, 0, -1, -1));
    if (colour.isValid()) {
        item.text = text;
        const QRect room = style.subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget)
                               .adjusted(textPadding / 2, 0, -textPadding / 2, 0);
        painter->setFont(item.font);
        painter->setPen(legible(colour.value<QColor>(), option.palette.color(QPalette::Base)));
        painter->drawText(room, static_cast<int>(item.displayAlignment),
                          item.fontMetrics.elidedText(text, item.textElideMode, room.width()));
    }
    painter->restore();
}

bool TreeDelegate::cutsText(QStyleOptionViewItem option, const QModelIndex& index) const {
    initStyleOption(&option, index);
    const QRect text = styleOf(option).subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
    return option.fontMetrics.horizontalAdvance(option.text) > text.width() - textPadding;
}

} // namespace veldran::qt
