#include "host/segnalazione_errori.h"

#include <exception>
#include <iostream>
#include <new>
#include <stdexcept>

namespace veldran {

namespace {

// Numbers that the host's error boxes know for failures that are not the database's.
constexpr std::int32_t numberOverflow = 6;
constexpr std::int32_t numberOutOfMemory = 7;
constexpr std::int32_t numberOutOfRange = 9;
constexpr std::int32_t numberTypeMismatch = 13;
constexpr std::int32_t numberInternal = 51;

services::ErrorObject own(std::int32_t number, const char* description) {
    return {number, "CLSCI_VELDRAN", description};
}

services::ErrorObject currentException() {
    try {
        throw;
    } catch (const ado::AdoError& error) {
        return {error.first().Number, error.first().Source, error.first().Description};
    } catch (const std::overflow_error& error) {
        return own(numberOverflow, error.what());
    } catch (const std::bad_alloc&) {
        return own(numberOutOfMemory, "Memoria esaurita");
    } catch (const std::out_of_range& error) {
        return own(numberOutOfRange, error.what());
    } catch (const std::invalid_argument& error) {
        return own(numberTypeMismatch, error.what());
    } catch (const std::exception& error) {
        return own(numberInternal, error.what());
    } catch (...) {
        return own(numberInternal, "Errore sconosciuto");
    }
}

} // namespace

void SegnalazioneErrori::UsaMessaggi(std::unique_ptr<services::MessageService> messaggi,
                                     std::string titoloApplicazione) {
    messaggi_ = std::move(messaggi);
    titoloApplicazione_ = std::move(titoloApplicazione);
}

services::MessageBoxAnswer SegnalazioneErrori::SegnalazioneErrore(const std::string& etichetta) {
    if (!messaggi_) {
        return services::answerAbort;
    }
    // Taken out of the current error, so that a report raised while this one is on the screen has its own.
    services::ErrorObject errore = std::exchange(errore_, {});
    messaggi_->SetError(errore);
    if (connessione_) {
        messaggi_->SetConnectionErrors(connessione_->Errors());
    }
    errore.Source.insert(0, "\r\n");
    constexpr int style = services::styleCritical | services::styleAbortRetryIgnore |
                          services::styleSecondButton | services::styleSystemModal;
    static_assert(style == 4370);
    return messaggi_->ShowError(titoloApplicazione_, didascaliaForm_(), etichetta, style);
}

void SegnalazioneErrori::Gestisci(const char* etichetta) noexcept {
    try {
        errore_ = currentException();
        SegnalazioneErrore(etichetta);
    } catch (const std::exception& failure) {
        // The host could not show the report. There is nobody left to tell on the screen.
        std::clog << "VELDRAN " << etichetta << " " << failure.what() << '\n';
    } catch (...) {
        std::clog << "VELDRAN " << etichetta << '\n';
    }
}

} // namespace veldran
