#include "adapters/tsql/text_writer.h"

namespace veldran::tsql {

void TextWriter::write(const Query& query) {
    node(query.first);
    for (const UnionStep& step : query.unions) {
        text_ += step.all ? " UNION ALL " : " UNION ";
        node(step.right);
    }
    word(" ", !query.orderBy.empty());
    order(query.orderBy);
}

void TextWriter::node(const QueryTerm& term) {
    std::visit([&](const auto& alternative) { node(alternative); }, term.node);
}

void TextWriter::node(const Box<Query>& query) {
    text_ += '(';
    write(*query);
    text_ += ')';
}

void TextWriter::node(const SelectSpecification& select) {
    text_ += "SELECT ";
    word("DISTINCT ", select.distinct);
    if (select.top) {
        text_ += "TOP (";
        write(*select.top);
        text_ += ") ";
    }
    std::string_view separator;
    for (const SelectItem& item : select.items) {
        text_ += separator;
        node(item);
        separator = ", ";
    }
    if (select.into) {
        text_ += " INTO ";
        write(*select.into);
    }
    from(select.from);
    where(select.where);
    if (!select.groupBy.empty()) {
        text_ += " GROUP BY ";
        values(select.groupBy);
    }
    if (select.having) {
        text_ += " HAVING ";
        write(*select.having);
    }
}

void TextWriter::node(const SelectItem& item) {
    std::visit([&](const auto& alternative) { node(alternative); }, item.node);
}

void TextWriter::node(const AllColumns& all) {
    if (all.qualifier) {
        write(*all.qualifier);
        text_ += '.';
    }
    text_ += '*';
}

void TextWriter::node(const SelectValue& value) {
    write(value.expression);
    if (value.alias) {
        text_ += " AS ";
        identifier(*value.alias);
    }
}

void TextWriter::node(const SelectAssignment& assignment) {
    text_ += assignment.variable + " = ";
    write(assignment.expression);
}

void TextWriter::from(const std::vector<TableSource>& sources) {
    std::string_view separator = " FROM ";
    for (const TableSource& source : sources) {
        text_ += separator;
        node(source);
        separator = ", ";
    }
}

void TextWriter::where(const std::optional<Expression>& condition) {
    if (condition) {
        text_ += " WHERE ";
        write(*condition);
    }
}

void TextWriter::node(const TableSource& source) {
    std::visit([&](const auto& alternative) { node(alternative); }, source.first.node);
    for (const JoinStep& step : source.joins) {
        node(step);
    }
}

void TextWriter::node(const JoinStep& step) {
    switch (step.kind) {
    case JoinKind::Inner:
        text_ += " INNER JOIN ";
        break;
    case JoinKind::LeftOuter:
        text_ += " LEFT OUTER JOIN ";
        break;
    case JoinKind::Cross:
        text_ += " CROSS JOIN ";
        break;
    case JoinKind::CrossApply:
        text_ += " CROSS APPLY ";
        break;
    case JoinKind::OuterApply:
        text_ += " OUTER APPLY ";
        break;
    }
    std::visit([&](const auto& alternative) { node(alternative); }, step.right.node);
    if (step.on) {
        text_ += " ON ";
        write(*step.on);
    }
}

void TextWriter::node(const NamedTable& table) {
    write(table.name);
    if (table.alias) {
        text_ += " AS ";
        identifier(*table.alias);
    }
    std::string_view separator = " WITH (";
    for (const std::string& hint : table.hints) {
        text_ += separator;
        text_ += hint;
        separator = ", ";
    }
    word(")", !table.hints.empty());
}

void TextWriter::node(const DerivedTable& table) {
    node(table.query);
    text_ += " AS ";
    identifier(table.alias);
    if (!table.columns.empty()) {
        text_ += " (";
        identifiers(table.columns);
        text_ += ')';
    }
}

void TextWriter::node(const TableFunction& function) {
    write(function.name);
    text_ += '(';
    values(function.arguments);
    text_ += ')';
    if (function.alias) {
        text_ += " AS ";
        identifier(*function.alias);
    }
}

void TextWriter::node(const NestedJoin& join) {
    text_ += '(';
    node(*join.source);
    text_ += ')';
}

} // namespace veldran::tsql
