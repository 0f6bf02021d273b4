#pragma once

#include <memory>
#include <utility>

namespace veldran::tsql {

// An owned value on the heap with value semantics: copying copies the value, comparing compares it. It lets a
// node contain a node of its own kind. A Box is never empty, except after it was moved from.
template<typename T>
class Box {
public:
    Box(T value) : value_(std::make_unique<T>(std::move(value))) {}
    Box(const Box& other) : value_(std::make_unique<T>(*other)) {}
    Box(Box&&) noexcept = default;
    Box& operator=(const Box& other) {
        if (this != &other) {
            value_ = std::make_unique<T>(*other);
        }
        return *this;
    }
    Box& operator=(Box&&) noexcept = default;
    ~Box() = default;

    T& operator*() { return *value_; }
    const T& operator*() const { return *value_; }
    T* operator->() { return value_.get(); }
    const T* operator->() const { return value_.get(); }

    friend bool operator==(const Box& left, const Box& right) { return *left == *right; }

private:
    std::unique_ptr<T> value_;
};

} // namespace veldran::tsql
