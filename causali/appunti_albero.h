#pragma once

#include "causali/copie_correlazioni.h"
#include "platform/controls/popup_menu.h"
#include "platform/controls/tree_view.h"
#include "tree/appunti_correlazioni.h"
#include "tree/natura.h"

#include <string>

namespace veldran {

class AlberoConti;
class CNodeInfo;
class Filtri;

/// The clipboard of whole accounts' correlations: all causali of one account, copied or moved onto another,
/// which loses what it had. It lives as long as the form, whatever is selected or shown meanwhile.
class AppuntiAlbero final : public AppuntiCorrelazioni {
public:
    struct Vicini {
        AlberoConti& albero;
        Filtri& filtri;
        CopieCorrelazioni& copie;
    };

    /// \param form whose view would show the menu
    AppuntiAlbero(AmbienteCorrelazioni& ambiente, controls::TreeView& conti, const controls::Form& form,
                  Vicini vicini);

    bool CorrelazioneInSospeso() const override { return modo_ != ModoAppunti::Vuoto; }
    void AttivazioneCopiaTree(controls::TreeNode& nodo) override;
    void AttivazioneTagliaTree(controls::TreeNode& nodo) override;
    /// Pastes onto the selected account. A cut ends with it, whatever came of it.
    void IncollaCorrelazioneTree(controls::TreeNode& nodo) override;
    void EliminaCorrelazioneTree();

    /// Fills the tree's menu, which nothing opens: deliberately, deleting a whole account's correlation is
    /// not within the user's reach.
    void ComponiPopupTree();
    void gclsPopupTree_AfterItemClick(const std::string& chiave);
    const controls::PopupMenu& Menu() const { return gclsPopupTree_; }

private:
    void riempi(const char* etichetta, ModoAppunti modo, const controls::TreeNode& nodo);
    void svuota();
    bool CopiaIncollaCorrelazioneTree();
    void TagliaIncollaCorrelazioneTree();
    controls::TreeNode* nodoOrigine() const;
    void segna(controls::TreeNode* nodo, const std::string& conto, bool correlato);

    AmbienteCorrelazioni& ambiente_;
    controls::TreeView& conti_;
    Vicini vicini_;
    controls::PopupMenu gclsPopupTree_;
    Subscription scelta_;
    ModoAppunti modo_ = ModoAppunti::Vuoto;
    // The source node is found by these whenever it is needed: a reload replaces the tree's nodes.
    std::string contoOrigine_;
    EnumNaturaConto naturaOrigine_ = Ordine;
    std::string didascalia_;
};

} // namespace veldran
