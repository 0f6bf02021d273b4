#include "platform/ado/row_set.h"

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

} // namespace veldran::ado
