#pragma once

#include "platform/services/global_object.h"
#include "shell/data_file.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace veldran::shell {

/// The dictionary of translated texts, read from files. A later file's texts replace those of an earlier one,
/// so that a customer's file names only what differs.
class FileThesaurus final : public services::Thesaurus {
public:
    /// Adds the entries of a file. What is wrong in it is noted; the rest serves.
    /// \throws DataFileError when nothing of the file can be used; the entries read before stay.
    void add(const std::filesystem::path& path, Problems& problems);

    std::optional<std::string> Entry(std::int32_t number) const override;
    std::optional<std::string> ControlCaption(const std::string& form,
                                              const std::string& control) const override;

private:
    std::map<std::int32_t, std::string> entries_;
    std::map<std::string, std::string> captions_; ///< by "FORM/CONTROL" in upper case
};

} // namespace veldran::shell
