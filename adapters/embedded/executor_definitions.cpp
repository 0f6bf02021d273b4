#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/executor.h"
#include "adapters/embedded/fragment.h"
#include "adapters/embedded/parsing.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::embedded {

namespace {

// A key or index that the rows contradict has a number of its own.
template<typename Action>
void buildingIndex(const Table& table, const std::string& name, Action action) {
    try {
        action();
    } catch (const ado::AdoError& error) {
        const int number = error.first().Number;
        if (number != errorKeyViolation && number != errorUniqueIndexViolation) {
            throw;
        }
        fail(1505, "23000",
             "L'istruzione CREATE UNIQUE INDEX è stata interrotta perché è stata trovata una chiave "
             "duplicata per "
             "l'oggetto '" +
                 table.name + "' e l'indice '" + name + "'.");
    }
}

bool isRoutineOf(const Routine& routine, tsql::DropKind kind) {
    return (kind == tsql::DropKind::Procedure) == (routine.kind == RoutineKind::Procedure);
}

std::string literalOf(const Stored& value, const SqlType& type) {
    return makeConstant(value, type).sql;
}

} // namespace

// Working tables made inside a procedure end with it.
void Executor::noteWorkingTable(const Table& table) {
    if (table.isTemporary() && session_.nesting > 0) {
        session_.scopedTables.push_back({table.name, session_.nesting});
    }
}

void Executor::define(const tsql::CreateTable& statement, Activation& activation) {
    const Table table = tableFromDefinition(statement, activation.text);
    AtomicScope scope(session_, !table.isTemporary());
    if (!table.isTemporary()) {
        session_.catalogue().refresh();
    }
    session_.catalogue().createTable(table);
    scope.complete();
    noteWorkingTable(table);
}

void Executor::define(const tsql::AlterTableAdd& statement, Activation& activation) {
    if (std::holds_alternative<tsql::CheckConstraint>(statement.addition)) {
        fail(errorNotSupported, "42000", "I vincoli CHECK non sono disponibili nel database incorporato.");
    }
    const auto found = session_.catalogue().findTable(statement.table);
    if (!found) {
        fail(4902, "42S02",
             "Impossibile trovare l'oggetto \"" + statement.table.last() + "\" perché non esiste.");
    }
    AtomicScope scope(session_, !found->isTemporary());
    Table table = *found;
    if (const auto* constraint = std::get_if<tsql::KeyConstraint>(&statement.addition)) {
        const Key key = addedKey(table, *constraint);
        table.keys.push_back(key);
        buildingIndex(table, key.name, [&] { session_.catalogue().createKeyIndex(table, key); });
    } else {
        const auto& definition = std::get<tsql::ColumnDefinition>(statement.addition);
        if (!definition.constraints.empty() || definition.identity) {
            fail(errorNotSupported, "42000",
                 "ALTER TABLE ADD non ammette chiavi o IDENTITY nella definizione della colonna '" +
                     definition.name + "'.");
        }
        addColumn(table, definition, activation.text);
        const Column& column = table.columns.back();
        std::string sql = "ALTER TABLE " + table.sqlName() + " ADD COLUMN " + quoteName(column.name) + " " +
                          storageType(column.type);
        if (definition.defaultValue) {
            const Stored value = evaluate(definition.defaultValue->value, &column.type, activation);
            // Rows that exist take the default only where the column is NOT NULL, as on the server.
            sql += column.nullable ? "" : " NOT NULL DEFAULT " + literalOf(value, column.type);
        } else if (!column.nullable) {
            const bool filled =
                session_.database().integer("SELECT EXISTS (SELECT 1 FROM " + table.sqlName() + ")") != 0;
            if (filled) {
                fail(4901, "42000",
                     "ALTER TABLE può aggiungere la colonna NOT NULL '" + column.name +
                         "' a una tabella con righe solo con un valore predefinito.");
            }
            sql += " NOT NULL DEFAULT " + std::string(column.type.isText() ? "''" : "0");
        }
        session_.database().execute(sql);
    }
    session_.catalogue().redefineTable(table);
    scope.complete();
}

void Executor::define(const tsql::CreateIndex& statement) {
    const auto found = session_.catalogue().findTable(statement.table);
    if (!found) {
        fail(1088, "42S02",
             "Impossibile trovare l'oggetto \"" + statement.table.last() + "\" perché non esiste.");
    }
    AtomicScope scope(session_, !found->isTemporary());
    buildingIndex(*found, statement.name, [&] {
        session_.catalogue().createIndex(*found, statement.name, statement.columns, statement.unique);
    });
    scope.complete();
}

void Executor::define(const tsql::DropStatement& statement) {
    for (const tsql::DropTarget& target : statement.targets) {
        dropOne(statement, target);
    }
}

