#include "shell/host_global.h"

#include "platform/ado/connection.h"
#include "platform/text.h"
#include "shell/drivers.h"
#include "shell/message_box.h"

namespace veldran::shell {

std::shared_ptr<ado::Connection> HostConnections::NewConnection() {
    return ado::Connection::create(driverFor(connectionString_, companyCode_));
}

HostGlobal::HostGlobal(Host& host, const Company& company, ScreenNavigator& navigator, ScreenWindows& windows)
    : host_(host), company_(company), windows_(windows),
      connections_(host.file().connectionString, company.code),
      layout_(host.file().layout, navigator, host.report()),
      script_(host.file().script, navigator, host.report()) {}

std::unique_ptr<services::MessageService> HostGlobal::NewMessageService() {
    return std::make_unique<MessageBoxService>(host_.catalogue());
}

Value HostGlobal::GetProperty(std::string_view name) const {
    if (equalsIgnoringAsciiCase(name, "CodiceDitta")) {
        return company_.code;
    }
    if (equalsIgnoringAsciiCase(name, "RagioneSociale")) {
        return company_.name;
    }
    if (equalsIgnoringAsciiCase(name, "Utente")) {
        return host_.file().user;
    }
    return Object::GetProperty(name);
}

} // namespace veldran::shell
