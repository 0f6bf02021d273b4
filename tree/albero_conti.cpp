#include "tree/albero_conti.h"

#include "platform/ado/recordset.h"
#include "tree/attivazione_conti.h"

#include <string_view>
#include <utility>

namespace veldran {

/// One row of a child query.
struct RigaConto {
    std::string conto;
    std::string contoF;
    std::string descrizione;
    std::int16_t livello = 0;
    bool analitico = false;
    bool attivo = false;
    bool correlato = false;
};

namespace {

constexpr std::array<const char*, 4> chiaviRadici = {"CONTIORDINE", "CONTIPATRIMONIALI", "CONTIECONOMICI",
                                                     "CONTINOSTAMPA"};
constexpr std::string_view suffissoSegnaposto = "DummyChild";

/// A flag of a record; NULL counts as false.
bool flag(const Value& value) {
    return !value.isNull() && value.toBool();
}

/// The fields of a child query, looked up by name once for all its rows.
class CampiConto {
public:
    explicit CampiConto(ado::Fields& campi)
        : conto_(campi["CONTO"]), contoF_(campi["CONTOF"]), descrizione_(campi["DESCRIZIONE"]),
          analitico_(campi["ISANALITICO"]), attivo_(campi["ATTIVO"]), correlato_(campi["CORRELATO"]),
          livello_(campi["NRLIVELLO"]) {}

