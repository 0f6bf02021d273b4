#include "adapters/embedded/errors.h"
#include "adapters/embedded/executor.h"

namespace veldran::embedded {

namespace {

// Appends a cell of the row that the statement stands on. SQLite gives NULL as 0 and as no text, so that only
// those have to be asked what they are.
void appendCell(ado::RowSet& rows, const SqliteStatement& statement, int column, const SqlType& type) {
    if (type.isText()) {
        const std::string_view text = statement.text(column);
        return text.data() == nullptr ? rows.append() : rows.append(text);
    }
    if (type.kind == TypeKind::Float) {
        return statement.isNull(column) ? rows.append()
                                        : rows.append(sqlite3_column_double(statement.handle(), column));
    }
    const std::int64_t number = statement.integer(column);
    if (number == 0 && statement.isNull(column)) {
        return rows.append();
    }
    switch (type.kind) {
    case TypeKind::Bit:
        return rows.append(number != 0);
    case TypeKind::Decimal:
        return rows.append(Decimal{number, type.scale});
    default:
        return rows.append(number);
    }
}

std::string stageDefinition(const Table& table) {
    std::string sql = "CREATE TEMP TABLE veldran_stage (";
    std::string keys;
    for (std::size_t i = 0; i < table.locator().size(); ++i) {
        const std::string place = "\"k" + std::to_string(i) + "\"";
        sql += place + ", ";
        keys += (i == 0 ? "" : ", ") + place;
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        sql += "\"c" + std::to_string(i) + "\", ";
    }
    return sql + "PRIMARY KEY (" + keys + "))";
}

struct NumberRange {
    std::int64_t first;
    std::int64_t last;
};

// A statement for a range costs about as much as passing over so many rows.
constexpr std::int64_t rowsForARange = 20;

// Of ascending numbers: those that are near enough to one another for one statement.
std::vector<NumberRange> rangesOf(const std::vector<std::int64_t>& numbers) {
    std::vector<NumberRange> ranges;
    for (const std::int64_t number : numbers) {
        if (!ranges.empty() && number <= ranges.back().last + rowsForARange) {
            ranges.back().last = number;
        } else {
            ranges.push_back({number, number});
        }
    }
    return ranges;
}

constexpr std::size_t fewRanges = 100;

} // namespace

void Executor::counted(std::int64_t rows) {
    session_.rowCount = rows;
    if (!session_.noCount) {
        result_.rowsAffected = rows;
    }
}

void Executor::runStatement(const tsql::Statement& statement, Activation& activation) {
    // Another program may have changed the schema since the statement was bound: then it is bound once more.
    for (int attempt = 0;; ++attempt) {
        Compiled& entry = compiledStatement(statement, activation);
        try {
            if (runProgram(entry, activation) || attempt > 0) {
                return;
            }
        } catch (const ado::AdoError& error) {
            if (attempt > 0 || error.first().Number != errorInternal || !session_.catalogue().refresh()) {
                throw;
            }
        }
    }
}

// Whether another program has changed what the statement was bound to. Under the write lock nobody can.
bool Executor::isOutdated(Compiled& entry) {
    return !session_.database().inTransaction() && session_.catalogue().refresh() && !isCurrent(entry);
}

bool Executor::runProgram(Compiled& entry, Activation& activation) {
    if (std::holds_alternative<IntoProgram>(entry.translated)) {
        runInto(entry, activation);
        return true;
    }
    prepare(entry);
    const Program& program = entry.program();
    if (program.types.empty()) {
        // A change cannot be taken back to be bound anew, so it looks first; beside the commit this costs
        // nothing.
        if (program.changesFile && isOutdated(entry)) {
            return false;
        }
        if (std::holds_alternative<KeyUpdateProgram>(entry.translated)) {
            runKeyUpdate(entry, activation);
        } else {
            bindSlots(entry.statement, program.slots, activation);
            runChange(entry);
        }
        return true;
    }
    bindSlots(entry.statement, program.slots, activation);
    const ResetGuard guard(entry.statement);
    const bool hasRow = entry.statement.step();
    if (entry.replans != entry.statement.replanned()) {
        entry.replans = entry.statement.replanned();
        if (isOutdated(entry)) {
            return false;
        }
    }
    if (program.variables.empty()) {
        readRows(entry, hasRow);
    } else {
        assignVariables(entry, hasRow, activation);
    }
    return true;
}

void Executor::readRows(Compiled& entry, bool hasRow) {
    SqliteStatement& statement = entry.statement;
    const std::vector<SqlType>& types = entry.program().types;
    std::unique_ptr<ado::RowSet> rows;
    if (wantsRows_ && !result_.rows) {
        rows = std::make_unique<ado::RowSet>(entry.program().columns);
    }
    std::int64_t count = 0;
    for (; hasRow; hasRow = statement.step()) {
        ++count;
        if (rows) {
            for (std::size_t i = 0; i < types.size(); ++i) {
                appendCell(*rows, statement, static_cast<int>(i), types[i]);
            }
        }
    }
    session_.rowCount = count;
    if (rows) {
        result_.rows = std::move(rows);
    }
}

void Executor::assignVariables(Compiled& entry, bool hasRow, Activation& activation) {
    SqliteStatement& statement = entry.statement;
    const Program& program = entry.program();
    std::int64_t count = 0;
    for (; hasRow; hasRow = statement.step()) {
        ++count;
        for (std::size_t i = 0; i < program.variables.size(); ++i) {
            VariableValue* variable = activation.find(program.variables[i]);
            variable->value = statement.stored(static_cast<int>(i));
        }
    }
    session_.rowCount = count;
}

void Executor::runChange(Compiled& entry) {
    const Program& program = entry.program();
    if (program.writesBack && writeBackDiffering(entry, *program.writesBack)) {
        return;
    }
    RowCopies& copies = session_.rowCopies();
    sqlite3* handle = session_.database().handle();
    // Counted before anything is written: what fails from then on cannot be taken back.
    const std::int64_t met = program.counts.empty() ? 0 : session_.database().integer(program.counts);
    session_.database().functions().comparedRows = 0;
    {
        const RowCopies::Watch watch(copies, session_.database(), program.changesTable, program.updates);
        entry.statement.run();
    }
    if (program.writesBack) {
        copies.settle(*program.writesBack);
    } else if (program.copies) {
        copies.added(*program.copies, sqlite3_changes64(handle));
    } else if (program.updates.empty()) {
        copies.forget(program.changesTable);
    }
    counted(!program.counts.empty() ? met
            : program.sparesRows    ? session_.database().functions().comparedRows
                                    : sqlite3_changes64(handle));
    if (entry.program().inserts) {
        session_.lastIdentity =
            entry.program().numbersRows ? std::optional(sqlite3_last_insert_rowid(handle)) : std::nullopt;
    }
}

// The whole statement would look at every row and find most of them as they are to be.
bool Executor::writeBackDiffering(Compiled& entry, const WriteBack& writeBack) {
    RowCopies& copies = session_.rowCopies();
    const std::vector<std::int64_t>* rows = copies.differing(writeBack);
    if (rows == nullptr) {
        return false;
    }
    const std::vector<NumberRange> ranges = rangesOf(*rows);
    if (ranges.size() > fewRanges &&
        static_cast<std::int64_t>(ranges.size()) * rowsForARange > copies.rows(writeBack)) {
        return false;
    }
    session_.database().functions().comparedRows = 0;
    if (!ranges.empty()) {
        if (!entry.ofRange) {
            entry.ofRange = session_.database().prepare(writeBack.ofRange);
        }
        AtomicScope scope(session_, false);
        const RowCopies::Watch watch(copies, session_.database(), writeBack.to, {writeBack.column});
        for (const NumberRange& range : ranges) {
            entry.ofRange.bind(1, range.first);
            entry.ofRange.bind(2, range.last);
            entry.ofRange.run();
        }
        scope.complete();
    }
    copies.settle(writeBack);
    counted(copies.rows(writeBack));
    return true;
}

// Rows whose keys swap or close up collide half-way, because SQLite checks row by row. Then the rows are
// taken out and put back with their new keys; if they still collide, the collision is real.
void Executor::runKeyUpdate(Compiled& entry, Activation& activation) {
    const auto& update = std::get<KeyUpdateProgram>(entry.translated);
    bindSlots(entry.statement, update.direct.slots, activation);
    try {
        return runChange(entry);
    } catch (const ado::AdoError& error) {
        const int number = error.first().Number;
        if (number != errorKeyViolation && number != errorUniqueIndexViolation) {
            throw;
        }
    }
    session_.rowCopies().forget(update.target.name);
    AtomicScope scope(session_, !update.target.isTemporary());
    session_.database().execute("DROP TABLE IF EXISTS temp.veldran_stage; " + stageDefinition(update.target));
    SqliteStatement stage = session_.database().prepare(update.stage);
    bindSlots(stage, update.direct.slots, activation);
    stage.run();
    const std::int64_t rows = sqlite3_changes64(session_.database().handle());
    session_.database().execute(update.remove);
    session_.database().execute(update.insert);
    session_.database().execute("DROP TABLE temp.veldran_stage");
    scope.complete();
    counted(rows);
}

void Executor::runInto(Compiled& entry, Activation& activation) {
    const auto& into = std::get<IntoProgram>(entry.translated);
    buildIndexes(into.fill);
    AtomicScope scope(session_, !into.table.isTemporary());
    session_.catalogue().createTable(into.table);
    SqliteStatement fill = session_.database().prepare(into.fill.sql);
    bindSlots(fill, into.fill.slots, activation);
    fill.run();
    const std::int64_t rows = sqlite3_changes64(session_.database().handle());
    fill = {};
    scope.complete();
    if (into.fill.copies) {
        const auto original = session_.catalogue().table({{}, {into.fill.copies->from}});
        session_.rowCopies().made(*into.fill.copies, rows,
                                  session_.database().integer("SELECT max(" + original->rowNumber() +
                                                              ") FROM " + original->sqlName()));
        session_.catalogue().buildIndexes(*original);
    }
    session_.rowCopies().filled(into.uniform);
    noteWorkingTable(into.table);
    counted(rows);
}

} // namespace veldran::embedded
