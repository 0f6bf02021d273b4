#include "adapters/embedded/conversion.h"

#include "adapters/embedded/errors.h"
#include "adapters/embedded/numeric.h"
#include "adapters/embedded/sqlite.h"

namespace veldran::embedded {

namespace {

std::string number(int value) {
    return std::to_string(value);
}
std::string ordinal(TypeKind kind) {
    return std::to_string(static_cast<int>(kind));
}

Fragment retyped(Fragment value, const SqlType& type) {
    value.type = type;
    return value;
}

Fragment constantText(const Fragment& value, const SqlType& type, ConversionMode mode,
                      std::string_view column) {
    std::string text = *value.textConstant();
    if (characterCount(text) > type.length) {
        if (mode == ConversionMode::Assign && characterCount(withoutTrailingBlanks(text)) > type.length) {
            fail(8152, "22001", truncationText(column));
        }
        text = firstCharacters(text, type.length);
    }
    return makeConstant(type.isFixedText() ? padded(text, type.length) : text, type);
}

// The same for a literal that is known when the text runs. How long it is decides all: where it is written,
// it has no blanks to lose.
Fragment literalText(const Fragment& value, const SqlType& type, std::string_view column) {
    const int missing = type.length - value.minimumLength;
    if (missing < 0) {
        fail(8152, "22001", truncationText(column));
    }
    Fragment result = retyped(value, type);
    if (type.isFixedText() && missing > 0) {
        result.sql += " || " + quoteText(padded({}, missing));
        result.simple = false;
        result.literal = false;
        result.minimumLength = type.length;
    }
    return result;
}

Fragment textToText(const Fragment& value, const SqlType& type, ConversionMode mode,
                    std::string_view column) {
    if (value.textConstant() != nullptr) {
        return constantText(value, type, mode, column);
    }
    if (value.literal && mode == ConversionMode::Assign) {
        return literalText(value, type, column);
    }
    const bool fits = value.type.length <= type.length;
    const bool full = value.minimumLength >= type.length;
    if (fits && (!type.isFixedText() || full)) {
        return retyped(value, type);
    }
    Fragment result;
    if (mode == ConversionMode::Assign) {
        result = makeCall(type.isFixedText() ? "ts_nchar" : "ts_nvarchar",
                          {value.sql, number(type.length), quoteText(column)}, type, value.nullable);
    } else {
        result = makeCall(type.isFixedText() ? "ts_cut_pad" : "ts_cut", {value.sql, number(type.length)},
                          type, value.nullable);
    }
    result.minimumLength = type.isFixedText() ? type.length : std::min(value.minimumLength, type.length);
    return result;
}

Fragment numberToText(const Fragment& value, const SqlType& type) {
    const SqlType open = textType(TypeKind::NVarChar, type.length);
    Fragment result;
    if (value.type.kind == TypeKind::Float) {
        result = makeCall("ts_real_to_text", {value.sql, number(type.length), ordinal(type.kind)}, open,
                          value.nullable);
    } else {
        result = makeCall("ts_number_to_text",
                          {value.sql, number(value.type.scale), number(type.length), ordinal(type.kind)},
                          open, value.nullable);
    }
    return textToText(result, type, ConversionMode::Cast, {});
}

Fragment toBit(const Fragment& value) {
    const SqlType bit = integerType(TypeKind::Bit);
    if (const auto* constant = value.integerConstant()) {
        return makeConstant(std::int64_t{*constant != 0 ? 1 : 0}, bit);
    }
    if (value.type.isExact() && Range{0, 1}.contains(value.bounds()) && value.type.scale == 0) {
        return retyped(value, bit);
    }
    Fragment result;
    result.sql = value.operand() + " <> 0";
    result.type = bit;
    result.simple = false;
    result.nullable = value.nullable;
    return result;
}

Fragment exactToInteger(const Fragment& value, const SqlType& type) {
    if (value.type.scale > 0) {
        return makeCall("ts_decimal_to_int", {value.sql, number(value.type.scale), ordinal(type.kind)}, type,
                        value.nullable);
    }
    if (rangeOf(type).contains(value.bounds())) {
        Fragment result = retyped(value, type);
        result.range = value.bounds();
        return result;
    }
    if (value.constant) {
        fail(errorOverflow, "22003", overflowText(typeName(type)));
    }
    return makeCall("ts_range", {value.sql, ordinal(type.kind)}, type, value.nullable);
}

Fragment exactToDecimal(const Fragment& value, const SqlType& type) {
    const int shift = type.scale - value.type.scale;
    if (const auto* constant = value.integerConstant()) {
        const auto rescaled = rescale(*constant, value.type.scale, type.scale);
        if (!rescaled || !rangeOf(type).contains({*rescaled, *rescaled})) {
            fail(errorOverflow, "22003", overflowText(typeName(type)));
        }
        return makeConstant(*rescaled, type);
    }
    const Range bounds = value.bounds();
    if (shift >= 0 && shift <= 18) {
        const Range shifted{bounds.low * powerOfTen(shift), bounds.high * powerOfTen(shift)};
        if (rangeOf(type).contains(shifted)) {
            Fragment result = retyped(value, type);
            if (shift > 0) {
                result = Fragment{};
                result.sql =
                    value.operand() + " * " + std::to_string(static_cast<long long>(powerOfTen(shift)));
                result.type = type;
                result.simple = false;
                result.nullable = value.nullable;
            }
            result.range = shifted;
            return result;
        }
    }
    return makeCall("ts_decimal",
                    {value.sql, number(value.type.scale), number(type.scale), number(type.precision)}, type,
                    value.nullable);
}

Fragment exactToReal(const Fragment& value, const SqlType& type) {
    if (const auto* constant = value.integerConstant()) {
        return makeConstant(Decimal{*constant, value.type.scale}.toDouble(), type);
    }
    Fragment result;
    result.sql = "CAST(" + value.sql + " AS REAL)";
    if (value.type.scale > 0) {
        result.sql += " / 1" + std::string(value.type.scale, '0') + ".0";
        result.simple = false;
    }
    result.type = type;
    result.nullable = value.nullable;
    return result;
}

Fragment textToNumber(const Fragment& value, const SqlType& type) {
    if (const auto* text = value.textConstant(); text != nullptr && type.kind != TypeKind::Bit) {
        // The constant is read at once where it is a number; where it is not, the run refuses it.
        if (type.kind == TypeKind::Decimal) {
            const auto parsed = parseDecimal(*text);
            const auto scaled =
                parsed ? rescale(parsed->coefficient, parsed->scale, type.scale) : std::nullopt;
            if (scaled && rangeOf(type).contains({*scaled, *scaled})) {
                return makeConstant(*scaled, type);
            }
        } else if (type.isInteger()) {
            const auto parsed = parseInteger(*text);
            if (parsed && rangeOf(type).contains({*parsed, *parsed})) {
                return makeConstant(*parsed, type);
            }
        }
    }
    switch (type.kind) {
    case TypeKind::Bit:
        return makeCall("ts_text_to_bit", {value.sql}, type, value.nullable);
    case TypeKind::Decimal:
        return makeCall("ts_text_to_decimal", {value.sql, number(type.precision), number(type.scale)}, type,
                        value.nullable);
    case TypeKind::Float:
        return makeCall("ts_text_to_real", {value.sql}, type, value.nullable);
    default:
        return makeCall("ts_text_to_int", {value.sql, ordinal(type.kind)}, type, value.nullable);
    }
}

Fragment realToNumber(const Fragment& value, const SqlType& type) {
    if (type.kind == TypeKind::Decimal) {
        return makeCall("ts_real_to_decimal", {value.sql, number(type.precision), number(type.scale)}, type,
                        value.nullable);
    }
    return makeCall("ts_real_to_int", {value.sql, ordinal(type.kind)}, type, value.nullable);
}

} // namespace

Fragment convert(const Fragment& value, const SqlType& type, ConversionMode mode, std::string_view column) {
    if (value.isNullConstant()) {
        return makeConstant(std::monostate{}, type);
    }
    if (type.isNull() || (value.type == type && !type.isText())) {
        return value;
    }
    if (type.isText()) {
        return value.type.isText() ? textToText(value, type, mode, column) : numberToText(value, type);
    }
    if (value.type.isText()) {
        return textToNumber(value, type);
    }
    if (type.kind == TypeKind::Bit) {
        return toBit(value);
    }
    if (type.kind == TypeKind::Float) {
        return exactToReal(value, type);
    }
    if (value.type.kind == TypeKind::Float) {
        return realToNumber(value, type);
    }
    return type.kind == TypeKind::Decimal ? exactToDecimal(value, type) : exactToInteger(value, type);
}

} // namespace veldran::embedded
