#include "platform/controls/container.h"

namespace veldran::controls {

Container::Container(Root, std::string name) : Control(std::move(name)) {}

} // namespace veldran::controls
