#include "causali/frmci_causdup.h"

#include "sql/commands.h"

namespace veldran {

FRMCI_CAUSDUP::FRMCI_CAUSDUP()
    : Form("FRMCI_CAUSDUP"), GRB_CAUSALEDESTINAZIONE(*this, "GRB_CAUSALEDESTINAZIONE"),
      TXT_CAUSALE(GRB_CAUSALEDESTINAZIONE, "TXT_CAUSALE"),
      TXT_DESCRCAUSALE(GRB_CAUSALEDESTINAZIONE, "TXT_DESCRCAUSALE"), CMD_CONFERMA(*this, "CMD_CONFERMA"),
      CMD_ANNULLA(*this, "CMD_ANNULLA"), QRV_RESIZEFORM(*this, "QRV_RESIZEFORM") {
    SetCaption("Causale di destinazione");
    TXT_CAUSALE.SetCaption("Causale");
    TXT_CAUSALE.SetAccessibleName("Causale di destinazione");
    TXT_CAUSALE.SetMaxLength(sql::lunghezzaCausale);
    TXT_CAUSALE.SetUpperCase(true);
    TXT_DESCRCAUSALE.SetAccessibleName("Descrizione della causale di destinazione");
    CMD_CONFERMA.SetCaption("&Conferma");
    CMD_CONFERMA.SetToolTipText("Duplica la correlazione sulla causale indicata");
    CMD_ANNULLA.SetCaption("&Annulla");
    CMD_ANNULLA.SetToolTipText("Chiude senza duplicare (Esc)");
    QRV_RESIZEFORM.Start();

    const auto collega = [this](Subscription evento) { eventi_.push_back(std::move(evento)); };
    collega(QRV_RESIZEFORM.QueryResize.subscribe([](bool& consentito) { consentito = true; }));
    collega(CMD_CONFERMA.Click.subscribe([this] { CMD_CONFERMA_Click(); }));
    collega(CMD_ANNULLA.Click.subscribe([this] { Unload(); }));
    collega(FormKeyDown.subscribe([this](controls::KeyEvent& tasto) { Form_KeyDown(tasto); }));
    collega(Unloading.subscribe([this] { Form_Unload(); }));
    collega(TXT_CAUSALE.StartDecode.subscribe([this](services::LookupRequest& richiesta) {
        richiestaInCorso_ = "TXT_CAUSALE_StartDecode";
        completa(richiesta);
        TXT_CAUSALE.SetLookupService(decode_);
    }));
    collega(TXT_CAUSALE.StartLookup.subscribe([this](services::LookupRequest& richiesta) {
        richiestaInCorso_ = "TXT_CAUSALE_StartLookup";
        completa(richiesta);
        richiesta.title = "Causale correlata";
        TXT_CAUSALE.SetLookupService(lookup_);
    }));
    collega(TXT_CAUSALE.Failed.subscribe([this](const std::exception&) { TXT_CAUSALE_Failed(); }));
    collega(
        TXT_CAUSALE.Changed.subscribe([this] { TXT_DESCRCAUSALE.SetCaption(TXT_CAUSALE.Description()); }));
}

void FRMCI_CAUSDUP::completa(services::LookupRequest& richiesta) const {
    richiesta.kind = services::LookupKind::Causali;
    richiesta.code = nullSafeText(richiesta.code);
    richiesta.connection = connessione_;
    richiesta.connectionString = stringaDiConnessione_;
    richiesta.ditta = ditta_;
}

void FRMCI_CAUSDUP::TXT_CAUSALE_Failed() {
    if (errori_ == nullptr) {
        throw;
    }
    errori_->Esegui(richiestaInCorso_, [] { throw; });
}

void FRMCI_CAUSDUP::CMD_CONFERMA_Click() {
    const std::string codice = TXT_CAUSALE.IsValidItem() ? nullSafeText(TXT_CAUSALE.Text()) : std::string();
    if (codice.empty()) {
        return;
    }
    valido_ = true;
    causale_ = codice;
    descrizione_ = nullSafeText(TXT_DESCRCAUSALE.Caption());
    Unload();
}

void FRMCI_CAUSDUP::Form_KeyDown(controls::KeyEvent& tasto) {
    if (tasto.keyCode == controls::keyEscape ||
        (tasto.keyCode == controls::keyF4 && tasto.shift == controls::shiftCtrl)) {
        tasto.keyCode = 0;
        Unload();
    }
}

void FRMCI_CAUSDUP::Form_Unload() {
    TXT_CAUSALE.SetLookupService(nullptr);
    connessione_.reset();
    lookup_ = nullptr;
    decode_ = nullptr;
    errori_ = nullptr;
}

} // namespace veldran
