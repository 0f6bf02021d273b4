#include "shell/component_library.h"

#include "adapters/qt/text.h"

#include <QLibrary>
#include <system_error>

namespace veldran::shell {

using qt::toQt;

std::string ComponentLibrary::fileName() {
#if defined(Q_OS_WIN)
    return "veldran.dll";
#elif defined(Q_OS_MACOS)
    return "libveldran.dylib";
#else
    return "libveldran.so";
#endif
}

ComponentLibrary ComponentLibrary::load(const std::filesystem::path& file) {
    const std::string name = "«" + file.string() + "»";
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        throw ComponentError("Il componente della maschera non è stato trovato: il file " + name +
                             " non esiste.");
    }
    QLibrary library(toQt(std::filesystem::absolute(file).string()));
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
    if (!library.load()) {
        throw ComponentError(
            "Il componente della maschera " + name +
            " non può essere caricato.\n\nIl sistema risponde: " + library.errorString().toStdString());
    }
    const auto getFactory = reinterpret_cast<GetClassFactory>(library.resolve(classFactorySymbol));
    ClassFactory* factory = getFactory ? getFactory() : nullptr;
    if (!factory) {
        throw ComponentError("Il file " + name + " non è un componente di questa applicazione: non " +
                             (getFactory ? "consegna la sua class factory."
                                         : "esporta il simbolo " + std::string(classFactorySymbol) + "."));
    }
    return ComponentLibrary(file, *factory);
}

std::shared_ptr<Cinterface> ComponentLibrary::create(const std::string& className) const {
    auto component = factory_->CreateInstance(className);
    if (!component) {
        throw ComponentError("Il componente «" + file_.string() + "» non offre la classe " + className + ".");
    }
    return component;
}

} // namespace veldran::shell
