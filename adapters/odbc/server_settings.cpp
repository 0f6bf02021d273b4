#include "adapters/odbc/server_settings.h"

#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <set>
#include <string_view>

namespace veldran::odbc {

namespace {

enum class Setting {
    Provider,
    Driver,
    Server,
    Port,
    Database,
    User,
    Password,
    Integrated,
    LoginTimeout,
    PacketSize,
    Encryption,
    TrustsCertificate,
    Application,
    Workstation,
    Language,
    Library,
    Passed,  // handed on under its ODBC name
    Settled, // has no meaning here: rows are read at once, texts are Unicode, nothing is kept
    Empty    // written without a value by dialogs that write every key
};

struct Key {
    std::string_view name;
    Setting setting;
    std::string_view odbcName = {};
};

// Both forms share one list: no key means two things.
constexpr Key keys[] = {
    {"Provider", Setting::Provider},
    {"Driver", Setting::Driver},
    {"Data Source", Setting::Server},
    {"Server", Setting::Server},
    {"Address", Setting::Server},
    {"Addr", Setting::Server},
    {"Network Address", Setting::Server},
    {"Port", Setting::Port},
    {"Initial Catalog", Setting::Database},
    {"Database", Setting::Database},
    {"User ID", Setting::User},
    {"User", Setting::User},
    {"UID", Setting::User},
    {"Password", Setting::Password},
    {"PWD", Setting::Password},
    {"Integrated Security", Setting::Integrated},
    {"Trusted_Connection", Setting::Integrated},
    {"Connect Timeout", Setting::LoginTimeout},
    {"Connection Timeout", Setting::LoginTimeout},
    {"Timeout", Setting::LoginTimeout},
    {"Packet Size", Setting::PacketSize},
    {"PacketSize", Setting::PacketSize},
    {"Encrypt", Setting::Encryption},
    {"Use Encryption for Data", Setting::Encryption},
    {"Encryption", Setting::Encryption},
    {"Trust Server Certificate", Setting::TrustsCertificate},
    {"TrustServerCertificate", Setting::TrustsCertificate},
    {"Application Name", Setting::Application},
    {"APP", Setting::Application},
    {"Workstation ID", Setting::Workstation},
    {"WSID", Setting::Workstation},
    {"Current Language", Setting::Language},
    {"Language", Setting::Language},
    {"Network Library", Setting::Library},
    {"Network", Setting::Library},
    {"Net", Setting::Library},
    {"Application Intent", Setting::Passed, "ApplicationIntent"},
    {"ApplicationIntent", Setting::Passed, "ApplicationIntent"},
    {"Multi Subnet Failover", Setting::Passed, "MultiSubnetFailover"},
    {"MultiSubnetFailover", Setting::Passed, "MultiSubnetFailover"},
    {"Failover Partner", Setting::Passed, "Failover_Partner"},
    {"FailoverPartner", Setting::Passed, "Failover_Partner"},
    {"Failover_Partner", Setting::Passed, "Failover_Partner"},
    {"Server SPN", Setting::Passed, "ServerSPN"},
    {"ServerSPN", Setting::Passed, "ServerSPN"},
    {"Failover Partner SPN", Setting::Passed, "FailoverPartnerSPN"},
    {"FailoverPartnerSPN", Setting::Passed, "FailoverPartnerSPN"},
    {"Host Name In Certificate", Setting::Passed, "HostnameInCertificate"},
    {"HostnameInCertificate", Setting::Passed, "HostnameInCertificate"},
    {"Server Certificate", Setting::Passed, "ServerCertificate"},
    {"ServerCertificate", Setting::Passed, "ServerCertificate"},
    {"Authentication", Setting::Passed, "Authentication"},
    {"Connect Retry Count", Setting::Passed, "ConnectRetryCount"},
    {"ConnectRetryCount", Setting::Passed, "ConnectRetryCount"},
    {"Connect Retry Interval", Setting::Passed, "ConnectRetryInterval"},
    {"ConnectRetryInterval", Setting::Passed, "ConnectRetryInterval"},
    {"KeepAlive", Setting::Passed, "KeepAlive"},
    {"KeepAliveInterval", Setting::Passed, "KeepAliveInterval"},
    {"TransparentNetworkIPResolution", Setting::Passed, "TransparentNetworkIPResolution"},
    {"TDS_Version", Setting::Passed, "TDS_Version"},
    {"UseNTLMv2", Setting::Passed, "UseNTLMv2"},
    {"REALM", Setting::Passed, "REALM"},
    {"Persist Security Info", Setting::Settled},
    {"PersistSecurityInfo", Setting::Settled},
    {"Auto Translate", Setting::Settled},
    {"AutoTranslate", Setting::Settled},
    {"Use Procedure for Prepare", Setting::Settled},
    {"Tag with column collation when possible", Setting::Settled},
    {"Locale Identifier", Setting::Settled},
    {"DataTypeCompatibility", Setting::Settled},
    {"MARS Connection", Setting::Settled},
    {"MARS_Connection", Setting::Settled},
    {"MultipleActiveResultSets", Setting::Settled},
    {"ClientCharset", Setting::Settled},
    {"Description", Setting::Settled},
    {"OLE DB Services", Setting::Settled},
    {"General Timeout", Setting::Settled},
    {"Use FMTONLY", Setting::Settled},
    {"UseFMTONLY", Setting::Settled},
    {"Initial File Name", Setting::Empty},
    {"AttachDBFileName", Setting::Empty},
    {"Access Token", Setting::Empty},
    {"AccessToken", Setting::Empty},
};

/// A password with a semicolon that nothing encloses ends there, and what is left of it looks like a key.
bool mayBeRestOf(const ConnectionEntry& password, const std::string& key) {
    const bool isWord = std::all_of(key.begin(), key.end(), [](char c) {
        return c == ' ' || c == '_' || (toLowerAscii(c) >= 'a' && toLowerAscii(c) <= 'z');
    });
    constexpr std::string_view openings = "{\"'";
    return !isWord ||
           (!password.value.empty() && openings.find(password.value.front()) != std::string_view::npos);
}

const Key* keyNamed(const std::string& name) {
    const auto* const found = std::find_if(std::begin(keys), std::end(keys), [&](const Key& key) {
        return equalsIgnoringAsciiCase(key.name, name);
    });
    return found == std::end(keys) ? nullptr : found;
}

[[noreturn]] void refuseKey(const ConnectionEntry& entry, const ConnectionEntry* previous) {
    const Key* const before = previous == nullptr ? nullptr : keyNamed(previous->key);
    if (before != nullptr && before->setting == Setting::Password && mayBeRestOf(*previous, entry.key)) {
        refuseConnectionString("dopo il valore di '" + previous->key +
                               "' segue una chiave che non è riconosciuta; un valore che contiene ';' va "
                               "racchiuso tra virgolette o tra graffe.");
    }
    refuseConnectionString("la chiave '" + entry.key + "' non è riconosciuta.");
}

[[noreturn]] void refuseValue(const ConnectionEntry& entry, const std::string& wanted) {
    refuseConnectionString("'" + entry.key + "' vuole " + wanted + ", non '" + entry.value + "'.");
}

bool isOneOf(const std::string& value, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return equalsIgnoringAsciiCase(word, value); });
}

