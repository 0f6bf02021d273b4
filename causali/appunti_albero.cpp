#include "causali/appunti_albero.h"

#include "accounts/filtri.h"
#include "causali/menu_appunti.h"
#include "tree/albero_conti.h"
#include "tree/cnode_info.h"

#include <utility>

namespace veldran {

AppuntiAlbero::AppuntiAlbero(AmbienteCorrelazioni& ambiente, controls::TreeView& conti,
                             const controls::Form& form, Vicini vicini)
    : ambiente_(ambiente), conti_(conti), vicini_(vicini), gclsPopupTree_(form),
      scelta_(gclsPopupTree_.AfterItemClick.subscribe(
          [this](const std::string& chiave) { gclsPopupTree_AfterItemClick(chiave); })) {}

void AppuntiAlbero::AttivazioneCopiaTree(controls::TreeNode& nodo) {
    riempi("AttivazioneCopiaTree:", ModoAppunti::Copia, nodo);
}

void AppuntiAlbero::AttivazioneTagliaTree(controls::TreeNode& nodo) {
    riempi("AttivazioneTagliaTree:", ModoAppunti::Taglia, nodo);
}

void AppuntiAlbero::riempi(const char* etichetta, ModoAppunti modo, const controls::TreeNode& nodo) {
    ambiente_.form.errori.Esegui(etichetta, [&] {
        const CNodeInfo* info = CNodeInfo::Di(nodo);
        if (info == nullptr) {
            return;
        }
        std::string didascalia = nullSafeText(nodo.Text());
        contoOrigine_ = info->CodiceConto();
        naturaOrigine_ = info->NaturaConto();
        didascalia_ = std::move(didascalia);
        modo_ = modo;
    });
}

void AppuntiAlbero::svuota() {
    modo_ = ModoAppunti::Vuoto;
    contoOrigine_.clear();
    didascalia_.clear();
    naturaOrigine_ = Ordine;
}

void AppuntiAlbero::IncollaCorrelazioneTree(controls::TreeNode&) {
    ambiente_.form.errori.Esegui("IncollaCorrelazioneTree:", [this] {
        const PuntatoreOccupato occupato(ambiente_.form.schermo);
        const controls::TreeNode* nodo = conti_.SelectedItem();
        const CNodeInfo* info = CNodeInfo::Di(nodo);
        if (info != nullptr && info->CodiceConto() != contoOrigine_) {
            if (modo_ == ModoAppunti::Copia) {
                CopiaIncollaCorrelazioneTree();
            } else {
                TagliaIncollaCorrelazioneTree();
            }
            vicini_.filtri.RiportoCorrelato();
            conti_.Refresh();
        }
    });
    // Also after a failure: a source that was moved already has nothing that could replace what another has.
    if (modo_ == ModoAppunti::Taglia) {
        svuota();
    }
}

bool AppuntiAlbero::CopiaIncollaCorrelazioneTree() {
    return ambiente_.form.errori.Esegui("CopiaIncollaCorrelazioneTree:", false, [this] {
        controls::TreeNode& nodo = *conti_.SelectedItem();
        const CNodeInfo& info = *CNodeInfo::Di(nodo);
        const std::string origine = nullSafeText(contoOrigine_);
        const std::string destinazione = nullSafeText(info.CodiceConto());
        if (origine.empty() || destinazione.empty() || origine == destinazione) {
            return false;
        }
        if (info.IsCorrelato() &&
            !conferma(ambiente_.form, "Sostituire la correlazione del conto di destinazione?")) {
            return false;
        }
        vicini_.copie.EliminaConto(destinazione);
        vicini_.copie.CopiaConto(destinazione, origine);
        segna(&nodo, destinazione, true);
        return true;
    });
}

void AppuntiAlbero::TagliaIncollaCorrelazioneTree() {
    ambiente_.form.errori.Esegui("TagliaIncollaCorrelazioneTree:", [this] {
        if (CopiaIncollaCorrelazioneTree()) {
            vicini_.copie.EliminaConto(contoOrigine_);
            segna(nodoOrigine(), contoOrigine_, false);
        }
    });
}

/// nullptr while the tree has not loaded the source account.
controls::TreeNode* AppuntiAlbero::nodoOrigine() const {
    return vicini_.albero.NodoPerChiave(vicini_.albero.GetKeyByCode(naturaOrigine_, contoOrigine_));
}

void AppuntiAlbero::segna(controls::TreeNode* nodo, const std::string& conto, bool correlato) {
    if (CNodeInfo* info = CNodeInfo::Di(nodo)) {
        info->ChangeStatoCorrelazione(*nodo, correlato);
    }
    vicini_.filtri.ImpostazioneCorrelato(correlato, conto);
}

void AppuntiAlbero::EliminaCorrelazioneTree() {
    ambiente_.form.errori.Esegui("EliminaCorrelazioneTree:", [this] {
        if (!conferma(ambiente_.form,
                      "Tutte le correlazioni memorizzate per il conto selezionato verranno eliminate, "
                      "procedere comunque?")) {
            return;
        }
        controls::TreeNode* nodo = conti_.SelectedItem();
        const CNodeInfo* info = CNodeInfo::Di(nodo);
        if (info == nullptr) {
            return;
        }
        vicini_.copie.EliminaConto(info->CodiceConto());
        segna(nodo, info->CodiceConto(), false);
        vicini_.filtri.RiportoCorrelato();
        conti_.Refresh();
    });
}

void AppuntiAlbero::ComponiPopupTree() {
    const controls::TreeNode* nodo = conti_.SelectedItem();
    const CNodeInfo* info = CNodeInfo::Di(nodo);
    const bool correlabile = info != nullptr && info->IsAnalitico() && info->IsCorrelato();
    const VociAppunti voci{modo_, didascalia_};
    gclsPopupTree_.Clear();
    gclsPopupTree_.SetName("PopupTree");
    gclsPopupTree_.AddItem("Copia correlazione", "TreeCopia", !correlabile);
    gclsPopupTree_.AddItem("Taglia correlazione", "TreeTaglia", !correlabile);
    gclsPopupTree_.AddItem(voci.Incolla(), "TreeIncolla", voci.Vuoti());
    gclsPopupTree_.AddItem("-", "TreeSep1");
    gclsPopupTree_.AddItem(voci.Annulla(), "TreeAnnulla", voci.Vuoti());
    gclsPopupTree_.AddItem("-", "TreeSep2");
    gclsPopupTree_.AddItem("Elimina correlazione", "TreeElimina", !correlabile);
}

void AppuntiAlbero::gclsPopupTree_AfterItemClick(const std::string& chiave) {
    ambiente_.form.errori.Esegui("gclsPopupTree_AfterItemClick", [&] {
        controls::TreeNode* nodo = conti_.SelectedItem();
        if (chiave == "TreeAnnulla") {
            svuota();
        } else if (chiave == "TreeElimina") {
            EliminaCorrelazioneTree();
        } else if (nodo != nullptr && chiave == "TreeCopia") {
            AttivazioneCopiaTree(*nodo);
        } else if (nodo != nullptr && chiave == "TreeTaglia") {
            AttivazioneTagliaTree(*nodo);
        } else if (nodo != nullptr && chiave == "TreeIncolla") {
            IncollaCorrelazioneTree(*nodo);
        }
    });
}

} // namespace veldran
