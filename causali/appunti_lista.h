#pragma once

#include "causali/appunti_causali.h"
#include "causali/copie_correlazioni.h"
#include "platform/controls/form.h"
#include "platform/controls/list_view.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/popup_menu.h"

#include <string>

namespace veldran {

class FrameCorrelazioni;
class ListaCausali;

/// The clipboard of one causale's correlation, and the list's menu. The clipboard does not remember the
/// account: a paste always works on the account that is being edited. It lives as long as the form.
class AppuntiLista final : public AppuntiCausali {
public:
    struct Controlli {
        controls::Form& form;
        controls::ListView& LST_CAUSALI;
        controls::LookupField& TXT_CAUSALE;
    };
    struct Vicini {
        FrameCorrelazioni& frame;
        ListaCausali& lista;
        CopieCorrelazioni& copie;
    };

    AppuntiLista(AmbienteCorrelazioni& ambiente, Controlli controlli, Vicini vicini);

    bool CorrelazioneInSospeso() const override { return modo_ != ModoAppunti::Vuoto; }
    /// Pending edits are settled first; when the user stays with them the clipboard is left as it was.
    void AttivazioneCopiaList() override;
    void AttivazioneTagliaList() override;
    /// Pastes onto the selected causale. A cut ends with it, whatever came of it.
    void IncollaCorrelazioneList() override;
    void PopupListMenu(const controls::ListView::Item& riga, int x, int y,
                       const controls::Control* ancora) override;
    void CorrelazioneEliminata() override;
    /// Deletes the correlation of the highlighted causale through the header frame, with the frame's own
    /// confirmation; without a highlight, the one that the header shows.
    void EliminaCorrelazioneList();
    /// Gives the selected causale's correlation to a causale that the user chooses and that has none. Pending
    /// edits are settled between the choice and the copy.
    void DuplicaCorrelazioneList();

    void gclsPopupList_AfterItemClick(const std::string& chiave);

private:
    void riempi(const char* etichetta, ModoAppunti modo);
    bool modificheRisolte() const;
    bool mostraSelezionata() const;
    bool giaCorrelata(const std::string& causale) const;
    void svuota();
    bool CopiaIncollaCorrelazioneList();
    void TagliaIncollaCorrelazioneList();
    void mostraEsito();

    AmbienteCorrelazioni& ambiente_;
    Controlli controlli_;
    Vicini vicini_;
    controls::PopupMenu gclsPopupList_;
    Subscription scelta_;
    ModoAppunti modo_ = ModoAppunti::Vuoto;
    controls::ListView::Item rigaOrigine_; ///< may have left the list
    std::string causaleOrigine_;
    std::string didascalia_;
};

} // namespace veldran
