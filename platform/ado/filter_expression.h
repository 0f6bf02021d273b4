#pragma once

#include "platform/ado/row_set.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace veldran::ado {

/// A condition over the values of one row, such as "SEGNO = 2 AND (CAUSALE = 'AB ' OR CAUSALE LIKE 'C*')".
///
///     condition  = conjunction {"OR" conjunction}
///     conjunction = term {"AND" term}
///     term       = "(" condition ")" | column operator value | column "IS" ["NOT"] "NULL"
///     operator   = "=" | "<>" | "<" | "<=" | ">" | ">=" | "LIKE"
///     value      = number | 'text, a quote doubled' | "NULL" (with = and <> only) | "TRUE" | "FALSE"
///     column     = name | "[" name "]"
///
/// Words and names are blind to case. Text compares blind to case and trailing blanks; in a LIKE pattern "*"
/// and "%" stand for any text. A NULL meets no comparison but with NULL.
class FilterExpression {
public:
    /// The value of a column (by index) in the row that is being looked at.
    using ValueOf = std::function<const Value&(std::size_t column)>;

    /// \throws AdoError 3001 with the place when `text` is no condition, 3265 for an unknown column, 3421 for
    /// a value of another kind than its column.
    static std::unique_ptr<FilterExpression> parse(std::string_view text,
                                                   const std::vector<ColumnInfo>& columns);

    virtual ~FilterExpression() = default;
    virtual bool matches(const ValueOf& valueOf) const = 0;
};

} // namespace veldran::ado
