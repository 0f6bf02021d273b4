#include "adapters/embedded/errors.h"
#include "adapters/embedded/file.h"
#include "platform/text.h"
#include "platform/value.h"

#include <charconv>
#include <set>

namespace veldran::embedded {

namespace {

[[noreturn]] void refuse(const std::string& sentence) {
    fail(0, "08001", "Stringa di connessione non valida: " + sentence);
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string()
                                           : std::string(withoutTrailingBlanks(text.substr(first)));
}

struct Entry {
    std::string key;
    std::string value;
};

// A value may stand in double quotes, where a semicolon is part of it.
Entry nextEntry(std::string_view text, std::size_t& at) {
    const std::size_t equals = text.find('=', at);
    const std::size_t semicolon = text.find(';', at);
    if (equals == std::string_view::npos || semicolon < equals) {
        refuse("manca '=' in '" + trimmed(text.substr(at, semicolon - at)) + "'.");
    }
    Entry entry;
    entry.key = trimmed(text.substr(at, equals - at));
    std::size_t begin = text.find_first_not_of(' ', equals + 1);
    if (begin != std::string_view::npos && text[begin] == '"') {
        const std::size_t close = text.find('"', begin + 1);
        if (close == std::string_view::npos) {
            refuse("le virgolette di '" + entry.key + "' non sono chiuse.");
        }
        entry.value = text.substr(begin + 1, close - begin - 1);
        at = std::min(text.find(';', close), text.size());
        if (!trimmed(text.substr(close + 1, at - close - 1)).empty()) {
            refuse("testo inatteso dopo il valore di '" + entry.key + "'.");
        }
    } else {
        const std::size_t end = std::min(text.find(';', equals), text.size());
        entry.value = trimmed(text.substr(equals + 1, end - equals - 1));
        at = end;
    }
    at = std::min(at + 1, text.size());
    return entry;
}

int milliseconds(const std::string& value) {
    int result = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), result);
    if (error != std::errc() || end != value.data() + value.size() || result < 0) {
        refuse("'Lock Timeout' vuole un numero di millisecondi, non '" + value + "'.");
    }
    return result;
}

bool modeCreates(const std::string& value) {
    if (equalsIgnoringAsciiCase(value, "Create")) {
        return true;
    }
    if (!equalsIgnoringAsciiCase(value, "ReadWrite")) {
        refuse("'Mode' vuole ReadWrite o Create, non '" + value + "'.");
    }
    return false;
}

} // namespace

ConnectionSettings parseConnectionString(const std::string& text) {
    ConnectionSettings settings;
    std::set<std::string> seen;
    for (std::size_t at = 0; at < text.size();) {
        if (trimmed(text.substr(at)).empty()) {
            break;
        }
        const Entry entry = nextEntry(text, at);
        const auto is = [&](std::string_view name) { return equalsIgnoringAsciiCase(entry.key, name); };
        if (is("Provider")) {
            if (!equalsIgnoringAsciiCase(entry.value, providerName)) {
                refuse("il provider '" + entry.value + "' non è " + providerName + ".");
            }
        } else if (is("Data Source")) {
            settings.path = entry.value;
        } else if (is("Mode")) {
            settings.create = modeCreates(entry.value);
        } else if (is("Lock Timeout")) {
            settings.lockTimeout = milliseconds(entry.value);
        } else {
            refuse("la chiave '" + entry.key + "' non è riconosciuta.");
        }
        std::string key = entry.key;
        std::transform(key.begin(), key.end(), key.begin(), toLowerAscii);
        if (!seen.insert(key).second) {
            refuse("la chiave '" + entry.key + "' è ripetuta.");
        }
    }
    if (!seen.contains("provider")) {
        refuse("manca 'Provider'.");
    }
    if (settings.path.empty()) {
        refuse("manca 'Data Source'.");
    }
    return settings;
}

} // namespace veldran::embedded
