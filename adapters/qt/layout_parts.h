#pragma once

class QBoxLayout;
class QWidget;

namespace veldran::qt {

class LabelView;

inline constexpr int layoutGap = 8; ///< pixels between the parts of a layout

/// The layout of `widget`, from top to bottom.
/// \param edge pixels left free all around
QBoxLayout* columnOf(QWidget& widget, int edge);
/// A row that stands in another layout, which takes it over.
QBoxLayout* newRow();

/// Makes a label look like a field that shows a value and takes none; it takes the room that is left.
void showAsReadOnlyField(LabelView& label);

} // namespace veldran::qt
