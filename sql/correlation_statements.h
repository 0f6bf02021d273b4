#pragma once

#include <cstdint>
#include <string>

/// Texts that read and write the correlations of one account and the working tables they are edited in.
/// Company and charts are written in as literals; each "?" is the account unless said otherwise.
namespace veldran::sql {

/// Whose correlations: company code without quotes, general-ledger chart.
struct CorrelationOwner {
    std::string codiceDitta;
    std::int32_t codicePDC = 0;
};

std::string conteggioCorrelazioni(const CorrelationOwner& owner);
std::string causaliCorrelate(const CorrelationOwner& owner);

/// \name Working tables #TESTATA (one record per causale) and #DETTAGLIO (the rows).
///@{
std::string creazioneTestata();
std::string creazioneDettaglio();
std::string svuotamentoTestata();
std::string svuotamentoDettaglio();
std::string riempimentoTestata(const CorrelationOwner& owner);
std::string riempimentoDettaglio(const CorrelationOwner& owner);
std::string letturaTestata();
std::string letturaDettaglio(const std::string& causale);
std::string letturaDettaglioVuoto();
std::string rimozioneRigheDettaglio(const std::string& causale);
///@}

/// \name The permanent rows of one causale. Causale and account are written in quotes and not escaped:
/// neither can hold a quote.
///@{
std::string rimozioneCorrelazione(const CorrelationOwner& owner, const std::string& causale,
                                  const std::string& conto);
/// From the working tables.
std::string scritturaCorrelazione(const CorrelationOwner& owner, const std::string& causale,
                                  const std::string& conto);
///@}

/// Kinds of cost account that a causale and a sign allow; markers: the causale, the sign.
std::string tipologiaContoIndustriale();
/// Descriptions. The marker for the company stays in the first text: the host's connections resolve it.
std::string descrizioneConto(std::int32_t codicePDC, const std::string& conto,
                             const std::string& codiceDitta);
std::string descrizioneVDS(std::int32_t codicePDC, const std::string& vds, const std::string& codiceDitta);

} // namespace veldran::sql
