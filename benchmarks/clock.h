#pragma once

#include <chrono>
#include <cstddef>
#include <ctime>
#include <vector>

namespace veldran::bench {

/// What an action cost, in milliseconds. Comparisons are of processor time, which other programs on the
/// machine do not stretch; the time that passed is told beside it, because a user waits for the disk too.
struct Cost {
    double processor = 0;
    double passed = 0;
};

inline double processorMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Pushes out what the processor keeps at hand. A user thinks between two actions, and the machine does other
/// things meanwhile; and the second of two ways to do one action must not find the database's code and pages
/// where the first has left them.
inline void coolDown() {
    constexpr std::size_t lastCache = std::size_t{64} << 20U;
    constexpr std::size_t line = 64;
    static std::vector<unsigned char> memory(lastCache);
    for (std::size_t at = 0; at < memory.size(); at += line) {
        ++memory[at];
    }
}

template<typename Action>
Cost costOf(Action action) {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const auto begin = std::chrono::steady_clock::now();
    const double processorBegin = processorMilliseconds();
    action();
    const double processor = processorMilliseconds() - processorBegin;
    return {processor, Milliseconds(std::chrono::steady_clock::now() - begin).count()};
}

} // namespace veldran::bench
