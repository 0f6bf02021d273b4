#include "adapters/odbc/connection_string.h"

#include "adapters/odbc/errors.h"
#include "adapters/odbc/server_settings.h"
#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace veldran::odbc {

namespace {

using Entries = std::vector<ConnectionEntry>;

const ConnectionEntry* find(const Entries& entries, std::string_view key) {
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const ConnectionEntry& entry) {
        return equalsIgnoringAsciiCase(entry.key, key);
    });
    return found == entries.end() ? nullptr : &*found;
}

/// The two forms differ in how they quote; only the OLE DB form names a provider. A value of the one form may
/// look like entries of the other, so the ODBC form is looked for first: its values are what braces enclose.
Entries entriesOf(const std::string& text) {
    std::optional<ado::AdoError> wrong;
    try {
        Entries entries = splitConnectionText(text, Quoting::Braces);
        if (find(entries, "Provider") == nullptr) {
            return entries;
        }
    } catch (const ado::AdoError& error) {
        wrong = error;
    }
    Entries entries = splitConnectionText(text, Quoting::Marks);
    if (wrong && find(entries, "Provider") == nullptr) {
        throw ado::AdoError(*wrong);
    }
    return entries;
}

struct Provider {
    std::string_view name; // a version may follow behind a point
    bool encryptsUnasked;
};

constexpr Provider providers[] = {
    {"SQLOLEDB", false},  {"SQLNCLI", false},    {"SQLNCLI10", false},
    {"SQLNCLI11", false}, {"MSOLEDBSQL", false}, {"MSOLEDBSQL19", true},
};

const Provider* providerNamed(std::string_view name) {
    const std::string_view plain = name.substr(0, name.find('.'));
    const auto* const found = std::find_if(std::begin(providers), std::end(providers), [&](const auto& one) {
        return equalsIgnoringAsciiCase(one.name, plain);
    });
    return found == std::end(providers) ? nullptr : found;
}

struct Place {
    std::string host;
    std::string instance;
    std::string port;
};

bool isPort(const std::string& text) {
    constexpr int greatest = 65535;
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    return parsed.ec == std::errc() && parsed.ptr == end && number >= 1 && number <= greatest;
}

/// Takes "tcp:host\instance,port" apart.
Place placeOf(const ServerSettings& settings) {
    std::string_view rest = settings.server;
    Place place;
    if (equalsIgnoringAsciiCase(rest.substr(0, 4), "tcp:")) {
        rest.remove_prefix(4);
    }
    for (const std::string_view protocol : {"np:", "lpc:", "via:", "admin:"}) {
        if (equalsIgnoringAsciiCase(rest.substr(0, protocol.size()), protocol)) {
            refuseConnectionString("il server si raggiunge soltanto per TCP/IP, non con '" +
                                   std::string(protocol) + "'.");
        }
    }
    if (const std::size_t comma = rest.rfind(','); comma != std::string_view::npos) {
        place.port = withoutBlanks(rest.substr(comma + 1));
        rest = rest.substr(0, comma);
    }
    if (!settings.port.empty()) {
        place.port = settings.port;
    }
    if (const std::size_t slash = rest.find('\\'); slash != std::string_view::npos) {
        place.instance = withoutBlanks(rest.substr(slash + 1));
        rest = rest.substr(0, slash);
    }
    rest = withoutBlanks(rest);
    place.host = rest == "." || equalsIgnoringAsciiCase(rest, "(local)") ? "localhost" : std::string(rest);
    if (!place.port.empty() && !isPort(place.port)) {
        refuseConnectionString("la porta del server '" + settings.server + "' non è un numero da 1 a 65535.");
    }
    if (place.host.empty()) {
        refuseConnectionString("manca il server (chiave 'Data Source' o 'Server').");
    }
    return place;
}

/// "host\instance,port", as the vendor's driver reads it. A port makes the instance's name superfluous.
std::string serverText(const Place& place) {
    if (!place.port.empty()) {
        return place.host + "," + place.port;
    }
    return place.instance.empty() ? place.host : place.host + "\\" + place.instance;
}

std::string forVendor(const ServerSettings& settings, const Place& place) {
    std::string text = connectionEntry("Server", serverText(place));
    switch (settings.encryption) {
    case Encryption::Unsaid:
        break;
    case Encryption::Off:
        text += "Encrypt=no;";
        break;
    case Encryption::On:
        text += "Encrypt=yes;";
        break;
    case Encryption::Strict:
        text += "Encrypt=strict;";
        break;
    }
    return text + (settings.trustsCertificate ? "TrustServerCertificate=yes;" : "");
}

// This driver checks no certificate unless its own configuration tells it to; its messages come in the
// client's character set.
std::string forFreeTds(const ServerSettings& settings, const Place& place) {
    if (settings.encryption == Encryption::Strict) {
        refuseConnectionString("il driver FreeTDS non conosce 'strict' per la chiave 'Encrypt'.");
    }
    std::string text;
    if (place.port.empty() && !place.instance.empty()) {
        text = connectionEntry("Server", place.host + "\\" + place.instance);
    } else {
        text = connectionEntry("Server", place.host);
        text += connectionEntry("Port", place.port.empty() ? "1433" : place.port);
    }
    if (settings.encryption == Encryption::On) {
        text += "Encryption=require;";
    }
    const bool versionGiven = std::any_of(settings.passed.begin(), settings.passed.end(),
                                          [](const auto& one) { return one.first == "TDS_Version"; });
    return text + (versionGiven ? "" : "TDS_Version=7.4;") + "ClientCharset=UTF-8;";
}

