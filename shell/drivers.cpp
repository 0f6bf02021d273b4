#include "shell/drivers.h"

#include "adapters/embedded/driver.h"
#include "adapters/embedded/file.h"
#include "adapters/markers/marker_resolving_driver.h"
#include "platform/text.h"
#ifdef VELDRAN_WITH_ODBC
#include "adapters/odbc/connection_string.h"
#include "adapters/odbc/driver.h"
#endif

#include <algorithm>
#include <utility>

namespace veldran::shell {
namespace {

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \"");
    const std::size_t last = text.find_last_not_of(" \"");
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, last - first + 1));
}

/// The value of one key of a connection string, blind to case; empty when it has none. The drivers check the
/// whole string; this only looks.
std::string connectionValue(std::string_view text, std::string_view key) {
    while (!text.empty()) {
        const std::string_view entry = text.substr(0, text.find(';'));
        text.remove_prefix(std::min(text.size(), entry.size() + 1));
        const std::size_t equals = entry.find('=');
        if (equals != std::string_view::npos &&
            equalsIgnoringAsciiCase(trimmed(entry.substr(0, equals)), key)) {
            return trimmed(entry.substr(equals + 1));
        }
    }
    return {};
}

bool isEmbedded(const std::string& connectionString) {
    return equalsIgnoringAsciiCase(connectionValue(connectionString, "Provider"), embedded::providerName);
}

std::shared_ptr<ado::Driver> databaseDriver(const std::string& connectionString) {
    if (isEmbedded(connectionString)) {
        return std::make_shared<embedded::EmbeddedDriver>();
    }
#ifdef VELDRAN_WITH_ODBC
    if (odbc::isOdbcConnectionString(connectionString)) {
        return std::make_shared<odbc::OdbcDriver>();
    }
#endif
    constexpr int providerNotFound = 3706;
    const std::string provider = connectionValue(connectionString, "Provider");
    throw ado::AdoError({providerNotFound, "Connessione",
                         provider.empty() ? "La stringa di connessione non indica il provider (chiave "
                                            "\"Provider\") né il driver (chiave \"Driver\")."
                                          : "Il provider \"" + provider + "\" non è disponibile.",
                         "08001", 0});
}

} // namespace

std::shared_ptr<ado::Driver> driverFor(const std::string& connectionString, const std::string& companyCode) {
    return std::make_shared<MarkerResolvingDriver>(
        databaseDriver(connectionString), std::map<std::string, std::string>{{"<DITTA>", companyCode}});
}

std::string embeddedConnectionString(const std::filesystem::path& file, bool create) {
    return std::string("Provider=") + embedded::providerName + ";Data Source=\"" + file.string() + "\"" +
           (create ? ";Mode=Create" : "");
}

std::filesystem::path embeddedFile(const std::string& connectionString) {
    return isEmbedded(connectionString)
               ? std::filesystem::path(connectionValue(connectionString, "Data Source")).lexically_normal()
               : std::filesystem::path();
}

std::string databaseName(const std::string& connectionString) {
#ifdef VELDRAN_WITH_ODBC
    if (std::string name = odbc::databaseOf(connectionString); !name.empty()) {
        return name;
    }
#else
    for (const char* key : {"Initial Catalog", "Database"}) {
        if (std::string name = connectionValue(connectionString, key); !name.empty()) {
            return name;
        }
    }
#endif
    return std::filesystem::path(connectionValue(connectionString, "Data Source")).filename().string();
}

} // namespace veldran::shell
