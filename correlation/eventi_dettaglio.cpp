#include "correlation/eventi_dettaglio.h"

#include "correlation/frame_correlazioni.h"
#include "correlation/regole_correlazione.h"

namespace veldran {

void EventiDettaglio::gclsFrameDettaglio_AfterAddNew(bool riuscito) {
    ambiente_.form.errori.Esegui("gclsFrameDettaglio_AfterAddNew", [&] {
        if (!riuscito) {
            return;
        }
        ado::Fields& campi = frame_.Dettaglio()->Recordset()->Fields();
        campi["CAUSALE"].Value(controlli_.TXT_CAUSALE.Text());
        campi["PDC"].Value(ambiente_.codicePDCCoin);
        regole_.ImpostaDefaultSegno();
    });
}

void EventiDettaglio::gclsFrameDettaglio_BeforeUpdate(bool& annulla) {
    annulla = ambiente_.form.errori.Esegui("gclsFrameDettaglio_BeforeUpdate", true, [&] {
        if (annulla ||
            !esiste(controlli_.TXT_CONTO, "CONTO",
                    "Il conto indicato non esiste o non è ammesso per la causale e il segno della riga.") ||
            !esiste(controlli_.TXT_VDS, "CONTOVDS", "La voce di spesa indicata non esiste.")) {
            return true;
        }
        ado::Fields& campi = frame_.Dettaglio()->Recordset()->Fields();
        const Value segno = campi["SEGNO"].Value();
        const Value conto = campi["CONTO"].Value();
        const auto seSegno = [&](SegnoCorrelazione voluto) {
            return !segno.isNull() && segno.toInt32() == voluto ? conto : Value();
        };
        campi["AVERE"].Value(seSegno(segnoAvere));
        campi["DARE"].Value(seSegno(segnoDare));
        if (ambiente_.gestioneVds && !nullSafeText(campi["CONTOVDS"].Value()).empty()) {
            campi["PDCVDS"].Value(ambiente_.codicePDCVds);
        }
        return false;
    });
}

bool EventiDettaglio::esiste(controls::LookupField& campo, const char* colonna, const std::string& rifiuto) {
    if (!campo.IsUnknownItem() || eraIndicato(colonna)) {
        return true;
    }
    ambiente_.form.errori.Messaggi()->ShowBox(rifiuto, services::styleExclamation, "Attenzione");
    campo.SetFocus();
    return false;
}

/// A code that was stored long ago may have gone since: its row can still be worked on, wherever it was
/// moved.
bool EventiDettaglio::eraIndicato(const char* colonna) const {
    ado::Recordset& righe = *frame_.Dettaglio()->Recordset();
    const std::string indicato = nullSafeText(righe.Fields()[colonna].Value());
    const auto copia = righe.Clone(ado::adLockReadOnly);
    for (; !copia->EndOfFile(); copia->MoveNext()) {
        if (nullSafeText(copia->Fields()[colonna].OriginalValue()) == indicato) {
            return true;
        }
    }
    return false;
}

void EventiDettaglio::gclsFrameDettaglio_ChangeStatus(std::int16_t nuovo) {
    ambiente_.form.errori.Esegui("gclsFrameDettaglio_ChangeStatus", [&] {
        if (nuovo == frames::statusAddingNew) {
            SpegniSpostamenti();
        } else if (nuovo == frames::statusBrowsing) {
            const ado::Recordset& righe = *frame_.Dettaglio()->Recordset();
            const auto posizione = righe.AbsolutePosition();
            controlli_.CMD_SU.SetEnabled(posizione >= 2);
            controlli_.CMD_GIU.SetEnabled(posizione >= 1 && posizione < righe.RecordCount());
        }
    });
}

void EventiDettaglio::gclsFrameDettaglio_UpdateBatchAll(bool& scritto) {
    scritto = false;
    ambiente_.form.errori.Esegui("gclsFrameDettaglio_UpdateBatchAll", [&] {
        frames::VirtualFrame& dettaglio = *frame_.Dettaglio();
        const auto righe = dettaglio.Recordset();
        if (dettaglio.HasPendingRow() && dettaglio.Status() == frames::statusAddingNew) {
            righe->CancelUpdate();
        }
        // Deleted rows are still to be written when none is left.
        if (righe->RecordCount() == 0 && !dettaglio.HasChangedRow()) {
            scritto = true;
            return;
        }
        dettaglio.DetachData();
        if (!regole_.EnumerazioneRigheDettaglio()) {
            return; // the frame takes its data up again
        }
        righe->UpdateBatch(ado::adAffectAll);
        scritto = true; // also when they cannot be shown again: #DETTAGLIO has them, and the save goes on
        dettaglio.AttachData();
    });
}

void EventiDettaglio::gclsFrameDettaglio_Failed() {
    ambiente_.form.errori.Esegui("gclsFrameDettaglio_Failed", [] { throw; });
}

void EventiDettaglio::SpegniSpostamenti() {
    controlli_.CMD_SU.SetEnabled(false);
    controlli_.CMD_GIU.SetEnabled(false);
}

} // namespace veldran
