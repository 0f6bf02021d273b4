#include "accounts/filtri.h"

#include "sql/commands.h"
#include "sql/selection_statements.h"
#include "tree/albero_conti.h"

namespace veldran {

namespace {
constexpr int filtroTutti = 1;
}

void Filtri::STR_FILTRI_Click() {
    ambiente_.errori.Esegui("STR_FILTRI_Click", [this] {
        const controls::Tab* scheda = controlli_.STR_FILTRI.SelectedTab();
        controlli_.LBL_FILTRO_CORRENTE.SetCaption(" " + (scheda ? scheda->toolTipText : std::string()));
        CaricamentoConti();
    });
}

void Filtri::CaricamentoConti() {
    ambiente_.errori.Esegui("CaricamentoConti:", [this] {
        const PuntatoreOccupato occupato(ambiente_.schermo);
        ado::Connection& connessione = *ambiente_.connessione;
        sql::execute(connessione, sql::rimozioneSelezione());
        sql::execute(connessione, sql::creazioneSelezione(Indice()));
        if (Indice() != filtroTutti) {
            sql::execute(connessione, sql::identitaSelezione());
            const std::string completamento = sql::completamentoSelezione(ambiente_.codicePDC);
            while (sql::execute(connessione, completamento) >= 1) {
            }
        }
        for (const std::string& indice : sql::indiciSelezione(ambiente_.livelli)) {
            sql::execute(connessione, indice);
        }
        albero_.LoadTree();
    });
}

void Filtri::RiportoAttivo() {
    sql::execute(*ambiente_.connessione, sql::riportoAttivo());
}

void Filtri::RiportoCorrelato() {
    sql::execute(*ambiente_.connessione, sql::riportoCorrelato());
}

void Filtri::ImpostazioneCorrelato(bool correlato, const std::string& conto) {
    if (!correlatoConto_) {
        correlatoConto_ =
            sql::textCommand(ambiente_.connessione, sql::impostazioneCorrelatoConto(ambiente_.codicePDC),
                             {ado::Parameter("@CORRELATO", ado::adBoolean), sql::contoParameter("@CONTO")});
    }
    correlatoConto_->Parameters()["@CORRELATO"].Value(correlato);
    correlatoConto_->Parameters()["@CONTO"].Value(conto);
    correlatoConto_->Execute(nullptr, ado::adCmdText | ado::adExecuteNoRecords);
}

void Filtri::Rilascia() {
    sql::release(correlatoConto_);
}

} // namespace veldran
