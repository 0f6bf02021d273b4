#include "adapters/qt/drawn_icon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QWidget>
#include <algorithm>

namespace veldran::qt {

namespace {

constexpr double side = 16;
constexpr double disabledOpacity = 0.35;

class DrawnIconEngine : public QIconEngine {
public:
    explicit DrawnIconEngine(IconDrawing drawing) : drawing_(drawing) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        painter->save();
        if (mode == QIcon::Disabled) { // as a whole: parts that lie over each other must not show through
            const double ratio = painter->device()->devicePixelRatioF();
            QPixmap whole = pixmap(rect.size() * ratio, QIcon::Normal, state);
            whole.setDevicePixelRatio(ratio);
            painter->setOpacity(disabledOpacity);
            painter->drawPixmap(rect.topLeft(), whole);
        } else {
            painter->setRenderHint(QPainter::Antialiasing);
            const int edge = std::min(rect.width(), rect.height());
            painter->translate(rect.topLeft() + QPoint(rect.width() - edge, rect.height() - edge) / 2);
            painter->scale(edge / side, edge / side);
            drawing_(*painter);
        }
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return image;
    }

    QIconEngine* clone() const override { return new DrawnIconEngine(*this); }

private:
    IconDrawing drawing_;
};

} // namespace

QIcon drawnIcon(IconDrawing drawing) {
    return QIcon(new DrawnIconEngine(drawing)); // the icon owns its engine
}

QSize smallIconSize(const QWidget& widget) {
    const int usual = widget.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &widget);
    const int besideLetters = widget.fontMetrics().ascent() * 6 / 5;
    const int edge = std::max(usual, besideLetters);
    return {edge, edge};
}

} // namespace veldran::qt
