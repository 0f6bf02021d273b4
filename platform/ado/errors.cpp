#include "platform/ado/errors.h"

namespace veldran::ado {

AdoError::AdoError(Errors errors)
    : std::runtime_error(errors.empty() ? std::string() : errors.front().Description),
      errors_(std::move(errors)) {
    if (errors_.empty()) {
        errors_.emplace_back();
    }
}

} // namespace veldran::ado
