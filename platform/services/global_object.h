#pragma once

#include "platform/services/lookup.h"
#include "platform/services/message_service.h"
#include "platform/services/script.h"
#include "platform/services/windows.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace veldran::services {

/// Obtains ADO connections for screens; a new, closed connection at each call.
class ConnectionFactory {
public:
    virtual ~ConnectionFactory() = default;
    virtual std::shared_ptr<ado::Connection> NewConnection() = 0; // shared: commands keep their connection
};

/// The host's dictionary of translated texts.
class Thesaurus {
public:
    virtual ~Thesaurus() = default;
    /// The text of a numbered entry; none when the thesaurus lacks it.
    virtual std::optional<std::string> Entry(std::int32_t number) const = 0;
    /// The translated caption of a control of a form; none leaves the caption as designed.
    virtual std::optional<std::string> ControlCaption(const std::string& form,
                                                      const std::string& control) const = 0;
};

/// The company's analytic-accounting parameter object.
class AnalyticParameters {
public:
    virtual ~AnalyticParameters() = default;
    virtual Value GetValue() const = 0; ///< empty while the parameters were never configured
};

/// `ClsGlobal`: the host's global object for the running user and company. Everything the module reads of the
/// company, and every service of the host, is reached through it.
class GlobalObject : public Object {
public:
    virtual std::string ApplicationTitle() const = 0;

    // The company.
    virtual std::string CodiceDitta() const = 0;    ///< as it is written into statements, without quotes
    virtual std::int32_t CodicePdcCoge() const = 0; ///< general-ledger chart
    virtual std::int32_t CodicePdcCoin() const = 0; ///< chart of the cost-accounting accounts
    virtual std::int32_t CodicePdcVds() const = 0;  ///< chart of the cost items
    virtual bool GestioneVociDiSpesa() const = 0;   ///< the company manages cost items
    virtual std::string FlagContabilitaAnalitica() const = 0; ///< "1" when analytic accounting is enabled
    virtual const AnalyticParameters*
    ParametriContabilitaAnalitica() const = 0;            ///< nullptr when there are none
    virtual std::string StringaDiConnessione() const = 0; ///< of the current company's database

    // The services.
    virtual std::unique_ptr<MessageService> NewMessageService() = 0;
    virtual ConnectionFactory& Connections() = 0;
    virtual LookupService& Lookups() = 0;
    virtual const services::Thesaurus& Thesaurus() const = 0;
    virtual LayoutEngine& Layouts() = 0;
    virtual ScriptEngine& Scripts() = 0;
    virtual WindowService& Windows() = 0;
    virtual services::Screen& Screen() = 0;

    /// A screen is closing.
    virtual void ScreenClosing() = 0;
};

} // namespace veldran::services
