#include "host/frmci_veldran.h"

#include "host/aree_correlazioni.h"
#include "host/aree_di_lavoro.h"
#include "host/clsci_veldran.h"

#include <stdexcept>
#include <utility>

namespace veldran {

FRMCI_VELDRAN::FRMCI_VELDRAN()
    : Form("FRMCI_VELDRAN"), controlli_(*this), errori_([this] { return Caption(); }) {
    eventiForm_.push_back(Activated.subscribe([this] { Form_Activate(); }));
    eventiForm_.push_back(QueryUnload.subscribe([this](bool& cancel) { Form_QueryUnload(cancel); }));
    eventiForm_.push_back(Unloading.subscribe([this] { Form_Unload(); }));
    eventiForm_.push_back(controlli_.MDIActiveX1.FormLoad.subscribe([this] { MDIActiveX1_FormLoad(); }));
    eventiForm_.push_back(
        controlli_.QRV_RESIZEFORM.QueryResize.subscribe([](bool& consentito) { consentito = true; }));
}

FRMCI_VELDRAN::~FRMCI_VELDRAN() = default;

void FRMCI_VELDRAN::ActiveDll(std::shared_ptr<Cinterface> activeDll) {
    activeDll_ = std::move(activeDll);
}

void FRMCI_VELDRAN::Componente(std::shared_ptr<CLSCI_VELDRAN> componente) {
    componente_ = std::move(componente);
}

void FRMCI_VELDRAN::RilascioComponente() {
    activeDll_.reset();
    // The form may be the last to hold the component, and the component holds the form.
    const auto ultimo = std::exchange(componente_, nullptr);
}

void FRMCI_VELDRAN::Form_Activate() {
    const auto viva = shared_from_this(); // the start-up may unload the form
    AggiornamentoNavigatore();
    // A message box of the start-up gives the window back its activation when it closes.
    if (attivato_ || inAvvio_ || !activeDll_) {
        return;
    }
    inAvvio_ = true;
    errori_.Esegui("Form_Activate", [this] { Avvio(); });
    inAvvio_ = false;
    if (!attivato_) {
        AnnullaAvvio();
    }
}

void FRMCI_VELDRAN::AnnullaAvvio() {
    // The next activation starts again on a session of its own: this one may hold working tables already.
    errori_.Esegui("Form_Activate", [this] { RilascioComandi(); });
    RilascioAree();
    errori_.Esegui("Form_Activate", [this] { ChiudiConnessione(); });
    errori_.UsaConnessione(nullptr);
    connessione_.reset();
    global_.reset();
}

services::GlobalObject& FRMCI_VELDRAN::Global() {
    if (!global_) {
        global_ = activeDll_ ? activeDll_->GetClsGlobal() : nullptr;
    }
    if (!global_) {
        throw std::logic_error("Il componente non ha l'oggetto globale dell'applicazione");
    }
    return *global_;
}

void FRMCI_VELDRAN::Avvio() {
    services::GlobalObject& global = Global();
    errori_.UsaMessaggi(global.NewMessageService(), global.ApplicationTitle());
    if (!errori_.Messaggi()) {
        throw std::logic_error("L'applicazione non offre un servizio messaggi");
    }
    errori_.Messaggi()->Bind(*activeDll_);
    stringaConnessione_ = global.StringaDiConnessione();
    ApriConnessione(global);
    if (ContabilitaAnaliticaConfigurata(global)) {
        PreparaSchermo(global);
        attivato_ = true;
        return;
    }
    errori_.Messaggi()->ShowBox("Per poter utilizzare questo programma è necessario aver abilitato\r\n"
                                "la gestione della contabilità analitica per la ditta corrente\r\n"
                                "ed averne configurato i parametri di gestione.",
                                services::styleCritical, "A T T E N Z I O N E ! ! ! ! !");
    Unload();
}

void FRMCI_VELDRAN::ApriConnessione(services::GlobalObject& global) {
    if (connessione_) {
        return;
    }
    connessione_ = global.Connections().NewConnection();
    if (!connessione_) {
        throw std::logic_error("L'applicazione non offre una connessione alla base dati");
    }
    errori_.UsaConnessione(connessione_);
    connessione_->ConnectionString(stringaConnessione_);
    connessione_->Open();
    activeDll_->SetConnection(connessione_);
}

bool FRMCI_VELDRAN::ContabilitaAnaliticaConfigurata(services::GlobalObject& global) const {
    if (global.FlagContabilitaAnalitica() != "1") {
        return false;
    }
    const services::AnalyticParameters* parametri = global.ParametriContabilitaAnalitica();
    return parametri && !valueOrDefault(parametri->GetValue(), "").toText().empty();
}

void FRMCI_VELDRAN::PreparaSchermo(services::GlobalObject& global) {
    CreaAreeDiLavoro(global, GetTraduzioneThesaurus());
    controlli_.LAY_ATTIVAZIONE.SetVisible(true);
    aree_->ambiente.livelli = aree_->tabelle.GetLivelliPDC();
    aree_->tabelle.ConfigurazioneTabelleTemporanee();
    controlli_.STR_FILTRI.Select(1);
    aree_->ricerca.Configurazione(global.Lookups());
    correlazioni_->dettaglio.CaricamentoCombo();
    correlazioni_->formati.Assegna(controlli_.GRD_DETTAGLIO);
    ConfigurazioneCampiCorrelazione(global);
    BuildScript();
    ApplicaLayOut();
    ExecuteFormEvent("tsOpen");
    AvvioRidimensionamento();
}

void FRMCI_VELDRAN::Form_QueryUnload(bool& cancel) {
    errori_.Esegui("Form_QueryUnload", [&] {
        AggiornamentoNavigatore();
        if (!attivato_) {
            return;
        }
        cancel = correlazioni_->frame.QueryUnloadFrames();
        if (cancel) {
            return;
        }
        const auto navigatore = activeDll_->GetActiveNavigator();
        if (navigatore && !navigatore->Script()) {
            BuildScript();
        } else {
            cancel = ExecuteFormEvent("tsClose");
        }
    });
}

void FRMCI_VELDRAN::Form_Unload() {
    // Step by step, so that one that fails is reported and keeps nothing behind it from being released.
    errori_.Esegui("Form_Unload", [this] { RilascioComandi(); });
    RilascioControllo(&controlli_.TXT_CONTO);
    RilascioControllo(&controlli_.TXT_VDS);
    if (correlazioni_) {
        correlazioni_->frame.RimozioneVirtualFrame();
    }
    errori_.Esegui("Form_Unload", [this] { RilascioOggetti(); });
    RilascioAree();
    errori_.Esegui("Form_Unload", [this] { ChiudiConnessione(); });
    errori_.UsaConnessione(nullptr);
    connessione_.reset();
    errori_.UsaMessaggi(nullptr, {});
    global_.reset();
    RilascioComponente();
}

void FRMCI_VELDRAN::MDIActiveX1_FormLoad() {
    errori_.Esegui("MDIActiveX1_FormLoad", [this] {
        if (!activeDll_) {
            return; // nothing was handed over that could place the form
        }
        controlli_.MDIActiveX1.Embed(activeDll_->GetTop().toInt32(), activeDll_->GetLeft().toInt32(),
                                     activeDll_->GetWindowState(),
                                     activeDll_->GetWindowModal() != variantFalse);
        controlli_.MDIActiveX1.SetValue(Caption());
    });
}

void FRMCI_VELDRAN::RilascioComandi() {
    if (aree_) {
        aree_->tabelle.Rilascia();
        aree_->filtri.Rilascia();
        aree_->attivazione.Rilascia();
        aree_->ricerca.Rilascia();
    }
    if (correlazioni_) {
        correlazioni_->archivio.Rilascia();
        correlazioni_->campi.Rilascia();
        correlazioni_->lista.Rilascia();
        correlazioni_->copie.Rilascia();
    }
}

void FRMCI_VELDRAN::RilascioControllo(controls::LookupField* controllo) {
    errori_.Esegui("RilascioControllo:", [&] {
        if (controllo) {
            controllo->SetLookupService(nullptr);
            controllo->SetConnection(nullptr);
            controllo->SetCodeStructure({});
        }
    });
}

void FRMCI_VELDRAN::RilascioOggetti() {
    RilascioControllo(&controlli_.TXT_CAUSALE);
    RilascioControllo(&controlli_.TXT_CONTORICERCA);
    controlli_.QRV_RESIZEFORM.SetComponent(nullptr);
    FormatiGriglia::Togli(controlli_.GRD_DETTAGLIO);
    RilascioAree();
    // The script object addresses this form: the navigator must not keep it longer.
    const auto navigatore = activeDll_ ? activeDll_->GetActiveNavigator() : nullptr;
    if (navigatore && script_ && navigatore->Script() == script_) {
        navigatore->SetScript(nullptr);
    }
    script_.reset();
}

void FRMCI_VELDRAN::RilascioAree() {
    eventiControlli_.clear();
    correlazioni_.reset();
    if (aree_) {
        aree_->albero.SvuotaAlbero(); // its nodes use its command factory
        aree_.reset();
    }
}

void FRMCI_VELDRAN::ChiudiConnessione() {
    if (connessione_ && connessione_->State() == ado::adStateOpen) {
        connessione_->Close();
    }
}

} // namespace veldran
