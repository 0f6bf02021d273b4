#include "platform/text_pair.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace veldran {

namespace {

using Length = std::uint16_t;
constexpr std::size_t headSize = 2 * sizeof(Length);

Length lengthOf(std::string_view text) {
    if (text.size() > std::numeric_limits<Length>::max()) {
        throw std::length_error("the text is too long");
    }
    return static_cast<Length>(text.size());
}

Length lengthAt(const char* place) {
    Length length = 0;
    std::memcpy(&length, place, sizeof length);
    return length;
}

} // namespace

TextPair::TextPair(std::string_view first, std::string_view second) {
    const Length firstLength = lengthOf(first);
    const Length secondLength = lengthOf(second);
    if (firstLength == 0 && secondLength == 0) {
        return;
    }
    block_.reset(new char[headSize + first.size() + second.size()]);
    char* place = block_.get();
    std::memcpy(place, &firstLength, sizeof firstLength);
    std::memcpy(place + sizeof firstLength, &secondLength, sizeof secondLength);
    first.copy(place + headSize, first.size());
    second.copy(place + headSize + first.size(), second.size());
}

std::string_view TextPair::first() const {
    return block_ == nullptr ? std::string_view()
                             : std::string_view(block_.get() + headSize, lengthAt(block_.get()));
}

std::string_view TextPair::second() const {
    return block_ == nullptr ? std::string_view()
                             : std::string_view(block_.get() + headSize + lengthAt(block_.get()),
                                                lengthAt(block_.get() + sizeof(Length)));
}

} // namespace veldran
