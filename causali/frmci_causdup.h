#pragma once

#include "host/segnalazione_errori.h"
#include "platform/ado/connection.h"
#include "platform/controls/container.h"
#include "platform/controls/form.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/services/lookup.h"

#include <memory>
#include <string>
#include <vector>

namespace veldran {

/// The modal dialog that asks for the causale to which a correlation is given. What was confirmed stays
/// readable after it has closed.
class FRMCI_CAUSDUP final : public controls::Form {
public:
    FRMCI_CAUSDUP();

    /// \name What it works with, set before it is shown and released when it closes.
    ///@{
    void Connessione(std::shared_ptr<ado::Connection> connessione) { connessione_ = std::move(connessione); }
    void LookupCOIN(services::LookupService* lookup) { lookup_ = lookup; }
    void DecodeCOIN(services::LookupService* decode) { decode_ = decode; }
    void StringaDiConnessione(std::string stringa) { stringaDiConnessione_ = std::move(stringa); }
    void CodiceDitta(std::string ditta) { ditta_ = std::move(ditta); }
    /// Where failures of the lookup service are reported.
    void Errori(SegnalazioneErrori* errori) { errori_ = errori; }
    ///@}

    /// True only when the user confirmed a causale that exists.
    bool IsValid() const { return valido_; }
    /// Without trailing blanks; "" until confirmed.
    const std::string& Causale() const { return causale_; }
    const std::string& DescrizioneCausale() const { return descrizione_; }

    controls::GroupBox GRB_CAUSALEDESTINAZIONE;
    controls::LookupField TXT_CAUSALE;
    controls::Label TXT_DESCRCAUSALE;
    controls::Button CMD_CONFERMA;
    controls::Button CMD_ANNULLA;
    controls::ResizeControl QRV_RESIZEFORM;

private:
    void CMD_CONFERMA_Click();
    void Form_KeyDown(controls::KeyEvent& tasto);
    void Form_Unload();
    void completa(services::LookupRequest& richiesta) const;
    void TXT_CAUSALE_Failed();

    std::shared_ptr<ado::Connection> connessione_; // shared with the main form, which owns it
    services::LookupService* lookup_ = nullptr;    ///< the main form's
    services::LookupService* decode_ = nullptr;    ///< the main form's
    SegnalazioneErrori* errori_ = nullptr;         ///< the main form's
    const char* richiestaInCorso_ = "TXT_CAUSALE_StartDecode";
    std::string stringaDiConnessione_;
    std::string ditta_;
    bool valido_ = false;
    std::string causale_;
    std::string descrizione_;
    std::vector<Subscription> eventi_;
};

} // namespace veldran
