#include "tests/screen/failing_allocations.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
std::size_t limit = unlimited;

} // namespace

void* operator new(std::size_t bytes) {
    void* memory = bytes < limit ? std::malloc(bytes == 0 ? 1 : bytes) : nullptr;
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace veldran::test {

FailingAllocations::FailingAllocations(std::size_t bytes) {
    limit = bytes;
}

FailingAllocations::~FailingAllocations() {
    limit = unlimited;
}

} // namespace veldran::test
