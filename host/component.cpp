#include "host/class_factory.h"
#include "host/clsci_veldran.h"
#include "platform/text.h"

namespace veldran {

namespace {

class ComponentClassFactory final : public ClassFactory {
public:
    std::shared_ptr<Cinterface> CreateInstance(std::string_view className) override {
        if (!equalsIgnoringAsciiCase(className, "CLSCI_VELDRAN")) {
            return nullptr;
        }
        return std::make_shared<CLSCI_VELDRAN>();
    }
};

} // namespace

} // namespace veldran

/// The one symbol of the component library.
extern "C" veldran::ClassFactory* VeldranGetClassFactory();

veldran::ClassFactory* VeldranGetClassFactory() {
    static veldran::ComponentClassFactory factory;
    return &factory;
}
