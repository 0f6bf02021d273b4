#include "causali/copie_correlazioni.h"

#include "sql/clipboard_statements.h"
#include "sql/commands.h"

#include <utility>

namespace veldran {

void CopieCorrelazioni::esegui(std::string testo, std::initializer_list<Valore> valori) const {
    const auto comando = sql::textCommand(ambiente_.form.connessione, std::move(testo), {});
    for (const Valore& valore : valori) {
        comando->Parameters().Append(
            ado::Parameter(valore.parametro, ado::adWChar, ado::adParamInput, valore.lunghezza));
        comando->Parameters()[valore.parametro].Value(valore.testo);
    }
    comando->Execute(nullptr, ado::adExecuteNoRecords);
}

void CopieCorrelazioni::EliminaConto(const std::string& conto) {
    esegui(sql::eliminazioneConto(ambiente_.proprietario()), {{"@CONTO", sql::lunghezzaConto, conto}});
}

void CopieCorrelazioni::EliminaCausale(const std::string& conto, const std::string& causale) {
    esegui(sql::eliminazioneCausale(ambiente_.proprietario()),
           {{"@CONTO", sql::lunghezzaConto, conto}, {"@CAUSALE", sql::lunghezzaCausale, causale}});
}

void CopieCorrelazioni::CopiaConto(const std::string& destinazione, const std::string& origine) {
    esegui(sql::copiaConto(ambiente_.proprietario()), {{"@DESTINAZIONE", sql::lunghezzaConto, destinazione},
                                                       {"@ORIGINE", sql::lunghezzaConto, origine}});
}

void CopieCorrelazioni::CopiaCausale(const std::string& destinazione, const std::string& conto,
                                     const std::string& origine) {
    esegui(sql::copiaCausale(ambiente_.proprietario()),
           {{"@DESTINAZIONE", sql::lunghezzaCausale, destinazione},
            {"@CONTO", sql::lunghezzaConto, conto},
            {"@ORIGINE", sql::lunghezzaCausale, origine}});
}

} // namespace veldran
