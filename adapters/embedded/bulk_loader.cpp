#include "adapters/embedded/bulk_loader.h"

#include "adapters/embedded/errors.h"
#include "adapters/embedded/session.h"

#include <optional>

namespace veldran::embedded {

struct BulkLoader::State {
    SessionState& session;
    std::shared_ptr<const Table> table; // shared with the catalogue, which may forget it
    std::vector<const Column*> columns;
    std::optional<AtomicScope> scope;
    SqliteStatement insert;
    std::int64_t rows = 0;
};

BulkLoader::BulkLoader(ado::Session& session, const std::string& table,
                       const std::vector<std::string>& columns) {
    auto* embedded = dynamic_cast<EmbeddedSession*>(&session);
    if (embedded == nullptr) {
        fail(errorNotSupported, "42000",
             "Il caricamento in blocco è disponibile solo nel database incorporato.");
    }
    SessionState& state = embedded->state();
    if (state.transactionCount() > 0) {
        fail(errorNotSupported, "42000", "Il caricamento in blocco non è ammesso in una transazione aperta.");
    }
    auto found = state.catalogue().table({{}, {table}});
    state_.reset(new State{state, found, {}, std::nullopt, {}, 0});
    std::string names;
    std::string markers;
    for (const std::string& column : columns) {
        const auto index = found->indexOf(column);
        if (!index) {
            failUnknownColumn(column);
        }
        state_->columns.push_back(&found->columns[*index]);
        names += (names.empty() ? "" : ", ") + quoteName(found->columns[*index].name);
        markers += markers.empty() ? "?" : ", ?";
    }
    state_->insert = state.database().prepare("INSERT INTO " + found->sqlName() + " (" + names +
                                              ") VALUES (" + markers + ")");
    state_->scope.emplace(state, !found->isTemporary());
    state.rowCopies().forget(found->name);
}

BulkLoader::~BulkLoader() = default;

void BulkLoader::append(std::span<const Value> row) {
    if (row.size() != state_->columns.size()) {
        fail(row.size() < state_->columns.size() ? 109 : 110, "21S01",
             "La riga ha " + std::to_string(row.size()) + " valori invece di " +
                 std::to_string(state_->columns.size()) + ".");
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        const Column& column = *state_->columns[i];
        state_->insert.bind(static_cast<int>(i) + 1, toStored(row[i], column.type, column.name));
    }
    state_->insert.run();
    ++state_->rows;
}

std::int64_t BulkLoader::finish() {
    state_->insert = {};
    state_->scope->complete();
    state_->scope.reset();
    return state_->rows;
}

} // namespace veldran::embedded
