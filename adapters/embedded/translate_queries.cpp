#include "adapters/embedded/ast_walk.h"
#include "adapters/embedded/collation.h"
#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/translator.h"
#include "adapters/embedded/translator_frames.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::embedded {

namespace {

ado::ColumnInfo describe(const SelectedItem& item, bool updatable) {
    const Fragment& value = item.value;
    ado::ColumnInfo info;
    info.name = item.name;
    info.type = adoType(value.type);
    info.definedSize = definedSize(value.type);
    info.precision = value.type.precision;
    info.scale = value.type.scale;
    info.nullable = value.nullable;
    if (updatable && value.column != nullptr) {
        const auto index = static_cast<std::size_t>(value.column - value.table->columns.data());
        info.identity = value.column->identity;
        info.key = value.table->isKeyColumn(index);
        info.baseTable = value.table->name;
        info.baseColumn = value.column->name;
    }
    return info;
}

// A key names a row only when all of its columns were selected.
bool isKeySelected(const Table& table, const std::vector<SelectedItem>& items) {
    const Key* key = table.primaryKey();
    return key != nullptr && std::all_of(key->columns.begin(), key->columns.end(), [&](std::size_t column) {
               return std::any_of(items.begin(), items.end(), [&](const SelectedItem& item) {
                   return item.value.column == &table.columns[column];
               });
           });
}

// Whether the query is a table as it stands: then SQLite copies the rows without looking into them. The order
// of the identity column is the order in which a table is stored.
bool isWholeCopy(const BoundQuery& query) {
    const BoundSelect& select = query.arms.front();
    if (!query.isPlain() || select.grouped || select.identity != nullptr || !select.where.empty() ||
        !select.limit.empty() || !select.onlyTable) {
        return false;
    }
    const std::vector<Column>& columns = select.onlyTable->columns;
    bool ordered = query.orderBy.empty();
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        if (i >= columns.size() || select.items[i].value.column != &columns[i]) {
            return false;
        }
        ordered =
            ordered || (columns[i].identity && query.orderBy == " ORDER BY " + select.items[i].value.sql);
    }
    return ordered && select.items.size() == columns.size();
}

// What SELECT ... INTO gives the new table for a column.
Column newColumn(const SelectedItem& item) {
    if (item.name.empty()) {
        fail(1038, "42000", "Una colonna di SELECT ... INTO non ha un nome.");
    }
    Column column;
    column.name = item.name;
    column.type = item.value.type.isNull() ? integerType(TypeKind::Int) : item.value.type;
    if (column.type.kind == TypeKind::Decimal && column.type.precision > 18) {
        column.type.precision = 18;
    }
    column.nullable = item.value.nullable;
    return column;
}

} // namespace

BoundQuery Translator::query(const tsql::Query& node, const Scope* outer) {
    BoundQuery result;
    Scope scope{outer, {}};
    addArm(result, node.first, outer, scope);
    for (const tsql::UnionStep& step : node.unions) {
        result.unionAll.push_back(step.all);
        Scope armScope{outer, {}};
        addArm(result, step.right, outer, armScope);
    }
    unifyArms(result, node.span);
    if (!node.orderBy.empty()) {
        const ScopeFrame frame(*this, scope);
        const bool aggregatesBefore = std::exchange(aggregates_, false);
        result.orderBy = orderItems(node.orderBy, result, result.arms.size() == 1);
        if (std::exchange(aggregates_, aggregatesBefore) && !result.arms.front().grouped) {
            refuse(node.orderBy.front().expression->span,
                   "Una funzione di aggregazione in ORDER BY richiede GROUP BY");
        }
    }
    return result;
}

void Translator::addArm(BoundQuery& result, const tsql::QueryTerm& term, const Scope* outer, Scope& scope) {
    if (const auto* select = std::get_if<tsql::SelectSpecification>(&term.node)) {
        result.arms.push_back(selectArm(*select, outer, scope));
        return;
    }
    // A query in parentheses becomes a derived table of its own.
    BoundQuery inner = query(*std::get<tsql::Box<tsql::Query>>(term.node), outer);
    BoundSelect arm;
    for (std::size_t i = 0; i < inner.items().size(); ++i) {
        SelectedItem item = inner.items()[i];
        inner.items()[i].name = "c" + std::to_string(i);
        item.value.sql = quoteName("c" + std::to_string(i));
        item.value.simple = true;
        item.value.collated = item.value.type.isText();
        item.value.constant.reset();
        item.value.column = nullptr;
        arm.items.push_back(std::move(item));
    }
    arm.from = "(" + write(inner, true, true) + ")";
    result.arms.push_back(std::move(arm));
}

