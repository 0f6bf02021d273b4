#pragma once

#include "sql/correlation_statements.h"

/// Texts that copy and delete stored correlations as a whole; parameters in the order of their names here.
namespace veldran::sql {

/// Every causale of an account. Parameter: CONTO.
std::string eliminazioneConto(const CorrelationOwner& owner);
/// One causale of an account. Parameters: CONTO, CAUSALE.
std::string eliminazioneCausale(const CorrelationOwner& owner);
/// All rows of an account under another account. Parameters: DESTINAZIONE, ORIGINE.
std::string copiaConto(const CorrelationOwner& owner);
/// The rows of a causale under another causale of the same account. Parameters: DESTINAZIONE, CONTO, ORIGINE.
std::string copiaCausale(const CorrelationOwner& owner);

} // namespace veldran::sql
