#include "correlation/eventi_testata.h"

#include "causali/lista_causali.h"
#include "correlation/archivio_correlazioni.h"
#include "correlation/controlli_dettaglio.h"
#include "correlation/frame_correlazioni.h"
#include "correlation/regole_correlazione.h"

namespace veldran {

void EventiTestata::gclsFrameTestata_BeforeUpdate(bool& annulla) {
    annulla = ambiente_.form.errori.Esegui("gclsFrameTestata_BeforeUpdate", true, [&] {
        if (annulla || !causaleIndicata() || !scriviRighe()) {
            return true;
        }
        if (!vicini_.regole.CheckTotaleRigheOrigine()) {
            rifiuta("attribuite alle righe di origine maggiore di 100");
            return true;
        }
        if (!vicini_.regole.CheckTotalePartiteProposte()) {
            rifiuta("attribuite ad un insieme contiguo di righe di destinazione maggiore di 100");
            return true;
        }
        if (!contiIndicati()) {
            return true;
        }
        statoAlSalvataggio_ = vicini_.frame.Testata()->Status();
        return false;
    });
}

/// A new correlation is of a causale that exists: its rows would belong to nothing.
bool EventiTestata::causaleIndicata() {
    const bool nuova = vicini_.frame.Testata()->Status() == frames::statusAddingNew;
    if (!nuova || (!controlli_.TXT_CAUSALE.Text().empty() && controlli_.TXT_CAUSALE.IsValidItem())) {
        return true;
    }
    ambiente_.form.errori.Messaggi()->ShowBox("Indicare una causale esistente per salvare la correlazione.",
                                              services::styleExclamation, "Attenzione");
    controlli_.TXT_CAUSALE.SetFocus();
    return false;
}

bool EventiTestata::scriviRighe() {
    frames::VirtualFrame& dettaglio = *vicini_.frame.Dettaglio();
    // A row that was begun and has nothing yet is to be given up, even where there is nothing to write.
    if (!dettaglio.HasChangedRow() && !dettaglio.HasNewRow() && !dettaglio.HasPendingRow()) {
        return true;
    }
    if (!dettaglio.UpdateBatch()) {
        return false;
    }
    vicini_.archivio.RigheScritte();
    return true;
}

/// A row without account cannot be stored: a changed sign may have emptied it.
bool EventiTestata::contiIndicati() {
    const auto riga = vicini_.regole.RigaSenzaConto();
    if (!riga) {
        return true;
    }
    ambiente_.form.errori.Messaggi()->ShowBox(
        "Indicare il conto di contabilità analitica di ogni riga per salvare la correlazione.",
        services::styleExclamation, "Attenzione");
    vicini_.dettaglio.ChiediConto(*riga);
    return false;
}

void EventiTestata::rifiuta(const std::string& righe) {
    ambiente_.form.errori.Messaggi()->ShowBox(
        "Attenzione, non è ammesso salvare una correlazione con la somma delle percentuali\r\n" + righe,
        services::styleExclamation, "Controllo correlazione");
}

void EventiTestata::gclsFrameTestata_AfterUpdate(bool riuscito) {
    ambiente_.form.errori.Esegui("gclsFrameTestata_AfterUpdate", [&] {
        if (!riuscito) {
            return;
        }
        const std::string causale = controlli_.TXT_CAUSALE.Text();
        vicini_.archivio.AggiornamentoDatabase(causale,
                                               vicini_.frame.Dettaglio()->Recordset()->RecordCount());
        if (statoAlSalvataggio_ == frames::statusAddingNew) {
            vicini_.lista.Aggiungi(causale, controlli_.TXT_DESCRCAUSALE.Caption());
        }
    });
}

void EventiTestata::gclsFrameTestata_BeforeDelete(bool& annulla) {
    annulla = ambiente_.form.errori.Esegui("gclsFrameTestata_BeforeDelete:", true, [&] {
        if (annulla) {
            return true;
        }
        causaleDaEliminare_ = nullSafeText(controlli_.TXT_CAUSALE.Text());
        vicini_.archivio.RimozioneRigheDettaglio(causaleDaEliminare_);
        return false;
    });
}

void EventiTestata::gclsFrameTestata_AfterDelete(bool riuscito) {
    ambiente_.form.errori.Esegui("gclsFrameTestata_AfterDelete", [&] {
        if (!riuscito) {
            // The rows went before the header could not: they are fetched back from what is stored.
            vicini_.archivio.RipresaRigheDettaglio();
            vicini_.dettaglio.AbilitazioneDettaglio(vicini_.frame.ShowChild());
            return;
        }
        vicini_.archivio.CancellazioneCorrelazione(causaleDaEliminare_);
        vicini_.lista.Rimuovi(causaleDaEliminare_);
    });
}

void EventiTestata::gclsFrameTestata_AfterUndo(bool riuscito) {
    ambiente_.form.errori.Esegui("gclsFrameTestata_AfterUndo", [&] {
        if (!riuscito) {
            return;
        }
        // What is stored is shown again; rows that could not be fetched are, by the status that follows.
        if (vicini_.archivio.DaArchiviare() && !vicini_.archivio.RipresaRigheDettaglio()) {
            return;
        }
        vicini_.frame.Dettaglio()->Requery();
        vicini_.frame.Dettaglio()->Refresh();
    });
}

void EventiTestata::gclsFrameTestata_ChangeStatus(std::int16_t nuovo, std::int16_t precedente) {
    ambiente_.form.errori.Esegui("gclsFrameTestata_ChangeStatus", [&] {
        controlli_.TXT_CAUSALE.SetEnabled(nuovo == frames::statusAddingNew);
        if (nuovo == frames::statusBrowsing) {
            const bool mostrate = precedente == frames::statusSaving || vicini_.frame.ShowChild();
            const std::string causale = vicini_.frame.CausaleCorrente();
            vicini_.dettaglio.AbilitazioneDettaglio(mostrate && !causale.empty()); // rows belong to a causale
            vicini_.lista.Seleziona(causale);
        } else if (nuovo == frames::statusAddingNew) {
            vicini_.frame.ClearChild();
            vicini_.dettaglio.AbilitazioneDettaglio(false);
        }
    });
}

void EventiTestata::gclsFrameTestata_IsRecordChanged(bool& modificato) {
    ambiente_.form.errori.Esegui("gclsFrameTestata_IsRecordChanged", [&] {
        const frames::VirtualFrame& dettaglio = *vicini_.frame.Dettaglio();
        modificato = modificato || dettaglio.HasChangedRow() || dettaglio.HasNewRow() ||
                     vicini_.archivio.DaArchiviare();
    });
}

void EventiTestata::gclsFrameTestata_Failed() {
    ambiente_.form.errori.Esegui("gclsFrameTestata_Failed", [] { throw; });
}

void EventiTestata::ModificaSospesa() {
    controlli_.TXT_CAUSALE.SetEnabled(false);
    vicini_.dettaglio.AbilitazioneDettaglio(false);
}

} // namespace veldran
