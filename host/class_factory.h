#pragma once

#include "host/cinterface.h"

#include <memory>
#include <string_view>

namespace veldran {

/// Creates the component's classes: the one thing the library hands out.
class ClassFactory {
public:
    virtual ~ClassFactory() = default;
    /// \param className "CLSCI_VELDRAN"; blind to case.
    /// \return an empty pointer for any other name.
    virtual std::shared_ptr<Cinterface>
    CreateInstance(std::string_view className) = 0; // shared: host and form hold it
};

/// Name and type of the one symbol that the library exports. The factory lives as long as the library is
/// loaded.
inline constexpr const char* classFactorySymbol = "VeldranGetClassFactory";
using GetClassFactory = ClassFactory* (*)();

} // namespace veldran
