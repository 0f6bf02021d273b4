#pragma once

#include "host/class_factory.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace veldran::shell {

/// The screen's library cannot be used; `what()` is Italian, for the user, and names the file.
class ComponentError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The component, loaded at run time. Never unloaded: its forms and handlers may live as long as the program.
class ComponentLibrary {
public:
    /// \throws ComponentError when the file is missing, is no library, or exports no class factory.
    static ComponentLibrary load(const std::filesystem::path& file);
    /// The name the library has on this platform, to be found beside the program.
    static std::string fileName();

    /// \throws ComponentError when the library does not offer the class.
    std::shared_ptr<Cinterface> create(const std::string& className) const; // shared: as the factory's
    const std::filesystem::path& file() const { return file_; }

private:
    ComponentLibrary(std::filesystem::path file, ClassFactory& factory)
        : file_(std::move(file)), factory_(&factory) {}

    std::filesystem::path file_;
    ClassFactory* factory_; ///< belongs to the library
};

} // namespace veldran::shell
