#pragma once

#include "platform/ado/bookmark.h"
#include "platform/ado/command.h"
#include "platform/ado/connection.h"
#include "platform/ado/fields.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace veldran::ado {

class CursorView;

/// Rows of a result held at the client, and one cursor over them: one object, as in ADO, and a long header.
///
/// Rows keep their order; a new row is the last. The set of rows is shared by a recordset and its clones:
/// each has its own position and filter, bookmarks are common, and what one changes, the others see at once,
/// a value of an edit in progress and a pending new row included.
///
/// An edit begins with `AddNew` or with the first value set to a field, belongs to the recordset that began
/// it, and ends with `Update` or `CancelUpdate`. Moving away from the record, adding another one, filtering
/// and `UpdateBatch` call `Update` by themselves. With `adLockOptimistic` (and `adLockPessimistic`, which a
/// client cursor treats alike) `Update` and `Delete` write to the database at once. With
/// `adLockBatchOptimistic` they only mark the row; `UpdateBatch` writes all marked rows together. A deleted
/// record stays the current one, without readable values, until the cursor moves.
///
/// Everything but the properties that say how to open throws AdoError 3704 on a closed recordset, and is
/// reported by the connection's `Errors` while the recordset is attached to one.
class Recordset {
public:
    using FilterValue = std::variant<FilterGroupEnum, std::string>;

    Recordset();
    /// An edit in progress is cancelled, rows not yet written are lost unless a clone still holds them.
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// \name How to open. \throws AdoError 3705 from the setters while open.
    ///@{
    const std::string& Source() const { return source_; }
    void Source(std::string text);
    std::shared_ptr<Connection> ActiveConnection() const { return connection_; }
    /// nullptr disconnects an open recordset: its rows stay, nothing can be written until it is attached
    /// again. Also allowed while open, unlike the other setters. \throws AdoError 3709 when the connection is
    /// closed.
    void ActiveConnection(std::shared_ptr<Connection> connection);
    std::shared_ptr<Command> ActiveCommand() const { return command_; }
    CursorTypeEnum CursorType() const { return cursorType_; }
    void CursorType(CursorTypeEnum type);
    LockTypeEnum LockType() const { return lockType_; }
    void LockType(LockTypeEnum type);
    CursorLocationEnum CursorLocation() const { return adUseClient; }
    /// \throws AdoError 3251 for another location: rows are always held at the client.
    void CursorLocation(CursorLocationEnum location);
    ///@}

    /// Opens from the properties.
    /// \throws AdoError 3705 when open, 3709 without an open connection, 3001 without a source, every failure
    /// of the database. A statement that yields no columns leaves the recordset closed.
    void Open();
    /// Sets the properties that are given, then opens. The cursor becomes `adOpenStatic`, whatever is asked
    /// for.
    void Open(const std::string& source, std::shared_ptr<Connection> connection,
              CursorTypeEnum cursorType = adOpenUnspecified, LockTypeEnum lockType = adLockUnspecified,
              int options = adCmdUnspecified);
    /// Opens from a command, on the command's connection.
    void Open(std::shared_ptr<Command> source, CursorTypeEnum cursorType = adOpenUnspecified,
              LockTypeEnum lockType = adLockUnspecified);
    /// Rows not yet written are lost unless a clone still holds them. \throws AdoError 3704 when not open,
    /// 3219 while an edit is in progress and the lock type is not batch-optimistic.
    void Close();
    ObjectStateEnum State() const;
    /// Executes the source again and stands on the first record; the filter stays. Rows not yet written are
    /// dropped, bookmarks end, clones keep the rows they had. \throws AdoError 3219 while an edit is in
    /// progress, 3709 when disconnected, every failure of the database; the recordset is then as it was.
    void Requery();
    /// A second cursor over the same rows, on the first record, without filter.
    std::shared_ptr<Recordset> Clone(LockTypeEnum lockType = adLockUnspecified);

    /// \name Position. Both BOF and EOF are true when the cursor has no record to stand on. ADO's `EOF` is
    /// called `EndOfFile`, as C++ users of ADO do: the standard library has a macro EOF.
    ///@{
    bool BOF() const;
    bool EndOfFile() const;
    /// The first four throw AdoError 3021 on an empty recordset; `MoveNext` also at EOF, `MovePrevious` also
    /// at BOF.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    /// Moves by `records`, ending at BOF or EOF when there are fewer; from `start` when it is given.
    /// \throws AdoError 3021 on an empty recordset, and at EOF forwards or at BOF backwards; 3001 for a bad
    /// bookmark.
    void Move(std::int64_t records, std::optional<ado::Bookmark> start = std::nullopt);
    /// From 1, among the records that the filter shows; adPosBOF, adPosEOF, or adPosUnknown on a hidden or
    /// deleted record.
    std::int64_t AbsolutePosition() const;
    /// \throws AdoError 3001 outside 1..RecordCount, 3021 on an empty recordset.
    void AbsolutePosition(std::int64_t position);
    /// Records that the filter shows, a pending new one included, deleted ones not.
    std::int64_t RecordCount() const;
    /// \throws AdoError 3021 without a current record.
    ado::Bookmark Bookmark() const;
    /// \throws AdoError 3001 when the bookmark is of other rows, or its row is deleted or hidden by the
    /// filter.
    void Bookmark(const ado::Bookmark& bookmark);
    ///@}

