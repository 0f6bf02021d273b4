#include "shell/toolbar_icons.h"

#include <QColor>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygonF>

namespace veldran::shell {
namespace {

// All shapes are drawn on a square of 16 units.
constexpr qreal side = 16;
constexpr qreal disabledOpacity = 0.35;

const QColor ink(0x37, 0x47, 0x4f);
const QColor blue(0x1e, 0x6f, 0xb8);
const QColor green(0x2e, 0x7d, 0x32);
const QColor red(0xc6, 0x28, 0x28);
const QColor paper(0xff, 0xff, 0xff);

void triangle(QPainter& p, qreal tip, qreal base) {
    p.setPen(Qt::NoPen);
    p.setBrush(blue);
    p.drawPolygon(QPolygonF{{tip, 8}, {base, 3}, {base, 13}});
}

void bar(QPainter& p, qreal x) {
    p.fillRect(QRectF(x, 3, 2, 10), blue);
}

void stroke(QPainter& p, const QColor& color, qreal width) {
    p.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
}

void sheet(QPainter& p) {
    p.setPen(QPen(ink, 1));
    p.setBrush(paper);
    p.drawPolygon(QPolygonF{{2.5, 1.5}, {8.5, 1.5}, {11.5, 4.5}, {11.5, 14.5}, {2.5, 14.5}});
    p.drawPolyline(QPolygonF{{8.5, 1.5}, {8.5, 4.5}, {11.5, 4.5}});
}

void draw(QPainter& p, ToolbarIcon icon) {
    switch (icon) {
    case ToolbarIcon::First:
        bar(p, 2);
        triangle(p, 5, 13);
        break;
    case ToolbarIcon::Previous:
        triangle(p, 4, 12);
        break;
    case ToolbarIcon::Next:
        triangle(p, 12, 4);
        break;
    case ToolbarIcon::Last:
        triangle(p, 11, 3);
        bar(p, 12);
        break;
    case ToolbarIcon::New:
        sheet(p);
        stroke(p, green, 2);
        p.drawLine(QPointF(11.5, 8), QPointF(11.5, 15));
        p.drawLine(QPointF(8, 11.5), QPointF(15, 11.5));
        break;
    case ToolbarIcon::Confirm:
        stroke(p, green, 2.4);
        p.drawPolyline(QPolygonF{{2.5, 8.5}, {6.5, 12.5}, {13.5, 3.5}});
        break;
    case ToolbarIcon::Undo: {
        stroke(p, blue, 2);
        QPainterPath arrow(QPointF(3.5, 6.5));
        arrow.lineTo(9.5, 6.5);
        arrow.cubicTo(14.5, 6.5, 14.5, 13, 9.5, 13);
        arrow.lineTo(6, 13);
        p.drawPath(arrow);
        p.drawPolyline(QPolygonF{{6.5, 3.5}, {3.5, 6.5}, {6.5, 9.5}});
        break;
    }
    case ToolbarIcon::Delete:
        stroke(p, red, 2.4);
        p.drawLine(QPointF(3.5, 3.5), QPointF(12.5, 12.5));
        p.drawLine(QPointF(12.5, 3.5), QPointF(3.5, 12.5));
        break;
    case ToolbarIcon::Export:
        sheet(p);
        stroke(p, green, 1.8);
        p.drawLine(QPointF(6, 9), QPointF(14, 9));
        p.drawPolyline(QPolygonF{{11.5, 6.5}, {14.2, 9}, {11.5, 11.5}});
        break;
    case ToolbarIcon::PrintCard:
        p.setPen(QPen(ink, 1));
        p.setBrush(paper);
        p.drawRect(QRectF(4.5, 1.5, 7, 5));
        p.setBrush(QColor(0xb0, 0xbe, 0xc5));
        p.drawRoundedRect(QRectF(1.5, 5.5, 13, 6), 1, 1);
        p.setBrush(paper);
        p.drawRect(QRectF(4.5, 9.5, 7, 5));
        p.drawLine(QPointF(6, 11.5), QPointF(10, 11.5));
        break;
    case ToolbarIcon::CloseScreen:
        p.setPen(QPen(ink, 1));
        p.setBrush(paper);
        p.drawRoundedRect(QRectF(1.5, 2.5, 13, 11), 1, 1);
        p.fillRect(QRectF(1.5, 2.5, 13, 3), blue);
        stroke(p, red, 1.6);
        p.drawLine(QPointF(6, 7.5), QPointF(10, 11.5));
        p.drawLine(QPointF(10, 7.5), QPointF(6, 11.5));
        break;
    case ToolbarIcon::Application:
        p.setPen(Qt::NoPen);
        p.setBrush(blue);
        p.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 2.5, 2.5);
        stroke(p, paper, 1.2);
        p.drawPolyline(QPolygonF{{4.5, 4.5}, {4.5, 11.5}, {7.5, 11.5}});
        p.drawLine(QPointF(4.5, 8), QPointF(7.5, 8));
        p.setPen(Qt::NoPen);
        p.setBrush(paper);
        p.drawRect(QRectF(2.8, 2.8, 5.5, 2.6));
        p.drawRect(QRectF(7.5, 6.7, 5.7, 2.6));
        p.drawRect(QRectF(7.5, 10.2, 5.7, 2.6));
        break;
    }
}

class ToolbarIconEngine final : public QIconEngine {
public:
    explicit ToolbarIconEngine(ToolbarIcon icon) : icon_(icon) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        painter->save();
        if (mode == QIcon::Disabled) {
            // Paled as a whole: parts that lie over each other must not show through.
            const qreal ratio = painter->device()->devicePixelRatioF();
            QPixmap whole = pixmap(rect.size() * ratio, QIcon::Normal, state);
            whole.setDevicePixelRatio(ratio);
            painter->setOpacity(disabledOpacity);
            painter->drawPixmap(rect.topLeft(), whole);
        } else {
            painter->setRenderHint(QPainter::Antialiasing);
            const qreal edge = qMin(rect.width(), rect.height());
            painter->translate(rect.x() + (rect.width() - edge) / 2, rect.y() + (rect.height() - edge) / 2);
            painter->scale(edge / side, edge / side);
            draw(*painter, icon_);
        }
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new ToolbarIconEngine(icon_); }

private:
    ToolbarIcon icon_;
};

} // namespace

QIcon toolbarIcon(ToolbarIcon icon) {
    return QIcon(new ToolbarIconEngine(icon));
}

} // namespace veldran::shell
