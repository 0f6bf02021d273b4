#include "platform/services/object.h"

#include <stdexcept>
#include <string>

namespace veldran::services {

Value Object::GetProperty(std::string_view name) const {
    throw std::out_of_range("the object has no property \"" + std::string(name) + "\"");
}

} // namespace veldran::services
