#include "platform/ado/raise.h"

#include <algorithm>
#include <array>

namespace veldran::ado {

namespace {

struct Text {
    int number;
    const char* sqlState;
    const char* description;
};

constexpr std::array texts{
    Text{adErrInvalidArgument, "HY024",
         "Argomento non valido, fuori dell'intervallo consentito o in conflitto con altri."},
    Text{adErrNoCurrentRecord, "HY109",
         "BOF o EOF è vero oppure il record corrente è stato eliminato: l'operazione richiede un record "
         "corrente."},
    Text{adErrIllegalOperation, "HY010", "Operazione non consentita in questo contesto."},
    Text{adErrInTransaction, "25000",
         "Impossibile chiudere la connessione mentre è in corso una transazione."},
    Text{adErrFeatureNotAvailable, "HYC00",
         "L'oggetto o il provider non è in grado di eseguire l'operazione richiesta."},
    Text{adErrItemNotFound, "07009",
         "Impossibile trovare l'elemento che corrisponde al nome o al numero richiesto."},
    Text{adErrDataConversion, "22018", "Il valore è di un tipo non valido per l'operazione corrente."},
    Text{adErrObjectClosed, "HY010", "Operazione non consentita se l'oggetto è chiuso."},
    Text{adErrObjectOpen, "08002", "Operazione non consentita se l'oggetto è aperto."},
    Text{adErrInvalidParamInfo, "07001", "Il parametro è definito in modo non corretto o incompleto."},
    Text{adErrInvalidConnection, "08003",
         "La connessione è chiusa o non valida in questo contesto: impossibile eseguire l'operazione."},
    Text{adErrConcurrencyViolation, "01001",
         "Impossibile trovare la riga da aggiornare: è stata modificata o eliminata dopo l'ultima lettura."},
    Text{adErrKeyInsufficient, "01001",
         "Le colonne chiave non identificano una sola riga: troppe righe interessate."},
    Text{adErrTransactionExists, "25001", "Una sola transazione può essere attiva nella sessione."},
    Text{adErrNoTransaction, "25000", "Nessuna transazione attiva."},
    Text{sqlErrOverflow, "22003", "Errore di overflow aritmetico durante la conversione del valore."},
    Text{sqlErrTextTooLong, "22001", "Il testo è troppo lungo e verrebbe troncato."},
};

} // namespace

void raise(int number, const std::string& detail) {
    const auto* const known =
        std::find_if(texts.begin(), texts.end(), [&](const Text& text) { return text.number == number; });
    Error error{number, "ADO", "Errore non specificato.", "HY000", 0};
    if (known != texts.end()) {
        error.Description = known->description;
        error.SQLState = known->sqlState;
    }
    if (!detail.empty()) {
        error.Description += " " + detail;
    }
    throw AdoError(std::move(error));
}

} // namespace veldran::ado
