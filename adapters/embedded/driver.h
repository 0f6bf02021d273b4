#pragma once

#include "platform/ado/driver.h"

namespace veldran::embedded {

/// Sessions with a database in one file, on SQLite, speaking T-SQL. The connection string names the file:
/// "Provider=VeldranEmbedded;Data Source=/path/file.vdb[;Mode=ReadWrite|Create][;Lock Timeout=ms]".
/// User and password are not looked at: who may read the file may use it.
class EmbeddedDriver : public ado::Driver {
public:
    std::unique_ptr<ado::Session> open(const std::string& connectionString, const std::string& user,
                                       const std::string& password) override;
};

} // namespace veldran::embedded
