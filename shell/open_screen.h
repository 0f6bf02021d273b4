#pragma once

#include "host/cinterface.h"
#include "shell/component_library.h"
#include "shell/host_global.h"
#include "shell/screen_navigator.h"
#include "shell/screen_windows.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class QMdiArea;

namespace veldran::shell {

/// What the menu says of a screen.
struct MenuEntry {
    std::string className;
    std::string caption;
    std::string module;
    int parent = 0;
    int program = 0;
};

/// One screen that the host has opened: its component, and the host objects made for it.
class OpenScreen {
public:
    OpenScreen(Host& host, const ComponentLibrary& library, QMdiArea& area, MenuEntry entry);
    ~OpenScreen();
    OpenScreen(const OpenScreen&) = delete;
    OpenScreen& operator=(const OpenScreen&) = delete;

    /// Hands the component its context and lets it show its form. \throws what the component throws
    void show(std::intptr_t mainWindow);
    /// The host's own close, as when the application ends. \return false when the screen stays open
    bool close();

    bool owns(const QMdiSubWindow& window) const { return windows_.owns(window); }
    bool hasWindows() const { return windows_.count() > 0; }
    void bringToFront() { windows_.bringToFront(); }

    const MenuEntry& entry() const { return entry_; }
    ScreenNavigator& navigator() { return *navigator_; }
    Cinterface& component() { return *component_; }

    std::function<void()> onGone; ///< called when the screen's last window has gone

private:
    Host& host_;
    MenuEntry entry_;
    ScreenWindows windows_;
    std::shared_ptr<ScreenNavigator> navigator_; // shared with the component
    std::shared_ptr<HostGlobal> global_;         // shared with the component
    std::shared_ptr<Cinterface> component_;      // shared with its form until that unloads
};

} // namespace veldran::shell
