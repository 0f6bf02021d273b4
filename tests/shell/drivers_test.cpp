#include "platform/ado/recordset.h"
#include "shell/drivers.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using testing::HasSubstr;

std::string refusalOf(const std::string& connectionString) {
    try {
        shell::driverFor(connectionString, "1");
    } catch (const ado::AdoError& error) {
        EXPECT_EQ(error.first().Number, 3706);
        return error.first().Description;
    }
    return {};
}

TEST(Drivers, ServeTheEmbeddedProviderWhateverTheCaseOfItsName) {
    EXPECT_TRUE(shell::driverFor("provider = \"veldranembedded\" ; Data Source=x", "1"));
}

TEST(Drivers, RefuseAProviderThatTheHostDoesNotHaveByItsName) {
    EXPECT_THAT(refusalOf("Provider=SQLQUALCOSA;Data Source=x"), HasSubstr("\"SQLQUALCOSA\""));
}

TEST(Drivers, RefuseAConnectionStringWithoutProvider) {
    EXPECT_THAT(refusalOf("Data Source=x"), HasSubstr("\"Provider\""));
}

#ifdef VELDRAN_WITH_ODBC
TEST(Drivers, ServeSqlServerInBothFormsOfConnectionStrings) {
    EXPECT_TRUE(shell::driverFor("Provider=SQLOLEDB.1;Data Source=server;Initial Catalog=CONTI", "1"));
    EXPECT_TRUE(shell::driverFor("Driver={ODBC Driver 18 for SQL Server};Server=server", "1"));
    EXPECT_TRUE(shell::driverFor("DSN=CONTI;UID=utente", "1"));
}

TEST(Drivers, NameTheDatabaseAndNotTheEndOfAPasswordThatLooksLikeOne) {
    EXPECT_EQ(shell::databaseName("Driver={X};Server=s;PWD={a;Database=b};Database=CONTI"), "CONTI");
}
#endif

TEST(Drivers, ResolveTheMarkerOfTheCompanyInStatements) {
    const ScratchFolder folder;
    const std::string connectionString = shell::embeddedConnectionString(demoDatabase(folder));
    const auto connection = ado::Connection::create(shell::driverFor(connectionString, "3"));
    connection->Open(connectionString);
    EXPECT_EQ(connection->Execute("SELECT <DITTA> AS DITTA")->Fields()[0].Value().toInt32(), 3);
}

TEST(Drivers, NameTheDatabaseWithoutItsPassword) {
    EXPECT_EQ(shell::databaseName("Provider=VeldranEmbedded;Data Source=\"/dati/demo.vdb\""), "demo.vdb");
    EXPECT_EQ(shell::databaseName("Provider=X;Data Source=server;Initial Catalog=CONTI;Password=segreta"),
              "CONTI");
    EXPECT_EQ(shell::databaseName("Driver={X};Server=s;Database=CONTI2;PWD=segreta"), "CONTI2");
}

} // namespace
} // namespace veldran::test
