#include "correlation/archivio_correlazioni.h"

#include "platform/ado/recordset.h"
#include "sql/commands.h"

#include <stdexcept>
#include <utility>

namespace veldran {

namespace {

/// A transaction that is rolled back unless it was committed.
class Transazione {
public:
    explicit Transazione(ado::Connection& connessione) : connessione_(connessione) {
        connessione_.BeginTrans();
    }
    ~Transazione() {
        if (!connessione_.inTransaction()) {
            return;
        }
        try {
            connessione_.RollbackTrans();
        } catch (...) {
            // The database has undone the transaction by itself; what led here is being reported.
        }
    }
    Transazione(const Transazione&) = delete;
    Transazione& operator=(const Transazione&) = delete;
    void Conferma() { connessione_.CommitTrans(); }

private:
    ado::Connection& connessione_;
};

} // namespace

bool ArchivioCorrelazioni::PreparazioneTabelleTestataDettaglio() {
    return ambiente_.form.errori.Esegui("PreparazioneTabelleTestataDettaglio:", false, [this] {
        const PuntatoreOccupato occupato(ambiente_.form.schermo);
        righe_ = Righe::Perse;
        if (tabelleCreate_) {
            sql::execute(*ambiente_.form.connessione, sql::svuotamentoDettaglio());
            sql::execute(*ambiente_.form.connessione, sql::svuotamentoTestata());
            riempi(riempimentoTestata_, sql::riempimentoTestata);
        } else {
            crea(testata_, sql::creazioneTestata(), sql::svuotamentoTestata());
            riempi(riempimentoTestata_, sql::riempimentoTestata);
            crea(dettaglio_, sql::creazioneDettaglio(), sql::svuotamentoDettaglio());
        }
        riempi(riempimentoDettaglio_, sql::riempimentoDettaglio);
        tabelleCreate_ = true;
        righe_ = Righe::Archiviate;
        return true;
    });
}

bool ArchivioCorrelazioni::RipresaRigheDettaglio() {
    return ambiente_.form.errori.Esegui("PreparazioneTabelleTestataDettaglio:", false, [this] {
        const PuntatoreOccupato occupato(ambiente_.form.schermo);
        righe_ = Righe::Perse;
        sql::execute(*ambiente_.form.connessione, sql::svuotamentoDettaglio());
        riempi(riempimentoDettaglio_, sql::riempimentoDettaglio);
        righe_ = Righe::Archiviate;
        return true;
    });
}

/// An earlier attempt that failed half-way may have got as far as this table. It may have made it even where
/// it was told of a failure: the answer that came after the time limit was not heard.
void ArchivioCorrelazioni::crea(Tabella& stato, const std::string& creazione,
                                const std::string& svuotamento) {
    constexpr int esisteGia = 2714;
    ado::Connection& connessione = *ambiente_.form.connessione;
    if (stato != Tabella::Creata) {
        const bool incerta = std::exchange(stato, Tabella::Incerta) == Tabella::Incerta;
        try {
            sql::execute(connessione, creazione);
            stato = Tabella::Creata;
            return;
        } catch (const ado::AdoError& error) {
            if (!incerta || error.first().Number != esisteGia) {
                throw;
            }
        }
    }
    sql::execute(connessione, svuotamento);
    stato = Tabella::Creata;
}

void ArchivioCorrelazioni::riempi(std::shared_ptr<ado::Command>& comando,
                                  std::string (*testo)(const sql::CorrelationOwner&)) {
    if (!comando) {
        comando = sql::textCommand(ambiente_.form.connessione, testo(ambiente_.proprietario()),
                                   {sql::contoParameter("@CONTO")}, sql::Preparation::Prepared);
    }
    comando->Parameters()["@CONTO"].Value(ambiente_.conto);
    comando->Execute(nullptr, ado::adExecuteNoRecords);
}

bool ArchivioCorrelazioni::AggiornamentoDatabase(const std::string& causale, std::int64_t righeMostrate) {
    const bool archiviata = ambiente_.form.errori.Esegui("AggiornamentoDatabase:", false, [&] {
        ado::Connection& connessione = *ambiente_.form.connessione;
        Transazione transazione(connessione);
        sql::execute(connessione,
                     sql::rimozioneCorrelazione(ambiente_.proprietario(), causale, ambiente_.conto));
        const std::int64_t scritte = sql::execute(
            connessione, sql::scritturaCorrelazione(ambiente_.proprietario(), causale, ambiente_.conto));
        if (!RigheIntere() || (scritte >= 0 && scritte != righeMostrate)) {
            throw std::runtime_error("Le righe della correlazione non sono più quelle mostrate: uscire dalle "
                                     "correlazioni e rientrarvi");
        }
        transazione.Conferma();
        return true;
    });
    if (RigheIntere()) {
        righe_ = archiviata ? Righe::Archiviate : Righe::DaArchiviare;
    }
    return archiviata;
}

void ArchivioCorrelazioni::CancellazioneCorrelazione(const std::string& causale) {
    ambiente_.form.errori.Esegui("CancellazioneCorrelazione:", [&] {
        sql::execute(*ambiente_.form.connessione,
                     sql::rimozioneCorrelazione(ambiente_.proprietario(), causale, ambiente_.conto));
    });
}

void ArchivioCorrelazioni::RimozioneRigheDettaglio(const std::string& causale) {
    sql::execute(*ambiente_.form.connessione, sql::rimozioneRigheDettaglio(causale));
    if (DaArchiviare()) {
        righe_ = Righe::Archiviate; // what was not stored went with them
    }
}

std::int64_t ArchivioCorrelazioni::ConteggioCorrelazioni(const std::string& conto) {
    if (!conteggio_) {
        conteggio_ =
            sql::textCommand(ambiente_.form.connessione, sql::conteggioCorrelazioni(ambiente_.proprietario()),
                             {sql::contoParameter("@CONTO")}, sql::Preparation::Prepared);
    }
    conteggio_->Parameters()["@CONTO"].Value(conto);
    return conteggio_->Execute()->Fields()[0].Value().toInteger();
}

void ArchivioCorrelazioni::Rilascia() {
    sql::release(riempimentoTestata_);
    sql::release(riempimentoDettaglio_);
    sql::release(conteggio_);
}

} // namespace veldran
