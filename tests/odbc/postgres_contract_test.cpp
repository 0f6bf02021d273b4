#include "adapters/odbc/driver.h"
#include "tests/odbc/postgres_dialect.h"
#include "tests/odbc/postgres_server.h"
#include "tests/odbc/server_behaviour.h"
#include "tests/support/ado_contract.h"

#include <map>

namespace veldran::test {
namespace {

const std::string missing =
    PostgresServer::isInstalled() ? "" : "PostgreSQL and its ODBC driver are not installed";
constexpr const char* deadServer =
    "Driver={PostgreSQL Unicode};Servername=127.0.0.1;Port=1;Database=postgres;UID=veldran";

/// PostgreSQL through the ODBC driver that Debian ships: another server, so that what the adapter does is
/// proved where SQL Server is not at hand.
class PostgresContractDatabase final : public ContractDatabase {
public:
    std::string whyMissing() const override { return missing; }
    std::shared_ptr<ado::Driver> driver() override {
        return std::make_shared<PostgresDialectDriver>(std::make_shared<odbc::OdbcDriver>());
    }
    std::string connectionString() override { return PostgresServer::instance().connectionString(); }
    std::string badConnectionString() override { return deadServer; }
    /// The server has no numbers: the SQLSTATE tells what it means.
    bool isReportOf(const ado::Error& error, int number) const override {
        static const std::map<int, std::string> states{{102, "42601"},  {156, "42601"},  {207, "42703"},
                                                       {208, "42P01"},  {515, "23502"},  {2627, "23505"},
                                                       {2714, "42P07"}, {3701, "42P01"}, {8115, "22003"},
                                                       {8134, "22012"}, {8152, "22001"}};
        return error.SQLState == states.at(number);
    }
    bool hasProcedures() const override { return false; }
};

std::unique_ptr<ContractDatabase> makePostgresDatabase() {
    return std::make_unique<PostgresContractDatabase>();
}

INSTANTIATE_TEST_SUITE_P(Postgres, AdoContract, ::testing::Values(&makePostgresDatabase),
                         [](const auto&) { return std::string("database"); });

class PostgresBehaviour final : public BehaviourServer {
public:
    std::string whyMissing() const override { return missing; }
    std::string connectionString() const override { return PostgresServer::instance().connectionString(); }
    std::string deadConnectionString() const override { return deadServer; }
    std::string sessionNumber() const override { return "SELECT pg_backend_pid()"; }
    std::string kill(const std::string& number) const override {
        return "SELECT pg_terminate_backend(" + number + ")";
    }
    std::string longStatement() const override { return "SELECT pg_sleep(20)"; }
    std::string shortLockWait() const override { return "SET lock_timeout = 200"; }
    std::string longText() const override { return "SELECT repeat('è', 9000)"; }
    std::string remark() const override { return "DO $$ BEGIN RAISE WARNING 'attenzione'; END $$"; }
    bool isDeadlock(const ado::Error& error) const override { return error.SQLState == "40P01"; }
    bool isLockTimeout(const ado::Error& error) const override { return error.SQLState == "55P03"; }
};

std::unique_ptr<BehaviourServer> makePostgresBehaviour() {
    return std::make_unique<PostgresBehaviour>();
}

INSTANTIATE_TEST_SUITE_P(Postgres, OdbcBehaviour, ::testing::Values(&makePostgresBehaviour),
                         [](const auto&) { return std::string("server"); });

} // namespace
} // namespace veldran::test
