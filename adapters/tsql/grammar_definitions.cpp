#include "adapters/tsql/grammar.h"

#include <utility>

namespace veldran::tsql {

// create = "CREATE" (createTable | createIndex | ["OR" "ALTER"] routine)
StatementNode Grammar::create() {
    const SourcePosition begin = tokens_.position();
    const bool first = tokens_.atStart();
    tokens_.expect("CREATE");
    DefinitionMode mode = DefinitionMode::Create;
    if (tokens_.accept("OR")) {
        tokens_.expect("ALTER");
        mode = DefinitionMode::CreateOrAlter;
    }
    if (atRoutine()) {
        return routine(mode, begin, first);
    }
    if (mode == DefinitionMode::Create && tokens_.at("TABLE")) {
        return createTable();
    }
    if (mode == DefinitionMode::Create && (tokens_.at("UNIQUE") || tokens_.at("CLUSTERED") ||
                                           tokens_.at("NONCLUSTERED") || tokens_.at("INDEX"))) {
        return createIndex();
    }
    tokens_.refuse();
}

// alter = "ALTER" (alterTable | routine)
StatementNode Grammar::alter() {
    const SourcePosition begin = tokens_.position();
    const bool first = tokens_.atStart();
    tokens_.expect("ALTER");
    if (atRoutine()) {
        return routine(DefinitionMode::Alter, begin, first);
    }
    if (tokens_.at("TABLE")) {
        return alterTable();
    }
    tokens_.refuse();
}

// createTable = "TABLE" qualifiedName
//     "(" (columnDefinition | tableConstraint) {"," (columnDefinition | tableConstraint)} ")"
CreateTable Grammar::createTable() {
    tokens_.expect("TABLE");
    CreateTable table;
    table.name = qualifiedName();
    tokens_.expect("(");
    do {
        if (atTableConstraint()) {
            table.constraints.push_back(tableConstraint());
        } else {
            table.columns.push_back(columnDefinition());
        }
    } while (tokens_.accept(","));
    if (table.columns.empty()) {
        tokens_.refuse("una colonna");
    }
    tokens_.expect(")");
    return table;
}

// columnDefinition = name dataType {columnProperty}
ColumnDefinition Grammar::columnDefinition() {
    const SourcePosition begin = tokens_.position();
    ColumnDefinition column;
    column.name = tokens_.takeIdentifier();
    column.type = dataType();
    while (columnProperty(column)) {
    }
    column.span = tokens_.since(begin);
    return column;
}

// columnProperty = "COLLATE" name | ["NOT"] "NULL" | identityProperty
//                | ["CONSTRAINT" name] "DEFAULT" value | keyConstraint | checkConstraint
// Each of the first four may be given once.
bool Grammar::columnProperty(ColumnDefinition& column) {
    if (!column.collation && tokens_.accept("COLLATE")) {
        column.collation = tokens_.takeIdentifier();
        return true;
    }
    if (!column.nullable && (tokens_.at("NULL") || tokens_.at("NOT"))) {
        column.nullable = !tokens_.accept("NOT");
        tokens_.expect("NULL");
        return true;
    }
    if (!column.identity && tokens_.at("IDENTITY")) {
        column.identity = identityProperty();
        return true;
    }
    const bool named = tokens_.at("CONSTRAINT");
    const Token& kind = tokens_.peek(named ? 2 : 0);
    if (!column.defaultValue && kind.is("DEFAULT")) {
        auto name = constraintName();
        tokens_.expect("DEFAULT");
        column.defaultValue = DefaultConstraint{std::move(name), value()};
        return true;
    }
    if (kind.is("PRIMARY") || kind.is("UNIQUE")) {
        column.constraints.emplace_back(keyConstraint(true));
        return true;
    }
    if (kind.is("CHECK")) {
        column.constraints.emplace_back(checkConstraint());
        return true;
    }
    return false;
}

// identityProperty = "IDENTITY" ["(" integer "," integer ")"]
IdentityProperty Grammar::identityProperty() {
    tokens_.expect("IDENTITY");
    IdentityProperty identity;
    if (tokens_.accept("(")) {
        identity.seed = tokens_.takeInteger();
        tokens_.expect(",");
        identity.increment = tokens_.takeInteger();
        tokens_.expect(")");
    }
    return identity;
}

bool Grammar::atTableConstraint() const {
    return tokens_.at("CONSTRAINT") || tokens_.at("PRIMARY") || tokens_.at("UNIQUE") || tokens_.at("CHECK");
}

// tableConstraint = keyConstraint | checkConstraint
TableConstraint Grammar::tableConstraint() {
    if (tokens_.peek(tokens_.at("CONSTRAINT") ? 2 : 0).is("CHECK")) {
        return checkConstraint();
    }
    return keyConstraint(false);
}

// keyConstraint = ["CONSTRAINT" name] ("PRIMARY" "KEY" | "UNIQUE") clustering [indexColumns]
// Inside a column definition the key is that column; elsewhere the columns are named.
KeyConstraint Grammar::keyConstraint(bool inlineInColumn) {
    const SourcePosition begin = tokens_.position();
    KeyConstraint key;
    key.name = constraintName();
    if (tokens_.accept("UNIQUE")) {
        key.kind = KeyKind::Unique;
    } else {
        tokens_.expect("PRIMARY");
        tokens_.expect("KEY");
    }
    key.clustering = clustering();
    if (!inlineInColumn) {
        key.columns = indexColumns();
    }
    key.span = tokens_.since(begin);
    return key;
}

// checkConstraint = ["CONSTRAINT" name] "CHECK" "(" condition ")"
CheckConstraint Grammar::checkConstraint() {
    const SourcePosition begin = tokens_.position();
    auto name = constraintName();
    tokens_.expect("CHECK");
    tokens_.expect("(");
    Expression test = condition();
    tokens_.expect(")");
    return {tokens_.since(begin), std::move(name), std::move(test)};
}

// constraintName = ["CONSTRAINT" name]
std::optional<std::string> Grammar::constraintName() {
    if (!tokens_.accept("CONSTRAINT")) {
        return std::nullopt;
    }
    return tokens_.takeIdentifier();
}

// clustering = ["CLUSTERED" | "NONCLUSTERED"]
Clustering Grammar::clustering() {
    if (tokens_.accept("CLUSTERED")) {
        return Clustering::Clustered;
    }
    if (tokens_.accept("NONCLUSTERED")) {
        return Clustering::Nonclustered;
    }
    return Clustering::Unspecified;
}

// indexColumns = "(" name ["ASC" | "DESC"] {"," name ["ASC" | "DESC"]} ")"
std::vector<IndexColumn> Grammar::indexColumns() {
    std::vector<IndexColumn> columns;
    tokens_.expect("(");
    do {
        IndexColumn column{tokens_.takeIdentifier(), false};
        column.descending = tokens_.accept("DESC");
        if (!column.descending) {
            tokens_.accept("ASC");
        }
        columns.push_back(std::move(column));
    } while (tokens_.accept(","));
    tokens_.expect(")");
    return columns;
}

// alterTable = "TABLE" qualifiedName "ADD" (keyConstraint | checkConstraint | columnDefinition)
AlterTableAdd Grammar::alterTable() {
    tokens_.expect("TABLE");
    AlterTableAdd result;
    result.table = qualifiedName();
    tokens_.expect("ADD");
    if (atTableConstraint()) {
        std::visit(
            [&](auto&& constraint) { result.addition = std::forward<decltype(constraint)>(constraint); },
            tableConstraint());
    } else {
        result.addition = columnDefinition();
    }
    return result;
}

// createIndex = ["UNIQUE"] clustering "INDEX" name "ON" qualifiedName indexColumns
CreateIndex Grammar::createIndex() {
    CreateIndex index;
    index.unique = tokens_.accept("UNIQUE");
    index.clustering = clustering();
    tokens_.expect("INDEX");
    index.name = tokens_.takeIdentifier();
    tokens_.expect("ON");
    index.table = qualifiedName();
    index.columns = indexColumns();
    return index;
}

// drop = "DROP" ("TABLE" | "INDEX" | "PROC" | "PROCEDURE" | "FUNCTION") ["IF" "EXISTS"]
//        qualifiedName ["ON" qualifiedName] {"," qualifiedName ["ON" qualifiedName]}
// ON follows exactly the name of an index.
DropStatement Grammar::drop() {
    tokens_.expect("DROP");
    DropStatement result;
    if (tokens_.accept("TABLE")) {
        result.kind = DropKind::Table;
    } else if (tokens_.accept("INDEX")) {
        result.kind = DropKind::Index;
    } else if (tokens_.accept("PROCEDURE") || tokens_.accept("PROC")) {
        result.kind = DropKind::Procedure;
    } else if (tokens_.accept("FUNCTION")) {
        result.kind = DropKind::Function;
    } else {
        tokens_.refuse();
    }
    if (tokens_.accept("IF")) {
        tokens_.expect("EXISTS");
        result.ifExists = true;
    }
    do {
        DropTarget target{qualifiedName(), std::nullopt};
        if (result.kind == DropKind::Index) {
            tokens_.expect("ON");
            target.table = qualifiedName();
        }
        result.targets.push_back(std::move(target));
    } while (tokens_.accept(","));
    return result;
}

// truncate = "TRUNCATE" "TABLE" qualifiedName
TruncateTable Grammar::truncate() {
    tokens_.expect("TRUNCATE");
    tokens_.expect("TABLE");
    return {qualifiedName()};
}

} // namespace veldran::tsql
