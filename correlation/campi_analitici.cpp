#include "correlation/campi_analitici.h"

#include "platform/ado/recordset.h"
#include "sql/commands.h"

namespace veldran {

namespace {

constexpr std::int32_t ogniTipologia = 1023;

ado::Parameter parametroSegno() {
    ado::Parameter parametro("@SEGNO", ado::adNumeric, ado::adParamInput, 0);
    parametro.Precision(1);
    parametro.NumericScale(0);
    return parametro;
}

} // namespace

CampiAnalitici::~CampiAnalitici() {
    conto_.campo.BindValues(nullptr, nullptr);
    vds_.campo.BindValues(nullptr, nullptr);
}

void CampiAnalitici::ImpostazioneProprietaContoCOIN() {
    ambiente_.form.errori.Esegui("ImpostazioneProprietaContoCOIN:", [this] { prepara(conto_); });
}

void CampiAnalitici::ImpostazioneProprietaContoVDS() {
    ambiente_.form.errori.Esegui("ImpostazioneProprietaContoVDS:", [this] { prepara(vds_); });
}

void CampiAnalitici::prepara(Campo& campo) {
    campo.campo.SetConnection(ambiente_.form.connessione);
    campo.campo.SetLookupService(&ambiente_.globale.Lookups());
    campo.campo.SetLookupEnabled(true);
    campo.campo.SetChartCode(std::to_string(campo.pdc));
    campo.campo.BindValues(&campo.codiceCorrente, &campo.descrizioneCorrente);
    campo.descrizione.StandBehind(&campo.campo);
    campo.campo.SetCodeStructure(formatter(campo).Structure());
}

std::shared_ptr<ado::Command> CampiAnalitici::CMDGetTipologiaContoIndustriale() {
    return ambiente_.form.errori.Esegui(
        "CMDGetTipologiaContoIndustriale:", std::shared_ptr<ado::Command>(), [this] {
            if (!tipologia_) {
                tipologia_ = sql::textCommand(
                    ambiente_.form.connessione, sql::tipologiaContoIndustriale(),
                    {ado::Parameter("@CAUSALE", ado::adWChar, ado::adParamInput, sql::lunghezzaCausale),
                     parametroSegno()},
                    sql::Preparation::Prepared);
            }
            return tipologia_;
        });
}

std::int32_t CampiAnalitici::GetTipologiaContoIndustriale(const std::string& causale,
                                                          const std::string& segno) {
    return ambiente_.form.errori.Esegui("GetTipologiaContoIndustriale:", std::int32_t{0}, [&] {
        const auto comando = CMDGetTipologiaContoIndustriale();
        if (!comando) {
            return std::int32_t{0};
        }
        comando->Parameters()["@CAUSALE"].Value(causale);
        comando->Parameters()["@SEGNO"].Value(segno);
        const auto record = comando->Execute();
        if (record->BOF() || record->EndOfFile()) {
            return std::int32_t{0};
        }
        if (record->Fields()["TUTTI"].Value().toInt32() == 1) {
            return ogniTipologia;
        }
        return record->Fields()["TIPOLOGIA_CONTO_INDUSTRIALE"].Value().toInt32();
    });
}

std::string CampiAnalitici::DescrizioneConto(const std::string& conto) {
    return ambiente_.form.errori.Esegui("DescrizioneConto:", std::string(), [&] {
        return descrizione(
            conto_, conto,
            sql::descrizioneConto(ambiente_.globale.CodicePdcCoin(), conto, ambiente_.form.codiceDitta));
    });
}

std::string CampiAnalitici::DescrizioneVDS(const std::string& vds) {
    return ambiente_.form.errori.Esegui("DescrizioneVDS:", std::string(), [&] {
        return descrizione(
            vds_, vds,
            sql::descrizioneVDS(ambiente_.globale.CodicePdcVds(), vds, ambiente_.form.codiceDitta));
    });
}

std::string CampiAnalitici::descrizione(Campo& campo, const std::string& codice, const std::string& testo) {
    if (const auto nota = campo.descrizioni.find(codice); nota != campo.descrizioni.end()) {
        return nota->second;
    }
    const auto record = sql::query(*ambiente_.form.connessione, testo);
    const bool trovata = !record->BOF() && !record->EndOfFile();
    return campo.descrizioni
        .emplace(codice, trovata ? nullSafeText(record->Fields()[0].Value()) : std::string())
        .first->second;
}

const services::CodeFormatter& CampiAnalitici::formatter(Campo& campo) {
    if (!campo.formatter) {
        campo.formatter = ambiente_.globale.Lookups().NewCodeFormatter(ambiente_.form.connessione, campo.pdc);
    }
    return *campo.formatter;
}

std::string CampiAnalitici::FormaConto(const std::string& conto) {
    return formatter(conto_).Format(conto, true, '*');
}

std::string CampiAnalitici::FormaVDS(const std::string& vds) {
    return formatter(vds_).Format(vds, true, '*');
}

void CampiAnalitici::GestioneConto(controls::LookupField& campo) {
    ambiente_.form.errori.Esegui("GestioneConto:", [&] {
        services::LookupRequest richiesta;
        richiesta.code = campo.CodeStructure().codeOf(campo.Text());
        completa(richiesta, &campo == &conto_.campo ? conto_ : vds_);
        ambiente_.globale.Lookups().Maintain(richiesta);
        if (!campo.Text().empty()) {
            campo.Decode(); // what was changed there is shown
        }
    });
}

void CampiAnalitici::completa(services::LookupRequest& richiesta, const Campo& campo) const {
    richiesta.kind = campo.genere;
    richiesta.connection = ambiente_.form.connessione;
    richiesta.connectionString = ambiente_.form.stringaConnessione;
    richiesta.ditta = ambiente_.form.codiceDitta;
    richiesta.pdc = campo.pdc;
    richiesta.structure = campo.campo.CodeStructure();
}

std::string CampiAnalitici::segno() const {
    const controls::ComboBox& combo = controlli_.CBO_SEGNO;
    return combo.ListIndex() < 0
               ? std::string()
               : std::to_string(combo.Items()[static_cast<std::size_t>(combo.ListIndex())].itemData);
}

/// Only accounts of a kind that the row's causale and sign allow.
void CampiAnalitici::limita(services::LookupRequest& richiesta) {
    const std::string causale = nullSafeText(controlli_.TXT_CAUSALE.Text());
    const std::string segnoRiga = segno();
    richiesta.tipologie = segnoRiga.empty() ? 0 : GetTipologiaContoIndustriale(causale, segnoRiga);
    if (richiesta.tipologie != ogniTipologia) {
        richiesta.restriction = "Solo i conti delle tipologie ammesse per la causale " + causale +
                                " e il segno " + controlli_.CBO_SEGNO.Text() + ".";
    }
}

void CampiAnalitici::TXT_CONTO_StartDecode(services::LookupRequest& richiesta) {
    richiestaInCorso_ = "TXT_CONTO_StartDecode";
    ambiente_.form.errori.Esegui(richiestaInCorso_, [&] {
        completa(richiesta, conto_);
        if (richiesta.entered) {
            limita(richiesta); // a stored account keeps its description, whatever is allowed today
        }
    });
}

void CampiAnalitici::TXT_CONTO_StartLookup(services::LookupRequest& richiesta) {
    richiestaInCorso_ = "TXT_CONTO_StartLookup";
    ambiente_.form.errori.Esegui(richiestaInCorso_, [&] {
        completa(richiesta, conto_);
        limita(richiesta);
        richiesta.title = "Conti di contabilità analitica";
    });
}

void CampiAnalitici::TXT_CONTO_KeyButtonMenuPress(const std::string& voce) {
    menu(conto_, "TXT_CONTO_KeyButtonMenuPress", voce);
}

void CampiAnalitici::TXT_VDS_StartDecode(services::LookupRequest& richiesta) {
    richiestaInCorso_ = "TXT_VDS_StartDecode";
    ambiente_.form.errori.Esegui(richiestaInCorso_, [&] { completa(richiesta, vds_); });
}

void CampiAnalitici::TXT_VDS_StartLookup(services::LookupRequest& richiesta) {
    richiestaInCorso_ = "TXT_VDS_StartLookup";
    ambiente_.form.errori.Esegui(richiestaInCorso_, [&] {
        completa(richiesta, vds_);
        richiesta.title = "Voci di spesa";
    });
}

void CampiAnalitici::TXT_VDS_KeyButtonMenuPress(const std::string& voce) {
    menu(vds_, "TXT_VDS_KeyButtonMenuPress", voce);
}

void CampiAnalitici::menu(Campo& campo, const char* etichetta, const std::string& voce) {
    ambiente_.form.errori.Esegui(etichetta, [&] {
        if (voce == controls::LookupField::menuManagement) {
            GestioneConto(campo.campo);
            buildScript_();
        }
    });
}

void CampiAnalitici::CampoFailed() {
    ambiente_.form.errori.Esegui(richiestaInCorso_, [] { throw; });
}

void CampiAnalitici::Rilascia() {
    sql::release(tipologia_);
}

} // namespace veldran
