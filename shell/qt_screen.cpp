#include "shell/qt_screen.h"

#include "adapters/qt/twips.h"

#include <QCursor>
#include <QGuiApplication>

namespace veldran::shell {
QtScreen::~QtScreen() {
    SetMousePointer(services::mouseDefault);
}

void QtScreen::SetMousePointer(int pointer) {
    const bool wasBusy = pointer_ == services::mouseArrowHourglass;
    const bool isBusy = pointer == services::mouseArrowHourglass;
    pointer_ = pointer;
    if (isBusy && !wasBusy) {
        QGuiApplication::setOverrideCursor(QCursor(Qt::BusyCursor));
    } else if (!isBusy && wasBusy) {
        QGuiApplication::restoreOverrideCursor();
    }
}

int QtScreen::TwipsPerPixelX() const {
    return qt::twipsPerPixel;
}

int QtScreen::TwipsPerPixelY() const {
    return qt::twipsPerPixel;
}

PointerPause::PointerPause() {
    if (const QCursor* cursor = QGuiApplication::overrideCursor()) {
        shape_ = cursor->shape();
        QGuiApplication::restoreOverrideCursor();
    }
}

PointerPause::~PointerPause() {
    if (shape_ >= 0) {
        QGuiApplication::setOverrideCursor(QCursor(static_cast<Qt::CursorShape>(shape_)));
    }
}

} // namespace veldran::shell
