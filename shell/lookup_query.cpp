#include "shell/lookup_query.h"

#include "adapters/qt/text.h"
#include "platform/ado/command.h"
#include "platform/ado/recordset.h"
#include "platform/text.h"
#include "shell/cost_kinds.h"
#include "shell/word_filter.h"

#include <algorithm>
#include <string_view>

namespace veldran::shell {

using qt::toQt;

namespace {

using services::LookupKind;
using services::LookupRequest;

/// Where the codes of a list are, with the company's own values written in.
struct Source {
    std::string codeColumn;
    std::string descriptionColumn;
    std::string from; ///< with its WHERE, so that a condition may be added with AND
    int codeSize = 0; ///< characters
};

/// The mask of kinds that the request admits. Only cost accounts have a kind.
std::string kindsOf(const LookupRequest& request) {
    const bool narrowed = request.kind == LookupKind::ContiCoin && request.tipologie &&
                          (*request.tipologie & everyCostKind) != everyCostKind;
    return narrowed ? std::to_string(*request.tipologie) : "NULL";
}

Source sourceOf(const LookupRequest& request) {
    const std::string pdc = std::to_string(request.pdc);
    switch (request.kind) {
    case LookupKind::Causali:
        return {"CI03_CODCAUS", "CI03_DESCR", "FNCI03_CAUSALI(NULL, " + request.ditta + ") WHERE 1 = 1", 4};
    case LookupKind::ContiCoin:
    case LookupKind::VociDiSpesa:
        return {"PC03_CONTO", "PC03_DESCR",
                "FNPC03_ANAGPDC_COAN(" + pdc + ", NULL, " + request.ditta + ", " + kindsOf(request) +
                    ") WHERE PC03_FLGANALITICO = 1",
                15};
    case LookupKind::ContiCoge:
        break;
    }
    return {"CG24_CONTO", "CG24_DESCR", "CG24_TABPDC WHERE CG24_GRUPPO_CG10 = " + pdc, 10};
}

bool isOfLastLevel(const services::CodeStructure& structure, std::string_view code) {
    if (structure.groups.empty() || !structure.filledWithZeros) {
        return true;
    }
    const auto& last = structure.groups.back();
    const std::string_view group = code.substr(std::min(code.size(), static_cast<std::size_t>(last.start)),
                                               static_cast<std::size_t>(last.length));
    return group.find_first_not_of('0') != std::string_view::npos;
}

void requireConnection(const std::shared_ptr<ado::Connection>& connection) {
    if (!connection) {
        throw ado::AdoError({ado::adErrInvalidConnection, "Ricerca codici",
                             "Il campo non ha una connessione al database.", "08003", 0});
    }
}

/// The separator as stored; a blank one sets the groups apart by a blank. Codes are cut and joined by single
/// bytes, which a separator beyond ASCII is not.
char separatorOf(const std::string& stored) {
    constexpr char blank = ' ';
    constexpr char usual = '.';
    if (stored.empty()) {
        return blank;
    }
    return static_cast<unsigned char>(stored.front()) < 0x80U ? stored.front() : usual;
}

} // namespace

std::optional<std::string> queryDescription(const LookupRequest& request) {
    const Source source = sourceOf(request);
    if (request.code.empty() || utf16Length(request.code) > static_cast<std::size_t>(source.codeSize)) {
        return std::nullopt;
    }
    requireConnection(request.connection);
    const auto command = ado::Command::create();
    command->ActiveConnection(request.connection);
    command->CommandText("SELECT " + source.descriptionColumn + " FROM " + source.from + " AND " +
                         source.codeColumn + " = ?");
    command->Parameters().Append(command->CreateParameter("@CODICE", ado::adWChar, ado::adParamInput,
                                                          source.codeSize, Value(request.code)));
    const auto rows = command->Execute();
    return rows->EndOfFile() ? std::nullopt : std::optional(nullSafeText(rows->Fields()[0].Value()));
}

services::CodeStructure queryStructure(const std::shared_ptr<ado::Connection>& connection, std::int32_t pdc) {
    requireConnection(connection);
    const auto rows = connection->Execute(
        "SELECT PC01_SEPARATORE, PC01_LUNGGR1, PC01_LUNGGR2, PC01_LUNGGR3, PC01_LUNGGR4, PC01_LUNGGR5"
        " FROM PC01_PDC WHERE PC01_CODPDC = " +
            std::to_string(pdc),
        nullptr, ado::adCmdText);
    services::CodeStructure structure;
    structure.filledWithZeros = false;
    if (rows->EndOfFile()) {
        return structure;
    }
    structure.separator = separatorOf(nullSafeText(rows->Fields()[0].Value()));
    for (std::size_t column = 1; column < rows->Fields().Count(); ++column) {
        const int length = rows->Fields()[column].Value().toInt32();
        if (length > 0) {
            structure.groups.push_back({structure.codeLength, length});
            structure.codeLength += length;
        }
    }
    return structure;
}

std::vector<LookupRow> queryRows(const LookupRequest& request) {
    requireConnection(request.connection);
    const Source source = sourceOf(request);
    const auto records =
        request.connection->Execute("SELECT " + source.codeColumn + ", " + source.descriptionColumn +
                                    " FROM " + source.from + " ORDER BY " + source.codeColumn);
    std::vector<LookupRow> rows;
    ado::Field& codeField = records->Fields()[0];
    ado::Field& descriptionField = records->Fields()[1];
    for (; !records->EndOfFile(); records->MoveNext()) {
        const std::string code = nullSafeText(codeField.Value());
        if (isOfLastLevel(request.structure, code)) {
            const QString description = toQt(nullSafeText(descriptionField.Value()));
            rows.push_back(
                {toQt(code), toQt(request.structure.display(code)), description, folded(description)});
        }
    }
    return rows;
}

} // namespace veldran::shell
