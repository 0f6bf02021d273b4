#pragma once

#include "platform/ado/connection.h"
#include "platform/services/message_service.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace veldran {

/// The error report that every routine of a form ends in, and the handler that runs a routine under it.
/// An error never crosses from a routine into its caller: it is shown once, under the routine's label, and
/// the routine yields its failure value.
class SegnalazioneErrori {
public:
    /// \param didascaliaForm gives the form's caption at the time of a report.
    explicit SegnalazioneErrori(std::function<std::string()> didascaliaForm)
        : didascaliaForm_(std::move(didascaliaForm)) {}

    /// Reports are shown through `messaggi` from now on; an empty pointer ends them.
    void UsaMessaggi(std::unique_ptr<services::MessageService> messaggi, std::string titoloApplicazione);
    /// nullptr before start-up and after unload.
    services::MessageService* Messaggi() const { return messaggi_.get(); }
    /// The connection whose own error list goes with each report; empty for none.
    void UsaConnessione(std::shared_ptr<ado::Connection> connessione) {
        connessione_ = std::move(connessione);
    }

    /// Shows the current error, then clears it.
    /// \return the user's answer; `answerAbort` at once when there is no message service.
    services::MessageBoxAnswer SegnalazioneErrore(const std::string& etichetta);

    /// Runs the body of a routine without result.
    template<class Corpo>
    void Esegui(const char* etichetta, Corpo&& corpo) {
        try {
            corpo();
        } catch (...) {
            Gestisci(etichetta);
        }
    }

    /// Runs the body of a routine with a result; `inCasoDiErrore` is the result when the body throws.
    template<class Risultato, class Corpo>
    Risultato Esegui(const char* etichetta, Risultato inCasoDiErrore, Corpo&& corpo) {
        try {
            return corpo();
        } catch (...) {
            Gestisci(etichetta);
            return inCasoDiErrore;
        }
    }

private:
    /// Turns the exception being handled into the current error and reports it.
    void Gestisci(const char* etichetta) noexcept;

    std::function<std::string()> didascaliaForm_;
    std::unique_ptr<services::MessageService> messaggi_;
    std::string titoloApplicazione_;
    std::shared_ptr<ado::Connection> connessione_; // shared with the form, which owns the connection
    services::ErrorObject errore_;
};

} // namespace veldran
