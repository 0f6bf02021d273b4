#include "adapters/qt/key_codes.h"

#include "platform/controls/control.h"

#include <QKeyEvent>

namespace veldran::qt {

int keyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) {
        return key;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16) {
        return controls::keyF4 + (key - Qt::Key_F4);
    }
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return controls::keyReturn;
    case Qt::Key_Backspace:
        return controls::keyBack;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return controls::keyTab;
    case Qt::Key_Escape:
        return controls::keyEscape;
    case Qt::Key_Space:
        return controls::keySpace;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return controls::keyDelete;
    case Qt::Key_Menu:
        return controls::keyApps;
    default:
        return 0;
    }
}

int shiftOf(Qt::KeyboardModifiers modifiers) {
    return (modifiers.testFlag(Qt::ShiftModifier) ? controls::shiftShift : controls::shiftNone) |
           (modifiers.testFlag(Qt::ControlModifier) ? controls::shiftCtrl : controls::shiftNone) |
           (modifiers.testFlag(Qt::AltModifier) ? controls::shiftAlt : controls::shiftNone);
}

int buttonOf(Qt::MouseButton button) {
    switch (button) {
    case Qt::LeftButton:
        return controls::buttonLeft;
    case Qt::RightButton:
        return controls::buttonRight;
    case Qt::MiddleButton:
        return controls::buttonMiddle;
    default:
        return 0;
    }
}

} // namespace veldran::qt
