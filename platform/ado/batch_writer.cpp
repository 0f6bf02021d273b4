#include "platform/ado/batch_writer.h"

#include "platform/ado/raise.h"
#include "platform/ado/statement_text.h"
#include "platform/ado/value_conversion.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace veldran::ado {

/// Collects "column = ?" (or "column IS NULL") and the parameters that go with them.
class BatchWriter::Conditions {
public:
    explicit Conditions(const BatchWriter& writer) : writer_(writer) {}

    void assign(std::size_t column, Value value) {
        append(", ", assignments_) += name(column) + " = ?";
        bind(column, std::move(value));
    }
    void require(std::size_t column, const Value& value) {
        append(" AND ", conditions_) += name(column) + (value.isNull() ? " IS NULL" : " = ?");
        if (!value.isNull()) {
            bind(column, value);
        }
    }
    Statement update() {
        return {"UPDATE " + writer_.table_ + " SET " + assignments_ + " WHERE " + conditions_,
                std::move(parameters_)};
    }
    Statement remove() {
        return {"DELETE FROM " + writer_.table_ + " WHERE " + conditions_, std::move(parameters_)};
    }

private:
    static std::string& append(const char* separator, std::string& list) {
        return list.empty() ? list : list.append(separator);
    }
    std::string name(std::size_t column) const {
        return quotedName(writer_.rows_.columns()[column].baseColumn);
    }
    void bind(std::size_t column, Value value) {
        parameters_.push_back(writer_.parameter(parameters_.size(), column, std::move(value)));
    }

    const BatchWriter& writer_;
    std::string assignments_;
    std::string conditions_;
    std::vector<BoundParameter> parameters_;
};

BatchWriter::BatchWriter(const CursorRows& rows, const std::vector<std::size_t>& marked) : rows_(rows) {
    if (marked.empty()) {
        return;
    }
    findBaseTable();
    statements_.reserve(marked.size());
    planDeletes(marked);
    planUpdates(marked);
    planInserts(marked);
}

void BatchWriter::write(Session& session, const ExecuteSettings& settings) const {
    for (const Statement& statement : statements_) {
        const auto affected = session.execute(statement.text, statement.parameters, settings).rowsAffected;
        if (affected > 1) {
            raise(adErrKeyInsufficient, "(" + table_ + ")");
        }
        if (affected != 1) {
            raise(adErrConcurrencyViolation, "(" + table_ + ")");
        }
    }
}

void BatchWriter::findBaseTable() {
    std::string table;
    const auto& columns = rows_.columns();
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const ColumnInfo& info = columns[column];
        if (info.baseTable.empty()) {
            continue;
        }
        if (table.empty()) {
            table = info.baseTable;
        } else if (!equalsIgnoringAsciiCase(table, info.baseTable)) {
            raise(adErrFeatureNotAvailable, "(le righe provengono da più tabelle)");
        }
        const bool repeated = std::any_of(columns_.begin(), columns_.end(), [&](std::size_t earlier) {
            return equalsIgnoringAsciiCase(columns[earlier].baseColumn, info.baseColumn);
        });
        if (!repeated) {
            columns_.push_back(column);
            if (info.key) {
                keys_.push_back(column);
            }
        }
    }
    if (table.empty() || keys_.empty()) {
        raise(adErrFeatureNotAvailable,
              table.empty() ? "(la tabella di base non è nota)" : "(la chiave di " + table + " non è nota)");
    }
    table_ = quotedTable(table);
}

void BatchWriter::planDeletes(const std::vector<std::size_t>& marked) {
    for (const std::size_t row : marked) {
        if (rows_.status(row) == adRecDeleted) {
            Conditions conditions(*this);
            for (const std::size_t column : columns_) {
                conditions.require(column, rows_.original(row, column));
            }
            statements_.push_back(conditions.remove());
        }
    }
}

