#pragma once

#include "platform/event.h"

#include <cstdint>
#include <optional>
#include <string>

namespace veldran::controls {
class FrameNavigator;
}

namespace veldran::frames {

class VirtualFrame;

/// What a navigator shows of its frame.
struct NavigatorState {
    bool open = false; ///< there is a record set, and the frame rests; nothing else counts without
    bool writable = false;
    bool adding = false;
    bool changed = false;
    std::int64_t position = 0; ///< from 1; 0 without a record
    std::int64_t count = 0;

    friend bool operator==(const NavigatorState&, const NavigatorState&) = default;
};

/// Ties a navigator to its frame: its buttons do what the frame's operations of the same meaning do.
class NavigatorBinding {
public:
    /// Both outlive the binding. \param noun of a record with its article, for the buttons' tips
    NavigatorBinding(VirtualFrame& frame, controls::FrameNavigator& navigator, const std::string& noun);
    NavigatorBinding(const NavigatorBinding&) = delete;
    NavigatorBinding& operator=(const NavigatorBinding&) = delete;

    /// Asked for after whatever may have changed the frame; mostly nothing has.
    void show(const NavigatorState& state);

private:
    bool press(const std::string& key);

    VirtualFrame& frame_;
    controls::FrameNavigator& navigator_;
    std::optional<NavigatorState> shown_;
    Subscription clicks_;
};

} // namespace veldran::frames
