#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/ado/command.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

namespace veldran {

/// The two code fields of a correlation row, cost-accounting account and cost item: what they may hold, how
/// they are looked up, and the descriptions of their codes, which are read once for each code.
class CampiAnalitici {
public:
    struct Controlli {
        controls::LookupField& TXT_CAUSALE;
        controls::ComboBox& CBO_SEGNO;
        controls::LookupField& TXT_CONTO;
        controls::Label& TXT_DESCRCONTO;
        controls::LookupField& TXT_VDS;
        controls::Label& TXT_DESCRVDS;
    };

    /// \param buildScript rebuilds the form's script object after a maintenance screen was open
    CampiAnalitici(AmbienteCorrelazioni& ambiente, Controlli controlli, std::function<void()> buildScript)
        : ambiente_(ambiente), controlli_(controlli), buildScript_(std::move(buildScript)) {}
    ~CampiAnalitici();
    CampiAnalitici(const CampiAnalitici&) = delete;
    CampiAnalitici& operator=(const CampiAnalitici&) = delete;

    /// Prepare a field and its description on entering correlation mode.
    void ImpostazioneProprietaContoCOIN();
    void ImpostazioneProprietaContoVDS();

    /// The kinds of account, one bit each, that a causale and a sign allow: 1023 is all of them, 0 none (or a
    /// failure).
    std::int32_t GetTipologiaContoIndustriale(const std::string& causale, const std::string& segno);
    /// "" for an unknown code and after a failure; only what the database has answered is kept.
    std::string DescrizioneConto(const std::string& conto);
    std::string DescrizioneVDS(const std::string& vds);
    /// A code as users read it, by the groups of its chart. \throws what the host's service throws
    std::string FormaConto(const std::string& conto);
    std::string FormaVDS(const std::string& vds);
    /// Opens the host's maintenance of the code in the field.
    void GestioneConto(controls::LookupField& campo);

    void TXT_CONTO_StartDecode(services::LookupRequest& richiesta);
    void TXT_CONTO_StartLookup(services::LookupRequest& richiesta);
    void TXT_CONTO_KeyButtonMenuPress(const std::string& voce);
    void TXT_VDS_StartDecode(services::LookupRequest& richiesta);
    void TXT_VDS_StartLookup(services::LookupRequest& richiesta);
    void TXT_VDS_KeyButtonMenuPress(const std::string& voce);
    /// The lookup service failed while serving either field; called while the exception is being handled.
    void CampoFailed();

    /// Detaches the kept command from the connection.
    void Rilascia();

private:
    struct Campo {
        controls::LookupField& campo;
        controls::Label& descrizione;
        services::LookupKind genere;
        std::int32_t pdc;
        std::string codiceCorrente = {};
        std::string descrizioneCorrente = {};
        std::optional<services::CodeFormatter> formatter = {};
        std::unordered_map<std::string, std::string> descrizioni = {}; ///< by code
    };

    /// The typology command; empty after a failure.
    std::shared_ptr<ado::Command> CMDGetTipologiaContoIndustriale();
    void prepara(Campo& campo);
    void completa(services::LookupRequest& richiesta, const Campo& campo) const;
    void limita(services::LookupRequest& richiesta);
    std::string segno() const;
    std::string descrizione(Campo& campo, const std::string& codice, const std::string& testo);
    const services::CodeFormatter& formatter(Campo& campo);
    void menu(Campo& campo, const char* etichetta, const std::string& voce);

    AmbienteCorrelazioni& ambiente_;
    Controlli controlli_;
    std::function<void()> buildScript_;
    Campo conto_{controlli_.TXT_CONTO, controlli_.TXT_DESCRCONTO, services::LookupKind::ContiCoin,
                 ambiente_.codicePDCCoin};
    Campo vds_{controlli_.TXT_VDS, controlli_.TXT_DESCRVDS, services::LookupKind::VociDiSpesa,
               ambiente_.codicePDCVds};
    std::shared_ptr<ado::Command> tipologia_; // shared as ADO commands are
    const char* richiestaInCorso_ = "TXT_CONTO_StartDecode";
};

} // namespace veldran