    /// The row takes the texts of the next record into the room of the last one's.
    void leggi(RigaConto& riga) const {
        assignNullSafeText(riga.conto, conto_.Value());
        assignNullSafeText(riga.contoF, contoF_.Value());
        assignNullSafeText(riga.descrizione, descrizione_.Value());
        riga.analitico = flag(analitico_.Value());
        riga.attivo = flag(attivo_.Value());
        riga.correlato = flag(correlato_.Value());
        riga.livello = Value(nullSafeNumber(livello_.Value())).toInt16();
    }

private:
    ado::Field& conto_;
    ado::Field& contoF_;
    ado::Field& descrizione_;
    ado::Field& analitico_;
    ado::Field& attivo_;
    ado::Field& correlato_;
    ado::Field& livello_;
};

bool segnaposto(const controls::TreeNode& nodo) {
    return nodo.Tag() == nullptr && nodo.Key().ends_with(suffissoSegnaposto);
}

} // namespace

AlberoConti::AlberoConti(AmbienteDiLavoro& ambiente, Controlli controlli, DidascalieRadici didascalie)
    : ambiente_(ambiente), controlli_(controlli), didascalie_(std::move(didascalie)) {
    factory_.Connessione(ambiente.connessione);
}

void AlberoConti::LoadTree() {
    ambiente_.errori.Esegui("LoadTree:", [this] {
        const controls::TreeRedrawLock blocco(controlli_.TRW_CONTI);
        SvuotaAlbero();
        controlli_.BUT_CORRELAZIONI.SetEnabled(false);
        controlli_.BUT_EDITCORRELAZIONI.SetEnabled(false);
        aggiungiRadice(NodoRadiceContiOrdine, Ordine);
        aggiungiRadice(NodoRadiceContiPatrimoniali, Patrimoniale);
        aggiungiRadice(NodoRadiceContiEconomici, Economico);
        aggiungiRadice(NodoRadiceContiNoStampa, DaNonStampare);
        controlli_.TRW_CONTI.SetSelectedItem(Radice(Ordine));
    });
}

void AlberoConti::aggiungiRadice(EnumTipoNodo tipo, EnumNaturaConto natura) {
    auto info = std::make_unique<CNodeInfo>();
    info->Initialize(tipo, factory_, false, false, natura, 0, {}, {}, 0, 0);
    const auto indice = static_cast<std::size_t>(natura);
    const int icona = info->IconCollapsed();
    controls::TreeNode& nodo =
        controlli_.TRW_CONTI.Add(nullptr, chiaviRadici[indice], didascalie_[indice], icona, icona);
    nodo.SetTag(std::move(info));
    CaricaDummyChild(nodo);
    nodo.SetChecked(attivazione_ && attivazione_->PrimoLivelloChecked(natura));
}

void AlberoConti::SvuotaAlbero() {
    nodi_.Svuota();
    if (attivazione_) {
        attivazione_->DimenticaNodoInSospeso();
    }
    controlli_.TRW_CONTI.Clear();
}

void AlberoConti::CaricaChildren(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("CaricaChildren:", [&] {
        CNodeInfo* info = CNodeInfo::Di(nodo);
        if (!info || info->Esplorato()) {
            return;
        }
        if (const auto comando = info->GetCMDGetChildren()) {
            const auto record = comando->Execute();
            if (!record->EndOfFile()) {
                const CampiConto campi(record->Fields());
                nodi_.Riserva(static_cast<std::size_t>(record->RecordCount()));
                RigaConto riga;
                for (; !record->EndOfFile(); record->MoveNext()) {
                    campi.leggi(riga);
                    aggiungiConto(nodo, info->NaturaConto(), riga);
                }
            }
        }
        info->MarkAsExplored();
    });
}

void AlberoConti::aggiungiConto(controls::TreeNode& padre, EnumNaturaConto natura, const RigaConto& riga) {
    const std::string chiave = GetKeyByCode(natura, riga.conto);
    if (nodi_.Cerca(chiave) != nullptr) {
        return;
    }
    testo_.assign(riga.contoF).append(" - ").append(riga.descrizione);
    const TextPair testi(chiave, testo_);
    auto info = std::make_unique<CNodeInfo>();
    info->Initialize(riga.analitico ? NodoConto : NodoIntermedio, factory_, riga.attivo, riga.correlato,
                     natura, ambiente_.codicePDC, riga.conto, riga.descrizione, riga.livello,
                     ambiente_.livelli, testi);
    const int icona = info->IconCollapsed();
    controls::TreeNode& nodo = controlli_.TRW_CONTI.Add(&padre, testi, icona, icona);
    nodo.SetTag(std::move(info));
    nodi_.Aggiungi(nodo);
    nodo.SetChecked(riga.attivo);
}

controls::TreeNode* AlberoConti::CaricaDummyChild(controls::TreeNode& nodo) {
    return ambiente_.errori.Esegui("CaricaDummyChild:", static_cast<controls::TreeNode*>(nullptr), [&] {
        return &controlli_.TRW_CONTI.Add(&nodo, nodo.Key() + std::string(suffissoSegnaposto));
    });
}

void AlberoConti::RemoveDummyChild(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("RemoveDummyChild:", [&] {
        controls::TreeNode* primo = nodo.Child();
        if (primo && segnaposto(*primo)) {
            if (attivazione_) {
                attivazione_->DimenticaNodoInSospeso(primo);
            }
            controlli_.TRW_CONTI.Remove(*primo);
        }
    });
}

std::string AlberoConti::GetKeyByCode(std::int16_t natura, const std::string& conto) {
    return ambiente_.errori.Esegui("GetKeyByCode:", std::string(), [&] {
        constexpr std::string_view lettere = "OPEN"; // by nature
        std::string chiave = "*";
        if (natura >= Ordine && natura <= DaNonStampare) {
            chiave += lettere[static_cast<std::size_t>(natura)];
        }
        return chiave + conto + "*";
    });
}

void AlberoConti::EspansioneNodo(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("EspansioneNodo:", [&] {
        const CNodeInfo* info = CNodeInfo::Di(nodo);
        if (!info || info->Esplorato()) {
            return;
        }
        RemoveDummyChild(nodo);
        CaricaChildren(nodo);
        controls::TreeNode* primo = nodo.Child();
        if (!primo) {
            if (!info->Esplorato()) {
                CaricaDummyChild(nodo); // the load failed: the expand button stays, to try again
            }
            return;
        }
        const CNodeInfo* infoPrimo = CNodeInfo::Di(*primo);
        if (infoPrimo && !infoPrimo->IsAnalitico()) {
            for (controls::TreeNode* figlio = primo; figlio; figlio = figlio->Next()) {
                if (figlio->Children() == 0) { // loaded children of an earlier, failed expansion keep theirs
                    CaricaDummyChild(*figlio);
                }
            }
        }
        nodo.SetImage(immagineEspanso);
        nodo.SetSelectedImage(info->IconExpanded());
    });
}

void AlberoConti::ChiusuraNodo(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("ChiusuraNodo:", [&] {
        if (const CNodeInfo* info = CNodeInfo::Di(nodo)) {
            nodo.SetImage(immagineChiuso);
            nodo.SetSelectedImage(info->IconCollapsed());
        }
    });
}

void AlberoConti::SelezioneNodo(controls::TreeNode* nodo) {
    ambiente_.errori.Esegui("SelezioneNodo:", [&] {
        if (!nodo) {
            return;
        }
        const CNodeInfo* info = CNodeInfo::Di(*nodo);
        const bool analitico = info && info->IsAnalitico();
        controlli_.BUT_CORRELAZIONI.SetEnabled(analitico);
        controlli_.BUT_EDITCORRELAZIONI.SetEnabled(analitico);
    });
}

controls::TreeNode* AlberoConti::NodoPerChiave(const std::string& chiave) const {
    return nodi_.Cerca(chiave);
}

controls::TreeNode* AlberoConti::Radice(int natura) const {
    if (natura < 0 || natura >= static_cast<int>(chiaviRadici.size())) {
        return nullptr;
    }
    for (controls::TreeNode* radice = controlli_.TRW_CONTI.FirstRoot(); radice; radice = radice->Next()) {
        if (radice->Key() == chiaviRadici[static_cast<std::size_t>(natura)]) {
            return radice;
        }
    }
    return nullptr;
}

void AlberoConti::TRW_CONTI_Expand(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("TRW_CONTI_Expand", [&] {
        const controls::TreeRedrawLock blocco(controlli_.TRW_CONTI);
        EspansioneNodo(nodo);
        const CNodeInfo* info = CNodeInfo::Di(nodo);
        if (info && !info->Esplorato()) {
            controlli_.TRW_CONTI.SetExpanded(nodo, false);
        }
    });
}

void AlberoConti::TRW_CONTI_Collapse(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("TRW_CONTI_Collapse", [&] {
        const controls::TreeRedrawLock blocco(controlli_.TRW_CONTI);
        ChiusuraNodo(nodo);
    });
}

void AlberoConti::TRW_CONTI_NodeClick(controls::TreeNode& nodo) {
    ambiente_.errori.Esegui("TRW_CONTI_NodeClick", [&] { SelezioneNodo(&nodo); });
}

void AlberoConti::TRW_CONTI_KeyDown(controls::KeyEvent& tasto) {
    ambiente_.errori.Esegui("TRW_CONTI_KeyDown", [&] {
        controls::TreeNode* nodo = controlli_.TRW_CONTI.SelectedItem();
        if (!nodo) {
            return;
        }
        const bool menu = tasto.keyCode == controls::keyApps ||
                          (tasto.keyCode == controls::keyF10 && tasto.shift == controls::shiftShift);
        if (menu) {
            PopupTreeMenu(*nodo);
        } else if (tasto.shift == controls::shiftCtrl) {
            tastoAppunti(tasto.keyCode, *nodo);
        }
    });
}

void AlberoConti::tastoAppunti(int tasto, controls::TreeNode& nodo) {
    const CNodeInfo* info = CNodeInfo::Di(nodo);
    if (!appunti_ || !info || !info->IsAnalitico()) {
        return;
    }
    if (tasto == controls::keyC && info->IsCorrelato()) {
        appunti_->AttivazioneCopiaTree(nodo);
    } else if (tasto == controls::keyX && info->IsCorrelato()) {
        appunti_->AttivazioneTagliaTree(nodo);
    } else if (tasto == controls::keyV && appunti_->CorrelazioneInSospeso()) {
        appunti_->IncollaCorrelazioneTree(nodo);
    }
}

} // namespace veldran
