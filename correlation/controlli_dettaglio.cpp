#include "correlation/controlli_dettaglio.h"

#include "correlation/frame_correlazioni.h"

#include <map>

namespace veldran {

namespace keys = controls::navigatorKeys;

namespace {

using Valori = std::map<std::string, Value>;

Valori valoriDi(ado::Recordset& record) {
    Valori valori;
    for (const ado::Field& campo : record.Fields()) {
        valori.emplace(campo.Name(), campo.Value());
    }
    return valori;
}

/// Everything but the row's number, which stays with its place.
void imposta(ado::Recordset& record, const Valori& valori) {
    for (const auto& [nome, valore] : valori) {
        if (nome != "PROG") {
            record.Fields()[nome].Value(valore);
        }
    }
}

} // namespace

void ControlliDettaglio::CaricamentoCombo() {
    ambiente_.form.errori.Esegui("CaricamentoCombo:", [this] {
        controlli_.CBO_SEGNO.Clear();
        controlli_.CBO_SEGNO.AddItem("Avere", segnoAvere);
        controlli_.CBO_SEGNO.AddItem("Dare", segnoDare);
    });
}

void ControlliDettaglio::AbilitazioneDettaglio(bool abilita) {
    ambiente_.form.errori.Esegui("AbilitazioneDettaglio:", [&] {
        controlli_.GRD_DETTAGLIO.SetEnabled(abilita);
        controlli_.CBO_SEGNO.SetEnabled(abilita);
        controlli_.TXT_PERC.SetEnabled(abilita);
        controlli_.TXT_CONTO.SetEnabled(abilita);
        controlli_.TXT_CONTO.SetLookupEnabled(abilita);
        controlli_.PIC_FOCUSCATCH.SetEnabled(abilita);
        controlli_.GNV_DETTAGLIO.SetEnabled(abilita);
        controlli_.TXT_VDS.SetEnabled(abilita && ambiente_.gestioneVds);
    });
}

void ControlliDettaglio::ChiediConto(const ado::Bookmark& riga) {
    if (frame_.Dettaglio()->MoveTo(riga)) {
        controlli_.TXT_CONTO.SetFocus();
    }
}

void ControlliDettaglio::CMD_SU_Click() {
    ambiente_.form.errori.Esegui("CMD_SU_Click", [this] { scambia(-1); });
}

void ControlliDettaglio::CMD_GIU_Click() {
    ambiente_.form.errori.Esegui("CMD_GIU_Click", [this] { scambia(1); });
}

/// Exchanges the contents of the current row and of the one that lies `passo` rows further.
void ControlliDettaglio::scambia(std::int64_t passo) {
    frames::VirtualFrame* dettaglio = frame_.Dettaglio();
    if (dettaglio == nullptr || !dettaglio->Update()) {
        return; // what is being typed belongs to the row and could not be taken over
    }
    ado::Recordset& righe = *dettaglio->Recordset();
    const std::int64_t posizione = righe.AbsolutePosition();
    if (posizione < 1 || posizione + passo < 1 || posizione + passo > righe.RecordCount()) {
        return;
    }
    const Valori a = valoriDi(righe);
    righe.Move(passo);
    const Valori b = valoriDi(righe);
    imposta(righe, a);
    righe.Move(-passo);
    imposta(righe, b);
    righe.Update();
    dettaglio->Refresh();
    dettaglio->MoveBy(passo);
    controlli_.GRD_DETTAGLIO.SetFocus();
}

void ControlliDettaglio::TXT_CAUSALE_StartDecode(services::LookupRequest& richiesta) {
    richiestaInCorso_ = "TXT_CAUSALE_StartDecode";
    ambiente_.form.errori.Esegui(richiestaInCorso_, [&] { completa(richiesta); });
}

void ControlliDettaglio::TXT_CAUSALE_StartLookup(services::LookupRequest& richiesta) {
    richiestaInCorso_ = "TXT_CAUSALE_StartLookup";
    ambiente_.form.errori.Esegui(richiestaInCorso_, [&] {
        completa(richiesta);
        richiesta.title = "Causale correlata";
    });
}

void ControlliDettaglio::completa(services::LookupRequest& richiesta) const {
    richiesta.kind = services::LookupKind::Causali;
    richiesta.code = nullSafeText(richiesta.code);
    richiesta.connection = ambiente_.form.connessione;
    richiesta.connectionString = ambiente_.form.stringaConnessione;
    richiesta.ditta = ambiente_.form.codiceDitta;
}

void ControlliDettaglio::TXT_CAUSALE_AfterItem() {
    ambiente_.form.errori.Esegui("TXT_CAUSALE_AfterItem:", [this] {
        const frames::VirtualFrame* testata = frame_.Testata();
        if (testata == nullptr || testata->Status() != frames::statusAddingNew) {
            controlli_.GRD_DETTAGLIO.SetFocus();
            return;
        }
        const std::string& causale = controlli_.TXT_CAUSALE.Text();
        const bool valida = !causale.empty() && controlli_.TXT_CAUSALE.IsValidItem();
        const bool doppia = valida && !frame_.RecordDiCausale(causale); // the new header has it, and another
        const bool accettata =
            valida && !doppia && (frame_.Dettaglio()->HasRecords() ? portaRighe() : frame_.RefreshChild());
        AbilitazioneDettaglio(accettata);
        if (doppia) {
            ambiente_.form.errori.Messaggi()->ShowBox(
                "La causale è già correlata: selezionarla nell'elenco per modificarne le righe.",
                services::styleExclamation, "Attenzione");
        }
        // The user may close the form while pending messages run, and this object goes with it.
        const Controlli controlli = controlli_;
        ambiente_.globale.Windows().DoEvents();
        if (accettata) {
            controlli.CBO_SEGNO.SetFocus();
        } else if (doppia) {
            controlli.TXT_CAUSALE.SetFocus();
        } else {
            controlli.INV_TESTATA.FocusButton(keys::nuovo);
        }
    });
}

/// The causale of a new correlation was corrected: the rows keyed before the correction go with it. All rows
/// that a new header shows are its own.
bool ControlliDettaglio::portaRighe() {
    const auto righe = frame_.Dettaglio()->Recordset()->Clone();
    const std::string& causale = controlli_.TXT_CAUSALE.Text();
    for (; !righe->EndOfFile(); righe->MoveNext()) {
        ado::Field& campo = righe->Fields()["CAUSALE"];
        if (nullSafeText(campo.Value()) != causale) {
            campo.Value(causale);
        }
    }
    frame_.Dettaglio()->Refresh();
    return true;
}

void ControlliDettaglio::TXT_CAUSALE_Failed() {
    ambiente_.form.errori.Esegui(richiestaInCorso_, [] { throw; });
}

void ControlliDettaglio::CBO_SEGNO_GotFocus() {
    segnoAllIngresso_ = nullSafeText(controlli_.CBO_SEGNO.Text());
}

void ControlliDettaglio::CBO_SEGNO_Click() {
    ambiente_.form.errori.Esegui("CBO_SEGNO_Click", [this] {
        frames::VirtualFrame* dettaglio = frame_.Dettaglio();
        const std::string segno = nullSafeText(controlli_.CBO_SEGNO.Text());
        if (dettaglio == nullptr || segno == segnoAllIngresso_ ||
            dettaglio->Recordset()->AbsolutePosition() < 1) {
            return;
        }
        ado::Field& conto = dettaglio->Recordset()->Fields()["CONTO"];
        if (!conto.Value().isNull()) {
            conto.Value(Value());
            dettaglio->Refresh();
        }
    });
}

void ControlliDettaglio::GNV_DETTAGLIO_AfterButtonClick(bool riuscito, const std::string& tasto) {
    ambiente_.form.errori.Esegui("GNV_DETTAGLIO_AfterButtonClick", [&] {
        if (riuscito && tasto == keys::nuovo) {
            controlli_.CBO_SEGNO.SetFocus();
        } else if (riuscito && tasto == keys::conferma) {
            controlli_.GRD_DETTAGLIO.SetFocus();
        }
    });
}

void ControlliDettaglio::INV_TESTATA_AfterButtonClick(bool riuscito, const std::string& tasto) {
    ambiente_.form.errori.Esegui("INV_TESTATA_AfterButtonClick", [&] {
        if (!riuscito) {
            return;
        }
        if (tasto == keys::nuovo) {
            controlli_.TXT_CAUSALE.SetFocus();
        } else if (tasto == keys::conferma) {
            controlli_.GRD_DETTAGLIO.SetFocus();
        } else if (tasto == keys::elimina) {
            frame_.NuovaSeVuota();
            if (controlli_.TXT_CAUSALE.Enabled()) {
                controlli_.TXT_CAUSALE.SetFocus();
            } else {
                controlli_.INV_TESTATA.FocusButton(keys::elimina);
            }
        }
    });
}

void ControlliDettaglio::GRD_DETTAGLIO_DblClick() {
    ambiente_.form.errori.Esegui("GRD_DETTAGLIO_DblClick", [this] { controlli_.CBO_SEGNO.SetFocus(); });
}

void ControlliDettaglio::GRD_DETTAGLIO_KeyDown(controls::KeyEvent& tasto) {
    ambiente_.form.errori.Esegui("GRD_DETTAGLIO_KeyDown", [&] {
        if (tasto.keyCode == controls::keyReturn && tasto.shift == controls::shiftNone) {
            tasto.keyCode = 0;
            const Controlli controlli = controlli_; // outlive this object, should the user close the form
            ambiente_.globale.Windows().DoEvents();
            controlli.CBO_SEGNO.SetFocus();
        }
    });
}

void ControlliDettaglio::PIC_FOCUSCATCH_GotFocus() {
    ambiente_.form.errori.Esegui("PIC_FOCUSCATCH_GotFocus", [this] {
        if (avanti_) {
            chiudiRiga();
        } else if (controlli_.TXT_VDS.Enabled()) {
            controlli_.TXT_VDS.SetFocus();
        } else {
            controlli_.TXT_CONTO.SetFocus();
        }
    });
}

/// The last field was left forwards: the row is confirmed, and a new one is followed by the next.
void ControlliDettaglio::chiudiRiga() {
    const frames::VirtualFrame* dettaglio = frame_.Dettaglio();
    if (dettaglio != nullptr && dettaglio->Status() == frames::statusAddingNew) {
        controlli_.GNV_DETTAGLIO.Press(keys::nuovo);
    } else if (controlli_.GNV_DETTAGLIO.CanPress(keys::conferma)) {
        controlli_.GNV_DETTAGLIO.Press(keys::conferma);
    }
    if (controlli_.PIC_FOCUSCATCH.HasFocus()) {
        controlli_.GRD_DETTAGLIO.SetFocus();
    }
}

} // namespace veldran
