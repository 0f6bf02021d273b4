#pragma once

#include "shell/data_file.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>

namespace veldran::shell {

/// The number that a key of a numbered list is; a key that is no number is a problem of the file.
inline std::optional<std::int32_t> numberedKey(const DataObject& list, const std::string& key) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
    if (error != std::errc() || end != key.data() + key.size() || number <= 0) {
        list.problem(key, "la chiave deve essere il numero della voce.");
        return std::nullopt;
    }
    return number;
}

} // namespace veldran::shell
