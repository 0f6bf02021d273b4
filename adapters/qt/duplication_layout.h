#pragma once

class QWidget;

namespace veldran::qt {

class ControlViews;

/// The dialog that asks for the causale of a duplicated correlation. nullptr when the form is another one.
QWidget* layOutDuplication(ControlViews& views, QWidget* parent);

} // namespace veldran::qt
