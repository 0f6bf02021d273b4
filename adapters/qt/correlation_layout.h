#pragma once

class QWidget;

namespace veldran::qt {

class ControlViews;

/// The correlation area: the account on top, the causali it has correlations for at the left, and at the
/// right the correlation of one of them, its rows and the fields of the current row.
QWidget* layOutCorrelation(ControlViews& views, QWidget* parent);

} // namespace veldran::qt
