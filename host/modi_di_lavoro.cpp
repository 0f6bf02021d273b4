#include "host/modi_di_lavoro.h"

#include "accounts/filtri.h"
#include "causali/lista_causali.h"
#include "correlation/archivio_correlazioni.h"
#include "correlation/campi_analitici.h"
#include "correlation/frame_correlazioni.h"
#include "tree/cnode_info.h"

#include <stdexcept>

namespace veldran {

void ModiDiLavoro::CMD_ATTIVAZIONI_Click() {
    ambiente_.form.errori.Esegui("CMD_ATTIVAZIONI_Click", [this] {
        const CNodeInfo* info = CNodeInfo::Di(controlli_.TRW_CONTI.SelectedItem());
        if (controlli_.LAY_ATTIVAZIONE.Visible() && (info == nullptr || !info->IsAnalitico())) {
            ambiente_.form.errori.Messaggi()->ShowBox(
                "Selezionare un conto analitico per gestirne le correlazioni.", services::styleExclamation,
                "Attenzione");
            return;
        }
        Switch();
    });
}

void ModiDiLavoro::Switch() {
    ambiente_.form.errori.Esegui("Switch:", [this] {
        if (controlli_.LAY_ATTIVAZIONE.Visible()) {
            BeforeLeaveAttivazione();
            controlli_.LAY_ATTIVAZIONE.SetVisible(false);
            controlli_.LAY_CORRELAZIONI.SetVisible(true);
            AfterEnterCorrelazione();
        } else if (BeforeLeaveCorrelazione()) {
            controlli_.LAY_CORRELAZIONI.SetVisible(false);
            controlli_.LAY_ATTIVAZIONE.SetVisible(true);
            AfterEnterAttivazione();
        }
    });
}

bool ModiDiLavoro::BeforeLeaveCorrelazione() {
    return ambiente_.form.errori.Esegui("BeforeLeaveCorrelazione:", false, [this] {
        if (vicini_.frame.QueryUnloadFrames()) {
            return false;
        }
        vicini_.frame.RimozioneVirtualFrame();
        vicini_.lista.DimenticaSelezione();
        return true;
    });
}

void ModiDiLavoro::AfterEnterCorrelazione() {
    ambiente_.form.errori.Esegui("AfterEnterCorrelazione:", [this] {
        const PuntatoreOccupato occupato(ambiente_.form.schermo);
        const CNodeInfo* info = CNodeInfo::Di(controlli_.TRW_CONTI.SelectedItem());
        if (info == nullptr) {
            throw std::logic_error("Nessun conto è selezionato nell'albero");
        }
        controlli_.TXT_CONTOSELEZIONATO.SetCaption(controlli_.TRW_CONTI.SelectedItem()->Text());
        ambiente_.conto = info->CodiceConto();
        vicini_.campi.ImpostazioneProprietaContoCOIN();
        if (ambiente_.gestioneVds) {
            vicini_.campi.ImpostazioneProprietaContoVDS();
        }
        vicini_.lista.CaricamentoListaCausali();
        vicini_.frame.ConfigurazioneVirtualFrame();
        if (vicini_.frame.Sospesa()) {
            return; // reported; the user goes back and tries again
        }
        vicini_.frame.MostraTestata();
        if (controlli_.TXT_CAUSALE.Enabled()) {
            controlli_.TXT_CAUSALE.SetFocus();
        } else {
            controlli_.GRD_DETTAGLIO.SetFocus();
        }
    });
}

void ModiDiLavoro::AfterEnterAttivazione() {
    ambiente_.form.errori.Esegui("AfterEnterAttivazione:", [this] {
        controls::TreeNode* nodo = controlli_.TRW_CONTI.SelectedItem();
        CNodeInfo* info = CNodeInfo::Di(nodo);
        if (info != nullptr) {
            const bool correlato = vicini_.archivio.ConteggioCorrelazioni(info->CodiceConto()) > 0;
            info->ChangeStatoCorrelazione(*nodo, correlato);
            vicini_.filtri.ImpostazioneCorrelato(correlato, info->CodiceConto());
            vicini_.filtri.RiportoCorrelato();
        }
        controlli_.TRW_CONTI.Refresh();
        controlli_.TRW_CONTI.SetFocus();
    });
}

} // namespace veldran
