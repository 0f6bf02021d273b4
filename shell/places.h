#pragma once

#include <filesystem>
#include <string>

namespace veldran::shell {

/// Where the host finds its files.
struct Places {
    std::filesystem::path data;     ///< what the host ships: texts, examples, the demo company's file
    std::filesystem::path database; ///< the database scripts that make the demo company
    std::filesystem::path user;     ///< what belongs to this user, created when first needed
    std::filesystem::path program;  ///< where the executable stands, and the component beside it

    /// As installed or as built, seen from the executable; `user` follows the desktop's rules for
    /// application data. Needs the application object.
    static Places ofThisProgram();

    /// `path` with the markers "${DATI}" and "${UTENTE}" resolved; what is still relative starts from `base`.
    std::filesystem::path resolve(const std::string& path, const std::filesystem::path& base) const;
    /// `text` with the same markers resolved.
    std::string expand(std::string text) const;
};

} // namespace veldran::shell
