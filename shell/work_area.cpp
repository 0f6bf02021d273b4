#include "shell/work_area.h"

#include "adapters/qt/colours.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QPainter>
#include <algorithm>

namespace veldran::shell {

namespace {

constexpr int shade = 118;   ///< per cent that the ground is darker than a window
constexpr int softness = 75; ///< per cent of the text's colour in what is said without a document
constexpr int inset = 24;    ///< pixels that the text keeps from the edges

} // namespace

WorkArea::WorkArea(const QString& emptyText, QWidget* parent) : QMdiArea(parent), emptyText_(emptyText) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    connect(this, &QMdiArea::subWindowActivated, viewport(), [this] { viewport()->update(); });
    showGround();
}

void WorkArea::showGround() {
    setBackground(palette().color(QPalette::Window).darker(shade));
}

void WorkArea::changeEvent(QEvent* event) {
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        showGround();
    }
}

bool WorkArea::isEmpty() const {
    const auto windows = subWindowList();
    return std::all_of(windows.begin(), windows.end(),
                       [](const QMdiSubWindow* window) { return window->isHidden(); });
}

void WorkArea::paintEvent(QPaintEvent* event) {
    QMdiArea::paintEvent(event);
    if (!isEmpty()) {
        return;
    }
    QPainter painter(viewport());
    painter.setPen(qt::blended(palette().color(QPalette::WindowText), background().color(), softness));
    painter.drawText(viewport()->rect().adjusted(inset, inset, -inset, -inset),
                     Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

} // namespace veldran::shell
