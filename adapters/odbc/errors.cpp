#include "adapters/odbc/errors.h"

#include "adapters/odbc/utf16.h"

#include <algorithm>
#include <array>

namespace veldran::odbc {

namespace {

bool isMessage(const ado::Error& error) {
    return error.SQLState.starts_with("01");
}

/// Of an error that the server has not numbered.
int numberOf(std::string_view sqlState) {
    return sqlState == stateTimeLimitReached ? errorTimeLimitReached : errorUnspecified;
}

std::string shortened(const char16_t* text, SQLSMALLINT length, std::size_t capacity) {
    const std::size_t count =
        std::min(length < 0 ? std::size_t{0} : static_cast<std::size_t>(length), capacity);
    return toUtf8({text, count});
}

} // namespace

ado::Error makeError(int number, std::string_view sqlState, std::string description) {
    return {number, errorSource, std::move(description), std::string(sqlState), 0};
}

void fail(int number, std::string_view sqlState, std::string description) {
    throw ado::AdoError(makeError(number, sqlState, std::move(description)));
}

void splitMessage(std::string_view message, std::string& source, std::string& text) {
    source.clear();
    while (message.starts_with('[')) {
        const std::size_t end = message.find(']');
        if (end == std::string_view::npos) {
            break;
        }
        source += (source.empty() ? "" : ", ") + std::string(message.substr(1, end - 1));
        message.remove_prefix(end + 1);
    }
    if (source.empty()) {
        source = errorSource;
    }
    constexpr std::string_view blanks = " \r\n";
    const std::size_t first = message.find_first_not_of(blanks);
    text = first == std::string_view::npos
               ? std::string_view()
               : message.substr(first, message.find_last_not_of(blanks) - first + 1);
}

ado::Errors recordsOf(SQLSMALLINT kind, SQLHANDLE handle) {
    ado::Errors errors;
    std::u16string buffer(4096, u'\0');
    for (SQLSMALLINT record = 1;; ++record) {
        std::array<char16_t, 6> state{};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        const SQLRETURN code =
            SQLGetDiagRecW(kind, handle, record, wide(state.data()), &native, wide(buffer.data()),
                           static_cast<SQLSMALLINT>(buffer.size()), &length);
        if (!succeeded(code)) {
            break;
        }
        ado::Error error;
        error.NativeError = native;
        error.SQLState = toUtf8({state.data(), 5});
        error.Number = native != 0 ? native : numberOf(error.SQLState);
        splitMessage(shortened(buffer.data(), length, buffer.size() - 1), error.Source, error.Description);
        errors.push_back(std::move(error));
    }
    std::stable_partition(errors.begin(), errors.end(), [](const auto& error) { return !isMessage(error); });
    return errors;
}

ado::Errors diagnosticsOf(SQLSMALLINT kind, SQLHANDLE handle) {
    ado::Errors errors = recordsOf(kind, handle);
    if (errors.empty()) {
        errors.push_back(makeError(errorUnspecified, "HY000",
                                   "Il driver ODBC ha rifiutato l'operazione senza indicarne il motivo."));
    }
    return errors;
}

void failWithDiagnostics(SQLSMALLINT kind, SQLHANDLE handle) {
    throw ado::AdoError(diagnosticsOf(kind, handle));
}

bool isConnectionFailure(const ado::Error& error) {
    return error.SQLState.starts_with("08");
}

} // namespace veldran::odbc
