#pragma once

#include <cstdint>
#include <memory>

namespace veldran::controls {
class Form;
}

namespace veldran::services {

/// Shows forms in the host's windows. Keeps every shown form alive until it has been unloaded.
class WindowService {
public:
    virtual ~WindowService() = default;
    /// Loads the form, shows it and activates it; a modal call returns when the form has been unloaded.
    /// \param parent the window handle that the host handed to the component; 0 is the host's main window.
    virtual void ShowForm(std::shared_ptr<controls::Form> form, bool modal,
                          std::intptr_t parent) = 0; // shared: kept while shown
    /// Lets pending user-interface messages run.
    virtual void DoEvents() = 0;
};

/// Values of `Screen::SetMousePointer`.
enum MousePointer { mouseDefault = 0, mouseArrowHourglass = 13 };

/// The screen the user looks at.
class Screen {
public:
    virtual ~Screen() = default;
    virtual int GetMousePointer() const = 0;
    virtual void SetMousePointer(int pointer) = 0;
    virtual int TwipsPerPixelX() const = 0;
    virtual int TwipsPerPixelY() const = 0;
};

} // namespace veldran::services
