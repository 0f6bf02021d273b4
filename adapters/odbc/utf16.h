#pragma once

#include "adapters/odbc/api.h"

#include <string>
#include <string_view>

namespace veldran::odbc {

/// \throws std::invalid_argument for bytes that are not UTF-8: nothing is sent otherwise than it was given.
std::u16string toUtf16(std::string_view utf8);
/// The same for what is no value: statements, names, connection strings. \throws AdoError 42000.
std::u16string textToSend(std::string_view utf8);
/// Half of a surrogate pair, which a database may hold, becomes U+FFFD.
std::string toUtf8(std::u16string_view utf16);

/// Texts as the interface wants them; it does not write through the pointer to a text that it is given.
inline SQLWCHAR* wide(const std::u16string& text) {
    return reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text.data()));
}
inline SQLWCHAR* wide(char16_t* buffer) {
    return reinterpret_cast<SQLWCHAR*>(buffer);
}

} // namespace veldran::odbc
