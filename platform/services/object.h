#pragma once

#include "platform/value.h"

#include <string_view>

namespace veldran::services {

/// An object of the host that the contract passes around without knowing it closer.
class Object {
public:
    virtual ~Object() = default;
    /// A late-bound property by name, blind to case. \throws std::out_of_range when the object has no such
    /// property.
    virtual Value GetProperty(std::string_view name) const;
};

} // namespace veldran::services
