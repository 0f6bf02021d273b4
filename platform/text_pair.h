#pragma once

#include <cstdint>
#include <string_view>

namespace veldran {

/// Two texts in one block of memory, for objects of which there are a million. Copies share the block, within
/// one thread.
class TextPair {
public:
    TextPair() = default;
    /// \throws std::length_error beyond 65,535 bytes each
    TextPair(std::string_view first, std::string_view second);
    TextPair(const TextPair& other) noexcept;
    TextPair(TextPair&& other) noexcept;
    TextPair& operator=(TextPair other) noexcept;
    ~TextPair();

    // Valid until the last of the copies changes or ends.
    std::string_view first() const;
    std::string_view second() const;
    std::string_view both() const; ///< the second right behind the first

private:
    struct Block;
    Block* block_ = nullptr; ///< nullptr for two empty texts
};

/// Two texts that need no block of their own where another pair holds them anyway.
class TextParts {
public:
    TextParts() = default;
    /// \throws std::length_error beyond 65,535 bytes each
    TextParts(std::string_view first, std::string_view second);
    /// Has no block of its own if both texts occur in `holder`. \throws std::length_error as above, otherwise
    TextParts(std::string_view first, std::string_view second, const TextPair& holder);

    // Valid until the parts move, change or end.
    std::string_view first() const { return holder_.both().substr(first_.at, first_.length); }
    std::string_view second() const { return holder_.both().substr(second_.at, second_.length); }

private:
    struct Part {
        std::uint16_t at = 0;
        std::uint16_t length = 0;
    };
    TextPair holder_;
    Part first_;
    Part second_;
};

} // namespace veldran
