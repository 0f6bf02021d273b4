#include "platform/controls/data_grid.h"

namespace veldran::controls {

void DataGrid::AddColumn(std::string caption, std::string dataField, int width) {
    columns_.push_back({std::move(caption), std::move(dataField), width, nullptr});
    Changed.raise();
}

void DataGrid::SetColumnFormat(std::size_t column, std::shared_ptr<DataFormat> format) {
    columns_.at(column).format = std::move(format);
    Changed.raise();
}

void MdiContainer::Embed(std::int32_t top, std::int32_t left, std::int16_t windowState, bool modal) {
    placement_ = {top, left, windowState, modal};
    Changed.raise();
}

} // namespace veldran::controls
