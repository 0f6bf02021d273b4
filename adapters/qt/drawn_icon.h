#pragma once

#include <QIcon>

class QPainter;

namespace veldran::qt {

/// Draws a picture on a square of 16 units.
using IconDrawing = void (*)(QPainter&);

/// An icon drawn anew for every size, so that it is sharp at every scale of the screen; paled as a whole
/// while disabled.
QIcon drawnIcon(IconDrawing drawing);

} // namespace veldran::qt
