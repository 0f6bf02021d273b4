#include "platform/ado/row_set.h"

#include "platform/text.h"

namespace veldran::ado {

std::optional<std::size_t> RowSet::indexOf(std::string_view name) const {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (equalsIgnoringAsciiCase(columns_[i].name, name)) {
            return i;
        }
    }
    return std::nullopt;
}

} // namespace veldran::ado
