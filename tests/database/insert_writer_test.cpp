#include "database/generator/insert_writer.h"

#include <gtest/gtest.h>

#include <sstream>

namespace veldran::chartgen {
namespace {

TEST(InsertWriter, DoublesQuotesAndMarksTextAsUnicode) {
    EXPECT_EQ(textLiteral("Clienti Valle d'Aosta"), "N'Clienti Valle d''Aosta'");
    EXPECT_EQ(textLiteral("Qualità"), "N'Qualità'");
    EXPECT_EQ(textLiteral(""), "N''");
}

TEST(InsertWriter, WritesZeroAsNullWhereACodeIsMissing) {
    EXPECT_EQ(numberOrNull(0), "NULL");
    EXPECT_EQ(numberOrNull(7), "7");
}

TEST(InsertWriter, JoinsRowsInOneStatementAndEndsItsBatch) {
    std::ostringstream out;
    InsertWriter writer(out, "T", "A, B");
    writer.row("1, 2");
    writer.row("3, 4");
    writer.finish();
    EXPECT_EQ(out.str(), "INSERT INTO T (A, B) VALUES\n(1, 2),\n(3, 4)\nGO\n");
}

TEST(InsertWriter, WritesNothingWithoutRows) {
    std::ostringstream out;
    InsertWriter writer(out, "T", "A");
    writer.finish();
    EXPECT_EQ(out.str(), "");
}

TEST(InsertWriter, BeginsANewStatementAfterFiveHundredRows) {
    std::ostringstream out;
    InsertWriter writer(out, "T", "A");
    for (int row = 0; row < 501; ++row)
        writer.row(std::to_string(row));
    writer.finish();
    const std::string text = out.str();
    EXPECT_NE(text.find("(499)\nGO\nINSERT INTO T (A) VALUES\n(500)\nGO\n"), std::string::npos);
    EXPECT_EQ(text.find("INSERT", text.find("INSERT", 1) + 1), std::string::npos);
}

} // namespace
} // namespace veldran::chartgen
