#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace veldran::bench {

/// The columns that follow from an account's code, in buffers that are used again for the next account.
class FloorAccount {
public:
    explicit FloorAccount(int levels) : shape_(shapeOf(levels)) {}

    void read(std::string_view code) {
        code_.assign(code);
        level_ = 1;
        for (int level = shape_.levels; level > 1; --level) {
            if (group(level).find_first_not_of('0') != std::string_view::npos) {
                level_ = level;
                break;
            }
        }
        display_.clear();
        for (int level = 1; level <= shape_.levels; ++level) {
            ancestors_[at(level)].assign(code_, 0, shape_.ends[at(level)]);
            ancestors_[at(level)].resize(codeLength, '0');
            display_.append(level == 1 ? "" : "/").append(group(level));
        }
    }

    int level() const { return level_; }
    bool isAnalytic() const { return level_ == shape_.levels; }
    std::string_view display() const { return display_; }
    std::string_view header() const { return std::string_view(code_).substr(0, shape_.ends[at(level_)]); }
    std::optional<std::string_view> parent() const {
        return level_ == 1 ? std::nullopt : ancestor(level_ - 1);
    }
    std::optional<std::string_view> ancestor(int level) const {
        return level > shape_.levels ? std::nullopt : std::optional<std::string_view>(ancestors_[at(level)]);
    }

private:
    static constexpr std::size_t codeLength = 10;

    /// Where the groups of a code begin and end, level by level; ends[0] is 0.
    struct Shape {
        int levels;
        std::array<std::size_t, 6> begins;
        std::array<std::size_t, 6> ends;
    };
    static Shape shapeOf(int levels) {
        switch (levels) {
        case 2:
            return {2, {0, 0, 5}, {0, 2, 10}};
        case 3:
            return {3, {0, 0, 4, 6}, {0, 2, 6, 10}};
        case 4:
            return {4, {0, 0, 2, 4, 6}, {0, 2, 4, 6, 10}};
        default:
            return {5, {0, 0, 2, 4, 6, 8}, {0, 2, 4, 6, 8, 10}};
        }
    }
    static std::size_t at(int level) { return static_cast<std::size_t>(level); }
    std::string_view group(int level) const {
        const std::size_t begin = shape_.begins[at(level)];
        return std::string_view(code_).substr(begin, shape_.ends[at(level)] - begin);
    }

    Shape shape_;
    std::string code_;
    std::string display_;
    std::array<std::string, 6> ancestors_;
    int level_ = 1;
};

} // namespace veldran::bench
