#include "adapters/embedded/types.h"

#include "adapters/embedded/collation.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/numeric.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace veldran::embedded {

namespace {

constexpr int maximumStoredPrecision = 18;
constexpr int maximumPrecision = 38;

struct NamedKind {
    std::string_view name;
    TypeKind kind;
};

// The first name of a kind is the one that messages use.
constexpr std::array<NamedKind, 20> namedKinds{{{"CHAR", TypeKind::Char},
                                                {"CHARACTER", TypeKind::Char},
                                                {"VARCHAR", TypeKind::VarChar},
                                                {"NCHAR", TypeKind::NChar},
                                                {"NVARCHAR", TypeKind::NVarChar},
                                                {"SYSNAME", TypeKind::NVarChar},
                                                {"BIT", TypeKind::Bit},
                                                {"TINYINT", TypeKind::TinyInt},
                                                {"SMALLINT", TypeKind::SmallInt},
                                                {"INT", TypeKind::Int},
                                                {"INTEGER", TypeKind::Int},
                                                {"BIGINT", TypeKind::BigInt},
                                                {"DECIMAL", TypeKind::Decimal},
                                                {"NUMERIC", TypeKind::Decimal},
                                                {"DEC", TypeKind::Decimal},
                                                {"FLOAT", TypeKind::Float},
                                                {"DOUBLE PRECISION", TypeKind::Float},
                                                {"REAL", TypeKind::Float},
                                                {"MONEY", TypeKind::Null},
                                                {"DATETIME", TypeKind::Null}}};

std::string_view nameOf(TypeKind kind) {
    for (const auto& [name, named] : namedKinds) {
        if (named == kind) {
            return name;
        }
    }
    return "NULL";
}

SqlType resolveDecimal(const tsql::DataType& type) {
    const std::int64_t precision = type.arguments.empty() ? 18 : type.arguments[0];
    const std::int64_t scale = type.arguments.size() < 2 ? 0 : type.arguments[1];
    if (precision < 1 || precision > maximumPrecision || scale < 0 || scale > precision) {
        fail(2750, "42000", "La precisione o la scala di DECIMAL non è valida.");
    }
    if (precision > maximumStoredPrecision) {
        fail(errorNotSupported, "42000",
             "DECIMAL con più di 18 cifre non è disponibile nel database incorporato.");
    }
    return decimalType(static_cast<int>(precision), static_cast<int>(scale));
}

SqlType resolveText(TypeKind kind, const tsql::DataType& type) {
    const bool fixed = kind == TypeKind::Char || kind == TypeKind::NChar;
    const bool wide = kind == TypeKind::NChar || kind == TypeKind::NVarChar;
    if (type.max) {
        if (fixed) {
            fail(errorSyntax, "42000", "MAX non è una lunghezza valida per " + type.name + ".");
        }
        return textType(kind, unlimitedLength);
    }
    if (type.name == "SYSNAME") {
        return textType(kind, 128);
    }
    const std::int64_t length = type.arguments.empty() ? 1 : type.arguments[0];
    if (length < 1 || length > (wide ? 4000 : 8000)) {
        fail(131, "42000", "La lunghezza specificata per il tipo " + type.name + " non è valida.");
    }
    return textType(kind, static_cast<int>(length));
}

std::string quotedName(std::string_view name) {
    return "'" + std::string(name) + "'";
}

Stored storedText(const Value& value, const SqlType& type, std::string_view name) {
    std::string text = value.toText();
    if (const bool* flag = value.asBool()) {
        text = *flag ? "1" : "0";
    }
    if (characterCount(text) > type.length) {
        const std::string_view trimmed = withoutTrailingBlanks(text);
        if (characterCount(trimmed) > type.length) {
            fail(8152, "22001",
                 truncationText({}) + " Il valore di " + quotedName(name) + " supera i " +
                     std::to_string(type.length) + " caratteri.");
        }
        text = firstCharacters(text, type.length);
    }
    return type.isFixedText() ? padded(text, type.length) : text;
}

[[noreturn]] void failOverflow(const SqlType& type, std::string_view name) {
    fail(errorOverflow, "22003", overflowText(typeName(type)) + " Valore di " + quotedName(name) + ".");
}

[[noreturn]] void failNotANumber(const SqlType& type, std::string_view name) {
    fail(8114, "22018",
         "Errore durante la conversione del valore di " + quotedName(name) + " nel tipo di dati " +
             typeName(type) + ".");
}

Stored storedDecimal(const Value& value, const SqlType& type, std::string_view name) {
    Decimal decimal;
    if (const Decimal* exact = value.asDecimal()) {
        decimal = *exact;
    } else if (const double* number = value.asDouble()) {
        const auto coefficient = doubleToCoefficient(*number, type.scale);
        if (!coefficient) {
            failOverflow(type, name);
        }
        decimal = {*coefficient, type.scale};
    } else if (const std::string* text = value.asText()) {
        const auto parsed = parseDecimal(*text);
        if (!parsed) {
            failNotANumber(type, name);
        }
        decimal = *parsed;
    } else {
        decimal = {value.toInteger(), 0};
    }
    const auto rescaled = rescale(decimal.coefficient, decimal.scale, type.scale);
    if (!rescaled || !rangeOf(type).contains({*rescaled, *rescaled})) {
        failOverflow(type, name);
    }
    if (!(Decimal{*rescaled, type.scale} == decimal)) {
        fail(8114, "22003",
             "Errore durante la conversione del tipo di dati numeric in numeric: il valore " +
                 decimal.toText() + " di " + quotedName(name) + " ha più di " + std::to_string(type.scale) +
                 " decimali.");
    }
    return *rescaled;
}

Stored storedInteger(const Value& value, const SqlType& type, std::string_view name) {
    if (type.kind == TypeKind::Bit) {
        return std::int64_t{value.toBool() ? 1 : 0};
    }
    std::int64_t number = 0;
    if (const std::string* text = value.asText()) {
        const auto parsed = parseInteger(*text);
        if (!parsed) {
            failNotANumber(type, name);
        }
        number = *parsed;
    } else {
        number = value.toInteger();
    }
    if (!rangeOf(type).contains({number, number})) {
        failOverflow(type, name);
    }
    return number;
}

} // namespace

