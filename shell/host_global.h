#pragma once

#include "platform/services/global_object.h"
#include "shell/customer_layout.h"
#include "shell/customer_script.h"
#include "shell/host.h"
#include "shell/screen_navigator.h"
#include "shell/screen_windows.h"

#include <memory>

namespace veldran::shell {

/// New connections to the database of the current company.
class HostConnections final : public services::ConnectionFactory {
public:
    HostConnections(std::string connectionString, std::string companyCode)
        : connectionString_(std::move(connectionString)), companyCode_(std::move(companyCode)) {}
    std::shared_ptr<ado::Connection> NewConnection() override;

private:
    std::string connectionString_;
    std::string companyCode_;
};

/// `ClsGlobal` of one open screen: the company as it was when the screen opened, and the host's services.
class HostGlobal final : public services::GlobalObject, private services::AnalyticParameters {
public:
    /// `host`, `navigator` and `windows` outlive this object.
    HostGlobal(Host& host, const Company& company, ScreenNavigator& navigator, ScreenWindows& windows);

    std::string ApplicationTitle() const override { return host_.file().applicationTitle; }
    std::string CodiceDitta() const override { return company_.code; }
    std::int32_t CodicePdcCoge() const override { return company_.pdcCoge; }
    std::int32_t CodicePdcCoin() const override { return company_.pdcCoin; }
    std::int32_t CodicePdcVds() const override { return company_.pdcVds; }
    bool GestioneVociDiSpesa() const override { return company_.managesVds; }
    std::string FlagContabilitaAnalitica() const override { return company_.analyticFlag; }
    const services::AnalyticParameters* ParametriContabilitaAnalitica() const override { return this; }
    std::string StringaDiConnessione() const override { return host_.file().connectionString; }

    std::unique_ptr<services::MessageService> NewMessageService() override;
    services::ConnectionFactory& Connections() override { return connections_; }
    services::LookupService& Lookups() override { return host_.lookups(); }
    const services::Thesaurus& Thesaurus() const override { return host_.thesaurus(); }
    services::LayoutEngine& Layouts() override { return layout_; }
    services::ScriptEngine& Scripts() override { return script_; }
    services::WindowService& Windows() override { return windows_; }
    services::Screen& Screen() override { return host_.screen(); }
    void ScreenClosing() override {}

    Value GetProperty(std::string_view name) const override;

private:
    Value GetValue() const override { return company_.analyticParameters; }

    Host& host_;
    Company company_;
    ScreenWindows& windows_;
    HostConnections connections_;
    CustomerLayout layout_;
    CustomerScript script_;
};

} // namespace veldran::shell
