#pragma once

#include <QIcon>

namespace veldran::shell {

/// The host's own pictures; those of the record buttons are the navigators' (adapters/qt/navigator_icons.h).
enum class ToolbarIcon {
    Export,
    PrintCard,
    CloseScreen,
    Application ///< the host itself: accounts hanging from a ledger
};

/// Sharp at every size, and paled while disabled.
QIcon toolbarIcon(ToolbarIcon icon);

} // namespace veldran::shell
