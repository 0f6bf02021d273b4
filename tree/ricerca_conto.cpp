#include "tree/ricerca_conto.h"

#include "accounts/struttura_conto.h"
#include "platform/ado/recordset.h"
#include "sql/commands.h"
#include "sql/tree_statements.h"

#include <stdexcept>

namespace veldran {

namespace {

constexpr int lunghezzaContoFormattato = 14; // five groups of two and their separators

std::int16_t natura(ado::Recordset& record) {
    return record.Fields()["CG24_INDTIPOCONTO"].Value().toInt16();
}

std::string testo(ado::Recordset& record, const std::string& campo) {
    return nullSafeText(record.Fields()[campo].Value());
}

} // namespace

void RicercaConto::Configurazione(services::LookupService& servizio) {
    controlli_.TXT_CONTORICERCA.SetLookupService(&servizio);
    controlli_.TXT_CONTORICERCA.SetConnection(ambiente_.connessione);
    controlli_.TXT_CONTORICERCA.SetMaxLength(lunghezzaContoFormattato);
    controlli_.TXT_CONTORICERCA.SetCodeStructure(StrutturaConto(ambiente_.livelli));
}

void RicercaConto::EsecuzioneRicerca(const std::string& conto) {
    ambiente_.errori.Esegui("EsecuzioneRicerca:", [&] {
        if (conto.empty()) {
            return;
        }
        const auto record = cerca(conto);
        if (record && !record->EndOfFile()) {
            const PuntatoreOccupato occupato(ambiente_.schermo);
            SelezioneConto(*record);
            return;
        }
        if (services::MessageService* messaggi = ambiente_.errori.Messaggi()) {
            messaggi->ShowBox("Il conto ricercato non è tra quelli correntemente selezionati",
                              services::styleInformation, "Ricerca conto");
        }
    });
}

std::shared_ptr<ado::Recordset> RicercaConto::cerca(const std::string& conto) {
    if (conto.size() > sql::lunghezzaConto) {
        return nullptr; // longer than any account
    }
    if (!ricerca_) {
        ricerca_ = sql::textCommand(ambiente_.connessione, sql::ricercaConto(ambiente_.codicePDC),
                                    {sql::contoParameter("@CONTO")});
    }
    ricerca_->Parameters()["@CONTO"].Value(conto);
    return ricerca_->Execute();
}

void RicercaConto::SelezioneConto(ado::Recordset& record) {
    ambiente_.errori.Esegui("SelezioneConto:", [&] {
        const std::string chiave = albero_.GetKeyByCode(natura(record), testo(record, "CONTO"));
        const controls::TreeRedrawLock blocco(controlli_.TRW_CONTI);
        if (!albero_.NodoPerChiave(chiave) && !CostruzioneNodo(record)) {
            return;
        }
        controls::TreeNode* nodo = albero_.NodoPerChiave(chiave);
        if (!nodo) {
            throw std::runtime_error("Il conto " + testo(record, "CONTO") +
                                     " non si trova sotto il proprio raggruppamento");
        }
        controlli_.TRW_CONTI.SetSelectedItem(nodo);
        controlli_.TRW_CONTI.EnsureVisible(*nodo);
    });
}

bool RicercaConto::CostruzioneNodo(ado::Recordset& record) {
    return ambiente_.errori.Esegui("CostruzioneNodo:", false, [&] {
        controls::TreeNode* nodo = albero_.Radice(natura(record));
        const int livello = record.Fields()["NRLIVELLO"].Value().toInt16();
        for (int superiore = 1; nodo; ++superiore) {
            albero_.EspansioneNodo(*nodo);
            const CNodeInfo* info = CNodeInfo::Di(*nodo);
            if (!info || !info->Esplorato()) {
                return false;
            }
            if (superiore == livello) {
                return true;
            }
            const std::string conto = testo(record, "LIVELLO" + std::to_string(superiore));
            nodo = albero_.NodoPerChiave(albero_.GetKeyByCode(natura(record), conto));
            if (!nodo) {
                throw std::runtime_error("Il raggruppamento " + conto +
                                         " non si trova nell'albero dei conti");
            }
        }
        throw std::runtime_error("Il conto " + testo(record, "CONTO") + " ha una natura sconosciuta");
    });
}

void RicercaConto::BUT_RICERCA_ButtonClick() {
    ambiente_.errori.Esegui("BUT_RICERCA_ButtonClick", [this] {
        const controls::LookupField& campo = controlli_.TXT_CONTORICERCA;
        EsecuzioneRicerca(campo.CodeStructure().codeOf(campo.Text()));
        albero_.SelezioneNodo(controlli_.TRW_CONTI.SelectedItem());
    });
}

void RicercaConto::TXT_CONTORICERCA_StartDecode(services::LookupRequest& richiesta) {
    richiestaInCorso_ = "TXT_CONTORICERCA_StartDecode";
    ambiente_.errori.Esegui(richiestaInCorso_, [&] { completa(richiesta); });
}

void RicercaConto::TXT_CONTORICERCA_StartLookup(services::LookupRequest& richiesta) {
    richiestaInCorso_ = "TXT_CONTORICERCA_StartLookup";
    ambiente_.errori.Esegui(richiestaInCorso_, [&] {
        completa(richiesta);
        richiesta.title = "Conti di contabilità generale";
    });
}

void RicercaConto::completa(services::LookupRequest& richiesta) const {
    richiesta.kind = services::LookupKind::ContiCoge;
    richiesta.connectionString = ambiente_.stringaConnessione;
    richiesta.ditta = ambiente_.codiceDitta;
    richiesta.pdc = ambiente_.codicePDC;
}

void RicercaConto::TXT_CONTORICERCA_Changed() {
    ambiente_.errori.Esegui("TXT_CONTORICERCA_Changed", [this] {
        controlli_.LBB_DESCRCONTORICERCA.SetCaption(controlli_.TXT_CONTORICERCA.Description());
    });
}

void RicercaConto::TXT_CONTORICERCA_Failed() {
    ambiente_.errori.Esegui(richiestaInCorso_, [] { throw; });
}

void RicercaConto::TXT_CONTORICERCA_KeyDown(controls::KeyEvent& tasto) {
    ambiente_.errori.Esegui("TXT_CONTORICERCA_KeyDown", [&] {
        if (tasto.keyCode != controls::keyReturn || tasto.shift != controls::shiftNone) {
            return;
        }
        tasto.keyCode = 0;
        controlli_.TXT_CONTORICERCA.LeaveFromView(); // a failing decode is reported and the search goes on
        BUT_RICERCA_ButtonClick();
        controlli_.TRW_CONTI.SetFocus();
    });
}

void RicercaConto::Rilascia() {
    sql::release(ricerca_);
    controlli_.TXT_CONTORICERCA.SetLookupService(nullptr);
    controlli_.TXT_CONTORICERCA.SetConnection(nullptr);
}

} // namespace veldran
