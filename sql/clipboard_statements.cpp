#include "sql/clipboard_statements.h"

#include "sql/statement.h"

#include <array>

namespace veldran::sql {

namespace {

constexpr std::array<std::string_view, 11> correlationColumns = {
    "CI15_DITTA_CG18", "CI15_CODCAUS_CI03", "CI15_CODPDC_CG10", "CI15_CONTO_CG24",
    "CI15_PROG",       "CI15_CODPDC_PC01",  "CI15_CONTO_PC03",  "CI15_CODVDS_PC01",
    "CI15_VDS_PC03",   "CI15_INDSEGNO",     "CI15_PERC",
};

/// All columns, one a line; `replaced` is the one in whose place a parameter stands.
std::string columns(std::string_view replaced = {}) {
    std::string text;
    for (const std::string_view column : correlationColumns) {
        const std::string before = text.empty() ? "    " : "    , ";
        text = withLines(std::move(text), {before + std::string(column == replaced ? "?" : column)});
    }
    return text;
}

std::string ofAccount(const CorrelationOwner& owner) {
    return lines({
        "WHERE",
        "    CI15_DITTA_CG18 = " + owner.codiceDitta,
        "    AND CI15_CODPDC_CG10 = " + std::to_string(owner.codicePDC),
        "    AND CI15_CONTO_CG24 = ?",
    });
}

constexpr std::string_view ofCausale = "    AND CI15_CODCAUS_CI03 = ?";

std::string copy(std::string_view replaced, const std::string& where, std::string_view order) {
    return lines({
        "INSERT INTO CI15_CORRCONTICOGE",
        "(",
        columns(),
        ")",
        "SELECT",
        columns(replaced),
        "FROM",
        "    CI15_CORRCONTICOGE",
        where,
        "ORDER BY",
        order,
    });
}

} // namespace

std::string eliminazioneConto(const CorrelationOwner& owner) {
    return lines({"DELETE FROM CI15_CORRCONTICOGE", ofAccount(owner)});
}

std::string eliminazioneCausale(const CorrelationOwner& owner) {
    return lines({eliminazioneConto(owner), ofCausale});
}

std::string copiaConto(const CorrelationOwner& owner) {
    return copy("CI15_CONTO_CG24", ofAccount(owner),
                lines({"    CI15_CODCAUS_CI03 ASC", "    , CI15_PROG ASC"}));
}

std::string copiaCausale(const CorrelationOwner& owner) {
    return copy("CI15_CODCAUS_CI03", lines({ofAccount(owner), ofCausale}), "    CI15_PROG ASC");
}

} // namespace veldran::sql
