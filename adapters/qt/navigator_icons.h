#pragma once

#include <QIcon>
#include <string_view>

namespace veldran::qt {

/// The picture of a navigator's button, by its key; an icon without pictures for any other key.
QIcon navigatorIcon(std::string_view key);

} // namespace veldran::qt
