#include "platform/text_pair.h"

#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

namespace veldran {

/// The head of a block; the characters of both texts follow it.
struct TextPair::Block {
    std::uint32_t users;
    std::uint16_t firstLength;
    std::uint16_t secondLength;

    char* characters() { return reinterpret_cast<char*>(this + 1); }
};

namespace {

constexpr std::size_t longest = std::numeric_limits<std::uint16_t>::max();

std::uint16_t lengthOf(std::string_view text) {
    if (text.size() > longest) {
        throw std::length_error("the text is too long");
    }
    return static_cast<std::uint16_t>(text.size());
}

} // namespace

TextPair::TextPair(std::string_view first, std::string_view second) {
    const Block head{1, lengthOf(first), lengthOf(second)};
    if (first.empty() && second.empty()) {
        return;
    }
    block_ = new (::operator new(sizeof(Block) + first.size() + second.size())) Block(head);
    first.copy(block_->characters(), first.size());
    second.copy(block_->characters() + first.size(), second.size());
}

TextPair::TextPair(const TextPair& other) noexcept : block_(other.block_) {
    if (block_ != nullptr) {
        ++block_->users;
    }
}

TextPair::TextPair(TextPair&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}

TextPair& TextPair::operator=(TextPair other) noexcept {
    std::swap(block_, other.block_);
    return *this;
}

TextPair::~TextPair() {
    if (block_ != nullptr && --block_->users == 0) {
        ::operator delete(block_);
    }
}

std::string_view TextPair::first() const {
    return block_ == nullptr ? std::string_view() : both().substr(0, block_->firstLength);
}

std::string_view TextPair::second() const {
    return block_ == nullptr ? std::string_view() : both().substr(block_->firstLength);
}

std::string_view TextPair::both() const {
    return block_ == nullptr ? std::string_view()
                             : std::string_view(block_->characters(),
                                                std::size_t{block_->firstLength} + block_->secondLength);
}

TextParts::TextParts(std::string_view first, std::string_view second)
    : holder_(first, second), first_{0, lengthOf(first)}, second_{first_.length, lengthOf(second)} {}

TextParts::TextParts(std::string_view first, std::string_view second, const TextPair& holder) {
    const std::size_t firstAt = holder.both().find(first);
    const std::size_t secondAt = holder.both().find(second);
    if (firstAt > longest || secondAt > longest) { // not there, or too far behind
        *this = TextParts(first, second);
        return;
    }
    holder_ = holder;
    first_ = {static_cast<std::uint16_t>(firstAt), lengthOf(first)};
    second_ = {static_cast<std::uint16_t>(secondAt), lengthOf(second)};
}

} // namespace veldran
