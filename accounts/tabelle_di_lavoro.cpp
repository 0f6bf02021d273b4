#include "accounts/tabelle_di_lavoro.h"

#include "platform/ado/recordset.h"
#include "sql/chart_statements.h"
#include "sql/commands.h"

namespace veldran {

std::int16_t TabelleDiLavoro::GetLivelliPDC() {
    return ambiente_.errori.Esegui("GetLivelliPDC:", std::int16_t{0}, [this] {
        const auto record = sql::query(*ambiente_.connessione, sql::livelliPDC(ambiente_.codicePDC));
        return record->Fields()[0].Value().toInt16();
    });
}

void TabelleDiLavoro::ConfigurazioneTabelleTemporanee() {
    ambiente_.errori.Esegui("ConfigurazioneTabelleTemporanee:", [this] {
        const PuntatoreOccupato occupato(ambiente_.schermo);
        ado::Connection& connessione = *ambiente_.connessione;
        sql::execute(connessione, sql::creazioneTabellaConti(ambiente_.codicePDC, ambiente_.livelli));
        sql::execute(connessione, sql::chiaveTabellaConti());
        sql::execute(connessione, sql::indiceContoTabellaConti());
        sql::execute(connessione, sql::indiceParentTabellaConti());
        sql::execute(connessione, sql::impostazioneAttivi(ambiente_.codiceDitta, ambiente_.codicePDC));
        sql::execute(connessione, sql::impostazioneCorrelati(ambiente_.codiceDitta));
    });
}

std::string TabelleDiLavoro::GetCodeHeader(const std::string& conto) {
    return ambiente_.errori.Esegui("GetCodeHeader:", std::string(), [&] {
        if (!codeHeader_) {
            codeHeader_ = sql::textCommand(ambiente_.connessione, sql::codeHeader(ambiente_.livelli),
                                           {sql::contoParameter("@CONTO")});
        }
        codeHeader_->Parameters()["@CONTO"].Value(conto);
        const auto record = codeHeader_->Execute();
        if (record->BOF() || record->EndOfFile()) {
            return std::string();
        }
        return record->Fields()[0].Value().toText();
    });
}

void TabelleDiLavoro::Rilascia() {
    sql::release(codeHeader_);
}

} // namespace veldran
