#include "adapters/tsql/parser.h"
#include "adapters/tsql/script.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace veldran::tsql::test {
namespace {

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

TEST(TsqlScript, RefusesAGoLineThatCarriesAnythingButACount) {
    EXPECT_THROW(splitScript("SELECT 1\nGO SELECT 2"), SyntaxError);
    EXPECT_THROW(splitScript("SELECT 1\nGO 0"), SyntaxError);
    EXPECT_THROW(splitScript("SELECT 1\nGO 99999999999"), SyntaxError);
    EXPECT_THROW(splitScript("SELECT 1\nGO 2 3"), SyntaxError);
}

TEST(TsqlScript, RefusesAScriptWithAnUnclosedStringAndNamesItsPlace) {
    try {
        splitScript("SELECT 1\nGO\nSELECT 'x\nGO\n");
        FAIL() << "accepted";
    } catch (const SyntaxError& error) {
        EXPECT_EQ(error.number(), 105);
        EXPECT_EQ(error.position().line, 3U);
    }
}

TEST(TsqlScript, CutsAtGoLines) {
    const std::vector<ScriptBatch> batches =
        splitScript("SELECT 1\r\nGO\r\nSELECT 2\r\nSELECT 3\r\n  go  \r\n");
    ASSERT_EQ(batches.size(), 2U);
    EXPECT_EQ(batches[0].text, "SELECT 1");
    EXPECT_EQ(batches[1].text, "SELECT 2\r\nSELECT 3");
}

TEST(TsqlScript, KeepsTheLastBatchWithoutAGoLine) {
    const std::vector<ScriptBatch> batches = splitScript("SELECT 1\nGO\nSELECT 2");
    ASSERT_EQ(batches.size(), 2U);
    EXPECT_EQ(batches[1].text, "SELECT 2");
}

TEST(TsqlScript, LeavesOutBatchesWithoutAStatement) {
    EXPECT_TRUE(splitScript("").empty());
    EXPECT_TRUE(splitScript("GO\nGO\n-- only a comment\nGO").empty());
}

TEST(TsqlScript, TakesAGoInsideAStringOrACommentForText) {
    EXPECT_EQ(splitScript("PRINT '\nGO\n'").size(), 1U);
    EXPECT_EQ(splitScript("PRINT 1 /*\nGO\n*/ PRINT 2").size(), 1U);
    EXPECT_EQ(splitScript("SELECT 1 AS\n[GO]").size(), 1U);
}

TEST(TsqlScript, TakesAGoInTheMiddleOfALineForAName) {
    EXPECT_EQ(splitScript("SELECT 1 AS GO").size(), 1U);
}

TEST(TsqlScript, AllowsACommentBehindGo) {
    EXPECT_EQ(splitScript("SELECT 1\nGO -- next\nSELECT 2").size(), 2U);
}

TEST(TsqlScript, KeepsTheCountOfAGoLine) {
    const std::vector<ScriptBatch> batches = splitScript("INSERT INTO T DEFAULT VALUES\nGO 3\nSELECT 1");
    ASSERT_EQ(batches.size(), 2U);
    EXPECT_EQ(batches[0].repetitions, 3);
    EXPECT_EQ(batches[1].repetitions, 1);
}

TEST(TsqlScript, SaysWhereEachBatchBegins) {
    const std::vector<ScriptBatch> batches = splitScript("SELECT 1\nGO\n\n  SELECT = 2");
    ASSERT_EQ(batches.size(), 2U);
    EXPECT_EQ(batches[1].origin, (SourcePosition{15, 4, 3}));
    try {
        parseBatch(batches[1].text, batches[1].origin);
        FAIL() << "accepted";
    } catch (const SyntaxError& error) {
        EXPECT_EQ(error.position(), (SourcePosition{22, 4, 10}));
    }
}

TEST(TsqlScript, UnderstandsTheTablesOfTheDatabase) {
    std::size_t tables = 0;
    for (const ScriptBatch& batch : splitScript(contentOf(VELDRAN_SOURCE_DIR "/database/schema.sql"))) {
        const Batch tree = parseBatch(batch.text, batch.origin);
        ASSERT_EQ(tree.statements.size(), 1U);
        const auto& guard = std::get<IfStatement>(tree.statements[0].node);
        tables += std::holds_alternative<CreateTable>(guard.then->node) ? 1U : 0U;
    }
    EXPECT_GE(tables, 9U);
}

TEST(TsqlScript, UnderstandsTheRoutinesOfTheDatabase) {
    std::size_t routines = 0;
    for (const ScriptBatch& batch : splitScript(contentOf(VELDRAN_SOURCE_DIR "/database/routines.sql"))) {
        const Batch tree = parseBatch(batch.text, batch.origin);
        ASSERT_EQ(tree.statements.size(), 1U);
        const StatementNode& node = tree.statements[0].node;
        routines +=
            std::holds_alternative<CreateProcedure>(node) || std::holds_alternative<CreateFunction>(node);
    }
    EXPECT_GE(routines, 5U);
}

} // namespace
} // namespace veldran::tsql::test
