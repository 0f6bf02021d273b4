#include "causali/lista_causali.h"

#include "causali/appunti_causali.h"
#include "correlation/frame_correlazioni.h"
#include "platform/ado/recordset.h"
#include "platform/text.h"
#include "sql/commands.h"

#include <functional>

namespace veldran {

namespace {

std::string chiaveDi(const std::string& causale) {
    return "*" + nullSafeText(causale) + "*";
}

} // namespace

std::size_t ListaCausali::ChiaveCieca::operator()(const std::string& chiave) const {
    return std::hash<std::string>()(withFoldedCase(chiave));
}

bool ListaCausali::ChiaveCieca::operator()(const std::string& una, const std::string& altra) const {
    return withFoldedCase(una) == withFoldedCase(altra);
}

void ListaCausali::CaricamentoListaCausali() {
    ambiente_.form.errori.Esegui("CaricamentoListaCausali:", [this] {
        controls::ListView& lista = controlli_.LST_CAUSALI;
        if (!colonneImpostate_) {
            constexpr int larghezzaCodice = 550;
            lista.SetColumnWidth(0, larghezzaCodice);
            lista.SetColumnWidth(1, lista.Width() - larghezzaCodice);
            colonneImpostate_ = true;
        }
        if (contoElencato_ != ambiente_.conto) {
            svuota();
            contoElencato_ = ambiente_.conto;
        }
        if (!causali_) {
            causali_ =
                sql::textCommand(ambiente_.form.connessione, sql::causaliCorrelate(ambiente_.proprietario()),
                                 {sql::contoParameter("@CONTO")});
        }
        causali_->Parameters()["@CONTO"].Value(ambiente_.conto);
        const auto record = causali_->Execute();
        svuota();
        if (record && !(record->BOF() && record->EndOfFile())) {
            const ado::Field& causale = record->Fields()["CI03_CODCAUS"];
            const ado::Field& descrizione = record->Fields()["CI03_DESCR"];
            for (record->MoveFirst(); !record->EndOfFile(); record->MoveNext()) {
                aggiungi(nullSafeText(causale.Value()), nullSafeText(descrizione.Value()));
            }
        }
    });
}

void ListaCausali::Rilascia() {
    sql::release(causali_);
}

void ListaCausali::svuota() {
    indice_.clear(); // first: a view that fails to show the empty list leaves no row behind it
    controlli_.LST_CAUSALI.Clear();
}

void ListaCausali::aggiungi(const std::string& causale, const std::string& descrizione) {
    const Riga riga = controlli_.LST_CAUSALI.Add(chiaveDi(causale), causale);
    indice_.emplace(riga->Key(), riga);
    riga->SetSubItem(0, descrizione);
    riga->SetTag(causale);
}

void ListaCausali::Aggiungi(const std::string& causale, const std::string& descrizione) {
    if (!indice_.contains(chiaveDi(causale))) {
        aggiungi(nullSafeText(causale), descrizione);
    }
}

void ListaCausali::Rimuovi(const std::string& causale) {
    if (const Riga riga = RigaDi(causale)) {
        indice_.erase(riga->Key()); // first, as in svuota
        controlli_.LST_CAUSALI.Remove(riga->Key());
    }
    if (appunti_ != nullptr) {
        appunti_->CorrelazioneEliminata();
    }
}

ListaCausali::Riga ListaCausali::RigaDi(const std::string& causale) const {
    const auto trovata = indice_.find(chiaveDi(causale));
    return trovata == indice_.end() ? nullptr : trovata->second;
}

void ListaCausali::Seleziona(const std::string& causale) {
    if (const Riga riga = RigaDi(causale)) {
        controlli_.LST_CAUSALI.SetSelectedItem(riga);
    }
}

bool ListaCausali::ChangeItem(const Riga& riga) {
    return ambiente_.form.errori.Esegui("ChangeItem:", true, [&] {
        if (!riga) {
            return true;
        }
        if (frame_.Sospesa()) {
            frame_.RefreshVirtualFrames(); // perhaps it succeeds by now
        }
        if (frame_.Testata() == nullptr) {
            return true;
        }
        const auto record = frame_.RecordDiCausale(riga->Tag());
        if (!record) {
            return true;
        }
        // Also for the current row: the header may have been moved by its navigator since.
        if (!frame_.Testata()->MoveTo(*record)) {
            riportaEvidenza();
            return false;
        }
        corrente_ = controlli_.LST_CAUSALI.SelectedItem();
        return true;
    });
}

/// To the causale still shown; a new one is not listed yet, and leaves the row that was current. The user has
/// not chosen that row: the header is not asked to move to it.
void ListaCausali::riportaEvidenza() {
    struct Riporto {
        explicit Riporto(bool& inCorso) : inCorso_(inCorso) { inCorso_ = true; }
        ~Riporto() { inCorso_ = false; }
        Riporto(const Riporto&) = delete;
        Riporto& operator=(const Riporto&) = delete;
        bool& inCorso_;
    } const riporto(riporto_);
    if (const Riga mostrata = RigaDi(frame_.CausaleCorrente())) {
        controlli_.LST_CAUSALI.SetSelectedItem(mostrata);
    } else if (corrente_ && corrente_->IsInList()) {
        controlli_.LST_CAUSALI.SetSelectedItem(corrente_);
    }
}

void ListaCausali::LST_CAUSALI_ItemClick(controls::ListItem& riga) {
    ambiente_.form.errori.Esegui("LST_CAUSALI_ItemClick", [&] {
        if (!riporto_ && controlli_.LST_CAUSALI.HasFocus()) {
            ChangeItem(controlli_.LST_CAUSALI.Find(riga.Key()));
        }
    });
}

/// The row under the pointer; for a hit whose index is 0 the first row, by the list's own message.
ListaCausali::Riga ListaCausali::rigaSotto(const controls::MouseEvent& evento) const {
    const controls::ListView& lista = controlli_.LST_CAUSALI;
    const services::Screen& schermo = ambiente_.form.schermo;
    const int x = evento.x / schermo.TwipsPerPixelX();
    const int y = evento.y / schermo.TwipsPerPixelY();
    const controls::ListHit punto = lista.HitTest(x, y);
    if (punto.index == 0) {
        return lista.Items().empty() ? nullptr : lista.Items().front();
    }
    return (punto.flags & controls::listHitItem) == 0 ? nullptr : lista.ItemAt(x, y);
}

void ListaCausali::LST_CAUSALI_MouseDown(const controls::MouseEvent& evento) {
    ambiente_.form.errori.Esegui("LST_CAUSALI_MouseDown", [&] {
        if (evento.button != controls::buttonRight) {
            return;
        }
        const Riga riga = rigaSotto(evento);
        if (!riga) {
            return;
        }
        const Riga& scelta = controlli_.LST_CAUSALI.SelectedItem();
        if ((!scelta || riga->Text() != scelta->Text()) && !ChangeItem(riga)) {
            return;
        }
        if (appunti_ != nullptr) {
            appunti_->PopupListMenu(riga, evento.x, evento.y, nullptr);
        }
    });
}

void ListaCausali::LST_CAUSALI_KeyDown(controls::KeyEvent& tasto) {
    ambiente_.form.errori.Esegui("LST_CAUSALI_KeyDown:", [&] {
        const Riga riga = controlli_.LST_CAUSALI.SelectedItem();
        if (!riga) {
            return;
        }
        if (tasto.keyCode == controls::keyReturn && tasto.shift == controls::shiftNone) {
            tasto.keyCode = 0;
            if (frame_.Dettaglio() != nullptr && frame_.Dettaglio()->HasRecords()) {
                controlli_.GRD_DETTAGLIO.SetFocus();
                controlli_.GRD_DETTAGLIO.Refresh();
            } else {
                controlli_.CBO_SEGNO.SetFocus();
            }
            return;
        }
        const bool menu = tasto.keyCode == controls::keyApps ||
                          (tasto.keyCode == controls::keyF10 && tasto.shift == controls::shiftShift);
        if (appunti_ == nullptr) {
            return;
        }
        if (menu) {
            appunti_->PopupListMenu(riga, 0, 0, &controlli_.LST_CAUSALI);
        } else if (tasto.shift == controls::shiftCtrl && tasto.keyCode == controls::keyC) {
            appunti_->AttivazioneCopiaList();
        } else if (tasto.shift == controls::shiftCtrl && tasto.keyCode == controls::keyX) {
            appunti_->AttivazioneTagliaList();
        } else if (tasto.shift == controls::shiftCtrl && tasto.keyCode == controls::keyV &&
                   appunti_->CorrelazioneInSospeso()) {
            appunti_->IncollaCorrelazioneList();
            controlli_.LST_CAUSALI.SetFocus();
        }
    });
}

} // namespace veldran
