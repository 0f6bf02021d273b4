#pragma once

#include "platform/ado/driver.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

/// One table in memory: columns with their keys, rows in the order of their keys.
struct MemoryTable {
    std::string name;
    std::vector<ado::ColumnInfo> columns;
    std::vector<std::vector<Value>> rows;
};

/// What the sessions of a MemoryDriver work on.
struct MemoryDatabase {
    std::vector<MemoryTable> tables;
    std::map<std::string, std::vector<ado::ParameterInfo>> procedures;
    int openSessions = 0;
    int livePrepared = 0;
    int transactions = 0; ///< that are open

    MemoryTable& table(std::string_view name);
};

/// The least database that the cursor's own rules can be tried on where no real one is built: it runs "SELECT
/// * FROM <table>" and the statements that a recordset writes, enforces primary keys and NOT NULL, and undoes
/// a transaction. A text that begins with "-- " does nothing and counts no rows; any other text is refused
/// with error 102.
class MemoryDriver final : public ado::Driver {
public:
    MemoryDatabase& database() { return *database_; }
    std::unique_ptr<ado::Session> open(const std::string& connectionString, const std::string& user,
                                       const std::string& password) override;

private:
    std::shared_ptr<MemoryDatabase> database_ =
        std::make_shared<MemoryDatabase>(); // shared with the sessions
};

/// A column of a table: \p size is characters of text or digits of a decimal.
ado::ColumnInfo column(std::string name, ado::DataTypeEnum type, int size = 0, std::uint8_t scale = 0);
ado::ColumnInfo keyColumn(std::string name, ado::DataTypeEnum type, int size = 0, std::uint8_t scale = 0);

} // namespace veldran::test