void BatchWriter::planUpdates(const std::vector<std::size_t>& marked) {
    struct Update {
        std::size_t row = 0;
        std::vector<std::size_t> columns;
        std::optional<std::size_t> waitsFor; // the update that frees the key this one takes
        std::optional<Parking> parking;
        enum { Untouched, OnPath, Planned } state = Untouched;
    };
    std::vector<Update> updates;
    std::map<std::string, std::size_t> leavers; // old key of the rows that leave it
    for (const std::size_t row : marked) {
        if (rows_.status(row) != adRecModified) {
            continue;
        }
        if (auto columns = changedColumns(row); !columns.empty()) {
            if (const std::string key = keyText(row, true); key != keyText(row, false)) {
                leavers.emplace(key, updates.size());
            }
            updates.push_back({row, std::move(columns), std::nullopt, std::nullopt, Update::Untouched});
        }
    }
    for (std::size_t i = 0; i < updates.size(); ++i) {
        const auto leaver = leavers.find(keyText(updates[i].row, false));
        if (leaver != leavers.end() && leaver->second != i) {
            updates[i].waitsFor = leaver->second;
        }
    }
    for (std::size_t first = 0; first < updates.size(); ++first) {
        std::vector<std::size_t> path;
        std::optional<std::size_t> next = first;
        while (next && updates[*next].state == Update::Untouched) {
            updates[*next].state = Update::OnPath;
            path.push_back(*next);
            next = updates[*next].waitsFor;
        }
        if (next && updates[*next].state == Update::OnPath) {
            Update& parked = updates[*next];
            parked.parking = parkingFor(parked.row);
            addParking(parked.row, parked.columns, *parked.parking);
        }
        for (; !path.empty(); path.pop_back()) {
            Update& update = updates[path.back()];
            addUpdate(update.row, update.columns, update.parking ? &*update.parking : nullptr);
            update.state = Update::Planned;
        }
    }
}

void BatchWriter::planInserts(const std::vector<std::size_t>& marked) {
    // Rows keyed one after the other fill the same columns: those that `text` names.
    std::vector<std::size_t> named;
    std::string text;
    for (const std::size_t row : marked) {
        if (rows_.status(row) != adRecNew) {
            continue;
        }
        std::vector<std::size_t> filled;
        std::vector<BoundParameter> parameters;
        filled.reserve(columns_.size());
        parameters.reserve(columns_.size());
        for (const std::size_t column : columns_) {
            const ColumnInfo& info = rows_.columns()[column];
            const Value& value = rows_.value(row, column);
            if (info.identity || (value.isNull() && !info.key)) {
                continue;
            }
            filled.push_back(column);
            parameters.push_back(parameter(parameters.size(), column, value));
        }
        if (filled.empty()) {
            raise(adErrFeatureNotAvailable, "(la nuova riga di " + table_ + " non ha valori)");
        }
        if (filled != named) {
            named = std::move(filled);
            text = insertOf(named);
        }
        statements_.push_back({text, std::move(parameters)});
    }
}

std::string BatchWriter::insertOf(const std::vector<std::size_t>& columns) const {
    std::string names;
    std::string markers;
    for (const std::size_t column : columns) {
        names.append(names.empty() ? "" : ", ").append(quotedName(rows_.columns()[column].baseColumn));
        markers += markers.empty() ? "?" : ", ?";
    }
    return "INSERT INTO " + table_ + " (" + names + ") VALUES (" + markers + ")";
}

void BatchWriter::addUpdate(std::size_t row, const std::vector<std::size_t>& columns,
                            const Parking* parking) {
    Conditions conditions(*this);
    for (const std::size_t column : columns) {
        conditions.assign(column, rows_.value(row, column));
    }
    for (const std::size_t column : keys_) {
        const bool parked = parking != nullptr && parking->column == column;
        conditions.require(column, parked ? parking->key : rows_.original(row, column));
    }
    if (parking == nullptr) { // a parked row was checked when it was parked
        for (const std::size_t column : columns) {
            if (!rows_.columns()[column].key) {
                conditions.require(column, rows_.original(row, column));
            }
        }
    }
    statements_.push_back(conditions.update());
}

