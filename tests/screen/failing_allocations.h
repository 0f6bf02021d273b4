#pragma once

#include <cstddef>

namespace veldran::test {

/// While one lives there is no memory for anything that takes as many bytes or more: `new` fails.
class FailingAllocations {
public:
    explicit FailingAllocations(std::size_t bytes);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
};

} // namespace veldran::test
