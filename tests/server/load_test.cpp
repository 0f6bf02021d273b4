// The program that loads the scripts, on the embedded database and on a server alike.
#include "tests/support/test_database.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>

namespace veldran::test {
namespace {

const std::string scripts = " " VELDRAN_SOURCE_DIR "/database/schema.sql " VELDRAN_SOURCE_DIR
                            "/database/routines.sql " VELDRAN_SOURCE_DIR "/database/demo.sql";

/// \return its exit status.
int load(const TestDatabase& database, const std::string& arguments) {
    EXPECT_EQ(::setenv("VELDRAN_CONNECTION", database.connectionString().c_str(), 1), 0);
    const int status = std::system((VELDRAN_LOAD_FILE " " + arguments + " >/dev/null 2>&1").c_str());
    ::unsetenv("VELDRAN_CONNECTION");
    return WEXITSTATUS(status);
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
    EXPECT_EQ(load(database, script), 1);
    EXPECT_EQ(database.rows("SELECT COUNT(*) FROM CG10_DESPDC").at(0).at(0), "0");
}

TEST(Load, RefusesAScriptThatIsNotThere) {
    EXPECT_NE(load(TestDatabase(Chart(4)), "/assente.sql"), 0);
}

} // namespace
} // namespace veldran::test
