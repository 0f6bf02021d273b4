#include "adapters/odbc/connection_text.h"

#include "adapters/odbc/errors.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::odbc {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// The closing delimiter of a value that begins with `first`; 0 when it begins an unquoted one.
char closingOf(char first, Quoting quoting) {
    if (quoting == Quoting::Marks) {
        return first == '"' || first == '\'' ? first : '\0';
    }
    return first == '{' ? '}' : '\0';
}

class Splitter {
public:
    Splitter(std::string_view text, Quoting quoting) : text_(text), quoting_(quoting) {}

    std::vector<ConnectionEntry> entries() {
        std::vector<ConnectionEntry> entries;
        while (skipToEntry()) {
            ConnectionEntry entry;
            entry.key = key(entries.empty() ? std::string() : entries.back().key);
            entry.value = value(entry.key);
            entries.push_back(std::move(entry));
        }
        return entries;
    }

private:
    bool skipToEntry() {
        at_ = std::min(text_.find_first_not_of(" \t\r\n;", at_), text_.size());
        return at_ < text_.size();
    }

    // What stands where a key should is not named either: it may be the end of a password with a semicolon.
    std::string key(const std::string& previous) {
        const std::size_t end = text_.find_first_of("=;", at_);
        const std::string_view found = withoutBlanks(text_.substr(at_, end - at_));
        if (end == std::string_view::npos || text_[end] == ';' || found.empty()) {
            refuseConnectionString(previous.empty()
                                       ? "la prima voce non ha la forma chiave=valore."
                                       : "dopo il valore di '" + previous +
                                             "' segue una voce che non ha la forma chiave=valore.");
        }
        at_ = end + 1;
        return std::string(found);
    }

    std::string value(const std::string& key) {
        const std::size_t first = text_.find_first_not_of(blanks, at_);
        if (first != std::string_view::npos) {
            if (const char close = closingOf(text_[first], quoting_); close != '\0') {
                return quotedValue(key, first + 1, close);
            }
        }
        const std::size_t end = std::min(text_.find(';', at_), text_.size());
        const std::string_view found = withoutBlanks(text_.substr(at_, end - at_));
        at_ = end;
        return std::string(found);
    }

    std::string quotedValue(const std::string& key, std::size_t from, char close) {
        std::string value;
        for (std::size_t at = from; at < text_.size(); ++at) {
            if (text_[at] != close) {
                value.push_back(text_[at]);
            } else if (at + 1 < text_.size() && text_[at + 1] == close) {
                value.push_back(text_[at++]);
            } else {
                at_ = std::min(text_.find(';', at), text_.size());
                if (!withoutBlanks(text_.substr(at + 1, at_ - at - 1)).empty()) {
                    refuseConnectionString("testo inatteso dopo il valore di '" + key + "'.");
                }
                return value;
            }
        }
        refuseConnectionString("il valore di '" + key + "' non è chiuso.");
    }

    std::string_view text_;
    Quoting quoting_;
    std::size_t at_ = 0;
};

} // namespace

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<ConnectionEntry> splitConnectionText(std::string_view text, Quoting quoting) {
    return Splitter(text, quoting).entries();
}

std::string connectionEntry(std::string_view key, std::string_view value, ClosingBrace brace) {
    const std::string_view special = brace == ClosingBrace::Doubled ? ";{}[]=" : ";{";
    const bool plain =
        value.find_first_of(special) == std::string_view::npos && withoutBlanks(value).size() == value.size();
    return plain ? std::string(key) + "=" + std::string(value) + ";" : bracedEntry(key, value, brace);
}

std::string bracedEntry(std::string_view key, std::string_view value, ClosingBrace brace) {
    std::string written(value);
    if (brace == ClosingBrace::Doubled) {
        written = replaceAll(std::move(written), "}", "}}");
    } else if (value.find("};") != std::string_view::npos) {
        refuseConnectionString("il driver non accetta il valore di '" + std::string(key) +
                               "', che contiene '}' seguito da ';'.");
    }
    return std::string(key) + "={" + written + "};";
}

void refuseConnectionString(const std::string& sentence) {
    fail(errorUnspecified, "08001", "Stringa di connessione non valida: " + sentence);
}

} // namespace veldran::odbc
