#include "adapters/qt/icon_shapes.h"

#include <QPainter>

namespace veldran::qt {

void takeStroke(QPainter& painter, const QColor& colour, double width) {
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
}

void drawStroke(QPainter& painter, const QColor& colour, std::initializer_list<QPointF> points,
                double width) {
    takeStroke(painter, colour, width);
    painter.drawPolyline(std::data(points), static_cast<int>(points.size()));
}

void drawSheet(QPainter& painter) {
    painter.setPen(QPen(iconColours::outline, 1));
    painter.setBrush(iconColours::paper);
    painter.drawPolygon(QPolygonF{{2.5, 1.5}, {8.5, 1.5}, {11.5, 4.5}, {11.5, 14.5}, {2.5, 14.5}});
    painter.drawPolyline(QPolygonF{{8.5, 1.5}, {8.5, 4.5}, {11.5, 4.5}});
}

} // namespace veldran::qt
