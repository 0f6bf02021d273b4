#pragma once

#include "platform/ado/driver.h"
#include "platform/value.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace veldran::embedded {

/// Fills one table of the file with many rows at the speed of one prepared statement. All rows count
/// together: those of a loader that is destroyed before `finish` are gone. Values are checked as the columns
/// demand.
class BulkLoader {
public:
    /// \throws AdoError for a session of another driver, an unknown table or column, and inside a transaction
    BulkLoader(ado::Session& session, const std::string& table, const std::vector<std::string>& columns);
    ~BulkLoader();
    BulkLoader(const BulkLoader&) = delete;
    BulkLoader& operator=(const BulkLoader&) = delete;

    /// One value for each column. \throws AdoError for a value that the column refuses; the row is left out
    /// then
    void append(std::span<const Value> row);
    /// Makes the rows permanent and returns how many they are. \throws AdoError
    std::int64_t finish();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace veldran::embedded