std::string compose(const ServerSettings& settings, const ChosenDriver& driver, const Place& place) {
    const bool freeTds = driver.family == DriverFamily::FreeTds;
    std::string text = bracedEntry("Driver", driver.name);
    text += freeTds ? forFreeTds(settings, place) : forVendor(settings, place);
    const auto add = [&](const char* key, const std::string& value) {
        if (!value.empty()) {
            text += connectionEntry(key, value, freeTds ? ClosingBrace::AsIs : ClosingBrace::Doubled);
        }
    };
    add("Database", settings.database);
    if (settings.integrated) {
        add("Trusted_Connection", "yes");
    } else {
        add("UID", settings.user);
        add("PWD", settings.password);
    }
    add("APP", settings.application);
    add("WSID", settings.workstation);
    add("Language", settings.language);
    for (const auto& [key, value] : settings.passed) {
        add(key.c_str(), value);
    }
    return text;
}

/// Data sources and drivers of other databases have keys of their own: nothing is checked or mapped.
ConnectionTarget handedOn(const Entries& entries, const std::string& user, const std::string& password) {
    ConnectionTarget target;
    const auto is = [](const ConnectionEntry& entry, std::initializer_list<std::string_view> names) {
        return std::any_of(names.begin(), names.end(),
                           [&](std::string_view name) { return equalsIgnoringAsciiCase(name, entry.key); });
    };
    for (const ConnectionEntry& entry : entries) {
        const bool isUser = is(entry, {"UID", "User ID", "User", "Username"});
        const bool isPassword = is(entry, {"PWD", "Password"});
        if ((isUser && !user.empty()) || (isPassword && !password.empty())) {
            continue;
        }
        if (isPassword) {
            target.password = entry.value;
        }
        if (is(entry, {"Server", "Servername"})) {
            target.server = entry.value;
        }
        target.text += is(entry, {"Driver"}) ? bracedEntry(entry.key, entry.value)
                                             : connectionEntry(entry.key, entry.value);
    }
    target.text += user.empty() ? "" : connectionEntry("UID", user);
    if (!password.empty()) {
        target.text += connectionEntry("PWD", password);
        target.password = password;
    }
    return target;
}

bool isHandedOn(const Entries& entries) {
    const ConnectionEntry* const driver = find(entries, "Driver");
    return find(entries, "DSN") != nullptr || find(entries, "FILEDSN") != nullptr ||
           (driver != nullptr && familyOf(driver->value) == DriverFamily::Other);
}

} // namespace

ConnectionTarget connectionTarget(const std::string& connectionString, const std::string& user,
                                  const std::string& password,
                                  const std::vector<std::string>& installedDrivers) {
    const Entries entries = entriesOf(connectionString);
    if (isHandedOn(entries)) {
        if (const ConnectionEntry* const driver = find(entries, "Driver")) {
            chooseDriver(driver->value, installedDrivers);
        }
        return handedOn(entries, user, password);
    }
    ServerSettings settings = readServerSettings(entries);
    settings.user = user.empty() ? settings.user : user;
    settings.password = password.empty() ? settings.password : password;
    if (!settings.provider.empty()) {
        const Provider* const provider = providerNamed(settings.provider);
        if (provider == nullptr) {
            refuseConnectionString("il provider '" + settings.provider + "' non è di SQL Server.");
        }
        if (settings.encryption == Encryption::Unsaid) { // what drivers do unasked differs
            settings.encryption = provider->encryptsUnasked ? Encryption::On : Encryption::Off;
        }
    }
    const Place place = placeOf(settings);
    const ChosenDriver driver = chooseDriver(settings.driver, installedDrivers);
    return {driver.family,         compose(settings, driver, place),
            serverText(place),     settings.password,
            settings.loginTimeout, settings.packetSize};
}

std::string databaseOf(const std::string& connectionString) {
    try {
        const Entries entries = entriesOf(connectionString);
        for (const char* key : {"Initial Catalog", "Database"}) {
            if (const ConnectionEntry* const entry = find(entries, key)) {
                return entry->value;
            }
        }
    } catch (const ado::AdoError&) {
        // Told when the connection is opened.
    }
    return {};
}

bool isOdbcConnectionString(const std::string& connectionString) {
    const Entries entries = entriesOf(connectionString);
    if (const ConnectionEntry* const provider = find(entries, "Provider")) {
        return providerNamed(provider->value) != nullptr;
    }
    return std::any_of(entries.begin(), entries.end(), [](const ConnectionEntry& entry) {
        return equalsIgnoringAsciiCase(entry.key, "Driver") || equalsIgnoringAsciiCase(entry.key, "DSN") ||
               equalsIgnoringAsciiCase(entry.key, "Server");
    });
}

} // namespace veldran::odbc
