#include "tests/support/account_rules.h"

#include <gtest/gtest.h>

#include <set>

namespace veldran::test {
namespace {

TEST(AccountRules, GroupingAccountOfAFourLevelChart) {
    const AccountFacts facts = factsOf(4, "0102030000");
    EXPECT_EQ(facts.level, 3);
    EXPECT_EQ(facts.display, "01/02/03/0000");
    EXPECT_EQ(facts.header, "010203");
    EXPECT_EQ(facts.parent, "0102000000");
    EXPECT_EQ(facts.ancestors[0], "0100000000");
    EXPECT_EQ(facts.ancestors[1], "0102000000");
    EXPECT_EQ(facts.ancestors[2], "0102030000");
    EXPECT_EQ(facts.ancestors[3], "0102030000");
    EXPECT_EQ(facts.ancestors[4], std::nullopt);
    EXPECT_EQ(facts.analytic, false);
}

TEST(AccountRules, AnalyticAccountOfAFourLevelChartIsNamedByItsWholeCode) {
    const AccountFacts facts = factsOf(4, "0102030005");
    EXPECT_EQ(facts.level, 4);
    EXPECT_EQ(facts.analytic, true);
    EXPECT_EQ(facts.header, "0102030005");
    EXPECT_EQ(facts.display, "01/02/03/0005");
    EXPECT_EQ(facts.parent, "0102030000");
    EXPECT_EQ(facts.ancestors[3], "0102030005");
}

TEST(AccountRules, TwoLevelsShowNothingOfPositionsThreeToFive) {
    const AccountFacts facts = factsOf(2, "0112300001");
    EXPECT_EQ(facts.display, "01/00001");
    EXPECT_EQ(facts.level, 2);
    EXPECT_EQ(facts.parent, "0100000000");
    EXPECT_EQ(facts.ancestors[1], "0112300001");
    EXPECT_EQ(facts.ancestors[2], std::nullopt);
    EXPECT_EQ(facts.analytic, true);
}

TEST(AccountRules, ThreeLevelsKeepPositionsThreeAndFourInHeaderAndParent) {
    const AccountFacts facts = factsOf(3, "0199020007");
    EXPECT_EQ(facts.display, "01/02/0007");
    EXPECT_EQ(facts.parent, "0199020000");
    EXPECT_EQ(factsOf(3, "0199020000").header, "019902");
    EXPECT_EQ(factsOf(3, "0199020000").parent, "0100000000");
    EXPECT_EQ(factsOf(3, "0199000000").level, 1);
    EXPECT_EQ(factsOf(3, "0199000000").ancestors[1], "0199000000");
}

TEST(AccountRules, FirstLevelHasNoParent) {
    const AccountFacts facts = factsOf(5, "0100000000");
    EXPECT_EQ(facts.level, 1);
    EXPECT_EQ(facts.display, "01/00/00/00/00");
    EXPECT_EQ(facts.parent, std::nullopt);
    EXPECT_EQ(facts.header, "01");
    EXPECT_EQ(facts.analytic, false);
    for (const auto& ancestor : facts.ancestors) {
        EXPECT_EQ(ancestor, "0100000000");
    }
}

TEST(AccountRules, EveryFiveLevelStepHasItsOwnHeader) {
    EXPECT_EQ(factsOf(5, "0102000000").header, "0102");
    EXPECT_EQ(factsOf(5, "0102030000").header, "010203");
    EXPECT_EQ(factsOf(5, "0102030400").header, "01020304");
    EXPECT_EQ(factsOf(5, "0102030405").header, "0102030405");
    EXPECT_EQ(factsOf(5, "0102030405").parent, "0102030400");
}

TEST(AccountRules, OutsideTwoToFiveLevelsOnlyTheFirstAncestorIsKnown) {
    for (const int levels : {-1, 0, 1, 6, 9}) {
        const AccountFacts facts = factsOf(levels, "0102030405");
        EXPECT_EQ(facts.ancestors[0], "0100000000");
        EXPECT_EQ(facts.ancestors[1], std::nullopt);
        EXPECT_EQ(facts.display, std::nullopt);
        EXPECT_EQ(facts.header, std::nullopt);
        EXPECT_EQ(facts.parent, std::nullopt);
        EXPECT_EQ(facts.level, std::nullopt);
        EXPECT_EQ(facts.analytic, std::nullopt);
    }
}

TEST(AccountRules, CodeShapesCoverEveryPatternOnce) {
    const std::vector<std::string> codes = everyCodeShape();
    EXPECT_EQ(std::set<std::string>(codes.begin(), codes.end()).size(), 1024U);
    EXPECT_EQ(codes.front(), "0000000000");
    EXPECT_EQ(codes.back(), "1234567891");
    EXPECT_TRUE(std::is_sorted(codes.begin(), codes.end()));
}

} // namespace
} // namespace veldran::test
