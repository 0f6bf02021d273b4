#include "adapters/odbc/select_shape.h"

#include "adapters/tsql/parser.h"

#include <algorithm>

namespace veldran::odbc {

namespace {

using namespace tsql;

std::string joined(const QualifiedName& name) {
    std::string text;
    for (const std::string& part : name.parts) {
        text += (&part == &name.parts.front() ? "" : ".") + part;
    }
    return text;
}

const SelectSpecification* specificationIn(const Batch& batch) {
    if (batch.statements.size() != 1) {
        return nullptr;
    }
    const auto* const select = std::get_if<SelectStatement>(&batch.statements.front().node);
    if (select == nullptr || !select->query.unions.empty()) {
        return nullptr;
    }
    return std::get_if<SelectSpecification>(&select->query.first.node);
}

const NamedTable* onlyTable(const SelectSpecification& select) {
    if (select.distinct || select.into || !select.groupBy.empty() || select.having ||
        select.from.size() != 1 || !select.from.front().joins.empty()) {
        return nullptr;
    }
    return std::get_if<NamedTable>(&select.from.front().first.node);
}

std::optional<std::string> baseColumn(const SelectItem& item) {
    if (const auto* const value = std::get_if<SelectValue>(&item.node)) {
        if (const auto* const column = std::get_if<ColumnReference>(&value->expression.node)) {
            return column->name.last();
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<SelectShape> selectShape(std::string_view text) {
    try {
        const Batch batch = parseBatch(text);
        const SelectSpecification* const select = specificationIn(batch);
        const NamedTable* const table = select == nullptr ? nullptr : onlyTable(*select);
        if (table == nullptr) {
            return std::nullopt;
        }
        SelectShape shape;
        shape.table = joined(table->name);
        shape.allColumns =
            select->items.size() == 1 && std::holds_alternative<AllColumns>(select->items.front().node);
        for (const SelectItem& item : select->items) {
            shape.columns.push_back(baseColumn(item));
        }
        const bool any = std::any_of(shape.columns.begin(), shape.columns.end(),
                                     [](const auto& column) { return column.has_value(); });
        return shape.allColumns || any ? std::optional(shape) : std::nullopt;
    } catch (const SyntaxError&) {
        return std::nullopt; // beyond what is needed here; the server reads it
    }
}

} // namespace veldran::odbc
