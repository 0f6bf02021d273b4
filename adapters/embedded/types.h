#pragma once

#include "adapters/tsql/ast_expressions.h"
#include "platform/ado/driver.h"
#include "platform/value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace veldran::embedded {

__extension__ typedef __int128 Int128;

/// In ascending order of precedence within numbers and within text: a mixed operation takes the later type.
enum class TypeKind : std::uint8_t {
    Null, ///< the literal NULL before anything gives it a type
    Char,
    VarChar,
    NChar,
    NVarChar,
    Bit,
    TinyInt,
    SmallInt,
    Int,
    BigInt,
    Decimal,
    Float
};

/// Length of VARCHAR(MAX) and NVARCHAR(MAX), in characters.
inline constexpr int unlimitedLength = 1073741823;

/// A T-SQL type. Exact decimals live in SQLite as integers scaled by 10^scale; fixed text is stored padded.
struct SqlType {
    TypeKind kind = TypeKind::Null;
    int length = 0;             ///< characters, of text
    std::uint8_t precision = 0; ///< of decimals; up to 38 nominally, values are bounded by 64 bits
    std::uint8_t scale = 0;     ///< of decimals

    bool isNull() const { return kind == TypeKind::Null; }
    bool isText() const { return kind >= TypeKind::Char && kind <= TypeKind::NVarChar; }
    bool isFixedText() const { return kind == TypeKind::Char || kind == TypeKind::NChar; }
    bool isInteger() const { return kind >= TypeKind::Bit && kind <= TypeKind::BigInt; }
    bool isExact() const { return kind >= TypeKind::Bit && kind <= TypeKind::Decimal; }
    bool isNumber() const { return kind >= TypeKind::Bit; }

    bool operator==(const SqlType&) const = default;
};

SqlType integerType(TypeKind kind);
SqlType decimalType(int precision, int scale);
SqlType textType(TypeKind kind, int length);

/// \throws AdoError for a type that does not exist, and for decimals wider than 18 digits.
SqlType resolveType(const tsql::DataType& type);
/// The type in lower case as messages name it: "int", "numeric", "nvarchar".
std::string typeName(const SqlType& type);
/// The type with its sizes, as T-SQL writes it: "NCHAR(10)".
std::string typeText(const SqlType& type);

/// The column type that SQLite is given: text carries the collation, decimals are whole numbers.
std::string storageType(const SqlType& type);

ado::DataTypeEnum adoType(const SqlType& type);
/// Characters of text, bytes of numbers.
int definedSize(const SqlType& type);
/// \throws AdoError for a type that no parameter can have.
SqlType parameterType(const ado::ParameterInfo& parameter);
ado::ParameterInfo toParameter(const std::string& name, const SqlType& type);

/// Inclusive bounds of the integer that SQLite stores for an exact type.
struct Range {
    Int128 low = 0;
    Int128 high = 0;

    bool contains(const Range& other) const { return low <= other.low && other.high <= high; }
};
Range rangeOf(const SqlType& type);
inline constexpr Range int64Range{INT64_MIN, INT64_MAX};
Int128 powerOfTen(int exponent);

/// The exact type as a decimal, as arithmetic sees it: INT is DECIMAL(10, 0).
SqlType asDecimal(const SqlType& type);
/// The type that CASE, UNION, COALESCE and comparisons bring two operands to.
SqlType commonType(const SqlType& a, const SqlType& b);
/// The result type of + - * / % on two numbers.
SqlType arithmeticType(tsql::ArithmeticOperator op, const SqlType& a, const SqlType& b);

/// A value as SQLite stores it.
using Stored = std::variant<std::monostate, std::int64_t, double, std::string>;
inline bool isNull(const Stored& stored) {
    return std::holds_alternative<std::monostate>(stored);
}

/// A value of the host as the type stores it, checked and never cut: text too long, numbers out of range and
/// exact decimals with too many places are refused. `name` is what the message calls the value.
/// \throws AdoError
Stored toStored(const Value& value, const SqlType& type, std::string_view name);
/// The same in reverse, as a client sees the value.
Value fromStored(const Stored& stored, const SqlType& type);

/// Characters (code points) of a UTF-8 text.
int characterCount(std::string_view text);
/// `text` with blanks up to `length` characters.
std::string padded(std::string_view text, int length);
/// The first `length` characters.
std::string_view firstCharacters(std::string_view text, int length);

} // namespace veldran::embedded
