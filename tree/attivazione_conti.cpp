#include "tree/attivazione_conti.h"

#include "accounts/filtri.h"
#include "accounts/tabelle_di_lavoro.h"
#include "platform/ado/recordset.h"
#include "sql/commands.h"
#include "sql/tree_statements.h"
#include "tree/albero_conti.h"
#include "tree/cnode_info.h"

#include <string>
#include <utility>

namespace veldran {

namespace {

bool radice(const CNodeInfo& info) {
    return info.TipoNodo() >= NodoRadiceContiOrdine && info.TipoNodo() <= NodoRadiceContiNoStampa;
}

/// Which accounts an activation reaches, by the filter that the user looks through: all, only the correlated
/// or only the uncorrelated ones.
std::int16_t correlatiPerFiltro(int filtro) {
    switch (filtro) {
    case 4:
    case 6:
    case 8:
        return 1;
    case 5:
    case 7:
    case 9:
        return 0;
    default:
        return 2;
    }
}

} // namespace

void AttivazioneConti::TRW_CONTI_NodeCheck(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("TRW_CONTI_NodeCheck", [&] {
        if (nodoInSospeso_ == &nodo) {
            nodoInSospeso_ = nullptr;
        }
        const PuntatoreOccupato occupato(ambiente_.schermo);
        const bool attiva = nodo.Checked();
        AttivazioneConto(nodo, attiva);
        {
            const controls::TreeRedrawLock blocco(TRW_CONTI_);
            AttivazioneNodo(attiva, nodo);
        }
        AggiornamentoAttivazione(nodo, attiva);
        BubbleCheck(nodo);
    });
}

void AttivazioneConti::TRW_CONTI_MouseDown(const controls::MouseEvent& evento) {
    ambiente_.errori.Esegui("TRW_CONTI_MouseDown", [&] {
        risolviNodoInSospeso();
        const controls::TreeHit punto = sottoIlPuntatore(evento);
        if (!punto.node) {
            return;
        }
        if (evento.button == controls::buttonRight) {
            vicini_.albero.PopupTreeMenu(*punto.node);
        } else if (evento.button == controls::buttonLeft && (punto.flags & controls::treeHitStateIcon) != 0) {
            nodoInSospeso_ = punto.node;
            statoInSospeso_ = punto.node->Checked();
        }
    });
}

void AttivazioneConti::TRW_CONTI_MouseUp(const controls::MouseEvent&) {
    ambiente_.errori.Esegui("TRW_CONTI_MouseUp", [this] { risolviNodoInSospeso(); });
}

void AttivazioneConti::risolviNodoInSospeso() {
    controls::TreeNode* nodo = std::exchange(nodoInSospeso_, nullptr);
    // A button released elsewhere, or a control that reports the check only after the button, leaves the
    // state as it was: running the action then would set the whole branch to a state nobody asked for.
    if (nodo && nodo->Checked() != statoInSospeso_) {
        TRW_CONTI_NodeCheck(*nodo);
    }
}

controls::TreeHit AttivazioneConti::sottoIlPuntatore(const controls::MouseEvent& evento) const {
    return TRW_CONTI_.HitTest(evento.x / ambiente_.schermo.TwipsPerPixelX(),
                              evento.y / ambiente_.schermo.TwipsPerPixelY());
}

void AttivazioneConti::AttivazioneConto(controls::TreeNode& nodo, bool attiva) {
    ambiente_.errori.Esegui("AttivazioneConto:", [&] {
        const CNodeInfo* info = CNodeInfo::Di(nodo);
        if (!info) {
            return;
        }
        if (radice(*info)) {
            {
                const controls::TreeRedrawLock blocco(TRW_CONTI_);
                vicini_.albero.EspansioneNodo(nodo);
            }
            for (controls::TreeNode* figlio = nodo.Child(); figlio; figlio = figlio->Next()) {
                AttivazioneConto(*figlio, attiva);
            }
            return;
        }
        ado::Command& comando = comandoAttivazione();
        ado::Parameters& parametri = comando.Parameters();
        parametri["@ON"].Value(attiva);
        parametri["@DITTA"].Value(ambiente_.codiceDitta);
        parametri["@GRUPPO"].Value(ambiente_.codicePDC);
        parametri["@CONTO"].Value(info->CodiceConto());
        parametri["@NATURA"].Value(static_cast<std::int16_t>(info->NaturaConto()));
        parametri["@CORRELATI"].Value(correlatiPerFiltro(vicini_.filtri.Indice()));
        comando.Execute(nullptr, ado::adCmdStoredProc | ado::adExecuteNoRecords);
    });
}

ado::Command& AttivazioneConti::comandoAttivazione() {
    if (!attivazione_) {
        attivazione_ = sql::procedureCommand(ambiente_.connessione, "SPCI_VELDRANACT");
    }
    return *attivazione_;
}

void AttivazioneConti::AttivazioneNodo(bool attiva, controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("AttivazioneNodo", [&] {
        for (controls::TreeNode* figlio = nodo.Child(); figlio; figlio = figlio->Next()) {
            AttivazioneNodo(attiva, *figlio);
        }
        nodo.SetChecked(attiva);
    });
}

void AttivazioneConti::AggiornamentoAttivazione(controls::TreeNode& nodo, bool attiva) {
    ambiente_.errori.Esegui("AggiornamentoAttivazione:", [&] {
        const CNodeInfo* info = CNodeInfo::Di(nodo);
        if (!info) {
            return;
        }
        if (radice(*info)) {
            for (controls::TreeNode* figlio = nodo.Child(); figlio; figlio = figlio->Next()) {
                AggiornamentoAttivazione(*figlio, attiva);
            }
            return;
        }
        std::string modello = vicini_.tabelle.GetCodeHeader(info->CodiceConto());
        if (modello.empty()) {
            return; // an empty prefix is every account of the chart
        }
        if (modello.size() < sql::lunghezzaConto) {
            modello += '%';
        }
        sql::execute(*ambiente_.connessione, sql::attivazioneSelezione(attiva, modello, info->NaturaConto()));
        vicini_.filtri.RiportoAttivo();
    });
}

void AttivazioneConti::BubbleCheck(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("BubbleCheck:", [&] {
        if (!nodo.Checked()) {
            for (controls::TreeNode* padre = nodo.Parent(); padre; padre = padre->Parent()) {
                padre->SetChecked(false);
            }
            return;
        }
        for (controls::TreeNode* padre = nodo.Parent(); padre; padre = padre->Parent()) {
            for (const controls::TreeNode* figlio = padre->Child(); figlio; figlio = figlio->Next()) {
                if (!figlio->Checked()) {
                    return;
                }
            }
            padre->SetChecked(true);
        }
    });
}

bool AttivazioneConti::PrimoLivelloChecked(EnumNaturaConto natura) {
    return ambiente_.errori.Esegui("PrimoLivelloChecked:", false, [&] {
        ado::Connection& connessione = *ambiente_.connessione;
        if (!sql::query(connessione, sql::contoInattivoDiNatura(natura))->EndOfFile()) {
            return false;
        }
        return !sql::query(connessione, sql::contoDiNatura(natura))->EndOfFile();
    });
}

void AttivazioneConti::DimenticaNodoInSospeso(const controls::TreeNode* nodo) {
    if (!nodo || nodo == nodoInSospeso_) {
        nodoInSospeso_ = nullptr;
    }
}

void AttivazioneConti::Rilascia() {
    sql::release(attivazione_);
}

} // namespace veldran
