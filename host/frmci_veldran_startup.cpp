#include "host/aree_di_lavoro.h"
#include "host/clsci_veldran.h"
#include "host/frmci_veldran.h"
#include "platform/text.h"

#include <functional>
#include <utility>

/// The pieces that the main form's start-up puts together.
namespace veldran {

namespace {

/// Every control below `contenitore`, outermost first.
void perOgniControllo(const controls::Container& contenitore,
                      const std::function<void(controls::Control&)>& azione) {
    for (controls::Control* controllo : contenitore.Controls()) {
        azione(*controllo);
        if (const auto* interno = dynamic_cast<const controls::Container*>(controllo)) {
            perOgniControllo(*interno, azione);
        }
    }
}

} // namespace

DidascalieRadici FRMCI_VELDRAN::GetTraduzioneThesaurus() {
    DidascalieRadici didascalie = {"Conti d'ordine", "Conti patrimoniali", "Conti economici",
                                   "Conti non stampati"};
    errori_.Esegui("GetTraduzioneThesaurus:", [&] {
        const services::Thesaurus& thesaurus = Global().Thesaurus();
        constexpr std::array<std::int32_t, 4> voci = {15554, 15588, 15566, 15556}; // by nature
        for (std::size_t natura = 0; natura < voci.size(); ++natura) {
            if (auto testo = thesaurus.Entry(voci[natura])) {
                didascalie[natura] = std::move(*testo);
            }
        }
        perOgniControllo(*this, [&](controls::Control& controllo) {
            if (auto testo = thesaurus.ControlCaption(Name(), controllo.Name())) {
                controllo.SetCaption(std::move(*testo));
            }
        });
        controls::TabStrip& filtri = controlli_.STR_FILTRI;
        for (int indice = 1; indice <= static_cast<int>(filtri.Tabs().size()); ++indice) {
            const std::string voce = filtri.Name() + "." + std::to_string(indice);
            const controls::Tab scheda = filtri.Tabs()[static_cast<std::size_t>(indice) - 1];
            const auto didascalia = thesaurus.ControlCaption(Name(), voce);
            const auto suggerimento = thesaurus.ControlCaption(Name(), voce + ".ToolTipText");
            if (didascalia || suggerimento) {
                filtri.SetTabCaption(indice, didascalia.value_or(scheda.caption),
                                     suggerimento.value_or(scheda.toolTipText));
            }
        }
    });
    return didascalie;
}

void FRMCI_VELDRAN::CreaAreeDiLavoro(services::GlobalObject& global, DidascalieRadici didascalie) {
    if (aree_) {
        return; // an earlier start-up got this far; its commands and its tree still serve
    }
    aree_ = std::make_unique<AreeDiLavoro>(AmbienteDiLavoro{connessione_, stringaConnessione_,
                                                            global.CodiceDitta(), global.CodicePdcCoge(), 0,
                                                            errori_, global.Screen()},
                                           controlli_, std::move(didascalie));
    CollegaEventi();
}

void FRMCI_VELDRAN::CollegaEventi() {
    ControlliFormPrincipale& c = controlli_;
    AreeDiLavoro& a = *aree_;
    const auto collega = [this](Subscription evento) { eventiControlli_.push_back(std::move(evento)); };

    collega(c.STR_FILTRI.Click.subscribe([&a] { a.filtri.STR_FILTRI_Click(); }));

    collega(
        c.TRW_CONTI.Expand.subscribe([&a](controls::TreeNode& nodo) { a.albero.TRW_CONTI_Expand(nodo); }));
    collega(c.TRW_CONTI.Collapse.subscribe(
        [&a](controls::TreeNode& nodo) { a.albero.TRW_CONTI_Collapse(nodo); }));
    collega(c.TRW_CONTI.NodeClick.subscribe(
        [&a](controls::TreeNode& nodo) { a.albero.TRW_CONTI_NodeClick(nodo); }));
    collega(c.TRW_CONTI.KeyDown.subscribe(
        [&a](controls::KeyEvent& tasto) { a.albero.TRW_CONTI_KeyDown(tasto); }));
    collega(c.TRW_CONTI.NodeCheck.subscribe(
        [&a](controls::TreeNode& nodo) { a.attivazione.TRW_CONTI_NodeCheck(nodo); }));
    collega(c.TRW_CONTI.MouseDown.subscribe(
        [&a](const controls::MouseEvent& evento) { a.attivazione.TRW_CONTI_MouseDown(evento); }));
    collega(c.TRW_CONTI.MouseUp.subscribe(
        [&a](const controls::MouseEvent& evento) { a.attivazione.TRW_CONTI_MouseUp(evento); }));

    collega(c.BUT_RICERCA.Click.subscribe([&a] { a.ricerca.BUT_RICERCA_ButtonClick(); }));
    collega(c.TXT_CONTORICERCA.StartDecode.subscribe(
        [&a](services::LookupRequest& richiesta) { a.ricerca.TXT_CONTORICERCA_StartDecode(richiesta); }));
    collega(c.TXT_CONTORICERCA.StartLookup.subscribe(
        [&a](services::LookupRequest& richiesta) { a.ricerca.TXT_CONTORICERCA_StartLookup(richiesta); }));
    collega(c.TXT_CONTORICERCA.Changed.subscribe([&a] { a.ricerca.TXT_CONTORICERCA_Changed(); }));
    collega(c.TXT_CONTORICERCA.Failed.subscribe(
        [&a](const std::exception&) { a.ricerca.TXT_CONTORICERCA_Failed(); }));
    collega(c.TXT_CONTORICERCA.KeyDown.subscribe(
        [&a](controls::KeyEvent& tasto) { a.ricerca.TXT_CONTORICERCA_KeyDown(tasto); }));
}

void FRMCI_VELDRAN::CaricamentoCombo() {
    errori_.Esegui("CaricamentoCombo:", [this] {
        controlli_.CBO_SEGNO.Clear();
        controlli_.CBO_SEGNO.AddItem("Avere", 2);
        controlli_.CBO_SEGNO.AddItem("Dare", 1);
    });
}

void FRMCI_VELDRAN::FormatiGriglia() {
    formati_ = {std::make_shared<controls::DataFormat>(), std::make_shared<controls::DataFormat>(),
                std::make_shared<controls::DataFormat>(), std::make_shared<controls::DataFormat>(),
                std::make_shared<controls::DataFormat>()};
    const auto formatoDi = [this](const controls::GridColumn& colonna) {
        if (colonna.dataField == "AVERE" || colonna.dataField == "DARE") {
            return formati_.gclsFormatConto;
        }
        if (colonna.dataField == "CONTO") {
            return formati_.gclsFormatDescrizioneConto;
        }
        if (colonna.dataField == "CONTOVDS") {
            return colonna.caption == "V.d.s." ? formati_.gclsFormatVDS : formati_.gclsFormatDescrizioneVDS;
        }
        return colonna.dataField == "PERCENTUALE" ? formati_.gclsFormatPercentuale : nullptr;
    };
    const auto& colonne = controlli_.GRD_DETTAGLIO.Columns();
    for (std::size_t indice = 0; indice < colonne.size(); ++indice) {
        controlli_.GRD_DETTAGLIO.SetColumnFormat(indice, formatoDi(colonne[indice]));
    }
}

void FRMCI_VELDRAN::ConfigurazioneCampiCorrelazione(services::GlobalObject& global) {
    constexpr int lunghezzaCausale = 4;
    constexpr int lunghezzaContoCoan = 15;
    controlli_.TXT_CAUSALE.SetLookupService(&global.Lookups());
    controlli_.TXT_CAUSALE.SetMaxLength(lunghezzaCausale);
    controlli_.TXT_CONTO.SetLookupService(&global.Lookups());
    controlli_.TXT_CONTO.SetMaxLength(lunghezzaContoCoan);
    controlli_.TXT_VDS.SetLookupService(&global.Lookups());
    controlli_.TXT_VDS.SetMaxLength(lunghezzaContoCoan);
    controlli_.TXT_VDS.SetEnabled(global.GestioneVociDiSpesa());
    // Their buttons stay dead until an editing frame is bound to them.
    controlli_.INV_TESTATA.SetEnabled(false);
    controlli_.GNV_DETTAGLIO.SetEnabled(false);
}

void FRMCI_VELDRAN::AvvioRidimensionamento() {
    controlli_.QRV_RESIZEFORM.SetComponent(activeDll_.get());
    controlli_.QRV_RESIZEFORM.Start();
}

void FRMCI_VELDRAN::AggiornamentoNavigatore() {
    errori_.Esegui("AggiornamentoNavigatore:", [this] {
        if (!activeDll_) {
            return;
        }
        const auto frame = activeDll_->GetActiveFrame();
        if (!frame) {
            return;
        }
        if (const auto navigatore = activeDll_->GetActiveNavigator()) {
            navigatore->SetStatus(frame->GetProperty("Status").toInt16());
        }
    });
}

void FRMCI_VELDRAN::BuildScript() {
    errori_.Esegui("BuildScript:", [this] {
        const auto navigatore = activeDll_->GetActiveNavigator();
        if (navigatore && !navigatore->Script()) {
            script_ = Global().Scripts().BuildScript(*this);
            navigatore->SetScript(script_);
        }
    });
}

void FRMCI_VELDRAN::ApplicaLayOut() {
    errori_.Esegui("ApplicaLayOut:", [this] { Global().Layouts().ApplyLayout(*this); });
}

bool FRMCI_VELDRAN::ExecuteFormEvent(const std::string& evento) {
    return errori_.Esegui("ExecuteFormEvent:", false, [&] {
        const auto navigatore = activeDll_->GetActiveNavigator();
        const auto script = navigatore ? navigatore->Script() : nullptr;
        return script && script->ExecuteFormEvent(evento);
    });
}

} // namespace veldran
