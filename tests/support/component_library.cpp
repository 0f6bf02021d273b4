#include "tests/support/component_library.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace veldran::test {

ComponentLibrary& ComponentLibrary::instance() {
    static ComponentLibrary library;
    return library;
}

ComponentLibrary::ComponentLibrary() {
    void* handle = dlopen(VELDRAN_COMPONENT_FILE, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        throw std::runtime_error(std::string("the component does not load: ") + dlerror());
    }
    const auto getFactory = reinterpret_cast<GetClassFactory>(dlsym(handle, classFactorySymbol));
    if (getFactory == nullptr) {
        throw std::runtime_error(std::string("the component has no class factory: ") + dlerror());
    }
    factory_ = getFactory();
}

} // namespace veldran::test
