#pragma once

#include <memory>
#include <string_view>

namespace veldran {

/// Two texts in one block of memory, for objects of which there are a million. Not to be copied.
class TextPair {
public:
    TextPair() = default;
    /// \throws std::length_error beyond 65,535 bytes each
    TextPair(std::string_view first, std::string_view second);

    /// Valid until the pair changes or ends.
    std::string_view first() const;
    std::string_view second() const;

private:
    std::unique_ptr<char[]> block_; ///< both lengths, then both texts; empty for two empty texts
};

} // namespace veldran
