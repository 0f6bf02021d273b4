#include "adapters/tsql/lexer.h"

#include <gtest/gtest.h>

namespace veldran::tsql::test {
namespace {

Token only(std::string_view text) {
    const std::vector<Token> tokens = tokenize(text);
    EXPECT_EQ(tokens.size(), 2U) << text;
    return tokens.front();
}

void expectToken(std::string_view text, TokenKind kind, std::string_view value) {
    const Token token = only(text);
    EXPECT_EQ(token.kind, kind) << text;
    EXPECT_EQ(token.text, value) << text;
}

TEST(TsqlLexer, GivesOneEndTokenForAnEmptyText) {
    const std::vector<Token> tokens = tokenize(" \r\n\t ");
    ASSERT_EQ(tokens.size(), 1U);
    EXPECT_EQ(tokens[0].kind, TokenKind::End);
    EXPECT_EQ(tokens[0].span.begin, (SourcePosition{5, 2, 3}));
}

TEST(TsqlLexer, ReadsKeywordsInAnyCase) {
    const Token token = only("seLEct");
    EXPECT_EQ(token.text, "seLEct");
    EXPECT_TRUE(token.is("SELECT"));
    EXPECT_TRUE(token.reserved);
}

TEST(TsqlLexer, DoesNotTakeADelimitedNameForAKeyword) {
    EXPECT_FALSE(only("[SELECT]").is("SELECT"));
    EXPECT_FALSE(only("\"SELECT\"").is("SELECT"));
    EXPECT_FALSE(only("'SELECT'").is("SELECT"));
}

TEST(TsqlLexer, UndoesDoubledDelimiters) {
    expectToken("[a]]b]", TokenKind::DelimitedIdentifier, "a]b");
    expectToken("\"a\"\"b\"", TokenKind::DelimitedIdentifier, "a\"b");
    expectToken("'dell''anno'", TokenKind::String, "dell'anno");
    expectToken("''''", TokenKind::String, "'");
}

TEST(TsqlLexer, TellsNationalStringsFromOthers) {
    expectToken("N'è'", TokenKind::NationalString, "è");
    expectToken("n''", TokenKind::NationalString, "");
    expectToken("''", TokenKind::String, "");
}

TEST(TsqlLexer, ReadsTheSignsThatNamesMayCarry) {
    expectToken("#CG24_TABPDC", TokenKind::Word, "#CG24_TABPDC");
    expectToken("##X", TokenKind::Word, "##X");
    expectToken("_a$1@#", TokenKind::Word, "_a$1@#");
    expectToken("Città", TokenKind::Word, "Città");
    expectToken("@CONTO", TokenKind::Variable, "@CONTO");
    expectToken("@@ROWCOUNT", TokenKind::Variable, "@@ROWCOUNT");
    expectToken("?", TokenKind::Marker, "?");
}

TEST(TsqlLexer, TellsTheKindsOfNumbers) {
    expectToken("12", TokenKind::Integer, "12");
    expectToken("12.50", TokenKind::Decimal, "12.50");
    expectToken("12.", TokenKind::Decimal, "12.");
    expectToken(".5", TokenKind::Decimal, ".5");
    expectToken("1E3", TokenKind::Float, "1E3");
    expectToken("1.5e-3", TokenKind::Float, "1.5e-3");
    expectToken("0x0aFF", TokenKind::Binary, "0x0aFF");
}

TEST(TsqlLexer, LeavesALetterThatIsNoExponentToTheNextToken) {
    const std::vector<Token> tokens = tokenize("1EURO");
    ASSERT_EQ(tokens.size(), 3U);
    EXPECT_EQ(tokens[0].kind, TokenKind::Integer);
    EXPECT_EQ(tokens[1].text, "EURO");
}

TEST(TsqlLexer, TakesTheLongestOperator) {
    for (const std::string_view symbol : {"<=", ">=", "<>", "!=", "!<", "!>", "+=", "^="}) {
        expectToken(symbol, TokenKind::Symbol, symbol);
    }
}

TEST(TsqlLexer, ReadsNamesAroundAnEmptyPart) {
    const std::vector<Token> tokens = tokenize("TEMPDB..#X");
    ASSERT_EQ(tokens.size(), 5U);
    EXPECT_EQ(tokens[1].text, ".");
    EXPECT_EQ(tokens[2].text, ".");
    EXPECT_EQ(tokens[3].text, "#X");
}

TEST(TsqlLexer, SkipsCommentsAndNestedComments) {
    const std::vector<Token> tokens = tokenize("A -- 'not a string\n/* x /* y */ z */ B --");
    ASSERT_EQ(tokens.size(), 3U);
    EXPECT_EQ(tokens[0].text, "A");
    EXPECT_EQ(tokens[1].text, "B");
}

TEST(TsqlLexer, SkipsAByteOrderMark) {
    EXPECT_TRUE(only("\xEF\xBB\xBFSELECT").is("SELECT"));
}

TEST(TsqlLexer, CountsLinesAndColumnsOfEachToken) {
    const std::vector<Token> tokens = tokenize("SELECT 'à\r\nb',\r\n  X");
    ASSERT_EQ(tokens.size(), 5U);
    EXPECT_EQ(tokens[1].span.begin, (SourcePosition{7, 1, 8}));
    EXPECT_EQ(tokens[1].span.end, (SourcePosition{14, 2, 3}));
    EXPECT_EQ(tokens[3].span.begin, (SourcePosition{19, 3, 3}));
}

TEST(TsqlLexer, ComparesNamesWithoutRegardToCase) {
    EXPECT_TRUE(equalNames("Conto", "CONTO"));
    EXPECT_FALSE(equalNames("CONTO", "CONTOF"));
}

} // namespace
} // namespace veldran::tsql::test
