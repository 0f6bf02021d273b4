#pragma once

#include "host/ambiente.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tree_view.h"
#include "tree/appunti_correlazioni.h"
#include "tree/cnode_info.h"
#include "tree/dizionario_nodi.h"

#include <array>
#include <string>

namespace veldran {

class AttivazioneConti;

/// Captions of the four roots, by nature.
using DidascalieRadici = std::array<std::string, 4>;

/// The accounts tree over the current selection, loaded one level at a time. To be emptied before it ends:
/// its nodes use its command factory.
class AlberoConti {
public:
    struct Controlli {
        controls::TreeView& TRW_CONTI;
        controls::Button& BUT_CORRELAZIONI;
        controls::Button& BUT_EDITCORRELAZIONI;
    };

    AlberoConti(AmbienteDiLavoro& ambiente, Controlli controlli, DidascalieRadici didascalie);
    /// The neighbour that knows the roots' check state and keeps the pending checked node.
    void UsaAttivazione(AttivazioneConti& attivazione) { attivazione_ = &attivazione; }
    /// nullptr: the clipboard keys do nothing.
    void UsaAppunti(AppuntiCorrelazioni* appunti) { appunti_ = appunti; }

    /// Rebuilds the tree from the current selection: four roots, nothing loaded below them.
    void LoadTree();
    /// Clears all nodes and whatever refers to one.
    void SvuotaAlbero();
    /// Loads the children of a node; an explored node is left alone. Accounts that an earlier, failed load
    /// has already added are not added again.
    void CaricaChildren(controls::TreeNode& nodo);
    /// \return the placeholder, nullptr after a failure.
    controls::TreeNode* CaricaDummyChild(controls::TreeNode& nodo);
    /// Removes the first child when it is the placeholder.
    void RemoveDummyChild(controls::TreeNode& nodo);
    std::string GetKeyByCode(std::int16_t natura, const std::string& conto);
    void EspansioneNodo(controls::TreeNode& nodo);
    void ChiusuraNodo(controls::TreeNode& nodo);
    /// \param nodo nothing happens for nullptr.
    void SelezioneNodo(controls::TreeNode* nodo);
    /// Deliberately shows nothing: the tree has no popup menu.
    void PopupTreeMenu(controls::TreeNode&) {}

    /// The node of an account's key; nullptr when it is not loaded. Roots are not found here.
    controls::TreeNode* NodoPerChiave(const std::string& chiave) const;
    /// The root of a nature; nullptr for another number or an empty tree.
    controls::TreeNode* Radice(int natura) const;

    void TRW_CONTI_Expand(controls::TreeNode& nodo);
    void TRW_CONTI_Collapse(controls::TreeNode& nodo);
    void TRW_CONTI_NodeClick(controls::TreeNode& nodo);
    void TRW_CONTI_KeyDown(controls::KeyEvent& tasto);

private:
    void aggiungiRadice(EnumTipoNodo tipo, EnumNaturaConto natura);
    void aggiungiConto(controls::TreeNode& padre, EnumNaturaConto natura, const struct RigaConto& riga);
    void tastoAppunti(int tasto, controls::TreeNode& nodo);

    AmbienteDiLavoro& ambiente_;
    Controlli controlli_;
    DidascalieRadici didascalie_;
    AttivazioneConti* attivazione_ = nullptr;
    AppuntiCorrelazioni* appunti_ = nullptr;
    CCommandFactory factory_; ///< used by all nodes
    DizionarioNodi nodi_;
    std::string testo_; ///< of the node being added: its room is used again for the next
};

} // namespace veldran
