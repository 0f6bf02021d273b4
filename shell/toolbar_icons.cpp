#include "shell/toolbar_icons.h"

#include "adapters/qt/drawn_icon.h"
#include "adapters/qt/icon_shapes.h"

#include <QPainter>

namespace veldran::shell {

using qt::drawSheet;
using qt::drawStroke;

namespace {

using namespace qt::iconColours;

const QColor casing(0xb0, 0xbe, 0xc5);

void outlined(QPainter& painter, const QColor& colour) {
    painter.setPen(QPen(outline, 1));
    painter.setBrush(colour);
}

void sheetThatLeaves(QPainter& painter) {
    drawSheet(painter);
    drawStroke(painter, keeps, {{6, 9}, {14, 9}}, 1.8);
    drawStroke(painter, keeps, {{11.5, 6.5}, {14.2, 9}, {11.5, 11.5}}, 1.8);
}

void printer(QPainter& painter) {
    outlined(painter, paper);
    painter.drawRect(QRectF(4.5, 1.5, 7, 5));
    outlined(painter, casing);
    painter.drawRoundedRect(QRectF(1.5, 5.5, 13, 6), 1, 1);
    outlined(painter, paper);
    painter.drawRect(QRectF(4.5, 9.5, 7, 5));
    painter.drawLine(QPointF(6, 11.5), QPointF(10, 11.5));
}

void windowThatCloses(QPainter& painter) {
    outlined(painter, paper);
    painter.drawRoundedRect(QRectF(1.5, 2.5, 13, 11), 1, 1);
    painter.fillRect(QRectF(1.5, 2.5, 13, 3), moves);
    drawStroke(painter, removes, {{6, 7.5}, {10, 11.5}}, 1.6);
    drawStroke(painter, removes, {{10, 7.5}, {6, 11.5}}, 1.6);
}

void accountsOfALedger(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(moves);
    painter.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 2.5, 2.5);
    drawStroke(painter, paper, {{4.5, 4.5}, {4.5, 11.5}, {7.5, 11.5}}, 1.2);
    drawStroke(painter, paper, {{4.5, 8}, {7.5, 8}}, 1.2);
    painter.fillRect(QRectF(2.8, 2.8, 5.5, 2.6), paper);
    painter.fillRect(QRectF(7.5, 6.7, 5.7, 2.6), paper);
    painter.fillRect(QRectF(7.5, 10.2, 5.7, 2.6), paper);
}

} // namespace

QIcon toolbarIcon(ToolbarIcon icon) {
    switch (icon) {
    case ToolbarIcon::Export:
        return qt::drawnIcon(sheetThatLeaves);
    case ToolbarIcon::PrintCard:
        return qt::drawnIcon(printer);
    case ToolbarIcon::CloseScreen:
        return qt::drawnIcon(windowThatCloses);
    case ToolbarIcon::Application:
        return qt::drawnIcon(accountsOfALedger);
    }
    return {};
}

} // namespace veldran::shell
