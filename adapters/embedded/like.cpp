#include "adapters/embedded/like.h"

#include "adapters/embedded/collation.h"

#include <algorithm>

namespace veldran::embedded {

LikePattern::LikePattern(std::string_view pattern, std::optional<char32_t> escape) {
    for (std::size_t at = 0; at < pattern.size();) {
        const char32_t c = nextCharacter(pattern, at);
        if (escape && c == *escape && at < pattern.size()) {
            elements_.push_back({Kind::Character, toLower(nextCharacter(pattern, at)), false, {}});
        } else if (c == '%') {
            if (elements_.empty() || elements_.back().kind != Kind::Any) {
                elements_.push_back({Kind::Any, 0, false, {}});
            }
        } else if (c == '_') {
            elements_.push_back({Kind::One, 0, false, {}});
        } else if (c == '[') {
            readSet(pattern, at, escape);
        } else {
            elements_.push_back({Kind::Character, toLower(c), false, {}});
        }
    }
}

// Without its "]" the bracket matches nothing: an empty set.
void LikePattern::readSet(std::string_view pattern, std::size_t& at, std::optional<char32_t> escape) {
    Element element{Kind::Set, 0, false, {}};
    if (at < pattern.size() && pattern[at] == '^') {
        element.negated = true;
        ++at;
    }
    std::vector<char32_t> characters;
    std::vector<bool> dashes;
    bool closed = false;
    while (at < pattern.size() && !closed) {
        char32_t c = nextCharacter(pattern, at);
        if (c == ']') {
            closed = true;
        } else {
            const bool escaped = escape && c == *escape && at < pattern.size();
            if (escaped) {
                c = nextCharacter(pattern, at);
            }
            characters.push_back(toLower(c));
            dashes.push_back(c == '-' && !escaped);
        }
    }
    if (!closed) {
        elements_.push_back({Kind::Set, 0, false, {}});
        return;
    }
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (i + 2 < characters.size() && dashes[i + 1]) {
            element.spans.push_back({characters[i], characters[i + 2]});
            i += 2;
        } else {
            element.spans.push_back({characters[i], characters[i]});
        }
    }
    elements_.push_back(std::move(element));
}

bool LikePattern::Element::accepts(char32_t c) const {
    switch (kind) {
    case Kind::Character:
        return toLower(c) == character;
    case Kind::One:
        return true;
    case Kind::Any:
        return false;
    case Kind::Set:
        break;
    }
    const char32_t lower = toLower(c);
    const bool inside = std::any_of(spans.begin(), spans.end(), [&](const Span& span) {
        return lower >= span.low && lower <= span.high;
    });
    return !spans.empty() && inside != negated;
}

bool LikePattern::matches(std::string_view text) const {
    std::size_t element = 0;
    std::size_t at = 0;
    // Where to go on after a mismatch: behind the last %, with one character more given to it.
    bool open = false;
    std::size_t resumeElement = 0;
    std::size_t resumeAt = 0;
    while (at < text.size()) {
        std::size_t next = at;
        const char32_t c = nextCharacter(text, next);
        if (element < elements_.size() && elements_[element].kind == Kind::Any) {
            open = true;
            resumeElement = ++element;
            resumeAt = at;
        } else if (element < elements_.size() && elements_[element].accepts(c)) {
            ++element;
            at = next;
        } else if (open) {
            nextCharacter(text, resumeAt);
            element = resumeElement;
            at = resumeAt;
        } else {
            return false;
        }
    }
    while (element < elements_.size() && elements_[element].kind == Kind::Any) {
        ++element;
    }
    return element == elements_.size();
}

LikePattern::Prefix LikePattern::prefixOf(std::string_view pattern) {
    const std::size_t wildcard = pattern.find_first_of("%_[");
    if (wildcard == std::string_view::npos) {
        return {pattern, true, false};
    }
    return {pattern.substr(0, wildcard), false, pattern.substr(wildcard) == "%"};
}

} // namespace veldran::embedded
