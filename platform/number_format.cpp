#include "platform/number_format.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

namespace veldran {

namespace {

struct Section {
    std::string_view before;
    std::string_view after;
    std::size_t wholeDigits = 0; ///< always shown
    std::size_t places = 0;
    std::size_t fixedPlaces = 0; ///< of `places`, always shown
};

Section sectionOf(std::string_view mask) {
    constexpr std::string_view digits = "#0";
    Section section;
    std::size_t first = mask.find_first_of(digits);
    if (first == std::string_view::npos) {
        section.before = mask;
        return section;
    }
    if (first > 0 && mask[first - 1] == '.') {
        --first;
    }
    const std::size_t last = mask.find_last_of(digits);
    section.before = mask.substr(0, first);
    section.after = mask.substr(last + 1);
    const std::string_view number = mask.substr(first, last - first + 1);
    const std::size_t point = std::min(number.find('.'), number.size());
    section.wholeDigits = static_cast<std::size_t>(
        std::count(number.begin(), number.begin() + static_cast<std::ptrdiff_t>(point), '0'));
    if (point < number.size()) {
        const std::string_view fraction = number.substr(point + 1);
        section.places = fraction.size();
        const std::size_t lastFixed = fraction.find_last_of('0');
        section.fixedPlaces = lastFixed == std::string_view::npos ? 0 : lastFixed + 1;
    }
    return section;
}

/// Digits of the number with exactly `places` behind the point, a "-" before them when it is negative.
std::string rounded(const Value& value, std::size_t places) {
    try {
        const Decimal exact =
            value.asDecimal() != nullptr ? *value.asDecimal() : Decimal::parse(value.toText());
        return exact.rescaled(static_cast<std::uint8_t>(places)).toText();
    } catch (const std::logic_error&) {
    } catch (const std::overflow_error&) {
    }
    std::array<char, 400> digits{}; // the longest double and the places of any mask
    std::snprintf(digits.data(), digits.size(), "%.*f", static_cast<int>(places), value.toDouble());
    return digits.data();
}

std::string applied(const Section& section, std::string digits) {
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string whole = digits.substr(0, point);
    std::string fraction = point < digits.size() ? digits.substr(point + 1) : std::string();
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    if (whole.size() < section.wholeDigits) {
        whole.insert(0, section.wholeDigits - whole.size(), '0');
    }
    while (fraction.size() > section.fixedPlaces && fraction.back() == '0') {
        fraction.pop_back();
    }
    std::string text(section.before);
    text += whole;
    if (!fraction.empty()) {
        text += "." + fraction;
    }
    text += section.after;
    return text;
}

} // namespace

std::string formatNumber(const Value& value, std::string_view mask) {
    std::array<std::string_view, 4> sections;
    std::size_t count = 0;
    for (std::string_view rest = mask; count < sections.size(); ++count) {
        const std::size_t end = std::min(rest.find(';'), rest.size());
        sections[count] = rest.substr(0, end);
        if (end == rest.size()) {
            ++count;
            break;
        }
        rest.remove_prefix(end + 1);
    }
    const auto has = [&](std::size_t index) { return index < count && !sections[index].empty(); };
    if (value.isNull()) {
        return has(3) ? std::string(sections[3]) : std::string();
    }
    if (value.asText() != nullptr && !typedNumber(*value.asText())) {
        return *value.asText();
    }
    const Section positive = sectionOf(sections[0]);
    std::string digits = rounded(value, positive.places);
    const bool zero = digits.find_first_of("123456789") == std::string::npos;
    const bool negative = !zero && digits.starts_with('-');
    if (digits.starts_with('-')) {
        digits.erase(0, 1);
    }
    if (zero && has(2)) {
        return applied(sectionOf(sections[2]), digits);
    }
    if (negative && has(1)) {
        const Section section = sectionOf(sections[1]);
        digits = rounded(value, section.places);
        return applied(section, digits.starts_with('-') ? digits.substr(1) : digits);
    }
    return (negative ? "-" : "") + applied(positive, digits);
}

std::optional<Decimal> typedNumber(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    std::string number(withoutTrailingBlanks(text.substr(first)));
    std::replace(number.begin(), number.end(), ',', '.');
    try {
        return Decimal::parse(number);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

} // namespace veldran
