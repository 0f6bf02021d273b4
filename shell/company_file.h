#pragma once

#include "shell/data_file.h"
#include "shell/places.h"

#include <filesystem>
#include <string>

namespace veldran::shell {

/// What the user may do with the records of a screen.
struct UserRights {
    bool insert = true;
    bool remove = true;
    bool update = true;
    bool query = true;
};

/// The configuration of one installation: which database, which company, whose texts.
struct CompanyFile {
    std::filesystem::path path;
    std::string applicationTitle = "Contabilità industriale";
    std::string user;
    std::string company;          ///< code of the company that is open at start
    std::string connectionString; ///< of the database that holds all companies
    UserRights rights;
    // The customer's files; empty where the company has none.
    std::filesystem::path layout;
    std::filesystem::path script;
    std::filesystem::path thesaurus;
    std::filesystem::path messages;
};

/// Paths in the file may start from `places` by their markers, or are relative to the file itself.
/// \throws DataFileError when the file cannot be read or lacks the connection string or the company.
CompanyFile readCompanyFile(const std::filesystem::path& path, const Places& places, Problems& problems);

} // namespace veldran::shell
