#include "tests/screen/server_sign_in.h"

#include "adapters/odbc/connection_text.h"
#include "platform/text.h"

namespace veldran::test {

std::string withSignIn(const std::string& connectionString, const std::string& user,
                       const std::string& password) {
    std::string text;
    for (const odbc::ConnectionEntry& entry :
         odbc::splitConnectionText(connectionString, odbc::Quoting::Braces)) {
        std::string value = entry.value;
        if (equalsIgnoringAsciiCase(entry.key, "PWD")) {
            value = password;
        } else if (equalsIgnoringAsciiCase(entry.key, "UID") && !user.empty()) {
            value = user;
        }
        text += odbc::connectionEntry(entry.key, value);
    }
    return text;
}

} // namespace veldran::test
