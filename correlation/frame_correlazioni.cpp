#include "correlation/frame_correlazioni.h"

#include "correlation/archivio_correlazioni.h"
#include "correlation/eventi_dettaglio.h"
#include "correlation/eventi_testata.h"

#include <stdexcept>
#include <utility>

namespace veldran {

FrameCorrelazioni::FrameCorrelazioni(AmbienteCorrelazioni& ambiente, Controlli controlli,
                                     ArchivioCorrelazioni& archivio)
    : ambiente_(ambiente), controlli_(controlli), archivio_(archivio) {}

FrameCorrelazioni::~FrameCorrelazioni() = default;

void FrameCorrelazioni::UsaEventi(EventiTestata& testata, EventiDettaglio& dettaglio) {
    eventiTestata_ = &testata;
    eventiDettaglio_ = &dettaglio;
}

void FrameCorrelazioni::ConfigurazioneVirtualFrame() {
    ambiente_.form.errori.Esegui("ConfigurazioneVirtualFrame:", [this] {
        sospendi(); // until the frames stand; also releases those of an entry that failed half-way
        if (!archivio_.PreparazioneTabelleTestataDettaglio()) {
            return;
        }
        auto testata = nuovoFrame("la correlazione", frames::LeavePolicy::Ask);
        testata->Bind(controlli_.INV_TESTATA);
        testata->Bind(controlli_.TXT_CAUSALE, "CAUSALE", &controlli_.TXT_DESCRCAUSALE);
        testata->Unique("CAUSALE");
        testata->Open(sql::letturaTestata(), ambiente_.form.connessione, ado::adLockOptimistic);

        auto dettaglio = nuovoFrame("la riga", frames::LeavePolicy::Save);
        dettaglio->Bind(controlli_.GNV_DETTAGLIO);
        dettaglio->Bind(controlli_.GRD_DETTAGLIO);
        dettaglio->Bind(controlli_.CBO_SEGNO, "SEGNO");
        dettaglio->Bind(controlli_.TXT_PERC, "PERCENTUALE");
        dettaglio->Bind(controlli_.TXT_CONTO, "CONTO", &controlli_.TXT_DESCRCONTO);
        if (ambiente_.gestioneVds) {
            dettaglio->Bind(controlli_.TXT_VDS, "CONTOVDS", &controlli_.TXT_DESCRVDS);
        }
        dettaglio->Open(sql::letturaDettaglioVuoto(), ambiente_.form.connessione, ado::adLockBatchOptimistic);
        testata->Follow(*dettaglio);

        gclsFrameDettaglio_ = std::move(dettaglio);
        gclsFrameTestata_ = std::move(testata);
        collegaEventi();
        controlli_.INV_TESTATA.SetEnabled(true);
    });
}

std::unique_ptr<frames::VirtualFrame> FrameCorrelazioni::nuovoFrame(std::string nome,
                                                                    frames::LeavePolicy uscita) const {
    services::MessageService* messaggi = ambiente_.form.errori.Messaggi();
    if (messaggi == nullptr) {
        throw std::logic_error("Il form non ha un servizio messaggi");
    }
    return std::make_unique<frames::VirtualFrame>(*messaggi, std::move(nome), uscita);
}

void FrameCorrelazioni::collegaEventi() {
    const auto collega = [this](Subscription evento) { eventi_.push_back(std::move(evento)); };
    frames::VirtualFrame& testata = *gclsFrameTestata_;
    EventiTestata& t = *eventiTestata_;
    collega(
        testata.BeforeUpdate.subscribe([&t](bool& annulla) { t.gclsFrameTestata_BeforeUpdate(annulla); }));
    collega(testata.AfterUpdate.subscribe([&t](bool riuscito) { t.gclsFrameTestata_AfterUpdate(riuscito); }));
    collega(
        testata.BeforeDelete.subscribe([&t](bool& annulla) { t.gclsFrameTestata_BeforeDelete(annulla); }));
    collega(testata.AfterDelete.subscribe([&t](bool riuscito) { t.gclsFrameTestata_AfterDelete(riuscito); }));
    collega(testata.AfterUndo.subscribe([&t](bool riuscito) { t.gclsFrameTestata_AfterUndo(riuscito); }));
    collega(testata.ChangeStatus.subscribe([&t](std::int16_t nuovo, std::int16_t precedente) {
        t.gclsFrameTestata_ChangeStatus(nuovo, precedente);
    }));
    collega(testata.RecordChanged.subscribe(
        [&t](bool& modificato) { t.gclsFrameTestata_IsRecordChanged(modificato); }));
    collega(testata.Failed.subscribe([&t](const std::exception&) { t.gclsFrameTestata_Failed(); }));

    frames::VirtualFrame& dettaglio = *gclsFrameDettaglio_;
    EventiDettaglio& d = *eventiDettaglio_;
    collega(
        dettaglio.AfterAddNew.subscribe([&d](bool riuscito) { d.gclsFrameDettaglio_AfterAddNew(riuscito); }));
    collega(dettaglio.BeforeUpdate.subscribe(
        [&d](bool& annulla) { d.gclsFrameDettaglio_BeforeUpdate(annulla); }));
    collega(dettaglio.ChangeStatus.subscribe(
        [&d](std::int16_t nuovo, std::int16_t) { d.gclsFrameDettaglio_ChangeStatus(nuovo); }));
    collega(dettaglio.UpdateBatchAll.subscribe(
        [&d](bool& scritto) { d.gclsFrameDettaglio_UpdateBatchAll(scritto); }));
    collega(dettaglio.Failed.subscribe([&d](const std::exception&) { d.gclsFrameDettaglio_Failed(); }));
}

void FrameCorrelazioni::RimozioneVirtualFrame() {
    ambiente_.form.errori.Esegui("RimozioneVirtualFrame:", [this] {
        inModifica_ = false;
        eventi_.clear();
        rilasciaFrame(gclsFrameTestata_);
        rilasciaFrame(gclsFrameDettaglio_);
        controlli_.INV_TESTATA.SetEnabled(false);
    });
}

/// What the frames showed is not what is stored, and must not be edited.
void FrameCorrelazioni::sospendi() {
    RimozioneVirtualFrame();
    inModifica_ = true;
    eventiTestata_->ModificaSospesa();
    eventiDettaglio_->SpegniSpostamenti();
}

void FrameCorrelazioni::rilasciaFrame(std::unique_ptr<frames::VirtualFrame>& frame) {
    if (!frame) {
        return;
    }
    const auto rilasciato = std::exchange(frame, nullptr); // released also when closing fails
    rilasciato->Close();
}

void FrameCorrelazioni::MostraTestata() {
    const bool vuota = gclsFrameTestata_->Recordset()->RecordCount() < 1;
    gclsFrameTestata_->SetStatus(vuota ? frames::statusAddingNew : frames::statusBrowsing);
}

void FrameCorrelazioni::RefreshVirtualFrames() {
    const bool mostrati = ambiente_.form.errori.Esegui("RefreshVirtualFrames:", false, [this] {
        if (Sospesa()) {
            ConfigurazioneVirtualFrame();
            if (gclsFrameTestata_) {
                MostraTestata();
            }
            return true;
        }
        if (!gclsFrameTestata_) {
            return true;
        }
        const std::string causale = CausaleCorrente();
        if (!archivio_.PreparazioneTabelleTestataDettaglio()) {
            return false;
        }
        gclsFrameTestata_->Requery();
        if (const auto record = RecordDiCausale(causale)) {
            gclsFrameTestata_->MoveTo(*record);
        }
        NuovaSeVuota();
        return true;
    });
    if (!mostrati) {
        ambiente_.form.errori.Esegui("RefreshVirtualFrames:", [this] { sospendi(); });
    }
}

bool FrameCorrelazioni::mostraRighe(const char* etichetta) {
    if (!archivio_.RigheIntere() && !archivio_.RipresaRigheDettaglio()) {
        nascondiRighe();
        return false;
    }
    return apriRighe(etichetta, [this] {
        // As the record holds it, trailing blanks included.
        return CausaleCorrente().empty()
                   ? sql::letturaDettaglioVuoto()
                   : sql::letturaDettaglio(
                         gclsFrameTestata_->Recordset()->Fields()["CAUSALE"].Value().toText());
    });
}

bool FrameCorrelazioni::apriRighe(const char* etichetta, const std::function<std::string()>& testo) {
    std::string voluto = sql::letturaDettaglioVuoto();
    const bool aperte = ambiente_.form.errori.Esegui(etichetta, false, [&] {
        voluto = testo();
        gclsFrameDettaglio_->Reopen(voluto);
        return true;
    });
    if (!aperte && gclsFrameDettaglio_) {
        gclsFrameDettaglio_->SetSource(voluto); // no later requery brings back those of another causale
        nascondiRighe();
    }
    return aperte;
}

/// What is still open are the rows of another causale: they must not pass for those of this one.
void FrameCorrelazioni::nascondiRighe() {
    ado::Recordset& righe = *gclsFrameDettaglio_->Recordset();
    righe.CancelUpdate();
    righe.CancelBatch();
    righe.Filter("CAUSALE = ''");
    gclsFrameDettaglio_->Refresh();
    eventiDettaglio_->SpegniSpostamenti();
}

void FrameCorrelazioni::NuovaSeVuota() {
    if (gclsFrameTestata_->Recordset()->RecordCount() < 1) {
        gclsFrameTestata_->SetStatus(frames::statusAddingNew);
    }
}

bool FrameCorrelazioni::QueryUnloadFrames() {
    // Only a question about unsaved changes can fail, and they are not given up over that.
    return ambiente_.form.errori.Esegui("QueryUnloadFrames:", true, [this] {
        return gclsFrameTestata_ && !gclsFrameTestata_->QueryUnload(true, false, true);
    });
}

std::string FrameCorrelazioni::CausaleCorrente() const {
    if (!gclsFrameTestata_ || !gclsFrameTestata_->HasRecords()) {
        return {};
    }
    ado::Recordset& record = *gclsFrameTestata_->Recordset();
    return record.AbsolutePosition() > 0 ? nullSafeText(record.Fields()["CAUSALE"].Value()) : std::string();
}

std::optional<ado::Bookmark> FrameCorrelazioni::RecordDiCausale(const std::string& causale) const {
    if (!gclsFrameTestata_) {
        return std::nullopt;
    }
    const auto copia = gclsFrameTestata_->Recordset()->Clone();
    copia->Filter("CAUSALE = '" + causale + "'");
    return copia->RecordCount() == 1 ? std::optional(copia->Bookmark()) : std::nullopt;
}

} // namespace veldran
