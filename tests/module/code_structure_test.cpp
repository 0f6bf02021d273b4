// How account codes are shown and typed for every number of levels.
#include "accounts/struttura_conto.h"

#include <gtest/gtest.h>

namespace veldran {

namespace {

TEST(AccountCodeStructure, ShowsTheGroupsOfEveryNumberOfLevels) {
    EXPECT_EQ(StrutturaConto(2).display("0112300001"), "01/00001") << "positions 3 to 5 are not shown";
    EXPECT_EQ(StrutturaConto(3).display("0199020003"), "01/02/0003") << "positions 3 and 4 are not shown";
    EXPECT_EQ(StrutturaConto(4).display("0102030005"), "01/02/03/0005");
    EXPECT_EQ(StrutturaConto(5).display("0102030405"), "01/02/03/04/05");
}

TEST(AccountCodeStructure, ReadsATypedDisplayCodeBack) {
    EXPECT_EQ(StrutturaConto(2).codeOf("01/00001"), "0100000001");
    EXPECT_EQ(StrutturaConto(3).codeOf("01/02/3"), "0100020003");
    EXPECT_EQ(StrutturaConto(4).codeOf("1/2/3/5"), "0102030005");
    EXPECT_EQ(StrutturaConto(5).codeOf("01/02/03/04/05"), "0102030405");
}

TEST(AccountCodeStructure, LeavesCodesAsTheyAreOutsideTwoToFiveLevels) {
    for (const int levels : {-1, 0, 1, 6}) {
        EXPECT_EQ(StrutturaConto(levels).display("0102030005"), "0102030005");
        EXPECT_EQ(StrutturaConto(levels).codeOf("0102"), "0102");
    }
}

} // namespace

} // namespace veldran
