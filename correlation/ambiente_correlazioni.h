#pragma once

#include "host/ambiente.h"
#include "platform/services/global_object.h"
#include "sql/correlation_statements.h"

#include <cstdint>
#include <string>

namespace veldran {

/// Signs of a correlation row, as they are stored.
enum SegnoCorrelazione : std::int16_t { segnoDare = 1, segnoAvere = 2 };

/// What the work areas of correlation mode share. Company and charts are fixed while the form is open.
struct AmbienteCorrelazioni {
    AmbienteDiLavoro& form;
    services::GlobalObject& globale; ///< as the start-up found it
    std::int32_t codicePDCCoin = 0;  ///< chart of the cost-accounting accounts
    std::int32_t codicePDCVds = 0;   ///< chart of the cost items
    bool gestioneVds = false;        ///< the company manages cost items
    std::string conto = {};          ///< general-ledger account whose correlations are being edited

    sql::CorrelationOwner proprietario() const { return {form.codiceDitta, form.codicePDC}; }
};

} // namespace veldran
