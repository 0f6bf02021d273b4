#include "adapters/odbc/driver_choice.h"

#include "adapters/odbc/errors.h"
#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace veldran::odbc {

namespace {

/// N of "ODBC Driver N for SQL Server".
std::optional<int> vendorVersion(const std::string& name) {
    constexpr std::string_view before = "odbc driver ";
    constexpr std::string_view after = " for sql server";
    const std::string folded = withFoldedCase(name);
    if (!folded.starts_with(before) || !folded.ends_with(after)) {
        return std::nullopt;
    }
    int version = 0;
    const char* const end = folded.data() + folded.size() - after.size();
    const auto parsed = std::from_chars(folded.data() + before.size(), end, version);
    return parsed.ec == std::errc() && parsed.ptr == end ? std::optional(version) : std::nullopt;
}

bool contains(const std::string& name, std::string_view part) {
    return withFoldedCase(name).find(part) != std::string::npos;
}

/// How much a driver is preferred; 0 for one that is not for SQL Server.
int rank(const std::string& name) {
    if (const auto version = vendorVersion(name)) {
        return 100 + *version;
    }
    if (contains(name, "freetds")) {
        return 3;
    }
    if (contains(name, "sql server native client")) {
        return 2;
    }
    return equalsIgnoringAsciiCase(name, "SQL Server") ? 1 : 0;
}

std::string listed(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list.empty() ? "nessuno" : list;
}

} // namespace

bool isLibraryPath(const std::string& driver) {
    return driver.find_first_of("/\\") != std::string::npos || driver.ends_with(".so") ||
           driver.ends_with(".dll");
}

DriverFamily familyOf(const std::string& driver) {
    if (contains(driver, "freetds") || contains(driver, "tdsodbc")) {
        return DriverFamily::FreeTds;
    }
    if (contains(driver, "sql server") || contains(driver, "msodbcsql")) {
        return DriverFamily::Vendor;
    }
    return DriverFamily::Other;
}

ChosenDriver chooseDriver(const std::string& wanted, const std::vector<std::string>& installed) {
    if (isLibraryPath(wanted)) {
        return {wanted, familyOf(wanted)};
    }
    if (!wanted.empty()) {
        const auto found = std::find_if(installed.begin(), installed.end(), [&](const std::string& name) {
            return equalsIgnoringAsciiCase(name, wanted);
        });
        if (found == installed.end()) {
            fail(errorUnspecified, "IM002",
                 "Il driver ODBC '" + wanted + "' non è installato. Driver installati: " + listed(installed) +
                     ".");
        }
        return {*found, familyOf(*found)};
    }
    const auto best = std::max_element(installed.begin(), installed.end(),
                                       [](const auto& a, const auto& b) { return rank(a) < rank(b); });
    if (best == installed.end() || rank(*best) == 0) {
        fail(errorUnspecified, "IM002",
             "Non è installato alcun driver ODBC per SQL Server: installare «ODBC Driver 18 for SQL Server» "
             "oppure FreeTDS (su Debian il pacchetto tdsodbc). Driver installati: " +
                 listed(installed) + ".");
    }
    return {*best, familyOf(*best)};
}

} // namespace veldran::odbc