void Executor::dropOne(const tsql::DropStatement& statement, const tsql::DropTarget& target) {
    Catalogue& catalogue = session_.catalogue();
    const auto missing = [&](const char* what) {
        if (!statement.ifExists) {
            fail(3701, "42S02",
                 std::string("Impossibile eliminare ") + what + " '" + target.name.last() +
                     "' perché non esiste o non si dispone dell'autorizzazione.");
        }
    };
    if (statement.kind == tsql::DropKind::Table) {
        const auto table = catalogue.findTable(target.name);
        if (!table) {
            return missing("la tabella");
        }
        AtomicScope scope(session_, !table->isTemporary());
        session_.rowCopies().forget(table->name);
        catalogue.dropTable(*table);
        scope.complete();
        if (equalsIgnoringAsciiCase(session_.identityInsert, table->name)) {
            session_.identityInsert.clear();
        }
        std::erase_if(session_.scopedTables, [&](const SessionState::ScopedTable& scoped) {
            return equalsIgnoringAsciiCase(scoped.name, table->name);
        });
        return;
    }
    if (statement.kind == tsql::DropKind::Index) {
        const auto table = target.table ? catalogue.findTable(*target.table) : nullptr;
        if (!table) {
            return missing("l'indice");
        }
        AtomicScope scope(session_, !table->isTemporary());
        catalogue.dropIndex(*table, target.name.last());
        scope.complete();
        return;
    }
    const auto routine = catalogue.findRoutine(target.name);
    if (!routine || !isRoutineOf(*routine, statement.kind)) {
        return missing(statement.kind == tsql::DropKind::Procedure ? "la procedura" : "la funzione");
    }
    AtomicScope scope(session_, true);
    catalogue.dropRoutine(*routine);
    scope.complete();
}

void Executor::define(const tsql::TruncateTable& statement) {
    const auto found = session_.catalogue().findTable(statement.name);
    if (!found) {
        fail(4701, "42S02",
             "Impossibile trovare l'oggetto \"" + statement.name.last() + "\" perché non esiste.");
    }
    session_.rowCopies().forget(found->name);
    AtomicScope scope(session_, !found->isTemporary());
    session_.database().execute("DELETE FROM " + found->sqlName());
    if (found->identityColumn() != nullptr) {
        SqliteStatement seed = session_.database().prepare("UPDATE " + std::string(found->schema()) +
                                                           ".sqlite_sequence SET seq = ? WHERE name = ?");
        seed.bind(1, found->identitySeed - 1);
        seed.bind(2, std::string_view(found->name));
        seed.run();
    }
    scope.complete();
}

void Executor::define(const tsql::SetIdentityInsert& statement) {
    const auto found = session_.catalogue().findTable(statement.table);
    if (!found) {
        fail(1088, "42S02",
             "Impossibile trovare l'oggetto \"" + statement.table.last() + "\" perché non esiste.");
    }
    if (found->identityColumn() == nullptr) {
        fail(8106, "42000",
             "La tabella '" + found->name +
                 "' non include la proprietà Identity. Impossibile eseguire l'operazione SET.");
    }
    const bool mine = equalsIgnoringAsciiCase(session_.identityInsert, found->name);
    if (statement.on && !session_.identityInsert.empty() && !mine) {
        fail(8107, "42000",
             "IDENTITY_INSERT è già impostata su ON per la tabella '" + session_.identityInsert + "'.");
    }
    if (statement.on) {
        session_.identityInsert = found->name;
    } else if (mine) {
        session_.identityInsert.clear();
    }
}

void Executor::defineRoutine(const tsql::Statement& statement, Activation& activation) {
    Routine routine;
    const tsql::NodeSpan& span = statement.span;
    routine.text = activation.text.substr(span.begin.offset, span.end.offset - span.begin.offset);
    tsql::DefinitionMode mode = tsql::DefinitionMode::Create;
    const std::vector<tsql::RoutineParameter>* parameters = nullptr;
    if (const auto* procedure = std::get_if<tsql::CreateProcedure>(&statement.node)) {
        routine.kind = RoutineKind::Procedure;
        routine.name = procedure->name.last();
        mode = procedure->mode;
        parameters = &procedure->parameters;
    } else {
        const auto& function = std::get<tsql::CreateFunction>(statement.node);
        routine.kind = RoutineKind::Function;
        routine.name = function.name.last();
        mode = function.mode;
        parameters = &function.parameters;
    }
    for (const tsql::RoutineParameter& parameter : *parameters) {
        resolveType(parameter.type);
    }
    // Read again from its own text, so that the places in it count from its beginning.
    routine.batch = parseText(routine.text);
    AtomicScope scope(session_, true);
    session_.catalogue().refresh();
    session_.catalogue().createRoutine(routine, mode);
    scope.complete();
}

} // namespace veldran::embedded
