#pragma once

#include "platform/ado/row_set.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace veldran::ado {

/// The rows that a recordset and its clones share, with what is not yet written of each. A row keeps its
/// index for the life of the set: removing a row only marks it, a new row takes the next index.
class CursorRows {
public:
    /// Who edits a row: the address of its recordset.
    using Editor = const void*;

    explicit CursorRows(std::unique_ptr<RowSet> rows);

    /// Differs between any two sets of rows of the process; never 0.
    std::uint64_t id() const { return id_; }
    const std::vector<ColumnInfo>& columns() const { return rows_->columns(); }
    /// One more than the highest index, removed rows included.
    std::size_t size() const { return size_; }
    std::size_t removedCount() const { return removed_; }
    /// Deleted (whether or not that is written already), or new and given up.
    bool isRemoved(std::size_t row) const { return removed_ > 0 && isAmongRemoved(row); }
    /// Has something that the database does not know yet, an edit in progress included.
    bool isPending(std::size_t row) const;
    RecordStatusEnum status(std::size_t row) const;
    const Value& value(std::size_t row, std::size_t column) const { return rows_->cell(row, column); }
    /// The value the database last reported or accepted; NULL for a new row.
    Value original(std::size_t row, std::size_t column) const;
    /// nullptr when nobody edits the row.
    Editor editor(std::size_t row) const;
    bool isBeingAdded(std::size_t row) const;
    bool hasPending() const;
    /// Rows that are pending and that nobody edits, in order.
    std::vector<std::size_t> markedRows() const;
    /// Rows that are pending, in order.
    std::vector<std::size_t> pendingRows() const;

    /// Grows whenever a row appears or disappears.
    std::uint64_t membershipVersion() const { return membership_; }
    /// Grows whenever anything at all changes.
    std::uint64_t version() const { return version_; }

    /// Appends a row of NULLs and begins its edit; without memory for that there is neither.
    std::size_t add(Editor editor);
    /// Begins an edit unless somebody edits the row already; without memory for that there is none.
    void edit(std::size_t row, Editor editor);
    void setValue(std::size_t row, std::size_t column, Value value);
    /// Ends the edit; the row stays marked for the database.
    void accept(std::size_t row);
    /// Ends the edit and undoes it; a row being added is removed.
    void cancel(std::size_t row);
    /// Marks the row as deleted; a row the database does not know is removed for good.
    void remove(std::size_t row);
    /// The database now holds the row as it is.
    void written(std::size_t row);
    /// The row is again as the database holds it.
    void restore(std::size_t row);

private:
    struct Edit {
        Editor editor = nullptr;
        std::vector<Value> before;
        bool adding = false;
        bool wasModified = false;
    };
    struct State {
        bool added = false;   // unknown to the database
        bool deleted = false; // not to be seen any more
        bool settled = false; // deleted, and the database knows or need not know
        bool modified = false;
        std::vector<Value> original; // filled at the first change of a row that the database knows
        std::optional<Edit> edit;
    };

    const State* stateOf(std::size_t row) const;
    bool isAmongRemoved(std::size_t row) const;
    std::vector<Value> valuesOf(std::size_t row) const;
    void putBack(std::size_t row, std::vector<Value> values);
    void setDeleted(State& state, bool deleted);
    void changed() { ++version_; }
    void membershipChanged() {
        ++membership_;
        ++version_;
    }

    std::uint64_t id_;
    std::unique_ptr<RowSet> rows_;
    std::size_t size_;
    std::size_t removed_ = 0;
    std::unordered_map<std::size_t, State> states_; // only of rows that were touched
    std::uint64_t membership_ = 1;
    std::uint64_t version_ = 1;
};

} // namespace veldran::ado
