#pragma once

#include "platform/services/windows.h"

namespace veldran::shell {

/// The desktop: its pointer and its measure. A busy pointer set twice is taken back once.
class QtScreen final : public services::Screen {
public:
    ~QtScreen() override;
    int GetMousePointer() const override { return pointer_; }
    void SetMousePointer(int pointer) override;
    int TwipsPerPixelX() const override;
    int TwipsPerPixelY() const override;

private:
    int pointer_ = services::mouseDefault;
};

/// Takes the busy pointer away while the user is asked something, and puts it back afterwards.
class PointerPause {
public:
    PointerPause();
    ~PointerPause();
    PointerPause(const PointerPause&) = delete;
    PointerPause& operator=(const PointerPause&) = delete;

private:
    int shape_ = -1; ///< of the pointer taken away; -1 when there was none
};

} // namespace veldran::shell
