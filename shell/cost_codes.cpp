#include "shell/cost_codes.h"

#include "platform/ado/command.h"
#include "platform/ado/recordset.h"
#include "platform/text.h"

#include <algorithm>
#include <initializer_list>

namespace veldran::shell {
namespace {

struct Argument {
    const char* name;
    ado::DataTypeEnum type;
    int size;
    Value value;
};

Argument textArgument(const char* name, int size, const std::string& text) {
    return {name, ado::adVarWChar, size, Value(text)};
}

Argument codeArgument(const std::string& code) {
    return {"@CONTO", ado::adWChar, costCodeSize, Value(code)};
}

Argument numberArgument(const char* name, std::int32_t number) {
    return {name, ado::adInteger, 0, Value(number)};
}

std::shared_ptr<ado::Command> commandOf(const std::shared_ptr<ado::Connection>& connection, const char* text,
                                        std::initializer_list<Argument> arguments) {
    auto command = ado::Command::create();
    command->ActiveConnection(connection);
    command->CommandText(text);
    for (const Argument& argument : arguments) {
        command->Parameters().Append(command->CreateParameter(argument.name, argument.type, ado::adParamInput,
                                                              argument.size, argument.value));
    }
    return command;
}

bool isPlainCode(const std::string& code) {
    return std::all_of(code.begin(), code.end(),
                       [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); });
}

/// The lengths at which a code of the chart may end, the shortest first.
std::vector<int> lengthsOf(const services::CodeStructure& structure) {
    std::vector<int> lengths;
    for (const auto& group : structure.groups) {
        lengths.push_back(group.start + group.length);
    }
    return lengths;
}

/// "3, 6 o 10".
std::string enumeration(const std::vector<int>& numbers) {
    std::string text;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        text += i == 0 ? "" : i + 1 == numbers.size() ? " o " : ", ";
        text += std::to_string(numbers[i]);
    }
    return text;
}

std::optional<std::string> objectionToForm(const CostCode& code, const services::CodeStructure& structure) {
    if (code.code.empty()) {
        return "Indicare il codice.";
    }
    if (!isPlainCode(code.code)) {
        return "Il codice può contenere soltanto lettere non accentate e cifre.";
    }
    const int length = static_cast<int>(code.code.size());
    const std::vector<int> lengths = lengthsOf(structure);
    if (lengths.empty()) {
        return length <= costCodeSize
                   ? std::nullopt
                   : std::optional<std::string>("Il codice è troppo lungo: al massimo " +
                                                std::to_string(costCodeSize) + " caratteri.");
    }
    if (std::find(lengths.begin(), lengths.end(), length) == lengths.end()) {
        return "Il codice ha " + std::to_string(length) + (length == 1 ? " carattere" : " caratteri") +
               ": in questo piano ne ha " + enumeration(lengths) + ".";
    }
    if (code.group && length == lengths.back()) {
        return "Un codice dell'ultimo livello non può essere un raggruppamento.";
    }
    return std::nullopt;
}

std::optional<std::string> objectionToPlace(const CostCode& code, const CostCodes& codes,
                                            const services::CodeStructure& structure) {
    const std::string shown = structure.display(code.code);
    if (const auto taken = codes.find(code.code)) {
        return taken->company == commonToAll || taken->company == codes.company()
                   ? "Il codice " + shown + " esiste già: «" + taken->description + "»."
                   : "Il codice " + shown + " è già riservato a un'altra ditta.";
    }
    int above = 0;
    for (const int length : lengthsOf(structure)) {
        above = length < static_cast<int>(code.code.size()) ? length : above;
    }
    if (above == 0) {
        return std::nullopt;
    }
    const std::string parent = code.code.substr(0, static_cast<std::size_t>(above));
    const auto group = codes.find(parent);
    if (!group) {
        return "Manca il raggruppamento " + structure.display(parent) + " che deve contenere il codice.";
    }
    if (!group->group) {
        return structure.display(parent) + " «" + group->description +
               "» non è un raggruppamento: non può contenere altri codici.";
    }
    if (group->company != commonToAll && group->company != code.company) {
        return group->company == codes.company()
                   ? "Il raggruppamento " + structure.display(parent) +
                         " è riservato alla ditta: lo deve essere anche il codice."
                   : "Il raggruppamento " + structure.display(parent) + " è riservato a un'altra ditta.";
    }
    return std::nullopt;
}

} // namespace

