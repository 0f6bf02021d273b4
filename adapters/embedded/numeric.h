#pragma once

#include "platform/value.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// Exact arithmetic on scaled integers. An empty result means that 64 bits do not hold the number.
namespace veldran::embedded {

/// The coefficient at another scale, rounded half away from zero.
std::optional<std::int64_t> rescale(std::int64_t coefficient, int fromScale, int toScale);
/// a / b with `shift` more decimal places, cut towards zero as the server divides decimals. `b` is not 0.
std::optional<std::int64_t> divideShifted(std::int64_t a, std::int64_t b, int shift);
/// The number at the scale, rounded half away from zero; empty also for NaN and infinities.
std::optional<std::int64_t> doubleToCoefficient(double number, int scale);

/// A whole number with optional sign and surrounding blanks; blank text is 0, as the server converts it.
std::optional<std::int64_t> parseInteger(std::string_view text);
/// A plain decimal number with optional sign and surrounding blanks; empty for anything else.
std::optional<Decimal> parseDecimal(std::string_view text);
/// A decimal or exponent number with surrounding blanks; blank text is 0.
std::optional<double> parseDouble(std::string_view text);

} // namespace veldran::embedded
