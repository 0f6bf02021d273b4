#include "platform/text_pair.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

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

TEST(TextPair, SharesItsBlockWithCopies) {
    TextPair copy;
    {
        const TextPair pair("chiave", "testo");
        copy = pair;
        EXPECT_EQ(copy.second().data(), pair.second().data());
    }
    EXPECT_EQ(copy.both(), "chiavetesto");
    const TextPair moved = std::move(copy);
    copy = TextPair("altro", "");
    EXPECT_EQ(moved.first(), "chiave");
    EXPECT_EQ(copy.first(), "altro");
}

TEST(TextPair, RefusesWhatItsLengthsCannotTell) {
    const std::string longest(65535, 'x');
    EXPECT_EQ(TextPair(longest, longest).second(), longest);
    EXPECT_THROW(TextPair(longest + 'x', ""), std::length_error);
    EXPECT_THROW(TextPair("", longest + 'x'), std::length_error);
}

TEST(TextParts, HoldTheirTextsWithoutAHolder) {
    EXPECT_EQ(TextParts().first(), "");
    const TextParts parts("0102030005", "Cassa è qui");
    EXPECT_EQ(parts.first(), "0102030005");
    EXPECT_EQ(parts.second(), "Cassa è qui");
}

TEST(TextParts, TakeNoRoomInAPairThatHoldsBoth) {
    TextParts parts;
    {
        const TextPair holder("*P0102030005*", "01/02/03/0005 - Cassa è qui");
        parts = TextParts("0102030005", "Cassa è qui", holder);
        EXPECT_EQ(parts.first().data(), holder.first().data() + 2);
        EXPECT_EQ(parts.second().data(), holder.second().data() + 16);
    }
    EXPECT_EQ(parts.first(), "0102030005") << "the holder's block stays";
    EXPECT_EQ(parts.second(), "Cassa è qui");
}

TEST(TextParts, HaveABlockOfTheirOwnWhenAPairHoldsOnlyOneOfThemOrTooFarBehind) {
    for (const TextPair& holder : {TextPair("codice", "altro"), TextPair("altro", "descrizione"), TextPair(),
                                   TextPair(std::string(65535, 'x'), "- codice descrizione")}) {
        const TextParts parts("codice", "descrizione", holder);
        EXPECT_NE(parts.first().data(), holder.first().data());
        EXPECT_EQ(parts.first(), "codice");
        EXPECT_EQ(parts.second(), "descrizione");
    }
}

TEST(TextParts, MayBeEmpty) {
    const TextParts parts("", "", TextPair("chiave", "testo"));
    EXPECT_EQ(parts.first(), "");
    EXPECT_EQ(parts.second(), "");
}

} // namespace veldran
