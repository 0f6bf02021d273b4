#pragma once

#include "adapters/tsql/source.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veldran::tsql {

// server.database.schema.object, or table.column. One to four parts as written, without delimiters; a part
// between two dots may be empty (TEMPDB..#X), the last never is.
struct QualifiedName {
    NodeSpan span;
    std::vector<std::string> parts;

    const std::string& last() const { return parts.back(); }
    bool operator==(const QualifiedName&) const = default;
};

// NCHAR(10), DECIMAL(5, 2), NVARCHAR(MAX). The name is in capitals; which names exist is the binder's matter.
struct DataType {
    NodeSpan span;
    std::string name;
    std::vector<std::int64_t> arguments; // length, or precision and scale, as written
    bool max = false;

    bool operator==(const DataType&) const = default;
};

} // namespace veldran::tsql