bool flag(const ConnectionEntry& entry) {
    if (isOneOf(entry.value, {"yes", "true", "1", "sspi"})) {
        return true;
    }
    if (!isOneOf(entry.value, {"no", "false", "0"})) {
        refuseValue(entry, "yes o no");
    }
    return false;
}

int number(const ConnectionEntry& entry) {
    int result = 0;
    const char* const end = entry.value.data() + entry.value.size();
    const auto parsed = std::from_chars(entry.value.data(), end, result);
    if (parsed.ec != std::errc() || parsed.ptr != end || result < 0) {
        refuseValue(entry, "un numero");
    }
    return result;
}

Encryption encryption(const ConnectionEntry& entry) {
    if (isOneOf(entry.value, {"strict"})) {
        return Encryption::Strict;
    }
    if (isOneOf(entry.value, {"yes", "true", "1", "mandatory", "require"})) {
        return Encryption::On;
    }
    if (isOneOf(entry.value, {"request"})) {
        return Encryption::Unsaid;
    }
    if (!isOneOf(entry.value, {"no", "false", "0", "optional", "off"})) {
        refuseValue(entry, "yes, no o strict");
    }
    return Encryption::Off;
}

void apply(ServerSettings& settings, const Key& key, const ConnectionEntry& entry) {
    const std::string& value = entry.value;
    switch (key.setting) {
    case Setting::Provider:
        settings.provider = value;
        break;
    case Setting::Driver:
        settings.driver = value;
        break;
    case Setting::Server:
        settings.server = value;
        break;
    case Setting::Port:
        number(entry);
        settings.port = value;
        break;
    case Setting::Database:
        settings.database = value;
        break;
    case Setting::User:
        settings.user = value;
        break;
    case Setting::Password:
        settings.password = value;
        break;
    case Setting::Integrated:
        settings.integrated = flag(entry);
        break;
    case Setting::LoginTimeout:
        settings.loginTimeout = number(entry);
        break;
    case Setting::PacketSize:
        settings.packetSize = number(entry);
        break;
    case Setting::Encryption:
        settings.encryption = encryption(entry);
        break;
    case Setting::TrustsCertificate:
        settings.trustsCertificate = flag(entry);
        break;
    case Setting::Application:
        settings.application = value;
        break;
    case Setting::Workstation:
        settings.workstation = value;
        break;
    case Setting::Language:
        settings.language = value;
        break;
    case Setting::Library:
        if (!isOneOf(value, {"dbmssocn"})) {
            refuseValue(entry, "dbmssocn (TCP/IP)");
        }
        break;
    case Setting::Passed:
        settings.passed.emplace_back(key.odbcName, value);
        break;
    case Setting::Settled:
        break;
    case Setting::Empty:
        if (!value.empty()) {
            refuseConnectionString("'" + entry.key + "' non è gestita: deve essere vuota.");
        }
        break;
    }
}

} // namespace

ServerSettings readServerSettings(const std::vector<ConnectionEntry>& entries) {
    ServerSettings settings;
    std::set<Setting> given;
    const ConnectionEntry* previous = nullptr;
    for (const ConnectionEntry& entry : entries) {
        const Key* const known = keyNamed(entry.key);
        if (known == nullptr) {
            refuseKey(entry, previous);
        }
        const Key& key = *known;
        const bool repeats = key.setting == Setting::Passed
                                 ? std::any_of(settings.passed.begin(), settings.passed.end(),
                                               [&](const auto& one) { return one.first == key.odbcName; })
                                 : key.setting != Setting::Settled && key.setting != Setting::Empty &&
                                       !given.insert(key.setting).second;
        if (repeats) {
            refuseConnectionString("la chiave '" + entry.key + "' è ripetuta.");
        }
        apply(settings, key, entry);
        previous = &entry;
    }
    return settings;
}

} // namespace veldran::odbc
