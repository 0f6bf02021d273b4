#include "adapters/embedded/collation.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/function_call.h"
#include "adapters/embedded/like.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>

namespace veldran::embedded {

namespace {

// Where the first `count` characters end.
std::size_t bytesOf(std::string_view text, std::int64_t count) {
    std::size_t at = 0;
    while (at < text.size() && count > 0) {
        nextCharacter(text, at);
        --count;
    }
    return at;
}

// Checks a text against a column's size: blanks too many fall away, characters too many are refused.
// Empty when it was refused.
std::optional<std::string_view> fitted(FunctionCall& call) {
    const std::string_view text = call.text(0);
    const int length = call.smallInteger(1);
    if (text.size() <= static_cast<std::size_t>(length)) {
        return text;
    }
    const std::string_view first = firstCharacters(text, length);
    if (text.find_first_not_of(' ', first.size()) != std::string_view::npos) {
        call.refuse(8152, "22001", truncationText(call.text(2)));
        return std::nullopt;
    }
    return first;
}

void assignVariable(FunctionCall& call) {
    if (const auto text = fitted(call)) {
        call.set(*text);
    }
}

void assignFixed(FunctionCall& call) {
    if (const auto text = fitted(call)) {
        call.set(std::string_view(padded(*text, call.smallInteger(1))));
    }
}

void cut(FunctionCall& call) {
    call.set(firstCharacters(call.text(0), call.smallInteger(1)));
}

void cutAndPad(FunctionCall& call) {
    const int length = call.smallInteger(1);
    call.set(std::string_view(padded(firstCharacters(call.text(0), length), length)));
}

void substring(FunctionCall& call) {
    const std::string_view text = call.text(0);
    const std::int64_t start = call.integer(1);
    const std::int64_t length = call.integer(2);
    if (length < 0) {
        return call.refuse(537, "42000", "Parametro di lunghezza non valido per la funzione SUBSTRING.");
    }
    // Places before the text count, but hold nothing.
    const std::int64_t skipped = std::max<std::int64_t>(start - 1, 0);
    const std::int64_t wanted = start < 1 ? length + start - 1 : length;
    const std::string_view rest = text.substr(bytesOf(text, skipped));
    call.set(rest.substr(0, bytesOf(rest, std::max<std::int64_t>(wanted, 0))));
}

// (text, part, ...): parts of the text, each given by its first character and their number, and constants.
void compose(FunctionCall& call) {
    const std::string_view text = call.text(0);
    const bool plain = std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
    std::string result;
    for (int i = 1; i < call.count(); ++i) {
        if (call.isText(i)) {
            result += call.text(i);
            continue;
        }
        const std::int64_t skipped = call.integer(i) - 1;
        const std::int64_t count = call.integer(++i);
        const std::size_t begin =
            plain ? std::min(static_cast<std::size_t>(skipped), text.size()) : bytesOf(text, skipped);
        const std::string_view rest = text.substr(begin);
        result += rest.substr(0, plain ? static_cast<std::size_t>(count) : bytesOf(rest, count));
    }
    call.set(std::string_view(result));
}

void left(FunctionCall& call) {
    const std::int64_t count = call.integer(1);
    if (count < 0) {
        return call.refuse(537, "42000", "Parametro di lunghezza non valido per la funzione LEFT.");
    }
    const std::string_view text = call.text(0);
    call.set(text.substr(0, bytesOf(text, count)));
}

void right(FunctionCall& call) {
    const std::int64_t count = call.integer(1);
    if (count < 0) {
        return call.refuse(536, "42000", "Parametro di lunghezza non valido per la funzione RIGHT.");
    }
    const std::string_view text = call.text(0);
    const std::int64_t skipped = std::max<std::int64_t>(characterCount(text) - count, 0);
    call.set(text.substr(bytesOf(text, skipped)));
}

void upper(FunctionCall& call) {
    call.set(std::string_view(toUpper(call.text(0))));
}
void lower(FunctionCall& call) {
    call.set(std::string_view(toLower(call.text(0))));
}

// The byte at which `needle` is found in `text` from byte `from`, by the collation; npos when it is not.
std::size_t findCollated(std::string_view text, std::string_view needle, std::size_t from) {
    const int count = characterCount(needle);
    for (std::size_t at = from; at < text.size(); nextCharacter(text, at)) {
        const std::string_view candidate = firstCharacters(text.substr(at), count);
        if (characterCount(candidate) < count) {
            break;
        }
        if (compareText(candidate, needle) == 0) {
            return at;
        }
    }
    return std::string_view::npos;
}

void charIndex(FunctionCall& call) {
    const std::string_view needle = call.text(0);
    const std::string_view text = call.text(1);
    const std::int64_t start = std::max<std::int64_t>(call.integer(2), 1);
    const std::size_t found =
        needle.empty() ? std::string_view::npos : findCollated(text, needle, bytesOf(text, start - 1));
    call.set(found == std::string_view::npos ? std::int64_t{0}
                                             : std::int64_t{characterCount(text.substr(0, found)) + 1});
}

void replace(FunctionCall& call) {
    const std::string_view text = call.text(0);
    const std::string_view what = call.text(1);
    const std::string_view with = call.text(2);
    if (what.empty()) {
        return call.pass(0);
    }
    std::string result;
    std::size_t at = 0;
    for (std::size_t found = findCollated(text, what, 0); found != std::string_view::npos;
         found = findCollated(text, what, at)) {
        result.append(text.substr(at, found - at)).append(with);
        at = found + bytesOf(text.substr(found), characterCount(what));
    }
    call.set(std::string_view(result.append(text.substr(at))));
}

constexpr std::int64_t maximumReplicated = 4000;

void replicate(FunctionCall& call) {
    const std::int64_t count = call.integer(1);
    if (count < 0) {
        return call.setNull();
    }
    std::string result;
    for (std::int64_t i = 0; i < std::min(count, maximumReplicated); ++i) {
        result.append(call.text(0));
    }
    call.set(firstCharacters(result, static_cast<int>(maximumReplicated)));
}

std::optional<char32_t> escapeOf(FunctionCall& call) {
    if (call.count() < 3) {
        return std::nullopt;
    }
    std::size_t at = 0;
    const std::string_view text = call.text(2);
    return text.empty() ? std::nullopt : std::optional<char32_t>(nextCharacter(text, at));
}

void like(FunctionCall& call) {
    // A pattern that stays the same for every row is read once; an escape beside it might change.
    auto* kept = static_cast<LikePattern*>(sqlite3_get_auxdata(call.context(), 0));
    std::unique_ptr<LikePattern> fresh;
    if (kept == nullptr) {
        fresh = std::make_unique<LikePattern>(call.text(0), escapeOf(call));
        kept = fresh.get();
    }
    call.set(std::int64_t{kept->matches(call.text(1))});
    if (fresh && call.count() < 3) {
        const auto destroy = [](void* data) { delete static_cast<LikePattern*>(data); };
        sqlite3_set_auxdata(call.context(), 0, fresh.release(), destroy);
    }
}

void numberToText(FunctionCall& call) {
    const Decimal number{call.integer(0), static_cast<std::uint8_t>(call.smallInteger(1))};
    const std::string text = number.toText();
    const int length = call.smallInteger(2);
    if (characterCount(text) > length) {
        return call.refuseOverflow(textType(call.kind(3), length));
    }
    call.set(std::string_view(text));
}

void realToText(FunctionCall& call) {
    char buffer[32];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, call.real(0), std::chars_format::general, 6).ptr;
    const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
    const int length = call.smallInteger(1);
    if (characterCount(text) > length) {
        return call.refuseOverflow(textType(call.kind(2), length));
    }
    call.set(text);
}

void objectId(FunctionCall& call) {
    ObjectResolver* objects = call.state().objects;
    const auto id = objects == nullptr
                        ? std::nullopt
                        : objects->objectId(call.text(0), call.count() > 1 ? call.text(1) : "");
    if (id) {
        call.set(*id);
    } else {
        call.setNull();
    }
}

constexpr std::array<FunctionEntry, 19> entries{{
    {"ts_compose", -1, &compose},
    {"ts_nvarchar", 3, &assignVariable},
    {"ts_nchar", 3, &assignFixed},
    {"ts_cut", 2, &cut},
    {"ts_cut_pad", 2, &cutAndPad},
    {"ts_substring", 3, &substring},
    {"ts_left", 2, &left},
    {"ts_right", 2, &right},
    {"ts_upper", 1, &upper},
    {"ts_lower", 1, &lower},
    {"ts_charindex", 3, &charIndex},
    {"ts_replace", 3, &replace},
    {"ts_replicate", 2, &replicate},
    {"ts_like", 2, &like},
    {"ts_like", 3, &like},
    {"ts_number_to_text", 4, &numberToText},
    {"ts_real_to_text", 3, &realToText},
    {"ts_object_id", 1, &objectId, false},
    {"ts_object_id", 2, &objectId, false},
}};

} // namespace

std::span<const FunctionEntry> textFunctions() {
    return entries;
}

} // namespace veldran::embedded
