#pragma once

#include "adapters/embedded/fragment.h"

namespace veldran::embedded {

enum class ConversionMode {
    Assign, ///< into a column, variable or parameter: text too long is refused
    Cast    ///< CAST and CONVERT, and operands brought to a common type: text too long is cut
};

/// The value as another type. Nothing is emitted where the value already has the wanted form; numbers out of
/// range and texts that are no number are refused when the statement runs. `column` is what a refusal names.
/// \throws AdoError when no conversion between the two types exists.
Fragment convert(const Fragment& value, const SqlType& type, ConversionMode mode,
                 std::string_view column = {});

} // namespace veldran::embedded
