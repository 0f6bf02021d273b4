#include "platform/controls/data_grid.h"

#include "platform/controls/grid_rows.h"

#include <stdexcept>
#include <utility>

namespace veldran::controls {

DataGrid::DataGrid(Container& parent, std::string name) : Control(parent, std::move(name)) {}

DataGrid::~DataGrid() = default;

void DataGrid::AddColumn(std::string caption, std::string dataField, int width) {
    columns_.push_back({std::move(caption), std::move(dataField), width, nullptr});
    const auto life = lifeline();
    Changed.raise();
    if (!life.expired()) {
        Refresh();
    }
}

void DataGrid::SetColumnFormat(std::size_t column, std::shared_ptr<DataFormat> format) {
    columns_.at(column).format = std::move(format);
    if (rows_ != nullptr) {
        rows_->dropTexts();
    }
    Changed.raise();
}

void DataGrid::SetColumnWidth(std::size_t column, int twips) {
    GridColumn& changed = columns_.at(column);
    if (changed.width != twips) {
        changed.width = twips;
        Changed.raise();
    }
}

void DataGrid::SetDataSource(ado::Recordset* source) {
    const auto current = currentBookmark();
    if (source == nullptr) {
        if (rows_ != nullptr) {
            rows_.reset();
            current_.reset();
            RowsChanged.raise();
        }
        return;
    }
    auto rows = std::make_unique<GridRows>(*source);
    const GridDifference difference = rows->refresh(columns_, rows_.get());
    const bool attached = rows_ == nullptr;
    rows_ = std::move(rows);
    tell(difference, current, attached);
}

void DataGrid::Refresh() {
    if (rows_ != nullptr) {
        const auto current = currentBookmark();
        tell(rows_->refresh(columns_), current, false);
    }
}

std::optional<ado::Bookmark> DataGrid::currentBookmark() const {
    return current_ ? std::optional(rows_->bookmark(*current_)) : std::nullopt;
}

void DataGrid::tell(const GridDifference& difference, const std::optional<ado::Bookmark>& current,
                    bool anew) {
    current_ = current ? rows_->find(*current) : std::nullopt;
    if (anew || !difference.sameRows) {
        RowsChanged.raise();
        return;
    }
    const auto life = lifeline();
    for (const std::size_t row : difference.changed) {
        RowChanged.raise(row);
        if (life.expired()) {
            return;
        }
    }
}

void DataGrid::RefreshRow(const ado::Bookmark& row) {
    if (rows_ == nullptr) {
        return;
    }
    if (const auto index = rows_->refreshRow(row, columns_)) {
        if (!rows_->hasTexts(*index)) {
            RowChanged.raise(*index);
        }
    } else {
        Refresh();
    }
}

std::size_t DataGrid::RowCount() const {
    return rows_ == nullptr ? 0 : rows_->count();
}

const std::string& DataGrid::CellText(std::size_t row, std::size_t column) const {
    if (row >= RowCount() || column >= columns_.size()) {
        throw std::out_of_range("cell " + std::to_string(row) + ", " + std::to_string(column) + " of " +
                                std::to_string(RowCount()) + " rows and " + std::to_string(columns_.size()) +
                                " columns");
    }
    if (!rows_->hasTexts(row)) {
        makeTexts(row);
    }
    return rows_->text(row, column);
}

void DataGrid::makeTexts(std::size_t row) const {
    std::vector<Value> stored = rows_->read(row, columns_);
    std::vector<std::string> texts;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        Value shown = stored[column];
        if (const auto format = columns_[column].format) {
            try {
                format->Format.raise(shown);
            } catch (const std::exception& failure) {
                shown = stored[column];
                FormatFailed.raise(failure);
            }
        }
        texts.push_back(nullSafeText(shown));
    }
    rows_->setTexts(row, std::move(stored), std::move(texts));
}

const ado::Bookmark& DataGrid::RowBookmark(std::size_t row) const {
    if (row >= RowCount()) {
        throw std::out_of_range("row " + std::to_string(row) + " of " + std::to_string(RowCount()));
    }
    return rows_->bookmark(row);
}

void DataGrid::ShowCurrent(const ado::Bookmark& row) {
    setCurrent(rows_ == nullptr ? std::nullopt : rows_->find(row));
}

void DataGrid::ShowNoCurrent() {
    setCurrent(std::nullopt);
}

void DataGrid::setCurrent(std::optional<std::size_t> row) {
    if (row != current_) {
        current_ = row;
        CurrentChanged.raise();
    }
}

bool DataGrid::MoveFromView(std::size_t row) {
    if (row >= RowCount() || !CanTakeFocus()) {
        return false;
    }
    if (current_ == row) {
        return true;
    }
    const auto life = lifeline();
    const ado::Bookmark chosen = rows_->bookmark(row);
    bool cancel = false;
    RowChosen.raise(chosen, cancel);
    if (life.expired()) {
        return false;
    }
    if (cancel) {
        CurrentChanged.raise();
        return false;
    }
    ShowCurrent(chosen);
    return true;
}

void MdiContainer::Embed(std::int32_t top, std::int32_t left, std::int16_t windowState, bool modal) {
    placement_ = {top, left, windowState, modal};
    Changed.raise();
}

} // namespace veldran::controls
