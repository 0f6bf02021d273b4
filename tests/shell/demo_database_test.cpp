#include "platform/ado/recordset.h"
#include "shell/demo_database.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

/// Scripts of the test's own.
struct Scripts {
    Scripts(const std::string& schema, const std::string& routines, const std::string& demo) {
        folder.write("schema.sql", schema);
        folder.write("routines.sql", routines);
        folder.write("demo.sql", demo);
    }
    ScratchFolder folder;
};

std::string failureOf(const std::filesystem::path& file, const std::filesystem::path& scripts) {
    try {
        shell::createDemoDatabase(file, scripts, [](const std::string&, double) {});
    } catch (const shell::DemoError& error) {
        return error.what();
    }
    return {};
}

TEST(DemoDatabase, IsTheOneOfTheDemoCompanyAndOfTheExamplesCompanyAndOfNoOther) {
    const ScratchFolder folder;
    const shell::Places places = placesFor(folder);
    EXPECT_EQ(shell::demoDatabaseFile(places), folder.path() / "demo.vdb");
    EXPECT_TRUE(shell::opensDemoDatabase(shell::demoCompanyFile(places), places));
    EXPECT_TRUE(shell::opensDemoDatabase(places.data / "esempio" / "azienda.json", places));
    const auto opensIt = [&](const std::string& connection) {
        return shell::opensDemoDatabase(
            folder.write("a.json", R"({"ditta": "1", "connessione": ")" + connection + "\"}"), places);
    };
    EXPECT_TRUE(opensIt("Data Source=${UTENTE}/./demo.vdb; provider = veldranembedded"));
    EXPECT_FALSE(opensIt("Provider=VeldranEmbedded;Data Source=${UTENTE}/conti.vdb"));
    EXPECT_FALSE(opensIt("Provider=SQLOLEDB;Data Source=${UTENTE}/demo.vdb;Initial Catalog=CONTI"));
    EXPECT_FALSE(opensIt("Provider=VeldranEmbedded"));
    EXPECT_FALSE(shell::opensDemoDatabase(folder.path() / "manca.json", places));
    EXPECT_FALSE(shell::opensDemoDatabase(folder.write("b.json", "{ rotto"), places));
}

TEST(DemoDatabase, HoldsTheCompaniesOfTheScripts) {
    const ScratchFolder folder;
    const auto connection = openDatabase(demoDatabase(folder));
    const auto count = [&](const std::string& from) {
        return connection->Execute("SELECT COUNT(*) FROM " + from)->Fields()[0].Value().toInt32();
    };
    EXPECT_EQ(count("CG18_DITTE"), 5);
    EXPECT_GE(count("CG24_TABPDC WHERE CG24_GRUPPO_CG10 = 1"), 1500);
}

TEST(DemoDatabase, TellsItsProgressFromNothingToTheWhole) {
    const Scripts scripts("CREATE TABLE A (X INT)\nGO", "INSERT INTO A (X) VALUES (1)\nGO 2",
                          "INSERT INTO A (X) VALUES (2)");
    const ScratchFolder folder;
    std::vector<double> told;
    shell::createDemoDatabase(folder.path() / "nuova" / "d.vdb", scripts.folder.path(),
                              [&](const std::string&, double done) { told.push_back(done); });
    EXPECT_EQ(told.front(), 0.0);
    EXPECT_EQ(told.back(), 1.0);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    const auto rows = openDatabase(folder.path() / "nuova" / "d.vdb")->Execute("SELECT COUNT(*) FROM A");
    EXPECT_EQ(rows->Fields()[0].Value().toInt32(), 3) << "GO 2 runs its batch twice";
}

TEST(DemoDatabase, NamesTheScriptAndTheLineOfABatchThatFailsAndLeavesNoFile) {
    const Scripts scripts("CREATE TABLE A (X INT)\nGO\n\nINSERT INTO MANCA (X) VALUES (1)\n", "", "");
    const ScratchFolder folder;
    EXPECT_THAT(failureOf(folder.path() / "d.vdb", scripts.folder.path()),
                AllOf(HasSubstr("schema.sql»"), HasSubstr("errore 208"), HasSubstr("MANCA")));
    EXPECT_THAT(filesIn(folder.path()), IsEmpty());
}

TEST(DemoDatabase, NamesAScriptThatIsMissing) {
    const ScratchFolder folder;
    EXPECT_THAT(failureOf(folder.path() / "d.vdb", folder.path()), HasSubstr("schema.sql» non esiste"));
}

TEST(DemoDatabase, NamesAScriptThatDoesNotParse) {
    const Scripts scripts("SELECT 'aperto", "", "");
    const ScratchFolder folder;
    EXPECT_THAT(failureOf(folder.path() / "d.vdb", scripts.folder.path()), HasSubstr("schema.sql"));
}

TEST(DemoDatabase, KeepsTheOldFileWhenTheNewOneCannotBeMade) {
    const ScratchFolder folder;
    const auto file = demoDatabase(folder);
    const Scripts broken("CREATE TABLE", "", "");
    EXPECT_NE(failureOf(file, broken.folder.path()), "");
    EXPECT_TRUE(openDatabase(file)->Execute("SELECT COUNT(*) FROM CG18_DITTE"));
}

TEST(DemoDatabase, ReplacesWhatAnInterruptedCreationLeft) {
    const Scripts scripts("CREATE TABLE A (X INT)", "", "");
    const ScratchFolder folder;
    folder.write("d.vdb.nuovo", "resti di una creazione interrotta");
    EXPECT_EQ(failureOf(folder.path() / "d.vdb", scripts.folder.path()), "");
    EXPECT_THAT(filesIn(folder.path()), testing::ElementsAre("d.vdb"));
}

} // namespace
} // namespace veldran::test