void BatchWriter::addParking(std::size_t row, const std::vector<std::size_t>& columns,
                             const Parking& parking) {
    Conditions conditions(*this);
    conditions.assign(parking.column, parking.key);
    for (const std::size_t column : keys_) {
        conditions.require(column, rows_.original(row, column));
    }
    for (const std::size_t column : columns) {
        if (!rows_.columns()[column].key) {
            conditions.require(column, rows_.original(row, column));
        }
    }
    statements_.push_back(conditions.update());
}

BatchWriter::Parking BatchWriter::parkingFor(std::size_t row) {
    const auto isUsed = [&](std::size_t column, const Value& key) {
        if (std::find(parkingKeys_.begin(), parkingKeys_.end(), key) != parkingKeys_.end()) {
            return true;
        }
        for (std::size_t other = 0; other < rows_.size(); ++other) {
            if (rows_.original(other, column) == key || rows_.value(other, column) == key) {
                return true;
            }
        }
        return false;
    };
    for (const std::size_t column : keys_) {
        const ColumnInfo& info = rows_.columns()[column];
        if (info.identity || info.type == adBoolean || !isChanged(row, column)) {
            continue;
        }
        const TargetType target{
            {"campo", info.name}, info.type, info.definedSize, info.precision, info.scale};
        for (int attempt = 1; attempt <= 999; ++attempt) {
            // Row numbers and codes are positive and begin with letters or digits: the other side of zero and
            // the last character of ASCII are free but in a contrived table, and there the key constraint
            // refuses the batch.
            const Value candidate = isText(info.type)
                                        ? Value("~" + (attempt == 1 ? "" : std::to_string(attempt)))
                                        : Value(-attempt);
            try {
                Value key = converted(candidate, target, Places::Refused);
                if (isFixedText(info.type)) {
                    key = paddedTo(info.definedSize, key.toText());
                }
                if (!isUsed(column, key)) {
                    parkingKeys_.push_back(key);
                    return {column, key};
                }
            } catch (const AdoError&) {
                break; // the type has no room for this candidate, nor for the longer ones that follow
            }
        }
    }
    raise(adErrFeatureNotAvailable, "(scambio di chiavi in " + table_ + ")");
}

bool BatchWriter::isChanged(std::size_t row, std::size_t column) const {
    return !(rows_.value(row, column) == rows_.original(row, column));
}

std::vector<std::size_t> BatchWriter::changedColumns(std::size_t row) const {
    std::vector<std::size_t> changed;
    for (std::size_t column = 0; column < rows_.columns().size(); ++column) {
        if (!isChanged(row, column)) {
            continue;
        }
        if (std::find(columns_.begin(), columns_.end(), column) == columns_.end()) {
            raise(adErrFeatureNotAvailable,
                  "(il campo " + rows_.columns()[column].name + " non è aggiornabile)");
        }
        changed.push_back(column);
    }
    return changed;
}

std::string BatchWriter::keyText(std::size_t row, bool original) const {
    std::string key;
    for (const std::size_t column : keys_) {
        const Value value = original ? rows_.original(row, column) : rows_.value(row, column);
        const std::string text =
            withFoldedCase(nullSafeText(value)); // keys are equal as the database compares them
        key += std::to_string(text.size()) + ":" + text;
    }
    return key;
}

BoundParameter BatchWriter::parameter(std::size_t position, std::size_t column, Value value) const {
    const ColumnInfo& info = rows_.columns()[column];
    BoundParameter bound;
    bound.info.name = "@P" + std::to_string(position + 1);
    bound.info.type = info.type;
    bound.info.precision = info.precision;
    bound.info.scale = info.scale;
    if (isText(info.type)) {
        bound.info.size = info.definedSize > 0 ? info.definedSize
                                               : std::max(1, static_cast<int>(utf16Length(value.toText())));
    }
    bound.value = std::move(value);
    return bound;
}

} // namespace veldran::ado
