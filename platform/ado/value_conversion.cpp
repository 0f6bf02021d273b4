#include "platform/ado/value_conversion.h"

#include "platform/ado/raise.h"
#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

namespace veldran::ado {

namespace {

constexpr int maximumDigits =
    18; // what a 64-bit coefficient holds; also the limit of a type of unknown precision

std::string described(const Value& value, const TargetType& target) {
    return "(" + target.carrier.text() + ", valore \"" + value.toText() + "\")";
}

[[noreturn]] void refuse(int number, const Value& value, const TargetType& target) {
    raise(number, described(value, target));
}

/// The decimal that a double stands for. Only as many places are read as decide the rounding to `scale`, so
/// that a double written with many digits still fits.
Decimal decimalOf(double number, std::uint8_t scale, const Value& value, const TargetType& target) {
    if (!std::isfinite(number)) {
        refuse(adErrDataConversion, value, target);
    }
    if (std::abs(number) >= 1e18) {
        refuse(sqlErrOverflow, value, target);
    }
    char buffer[512];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed).ptr;
    std::string digits(buffer, end);
    if (const std::size_t point = digits.find('.'); point != std::string::npos) {
        digits.resize(std::min(digits.size(), point + 2U + scale));
    }
    return Decimal::parse(digits);
}

Decimal decimalOf(const Value& value, const TargetType& target, std::uint8_t scale) {
    if (const auto* decimal = value.asDecimal()) {
        return *decimal;
    }
    if (const auto* integer = value.asInteger()) {
        return {*integer, 0};
    }
    if (const auto* text = value.asText()) {
        const std::string_view number = withoutTrailingBlanks(*text);
        try {
            return Decimal::parse(number.substr(std::min(number.find_first_not_of(' '), number.size())));
        } catch (const std::invalid_argument&) {
            return decimalOf(value.toDouble(), scale, value, target); // exponents, or more digits than fit
        }
    }
    return decimalOf(value.toDouble(), scale, value, target);
}

bool sameNumber(const Value& value, double result) {
    const double given = value.toDouble();
    if (value.asDouble() == nullptr) {
        return given == result;
    }
    return std::abs(given - result) <= 1e-9 * std::max(1.0, std::abs(given));
}

Value toDecimal(const Value& value, const TargetType& target, Places places) {
    const Decimal rounded = decimalOf(value, target, target.scale).rescaled(target.scale);
    const int digits = target.precision == 0 ? maximumDigits : std::min<int>(target.precision, maximumDigits);
    std::int64_t limit = 1;
    for (int digit = 0; digit < digits; ++digit) {
        limit *= 10;
    }
    if (rounded.coefficient >= limit || rounded.coefficient <= -limit) {
        refuse(sqlErrOverflow, value, target);
    }
    if (places == Places::Refused &&
        (value.asDecimal() ? !(*value.asDecimal() == rounded) : !sameNumber(value, rounded.toDouble()))) {
        refuse(adErrDataConversion, value, target);
    }
    return rounded;
}

template<class Integer>
Value toInteger(const Value& value, const TargetType& target, Places places) {
    const std::int64_t integer = value.toInteger();
    if (integer < std::numeric_limits<Integer>::min() || integer > std::numeric_limits<Integer>::max()) {
        refuse(sqlErrOverflow, value, target);
    }
    if (places == Places::Refused && !sameNumber(value, static_cast<double>(integer))) {
        refuse(adErrDataConversion, value, target);
    }
    return integer;
}

Value toFinite(const Value& value, const TargetType& target) {
    const double number = value.toDouble();
    if (!std::isfinite(number)) {
        refuse(adErrDataConversion, value, target);
    }
    return number;
}

Value toText(const Value& value, const TargetType& target) {
    std::string text = value.toText();
    if (target.size <= 0) {
        return text;
    }
    const auto size = static_cast<std::size_t>(target.size);
    std::size_t length = utf16Length(text);
    while (length > size && text.ends_with(' ')) {
        text.pop_back();
        --length;
    }
    if (length > size) {
        refuse(sqlErrTextTooLong, value, target);
    }
    return text;
}

} // namespace

Value converted(const Value& value, const TargetType& target, Places places) {
    if (value.isNull()) {
        return value;
    }
    try {
        switch (target.type) {
        case adSmallInt:
            return toInteger<std::int16_t>(value, target, places);
        case adInteger:
            return toInteger<std::int32_t>(value, target, places);
        case adBigInt:
            return toInteger<std::int64_t>(value, target, places);
        case adDouble:
            return toFinite(value, target);
        case adBoolean:
            return value.toBool();
        case adNumeric:
        case adDecimal:
            return toDecimal(value, target, places);
        case adChar:
        case adWChar:
        case adVarChar:
        case adVarWChar:
            return toText(value, target);
        case adEmpty:
            break;
        }
    } catch (const std::invalid_argument&) {
        refuse(adErrDataConversion, value, target);
    } catch (const std::overflow_error&) {
        refuse(sqlErrOverflow, value, target);
    }
    raise(adErrInvalidParamInfo, described(value, target));
}

std::string paddedTo(int size, std::string text) {
    const std::size_t length = utf16Length(text);
    if (size > 0 && length < static_cast<std::size_t>(size)) {
        text.append(static_cast<std::size_t>(size) - length, ' ');
    }
    return text;
}

} // namespace veldran::ado
