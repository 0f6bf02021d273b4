#pragma once

#include <QIcon>

namespace veldran::shell {

enum class ToolbarIcon {
    First,
    Previous,
    Next,
    Last,
    New,
    Confirm,
    Undo,
    Delete,
    Export,
    PrintCard,
    CloseScreen,
    Application ///< the host itself: accounts hanging from a ledger
};

/// A drawn icon of the navigator's buttons, sharp at every size and in both enabled states.
QIcon toolbarIcon(ToolbarIcon icon);

} // namespace veldran::shell
