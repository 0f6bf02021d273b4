#include "adapters/tsql/text_writer.h"

namespace veldran::tsql {

void TextWriter::write(const Statement& statement) {
    std::visit([&](const auto& alternative) { node(alternative); }, statement.node);
}

void TextWriter::write(const std::vector<Statement>& statements) {
    std::string_view separator;
    for (const Statement& statement : statements) {
        text_ += separator;
        write(statement);
        separator = ";\n";
    }
}

void TextWriter::node(const InsertStatement& insert) {
    text_ += "INSERT INTO ";
    write(insert.table);
    text_ += ' ';
    if (!insert.columns.empty()) {
        text_ += '(';
        identifiers(insert.columns);
        text_ += ") ";
    }
    std::visit([&](const auto& alternative) { node(alternative); }, insert.source);
}

void TextWriter::node(const InsertValues& rows) {
    std::string_view separator = "VALUES (";
    for (const ValuesRow& row : rows.rows) {
        text_ += separator;
        values(row);
        text_ += ')';
        separator = ", (";
    }
}

void TextWriter::node(const UpdateStatement& update) {
    text_ += "UPDATE ";
    write(update.target);
    std::string_view separator = " SET ";
    for (const Assignment& assignment : update.assignments) {
        text_ += separator;
        write(assignment.column);
        text_ += " = ";
        write(assignment.value);
        separator = ", ";
    }
    from(update.from);
    where(update.where);
}

void TextWriter::node(const DeleteStatement& deletion) {
    text_ += "DELETE FROM ";
    write(deletion.target);
    from(deletion.from);
    where(deletion.where);
}

void TextWriter::node(const SetIdentityInsert& set) {
    text_ += "SET IDENTITY_INSERT ";
    write(set.table);
    text_ += set.on ? " ON" : " OFF";
}

void TextWriter::node(const SetOption& set) {
    std::string_view separator = "SET ";
    for (const std::string& name : set.names) {
        text_ += separator;
        text_ += name;
        separator = ", ";
    }
    text_ += ' ';
    text_ += set.value ? *set.value : std::string(set.on ? "ON" : "OFF");
}

void TextWriter::node(const TransactionStatement& transaction) {
    switch (transaction.action) {
    case TransactionAction::Begin:
        text_ += "BEGIN TRANSACTION";
        break;
    case TransactionAction::Commit:
        text_ += "COMMIT TRANSACTION";
        break;
    case TransactionAction::Rollback:
        text_ += "ROLLBACK TRANSACTION";
        break;
    case TransactionAction::Save:
        text_ += "SAVE TRANSACTION";
        break;
    }
    if (transaction.name) {
        text_ += ' ';
        identifier(*transaction.name);
    }
}

void TextWriter::node(const Block& block) {
    text_ += "BEGIN\n";
    write(block.statements);
    text_ += "\nEND";
}

void TextWriter::node(const IfStatement& choice) {
    text_ += "IF ";
    write(choice.condition);
    text_ += ' ';
    write(*choice.then);
    if (choice.otherwise) {
        text_ += " ELSE ";
        write(**choice.otherwise);
    }
}

void TextWriter::node(const WhileStatement& loop) {
    text_ += "WHILE ";
    write(loop.condition);
    text_ += ' ';
    write(*loop.body);
}

void TextWriter::node(const DeclareStatement& declare) {
    std::string_view separator = "DECLARE ";
    for (const VariableDeclaration& variable : declare.variables) {
        text_ += separator;
        text_ += variable.name + " ";
        write(variable.type);
        if (variable.initial) {
            text_ += " = ";
            write(*variable.initial);
        }
        separator = ", ";
    }
}

void TextWriter::node(const SetVariable& set) {
    text_ += "SET " + set.variable + " = ";
    write(set.value);
}

void TextWriter::node(const ReturnStatement& result) {
    text_ += "RETURN";
    if (result.value) {
        text_ += ' ';
        write(*result.value);
    }
}

void TextWriter::node(const PrintStatement& print) {
    text_ += "PRINT ";
    write(print.message);
}

void TextWriter::node(const RaiseErrorStatement& raise) {
    text_ += "RAISERROR(";
    values(raise.arguments);
    text_ += ')';
}

void TextWriter::node(const ThrowStatement& thrown) {
    text_ += "THROW ";
    write(thrown.number);
    text_ += ", ";
    write(thrown.message);
    text_ += ", ";
    write(thrown.state);
}

void TextWriter::node(const ExecuteStatement& execute) {
    text_ += "EXECUTE ";
    if (execute.returnVariable) {
        text_ += *execute.returnVariable + " = ";
    }
    write(execute.procedure);
    std::string_view separator = " ";
    for (const ExecuteArgument& argument : execute.arguments) {
        text_ += separator;
        if (argument.name) {
            text_ += *argument.name + " = ";
        }
        write(argument.value);
        word(" OUTPUT", argument.output);
        separator = ", ";
    }
}

} // namespace veldran::tsql
