#include "adapters/qt/focus_catcher_view.h"

#include "adapters/qt/control_binding.h"
#include "platform/controls/focus_catcher.h"

namespace veldran::qt {

FocusCatcherView::FocusCatcherView(controls::FocusCatcher& control, QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(1, 1); // a widget without any extent would not be visible, and could not take the focus
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    new ControlBinding(control, *this, this, {});
}

} // namespace veldran::qt
