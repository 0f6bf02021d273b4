#include "tests/platform/memory_driver.h"

#include "platform/text.h"

#include <algorithm>
#include <cctype>

namespace veldran::test {

namespace {

[[noreturn]] void refuse(int number, const char* state, const std::string& description) {
    throw ado::AdoError(ado::Error{number, "memory", description, state, number});
}

/// Walks a statement of the few known shapes, word by word.
class Words {
public:
    Words(std::string_view text, std::span<const ado::BoundParameter> parameters)
        : text_(text), parameters_(parameters) {}

    bool take(std::string_view expected) {
        skipBlanks();
        if (!text_.starts_with(expected)) {
            return false;
        }
        text_.remove_prefix(expected.size());
        return true;
    }
    void need(std::string_view expected) {
        if (!take(expected)) {
            syntaxError();
        }
    }
    std::string name() {
        skipBlanks();
        const bool bracket = take("[");
        std::string result;
        while (!text_.empty() && (bracket ? text_.front() != ']'
                                          : std::isalnum(static_cast<unsigned char>(text_.front())) != 0 ||
                                                text_.front() == '_' || text_.front() == '#')) {
            result += text_.front();
            text_.remove_prefix(1);
        }
        if (bracket) {
            need("]");
        }
        return result;
    }
    const Value& parameter() {
        need("?");
        if (next_ >= parameters_.size()) {
            refuse(137, "07002", "parametro mancante");
        }
        return parameters_[next_++].value;
    }
    bool atEnd() {
        skipBlanks();
        return text_.empty();
    }
    [[noreturn]] void syntaxError() const {
        refuse(102, "42000", "Sintassi non corretta in prossimità di '" + std::string(text_) + "'.");
    }

private:
    void skipBlanks() { text_.remove_prefix(std::min(text_.find_first_not_of(' '), text_.size())); }

    std::string_view text_;
    std::span<const ado::BoundParameter> parameters_;
    std::size_t next_ = 0;
};

using Row = std::vector<Value>;

bool equal(const Value& a, const Value& b) {
    return a.asText() != nullptr && b.asText() != nullptr ? compareBlindly(*a.asText(), *b.asText()) == 0
                                                          : a == b;
}

std::size_t indexOf(const MemoryTable& table, const std::string& name) {
    const auto found = std::find_if(table.columns.begin(), table.columns.end(), [&](const auto& info) {
        return equalsIgnoringAsciiCase(info.name, name);
    });
    if (found == table.columns.end()) {
        refuse(207, "42S22", "Il nome di colonna '" + name + "' non è valido.");
    }
    return static_cast<std::size_t>(found - table.columns.begin());
}

void check(const MemoryTable& table, const Row& row, std::size_t self) {
    for (std::size_t c = 0; c < table.columns.size(); ++c) {
        if (row[c].isNull() && !table.columns[c].nullable) {
            refuse(515, "23000",
                   "Impossibile inserire il valore NULL nella colonna '" + table.columns[c].name + "'.");
        }
    }
    for (std::size_t other = 0; other < table.rows.size(); ++other) {
        bool same = other != self;
        for (std::size_t c = 0; same && c < table.columns.size(); ++c) {
            same = !table.columns[c].key || equal(table.rows[other][c], row[c]);
        }
        if (same && std::any_of(table.columns.begin(), table.columns.end(),
                                [](const auto& info) { return info.key; })) {
            refuse(2627, "23000", "Violazione del vincolo PRIMARY KEY di '" + table.name + "'.");
        }
    }
}

void sortByKey(MemoryTable& table) {
    std::stable_sort(table.rows.begin(), table.rows.end(), [&](const Row& a, const Row& b) {
        for (std::size_t c = 0; c < table.columns.size(); ++c) {
            if (table.columns[c].key && !equal(a[c], b[c])) {
                return a[c].asText() != nullptr ? compareBlindly(*a[c].asText(), *b[c].asText()) < 0
                                                : a[c].toDouble() < b[c].toDouble();
            }
        }
        return false;
    });
}

std::vector<std::size_t> rowsWhere(MemoryTable& table, Words& words) {
    struct Condition {
        std::size_t column;
        Value value;
    };
    std::vector<Condition> conditions;
    do {
        const std::size_t column = indexOf(table, words.name());
        if (words.take("IS NULL")) {
            conditions.push_back({column, Value()});
        } else {
            words.need("=");
            conditions.push_back({column, words.parameter()});
        }
    } while (words.take("AND "));
    std::vector<std::size_t> found;
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        if (std::all_of(conditions.begin(), conditions.end(), [&](const Condition& condition) {
                return equal(table.rows[row][condition.column], condition.value);
            })) {
            found.push_back(row);
        }
    }
    return found;
}

class MemorySession;

class MemoryStatement final : public ado::PreparedStatement {
public:
    MemoryStatement(MemorySession& session, std::string text, std::shared_ptr<MemoryDatabase> database);
    ~MemoryStatement() override;
    ado::StatementResult execute(std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& settings) override;

private:
    MemorySession& session_;
    std::string text_;
    std::shared_ptr<MemoryDatabase> database_;
};

class MemorySession final : public ado::Session {
public:
    explicit MemorySession(std::shared_ptr<MemoryDatabase> database) : database_(std::move(database)) {
        ++database_->openSessions;
    }
    ~MemorySession() override {
        if (saved_) {
            undo();
        }
        --database_->openSessions;
    }

