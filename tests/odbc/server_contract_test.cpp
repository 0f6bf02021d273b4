#include "adapters/odbc/connection_text.h"
#include "adapters/odbc/driver.h"
#include "platform/text.h"
#include "tests/odbc/server_behaviour.h"
#include "tests/support/ado_contract.h"
#include "tests/support/ado_expect.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace veldran::test {
namespace {

std::string namedServer() {
    const char* const text = std::getenv("VELDRAN_TEST_ODBC");
    return text == nullptr ? "" : text;
}
constexpr const char* missing = "VELDRAN_TEST_ODBC names no server";
constexpr const char* deadServer = "Provider=SQLOLEDB;Data Source=127.0.0.1,1;User ID=x";

bool isSqlServer() {
    odbc::OdbcDriver driver;
    const auto result = driver.open(namedServer(), "", "")->execute("SELECT @@VERSION", {}, {});
    return result.rows->cell(0, 0).toText().starts_with("Microsoft SQL Server");
}

/// A server that speaks T-SQL without being SQL Server has one number for all errors that it does not map.
bool means(const ado::Error& error, int number) {
    constexpr int unmapped = 33557097;
    return error.Number == number || (error.Number == unmapped && !isSqlServer());
}

/// The server that VELDRAN_TEST_ODBC names by its connection string.
class ServerContractDatabase final : public ContractDatabase {
public:
    std::string whyMissing() const override { return namedServer().empty() ? missing : ""; }
    std::shared_ptr<ado::Driver> driver() override { return std::make_shared<odbc::OdbcDriver>(); }
    std::string connectionString() override { return namedServer(); }
    std::string badConnectionString() override { return deadServer; }
    /// A server that speaks T-SQL without being SQL Server has one number for the errors that it does not
    /// map.
    bool isReportOf(const ado::Error& error, int number) const override { return means(error, number); }
    bool tellsParameterSizes() override { return isSqlServer(); }
};

std::unique_ptr<ContractDatabase> makeServerDatabase() {
    return std::make_unique<ServerContractDatabase>();
}

INSTANTIATE_TEST_SUITE_P(Server, AdoContract, ::testing::Values(&makeServerDatabase),
                         [](const auto&) { return std::string("database"); });

class ServerBehaviour final : public BehaviourServer {
public:
    std::string whyMissing() const override { return ServerContractDatabase().whyMissing(); }
    std::string connectionString() const override { return namedServer(); }
    std::string deadConnectionString() const override { return deadServer; }
    std::string sessionNumber() const override { return "SELECT @@SPID"; }
    std::string kill(const std::string& number) const override { return "KILL " + number; }
    std::string longStatement() const override {
        return "SELECT COUNT(*) FROM sys.all_columns A, sys.all_columns B, sys.all_columns C";
    }
    std::string shortLockWait() const override { return "SET LOCK_TIMEOUT 200"; }
    std::string longText() const override {
        return "SELECT CAST(REPLICATE(CAST(N'è' AS NVARCHAR(MAX)), 9000) AS NVARCHAR(MAX))";
    }
    std::string remark() const override { return "PRINT 'attenzione'"; }
    bool isDeadlock(const ado::Error& error) const override { return means(error, 1205); }
    bool isLockTimeout(const ado::Error& error) const override { return means(error, 1222); }
};

std::unique_ptr<BehaviourServer> makeServerBehaviour() {
    return std::make_unique<ServerBehaviour>();
}

INSTANTIATE_TEST_SUITE_P(Server, OdbcBehaviour, ::testing::Values(&makeServerBehaviour),
                         [](const auto&) { return std::string("server"); });

TEST(OdbcServer, TakesNothingMoreIntoATransactionThatItHasUndone) {
    if (namedServer().empty()) {
        GTEST_SKIP() << missing;
    }
    odbc::OdbcDriver driver;
    const auto session = driver.open(namedServer(), "", "");
    const auto run = [&](const char* text) { return session->execute(text, {}, {0, true}); };
    run("CREATE TABLE #T (A INT NOT NULL PRIMARY KEY)");
    run("INSERT INTO #T (A) VALUES (1)");
    run("SET XACT_ABORT ON");
    session->begin();
    EXPECT_THROW(run("INSERT INTO #T (A) VALUES (1)"), ado::AdoError);
    EXPECT_ADO_ERROR(run("INSERT INTO #T (A) VALUES (2)"), 3998);
    EXPECT_ADO_ERROR(session->commit(), 3998);
    session->rollback();
    EXPECT_EQ(run("SELECT COUNT(*) FROM #T").rows->cell(0, 0).toInteger(), 1);
}

TEST(OdbcServer, RefusesASignInWithAClearText) {
    if (namedServer().empty()) {
        GTEST_SKIP() << missing;
    }
    try {
        odbc::OdbcDriver().open(namedServer(), "veldran_nessuno", "segretissima");
        FAIL() << "a session was opened";
    } catch (const ado::AdoError& error) {
        EXPECT_THAT(error.first().Description, testing::HasSubstr("rifiuta l'accesso"));
        for (const ado::Error& one : error.errors()) {
            EXPECT_THAT(one.Description, testing::Not(testing::HasSubstr("segretissima")));
        }
    }
}

TEST(OdbcServer, TellsADatabaseThatIsNotThereFromAServerThatIsNot) {
    if (namedServer().empty()) {
        GTEST_SKIP() << missing;
    }
    std::string text;
    for (const odbc::ConnectionEntry& entry :
         odbc::splitConnectionText(namedServer(), odbc::Quoting::Braces)) {
        text += equalsIgnoringAsciiCase(entry.key, "Database") ? "Database=VLD_ASSENTE;"
                                                               : odbc::bracedEntry(entry.key, entry.value);
    }
    try {
        odbc::OdbcDriver().open(text, "", "");
        FAIL() << "a session was opened";
    } catch (const ado::AdoError& error) {
        EXPECT_THAT(error.first().Description, testing::HasSubstr("rifiuta l'accesso"));
    }
}

TEST(OdbcServer, ListsWhatItSaysOfABatchBehindTheErrorThatEndsIt) {
    if (namedServer().empty()) {
        GTEST_SKIP() << missing;
    }
    odbc::OdbcDriver driver;
    const auto session = driver.open(namedServer(), "", "");
    try {
        session->execute("PRINT 'attenzione' SELECT 1 SELECT 1 / 0", {}, {0, true});
        FAIL() << "nothing was refused";
    } catch (const ado::AdoError& error) {
        EXPECT_TRUE(means(error.first(), 8134)) << error.what();
        EXPECT_THAT(error.errors().back().Description, testing::HasSubstr("attenzione"));
        EXPECT_TRUE(error.errors().back().SQLState.starts_with("01"));
    }
}

TEST(OdbcServer, IsCalledLostWhenItsDriverHasGotOutOfStep) {
    if (namedServer().empty()) {
        GTEST_SKIP() << missing;
    }
    odbc::OdbcDriver driver;
    const auto session = driver.open(namedServer(), "", "");
    const std::vector<ado::BoundParameter> parameters{
        {{"@A", ado::adVarChar, ado::adParamInput, 20}, "\xF0\x9F\x98\x80"}};
    try {
        session->execute("SELECT ? AS A", parameters, {0, true});
        EXPECT_EQ(session->execute("SELECT 1", {}, {0, true}).rows->rowCount(), 1U);
    } catch (const ado::AdoError&) { // a driver may give up half-way with a text that its code page lacks
        try {
            session->execute("SELECT 1", {}, {0, true});
        } catch (const ado::AdoError& later) {
            EXPECT_EQ(later.first().SQLState, "08S01") << later.what();
        }
    }
}

} // namespace
} // namespace veldran::test
