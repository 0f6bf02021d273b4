#include "adapters/embedded/script.h"

#include "adapters/embedded/errors.h"
#include "adapters/embedded/session.h"
#include "adapters/tsql/script.h"
#include "adapters/tsql/source.h"

namespace veldran::embedded {

namespace {

[[noreturn]] void failAtLine(std::size_t line, const ado::Error& error) {
    ado::Error placed = error;
    placed.Description = "Script, riga " + std::to_string(line) + ": " + error.Description;
    throw ado::AdoError(std::move(placed));
}

std::vector<tsql::ScriptBatch> batchesOf(std::string_view script) {
    try {
        return tsql::splitScript(script);
    } catch (const tsql::SyntaxError& error) {
        failAtLine(error.position().line, makeError(error.number(), error.sqlState(), error.what()));
    }
}

} // namespace

void runScript(ado::Session& session, std::string_view script) {
    auto* embedded = dynamic_cast<EmbeddedSession*>(&session);
    for (const tsql::ScriptBatch& batch : batchesOf(script)) {
        for (int i = 0; i < batch.repetitions; ++i) {
            try {
                if (embedded != nullptr) {
                    embedded->executeBatch(batch.text, batch.origin.line);
                } else {
                    session.execute(batch.text, {}, {0, false});
                }
            } catch (const ado::AdoError& error) {
                failAtLine(batch.origin.line, error.first());
            }
        }
    }
}

} // namespace veldran::embedded
