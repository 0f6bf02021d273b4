#include "adapters/embedded/numeric.h"

#include "adapters/embedded/types.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace veldran::embedded {

namespace {

std::optional<std::int64_t> narrowed(Int128 number) {
    if (number < INT64_MIN || number > INT64_MAX) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(number);
}

// 10^19 is beyond 64 bits: a larger shift of any number but 0 overflows, and of 0 is 0.
constexpr int maximumShift = 19;

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : withoutTrailingBlanks(text.substr(first));
}

} // namespace

std::optional<std::int64_t> rescale(std::int64_t coefficient, int fromScale, int toScale) {
    if (coefficient == 0) {
        return 0;
    }
    const int shift = toScale - fromScale;
    if (shift > maximumShift) {
        return std::nullopt;
    }
    if (shift >= 0) {
        return narrowed(Int128{coefficient} * powerOfTen(shift));
    }
    if (-shift > maximumShift) {
        return 0;
    }
    const Int128 divisor = powerOfTen(-shift);
    Int128 quotient = coefficient / divisor;
    const Int128 remainder = coefficient % divisor;
    if (2 * (remainder < 0 ? -remainder : remainder) >= divisor) {
        quotient += coefficient < 0 ? -1 : 1;
    }
    return narrowed(quotient);
}

std::optional<std::int64_t> divideShifted(std::int64_t a, std::int64_t b, int shift) {
    if (a == 0) {
        return 0;
    }
    if (shift < 0) {
        // The divisor carries the places instead; 38 places leave nothing of a 64-bit number.
        return -shift > maximumShift ? 0 : narrowed(Int128{a} / (Int128{b} * powerOfTen(-shift)));
    }
    if (shift > maximumShift) {
        return std::nullopt;
    }
    return narrowed(Int128{a} * powerOfTen(shift) / b);
}

std::optional<std::int64_t> doubleToCoefficient(double number, int scale) {
    if (!std::isfinite(number)) {
        return std::nullopt;
    }
    // The shortest decimal text is what the number was written as: 1.005 rounds up although its double is
    // below.
    char buffer[400];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed).ptr;
    std::string_view digits(buffer, static_cast<std::size_t>(end - buffer));
    const bool negative = digits.starts_with('-');
    if (negative) {
        digits.remove_prefix(1);
    }
    Int128 coefficient = 0;
    int places = -1; // none until the point
    bool roundUp = false;
    for (const char c : digits) {
        if (c == '.') {
            places = 0;
            continue;
        }
        if (places >= 0 && places == scale) {
            roundUp = c >= '5';
            break;
        }
        coefficient = coefficient * 10 + (c - '0');
        if (coefficient > INT64_MAX) {
            return std::nullopt;
        }
        places += places >= 0 ? 1 : 0;
    }
    for (int missing = scale - (places < 0 ? 0 : places); missing > 0; --missing) {
        coefficient *= 10;
        if (coefficient > INT64_MAX) {
            return std::nullopt;
        }
    }
    coefficient += roundUp ? 1 : 0;
    return narrowed(negative ? -coefficient : coefficient);
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
    text = withoutBlanks(text);
    if (text.empty()) {
        return 0;
    }
    if (text.starts_with('+') && text.size() > 1 && text[1] != '-') {
        text.remove_prefix(1);
    }
    std::int64_t result = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return result;
}

std::optional<Decimal> parseDecimal(std::string_view text) {
    try {
        return Decimal::parse(withoutBlanks(text));
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

std::optional<double> parseDouble(std::string_view text) {
    text = withoutBlanks(text);
    if (text.empty()) {
        return 0.0;
    }
    if (text.starts_with('+') && text.size() > 1 && text[1] != '-') {
        text.remove_prefix(1);
    }
    double result = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(result)) {
        return std::nullopt;
    }
    return result;
}

} // namespace veldran::embedded
