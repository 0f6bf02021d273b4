#include "tests/module/scripted_driver.h"

#include "platform/ado/errors.h"
#include "platform/text.h"

#include <stdexcept>
#include <utility>

namespace veldran::test {

namespace {

const ado::BoundParameter& find(const Request& request, std::string_view name) {
    for (const ado::BoundParameter& parameter : request.parameters) {
        if (equalsIgnoringAsciiCase(parameter.info.name, name)) {
            return parameter;
        }
    }
    throw std::out_of_range("not sent: " + std::string(name));
}

ado::StatementResult answered(ScriptedDatabase& database, Request request) {
    database.requests.push_back(request);
    return database.answer ? database.answer(request) : nothing(request);
}

class ScriptedStatement final : public ado::PreparedStatement {
public:
    ScriptedStatement(ScriptedDatabase& database, std::string text)
        : database_(database), text_(std::move(text)) {
        ++database_.livePrepared;
    }
    ~ScriptedStatement() override { --database_.livePrepared; }
    ado::StatementResult execute(std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings&) override {
        return answered(database_, {text_, {parameters.begin(), parameters.end()}, true, false});
    }

private:
    ScriptedDatabase& database_;
    std::string text_;
};

class ScriptedSession final : public ado::Session {
public:
    explicit ScriptedSession(ScriptedDatabase& database) : database_(database) {}

    ado::StatementResult execute(std::string_view text, std::span<const ado::BoundParameter> parameters,
                                 const ado::ExecuteSettings&) override {
        return answered(database_, {std::string(text), {parameters.begin(), parameters.end()}, false, false});
    }
    std::unique_ptr<ado::PreparedStatement> prepare(std::string_view text,
                                                    std::span<const ado::ParameterInfo>) override {
        ++database_.prepares;
        return std::make_unique<ScriptedStatement>(database_, std::string(text));
    }
    std::vector<ado::ParameterInfo> describeProcedure(std::string_view name) override {
        const auto number = [](std::string parameter, std::uint8_t precision) {
            ado::ParameterInfo info{std::move(parameter), ado::adNumeric, ado::adParamInput, 0, precision, 0};
            return info;
        };
        const ado::ParameterInfo gruppo = number("@GRUPPO", 2);
        const ado::ParameterInfo natura = number("@NATURA", 1);
        const auto conto = [](std::string parameter) {
            return ado::ParameterInfo{std::move(parameter), ado::adWChar, ado::adParamInput, 10, 0, 0};
        };
        const auto small = [](std::string parameter) {
            return ado::ParameterInfo{std::move(parameter), ado::adSmallInt, ado::adParamInput, 0, 0, 0};
        };
        if (name == "SPCI_INTERMEDIFIGLI") {
            return {small("@LIVELLO_PARENT"), gruppo, conto("@PARENT"), natura};
        }
        return {{"@ON", ado::adBoolean, ado::adParamInput, 0, 0, 0},
                number("@DITTA", 5),
                gruppo,
                conto("@CONTO"),
                natura,
                small("@CORRELATI")};
    }
    ado::StatementResult callProcedure(std::string_view name, std::span<const ado::BoundParameter> parameters,
                                       const ado::ExecuteSettings&) override {
        return answered(database_, {std::string(name), {parameters.begin(), parameters.end()}, false, true});
    }
    void begin() override {}
    void commit() override {}
    void rollback() override {}

private:
    ScriptedDatabase& database_;
};

class ScriptedDriver final : public ado::Driver {
public:
    explicit ScriptedDriver(ScriptedDatabase& database) : database_(database) {}
    std::unique_ptr<ado::Session> open(const std::string&, const std::string&, const std::string&) override {
        return std::make_unique<ScriptedSession>(database_);
    }

private:
    ScriptedDatabase& database_;
};

} // namespace

const Value& Request::value(std::string_view name) const {
    return find(*this, name).value;
}

std::vector<Request> ScriptedDatabase::containing(std::string_view fragment) const {
    std::vector<Request> found;
    for (const Request& request : requests) {
        if (request.text.find(fragment) != std::string::npos) {
            found.push_back(request);
        }
    }
    return found;
}

std::shared_ptr<ado::Connection> connectTo(ScriptedDatabase& database) {
    auto connection = ado::Connection::create(std::make_shared<ScriptedDriver>(database));
    connection->Open("scritto=1");
    return connection;
}

ado::StatementResult rows(const std::vector<std::string>& columns,
                          const std::vector<std::vector<Value>>& values) {
    std::vector<ado::ColumnInfo> infos;
    for (const std::string& name : columns) {
        ado::ColumnInfo info;
        info.name = name;
        infos.push_back(info);
    }
    auto set = std::make_unique<ado::RowSet>(std::move(infos));
    for (const auto& row : values) {
        for (const Value& cell : row) {
            set->append(cell);
        }
    }
    return {std::move(set), -1, {}};
}

ado::StatementResult nothing(const Request& request) {
    return request.text.starts_with("SELECT") ? rows({""}, {}) : ado::StatementResult{nullptr, 0, {}};
}

std::vector<Value> childRow(const std::string& conto, bool analitico, const Value& attivo, int livello) {
    return {conto, "F" + conto, "Conto " + conto + "  ", analitico, attivo, false, livello};
}

ado::StatementResult children(const std::vector<std::vector<Value>>& values) {
    return rows({"CONTO", "CONTOF", "DESCRIZIONE", "ISANALITICO", "ATTIVO", "CORRELATO", "NRLIVELLO"},
                values);
}

void fail(int number, std::string description) {
    throw ado::AdoError(ado::Error{number, "Base dati di prova", std::move(description), "HY000", number});
}

} // namespace veldran::test
