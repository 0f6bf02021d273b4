#include "adapters/embedded/driver.h"
#include "database/generator/demo_reader.h"
#include "database/generator/embedded_writer.h"
#include "database/generator/source_error.h"
#include "tests/database/server_session.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace veldran::chartgen {
namespace {

class EmbeddedWriter : public testing::Test {
protected:
    EmbeddedTarget target() const {
        return {(directory_.path() / "chart.vdb").string(), VELDRAN_SOURCE_DIR "/database"};
    }
    test::ServerSession open() const { return openFile(target().file); }
    static test::ServerSession openFile(const std::string& file) {
        return test::ServerSession(
            embedded::EmbeddedDriver().open("Provider=VeldranEmbedded;Data Source=" + file, {}, {}));
    }
    static SyntheticOptions options() {
        SyntheticOptions wanted;
        wanted.accounts = 3000;
        wanted.levels = 4;
        wanted.seed = 7;
        return wanted;
    }

    test::TemporaryDirectory directory_;
};

const char* const everything[] = {
    "SELECT CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO FROM CG24_TABPDC ORDER BY CG24_CONTO",
    "SELECT CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24 FROM CI35_CONTIATTIVI ORDER BY "
    "CI35_CONTO_CG24",
    "SELECT CI15_CONTO_CG24, CI15_CODCAUS_CI03, CI15_PROG, CI15_CONTO_PC03, CI15_INDSEGNO, CI15_PERC "
    "FROM CI15_CORRCONTICOGE ORDER BY CI15_CONTO_CG24, CI15_PROG",
    "SELECT CG10_GRUPPO, CG10_NUMLIVELLI FROM CG10_DESPDC",
    "SELECT CG18_DITTA, CG18_CODPDC_CG10, CG18_FLGANALITICA FROM CG18_DITTE",
};

TEST_F(EmbeddedWriter, GivesTheRowsThatTheScriptGives) {
    writeSyntheticDatabase(options(), {}, target());
    std::ostringstream script;
    writeSyntheticScript(options(), {}, script);
    const std::string path = (directory_.path() / "script.sql").string();
    std::ofstream(path, std::ios::binary) << script.str();
    const EmbeddedTarget other{(directory_.path() / "other.vdb").string(), target().scriptFolder};
    writeSyntheticDatabase({.accounts = 20, .levels = 4}, {.company = 90, .chart = 90}, other);
    test::ServerSession scripted = openFile(other.file);
    scripted.loadFile(path);
    test::ServerSession written = open();
    for (const char* query : everything) {
        const test::TextRows rows = written.rows(query);
        EXPECT_FALSE(rows.empty()) << query;
        EXPECT_EQ(rows, scripted.rows(query)) << query;
    }
}

TEST_F(EmbeddedWriter, ASecondRunReplacesTheFirst) {
    writeSyntheticDatabase(options(), {}, target());
    SyntheticOptions smaller = options();
    smaller.accounts = 500;
    writeSyntheticDatabase(smaller, {}, target());
    EXPECT_EQ(open().value("SELECT COUNT(*) FROM CG24_TABPDC"), "500");
}

TEST_F(EmbeddedWriter, ChartsOfSeveralCompaniesLiveTogether) {
    writeSyntheticDatabase(options(), {}, target());
    SyntheticOptions second = options();
    second.accounts = 500;
    second.levels = 2;
    writeSyntheticDatabase(second, {.company = 91, .chart = 91}, target());
    writeDemoDatabase(readDemo(VELDRAN_SOURCE_DIR "/database/demo"), target());
    EXPECT_EQ(open().rows("SELECT CG24_GRUPPO_CG10, COUNT(*) FROM CG24_TABPDC WHERE CG24_GRUPPO_CG10 > 50 "
                          "GROUP BY CG24_GRUPPO_CG10 ORDER BY CG24_GRUPPO_CG10"),
              (test::TextRows{{"90", "3000"}, {"91", "500"}}));
    EXPECT_EQ(open().value("SELECT COUNT(*) FROM CG18_DITTE"), "7");
}

TEST_F(EmbeddedWriter, RefusesAnImpossibleChartBeforeAnyAccountIsWritten) {
    EXPECT_THROW(writeSyntheticDatabase({.accounts = 5, .levels = 4}, {}, target()), SourceError);
    EXPECT_EQ(open().value("SELECT COUNT(*) FROM CG24_TABPDC"), "0");
}

TEST_F(EmbeddedWriter, NamesAScriptThatIsMissing) {
    try {
        writeSyntheticDatabase(options(), {}, {target().file, "/nonexistent"});
        FAIL();
    } catch (const SourceError& refusal) {
        EXPECT_STREQ(refusal.what(), "cannot read /nonexistent/schema.sql");
    }
}

} // namespace
} // namespace veldran::chartgen
