#pragma once

#include <QString>
#include <array>
#include <cstdint>

namespace veldran::shell {

/// A kind of cost account: one bit of the typology mask.
struct CostKind {
    std::int32_t bit;
    const char* name; ///< Italian, UTF-8
};

constexpr std::int32_t everyCostKind = 1023;

/// The ten kinds in the order of their bits.
const std::array<CostKind, 10>& costKinds();

/// The sentence that a list narrowed to the kinds of `mask` says of itself; empty when the mask has them all.
QString restrictionText(std::int32_t mask);

} // namespace veldran::shell
