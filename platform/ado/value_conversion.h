#pragma once

#include "platform/ado/constants.h"
#include "platform/value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veldran::ado {

/// What a value is for, as messages name it: "parametro @CONTO", "campo PROG".
struct Carrier {
    std::string_view kind;
    std::string_view name;

    std::string text() const { return std::string(kind).append(" ").append(name); }
};

/// A database type, and what carries it.
struct TargetType {
    Carrier carrier;
    DataTypeEnum type = adEmpty;
    int size = 0; ///< characters of a text type; 0 is no limit
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;
};

/// What becomes of decimal places that the type cannot hold.
enum class Places {
    Rounded, ///< DECIMAL half away from zero, integers half to even
    Refused  ///< an error; noise of double precision is no place
};

constexpr bool isText(DataTypeEnum type) {
    return type == adChar || type == adWChar || type == adVarChar || type == adVarWChar;
}
constexpr bool isFixedText(DataTypeEnum type) {
    return type == adChar || type == adWChar;
}
constexpr bool isDecimal(DataTypeEnum type) {
    return type == adNumeric || type == adDecimal;
}
constexpr bool isInteger(DataTypeEnum type) {
    return type == adSmallInt || type == adInteger || type == adBigInt;
}

/// `value` as a value of the type. NULL stays NULL; blanks that a text has beyond the size are dropped.
/// \throws AdoError 3421 for a value of another kind, 8115 for a number beyond the type, 8152 for a text too
/// long.
Value converted(const Value& value, const TargetType& target, Places places);

/// `text` with blanks up to `size` characters.
std::string paddedTo(int size, std::string text);

} // namespace veldran::ado