    const FilterValue& Filter() const { return filter_; }
    /// Shows only the records that meet a condition over their values, and stands on the first of them:
    /// comparisons of a column (= <> < <= > >=, LIKE with "*" or "%", "= NULL", IS NULL) joined by AND, OR
    /// and parentheses, such as "SEGNO = 2 AND CAUSALE = 'AB '". Text compares blind to case and trailing
    /// blanks; a NULL meets no comparison but with NULL. A record changed so that it no longer meets the
    /// condition disappears. Empty text is adFilterNone. \throws AdoError 3001 with the place for a text that
    /// is no condition, 3265 for an unknown column, 3421 when a value is of another kind than its column; the
    /// filter is then as it was.
    void Filter(const std::string& condition);
    /// adFilterNone shows all records; adFilterPendingRecords those not yet written, the deleted ones
    /// included.
    void Filter(FilterGroupEnum group);

    /// \throws AdoError 3704 when closed.
    ado::Fields& Fields();

    /// Whether the filter `adFilterPendingRecords` would show a record. \throws AdoError 3704 when closed.
    bool HasPendingRecords() const;
    EditModeEnum EditMode() const;
    /// adRecNew, adRecModified, adRecDeleted or adRecUnmodified of the current record.
    /// \throws AdoError 3021 without a current record.
    RecordStatusEnum Status() const;
    /// Appends a record of NULLs and stands on it. \throws AdoError 3251 when read-only.
    void AddNew();
    /// Ends the edit in progress; nothing happens without one. \throws AdoError 3709 when disconnected and
    /// not batch-optimistic, 3251 when base table or key are unknown, `adErrConcurrencyViolation` when
    /// somebody else changed or deleted the record, every failure of the database; the edit is then still in
    /// progress.
    void Update();
    /// Undoes the edit in progress; nothing happens without one. A new record disappears, and the cursor is
    /// where `AddNew` found it.
    void CancelUpdate();
    /// Deletes the current record (or, with adAffectGroup, those that the filter shows). An edit of it is
    /// dropped; a new record not yet written disappears. \throws AdoError 3021 without a current record, 3251
    /// when read-only, and as `Update`.
    void Delete(AffectEnum affect = adAffectCurrent);
    /// Writes the marked rows of all cursors (adAffectAll), of this filter (adAffectGroup) or the current
    /// one, in one transaction of its own or inside the caller's. Rows may exchange keys or move up to close
    /// a gap: none collides with another of the batch half-way. After a failure neither table nor marks have
    /// changed, except that inside the caller's transaction the caller's rollback undoes what was written.
    /// Without batch-optimistic lock it is `Update`. \throws AdoError as `Update`.
    void UpdateBatch(AffectEnum affect = adAffectAll);
    /// Undoes what is not yet written: values return to their originals, new rows disappear, deleted ones
    /// come back. The cursor stays on its record if that still exists, else it goes to the first.
    void CancelBatch(AffectEnum affect = adAffectAll);

private:
    friend class Command;
    friend class Connection;
    friend class Field;
    enum class Place { Before, On, After };

    void adopt(StatementResult result, std::shared_ptr<Command> command);
    void adopt(StatementResult result, std::shared_ptr<Connection> connection, const std::string& source,
               CommandTypeEnum type);
    StatementResult fetch();
    void show(std::unique_ptr<RowSet> rows);
    void dropRows();
    void applyFilter(const FilterValue& filter);
    void standOnFirst();
    void standOn(std::size_t row);
    void moveTo(std::int64_t index);
    void moveBy(std::int64_t records);
    void requireOpen() const;
    void requireClosed() const;
    void requireWritable() const;
    void requireRows() const;
    /// The current record's row. \throws AdoError 3021 when there is none.
    std::size_t currentRow() const;
    bool isEditing() const;
    bool writesAtOnce() const { return lockType_ != adLockBatchOptimistic; }
    void deleteRows(const std::vector<std::size_t>& rows);
    void write(const std::vector<std::size_t>& rows);
    std::vector<std::size_t> affected(AffectEnum affect, const std::vector<std::size_t>& candidates) const;
    const Value& fieldValue(std::size_t column) const;
    Value originalValue(std::size_t column) const;
    void setFieldValue(std::size_t column, const Value& value);

    /// Runs an operation so that its failure is listed by the connection, too.
    template<class Operation>
    decltype(auto) reported(Operation&& operation) const {
        try {
            return operation();
        } catch (const AdoError& error) {
            if (connection_) {
                connection_->record(error);
            }
            throw;
        }
    }

    std::string source_;
    std::shared_ptr<Connection> connection_; // shared with everyone who works on this connection
    std::shared_ptr<Command> command_;       // the caller's command, kept for Requery
    CursorTypeEnum cursorType_ = adOpenForwardOnly;
    LockTypeEnum lockType_ = adLockReadOnly;
    CommandTypeEnum sourceType_ = adCmdText;
    std::unique_ptr<CursorView> view_; // empty while closed
    std::uint64_t session_ = 0;        // of the connection, when the recordset was opened or attached
    ado::Fields fields_;
    FilterValue filter_ = adFilterNone;
    Place place_ = Place::Before;
    std::size_t row_ = 0;
    Place placeBeforeAdd_ = Place::Before;
    std::size_t rowBeforeAdd_ = 0;
};

} // namespace veldran::ado
