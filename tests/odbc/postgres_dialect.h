#pragma once

#include "platform/ado/driver.h"

#include <memory>
#include <string>
#include <string_view>

namespace veldran::test {

/// A statement of the contract, which is written in T-SQL, as PostgreSQL reads it: working tables, delimited
/// names, types and the separation of statements. Nothing else differs in what the contract says.
std::string inPostgresDialect(std::string_view text);

/// A driver whose sessions translate every text before another driver sees it.
class PostgresDialectDriver : public ado::Driver {
public:
    explicit PostgresDialectDriver(std::shared_ptr<ado::Driver> inner) : inner_(std::move(inner)) {}
    std::unique_ptr<ado::Session> open(const std::string& connectionString, const std::string& user,
                                       const std::string& password) override;

private:
    std::shared_ptr<ado::Driver> inner_; // shared with the sessions, which may outlive this object
};

} // namespace veldran::test
