#pragma once

#include "host/class_factory.h"

namespace veldran::test {

/// The component's shared library, loaded at run time as a host does and kept for the life of the test
/// program.
class ComponentLibrary {
public:
    /// \throws std::runtime_error when the library or its one symbol is missing.
    static ComponentLibrary& instance();
    ClassFactory& factory() { return *factory_; }

private:
    ComponentLibrary();
    ClassFactory* factory_ = nullptr;
};

} // namespace veldran::test
