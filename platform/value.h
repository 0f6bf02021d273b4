#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

namespace veldran {

/// An exact decimal number: `coefficient` / 10^`scale`. Holds what DECIMAL(p, s) with p <= 18 can hold.
struct Decimal {
    std::int64_t coefficient = 0;
    std::uint8_t scale = 0;

    double toDouble() const;
    /// Digits with exactly `scale` places behind a decimal point: {1250, 2} is "12.50".
    std::string toText() const;
    /// The same number at another scale, rounded half away from zero.
    /// \throws std::overflow_error when the coefficient does not fit into 64 bits.
    Decimal rescaled(std::uint8_t newScale) const;
    /// \throws std::invalid_argument when `text` is not a plain decimal number.
    static Decimal parse(std::string_view text);

    /// Equal numbers are equal at whatever scale they are written.
    friend bool operator==(const Decimal& a, const Decimal& b);
};

/// 16-bit boolean as exchanged with the host: true is -1.
using VariantBool = std::int16_t;
inline constexpr VariantBool variantTrue = -1;
inline constexpr VariantBool variantFalse = 0;
constexpr VariantBool toVariantBool(bool value) {
    return value ? variantTrue : variantFalse;
}

/// A value that crosses a boundary untyped: a field of a record, a parameter, a variant of the host contract.
/// Text is UTF-8. NULL (`isNull`) is the database's NULL and the host's empty variant alike.
class Value {
public:
    Value() = default;
    Value(const Value& other) : data_(copyOf(other.data_)) {}
    Value(Value&&) = default;
    Value& operator=(const Value&) = default;
    Value& operator=(Value&&) = default;
    ~Value() = default;
    Value(bool value) : data_(value) {}
    Value(std::int16_t value) : data_(std::int64_t{value}) {}
    Value(std::int32_t value) : data_(std::int64_t{value}) {}
    Value(std::int64_t value) : data_(value) {}
    Value(double value) : data_(value) {}
    Value(Decimal value) : data_(value) {}
    Value(std::string value) : data_(std::move(value)) {}
    Value(std::string_view value) : data_(std::string(value)) {}
    Value(const char* value) : data_(std::string(value)) {}

    bool isNull() const { return std::holds_alternative<std::monostate>(data_); }
    const bool* asBool() const { return std::get_if<bool>(&data_); }
    const std::int64_t* asInteger() const { return std::get_if<std::int64_t>(&data_); }
    const double* asDouble() const { return std::get_if<double>(&data_); }
    const Decimal* asDecimal() const { return std::get_if<Decimal>(&data_); }
    const std::string* asText() const { return std::get_if<std::string>(&data_); }

    /// The value as text, unchanged: NULL is "", true is "-1" and false "0" as the host writes them.
    std::string toText() const;
    /// \throws std::invalid_argument for NULL and for text that is not a number.
    double toDouble() const;
    /// Rounds half to even, as the host's conversions do.
    /// \throws std::invalid_argument as `toDouble`; std::overflow_error beyond the range.
    std::int64_t toInteger() const;
    std::int32_t toInt32() const;
    std::int16_t toInt16() const;
    /// Any number other than 0 is true. \throws std::invalid_argument for NULL and for text that is not a
    /// number.
    bool toBool() const;

    /// Same kind and same content; text is compared as it stands.
    friend bool operator==(const Value&, const Value&) = default;

private:
    using Data = std::variant<std::monostate, bool, std::int64_t, double, Decimal, std::string>;

    /// As the variant copies itself, without what libstdc++ 12 does when there is no memory for the text: it
    /// destroys a text that was never made.
    static Data copyOf(const Data& data) {
        return std::visit(
            [](const auto& content) {
                return Data(std::in_place_type<std::decay_t<decltype(content)>>, content);
            },
            data);
    }

    Data data_;
};

/// `text` without its trailing blanks.
std::string_view withoutTrailingBlanks(std::string_view text);
/// Null-safe text: the value as text without trailing blanks, NULL giving "".
std::string nullSafeText(const Value& value);
/// The same into a text that is there already, whose room is used again.
void assignNullSafeText(std::string& text, const Value& value);
/// Null-safe number: the null-safe text as a number, "" giving 0. \throws std::invalid_argument for other
/// text.
double nullSafeNumber(const Value& value);
/// Value-or-default: `fallback` for an empty, NULL or blank value, else the value itself.
Value valueOrDefault(const Value& value, const Value& fallback);

} // namespace veldran
