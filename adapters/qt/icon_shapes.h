#pragma once

#include <QColor>
#include <QPointF>
#include <initializer_list>

class QPainter;

namespace veldran::qt {

/// Colours that the pictures of commands share; each stands for one thing everywhere.
namespace iconColours {
inline constexpr QColor outline(0x37, 0x47, 0x4f);
inline constexpr QColor paper(0xff, 0xff, 0xff);
inline constexpr QColor moves(0x1e, 0x6f, 0xb8);
inline constexpr QColor keeps(0x2e, 0x7d, 0x32);
inline constexpr QColor removes(0xc6, 0x28, 0x28);
} // namespace iconColours

inline constexpr double iconStroke = 2.2; ///< of the lines of a picture, in its units

/// A pen with round ends and no brush.
void takeStroke(QPainter& painter, const QColor& colour, double width = iconStroke);
void drawStroke(QPainter& painter, const QColor& colour, std::initializer_list<QPointF> points,
                double width = iconStroke);
/// A sheet of paper with a folded corner, which leaves the right side of the picture free.
void drawSheet(QPainter& painter);

} // namespace veldran::qt