BoundSelect Translator::selectArm(const tsql::SelectSpecification& node, const Scope* outer, Scope& scope) {
    BoundSelect select;
    select.distinct = node.distinct;
    std::vector<Condition> conditions;
    scope.outer = outer;
    {
        const ScopeFrame around(*this, scope);
        select.from = fromList(node.from, scope, conditions);
    }
    const ScopeFrame frame(*this, scope);
    const bool aggregatesBefore = std::exchange(aggregates_, false);
    if (node.where) {
        conditions.push_back(truth(*node.where));
        if (aggregates_) {
            fail(147, "42000", "Una funzione di aggregazione non può comparire nella clausola WHERE.");
        }
    }
    select.condition = allOf(std::move(conditions));
    if (!ledByOriginal(select, scope)) {
        const Condition where = withImplied(select.condition, scope);
        select.where = where.isTrue() ? "" : where.sql;
    }
    for (const tsql::Expression& item : node.groupBy) {
        const Fragment value = expression(item);
        if (value.constant) {
            fail(164, "42000", "Ogni espressione di GROUP BY deve contenere almeno una colonna.");
        }
        select.groupBy += (select.groupBy.empty() ? "" : ", ") + collatedText(value).sql;
    }
    bindItems(node, select, scope);
    if (node.having) {
        const Condition having = truth(*node.having);
        select.having = having.isTrue() ? "" : having.sql;
    }
    select.grouped = std::exchange(aggregates_, aggregatesBefore) || !node.groupBy.empty();
    if (select.grouped) {
        checkGrouping(node);
    }
    if (node.top) {
        select.limit = limitOf(*node.top);
    }
    if (scope.sources.size() == 1) {
        select.onlyTable = scope.sources.front().table;
        select.onlyAlias = quoteName(scope.sources.front().alias);
    }
    return select;
}

std::string Translator::limitOf(const tsql::Expression& top) {
    const Fragment count = convert(expression(top), integerType(TypeKind::BigInt), ConversionMode::Cast);
    if (const auto* constant = count.integerConstant(); constant != nullptr && *constant < 0) {
        fail(1014, "42000", "La clausola TOP contiene un valore non valido.");
    }
    return " LIMIT " + count.sql;
}

void Translator::bindItems(const tsql::SelectSpecification& node, BoundSelect& select, Scope& scope) {
    const auto addColumns = [&](const tsql::AllColumns& all, const tsql::NodeSpan& span) {
        const std::size_t before = select.items.size();
        for (const Source& source : scope.sources) {
            if (all.qualifier && !equalsIgnoringAsciiCase(source.name, all.qualifier->last())) {
                continue;
            }
            for (const SourceColumn& column : source.columns) {
                select.items.push_back({column.name, column.value, span, {}});
            }
        }
        if (select.items.size() == before) {
            fail(all.qualifier ? 107 : 263, "42000",
                 all.qualifier ? "Il prefisso di colonna '" + all.qualifier->last() +
                                     "' non corrisponde ad alcuna tabella della query."
                               : "È necessario specificare la tabella da cui selezionare.");
        }
    };
    for (const tsql::SelectItem& item : node.items) {
        if (const auto* all = std::get_if<tsql::AllColumns>(&item.node)) {
            addColumns(*all, item.span);
        } else if (const auto* assignment = std::get_if<tsql::SelectAssignment>(&item.node)) {
            const std::string variable = toUpper(std::string_view(assignment->variable));
            const SqlType* type = context_.variables.typeOf(variable);
            if (type == nullptr) {
                fail(137, "42000",
                     "La variabile scalare \"" + assignment->variable + "\" deve essere dichiarata.");
            }
            const Fragment value = convert(expression(assignment->expression), *type, ConversionMode::Cast);
            select.items.push_back({{}, value, item.span, variable});
        } else {
            const auto& value = std::get<tsql::SelectValue>(item.node);
            std::string name = value.alias.value_or("");
            if (const auto* identity = std::get_if<tsql::IdentityFunction>(&value.expression.node)) {
                if (!node.into) {
                    fail(177, "42000",
                         "La funzione IDENTITY può essere utilizzata solo in un'istruzione SELECT con INTO.");
                }
                if (select.identity != nullptr) {
                    fail(8108, "42000", "Una tabella può avere una sola colonna IDENTITY.");
                }
                select.identity = identity;
                select.identityIndex = select.items.size();
                select.identityName = name;
                continue;
            }
            const Fragment bound = expression(value.expression);
            if (!value.alias) {
                if (const auto* column = std::get_if<tsql::ColumnReference>(&value.expression.node)) {
                    name = bound.column != nullptr ? bound.column->name : column->name.last();
                }
            }
            select.items.push_back({std::move(name), bound, item.span, {}});
        }
    }
}