SqlType integerType(TypeKind kind) {
    return {kind, 0, 0, 0};
}

SqlType decimalType(int precision, int scale) {
    return {TypeKind::Decimal, 0, static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale)};
}

SqlType textType(TypeKind kind, int length) {
    return {kind, length, 0, 0};
}

SqlType resolveType(const tsql::DataType& type) {
    const auto found = std::find_if(namedKinds.begin(), namedKinds.end(),
                                    [&](const NamedKind& named) { return named.name == type.name; });
    if (found == namedKinds.end()) {
        fail(2715, "42000", "Impossibile trovare il tipo di dati " + type.name + ".");
    }
    if (found->kind == TypeKind::Null) {
        fail(errorNotSupported, "42000",
             "Il tipo di dati " + type.name + " non è disponibile nel database incorporato.");
    }
    if (found->kind == TypeKind::Decimal) {
        return resolveDecimal(type);
    }
    if (integerType(found->kind).isText()) {
        return resolveText(found->kind, type);
    }
    if (!type.arguments.empty() && found->kind != TypeKind::Float) {
        fail(2716, "42000", "Il tipo " + type.name + " non ammette una lunghezza o una precisione.");
    }
    return integerType(found->kind);
}

std::string typeName(const SqlType& type) {
    std::string name(type.kind == TypeKind::Decimal ? "NUMERIC" : nameOf(type.kind));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

std::string typeText(const SqlType& type) {
    std::string text(nameOf(type.kind));
    if (type.kind == TypeKind::Decimal) {
        text += "(" + std::to_string(type.precision) + ", " + std::to_string(type.scale) + ")";
    } else if (type.isText()) {
        text += type.length == unlimitedLength ? "(MAX)" : "(" + std::to_string(type.length) + ")";
    }
    return text;
}

std::string storageType(const SqlType& type) {
    if (type.isText()) {
        return std::string("TEXT COLLATE ") + collationName;
    }
    return type.kind == TypeKind::Float ? "REAL" : "INTEGER";
}

ado::DataTypeEnum adoType(const SqlType& type) {
    switch (type.kind) {
    case TypeKind::Null:
        return ado::adInteger; // what SELECT NULL is on the server
    case TypeKind::Char:
        return ado::adChar;
    case TypeKind::VarChar:
        return ado::adVarChar;
    case TypeKind::NChar:
        return ado::adWChar;
    case TypeKind::NVarChar:
        return ado::adVarWChar;
    case TypeKind::Bit:
        return ado::adBoolean;
    case TypeKind::TinyInt:
    case TypeKind::SmallInt:
        return ado::adSmallInt;
    case TypeKind::Int:
        return ado::adInteger;
    case TypeKind::BigInt:
        return ado::adBigInt;
    case TypeKind::Decimal:
        return ado::adNumeric;
    case TypeKind::Float:
        return ado::adDouble;
    }
    return ado::adEmpty;
}

int definedSize(const SqlType& type) {
    switch (type.kind) {
    case TypeKind::Bit:
    case TypeKind::SmallInt:
    case TypeKind::TinyInt:
        return 2;
    case TypeKind::Null:
    case TypeKind::Int:
        return 4;
    case TypeKind::BigInt:
    case TypeKind::Float:
        return 8;
    case TypeKind::Decimal:
        return 19;
    default:
        return type.length;
    }
}

SqlType parameterType(const ado::ParameterInfo& parameter) {
    const auto text = [&](TypeKind kind) {
        return textType(kind, parameter.size > 0 ? parameter.size : unlimitedLength);
    };
    switch (parameter.type) {
    case ado::adSmallInt:
        return integerType(TypeKind::SmallInt);
    case ado::adInteger:
        return integerType(TypeKind::Int);
    case ado::adBigInt:
        return integerType(TypeKind::BigInt);
    case ado::adDouble:
        return integerType(TypeKind::Float);
    case ado::adBoolean:
        return integerType(TypeKind::Bit);
    case ado::adDecimal:
    case ado::adNumeric:
        if (parameter.precision > maximumStoredPrecision || parameter.scale > parameter.precision) {
            fail(errorNotSupported, "42000",
                 "La precisione del parametro '" + parameter.name + "' non è disponibile.");
        }
        return decimalType(parameter.precision == 0 ? maximumStoredPrecision : parameter.precision,
                           parameter.scale);
    case ado::adChar:
        return text(parameter.size > 0 ? TypeKind::Char : TypeKind::VarChar);
    case ado::adWChar:
        return text(parameter.size > 0 ? TypeKind::NChar : TypeKind::NVarChar);
    case ado::adVarChar:
        return text(TypeKind::VarChar);
    case ado::adVarWChar:
        return text(TypeKind::NVarChar);
    case ado::adEmpty:
        break;
    }
    fail(errorNotSupported, "42000", "Il tipo del parametro '" + parameter.name + "' non è dichiarato.");
}

ado::ParameterInfo toParameter(const std::string& name, const SqlType& type) {
    ado::ParameterInfo info;
    info.name = name;
    info.type = adoType(type);
    info.size = type.isText() ? type.length : 0;
    info.precision = type.precision;
    info.scale = type.scale;
    return info;
}

Int128 powerOfTen(int exponent) {
    Int128 result = 1;
    while (exponent-- > 0) {
        result *= 10;
    }
    return result;
}

Range rangeOf(const SqlType& type) {
    switch (type.kind) {
    case TypeKind::Bit:
        return {0, 1};
    case TypeKind::TinyInt:
        return {0, 255};
    case TypeKind::SmallInt:
        return {INT16_MIN, INT16_MAX};
    case TypeKind::Int:
        return {INT32_MIN, INT32_MAX};
    case TypeKind::Decimal:
        if (type.precision <= maximumStoredPrecision) {
            const Int128 limit = powerOfTen(type.precision) - 1;
            return {-limit, limit};
        }
        return int64Range;
    default:
        return int64Range;
    }
}

SqlType asDecimal(const SqlType& type) {
    switch (type.kind) {
    case TypeKind::Bit:
        return decimalType(1, 0);
    case TypeKind::TinyInt:
        return decimalType(3, 0);
    case TypeKind::SmallInt:
        return decimalType(5, 0);
    case TypeKind::Int:
        return decimalType(10, 0);
    case TypeKind::BigInt:
        return decimalType(19, 0);
    default:
        return type;
    }
}

SqlType commonType(const SqlType& a, const SqlType& b) {
    if (a.isNull() || b.isNull()) {
        return a.isNull() ? b : a;
    }
    if (a.isText() && b.isText()) {
        const bool wide = std::max(a.kind, b.kind) >= TypeKind::NChar;
        const bool fixed = a.isFixedText() && b.isFixedText();
        const TypeKind kind = wide ? (fixed ? TypeKind::NChar : TypeKind::NVarChar)
                                   : (fixed ? TypeKind::Char : TypeKind::VarChar);
        return textType(kind, std::max(a.length, b.length));
    }
    if (a.kind == TypeKind::Decimal || b.kind == TypeKind::Decimal) {
        if (a.isExact() && b.isExact()) {
            const SqlType x = asDecimal(a);
            const SqlType y = asDecimal(b);
            const int scale = std::max(x.scale, y.scale);
            const int whole = std::max(x.precision - x.scale, y.precision - y.scale);
            return decimalType(std::min(whole + scale, maximumPrecision), scale);
        }
    }
    return a.kind >= b.kind ? a : b;
}

SqlType arithmeticType(tsql::ArithmeticOperator op, const SqlType& a, const SqlType& b) {
    if (a.kind == TypeKind::Float || b.kind == TypeKind::Float) {
        return integerType(TypeKind::Float);
    }
    if (a.kind != TypeKind::Decimal && b.kind != TypeKind::Decimal) {
        const TypeKind wider = std::max(a.kind, b.kind);
        return integerType(wider);
    }
    const SqlType x = asDecimal(a);
    const SqlType y = asDecimal(b);
    int precision = 0;
    int scale = 0;
    switch (op) {
    case tsql::ArithmeticOperator::Multiply:
        precision = x.precision + y.precision + 1;
        scale = x.scale + y.scale;
        break;
    case tsql::ArithmeticOperator::Divide:
        scale = std::max(6, x.scale + y.precision + 1);
        precision = x.precision - x.scale + y.scale + scale;
        break;
    case tsql::ArithmeticOperator::Modulo:
        scale = std::max(x.scale, y.scale);
        precision = std::min(x.precision - x.scale, y.precision - y.scale) + scale;
        break;
    default:
        scale = std::max(x.scale, y.scale);
        precision = std::max(x.precision - x.scale, y.precision - y.scale) + scale + 1;
        break;
    }
    if (precision > maximumPrecision) {
        const int whole = precision - scale;
        scale = std::max(maximumPrecision - whole, std::min(scale, 6));
        precision = maximumPrecision;
    }
    return decimalType(precision, scale);
}

Stored toStored(const Value& value, const SqlType& type, std::string_view name) {
    if (value.isNull()) {
        return std::monostate{};
    }
    if (type.isText()) {
        return storedText(value, type, name);
    }
    try {
        if (type.kind == TypeKind::Decimal) {
            return storedDecimal(value, type, name);
        }
        if (type.kind == TypeKind::Float) {
            const double number = value.toDouble();
            if (!std::isfinite(number)) {
                failOverflow(type, name); // SQLite would keep NULL in its place
            }
            return number;
        }
        return storedInteger(value, type, name);
    } catch (const std::invalid_argument&) {
        failNotANumber(type, name);
    } catch (const std::overflow_error&) {
        failOverflow(type, name);
    }
}

Value fromStored(const Stored& stored, const SqlType& type) {
    if (const auto* text = std::get_if<std::string>(&stored)) {
        return *text;
    }
    if (const auto* number = std::get_if<double>(&stored)) {
        return *number;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&stored)) {
        if (type.kind == TypeKind::Decimal) {
            return Decimal{*integer, type.scale};
        }
        if (type.kind == TypeKind::Bit) {
            return *integer != 0;
        }
        return *integer;
    }
    return {};
}

int characterCount(std::string_view text) {
    return static_cast<int>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string padded(std::string_view text, int length) {
    std::string result(text);
    const int count = characterCount(text);
    if (count < length) {
        result.append(static_cast<std::size_t>(length - count), ' ');
    }
    return result;
}

std::string_view firstCharacters(std::string_view text, int length) {
    std::size_t at = 0;
    for (int count = 0; at < text.size(); ++at) {
        if ((text[at] & 0xC0) != 0x80 && count++ == length) {
            break;
        }
    }
    return text.substr(0, at);
}

} // namespace veldran::embedded
