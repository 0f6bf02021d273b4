#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Texts that build and keep the working table #CG24_TABPDC_SELECTED, what the current filter lets through.
namespace veldran::sql {

std::string rimozioneSelezione();
/// Copies the accounts that pass a filter. \param filtro 1-based; 2 to 9 have a condition, others let all
/// pass.
std::string creazioneSelezione(int filtro);
std::string identitaSelezione();
/// Adds the parents that the selection still lacks, one level at each execution.
std::string completamentoSelezione(std::int32_t codicePDC);
/// Primary key and indexes in their order; those on ancestors up to the chart's number of levels.
std::vector<std::string> indiciSelezione(std::int16_t livelli);

/// Copies ATTIVO, or CORRELATO, of the selection back into #CG24_TABPDC.
const std::string& riportoAttivo();
const std::string& riportoCorrelato();
/// Sets CORRELATO of one account of the selection; markers: the flag, the account.
std::string impostazioneCorrelatoConto(std::int32_t codicePDC);

} // namespace veldran::sql
