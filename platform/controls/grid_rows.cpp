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

GridDifference GridRows::refresh(const std::vector<GridColumn>& columns, GridRows* before) {
    std::vector<Row> known = std::move(before != nullptr ? before->rows_ : rows_);
    rows_.clear();
    GridDifference difference;
    difference.sameRows = true;
    if (cursor_->State() == ado::adStateOpen && cursor_->RecordCount() > 0) {
        const std::vector<const ado::Field*> fields = fieldsOf(columns);
        rows_.reserve(static_cast<std::size_t>(cursor_->RecordCount()));
        std::size_t next = 0; // rows keep their order: what follows in the record set follows in `known`
        for (cursor_->MoveFirst(); !cursor_->EndOfFile(); cursor_->MoveNext()) {
            Row row{cursor_->Bookmark(), valuesOf(fields), {}, false};
            const auto from = known.begin() + static_cast<std::ptrdiff_t>(next);
            const auto found =
                std::find_if(from, known.end(), [&](const Row& old) { return old.bookmark == row.bookmark; });
            difference.sameRows = difference.sameRows && found == from && from != known.end();
            if (found != known.end()) {
                next = static_cast<std::size_t>(found - known.begin()) + 1;
                if (found->values == row.values) {
                    row = std::move(*found);
                } else {
                    difference.changed.push_back(rows_.size());
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
    if (!index || cursor_->State() != ado::adStateOpen) {
        return std::nullopt;
    }
    try {
        cursor_->Bookmark(row);
    } catch (const ado::AdoError&) {
        return std::nullopt; // the row has gone since the rows were read
    }
    std::vector<Value> values = valuesOf(fieldsOf(columns));
    if (values != rows_[*index].values) {
        rows_[*index] = {row, std::move(values), {}, false};
    }
    return index;
}

void GridRows::dropTexts() {
    for (Row& row : rows_) {
        row.formatted = false;
    }
}

std::optional<std::size_t> GridRows::find(const ado::Bookmark& bookmark) const {
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.bookmark == bookmark; });
    if (found == rows_.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - rows_.begin());
}

void GridRows::setTexts(std::size_t row, std::vector<std::string> texts) {
    rows_.at(row).texts = std::move(texts);
    rows_.at(row).formatted = true;
}

} // namespace veldran::controls
