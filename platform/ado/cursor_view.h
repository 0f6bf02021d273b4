#pragma once

#include "platform/ado/cursor_rows.h"
#include "platform/ado/filter_expression.h"

#include <memory>
#include <optional>
#include <vector>

namespace veldran::ado {

/// The rows of a shared set that one cursor shows, in their order. Follows changes of the set; without filter
/// and without removed rows it costs nothing to ask.
class CursorView {
public:
    explicit CursorView(std::shared_ptr<CursorRows> rows) : rows_(std::move(rows)) {}

    CursorRows& rows() const { return *rows_; }
    const std::shared_ptr<CursorRows>& sharedRows() const { return rows_; }

    void showAll();
    /// Rows that are not yet written, the deleted ones included.
    void showPending();
    void showMatching(std::unique_ptr<FilterExpression> condition);

    std::size_t count() const;
    std::size_t at(std::size_t index) const;
    bool shows(std::size_t row) const;
    /// Index of the first shown row that is not before `row`; `count()` when there is none.
    std::size_t indexNotBefore(std::size_t row) const;

private:
    bool isWhole() const { return !pending_ && !condition_ && rows_->removedCount() == 0; }
    const std::vector<std::size_t>& shown() const;

    std::shared_ptr<CursorRows> rows_; // shared with the cursors of the recordset's clones
    bool pending_ = false;
    std::unique_ptr<FilterExpression> condition_;
    mutable std::vector<std::size_t> shown_; // valid for `seen_`
    mutable std::uint64_t seen_ = 0;
};

} // namespace veldran::ado
