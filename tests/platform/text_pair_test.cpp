#include "platform/text_pair.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace veldran {

TEST(TextPair, HoldsBothTextsAsTheyAre) {
    const TextPair pair("*P0102030005*", "01/02/03/0005 - Cassa è qui");
    EXPECT_EQ(pair.first(), "*P0102030005*");
    EXPECT_EQ(pair.second(), "01/02/03/0005 - Cassa è qui");
}

TEST(TextPair, HoldsEmptyTextsOnEitherSide) {
    EXPECT_EQ(TextPair().first(), "");
    EXPECT_EQ(TextPair("", "").second(), "");
    EXPECT_EQ(TextPair("a", "").first(), "a");
    EXPECT_EQ(TextPair("a", "").second(), "");
    EXPECT_EQ(TextPair("", "b").first(), "");
    EXPECT_EQ(TextPair("", "b").second(), "b");
}

TEST(TextPair, TakesATextOfItsOwnWhenItIsGivenOne) {
    TextPair pair("chiave", "testo");
    pair = TextPair(pair.first(), "un altro testo");
    EXPECT_EQ(pair.first(), "chiave");
    EXPECT_EQ(pair.second(), "un altro testo");
}

TEST(TextPair, RefusesWhatItsLengthsCannotTell) {
    const std::string longest(65535, 'x');
    EXPECT_EQ(TextPair(longest, longest).second(), longest);
    EXPECT_THROW(TextPair(longest + 'x', ""), std::length_error);
    EXPECT_THROW(TextPair("", longest + 'x'), std::length_error);
}

} // namespace veldran
