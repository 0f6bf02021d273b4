#pragma once

#include "adapters/odbc/api.h"
#include "platform/ado/errors.h"

#include <string>
#include <string_view>

/// Failures of the driver manager, the driver and the server as ado's errors, and refusals of this adapter
/// itself. Sentences are for the Italian user; what a driver or server says is passed on as it was said.
namespace veldran::odbc {

inline constexpr const char* errorSource = "VELDRAN ODBC";
/// What an error is numbered that has no number of its own.
inline constexpr int errorUnspecified = -2147467259;
inline constexpr int errorProcedureNotFound = 2812;
/// The number under which ADO's users know a command that took too long.
inline constexpr int errorTimeLimitReached = -2147217871;
inline constexpr std::string_view stateTimeLimitReached = "HYT00";

ado::Error makeError(int number, std::string_view sqlState, std::string description);
[[noreturn]] void fail(int number, std::string_view sqlState, std::string description);

/// Every record that a handle keeps of its last call, errors before messages.
ado::Errors recordsOf(SQLSMALLINT kind, SQLHANDLE handle);
/// The same of a call that failed. Never empty: one that does not say why is given an error that says so.
ado::Errors diagnosticsOf(SQLSMALLINT kind, SQLHANDLE handle);
/// \throws AdoError with `diagnosticsOf`.
[[noreturn]] void failWithDiagnostics(SQLSMALLINT kind, SQLHANDLE handle);

/// Cuts what stands in brackets before a message ("[Vendor][Driver][Server]text") into its source
/// ("Vendor, Driver, Server") and the text itself.
void splitMessage(std::string_view message, std::string& source, std::string& text);

/// Whether the SQLSTATE says that the connection is gone.
bool isConnectionFailure(const ado::Error& error);

} // namespace veldran::odbc
