#include "causali/appunti_lista.h"

#include "causali/frmci_causdup.h"
#include "causali/lista_causali.h"
#include "causali/menu_appunti.h"
#include "correlation/frame_correlazioni.h"
#include "platform/text.h"

#include <stdexcept>

namespace veldran {

namespace {

bool stessaCausale(const std::string& una, const std::string& altra) {
    return compareBlindly(una, altra) == 0;
}

} // namespace

AppuntiLista::AppuntiLista(AmbienteCorrelazioni& ambiente, Controlli controlli, Vicini vicini)
    : ambiente_(ambiente), controlli_(controlli), vicini_(vicini), gclsPopupList_(controlli.form),
      scelta_(gclsPopupList_.AfterItemClick.subscribe(
          [this](const std::string& chiave) { gclsPopupList_AfterItemClick(chiave); })) {}

void AppuntiLista::AttivazioneCopiaList() {
    riempi("AttivazioneCopiaList:", ModoAppunti::Copia);
}

void AppuntiLista::AttivazioneTagliaList() {
    riempi("AttivazioneTagliaList:", ModoAppunti::Taglia);
}

void AppuntiLista::riempi(const char* etichetta, ModoAppunti modo) {
    ambiente_.form.errori.Esegui(etichetta, [&] {
        // Settling may save a new correlation, which is then the selected one.
        const auto riga = controlli_.LST_CAUSALI.SelectedItem();
        if (!riga || !modificheRisolte()) {
            return;
        }
        modo_ = modo;
        rigaOrigine_ = riga;
        causaleOrigine_ = riga->Text();
        didascalia_ = nullSafeText(causaleOrigine_) + " - " + nullSafeText(riga->SubItem(0));
    });
}

/// Pending edits are saved or given up, as the user says. \return false when he stays with them.
bool AppuntiLista::modificheRisolte() const {
    return vicini_.frame.Testata() == nullptr || vicini_.frame.Testata()->QueryUnload(true, false, true);
}

/// Moves the header to the highlighted causale, which the user means. \return false when he stays with
/// pending edits of another one.
bool AppuntiLista::mostraSelezionata() const {
    const auto riga = controlli_.LST_CAUSALI.SelectedItem();
    if (!riga) {
        return true;
    }
    if (!vicini_.lista.ChangeItem(riga)) {
        return false;
    }
    if (!stessaCausale(vicini_.frame.CausaleCorrente(), riga->Tag())) {
        throw std::runtime_error("La causale " + riga->Tag() +
                                 " non è tra quelle in modifica: uscire dalle correlazioni e rientrarvi");
    }
    return true;
}

void AppuntiLista::svuota() {
    modo_ = ModoAppunti::Vuoto;
    rigaOrigine_.reset();
    causaleOrigine_.clear();
    didascalia_.clear();
}

void AppuntiLista::CorrelazioneEliminata() {
    if (rigaOrigine_) {
        causaleOrigine_.clear();
        didascalia_.clear();
    }
}

void AppuntiLista::IncollaCorrelazioneList() {
    ambiente_.form.errori.Esegui("IncollaCorrelazioneList:", [this] {
        const PuntatoreOccupato occupato(ambiente_.form.schermo);
        const auto riga = controlli_.LST_CAUSALI.SelectedItem();
        // What is shown anew afterwards would lose pending edits.
        if (riga && !stessaCausale(riga->Tag(), causaleOrigine_) && modificheRisolte()) {
            vicini_.lista.Seleziona(riga->Tag()); // a new correlation that was saved has been selected
            if (modo_ == ModoAppunti::Copia) {
                CopiaIncollaCorrelazioneList();
            } else {
                TagliaIncollaCorrelazioneList();
            }
            mostraEsito();
        }
    });
    // Also after a failure: a source that was moved already has nothing that could replace what another has.
    if (modo_ == ModoAppunti::Taglia) {
        svuota();
    }
}

/// What was written outside the frames is shown in them and in the list.
void AppuntiLista::mostraEsito() {
    vicini_.frame.RefreshVirtualFrames();
    vicini_.lista.CaricamentoListaCausali();
    vicini_.lista.Seleziona(controlli_.TXT_CAUSALE.Text());
}

bool AppuntiLista::CopiaIncollaCorrelazioneList() {
    return ambiente_.form.errori.Esegui("CopiaIncollaCorrelazioneList:", false, [this] {
        const std::string origine = nullSafeText(causaleOrigine_);
        const std::string destinazione = nullSafeText(controlli_.LST_CAUSALI.SelectedItem()->Tag());
        if (origine.empty() || destinazione.empty() || stessaCausale(origine, destinazione) ||
            !conferma(ambiente_.form, "Sostituire la correlazione della causale di destinazione?")) {
            return false;
        }
        vicini_.copie.EliminaCausale(ambiente_.conto, destinazione);
        vicini_.copie.CopiaCausale(destinazione, ambiente_.conto, origine);
        return true;
    });
}

void AppuntiLista::TagliaIncollaCorrelazioneList() {
    ambiente_.form.errori.Esegui("TagliaIncollaCorrelazioneList:", [this] {
        if (CopiaIncollaCorrelazioneList()) {
            vicini_.copie.EliminaCausale(ambiente_.conto, causaleOrigine_);
        }
    });
}

void AppuntiLista::EliminaCorrelazioneList() {
    ambiente_.form.errori.Esegui("EliminaCorrelazioneList:", [this] {
        if (vicini_.frame.Testata() != nullptr && mostraSelezionata()) {
            vicini_.frame.Testata()->Delete();
            vicini_.frame.NuovaSeVuota();
        }
        if (controlli_.LST_CAUSALI.Items().empty()) {
            controlli_.TXT_CAUSALE.SetFocus();
        } else {
            controlli_.LST_CAUSALI.SetFocus();
        }
    });
}

void AppuntiLista::DuplicaCorrelazioneList() {
    ambiente_.form.errori.Esegui("DuplicaCorrelazioneList:", [this] {
        services::LookupService& ricerche = ambiente_.globale.Lookups();
        const auto dialogo = std::make_shared<FRMCI_CAUSDUP>(); // shared with the window service while shown
        dialogo->Connessione(ambiente_.form.connessione);
        dialogo->LookupCOIN(&ricerche);
        dialogo->DecodeCOIN(&ricerche);
        dialogo->StringaDiConnessione(ambiente_.form.stringaConnessione);
        dialogo->CodiceDitta(ambiente_.form.codiceDitta);
        dialogo->Errori(&ambiente_.form.errori);
        ambiente_.globale.Windows().ShowForm(dialogo, true, 0);
        if (!dialogo->IsValid()) {
            return;
        }
        const auto riga = controlli_.LST_CAUSALI.SelectedItem();
        const std::string origine = riga ? nullSafeText(riga->Tag()) : std::string();
        // What is shown anew afterwards would lose pending edits; they may be of that very causale.
        if (giaCorrelata(dialogo->Causale()) || !modificheRisolte() || giaCorrelata(dialogo->Causale())) {
            return;
        }
        vicini_.copie.CopiaCausale(dialogo->Causale(), ambiente_.conto, origine);
        mostraEsito();
    });
}

bool AppuntiLista::giaCorrelata(const std::string& causale) const {
    if (!vicini_.lista.RigaDi(causale)) {
        return false;
    }
    ambiente_.form.errori.Messaggi()->ShowBox("La causale di destinazione è già correlata",
                                              services::styleExclamation, "Attenzione");
    return true;
}

void AppuntiLista::PopupListMenu(const controls::ListView::Item& riga, int x, int y,
                                 const controls::Control* ancora) {
    ambiente_.form.errori.Esegui("PopupListMenu:", [&] {
        if (!riga) {
            return;
        }
        const VociAppunti voci{modo_, didascalia_};
        gclsPopupList_.Clear();
        gclsPopupList_.SetName("PopupList");
        gclsPopupList_.AddItem("Copia correlazione", "ListCopia");
        gclsPopupList_.AddItem("Taglia correlazione", "ListTaglia");
        gclsPopupList_.AddItem(voci.Incolla(), "ListIncolla", voci.Vuoti());
        gclsPopupList_.AddItem("-", "ListSep1");
        gclsPopupList_.AddItem(voci.Annulla(), "ListAnnulla", voci.Vuoti());
        gclsPopupList_.AddItem("-", "ListSep2");
        gclsPopupList_.AddItem("DuplicaCorrelazione", "ListDuplica");
        gclsPopupList_.AddItem("Elimina correlazione", "ListElimina");
        if (ancora != nullptr) {
            gclsPopupList_.ShowAt(*ancora);
            return;
        }
        const auto angolo = controlli_.LST_CAUSALI.ScreenOrigin();
        const services::Screen& schermo = ambiente_.form.schermo;
        gclsPopupList_.ShowAt(x / schermo.TwipsPerPixelX() + angolo.x,
                              y / schermo.TwipsPerPixelY() + angolo.y);
    });
}

void AppuntiLista::gclsPopupList_AfterItemClick(const std::string& chiave) {
    ambiente_.form.errori.Esegui("gclsPopupList_AfterItemClick", [&] {
        const controls::FormRedrawLock blocco(controlli_.form);
        if (chiave == "ListCopia") {
            AttivazioneCopiaList();
        } else if (chiave == "ListTaglia") {
            AttivazioneTagliaList();
        } else if (chiave == "ListIncolla") {
            IncollaCorrelazioneList();
        } else if (chiave == "ListAnnulla") {
            svuota();
        } else if (chiave == "ListDuplica") {
            DuplicaCorrelazioneList();
        } else if (chiave == "ListElimina") {
            EliminaCorrelazioneList();
        }
    });
}

} // namespace veldran
