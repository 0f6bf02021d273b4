#include "adapters/qt/navigator_icons.h"

#include "adapters/qt/drawn_icon.h"
#include "adapters/qt/icon_shapes.h"
#include "platform/controls/frame_navigator.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>

namespace veldran::qt {

namespace {

using namespace iconColours;

void arrow(QPainter& painter, double tip, double base) {
    QPainterPath shape({tip, 8});
    shape.lineTo(base, 3);
    shape.lineTo(base, 13);
    shape.closeSubpath();
    painter.fillPath(shape, moves);
}

void stop(QPainter& painter, double left) {
    painter.fillRect(QRectF(left, 3, 2, 10), moves);
}

void first(QPainter& painter) {
    stop(painter, 2);
    arrow(painter, 5, 13);
}

void previous(QPainter& painter) {
    arrow(painter, 4, 12);
}

void next(QPainter& painter) {
    arrow(painter, 12, 4);
}

void last(QPainter& painter) {
    arrow(painter, 11, 3);
    stop(painter, 12);
}

void newSheet(QPainter& painter) {
    drawSheet(painter);
    drawStroke(painter, keeps, {{11.5, 8}, {11.5, 15}});
    drawStroke(painter, keeps, {{8, 11.5}, {15, 11.5}});
}

void tick(QPainter& painter) {
    drawStroke(painter, keeps, {{2.5, 8.5}, {6.5, 12.5}, {13.5, 3.5}});
}

void turnBack(QPainter& painter) {
    drawStroke(painter, moves, {{6.5, 3.5}, {3.5, 6.5}, {6.5, 9.5}});
    QPainterPath bow({3.5, 6.5});
    bow.lineTo(9.5, 6.5);
    bow.cubicTo(14.5, 6.5, 14.5, 13, 9.5, 13);
    bow.lineTo(6, 13);
    painter.drawPath(bow);
}

void cross(QPainter& painter) {
    drawStroke(painter, removes, {{3.5, 3.5}, {12.5, 12.5}});
    drawStroke(painter, removes, {{12.5, 3.5}, {3.5, 12.5}});
}

struct Picture {
    std::string_view key;
    IconDrawing drawing;
};

namespace keys = controls::navigatorKeys;
constexpr std::array<Picture, 8> pictures{{{keys::primo, first},
                                           {keys::precedente, previous},
                                           {keys::successivo, next},
                                           {keys::ultimo, last},
                                           {keys::nuovo, newSheet},
                                           {keys::conferma, tick},
                                           {keys::annulla, turnBack},
                                           {keys::elimina, cross}}};

} // namespace

QIcon navigatorIcon(std::string_view key) {
    const auto found = std::find_if(pictures.begin(), pictures.end(),
                                    [key](const Picture& picture) { return picture.key == key; });
    return found == pictures.end() ? QIcon() : drawnIcon(found->drawing);
}

} // namespace veldran::qt
