#include "platform/controls/grid_rows.h"

#include "platform/ado/errors.h"
#include "platform/ado/recordset.h"
#include "platform/controls/data_grid.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace veldran::controls {

namespace {

/// Of the current record.
std::vector<Value> valuesOf(const std::vector<const ado::Field*>& fields) {
    std::vector<Value> values;
    values.reserve(fields.size());
    for (const ado::Field* field : fields) {
        values.push_back(field == nullptr ? Value() : field->Value());
    }
    return values;
}

} // namespace

GridRows::GridRows(ado::Recordset& source) : cursor_(source.Clone(ado::adLockReadOnly)) {
    if (const auto* condition = std::get_if<std::string>(&source.Filter())) {
        cursor_->Filter(*condition);
    }
}

GridRows::~GridRows() = default;

std::vector<const ado::Field*> GridRows::fieldsOf(const std::vector<GridColumn>& columns) {
    std::vector<const ado::Field*> found;
    found.reserve(columns.size());
    ado::Fields& fields = cursor_->Fields();
    for (const GridColumn& column : columns) {
        const auto field = std::find_if(fields.begin(), fields.end(), [&](const ado::Field& candidate) {
            return equalsIgnoringAsciiCase(candidate.Name(), column.dataField);
        });
        found.push_back(field == fields.end() ? nullptr : &*field);
    }
    return found;
}

/// Texts of other values do not hold any more. \return whether these are others
bool GridRows::Row::follow(std::vector<Value> now) {
    if (now == values) {
        return false;
    }
    values = std::move(now);
    texts.clear();
    return true;
}

GridDifference GridRows::refresh(const std::vector<GridColumn>& columns, GridRows* before) {
    std::vector<Row> known = std::move(before != nullptr ? before->rows_ : rows_);
    rows_.clear();
    GridDifference difference;
    difference.sameRows = true;
    if (cursor_->State() == ado::adStateOpen && cursor_->RecordCount() > 0) {
        std::vector<const ado::Field*> fields;
        rows_.reserve(static_cast<std::size_t>(cursor_->RecordCount()));
        auto next = known.begin(); // rows keep their order: what follows in the record set follows in `known`
        for (cursor_->MoveFirst(); !cursor_->EndOfFile(); cursor_->MoveNext()) {
            Row row{cursor_->Bookmark(), {}, {}};
            const auto found = next == known.end() || !next->bookmark.sharesRowsWith(row.bookmark)
                                   ? known.end()
                                   : std::find_if(next, known.end(), [&](const Row& old) {
                                         return old.bookmark == row.bookmark;
                                     });
            difference.sameRows = difference.sameRows && found == next && next != known.end();
            if (found != known.end()) {
                next = found + 1;
                row = std::move(*found);
                if (!row.values.empty()) {
                    if (fields.empty()) {
                        fields = fieldsOf(columns);
                    }
                    if (row.follow(valuesOf(fields))) {
                        difference.changed.push_back(rows_.size());
                    }
                }
            }
            rows_.push_back(std::move(row));
        }
    }
    difference.sameRows = difference.sameRows && rows_.size() == known.size();
    return difference;
}

std::optional<std::size_t> GridRows::refreshRow(const ado::Bookmark& row,
                                                const std::vector<GridColumn>& columns) {
    const auto index = find(row);
    if (!index || !standOn(row)) {
        return std::nullopt;
    }
    if (Row& known = rows_[*index]; !known.values.empty()) {
        known.follow(valuesOf(fieldsOf(columns)));
    }
    return index;
}

/// False when the row has gone since the rows were read.
bool GridRows::standOn(const ado::Bookmark& row) {
    if (cursor_->State() != ado::adStateOpen) {
        return false;
    }
    try {
        cursor_->Bookmark(row);
        return true;
    } catch (const ado::AdoError&) {
        return false;
    }
}

void GridRows::dropTexts() {
    for (Row& row : rows_) {
        row.texts.clear();
    }
}

std::vector<Value> GridRows::read(std::size_t row, const std::vector<GridColumn>& columns) {
    return standOn(rows_.at(row).bookmark) ? valuesOf(fieldsOf(columns)) : std::vector<Value>(columns.size());
}

std::optional<std::size_t> GridRows::find(const ado::Bookmark& bookmark) const {
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.bookmark == bookmark; });
    if (found == rows_.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - rows_.begin());
}

void GridRows::setTexts(std::size_t row, std::vector<Value> values, std::vector<std::string> texts) {
    rows_.at(row).values = std::move(values);
    rows_.at(row).texts = std::move(texts);
}

} // namespace veldran::controls
