#include "host/aree_correlazioni.h"
#include "host/aree_di_lavoro.h"
#include "host/clsci_veldran.h"
#include "host/frmci_veldran.h"
#include "platform/text.h"
#include "sql/commands.h"

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
    aree_ = std::make_unique<AreeDiLavoro>(AmbienteDiLavoro{connessione_, stringaConnessione_,
                                                            global.CodiceDitta(), global.CodicePdcCoge(), 0,
                                                            errori_, global.Screen()},
                                           controlli_, std::move(didascalie));
    correlazioni_ = std::make_unique<AreeCorrelazioni>(aree_->ambiente, global, *this, controlli_,
                                                       AreeCorrelazioni::Vicini{aree_->albero, aree_->filtri},
                                                       [this] { BuildScript(); });
    CollegaAttivazione();
    CollegaCorrelazioni();
}

void FRMCI_VELDRAN::CollegaAttivazione() {
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

void FRMCI_VELDRAN::CollegaCorrelazioni() {
    ControlliFormPrincipale& c = controlli_;
    AreeCorrelazioni& a = *correlazioni_;
    const auto collega = [this](Subscription evento) { eventiControlli_.push_back(std::move(evento)); };

    collega(c.CMD_ATTIVAZIONI.Click.subscribe([&a] { a.modi.CMD_ATTIVAZIONI_Click(); }));
    collega(c.BUT_CORRELAZIONI.Click.subscribe([&a] { a.modi.BUT_CORRELAZIONI_ButtonClick(); }));
    collega(c.BUT_EDITCORRELAZIONI.Click.subscribe([&a] { a.modi.BUT_EDITCORRELAZIONI_ButtonClick(); }));

    collega(c.LST_CAUSALI.ItemClick.subscribe(
        [&a](controls::ListItem& riga) { a.lista.LST_CAUSALI_ItemClick(riga); }));
    collega(c.LST_CAUSALI.MouseDown.subscribe(
        [&a](const controls::MouseEvent& evento) { a.lista.LST_CAUSALI_MouseDown(evento); }));
    collega(c.LST_CAUSALI.KeyDown.subscribe(
        [&a](controls::KeyEvent& tasto) { a.lista.LST_CAUSALI_KeyDown(tasto); }));

    collega(c.TXT_CAUSALE.StartDecode.subscribe(
        [&a](services::LookupRequest& richiesta) { a.dettaglio.TXT_CAUSALE_StartDecode(richiesta); }));
    collega(c.TXT_CAUSALE.StartLookup.subscribe(
        [&a](services::LookupRequest& richiesta) { a.dettaglio.TXT_CAUSALE_StartLookup(richiesta); }));
    collega(c.TXT_CAUSALE.AfterItem.subscribe([&a] { a.dettaglio.TXT_CAUSALE_AfterItem(); }));
    collega(
        c.TXT_CAUSALE.Failed.subscribe([&a](const std::exception&) { a.dettaglio.TXT_CAUSALE_Failed(); }));
    collega(c.INV_TESTATA.AfterButtonClick.subscribe([&a](bool riuscito, const std::string& tasto) {
        a.dettaglio.INV_TESTATA_AfterButtonClick(riuscito, tasto);
    }));

    collega(c.GRD_DETTAGLIO.DblClick.subscribe([&a] { a.dettaglio.GRD_DETTAGLIO_DblClick(); }));
    collega(c.GRD_DETTAGLIO.KeyDown.subscribe(
        [&a](controls::KeyEvent& tasto) { a.dettaglio.GRD_DETTAGLIO_KeyDown(tasto); }));
    collega(c.CMD_SU.Click.subscribe([&a] { a.dettaglio.CMD_SU_Click(); }));
    collega(c.CMD_GIU.Click.subscribe([&a] { a.dettaglio.CMD_GIU_Click(); }));
    collega(c.CBO_SEGNO.GotFocus.subscribe([&a] { a.dettaglio.CBO_SEGNO_GotFocus(); }));
    collega(c.CBO_SEGNO.Click.subscribe([&a] { a.dettaglio.CBO_SEGNO_Click(); }));
    collega(c.PIC_FOCUSCATCH.GotFocus.subscribe([&a] { a.dettaglio.PIC_FOCUSCATCH_GotFocus(); }));
    collega(c.GNV_DETTAGLIO.GotFocus.subscribe([&a] { a.dettaglio.GNV_DETTAGLIO_GotFocus(); }));
    collega(c.GNV_DETTAGLIO.AfterButtonClick.subscribe([&a](bool riuscito, const std::string& tasto) {
        a.dettaglio.GNV_DETTAGLIO_AfterButtonClick(riuscito, tasto);
    }));

    collega(c.TXT_CONTO.GotFocus.subscribe([&a] { a.dettaglio.TXT_CONTO_GotFocus(); }));
    collega(c.TXT_CONTO.StartDecode.subscribe(
        [&a](services::LookupRequest& richiesta) { a.campi.TXT_CONTO_StartDecode(richiesta); }));
    collega(c.TXT_CONTO.StartLookup.subscribe(
        [&a](services::LookupRequest& richiesta) { a.campi.TXT_CONTO_StartLookup(richiesta); }));
    collega(c.TXT_CONTO.KeyButtonMenuPress.subscribe(
        [&a](const std::string& voce) { a.campi.TXT_CONTO_KeyButtonMenuPress(voce); }));
    collega(c.TXT_CONTO.Failed.subscribe([&a](const std::exception&) { a.campi.CampoFailed(); }));
    collega(c.TXT_VDS.GotFocus.subscribe([&a] { a.dettaglio.TXT_VDS_GotFocus(); }));
    collega(c.TXT_VDS.StartDecode.subscribe(
        [&a](services::LookupRequest& richiesta) { a.campi.TXT_VDS_StartDecode(richiesta); }));
    collega(c.TXT_VDS.StartLookup.subscribe(
        [&a](services::LookupRequest& richiesta) { a.campi.TXT_VDS_StartLookup(richiesta); }));
    collega(c.TXT_VDS.KeyButtonMenuPress.subscribe(
        [&a](const std::string& voce) { a.campi.TXT_VDS_KeyButtonMenuPress(voce); }));
    collega(c.TXT_VDS.Failed.subscribe([&a](const std::exception&) { a.campi.CampoFailed(); }));
}

void FRMCI_VELDRAN::ConfigurazioneCampiCorrelazione(services::GlobalObject& global) {
    constexpr int lunghezzaContoCoan = 15;
    controlli_.TXT_CAUSALE.SetLookupService(&global.Lookups());
    controlli_.TXT_CAUSALE.SetMaxLength(sql::lunghezzaCausale);
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
