#include "adapters/embedded/constraint_errors.h"

#include "adapters/embedded/errors.h"

#include <algorithm>
#include <utility>

namespace veldran::embedded {

namespace {

// The part behind "... constraint failed: ".
std::string detailOf(const std::string& message) {
    const std::size_t colon = message.find(": ");
    return colon == std::string::npos ? std::string() : message.substr(colon + 2);
}

// "T.A" of "T.A, T.B"; table names hold no dot.
std::pair<std::string, std::string> splitColumn(const std::string& detail) {
    const std::string first = detail.substr(0, detail.find(", "));
    const std::size_t dot = first.find('.');
    if (dot == std::string::npos) {
        return {first, {}};
    }
    return {first.substr(0, dot), first.substr(dot + 1)};
}

std::vector<std::string> columnsOf(const std::string& detail, const std::string& table) {
    std::vector<std::string> result;
    for (std::size_t at = 0; at < detail.size();) {
        const std::size_t comma = std::min(detail.find(", ", at), detail.size());
        std::string column = detail.substr(at, comma - at);
        if (column.starts_with(table + ".")) {
            column.erase(0, table.size() + 1);
        }
        result.push_back(std::move(column));
        at = comma + 2;
    }
    return result;
}

ado::Error uniqueError(const std::string& table, const std::vector<std::string>& columns,
                       ObjectResolver* objects) {
    const auto rule = objects == nullptr ? std::nullopt : objects->uniqueRule(table, columns);
    if (rule && rule->kind == UniqueRule::Kind::Index) {
        return makeError(errorUniqueIndexViolation, "23000",
                         "Impossibile inserire una riga con chiave duplicata nell'oggetto '" + table +
                             "' con indice univoco '" + rule->name + "'.");
    }
    if (rule && rule->kind == UniqueRule::Kind::RowNumber) {
        return makeError(errorKeyViolation, "23000",
                         "Nel database incorporato la colonna Identity '" + rule->name + "' della tabella '" +
                             table + "' non ammette valori ripetuti, anche senza una chiave.");
    }
    std::string name;
    if (rule) {
        name = (rule->kind == UniqueRule::Kind::PrimaryKey ? " PRIMARY KEY '" : " UNIQUE KEY '") +
               rule->name + "'";
    }
    return makeError(errorKeyViolation, "23000",
                     "Violazione del vincolo" + name +
                         ". Impossibile inserire la chiave duplicata nell'oggetto '" + table + "'.");
}

} // namespace

ado::Error constraintError(int code, const std::string& message, ObjectResolver* objects) {
    const std::string detail = detailOf(message);
    const auto [table, column] = splitColumn(detail);
    if (code == SQLITE_CONSTRAINT_NOTNULL) {
        return makeError(515, "23000",
                         "Impossibile inserire il valore NULL nella colonna '" + column +
                             "' della tabella '" + table + "'. La colonna non ammette valori NULL.");
    }
    if (code == SQLITE_CONSTRAINT_CHECK) {
        return makeError(547, "23000", "L'istruzione è in conflitto con il vincolo CHECK '" + detail + "'.");
    }
    return uniqueError(table, columnsOf(detail, table), objects);
}

} // namespace veldran::embedded
