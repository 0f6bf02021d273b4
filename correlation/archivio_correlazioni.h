#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/ado/command.h"

#include <memory>
#include <string>

namespace veldran {

/// The permanent correlations of the current account and the working tables #TESTATA and #DETTAGLIO, in which
/// they are edited. The tables live as long as the connection: they are created once, then refilled.
class ArchivioCorrelazioni {
public:
    explicit ArchivioCorrelazioni(AmbienteCorrelazioni& ambiente) : ambiente_(ambiente) {}

    /// (Re)fills the working tables. \return false after a failure.
    bool PreparazioneTabelleTestataDettaglio();
    /// Refills #DETTAGLIO alone with what is stored; every causale keeps its header. \return false after a
    /// failure.
    bool RipresaRigheDettaglio();
    /// False from a refill that failed until one that did not: #DETTAGLIO lacks rows, or has rows that were
    /// given up, of whatever causale. Nothing is stored from it meanwhile.
    bool RigheIntere() const { return righe_ != Righe::Perse; }
    /// The rows of the current causale were written to #DETTAGLIO; what is stored does not have them yet.
    void RigheScritte() { righe_ = Righe::DaArchiviare; }
    /// #DETTAGLIO holds rows that are not stored: the save that wrote them there was refused or has failed.
    bool DaArchiviare() const { return righe_ == Righe::DaArchiviare; }
    /// Replaces the permanent rows of a causale by those of the working tables, in one transaction.
    /// \param righeMostrate as many rows as the user sees: writing another number of them is a failure
    /// \return false after a failure; the permanent rows are then as they were.
    bool AggiornamentoDatabase(const std::string& causale, std::int64_t righeMostrate);
    /// Deletes the permanent rows of a causale.
    void CancellazioneCorrelazione(const std::string& causale);

    /// \name For routines that report errors under labels of their own.
    ///@{
    /// Removes the rows of the current causale from #DETTAGLIO. \throws ado::AdoError
    void RimozioneRigheDettaglio(const std::string& causale);
    /// Permanent rows of an account, whatever the causale. \throws ado::AdoError
    std::int64_t ConteggioCorrelazioni(const std::string& conto);
    ///@}

    /// Detaches the kept commands from the connection.
    void Rilascia();

private:
    enum class Tabella { DaCreare, Incerta, Creata };
    enum class Righe { Perse, Archiviate, DaArchiviare };
    void crea(Tabella& stato, const std::string& creazione, const std::string& svuotamento);
    void riempi(std::shared_ptr<ado::Command>& comando, std::string (*testo)(const sql::CorrelationOwner&));

    AmbienteCorrelazioni& ambiente_;
    Righe righe_ = Righe::Perse;
    bool tabelleCreate_ = false;
    Tabella testata_ = Tabella::DaCreare;
    Tabella dettaglio_ = Tabella::DaCreare;
    // Shared as ADO commands are.
    std::shared_ptr<ado::Command> riempimentoTestata_;
    std::shared_ptr<ado::Command> riempimentoDettaglio_;
    std::shared_ptr<ado::Command> conteggio_;
};

} // namespace veldran
