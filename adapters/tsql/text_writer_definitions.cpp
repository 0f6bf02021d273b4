#include "adapters/tsql/text_writer.h"

namespace veldran::tsql {

void TextWriter::node(const CreateTable& table) {
    text_ += "CREATE TABLE ";
    write(table.name);
    std::string_view separator = " (";
    for (const ColumnDefinition& column : table.columns) {
        text_ += separator;
        node(column);
        separator = ", ";
    }
    for (const TableConstraint& constraint : table.constraints) {
        text_ += separator;
        std::visit([&](const auto& alternative) { node(alternative); }, constraint);
    }
    text_ += ')';
}

void TextWriter::node(const ColumnDefinition& column) {
    identifier(column.name);
    text_ += ' ';
    write(column.type);
    if (column.collation) {
        text_ += " COLLATE ";
        identifier(*column.collation);
    }
    if (column.identity) {
        text_ += " IDENTITY(" + std::to_string(column.identity->seed) + ", " +
                 std::to_string(column.identity->increment) + ")";
    }
    if (column.nullable) {
        text_ += *column.nullable ? " NULL" : " NOT NULL";
    }
    if (column.defaultValue) {
        text_ += ' ';
        constraintName(column.defaultValue->name);
        text_ += "DEFAULT ";
        write(column.defaultValue->value);
    }
    for (const TableConstraint& constraint : column.constraints) {
        text_ += ' ';
        std::visit([&](const auto& alternative) { node(alternative); }, constraint);
    }
}

void TextWriter::constraintName(const std::optional<std::string>& name) {
    if (name) {
        text_ += "CONSTRAINT ";
        identifier(*name);
        text_ += ' ';
    }
}

void TextWriter::clustering(Clustering clustering) {
    word(" CLUSTERED", clustering == Clustering::Clustered);
    word(" NONCLUSTERED", clustering == Clustering::Nonclustered);
}

void TextWriter::node(const KeyConstraint& key) {
    constraintName(key.name);
    text_ += key.kind == KeyKind::PrimaryKey ? "PRIMARY KEY" : "UNIQUE";
    clustering(key.clustering);
    if (!key.columns.empty()) {
        text_ += ' ';
        columns(key.columns);
    }
}

void TextWriter::node(const CheckConstraint& check) {
    constraintName(check.name);
    text_ += "CHECK (";
    write(check.condition);
    text_ += ')';
}

void TextWriter::columns(const std::vector<IndexColumn>& columns) {
    std::string_view separator = "(";
    for (const IndexColumn& column : columns) {
        text_ += separator;
        identifier(column.name);
        word(" DESC", column.descending);
        separator = ", ";
    }
    text_ += ')';
}

void TextWriter::node(const AlterTableAdd& alter) {
    text_ += "ALTER TABLE ";
    write(alter.table);
    text_ += " ADD ";
    std::visit([&](const auto& alternative) { node(alternative); }, alter.addition);
}

void TextWriter::node(const CreateIndex& index) {
    text_ += "CREATE";
    word(" UNIQUE", index.unique);
    clustering(index.clustering);
    text_ += " INDEX ";
    identifier(index.name);
    text_ += " ON ";
    write(index.table);
    text_ += ' ';
    columns(index.columns);
}

void TextWriter::node(const DropStatement& drop) {
    switch (drop.kind) {
    case DropKind::Table:
        text_ += "DROP TABLE";
        break;
    case DropKind::Index:
        text_ += "DROP INDEX";
        break;
    case DropKind::Procedure:
        text_ += "DROP PROCEDURE";
        break;
    case DropKind::Function:
        text_ += "DROP FUNCTION";
        break;
    }
    word(" IF EXISTS", drop.ifExists);
    std::string_view separator = " ";
    for (const DropTarget& target : drop.targets) {
        text_ += separator;
        write(target.name);
        if (target.table) {
            text_ += " ON ";
            write(*target.table);
        }
        separator = ", ";
    }
}

void TextWriter::node(const TruncateTable& truncate) {
    text_ += "TRUNCATE TABLE ";
    write(truncate.name);
}

void TextWriter::definition(DefinitionMode mode, std::string_view kind, const QualifiedName& name) {
    switch (mode) {
    case DefinitionMode::Create:
        text_ += "CREATE ";
        break;
    case DefinitionMode::CreateOrAlter:
        text_ += "CREATE OR ALTER ";
        break;
    case DefinitionMode::Alter:
        text_ += "ALTER ";
        break;
    }
    text_ += kind;
    write(name);
}

void TextWriter::parameters(const std::vector<RoutineParameter>& parameters) {
    std::string_view separator;
    for (const RoutineParameter& parameter : parameters) {
        text_ += separator;
        text_ += parameter.name + " ";
        write(parameter.type);
        if (parameter.defaultValue) {
            text_ += " = ";
            write(*parameter.defaultValue);
        }
        word(" OUTPUT", parameter.output);
        separator = ", ";
    }
}

void TextWriter::node(const CreateProcedure& procedure) {
    definition(procedure.mode, "PROCEDURE ", procedure.name);
    word(" ", !procedure.parameters.empty());
    parameters(procedure.parameters);
    text_ += " AS\n";
    write(procedure.body);
}

void TextWriter::node(const CreateFunction& function) {
    definition(function.mode, "FUNCTION ", function.name);
    text_ += '(';
    parameters(function.parameters);
    text_ += ") RETURNS ";
    if (const auto* scalar = std::get_if<ScalarFunctionBody>(&function.body)) {
        write(scalar->returns);
    } else {
        text_ += "TABLE";
    }
    word(" WITH SCHEMABINDING", function.schemaBinding);
    text_ += " AS\n";
    std::visit([&](const auto& alternative) { node(alternative); }, function.body);
}

void TextWriter::node(const ScalarFunctionBody& body) {
    text_ += "BEGIN\n";
    write(body.statements);
    text_ += "\nEND";
}

void TextWriter::node(const InlineTableBody& body) {
    text_ += "RETURN ";
    write(body.query);
}

} // namespace veldran::tsql
