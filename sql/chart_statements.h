#pragma once

#include <cstdint>
#include <string>

/// Texts that read the chart of accounts and build the working table #CG24_TABPDC.
namespace veldran::sql {

/// Number of levels of a chart.
std::string livelliPDC(std::int32_t codicePDC);

/// Copies the chart into #CG24_TABPDC with its derived columns.
/// \param livelli number of levels; outside 2 to 5 every derived column but LIVELLO1 is NULL.
std::string creazioneTabellaConti(std::int32_t codicePDC, std::int16_t livelli);
std::string chiaveTabellaConti();
std::string indiceContoTabellaConti();
std::string indiceParentTabellaConti();

/// Sets ATTIVO of #CG24_TABPDC from the company's activated accounts.
std::string impostazioneAttivi(const std::string& codiceDitta, std::int32_t codicePDC);
/// Sets CORRELATO of #CG24_TABPDC from the company's correlations.
std::string impostazioneCorrelati(const std::string& codiceDitta);

/// Header code of an account, as the server computes it; one marker, the account code.
std::string codeHeader(std::int16_t livelli);

} // namespace veldran::sql
