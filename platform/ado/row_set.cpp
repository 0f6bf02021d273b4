#include "platform/ado/row_set.h"

#include "platform/text.h"

namespace veldran::ado {

void RowSet::addBlock() {
    // The first block grows with its rows, for most results are small.
    std::vector<Value>& block = blocks_.emplace_back();
    if (blocks_.size() > 1) {
        block.reserve(blockRows * width_);
    }
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
