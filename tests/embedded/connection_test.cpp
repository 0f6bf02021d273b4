#include "adapters/embedded/driver.h"
#include "adapters/embedded/file.h"
#include "tests/embedded/session_fixture.h"

#include <fstream>

namespace veldran::embedded::test {

namespace {

struct BadString {
    const char* text;
    const char* named; ///< what the message must quote

    friend void PrintTo(const BadString& bad, std::ostream* out) { *out << '"' << bad.text << '"'; }
};

class BadConnectionStrings : public ::testing::TestWithParam<BadString> {};

void writeFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

ado::Error openError(const std::string& path) {
    return errorOf([&] { EmbeddedDriver().open(connectionString(path), "", ""); });
}

} // namespace

TEST_P(BadConnectionStrings, AreRefusedByName) {
    const ado::Error error = errorOf([] { parseConnectionString(GetParam().text); });
    EXPECT_NE(error.Description.find(GetParam().named), std::string::npos) << error.Description;
    EXPECT_EQ(error.Source, "VELDRAN Embedded");
    EXPECT_EQ(error.SQLState, "08001");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadConnectionStrings,
    ::testing::Values(
        BadString{"", "Provider"}, BadString{"Data Source=/a.vdb", "Provider"},
        BadString{"Provider=VeldranEmbedded", "Data Source"},
        BadString{"Provider=VeldranEmbedded;Data Source=", "Data Source"},
        BadString{"Provider=SQLOLEDB;Data Source=/a.vdb", "SQLOLEDB"},
        BadString{"Provider=VeldranEmbedded;Data Source=/a.vdb;Catalog=x", "Catalog"},
        BadString{"Provider=VeldranEmbedded;Data Source=/a.vdb;Mode=Read", "Read"},
        BadString{"Provider=VeldranEmbedded;Data Source=/a.vdb;Lock Timeout=subito", "subito"},
        BadString{"Provider=VeldranEmbedded;Data Source=/a.vdb;Lock Timeout=-1", "-1"},
        BadString{"Provider=VeldranEmbedded;Data Source=/a.vdb;data source=/b.vdb", "data source"},
        BadString{"Provider=VeldranEmbedded;Data Source=\"/a.vdb", "Data Source"},
        BadString{"Provider=VeldranEmbedded;Data Source=\"/a.vdb\"x;Mode=Create", "Data Source"},
        BadString{"Provider=VeldranEmbedded;Ditta", "Ditta"}));

TEST(ConnectionString, IsBlindToCaseAndBlanks) {
    const ConnectionSettings settings = parseConnectionString(
        " provider = veldranembedded ; DATA SOURCE = /tmp/a b.vdb ;mode=create; LOCK TIMEOUT = 250;");
    EXPECT_EQ(settings.path, "/tmp/a b.vdb");
    EXPECT_TRUE(settings.create);
    EXPECT_EQ(settings.lockTimeout, 250);
}

TEST(ConnectionString, KeepsASemicolonInsideQuotes) {
    EXPECT_EQ(parseConnectionString("Provider=VeldranEmbedded;Data Source=\"/tmp/a;b.vdb\"").path,
              "/tmp/a;b.vdb");
}

TEST(DatabaseFile, IsRefusedByNameWhenItIsMissing) {
    const Directory directory;
    const ado::Error error = openError(directory.file("manca.vdb"));
    EXPECT_NE(error.Description.find("manca.vdb"), std::string::npos);
    EXPECT_EQ(error.Number, 5120);
    EXPECT_FALSE(std::filesystem::exists(directory.file("manca.vdb")));
}

TEST(DatabaseFile, IsMadeWhenTheStringSaysSo) {
    const Directory directory;
    const std::string text = connectionString(directory.file("nuovo.vdb"), ";Mode=Create");
    EmbeddedDriver().open(text, "", "")->execute("CREATE TABLE T (A INT)", {}, {});
    const auto result = EmbeddedDriver().open(text, "", "")->execute("SELECT COUNT(*) FROM T", {}, {});
    EXPECT_EQ(asText(*result.rows), (Rows{{"0"}}));
}

TEST(DatabaseFile, IsNotMadeOverAnotherOne) {
    const Directory directory;
    writeFile(directory.file("a.vdb"), "importante");
    EXPECT_EQ(errorOf([&] { createDatabase(directory.file("a.vdb")); }).Number, 1801);
    std::ifstream file(directory.file("a.vdb"));
    std::string content;
    file >> content;
    EXPECT_EQ(content, "importante");
}

TEST(DatabaseFile, LeavesNothingBehindWhenItCannotBeMade) {
    const Directory directory;
    const ado::Error error = errorOf([&] { createDatabase(directory.file("nessuna/cartella.vdb")); });
    EXPECT_EQ(error.Number, 5123);
    EXPECT_NE(error.Description.find("cartella.vdb"), std::string::npos);
}

TEST(DatabaseFile, IsRefusedByNameWhenItIsEmptyOrForeign) {
    const Directory directory;
    writeFile(directory.file("vuoto.vdb"), "");
    writeFile(directory.file("testo.vdb"), std::string(5000, 'x'));
    for (const char* name : {"vuoto.vdb", "testo.vdb"}) {
        const ado::Error error = openError(directory.file(name));
        EXPECT_EQ(error.Number, 5171) << name;
        EXPECT_NE(error.Description.find(name), std::string::npos);
    }
    std::filesystem::create_directory(directory.file("cartella.vdb"));
    EXPECT_EQ(openError(directory.file("cartella.vdb")).Number, 5171);
}

TEST(DatabaseFile, OfAnotherProgramIsRefused) {
    const Directory directory;
    SqliteDatabase(directory.file("altro.db"), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)
        .execute("CREATE TABLE T (A)");
    EXPECT_EQ(openError(directory.file("altro.db")).Number, 5171);
}

TEST(DatabaseFile, OfAnotherVersionIsRefusedWithBothNumbers) {
    const Directory directory;
    createDatabase(directory.file("vecchio.vdb"));
    SqliteDatabase(directory.file("vecchio.vdb"), SQLITE_OPEN_READWRITE).execute("PRAGMA user_version = 99");
    const ado::Error error = openError(directory.file("vecchio.vdb"));
    EXPECT_EQ(error.Number, 948);
    EXPECT_NE(error.Description.find("99"), std::string::npos);
    EXPECT_NE(error.Description.find("vecchio.vdb"), std::string::npos);
}

TEST(DatabaseFile, WithAnUnreadableDefinitionIsRefused) {
    const Directory directory;
    createDatabase(directory.file("guasto.vdb"));
    EmbeddedDriver()
        .open(connectionString(directory.file("guasto.vdb")), "", "")
        ->execute("CREATE TABLE T (A INT)", {}, {});
    SqliteDatabase(directory.file("guasto.vdb"), SQLITE_OPEN_READWRITE)
        .execute("UPDATE veldran_catalogue SET definition = 'SELECT 1'");
    const ado::Error error = errorOf([&] {
        EmbeddedDriver()
            .open(connectionString(directory.file("guasto.vdb")), "", "")
            ->execute("SELECT * FROM T", {}, {});
    });
    EXPECT_EQ(error.Number, 824);
    EXPECT_NE(error.Description.find("'T'"), std::string::npos);
}

TEST(DatabaseFile, ThatWasCutShortIsRefused) {
    const Directory directory;
    createDatabase(directory.file("corto.vdb"));
    {
        auto session = EmbeddedDriver().open(connectionString(directory.file("corto.vdb")), "", "");
        session->execute("CREATE TABLE T (A NVARCHAR(4000))", {}, {});
        for (int i = 0; i < 20; ++i) {
            session->execute("INSERT INTO T VALUES (REPLICATE('x', 4000))", {}, {});
        }
    }
    std::filesystem::resize_file(directory.file("corto.vdb"), 10000);
    const ado::Error error = errorOf([&] {
        EmbeddedDriver()
            .open(connectionString(directory.file("corto.vdb")), "", "")
            ->execute("SELECT * FROM T", {}, {});
    });
    EXPECT_EQ(error.Number, 824);
    EXPECT_NE(error.Description.find("corto.vdb"), std::string::npos);
}

} // namespace veldran::embedded::test