    ado::StatementResult execute(std::string_view text, std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings& /*settings*/) override {
        if (text.starts_with("-- ")) {
            return {};
        }
        Words words(text, parameters);
        ado::StatementResult result;
        if (words.take("SELECT * FROM ")) {
            result.rows = select(database_->table(words.name()));
        } else if (words.take("UPDATE ")) {
            result.rowsAffected = update(words);
        } else if (words.take("DELETE FROM ")) {
            result.rowsAffected = remove(words);
        } else if (words.take("INSERT INTO ")) {
            result.rowsAffected = insert(words);
        } else {
            words.syntaxError();
        }
        return result;
    }

    std::unique_ptr<ado::PreparedStatement>
    prepare(std::string_view text, std::span<const ado::ParameterInfo> /*parameters*/) override {
        return std::make_unique<MemoryStatement>(*this, std::string(text), database_);
    }

    std::vector<ado::ParameterInfo> describeProcedure(std::string_view name) override {
        const auto found = database_->procedures.find(std::string(name));
        if (found == database_->procedures.end()) {
            refuse(2812, "42000", "Impossibile trovare la stored procedure '" + std::string(name) + "'.");
        }
        return found->second;
    }

    ado::StatementResult callProcedure(std::string_view name, std::span<const ado::BoundParameter> parameters,
                                       const ado::ExecuteSettings& /*settings*/) override {
        describeProcedure(name);
        ado::StatementResult result;
        result.rowsAffected = static_cast<std::int64_t>(parameters.size());
        return result;
    }

    void begin() override {
        saved_ = std::make_unique<std::vector<MemoryTable>>(database_->tables);
        ++database_->transactions;
    }
    void commit() override {
        saved_.reset();
        --database_->transactions;
    }
    void rollback() override { undo(); }

private:
    void undo() {
        database_->tables = std::move(*saved_);
        saved_.reset();
        --database_->transactions;
    }

    static std::unique_ptr<ado::RowSet> select(const MemoryTable& table) {
        auto rows = std::make_unique<ado::RowSet>(table.columns);
        for (const Row& row : table.rows) {
            for (const Value& value : row) {
                rows->append(value);
            }
        }
        return rows;
    }

