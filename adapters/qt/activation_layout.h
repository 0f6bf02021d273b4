#pragma once

class QWidget;

namespace veldran::qt {

class ControlViews;

/// The activation area: search row, filters and the accounts tree.
QWidget* layOutActivation(ControlViews& views, QWidget* parent);
/// The buttons that belong to the account selected in the tree; they come and go with the area.
QWidget* layOutAccountButtons(ControlViews& views, QWidget* parent);

} // namespace veldran::qt
