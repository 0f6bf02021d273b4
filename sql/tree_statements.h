#pragma once

#include <cstdint>
#include <string>

/// Texts of the accounts tree: children, search, activation. All read or write #CG24_TABPDC_SELECTED.
namespace veldran::sql {

/// Level-1 accounts with analytic accounts of a nature below them; both markers are the nature.
std::string figliRadice();
/// Direct children of an account; markers: chart, account, nature.
std::string figliIntermedio();
/// One analytic account of the selection; marker: the account.
std::string ricercaConto(std::int32_t codicePDC);

/// Sets ATTIVO of the accounts of a nature whose code is like `modello`.
std::string attivazioneSelezione(bool attiva, const std::string& modello, int natura);
/// A row when the nature has an analytic account that is not activated.
std::string contoInattivoDiNatura(int natura);
/// A row when the nature has an analytic account.
std::string contoDiNatura(int natura);

} // namespace veldran::sql
