#pragma once

#include <cstdint>

namespace veldran::chartgen {

/// Pseudo-random numbers that are the same on every platform for a given seed, which the standard
/// distributions are not.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    /// A number from `lowest` to `highest`, both included; `lowest` <= `highest`.
    std::int64_t between(std::int64_t lowest, std::int64_t highest) {
        const auto span = static_cast<std::uint64_t>(highest - lowest) + 1;
        return lowest + static_cast<std::int64_t>(next() % span);
    }

    bool chance(int percent) { return between(1, 100) <= percent; }

private:
    // SplitMix64: one multiply-and-shift chain, a full period and no state to warm up.
    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15ULL;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ULL;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBULL;
        return mixed ^ (mixed >> 31);
    }

    std::uint64_t state_;
};

} // namespace veldran::chartgen
