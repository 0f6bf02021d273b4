#include "shell/data_file.h"

#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <system_error>

namespace veldran::shell {
namespace {

using nlohmann::json;

constexpr std::size_t excerptLength = 30;

bool isContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The first byte that is not part of well-formed UTF-8; the length of `text` when all is well.
std::size_t firstIllFormedByte(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = lead < 0x80U                     ? 1
                                   : lead >= 0xC2U && lead <= 0xDFU ? 2
                                   : lead >= 0xE0U && lead <= 0xEFU ? 3
                                   : lead >= 0xF0U && lead <= 0xF4U ? 4
                                                                    : 0;
        if (length == 0 || at + length > text.size() ||
            !std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                         text.begin() + static_cast<std::ptrdiff_t>(at + length), isContinuationByte)) {
            return at;
        }
        at += length;
    }
    return at;
}

/// What stands at `position`, to be quoted in a message: up to the end of the line.
std::string excerptAt(std::string_view text, std::size_t position) {
    position = std::min(position, text.size());
    std::string_view rest = text.substr(position, text.find_first_of("\r\n", position) - position);
    if (rest.size() > excerptLength) {
        std::size_t end = excerptLength;
        while (end > 0 && isContinuationByte(rest[end])) {
            --end;
        }
        return std::string(rest.substr(0, end)) + "…";
    }
    return std::string(rest);
}

/// The end of the sentence that says of a text that it is no JSON.
std::string whatIsWrongAt(std::string_view text, std::size_t position, Quotes quotes) {
    if (position > 0 && position < text.size() && text[position - 1] == '\\') {
        return "; dentro un testo la barra rovesciata si scrive due volte.";
    }
    const std::string excerpt = excerptAt(text, position);
    if (excerpt.empty()) {
        return "; il file finisce troppo presto o la riga è incompleta.";
    }
    return quotes == Quotes::Shown ? " da «" + excerpt + "»." : " da qui in poi.";
}

/// Notes each key that an object holds twice: the parser itself would silently keep the last.
class TwiceWrittenKeys {
public:
    TwiceWrittenKeys(const std::filesystem::path& file, Problems& problems)
        : file_(file), problems_(problems) {}

    bool operator()(int, json::parse_event_t event, json& parsed) {
        if (event == json::parse_event_t::object_start) {
            open_.emplace_back();
        } else if (event == json::parse_event_t::object_end) {
            open_.pop_back();
        } else if (event == json::parse_event_t::key) {
            const auto key = parsed.get<std::string>();
            if (!open_.back().insert(key).second) {
                problems_.push_back("File «" + file_.string() + "», chiave «" + key +
                                    "»: è scritta due volte nello stesso oggetto; vale l'ultima.");
            }
        }
        return true;
    }

private:
    const std::filesystem::path& file_;
    Problems& problems_;
    std::vector<std::set<std::string>> open_;
};

} // namespace

std::string joinProblems(const Problems& problems) {
    std::string all;
    for (const std::string& problem : problems) {
        all += (all.empty() ? "" : "\n") + problem;
    }
    return all;
}

std::string placeInFile(const std::filesystem::path& path, std::string_view text, std::size_t position) {
    position = std::min(position, text.size());
    const std::string_view before = text.substr(0, position);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') == std::string_view::npos ? 0 : before.rfind('\n') + 1;
    const std::string_view lineBefore = before.substr(lineStart);
    const auto column = 1 + std::count_if(lineBefore.begin(), lineBefore.end(),
                                          [](char c) { return !isContinuationByte(c); });
    return "file «" + path.string() + "», riga " + std::to_string(line) + ", colonna " +
           std::to_string(column);
}

std::string readTextFile(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        throw DataFileError("Il file «" + path.string() + "» non esiste.");
    }
    std::ifstream stream(path, std::ios::binary);
    std::string text;
    if (std::filesystem::is_regular_file(path, error) && stream) {
        text.assign(std::istreambuf_iterator<char>(stream), {});
    }
    if (!stream || stream.bad() || !std::filesystem::is_regular_file(path, error)) {
        throw DataFileError("Il file «" + path.string() + "» non può essere letto.");
    }
    if (const std::size_t bad = firstIllFormedByte(text); bad != text.size()) {
        throw DataFileError("Nel " + placeInFile(path, text, bad) + ": il testo non è in codifica UTF-8.");
    }
    return text;
}

DataObject DataObject::fromFile(const std::filesystem::path& path, Problems& problems, Quotes quotes) {
    const std::string text = readTextFile(path);
    auto document = std::make_shared<json>();
    try {
        *document = json::parse(text, TwiceWrittenKeys(path, problems), true, true);
    } catch (const json::parse_error& error) {
        // The parser counts the bytes it has read; the offending one is the last of them.
        const std::size_t position = error.byte == 0 ? 0 : error.byte - 1;
        throw DataFileError("Nel " + placeInFile(path, text, position) + ": il testo non è JSON valido" +
                            whatIsWrongAt(text, position, quotes));
    }
    if (!document->is_object()) {
        throw DataFileError("Nel " + placeInFile(path, text, 0) +
                            ": il file deve contenere un oggetto JSON, tra graffe.");
    }
    const json& top = *document;
    return DataObject(path, std::move(document), top, {}, problems);
}

const json* DataObject::find(const std::string& key) const {
    const auto found = object_->find(key);
    return found == object_->end() ? nullptr : &*found;
}

std::string DataObject::placeOf(const std::string& key) const {
    return place_.empty() ? key : place_ + "/" + key;
}

std::vector<std::string> DataObject::keys() const {
    std::vector<std::string> keys;
    for (const auto& item : object_->items()) {
        keys.push_back(item.key());
    }
    return keys;
}

std::optional<std::string> DataObject::text(const std::string& key) const {
    const json* value = find(key);
    if (value && !value->is_string()) {
        problem(key, "deve essere un testo tra virgolette.");
    }
    return value && value->is_string() ? std::optional(value->get<std::string>()) : std::nullopt;
}

std::optional<bool> DataObject::boolean(const std::string& key) const {
    const json* value = find(key);
    if (value && !value->is_boolean()) {
        problem(key, "deve essere true oppure false.");
    }
    return value && value->is_boolean() ? std::optional(value->get<bool>()) : std::nullopt;
}

std::optional<int> DataObject::integer(const std::string& key) const {
    const json* value = find(key);
    const bool fits = value && value->is_number_integer() && value->get<double>() >= -2147483648.0 &&
                      value->get<double>() <= 2147483647.0;
    if (value && !fits) {
        problem(key, "deve essere un numero intero.");
    }
    return fits ? std::optional(value->get<int>()) : std::nullopt;
}

std::optional<DataObject> DataObject::object(const std::string& key) const {
    const json* value = find(key);
    if (value && !value->is_object()) {
        problem(key, "deve essere un oggetto JSON, tra graffe.");
    }
    if (!value || !value->is_object()) {
        return std::nullopt;
    }
    return DataObject(file_, document_, *value, placeOf(key), *problems_);
}

void DataObject::refuseKeysOtherThan(std::initializer_list<std::string_view> known) const {
    for (const std::string& key : keys()) {
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            problem(key, "non è una chiave prevista e viene ignorata.");
        }
    }
}

void DataObject::problem(const std::string& key, const std::string& what) const {
    problems_->push_back("File «" + file_.string() + "», chiave «" + placeOf(key) + "»: " + what);
}

} // namespace veldran::shell
