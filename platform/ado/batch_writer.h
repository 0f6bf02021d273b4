#pragma once

#include "platform/ado/cursor_rows.h"
#include "platform/ado/driver.h"

#include <cstddef>
#include <string>
#include <vector>

namespace veldran::ado {

/// Writes marked rows of one set to their base table.
///
/// Deleted rows go first, then changed ones, then new ones. Changed rows whose key takes the place of another
/// changed row's old key wait until that one has moved; rows that exchange keys in a circle get one of them
/// parked under a key nobody uses. A row is found by its original key and by the original values that are
/// about to be overwritten (for a deletion: by all original values), so that a change made by somebody else
/// since is noticed. Identity columns are never written. Columns of a new row that are NULL are left to the
/// table's defaults.
class BatchWriter {
public:
    /// Plans everything before anything is written.
    /// \throws AdoError 3251 when the rows' base table or key are unknown, a changed column belongs to no
    /// table, or a circle of keys cannot be parted.
    BatchWriter(const CursorRows& rows, const std::vector<std::size_t>& marked);

    /// Whether nothing is to be written: rows that are again as the database has them need no statement.
    bool isEmpty() const { return statements_.empty(); }
    /// \throws AdoError `adErrConcurrencyViolation` when a row is not found, `adErrKeyInsufficient` when a
    /// key finds several, and every failure of the database. What was written before stays for the caller's
    /// transaction to undo.
    void write(Session& session, const ExecuteSettings& settings) const;

private:
    struct Statement {
        std::string text;
        std::vector<BoundParameter> parameters;
    };
    /// A key that stands in for one column's value while a circle of keys is being parted.
    struct Parking {
        std::size_t column = 0;
        Value key;
    };
    class Conditions;

    void findBaseTable();
    void planDeletes(const std::vector<std::size_t>& marked);
    void planUpdates(const std::vector<std::size_t>& marked);
    void planInserts(const std::vector<std::size_t>& marked);
    std::string insertOf(const std::vector<std::size_t>& columns) const;
    void addUpdate(std::size_t row, const std::vector<std::size_t>& columns, const Parking* parking);
    void addParking(std::size_t row, const std::vector<std::size_t>& columns, const Parking& parking);
    Parking parkingFor(std::size_t row);
    bool isChanged(std::size_t row, std::size_t column) const;
    std::vector<std::size_t> changedColumns(std::size_t row) const;
    std::string keyText(std::size_t row, bool original) const;
    BoundParameter parameter(std::size_t position, std::size_t column, Value value) const;

    const CursorRows& rows_;
    std::string table_;
    std::vector<std::size_t> columns_; // of the base table, each of its columns once
    std::vector<std::size_t> keys_;
    std::vector<Value> parkingKeys_; // in use already
    std::vector<Statement> statements_;
};

} // namespace veldran::ado
