#include "adapters/embedded/uniform_columns.h"

namespace veldran::embedded {

void UniformColumns::forget(std::string_view table) {
    if (const auto found = values_.find(table); found != values_.end()) {
        values_.erase(found);
    }
}

bool UniformColumns::forget(std::string_view table, const std::vector<std::string>& columns) {
    const auto found = values_.find(table);
    if (found == values_.end()) {
        return false;
    }
    bool known = false;
    for (const std::string& column : columns) {
        known = found->second.erase(column) > 0 || known;
    }
    return known;
}

std::optional<std::int64_t> UniformColumns::valueOf(std::string_view table, std::string_view column) const {
    const auto values = values_.find(table);
    if (values == values_.end()) {
        return std::nullopt;
    }
    const auto value = values->second.find(column);
    return value == values->second.end() ? std::nullopt : std::optional(value->second);
}

} // namespace veldran::embedded
