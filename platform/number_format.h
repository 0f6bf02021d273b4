#pragma once

#include "platform/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace veldran {

/// `value` through a mask such as "##0.00;-##0.00;;".
///
/// A mask has up to four sections, separated by ";": for positive numbers, negative ones, zero and NULL. A
/// missing or empty section is the positive one's, negative numbers then keep their sign; NULL without a
/// section of its own is "". In a section "0" is a digit always shown, "#" one shown when it is significant,
/// "." the decimal point; what stands before and after them is shown as it stands. The number is rounded half
/// away from zero to the places of the section. A text that is no number is returned as it is.
std::string formatNumber(const Value& value, std::string_view mask);

/// The number that the user typed, with comma or point and without thousands marks; blanks around it are
/// ignored. None when the text is no number or has more than 18 digits.
std::optional<Decimal> typedNumber(std::string_view text);

} // namespace veldran
