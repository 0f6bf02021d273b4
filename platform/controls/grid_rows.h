#pragma once

#include "platform/ado/bookmark.h"
#include "platform/value.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldran::ado {
class Field;
class Recordset;
} // namespace veldran::ado

namespace veldran::controls {

struct GridColumn;

/// What a new reading of the rows found.
struct GridDifference {
    bool sameRows = false;            ///< the same rows stand in the same places
    std::vector<std::size_t> changed; ///< those whose texts do not hold any more, when the rows are the same
};

/// The rows that a grid shows: a cursor of its own over the rows of a record set, and the texts that the grid
/// has made of them. A row is read when the first of its cells is asked for, and again only after one of its
/// values has changed: rows that nobody has looked at cost next to nothing, however many there are.
class GridRows {
public:
    /// \throws AdoError when the record set is closed.
    explicit GridRows(ado::Recordset& source);
    ~GridRows();
    GridRows(const GridRows&) = delete;
    GridRows& operator=(const GridRows&) = delete;

    /// Follows the rows; texts of rows whose values are as they were are kept. No rows once the record set's
    /// connection is closed. `before`: rows of an earlier object, which are compared instead of this one's;
    /// may be nullptr.
    GridDifference refresh(const std::vector<GridColumn>& columns, GridRows* before = nullptr);
    /// The same for one row. \return its index; none when the row is not among those shown.
    std::optional<std::size_t> refreshRow(const ado::Bookmark& row, const std::vector<GridColumn>& columns);
    void dropTexts();

    std::size_t count() const { return rows_.size(); }
    const ado::Bookmark& bookmark(std::size_t row) const { return rows_.at(row).bookmark; }
    std::optional<std::size_t> find(const ado::Bookmark& bookmark) const;
    bool hasTexts(std::size_t row) const { return !rows_.at(row).texts.empty(); }
    /// One value for each column, as the row now is; NULLs when it cannot be read any more.
    std::vector<Value> read(std::size_t row, const std::vector<GridColumn>& columns);
    /// What is shown from now on for a row that held `values`.
    void setTexts(std::size_t row, std::vector<Value> values, std::vector<std::string> texts);
    const std::string& text(std::size_t row, std::size_t column) const {
        return rows_.at(row).texts.at(column);
    }

private:
    struct Row {
        ado::Bookmark bookmark;
        std::vector<std::string> texts; ///< one for each column of the grid; empty while they have to be made
        std::vector<Value> values;      ///< as last read; empty until the row is first looked at

        bool follow(std::vector<Value> now);
    };

    /// The field behind each column; nullptr where the record set has none.
    std::vector<const ado::Field*> fieldsOf(const std::vector<GridColumn>& columns);
    bool standOn(const ado::Bookmark& row);

    std::shared_ptr<ado::Recordset> cursor_; // as Recordset::Clone gives it
    std::vector<Row> rows_;
};

} // namespace veldran::controls
