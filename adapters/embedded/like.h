#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace veldran::embedded {

/// A LIKE pattern: % any text, _ one character, [a-z] one of, [^a-z] none of. Blind to case; blanks at the
/// end of pattern and text count, as they do for Unicode text.
class LikePattern {
public:
    /// `escape` makes the character behind it stand for itself.
    LikePattern(std::string_view pattern, std::optional<char32_t> escape);
    bool matches(std::string_view text) const;

    /// What every matching text begins with: the pattern's characters before its first wildcard.
    struct Prefix {
        std::string_view text; ///< as written, a stretch of the pattern
        bool whole = false;    ///< the pattern has no wildcard at all
        bool open = false;     ///< a single % follows and nothing else
    };
    /// Empty when an escape or a bracket makes the prefix unclear.
    static Prefix prefixOf(std::string_view pattern);

private:
    struct Span {
        char32_t low;
        char32_t high;
    };
    enum class Kind { Character, One, Any, Set };
    struct Element {
        Kind kind = Kind::Character;
        char32_t character = 0;
        bool negated = false;
        std::vector<Span> spans;

        bool accepts(char32_t c) const;
    };

    void readSet(std::string_view pattern, std::size_t& at, std::optional<char32_t> escape);

    std::vector<Element> elements_;
};

} // namespace veldran::embedded
