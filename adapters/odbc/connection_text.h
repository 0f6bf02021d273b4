#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldran::odbc {

struct ConnectionEntry {
    std::string key; ///< as written
    std::string value;
};

/// `text` without the blanks around it.
std::string_view withoutBlanks(std::string_view text);

/// How values are quoted: by quotation marks (OLE DB) or by braces (ODBC), where a doubled closing delimiter
/// stands for itself.
enum class Quoting { Marks, Braces };

/// Cuts "key=value;key=value" into its entries, in their order.
/// \throws AdoError 08001 that names the key at which the text is wrong. Values are never named: one of them
/// is the password.
std::vector<ConnectionEntry> splitConnectionText(std::string_view text, Quoting quoting);

/// How a closing brace within braces is written: doubled, as the interface wants it, or as it is, by drivers
/// that do not know that.
enum class ClosingBrace { Doubled, AsIs };

/// "key=value;" as a driver reads it, the value in braces where it needs them.
/// \throws AdoError 08001 for a value that cannot be written `AsIs`.
std::string connectionEntry(std::string_view key, std::string_view value,
                            ClosingBrace brace = ClosingBrace::Doubled);
/// The same with the value always in braces, as a driver's name is written.
std::string bracedEntry(std::string_view key, std::string_view value,
                        ClosingBrace brace = ClosingBrace::Doubled);

/// \throws AdoError 08001: the connection string is not valid because of what `sentence` says.
[[noreturn]] void refuseConnectionString(const std::string& sentence);

} // namespace veldran::odbc
