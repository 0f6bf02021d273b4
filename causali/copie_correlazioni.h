#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/ado/command.h"

#include <initializer_list>
#include <memory>
#include <string>

namespace veldran {

/// What a clipboard holds: a reference to the source, never its rows. A paste copies them as they are stored
/// at that moment.
enum class ModoAppunti { Vuoto = 0, Copia = 1, Taglia = 2 };

/// The statements that copy and delete stored correlations as a whole. They run one by one, without a
/// transaction of their own. Every routine throws ado::AdoError.
class CopieCorrelazioni {
public:
    explicit CopieCorrelazioni(AmbienteCorrelazioni& ambiente) : ambiente_(ambiente) {}

    void EliminaConto(const std::string& conto);
    void EliminaCausale(const std::string& conto, const std::string& causale);
    void CopiaConto(const std::string& destinazione, const std::string& origine);
    void CopiaCausale(const std::string& destinazione, const std::string& conto, const std::string& origine);

    /// Detaches the kept commands from the connection.
    void Rilascia();

private:
    struct Valore {
        const char* parametro;
        int lunghezza; ///< characters
        const std::string& testo;
    };
    using Comando = std::shared_ptr<ado::Command>; // shared as ADO commands are
    void esegui(Comando& comando, std::string (*testo)(const sql::CorrelationOwner&),
                std::initializer_list<Valore> valori);

    AmbienteCorrelazioni& ambiente_;
    Comando eliminaConto_;
    Comando eliminaCausale_;
    Comando copiaConto_;
    Comando copiaCausale_;
};

} // namespace veldran
