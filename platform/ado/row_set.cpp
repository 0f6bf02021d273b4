#include "platform/ado/row_set.h"

#include "platform/text.h"

namespace veldran::ado {

void RowSet::addBlock() {
    std::vector<Value> block;
    if (!blocks_.empty()) { // the first one grows with its rows, for most results are small
        block.reserve(blockRows * width_);
    }
    blocks_.push_back(std::move(block));
}

void RowSet::appendNulls() {
    if (cells_ == blocks_.size() * blockRows * width_) {
        addBlock();
    }
    blocks_.back().resize(blocks_.back().size() + width_);
    cells_ += width_;
}

std::optional<std::size_t> RowSet::indexOf(std::string_view name) const {
    for (std::size_t i = 0; i < width_; ++i) {
        if (equalsIgnoringAsciiCase(columns()[i].name, name)) {
            return i;
        }
    }
    return std::nullopt;
}

} // namespace veldran::ado
