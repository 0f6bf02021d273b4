#pragma once

#include <cstddef>

namespace veldran::test {

/// While one lives there is no memory for anything that takes as many bytes or more: `new` fails, from the
/// time on when it has succeeded as often as is allowed.
class FailingAllocations {
public:
    explicit FailingAllocations(std::size_t bytes, std::size_t allowed = 0);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
};

} // namespace veldran::test
