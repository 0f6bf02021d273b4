#include "platform/value.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace veldran {

namespace {

constexpr int maximumScale = 18;

std::int64_t powerOfTen(int exponent) {
    std::int64_t result = 1;
    while (exponent-- > 0) {
        result *= 10;
    }
    return result;
}

std::string numberText(double value) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return {buffer, end};
}

double parseNumber(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        throw std::invalid_argument("a blank text is not a number");
    }
    text = withoutTrailingBlanks(text.substr(first));
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double result = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(result)) {
        throw std::invalid_argument("not a number: " + std::string(text));
    }
    return result;
}

double roundHalfToEven(double value) {
    return std::nearbyint(value); // the default rounding mode, which nothing in the process changes
}

template<class Narrow>
Narrow narrowed(std::int64_t value) {
    if (value < std::numeric_limits<Narrow>::min() || value > std::numeric_limits<Narrow>::max()) {
        throw std::overflow_error("number out of range: " + std::to_string(value));
    }
    return static_cast<Narrow>(value);
}

} // namespace

double Decimal::toDouble() const {
    // One correctly rounded division: 7268 / 100 is the double nearest to 72.68.
    return static_cast<double>(coefficient) / static_cast<double>(powerOfTen(scale));
}

std::string Decimal::toText() const {
    const bool negative = coefficient < 0;
    std::string digits = std::to_string(coefficient);
    if (negative) {
        digits.erase(0, 1);
    }
    if (scale > 0) {
        if (digits.size() <= scale) {
            digits.insert(0, scale + 1U - digits.size(), '0');
        }
        digits.insert(digits.size() - scale, 1, '.');
    }
    return negative ? "-" + digits : digits;
}

Decimal Decimal::rescaled(std::uint8_t newScale) const {
    if (newScale >= scale) {
        std::int64_t scaled = 0;
        if (newScale - scale > maximumScale ||
            __builtin_mul_overflow(coefficient, powerOfTen(newScale - scale), &scaled)) {
            throw std::overflow_error("decimal overflow: " + toText());
        }
        return {scaled, newScale};
    }
    const std::int64_t divisor = powerOfTen(scale - newScale);
    std::int64_t quotient = coefficient / divisor;
    const std::int64_t remainder = coefficient % divisor;
    if (remainder >= divisor - remainder || -remainder >= divisor + remainder) {
        quotient += coefficient < 0 ? -1 : 1;
    }
    return {quotient, newScale};
}

Decimal Decimal::parse(std::string_view text) {
    const auto refuse = [&]() -> Decimal {
        throw std::invalid_argument("not a decimal: " + std::string(text));
    };
    std::string_view rest = text;
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) {
        rest.remove_prefix(1);
    }
    Decimal result;
    bool point = false;
    bool digits = false;
    for (const char c : rest) {
        if (c == '.' && !point) {
            point = true;
        } else if (c >= '0' && c <= '9') {
            digits = true;
            if (__builtin_mul_overflow(result.coefficient, std::int64_t{10}, &result.coefficient) ||
                __builtin_add_overflow(result.coefficient, std::int64_t{c - '0'}, &result.coefficient)) {
                return refuse();
            }
            result.scale = static_cast<std::uint8_t>(result.scale + (point ? 1 : 0));
        } else {
            return refuse();
        }
    }
    if (!digits || result.scale > maximumScale) {
        return refuse();
    }
    if (negative) {
        result.coefficient = -result.coefficient;
    }
    return result;
}

bool operator==(const Decimal& a, const Decimal& b) {
    Decimal shorter = a.scale < b.scale ? a : b;
    Decimal longer = a.scale < b.scale ? b : a;
    while (longer.scale > shorter.scale && longer.coefficient % 10 == 0) {
        longer.coefficient /= 10;
        --longer.scale;
    }
    while (shorter.scale > 0 && shorter.coefficient % 10 == 0) {
        shorter.coefficient /= 10;
        --shorter.scale;
    }
    while (longer.scale > 0 && longer.coefficient % 10 == 0) {
        longer.coefficient /= 10;
        --longer.scale;
    }
    return longer.scale == shorter.scale && longer.coefficient == shorter.coefficient;
}

std::string Value::toText() const {
    if (const auto* text = asText()) {
        return *text;
    }
    if (const auto* flag = asBool()) {
        return *flag ? "-1" : "0";
    }
    if (const auto* integer = asInteger()) {
        return std::to_string(*integer);
    }
    if (const auto* number = asDouble()) {
        return numberText(*number);
    }
    if (const auto* decimal = asDecimal()) {
        return decimal->toText();
    }
    return {};
}

double Value::toDouble() const {
    if (const auto* number = asDouble()) {
        return *number;
    }
    if (const auto* integer = asInteger()) {
        return static_cast<double>(*integer);
    }
    if (const auto* decimal = asDecimal()) {
        return decimal->toDouble();
    }
    if (const auto* flag = asBool()) {
        return *flag ? -1.0 : 0.0;
    }
    if (const auto* text = asText()) {
        return parseNumber(*text);
    }
    throw std::invalid_argument("NULL is not a number");
}

std::int64_t Value::toInteger() const {
    if (const auto* integer = asInteger()) {
        return *integer;
    }
    const double rounded = roundHalfToEven(toDouble());
    constexpr double limit = 9223372036854775808.0; // 2^63, the first double beyond the range
    if (!(rounded >= -limit && rounded < limit)) {
        throw std::overflow_error("number out of range: " + toText());
    }
    return static_cast<std::int64_t>(rounded);
}

std::int32_t Value::toInt32() const {
    return narrowed<std::int32_t>(toInteger());
}
std::int16_t Value::toInt16() const {
    return narrowed<std::int16_t>(toInteger());
}

bool Value::toBool() const {
    if (const auto* flag = asBool()) {
        return *flag;
    }
    return toDouble() != 0;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

std::string nullSafeText(const Value& value) {
    if (const auto* text = value.asText()) {
        return std::string(withoutTrailingBlanks(*text));
    }
    return value.toText();
}

void assignNullSafeText(std::string& text, const Value& value) {
    if (const auto* own = value.asText()) {
        text.assign(withoutTrailingBlanks(*own));
    } else {
        text = value.toText();
    }
}

double nullSafeNumber(const Value& value) {
    const std::string* text = value.asText();
    const bool empty = value.isNull() || (text != nullptr && withoutTrailingBlanks(*text).empty());
    return empty ? 0.0 : value.toDouble();
}

Value valueOrDefault(const Value& value, const Value& fallback) {
    return nullSafeText(value).empty() ? fallback : value;
}

} // namespace veldran
