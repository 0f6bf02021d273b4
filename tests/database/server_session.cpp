#include "tests/database/server_session.h"

#include "adapters/embedded/script.h"
#include "platform/text.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace veldran::test {

ServerSession::ServerSession(const TestDatabase& database)
    : session_(database.driver()->open(database.connectionString(), {}, {})) {}

void ServerSession::run(const std::string& text) {
    session_->execute(text, {}, {.commandTimeout = 0, .wantsRows = false});
}

TextRows ServerSession::rows(const std::string& query) {
    const ado::StatementResult result = session_->execute(query, {}, {});
    if (!result.rows) {
        throw std::invalid_argument("not a query: " + query);
    }
    return asText(*result.rows);
}

std::string ServerSession::value(const std::string& query) {
    const TextRows found = rows(query);
    if (found.size() != 1 || found.front().size() != 1) {
        throw std::invalid_argument("not one value: " + query);
    }
    return found.front().front();
}

std::vector<std::string> ServerSession::parametersOf(const std::string& procedure) {
    std::vector<std::string> names;
    for (const ado::ParameterInfo& info : session_->describeProcedure(procedure)) {
        if (info.direction != ado::adParamReturnValue) {
            names.push_back(withFoldedCase(info.name));
        }
    }
    return names;
}

ado::StatementResult ServerSession::result(const std::string& procedure,
                                           const std::map<std::string, Value>& values) {
    std::vector<ado::BoundParameter> bound;
    for (const ado::ParameterInfo& info : session_->describeProcedure(procedure)) {
        for (const auto& [name, value] : values) {
            if (equalsIgnoringAsciiCase(name, info.name)) {
                bound.push_back({info, value});
            }
        }
    }
    if (bound.size() != values.size()) {
        throw std::invalid_argument("a parameter that " + procedure + " does not have");
    }
    return session_->callProcedure(procedure, bound, {.commandTimeout = 0});
}

TextRows ServerSession::call(const std::string& procedure, const std::map<std::string, Value>& values) {
    const ado::StatementResult answer = result(procedure, values);
    return answer.rows ? asText(*answer.rows) : TextRows{};
}

void ServerSession::load(const std::string& script) {
    loadFile(VELDRAN_SOURCE_DIR "/" + script);
}

void ServerSession::loadFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path);
    }
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    embedded::runScript(*session_, text);
}

} // namespace veldran::test
