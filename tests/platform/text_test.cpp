#include "platform/text.h"

#include <gtest/gtest.h>

namespace veldran {
namespace {

TEST(EqualsIgnoringAsciiCase, IsBlindToTheCaseOfAsciiLettersOnly) {
    EXPECT_TRUE(equalsIgnoringAsciiCase("Conto_Z", "cONTO_z"));
    EXPECT_FALSE(equalsIgnoringAsciiCase("CONTO", "CONTO "));
    EXPECT_FALSE(equalsIgnoringAsciiCase("[", "{"));
}

TEST(ReplaceAll, ReplacesEveryOccurrenceAndNeverItsOwnReplacement) {
    EXPECT_EQ(replaceAll("@A, @A", "@A", "x@A"), "x@A, x@A");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("", "a", "x"), "");
}

TEST(Utf16Length, CountsAsTheDatabaseDoes) {
    EXPECT_EQ(utf16Length(""), 0U);
    EXPECT_EQ(utf16Length("perché"), 6U);
    EXPECT_EQ(utf16Length("€"), 1U);
    EXPECT_EQ(utf16Length("\xF0\x9F\x98\x80"), 2U);
}

TEST(WithFoldedCase, LowersAccentedLettersToo) {
    EXPECT_EQ(withFoldedCase("PERCHÉ È COSÌ"), "perché è così");
    EXPECT_EQ(withFoldedCase("3×4 ÷ ß"), "3×4 ÷ ß");
}

TEST(WithRaisedCase, RaisesAccentedLettersTooAndLeavesTheRest) {
    EXPECT_EQ(withRaisedCase("fattà-Ü 7 è"), "FATTÀ-Ü 7 È");
    EXPECT_EQ(withRaisedCase("÷ ß €"), "÷ ß €") << "these have no capital of their own here";
    EXPECT_EQ(withRaisedCase(""), "");
    EXPECT_EQ(withFoldedCase(withRaisedCase("cittànòvæ")), "cittànòvæ");
}

TEST(CompareBlindly, IsBlindToCaseAndTrailingBlanks) {
    EXPECT_EQ(compareBlindly("AB  ", "ab"), 0);
    EXPECT_EQ(compareBlindly("CITTÀ", "città"), 0);
    EXPECT_LT(compareBlindly("a", "B"), 0);
    EXPECT_GT(compareBlindly("ab", "a"), 0);
    EXPECT_NE(compareBlindly(" a", "a"), 0);
}

} // namespace
} // namespace veldran
