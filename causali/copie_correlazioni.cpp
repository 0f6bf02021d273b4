#include "causali/copie_correlazioni.h"

#include "sql/clipboard_statements.h"
#include "sql/commands.h"

namespace veldran {

void CopieCorrelazioni::esegui(Comando& comando, std::string (*testo)(const sql::CorrelationOwner&),
                               std::initializer_list<Valore> valori) {
    if (!comando) {
        comando = sql::textCommand(ambiente_.form.connessione, testo(ambiente_.proprietario()), {});
        for (const Valore& valore : valori) {
            comando->Parameters().Append(
                ado::Parameter(valore.parametro, ado::adWChar, ado::adParamInput, valore.lunghezza));
        }
    }
    for (const Valore& valore : valori) {
        comando->Parameters()[valore.parametro].Value(valore.testo);
    }
    comando->Execute(nullptr, ado::adExecuteNoRecords);
}

void CopieCorrelazioni::EliminaConto(const std::string& conto) {
    esegui(eliminaConto_, sql::eliminazioneConto, {{"@CONTO", sql::lunghezzaConto, conto}});
}

void CopieCorrelazioni::EliminaCausale(const std::string& conto, const std::string& causale) {
    esegui(eliminaCausale_, sql::eliminazioneCausale,
           {{"@CONTO", sql::lunghezzaConto, conto}, {"@CAUSALE", sql::lunghezzaCausale, causale}});
}

void CopieCorrelazioni::CopiaConto(const std::string& destinazione, const std::string& origine) {
    esegui(
        copiaConto_, sql::copiaConto,
        {{"@DESTINAZIONE", sql::lunghezzaConto, destinazione}, {"@ORIGINE", sql::lunghezzaConto, origine}});
}

void CopieCorrelazioni::CopiaCausale(const std::string& destinazione, const std::string& conto,
                                     const std::string& origine) {
    esegui(copiaCausale_, sql::copiaCausale,
           {{"@DESTINAZIONE", sql::lunghezzaCausale, destinazione},
            {"@CONTO", sql::lunghezzaConto, conto},
            {"@ORIGINE", sql::lunghezzaCausale, origine}});
}

void CopieCorrelazioni::Rilascia() {
    for (Comando* comando : {&eliminaConto_, &eliminaCausale_, &copiaConto_, &copiaCausale_}) {
        sql::release(*comando);
    }
}

} // namespace veldran
