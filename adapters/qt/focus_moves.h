#pragma once

#include <Qt>

class QWidget;

namespace veldran::qt {

/// The widget that loses the focus for this reason has it again by itself: its window was left, or a menu
/// opened.
bool focusComesBack(Qt::FocusReason reason);

/// Moves the focus out of `leaving`, which is about to be hidden or disabled, to the next widget of its
/// window that takes it. Nothing happens when the focus is not in it. The toolkit's own choice could fall on
/// a focus catcher (a widget that takes the focus by Tab alone), and entering one is an act of the user.
void moveFocusOutOf(const QWidget& leaving);

} // namespace veldran::qt
