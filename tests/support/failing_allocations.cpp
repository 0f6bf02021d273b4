#include "tests/support/failing_allocations.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
std::size_t limit = unlimited;
std::size_t stillAllowed = 0;

void* allocate(std::size_t bytes) noexcept {
    if (bytes >= limit) {
        if (stillAllowed == 0) {
            return nullptr;
        }
        --stillAllowed;
    }
    return std::malloc(bytes == 0 ? 1 : bytes);
}

} // namespace

void* operator new(std::size_t bytes) {
    void* memory = allocate(bytes);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

// Whatever a replaced delete frees has to come from a replaced new.
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return allocate(bytes);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

namespace veldran::test {

FailingAllocations::FailingAllocations(std::size_t bytes, std::size_t allowed) {
    limit = bytes;
    stillAllowed = allowed;
}

FailingAllocations::~FailingAllocations() {
    limit = unlimited;
}

} // namespace veldran::test
