#include "adapters/embedded/text_shape.h"

#include <algorithm>
#include <utility>

namespace veldran::embedded {

namespace {

// Of a literal, in bytes: codes are shorter, and its length fits one byte of the shape.
constexpr std::size_t maximumLiteral = 100;

bool endsBlank(std::string_view characters) {
    return characters.ends_with(' ');
}

bool canBeValue(std::string_view characters) {
    return !characters.empty() && characters.size() <= maximumLiteral &&
           std::none_of(characters.begin(), characters.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

using Literals = std::vector<tsql::Expression*>;

const tsql::Literal* textLiteral(const tsql::Expression& node) {
    const auto* literal = std::get_if<tsql::Literal>(&node.node);
    return literal != nullptr && (literal->kind == tsql::LiteralKind::String ||
                                  literal->kind == tsql::LiteralKind::NationalString)
               ? literal
               : nullptr;
}

void addIfLiteral(tsql::Expression& value, Literals& found) {
    if (textLiteral(value) != nullptr) {
        found.push_back(&value);
    }
}

void addIfWritten(tsql::Expression& value, Literals& found) {
    const tsql::Literal* literal = textLiteral(value);
    if (literal != nullptr && !endsBlank(literal->value)) {
        found.push_back(&value);
    }
}

void addCompared(tsql::Expression& condition, Literals& found) {
    if (auto* logical = std::get_if<tsql::Logical>(&condition.node)) {
        for (tsql::Expression& operand : logical->operands) {
            addCompared(operand, found);
        }
    } else if (auto* negation = std::get_if<tsql::Not>(&condition.node)) {
        addCompared(*negation->operand, found);
    } else if (auto* comparison = std::get_if<tsql::Comparison>(&condition.node)) {
        if (std::holds_alternative<tsql::ColumnReference>(comparison->left->node)) {
            addIfLiteral(*comparison->right, found);
        } else if (std::holds_alternative<tsql::ColumnReference>(comparison->right->node)) {
            addIfLiteral(*comparison->left, found);
        }
    }
}

// Columns of other sources may be computed, even from constants.
bool areTables(const std::vector<tsql::TableSource>& from) {
    const auto isTable = [](const tsql::TablePrimary& primary) {
        return std::holds_alternative<tsql::NamedTable>(primary.node);
    };
    return std::all_of(from.begin(), from.end(), [&](const tsql::TableSource& source) {
        return isTable(source.first) &&
               std::all_of(source.joins.begin(), source.joins.end(),
                           [&](const tsql::JoinStep& join) { return isTable(join.right); });
    });
}

void addSought(const std::vector<tsql::TableSource>& from, std::optional<tsql::Expression>& where,
               Literals& found) {
    if (where && areTables(from)) {
        addCompared(*where, found);
    }
}

void addSelected(tsql::Query& query, bool written, Literals& found) {
    auto* select = std::get_if<tsql::SelectSpecification>(&query.first.node);
    if (select == nullptr || !query.unions.empty() || select->into) {
        return;
    }
    if (written && !select->distinct) {
        for (tsql::SelectItem& item : select->items) {
            if (auto* value = std::get_if<tsql::SelectValue>(&item.node)) {
                addIfWritten(value->expression, found);
            }
        }
    }
    addSought(select->from, select->where, found);
}

void addInserted(tsql::InsertStatement& insert, Literals& found) {
    if (auto* query = std::get_if<tsql::Query>(&insert.source)) {
        addSelected(*query, true, found);
    } else if (auto* values = std::get_if<tsql::InsertValues>(&insert.source)) {
        for (tsql::ValuesRow& row : values->rows) {
            for (tsql::Expression& value : row) {
                addIfWritten(value, found);
            }
        }
    }
}

// The literals that can be values, in the order of the text.
Literals possibleValues(tsql::Statement& statement) {
    Literals found;
    if (auto* select = std::get_if<tsql::SelectStatement>(&statement.node)) {
        addSelected(select->query, false, found);
    } else if (auto* insert = std::get_if<tsql::InsertStatement>(&statement.node)) {
        addInserted(*insert, found);
    } else if (auto* update = std::get_if<tsql::UpdateStatement>(&statement.node)) {
        addSought(update->from, update->where, found);
    } else if (auto* erase = std::get_if<tsql::DeleteStatement>(&statement.node)) {
        addSought(erase->from, erase->where, found);
    }
    std::sort(found.begin(), found.end(), [](const tsql::Expression* a, const tsql::Expression* b) {
        return a->span.begin.offset < b->span.begin.offset;
    });
    return found;
}

} // namespace

TextShape shapeOf(std::string_view text) {
    TextShape shape;
    std::size_t copied = 0;
    for (std::size_t open = text.find('\''); open != std::string_view::npos;) {
        const std::size_t close = text.find('\'', open + 1);
        if (close == std::string_view::npos) {
            return {};
        }
        const std::string_view value = text.substr(open + 1, close - open - 1);
        if (!canBeValue(value) || text.substr(close + 1).starts_with('\'')) {
            return {};
        }
        shape.text.append(text, copied, open + 1 - copied);
        shape.text += static_cast<char>(value.size());
        shape.text += static_cast<char>(characterCount(value));
        shape.text += endsBlank(value) ? " " : "";
        shape.literals.push_back({value, close + 1});
        copied = close;
        open = text.find('\'', close + 1);
    }
    shape.text.append(text, copied);
    return shape;
}

std::vector<SqlType> takeOutLiterals(tsql::Batch& batch, const TextShape& shape) {
    if (batch.statements.size() != 1 || batch.parameterCount > 0) {
        return {};
    }
    const Literals found = possibleValues(batch.statements.front());
    const bool areAll = std::equal(found.begin(), found.end(), shape.literals.begin(), shape.literals.end(),
                                   [](const tsql::Expression* node, const TextShape::Literal& literal) {
                                       return node->span.end.offset == literal.end &&
                                              textLiteral(*node)->value == literal.value;
                                   });
    if (!areAll) {
        return {};
    }
    std::vector<SqlType> types;
    for (tsql::Expression* node : found) {
        const tsql::Literal& literal = *textLiteral(*node);
        types.push_back(
            textType(literal.kind == tsql::LiteralKind::String ? TypeKind::VarChar : TypeKind::NVarChar,
                     characterCount(literal.value)));
        node->node = tsql::ParameterMarker{types.size()};
    }
    batch.parameterCount = types.size();
    return types;
}

} // namespace veldran::embedded
