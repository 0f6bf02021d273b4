#include "adapters/odbc/procedures.h"

#include "adapters/odbc/catalogue.h"
#include "adapters/odbc/types.h"
#include "platform/ado/raise.h"
#include "platform/ado/statement_text.h"
#include "platform/ado/value_conversion.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::odbc {

namespace {

/// What a text parameter is taken for whose size the catalogue does not tell.
constexpr int unknownTextSize = 4000;
/// A catalogue that does not know the digits of a number tells the greatest there are, which would leave none
/// before the point.
constexpr int greatestDigits = 38;

/// Where the catalogue functions put what, from 0.
enum ProcedureColumn : std::size_t {
    schemaColumn = 1,
    procedureColumn = 2,
    nameColumn = 3,
    kindColumn = 4,
    typeColumn = 5,
    sizeColumn = 7,
    lengthColumn = 8,
    scaleColumn = 9
};

/// "SPCI_X;1" is the first version of SPCI_X.
std::string_view withoutVersion(std::string_view name) {
    return name.substr(0, name.find(';'));
}

int integerOf(const Value& value) {
    return value.isNull() ? 0 : value.toInt32();
}

ado::ParameterInfo parameterOf(const ado::RowSet& rows, std::size_t row) {
    ado::ParameterInfo info;
    info.name = nullSafeText(rows.cell(row, nameColumn));
    info.type = adoType(static_cast<SQLSMALLINT>(integerOf(rows.cell(row, typeColumn))));
    info.direction = integerOf(rows.cell(row, kindColumn)) == SQL_PARAM_INPUT ? ado::adParamInput
                                                                              : ado::adParamInputOutput;
    const int size = integerOf(rows.cell(row, sizeColumn));
    if (ado::isDecimal(info.type)) {
        const int scale = integerOf(rows.cell(row, scaleColumn));
        const bool isTold = size > 0 && scale < greatestDigits;
        info.precision = static_cast<std::uint8_t>(isTold ? std::min(size, greatestDigits) : 18);
        info.scale = static_cast<std::uint8_t>(isTold ? std::max(scale, 0) : 6);
    } else if (ado::isText(info.type)) {
        const bool isWide = info.type == ado::adWChar || info.type == ado::adVarWChar;
        const int bytes = integerOf(rows.cell(row, lengthColumn));
        info.size = size > 0 ? size : (isWide ? bytes / 2 : bytes);
        info.size = info.size > 0 ? info.size : unknownTextSize;
    }
    return info;
}

bool isParameterName(std::string_view name) {
    return name.size() > 1 && name.front() == '@' && std::all_of(name.begin() + 1, name.end(), [](char c) {
               return c == '_' || c == '#' || c == '$' || c == '@' || (c >= '0' && c <= '9') ||
                      (toLowerAscii(c) >= 'a' && toLowerAscii(c) <= 'z') ||
                      static_cast<unsigned char>(c) >= 0x80;
           });
}

} // namespace

std::vector<ado::ParameterInfo> procedureParameters(Link& link, std::string_view name) {
    const ObjectName object = objectName(name);
    const auto isMeant = [&](const ado::RowSet& rows, std::size_t row) {
        return equalsIgnoringAsciiCase(withoutVersion(nullSafeText(rows.cell(row, procedureColumn))),
                                       object.name);
    };
    const auto rows = procedureColumns(link, object);
    std::vector<ado::ParameterInfo> parameters;
    std::string schema;
    bool found = false;
    for (std::size_t row = 0; row < rows->rowCount(); ++row) {
        const std::string owner = nullSafeText(rows->cell(row, schemaColumn));
        if (!isMeant(*rows, row) || (found && owner != schema)) {
            continue;
        }
        found = true;
        schema = owner;
        const int kind = integerOf(rows->cell(row, kindColumn));
        if (kind != SQL_RETURN_VALUE && kind != SQL_RESULT_COL) {
            parameters.push_back(parameterOf(*rows, row));
        }
    }
    if (!found && !link.speaksTransactSql()) { // there, a procedure has a return value at least
        const auto procedures = procedureNames(link, object);
        for (std::size_t row = 0; row < procedures->rowCount(); ++row) {
            found = found || isMeant(*procedures, row);
        }
    }
    if (!found) {
        fail(errorProcedureNotFound, "42000",
             "Impossibile trovare la stored procedure '" + std::string(name) +
                 "', o manca il diritto di eseguirla.");
    }
    return parameters;
}

std::string callText(std::string_view name, std::span<const ado::BoundParameter> parameters) {
    std::string text =
        "EXEC " + (name.find('[') == std::string_view::npos ? ado::quotedTable(name) : std::string(name));
    const char* separator = " ";
    for (const ado::BoundParameter& parameter : parameters) {
        if (!isParameterName(parameter.info.name)) {
            ado::raise(ado::adErrInvalidParamInfo, "(parametro " + parameter.info.name + ")");
        }
        text += separator + parameter.info.name + " = ?";
        separator = ", ";
    }
    return text;
}

} // namespace veldran::odbc