void Translator::checkGrouping(const tsql::SelectSpecification& node) {
    const auto refuseColumn = [&](const tsql::ColumnReference& column) {
        fail(8120, "42000",
             "La colonna '" + column.name.last() +
                 "' non è valida nell'elenco di selezione perché non è inclusa né in una funzione di "
                 "aggregazione né "
                 "nella clausola GROUP BY.");
    };
    for (const tsql::SelectItem& item : node.items) {
        if (const auto* value = std::get_if<tsql::SelectValue>(&item.node)) {
            if (const auto* column = ungroupedColumn(value->expression, node.groupBy)) {
                refuseColumn(*column);
            }
        }
    }
    if (node.having) {
        if (const auto* column = ungroupedColumn(*node.having, node.groupBy)) {
            refuseColumn(*column);
        }
    }
}

void Translator::unifyArms(BoundQuery& query, const tsql::NodeSpan& span) {
    if (query.arms.size() == 1) {
        return;
    }
    const std::size_t count = query.items().size();
    for (std::size_t i = 0; i < count; ++i) {
        SqlType type;
        bool nullable = false;
        int minimumLength = unlimitedLength;
        for (const BoundSelect& arm : query.arms) {
            if (arm.items.size() != count) {
                fail(205, "42000",
                     "Le query combinate con UNION devono avere lo stesso numero di espressioni (riga " +
                         std::to_string(span.begin.line) + ").");
            }
            type = commonType(type, arm.items[i].value.type);
            nullable = nullable || arm.items[i].value.nullable;
        }
        for (BoundSelect& arm : query.arms) {
            Fragment& value = arm.items[i].value;
            value = collatedText(convert(value, type, ConversionMode::Cast));
            value.column = nullptr;
            minimumLength = std::min(minimumLength, value.minimumLength);
        }
        for (BoundSelect& arm : query.arms) {
            arm.items[i].value.nullable = nullable;
            arm.items[i].value.minimumLength = minimumLength;
            arm.items[i].value.range.reset();
        }
    }
}

std::string Translator::orderItems(const std::vector<tsql::OrderItem>& items, const BoundQuery& query,
                                   bool single) {
    const std::vector<SelectedItem>& selected = query.items();
    const bool byPlace = !single || query.arms.front().distinct;
    const SeekFrame frame(*this);
    std::string sql;
    const auto add = [&](const std::string& text, bool descending) {
        sql += (sql.empty() ? " ORDER BY " : ", ") + text + (descending ? " DESC" : "");
    };
    const auto addPlace = [&](std::size_t place, bool descending) {
        const Fragment& value = selected[place].value;
        noteSought(value);
        if (byPlace) {
            add(std::to_string(place + 1), descending);
        } else if (!value.constant) {
            add(collatedText(value).sql, descending);
        }
    };
    for (const tsql::OrderItem& item : items) {
        const tsql::Expression& node = *item.expression;
        const auto* reference = std::get_if<tsql::ColumnReference>(&node.node);
        const auto* literal = std::get_if<tsql::Literal>(&node.node);
        if (literal != nullptr && literal->kind == tsql::LiteralKind::Integer) {
            const long place = std::stol("0" + literal->value.substr(0, 9));
            if (place < 1 || static_cast<std::size_t>(place) > selected.size()) {
                fail(108, "42000",
                     "La posizione " + literal->value + " di ORDER BY non rientra nell'elenco di selezione.");
            }
            addPlace(static_cast<std::size_t>(place) - 1, item.descending);
            continue;
        }
        const auto named = std::find_if(selected.begin(), selected.end(), [&](const SelectedItem& candidate) {
            return reference != nullptr && reference->name.parts.size() == 1 && !candidate.name.empty() &&
                   equalsIgnoringAsciiCase(candidate.name, reference->name.last());
        });
        if (named != selected.end()) {
            addPlace(static_cast<std::size_t>(named - selected.begin()), item.descending);
            continue;
        }
        if (!single) {
            fail(104, "42000", "Le voci di ORDER BY devono essere nell'elenco di selezione con UNION.");
        }
        const Fragment value = expression(node);
        if (query.arms.front().distinct) {
            const auto same =
                std::find_if(selected.begin(), selected.end(),
                             [&](const SelectedItem& candidate) { return candidate.value.sql == value.sql; });
            if (same == selected.end()) {
                fail(145, "42000",
                     "Con SELECT DISTINCT le voci di ORDER BY devono essere nell'elenco di selezione.");
            }
            addPlace(static_cast<std::size_t>(same - selected.begin()), item.descending);
        } else if (!value.constant) {
            add(collatedText(value).sql, item.descending);
        }
    }
    return sql;
}