    std::int64_t update(Words& words) {
        MemoryTable& table = database_->table(words.name());
        std::vector<std::pair<std::size_t, Value>> assignments;
        words.need("SET ");
        do {
            const std::size_t column = indexOf(table, words.name());
            words.need("=");
            assignments.emplace_back(column, words.parameter());
        } while (words.take(","));
        words.need("WHERE ");
        const auto found = rowsWhere(table, words);
        for (const std::size_t row : found) {
            Row changed = table.rows[row];
            for (const auto& [column, value] : assignments) {
                changed[column] = value;
            }
            check(table, changed, row);
            table.rows[row] = changed;
        }
        sortByKey(table);
        return static_cast<std::int64_t>(found.size());
    }

    std::int64_t remove(Words& words) {
        MemoryTable& table = database_->table(words.name());
        std::vector<std::size_t> found;
        if (words.take("WHERE ")) {
            found = rowsWhere(table, words);
        } else {
            for (std::size_t row = 0; row < table.rows.size(); ++row) {
                found.push_back(row);
            }
        }
        for (auto row = found.rbegin(); row != found.rend(); ++row) {
            table.rows.erase(table.rows.begin() + static_cast<std::ptrdiff_t>(*row));
        }
        return static_cast<std::int64_t>(found.size());
    }

    std::int64_t insert(Words& words) {
        MemoryTable& table = database_->table(words.name());
        std::vector<std::size_t> columns;
        words.need("(");
        do {
            columns.push_back(indexOf(table, words.name()));
        } while (words.take(","));
        words.need(")");
        words.need("VALUES");
        words.need("(");
        Row row(table.columns.size());
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (i > 0) {
                words.need(",");
            }
            row[columns[i]] = words.parameter();
        }
        words.need(")");
        check(table, row, table.rows.size());
        table.rows.push_back(row);
        sortByKey(table);
        return 1;
    }

    std::shared_ptr<MemoryDatabase> database_;
    std::unique_ptr<std::vector<MemoryTable>> saved_; // as they were when the open transaction began
};

MemoryStatement::MemoryStatement(MemorySession& session, std::string text,
                                 std::shared_ptr<MemoryDatabase> database)
    : session_(session), text_(std::move(text)), database_(std::move(database)) {
    ++database_->livePrepared;
}

MemoryStatement::~MemoryStatement() {
    --database_->livePrepared;
}

ado::StatementResult MemoryStatement::execute(std::span<const ado::BoundParameter> parameters,
                                              const ado::ExecuteSettings& settings) {
    return session_.execute(text_, parameters, settings);
}

} // namespace

MemoryTable& MemoryDatabase::table(std::string_view name) {
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const MemoryTable& table) {
        return equalsIgnoringAsciiCase(table.name, name);
    });
    if (found == tables.end()) {
        refuse(208, "42S02", "Il nome di oggetto '" + std::string(name) + "' non è valido.");
    }
    return *found;
}

std::unique_ptr<ado::Session> MemoryDriver::open(const std::string& connectionString,
                                                 const std::string& /*user*/,
                                                 const std::string& /*password*/) {
    if (connectionString != "memory") {
        refuse(17, "08001", "Database sconosciuto: " + connectionString);
    }
    return std::make_unique<MemorySession>(database_);
}

ado::ColumnInfo column(std::string name, ado::DataTypeEnum type, int size, std::uint8_t scale) {
    ado::ColumnInfo info;
    info.name = name;
    info.baseColumn = std::move(name);
    info.baseTable = "#T";
    info.type = type;
    info.definedSize = size;
    info.precision = static_cast<std::uint8_t>(type == ado::adNumeric ? size : 0);
    info.scale = scale;
    return info;
}

ado::ColumnInfo keyColumn(std::string name, ado::DataTypeEnum type, int size, std::uint8_t scale) {
    ado::ColumnInfo info = column(std::move(name), type, size, scale);
    info.key = true;
    info.nullable = false;
    return info;
}

} // namespace veldran::test
