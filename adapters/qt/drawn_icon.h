#pragma once

#include <QIcon>
#include <QSize>

class QPainter;
class QWidget;

namespace veldran::qt {

/// Draws a picture on a square of 16 units.
using IconDrawing = void (*)(QPainter&);

/// An icon drawn anew for every size, so that it is sharp at every scale of the screen; paled as a whole
/// while disabled.
QIcon drawnIcon(IconDrawing drawing);

/// Of icons beside a text and on small buttons: larger where the widget's letters are.
QSize smallIconSize(const QWidget& widget);

} // namespace veldran::qt