std::string Translator::write(const BoundSelect& select, bool named, bool collate) const {
    std::string sql = select.distinct ? "SELECT DISTINCT " : "SELECT ";
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        const SelectedItem& item = select.items[i];
        sql += i == 0 ? "" : ", ";
        sql += collate || select.distinct ? collatedText(item.value).sql : item.value.sql;
        if (named) {
            sql += " AS " + quoteName(item.name);
        }
    }
    sql += select.from.empty() ? "" : " FROM ";
    sql += select.leader.empty() ? select.from : select.leader + " CROSS JOIN " + select.from;
    sql += select.where.empty() ? "" : " WHERE " + select.where;
    sql += select.groupBy.empty() ? "" : " GROUP BY " + select.groupBy;
    sql += select.having.empty() ? "" : " HAVING " + select.having;
    return sql;
}

std::string Translator::write(const BoundQuery& query, bool named, bool collate) const {
    if (query.arms.size() == 1) {
        return write(query.arms.front(), named, collate) + query.orderBy + query.arms.front().limit;
    }
    std::string sql;
    for (std::size_t i = 0; i < query.arms.size(); ++i) {
        const BoundSelect& arm = query.arms[i];
        if (i > 0) {
            sql += query.unionAll[i - 1] ? " UNION ALL " : " UNION ";
        }
        const std::string text = write(arm, named, true);
        sql += arm.limit.empty() ? text : "SELECT * FROM (" + text + arm.limit + ")";
    }
    return sql + query.orderBy;
}

std::string Translator::writeConverted(BoundQuery& query, const std::vector<SqlType>& types,
                                       const std::vector<std::string>& names) {
    std::vector<std::string> wrapped;
    bool changed = false;
    const bool plain = query.isPlain();
    for (std::size_t i = 0; i < types.size(); ++i) {
        Fragment& value = query.items()[i].value;
        Fragment source = value;
        if (!plain) {
            source.sql = quoteName("c" + std::to_string(i));
            source.simple = true;
            source.constant.reset();
        }
        const Fragment converted = convert(source, types[i], ConversionMode::Assign, names[i]);
        changed = changed || converted.sql != source.sql;
        wrapped.push_back(converted.sql);
        if (plain) {
            value = converted;
        }
    }
    if (plain || !changed) {
        return write(query, false, false);
    }
    std::string list;
    for (std::size_t i = 0; i < wrapped.size(); ++i) {
        list += (i == 0 ? "" : ", ") + wrapped[i];
        query.items()[i].name = "c" + std::to_string(i);
    }
    return "SELECT " + list + " FROM (" + write(query, true, true) + ")";
}

