#pragma once

#include "platform/ado/errors.h"

#include <string>
#include <string_view>

/// Refusals of the embedded database. Numbers and states are SQL Server's, sentences are for the Italian
/// user.
namespace veldran::embedded {

inline constexpr const char* errorSource = "VELDRAN Embedded";

/// Numbers that code compares with; the rest stand where they are raised.
inline constexpr int errorSyntax = 102;
inline constexpr int errorUnknownColumn = 207;
inline constexpr int errorUnknownObject = 208;
inline constexpr int errorKeyViolation = 2627;
inline constexpr int errorUniqueIndexViolation = 2601;
inline constexpr int errorOverflow = 8115;
inline constexpr int errorLockTimeout = 1222;
/// SQLite refused a text of ours: the schema is no longer what it was bound to.
inline constexpr int errorInternal = 8624;
/// What the database's own front end answers for a construct it does not offer.
inline constexpr int errorNotSupported = 40517;

ado::Error makeError(int number, std::string_view sqlState, std::string description);
[[noreturn]] void fail(int number, std::string_view sqlState, std::string description);

[[noreturn]] void failUnknownObject(std::string_view name);
[[noreturn]] void failUnknownColumn(std::string_view name);
[[noreturn]] void failObjectExists(std::string_view name);

/// Sentences that both constraint translation and column functions use.
std::string truncationText(std::string_view column);
std::string overflowText(std::string_view typeName);
std::string conversionText(std::string_view value, std::string_view typeName);

} // namespace veldran::embedded
