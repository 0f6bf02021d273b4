// The program that loads the scripts, on the embedded database and on a server alike.
#include "tests/support/test_database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace veldran::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string scripts = " " VELDRAN_SOURCE_DIR "/database/schema.sql " VELDRAN_SOURCE_DIR
                            "/database/routines.sql " VELDRAN_SOURCE_DIR "/database/demo.sql";

/// What the program has said is left in `said`. \return its exit status.
int load(const std::string& connectionString, const std::string& arguments, std::string& said) {
    EXPECT_EQ(::setenv("VELDRAN_CONNECTION", connectionString.c_str(), 1), 0);
    FILE* const output = ::popen((VELDRAN_LOAD_FILE " " + arguments + " 2>&1").c_str(), "r");
    ::unsetenv("VELDRAN_CONNECTION");
    char piece[256];
    for (said.clear(); std::fgets(piece, sizeof piece, output) != nullptr;) {
        said += piece;
    }
    return WEXITSTATUS(::pclose(output));
}
int load(const TestDatabase& database, const std::string& arguments) {
    std::string said;
    return load(database.connectionString(), arguments, said);
}

std::vector<std::string> counts(const TestDatabase& database) {
    std::vector<std::string> counted;
    for (const char* table :
         {"CG10_DESPDC", "CG24_TABPDC", "CG18_DITTE", "PC01_PDC", "PC03_ANAGPDC", "CI03_CAUSALI",
          "CI11_CONTROLLOCONTI", "CI15_CORRCONTICOGE", "CI35_CONTIATTIVI"}) {
        counted.push_back(database.rows(std::string("SELECT COUNT(*) FROM ") + table).at(0).at(0));
    }
    return counted;
}

TEST(Load, TakesTheThreeScriptsByOneCommandAndLeavesTheSameRowsASecondTime) {
    const TestDatabase database{Chart(4)};
    ASSERT_EQ(load(database, scripts), 0);
    const std::vector<std::string> first = counts(database);
    for (const std::string& count : first) {
        EXPECT_NE(count, "0");
    }
    EXPECT_EQ(database.rows("SELECT CG18_RAGSOC FROM CG18_DITTE WHERE CG18_DITTA = 1").at(0).at(0),
              "Officine Meccaniche Valdarno S.p.A.");
    EXPECT_EQ(database
                  .rows("SELECT PC03_DESCR FROM PC03_ANAGPDC WHERE PC03_CODPDC_PC01 = 101 "
                        "AND PC03_CONTO = N'CDCAUS0040'")
                  .at(0)
                  .at(0),
              "Qualità");
    EXPECT_EQ(load(database, scripts), 0);
    EXPECT_EQ(counts(database), first);
}

TEST(Load, StopsAtTheFirstErrorOfAScriptAndSaysSo) {
    const TestDatabase database{Chart(4)};
    const TemporaryDirectory directory;
    const std::string script = (directory.path() / "wrong.sql").string();
    std::ofstream(script) << "DELETE FROM CG10_DESPDC\nGO\nDELETE FROM ASSENTE\nGO\n"
                             "INSERT INTO CG10_DESPDC VALUES (9, N'Piano', 4)\nGO\n";
    std::string said;
    EXPECT_EQ(load(database.connectionString(), script, said), 1);
    EXPECT_THAT(said, StartsWith("veldran_load: " + script + ": Script, riga 3: "));
    EXPECT_EQ(database.rows("SELECT COUNT(*) FROM CG10_DESPDC").at(0).at(0), "0");
}

TEST(Load, RefusesAScriptThatIsNotThere) {
    EXPECT_NE(load(TestDatabase(Chart(4)), "/assente.sql"), 0);
}

TEST(Load, SaysWhyItCannotConnectAndNoPassword) {
    std::string said;
    EXPECT_EQ(
        load("Provider=SQLOLEDB;Data Source=127.0.0.1,1;User ID=u;Password=\"segreta;x\"", scripts, said), 1);
    EXPECT_THAT(said, StartsWith("veldran_load: connection: "));
    EXPECT_THAT(said, Not(HasSubstr("segreta")));
}

} // namespace
} // namespace veldran::test
