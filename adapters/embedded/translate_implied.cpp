#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/translator.h"
#include "adapters/embedded/translator_frames.h"

#include <algorithm>
#include <iterator>

namespace veldran::embedded {

namespace {

bool mentions(const std::string& text, const Scope& scope) {
    return std::any_of(scope.sources.begin(), scope.sources.end(), [&](const Source& source) {
        return text.find(quoteName(source.alias) + ".") != std::string::npos;
    });
}

const Source* sourceOf(const ColumnTest& test, const Scope& scope) {
    const auto found = std::find_if(scope.sources.begin(), scope.sources.end(), [&](const Source& source) {
        return source.occurrence() == test.occurrence;
    });
    return found == scope.sources.end() ? nullptr : &*found;
}

std::string numberOf(const Source& source) {
    return quoteName(source.alias) + "." + source.table->rowNumber();
}

// What is left to be asked of the copy, each part after an AND.
std::string unsettled(const Condition& where, const OriginalRows& rows) {
    std::string left;
    for (const std::string& part : where.conjuncts()) {
        if (std::find(rows.settles.begin(), rows.settles.end(), part) == rows.settles.end()) {
            left += " AND " + part;
        }
    }
    return left;
}

} // namespace

// An index of the original finds the rows of a copy as well: they have the same numbers. So the indexes of a
// table that stays serve every copy made of it, and the copy needs none of its own.
std::optional<OriginalRows> Translator::soughtInOriginal(const Condition& where, const Source& source,
                                                         const Scope& scope, bool evenByQuery) {
    const std::string* name = source.table && source.table->isTemporary()
                                  ? context_.copies.originalOf(source.table->name)
                                  : nullptr;
    const auto original = name == nullptr ? nullptr : context_.catalogue.findTable({{}, {*name}});
    if (!original) {
        return std::nullopt;
    }
    SearchedColumns own;                  // what the condition says of the copy
    std::vector<const ColumnTest*> tests; // and as much of it as holds for the original
    for (const ColumnTest& test : where.tests) {
        if (test.occurrence != source.occurrence()) {
            continue;
        }
        if (test.column->identity) {
            return std::nullopt; // the row's number finds it
        }
        (test.equality ? own.equal : own.ranged).push_back(test.column->name);
        const auto place = original->indexOf(test.column->name);
        if (place && original->columns[*place].type == test.column->type &&
            context_.copies.isAlike({*name, source.table->name, test.column->name}) &&
            !mentions(test.other, scope)) {
            tests.push_back(&test);
        }
    }
    const std::vector<std::string> ownColumns =
        indexedColumns(context_.catalogue.indexesOf(*source.table), *source.table, own);
    // Running a query for the value is for where nothing plainer finds the rows, and one query at a time: for
    // each value of one SQLite would go through all those of another.
    std::vector<const ColumnTest*> queries{nullptr};
    if (evenByQuery) {
        std::copy_if(tests.begin(), tests.end(), std::back_inserter(queries),
                     [](const ColumnTest* test) { return test->byQuery(); });
    }
    for (const ColumnTest* query : queries) {
        const auto takesPart = [&](const ColumnTest* test) { return !test->byQuery() || test == query; };
        SearchedColumns searched;
        for (const ColumnTest* test : tests) {
            if (takesPart(test)) {
                (test->equality ? searched.equal : searched.ranged).push_back(test->column->name);
            }
        }
        std::vector<std::string> columns =
            indexedColumns(context_.catalogue.indexesOf(*original), *original, searched);
        if (columns.empty() && ownColumns.empty()) {
            columns = searchedCode(*original, searched); // then an index of the original is worth making
        }
        if (!columns.empty() && isServedByItself(source, ownColumns, columns)) {
            return std::nullopt;
        }
        if (!columns.empty()) {
            std::erase_if(tests, [&](const ColumnTest* test) {
                return !takesPart(test) ||
                       std::find(columns.begin(), columns.end(), test->column->name) == columns.end();
            });
            return searchIn(*original, source, columns, tests);
        }
    }
    return std::nullopt;
}

// A grouping may have 100,000 accounts of which the filter has left three.
bool Translator::isServedByItself(const Source& source, const std::vector<std::string>& ownColumns,
                                  const std::vector<std::string>& columns) {
    const bool serves = std::all_of(columns.begin(), columns.end(), [&](const std::string& column) {
        return std::find(ownColumns.begin(), ownColumns.end(), column) != ownColumns.end();
    });
    if (serves) {
        shares_.push_back({source.table->name, context_.copies.isSparse(source.table->name)});
    }
    return serves && shares_.back().sparse;
}

OriginalRows Translator::searchIn(const Table& original, const Source& source,
                                  const std::vector<std::string>& columns,
                                  const std::vector<const ColumnTest*>& tests) {
    const std::string alias = quoteName(original.name + "$" + std::to_string(++aliases_));
    OriginalRows rows;
    rows.number = alias + "." + original.rowNumber();
    rows.from = original.sqlName() + " AS " + alias;
    for (const ColumnTest* test : tests) {
        const std::string column = "." + quoteName(test->column->name);
        const auto testOf = [&](const std::string& row) {
            std::string text = test->before;
            return text.append(row).append(column).append(test->after);
        };
        rows.where += (rows.where.empty() ? "" : " AND ") + testOf(alias);
        rows.settles.push_back(test->byQuery() ? test->stated : testOf(quoteName(source.alias)));
        if (test->byQuery()) {
            rows.from.insert(0, test->query + " CROSS JOIN ");
        }
    }
    for (const std::string& flag : flagsBetween(context_.catalogue.indexesOf(original), original, columns)) {
        rows.where += " AND " + alias + "." + quoteName(flag) + " IN (0, 1)";
    }
    for (const std::string& column : columns) {
        relies_.push_back({original.name, source.table->name, column});
    }
    table({{}, {original.name}}); // what the text depends on
    std::erase_if(sought_, [&](const Sought& own) { return own.occurrence == source.occurrence(); });
    sought_.push_back({original.name, ++occurrences_, columns});
    return rows;
}

// The rows of the original lead to those of the copy one by one. What was asked of the original need not be
// asked of the copy again. The number that both have is read from the original, so that SQLite sees in which
// order the rows come.
bool Translator::ledByOriginal(BoundSelect& select, Scope& scope) {
    if (scope.sources.size() != 1) {
        return false;
    }
    Source& source = scope.sources.front();
    // With the values of a query SQLite would rather go through the whole original in its order.
    const auto rows = soughtInOriginal(select.condition, source, scope, false);
    if (!rows) {
        return false;
    }
    select.leader = rows->from;
    for (SourceColumn& column : source.columns) {
        if (column.value.column->identity) {
            column.value.sql = rows->number;
        }
    }
    select.where =
        rows->where + " AND " + numberOf(source) + " = " + rows->number + unsettled(select.condition, *rows);
    return true;
}

// EXISTS (SELECT ... FROM B WHERE B.x = A.y AND ...), where nothing else names A, is the same as that A.y is
// among the x of those rows of B.
// The flags that an index of B has before x are selected beside it: then SQLite goes from one value to the
// next and passes over the rows between.
std::vector<ColumnTest> Translator::membership(const BoundSelect& select, const std::string& exists) {
    std::vector<ColumnTest> result;
    const Condition& condition = select.condition;
    for (const ColumnTest& test : condition.tests) {
        const Source* outer = scope_ == nullptr ? nullptr : sourceOf(test, *scope_);
        if (outer == nullptr || !test.equality || test.byQuery() || mentions(test.other, *scope_)) {
            continue;
        }
        const std::string same =
            test.before + quoteName(outer->alias) + "." + quoteName(test.column->name) + test.after;
        std::string rest;
        std::vector<std::string> equal;
        for (const std::string& part : condition.conjuncts()) {
            if (part != same) {
                rest += (rest.empty() ? "" : " AND ") + part;
            }
        }
        for (const ColumnTest& inner : condition.tests) {
            if (inner.equality && inner.occurrence != test.occurrence) {
                equal.push_back(inner.column->name);
            }
        }
        if (rest.empty() || mentions(rest, *scope_)) {
            continue;
        }
        std::string flags; // named anew: one may have the name of the value
        int count = 0;
        for (const std::string& flag :
             flagsBetween(context_.catalogue.indexesOf(*select.onlyTable), *select.onlyTable, equal)) {
            flags += select.onlyAlias + "." + quoteName(flag) + " AS \"f" + std::to_string(++count) + "\", ";
        }
        const std::string values = quoteName("$" + std::to_string(++aliases_));
        ColumnTest among = test;
        among.before.clear();
        among.other = values + ".\"v\"";
        among.after = " = " + among.other;
        among.query = "(SELECT DISTINCT " + flags + test.other + " AS \"v\" FROM " + select.from;
        among.query.append(" WHERE ").append(rest).append(") AS ").append(values);
        among.stated = exists;
        result.push_back(std::move(among));
    }
    return result;
}

// An index may have a flag between the columns that are sought. A flag that cannot be NULL has two values, so
// that naming both changes nothing and lets SQLite go on to the columns behind.
std::optional<Condition> Translator::flagsSteppedOver(const Condition& where, const Source& source) {
    if (!source.table || !source.table->isTemporary()) {
        return std::nullopt;
    }
    std::vector<std::string> equal;
    for (const ColumnTest& test : where.tests) {
        if (test.occurrence == source.occurrence() && test.equality) {
            equal.push_back(test.column->name);
        }
    }
    std::vector<Condition> conditions;
    for (const std::string& name :
         flagsBetween(context_.catalogue.indexesOf(*source.table), *source.table, equal)) {
        const Fragment& flag = source.columns[*source.table->indexOf(name)].value;
        const SeekFrame frame(*this);
        noteSought(flag);
        conditions.push_back({flag.sql + " IN (0, 1)", Condition::Form::Predicate, std::nullopt});
    }
    return conditions.empty() ? std::nullopt : std::optional(allOf(std::move(conditions)));
}

// The rows of a branch stand together in a copy, so an UPDATE goes from the first to the last number that the
// original's index finds, and what else lies between is passed over by the condition itself. For a list of
// the numbers SQLite would make a table first, which costs more than the one row that is mostly meant.
std::optional<Condition> Translator::spanInOriginal(const Condition& where, const Scope& scope) {
    if (scope.sources.size() != 1) {
        return std::nullopt;
    }
    const Source& source = scope.sources.front();
    const auto rows = soughtInOriginal(where, source, scope, false);
    if (!rows) {
        return std::nullopt;
    }
    const auto end = [&](const char* function) {
        return std::string("(SELECT ") + function + "(" + rows->number + ") FROM " + rows->from + " WHERE " +
               rows->where + ")";
    };
    return Condition{numberOf(source) + " BETWEEN " + end("min") + " AND " + end("max"),
                     Condition::Form::Predicate, std::nullopt};
}

Condition Translator::withImplied(const Condition& where, const Scope& scope) {
    std::vector<Condition> conditions{where};
    for (const Source& source : scope.sources) {
        if (const auto rows = soughtInOriginal(where, source, scope, true)) {
            const std::string among = numberOf(source) + " IN (SELECT " + rows->number + " FROM " +
                                      rows->from + " WHERE " + rows->where + ")";
            if (scope.sources.size() == 1) {
                return {among + unsettled(where, *rows), Condition::Form::And, std::nullopt};
            }
            conditions.push_back({among, Condition::Form::Predicate, std::nullopt});
        } else if (auto flags = flagsSteppedOver(where, source)) {
            conditions.push_back(std::move(*flags));
        }
    }
    return allOf(std::move(conditions));
}

} // namespace veldran::embedded
