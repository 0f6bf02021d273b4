#pragma once

#include "shell/data_file.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace veldran::shell {

/// One numbered message to the user.
struct CatalogueMessage {
    std::string text;
    std::string title;
    int style = 0; ///< bits of services::MessageBoxStyle
};

/// The host's numbered messages. A later file's messages replace those of an earlier one.
class MessageCatalogue {
public:
    /// \throws DataFileError when nothing of the file can be used; the messages read before stay.
    void add(const std::filesystem::path& path, Problems& problems);
    /// A number that no file holds yields a message that says so.
    CatalogueMessage message(std::int32_t number) const;

private:
    std::map<std::int32_t, CatalogueMessage> messages_;
};

} // namespace veldran::shell