TranslatedStatement Translator::select(const tsql::SelectStatement& statement) {
    BoundQuery bound = query(statement.query, nullptr);
    const auto* firstArm = std::get_if<tsql::SelectSpecification>(&statement.query.first.node);
    if (firstArm != nullptr && firstArm->into) {
        return selectInto(*firstArm, bound);
    }
    Program program = finish(write(bound, false, false));
    const bool updatable = bound.isPlain() && !bound.arms.front().grouped;
    std::size_t assignments = 0;
    std::vector<ado::ColumnInfo> columns;
    for (const SelectedItem& item : bound.items()) {
        ado::ColumnInfo& info = columns.emplace_back(describe(item, updatable));
        info.key = info.key && isKeySelected(*item.value.table, bound.items());
        program.types.push_back(item.value.type);
        if (!item.variable.empty()) {
            program.variables.push_back(item.variable);
            ++assignments;
        }
    }
    if (assignments != 0 && assignments != bound.items().size()) {
        fail(141, "A0001",
             "Un'istruzione SELECT che assegna un valore a una variabile non può anche recuperare dati.");
    }
    program.columns = std::make_shared<const std::vector<ado::ColumnInfo>>(std::move(columns));
    return program;
}

// Whether the query copies rows of one working table with their numbers; `names` are the target's columns
// that its items go to.
std::optional<RowCopy> Translator::rowCopyOf(const BoundQuery& query, const Table& target,
                                             const std::vector<std::string>& names) {
    const BoundSelect& select = query.arms.front();
    const Table* source = select.onlyTable.get();
    const Column* number = target.identityColumn();
    if (!query.isPlain() || select.grouped || source == nullptr || !source->isTemporary() ||
        !target.isTemporary() || number == nullptr) {
        return std::nullopt;
    }
    RowCopy copy{source->name, target.name, {}};
    bool withNumbers = false;
    for (std::size_t i = 0; i < names.size() && i < select.items.size(); ++i) {
        const Column* column = select.items[i].value.column;
        if (column == nullptr || column->name != names[i]) {
            continue;
        }
        withNumbers = withNumbers || (column->identity && names[i] == number->name);
        copy.columns.push_back(names[i]);
    }
    return withNumbers ? std::optional(std::move(copy)) : std::nullopt;
}

TranslatedStatement Translator::selectInto(const tsql::SelectSpecification& node, BoundQuery& query) {
    Table table;
    table.name = node.into->last();
    const BoundSelect& select = query.arms.front();
    std::vector<SqlType> types;
    std::vector<std::string> names;
    std::string list;
    for (const SelectedItem& item : select.items) {
        Column column = newColumn(item);
        // The identity property follows a plain copy of the column from one table.
        column.identity = query.isPlain() && !select.grouped && select.onlyTable != nullptr &&
                          select.identity == nullptr && item.value.column != nullptr &&
                          item.value.column->identity;
        if (column.identity && table.identityColumn() != nullptr) {
            fail(8108, "42000", "La colonna Identity '" + column.name + "' è selezionata più volte.");
        }
        types.push_back(column.type);
        names.push_back(column.name);
        list += (list.empty() ? "" : ", ") + quoteName(column.name);
        table.columns.push_back(std::move(column));
    }
    if (select.identity != nullptr) {
        const tsql::IdentityFunction& identity = *select.identity;
        if (identity.increment != 1) {
            refuse(node.span, "IDENTITY con un incremento diverso da 1 non è disponibile");
        }
        if (select.identityName.empty()) {
            fail(1038, "42000", "La colonna IDENTITY di SELECT ... INTO non ha un nome.");
        }
        table.identitySeed = identity.seed;
        table.columns.insert(table.columns.begin() + static_cast<std::ptrdiff_t>(select.identityIndex),
                             Column{select.identityName, resolveType(identity.type), false, true, {}});
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.indexOf(table.columns[i].name) != i) {
            fail(2705, "42S21",
                 "I nomi di colonna di una tabella devono essere univoci: '" + table.columns[i].name +
                     "' è ripetuto.");
        }
    }
    const std::optional<RowCopy> copies =
        select.identity == nullptr ? rowCopyOf(query, table, names) : std::nullopt;
    const std::vector<UniformColumn> uniform = uniformColumns(query, table);
    const auto filledBy = [&](std::string sql) {
        Program fill = finish(std::move(sql));
        fill.copies = copies;
        return IntoProgram{table, std::move(fill), uniform};
    };
    if (isWholeCopy(query)) {
        return filledBy("INSERT INTO " + table.sqlName() + " SELECT * FROM " + select.from);
    }
    const std::string source = writeConverted(query, types, names);
    return filledBy("INSERT INTO " + table.sqlName() + " (" + list + ") " + source);
}

} // namespace veldran::embedded