CostCodes::CostCodes(std::shared_ptr<ado::Connection> connection, std::int32_t chart, std::string company,
                     bool items)
    : connection_(std::move(connection)), chart_(chart), company_(std::move(company)), items_(items) {}

std::optional<std::string> CostCodes::chartName() const {
    const auto rows = commandOf(connection_, "SELECT PC01_DESCR FROM PC01_PDC WHERE PC01_CODPDC = ?",
                                {numberArgument("@PDC", chart_)})
                          ->Execute();
    return rows->EndOfFile() ? std::nullopt : std::optional(nullSafeText(rows->Fields()[0].Value()));
}

std::optional<CostCode> CostCodes::find(const std::string& code) const {
    if (utf16Length(code) > static_cast<std::size_t>(costCodeSize)) {
        return std::nullopt;
    }
    const auto rows = commandOf(connection_,
                                "SELECT PC03_CONTO, PC03_DESCR, PC03_INDTIPOCONTO, PC03_FLGANALITICO, "
                                "PC03_DITTA_CG18 FROM PC03_ANAGPDC WHERE PC03_CODPDC_PC01 = ? AND "
                                "PC03_CONTO = ?",
                                {numberArgument("@PDC", chart_), codeArgument(code)})
                          ->Execute();
    if (rows->EndOfFile()) {
        return std::nullopt;
    }
    const auto value = [&](std::size_t column) { return rows->Fields()[column].Value(); };
    return CostCode{nullSafeText(value(0)), nullSafeText(value(1)), value(2).toInt32(), !value(3).toBool(),
                    nullSafeText(value(4))};
}

void CostCodes::insert(const CostCode& code) {
    commandOf(connection_,
              "INSERT INTO PC03_ANAGPDC (PC03_CODPDC_PC01, PC03_CONTO, PC03_DITTA_CG18, PC03_DESCR, "
              "PC03_INDTIPOCONTO, PC03_FLGANALITICO) VALUES (?, ?, ?, ?, ?, ?)",
              {numberArgument("@PDC", chart_), codeArgument(code.code),
               numberArgument("@DITTA", Value(code.company).toInt32()),
               textArgument("@DESCR", costDescriptionSize, code.description),
               numberArgument("@TIPO", code.kind), numberArgument("@ANALITICO", code.group ? 0 : 1)})
        ->Execute(nullptr, ado::adExecuteNoRecords);
}

bool CostCodes::update(const CostCode& before, const CostCode& after) {
    std::int64_t written = 0;
    commandOf(connection_,
              "UPDATE PC03_ANAGPDC SET PC03_DESCR = ?, PC03_INDTIPOCONTO = ? WHERE PC03_CODPDC_PC01 = ? AND "
              "PC03_CONTO = ? AND PC03_DESCR = ? AND PC03_INDTIPOCONTO = ?",
              {textArgument("@DESCR", costDescriptionSize, after.description),
               numberArgument("@TIPO", after.kind), numberArgument("@PDC", chart_), codeArgument(before.code),
               textArgument("@DESCRPRIMA", costDescriptionSize, before.description),
               numberArgument("@TIPOPRIMA", before.kind)})
        ->Execute(&written, ado::adExecuteNoRecords);
    return written > 0;
}

std::optional<CostCodeObjection> objectionTo(const CostCode& code, bool isNew, const CostCodes& codes,
                                             const services::CodeStructure& structure) {
    if (isNew) {
        auto text = objectionToForm(code, structure);
        if (!text) {
            text = objectionToPlace(code, codes, structure);
        }
        if (text) {
            return CostCodeObjection{CostCodeObjection::Code, std::move(*text)};
        }
    }
    if (code.description.empty()) {
        return CostCodeObjection{CostCodeObjection::Description, "Indicare la descrizione."};
    }
    if (!codes.items() && !code.group && code.kind == 0) {
        return CostCodeObjection{CostCodeObjection::Kind, "Indicare il tipo del conto."};
    }
    return std::nullopt;
}

} // namespace veldran::shell
