#pragma once

#include "host/ambiente.h"
#include "platform/ado/command.h"
#include "platform/controls/tree_view.h"
#include "tree/natura.h"

#include <memory>

namespace veldran {

class AlberoConti;
class Filtri;
class TabelleDiLavoro;

/// Activation of accounts by the tree's check boxes: the database first, then the check boxes below, the
/// working tables, and the check boxes above.
class AttivazioneConti {
public:
    /// Neighbours that an activation calls.
    struct Vicini {
        AlberoConti& albero;
        Filtri& filtri;
        TabelleDiLavoro& tabelle;
    };

    AttivazioneConti(AmbienteDiLavoro& ambiente, controls::TreeView& albero, Vicini vicini)
        : ambiente_(ambiente), TRW_CONTI_(albero), vicini_(vicini) {}

    /// The whole action for a node whose check box has changed.
    void TRW_CONTI_NodeCheck(controls::TreeNode& nodo);
    /// A click on a check box makes its node the pending one.
    void TRW_CONTI_MouseDown(const controls::MouseEvent& evento);
    /// Runs the action for the pending node when its check box has changed and the control has not said so.
    void TRW_CONTI_MouseUp(const controls::MouseEvent& evento);

    /// Writes the activation of the accounts below `nodo` to the database.
    void AttivazioneConto(controls::TreeNode& nodo, bool attiva);
    /// Sets the check boxes of `nodo` and of all its loaded descendants.
    void AttivazioneNodo(bool attiva, controls::TreeNode& nodo);
    /// Updates ATTIVO in both working tables.
    void AggiornamentoAttivazione(controls::TreeNode& nodo, bool attiva);
    /// Brings the ancestors' check boxes in line with the node's.
    void BubbleCheck(controls::TreeNode& nodo);
    /// The nature has analytic accounts in the selection and all are activated.
    bool PrimoLivelloChecked(EnumNaturaConto natura);

    /// The pending node is about to go; without argument, all nodes are.
    void DimenticaNodoInSospeso(const controls::TreeNode* nodo = nullptr);
    /// Detaches the kept command from the connection.
    void Rilascia();

private:
    ado::Command& comandoAttivazione();
    controls::TreeHit sottoIlPuntatore(const controls::MouseEvent& evento) const;
    void risolviNodoInSospeso();

    AmbienteDiLavoro& ambiente_;
    controls::TreeView& TRW_CONTI_;
    Vicini vicini_;
    std::shared_ptr<ado::Command> attivazione_; // shared as ADO commands are
    controls::TreeNode* nodoInSospeso_ = nullptr;
    bool statoInSospeso_ = false; ///< check state of the pending node when the button went down
};

} // namespace veldran
