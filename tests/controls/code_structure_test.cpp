#include "platform/services/lookup.h"

#include <gtest/gtest.h>

namespace veldran::services {
namespace {

CodeStructure structureOf(int levels) {
    switch (levels) {
    case 2:
        return {10, {{0, 2}, {5, 5}}};
    case 3:
        return {10, {{0, 2}, {4, 2}, {6, 4}}};
    case 4:
        return {10, {{0, 2}, {2, 2}, {4, 2}, {6, 4}}};
    default:
        return {10, {{0, 2}, {2, 2}, {4, 2}, {6, 2}, {8, 2}}};
    }
}

struct Shown {
    int levels;
    const char* code;
    const char* display;
};

TEST(CodeStructure, ShowsTheGroupsOfACodeBetweenSlashes) {
    for (const Shown& row :
         {Shown{2, "0112300001", "01/00001"}, Shown{3, "0199020003", "01/02/0003"},
          Shown{4, "0102030005", "01/02/03/0005"}, Shown{5, "0102030405", "01/02/03/04/05"}}) {
        EXPECT_EQ(structureOf(row.levels).display(row.code), row.display) << row.levels << " levels";
    }
}

TEST(CodeStructure, ShowsAsItStandsACodeThatIsTooShortOrWithoutStructure) {
    EXPECT_EQ(structureOf(4).display("0102"), "0102");
    EXPECT_EQ(structureOf(4).display(""), "");
    EXPECT_EQ(CodeStructure{}.display("FT"), "FT");
}

TEST(CodeStructure, KnowsHowLongItsDisplayFormsAre) {
    EXPECT_EQ(structureOf(4).displayLength(), 13);
    EXPECT_EQ(structureOf(5).displayLength(), 14);
    EXPECT_EQ(CodeStructure{}.displayLength(), 0);
}

struct Typed {
    int levels;
    const char* typed;
    const char* code;
};

TEST(CodeStructure, FillsTypedGroupsWithZerosOnTheirLeft) {
    for (const Typed& row : {Typed{4, "01/02/03/0005", "0102030005"}, Typed{4, "1/2/3/5", "0102030005"},
                             Typed{4, "01/02/3", "0102030000"}, Typed{4, "1/", "0100000000"},
                             Typed{4, "1//3", "0100030000"}, Typed{4, " 1 / 2 ", "0102000000"},
                             Typed{4, "1/2/3/5/", "0102030005"}, Typed{5, "1/2/3/4/5", "0102030405"}}) {
        EXPECT_EQ(structureOf(row.levels).codeOf(row.typed), row.code) << row.typed;
    }
}

TEST(CodeStructure, PutsZerosWhereAChartShowsNoPosition) {
    EXPECT_EQ(structureOf(2).codeOf("1/23"), "0100000023");
    EXPECT_EQ(structureOf(2).codeOf("01/00001"), "0100000001");
    EXPECT_EQ(structureOf(3).codeOf("1/2/3"), "0100020003");
}

TEST(CodeStructure, FillsARunOfDigitsWithZerosOnItsRight) {
    EXPECT_EQ(structureOf(4).codeOf("0102"), "0102000000");
    EXPECT_EQ(structureOf(4).codeOf(" 0102030005 "), "0102030005");
    EXPECT_EQ(structureOf(4).codeOf("1"), "1000000000");
}

TEST(CodeStructure, LeavesAnyOtherTextTrimmedAsItIs) {
    for (const char* text :
         {"CASSA", "01/AB", "01/02/03/00005", "1/2/3/4/5", "/", "///", "01020300051", "12a"}) {
        EXPECT_EQ(structureOf(4).codeOf(std::string(" ") + text + " "), text);
    }
    EXPECT_EQ(structureOf(4).codeOf("   "), "");
    EXPECT_EQ(CodeStructure{}.codeOf(" 12 "), "12") << "codes without structure are taken as typed";
}

TEST(CodeStructure, ReadsBackEveryCodeItShowsWhole) {
    for (const int levels : {4, 5}) {
        for (const char* code : {"0102030005", "9900000000", "0000000001", "1234567890"}) {
            const CodeStructure structure = structureOf(levels);
            EXPECT_EQ(structure.codeOf(structure.display(code)), code);
        }
    }
}

/// As a chart of cost accounting cuts its codes: 3, 3, 4 and 5 characters.
const CodeStructure costCodes{15, {{0, 3}, {3, 3}, {6, 4}, {10, 5}}, '.', false};

TEST(CodeStructureOfShortCodes, ShowsTheGroupsThatACodeHas) {
    EXPECT_EQ(costCodes.display("COL"), "COL");
    EXPECT_EQ(costCodes.display("COLACQ0010"), "COL.ACQ.0010");
    EXPECT_EQ(costCodes.display("LAVCOM202400013"), "LAV.COM.2024.00013");
    EXPECT_EQ(costCodes.display("COLAC"), "COL.AC") << "a group begun is shown as far as it goes";
    EXPECT_EQ(costCodes.display(""), "");
}

TEST(CodeStructureOfShortCodes, ShowsWhatGoesBeyondTheLastGroup) {
    const CodeStructure two{5, {{0, 3}, {3, 2}}, '.', false};
    EXPECT_EQ(two.display("LAB01XY"), "LAB.01.XY");
    EXPECT_EQ(two.codeOf("LAB.01.XY"), "LAB01XY");
}

TEST(CodeStructureOfShortCodes, TakesTheSeparatorsOutOfWhatWasTyped) {
    EXPECT_EQ(costCodes.codeOf(" COL.ACQ.0010 "), "COLACQ0010");
    EXPECT_EQ(costCodes.codeOf("COLACQ0010"), "COLACQ0010");
    EXPECT_EQ(costCodes.codeOf("12"), "12") << "no zeros are put behind a short code";
    EXPECT_EQ(costCodes.codeOf("..."), "");
}

TEST(CodeStructureOfShortCodes, SetsGroupsApartByABlankWhenThatIsTheSeparator) {
    CodeStructure apart = costCodes;
    apart.separator = ' ';
    EXPECT_EQ(apart.display("COLACQ0010"), "COL ACQ 0010");
    EXPECT_EQ(apart.codeOf(" COL ACQ 0010 "), "COLACQ0010");
}

TEST(CodeStructureOfShortCodes, CutsBetweenLettersAndNotInsideThem) {
    EXPECT_EQ(costCodes.display("CAFÈÀÌ0010"), "CAF.ÈÀÌ.0010");
}

TEST(CodeFormatter, CutsACodeIntoGroupsOnlyWhenSeparated) {
    const CodeFormatter formatter(costCodes);
    EXPECT_EQ(formatter.Format("COLACQ0010", true, '*'), "COL.ACQ.0010");
    EXPECT_EQ(formatter.Format("COLACQ0010", false, '*'), "COLACQ0010");
}

TEST(CodeFormatter, CompletesAGroupThatTheCodeBeginsAndLeavesOutTheRest) {
    const CodeFormatter formatter(costCodes);
    EXPECT_EQ(formatter.Format("COLAC", true, '*'), "COL.AC*");
    EXPECT_EQ(formatter.Format("COLACQ1", true, '*'), "COL.ACQ.1***");
    EXPECT_EQ(formatter.Format("COLACQ1", false, '*'), "COLACQ1***");
    EXPECT_EQ(formatter.Format("C", true, ' '), "C  ");
    EXPECT_EQ(formatter.Format("COLACQ", true, '*'), "COL.ACQ");
    EXPECT_EQ(formatter.Format("CAFÈ", true, '*'), "CAF.È**");
}

TEST(CodeFormatter, IsBlindToTheBlanksThatPadAStoredCode) {
    const CodeFormatter formatter(costCodes);
    EXPECT_EQ(formatter.Format("COLACQ0010     ", true, '*'), "COL.ACQ.0010");
    EXPECT_EQ(formatter.Format("               ", true, '*'), "");
    EXPECT_EQ(formatter.Format("", true, '*'), "");
}

TEST(CodeFormatter, LeavesCodesOfAnUnknownChartAsTheyAre) {
    const CodeFormatter formatter(CodeStructure{});
    EXPECT_EQ(formatter.Format("COLAC ", true, '*'), "COLAC");
    EXPECT_EQ(formatter.Structure().display("COLAC"), "COLAC");
}

TEST(CodeFormatter, WritesCodesFilledWithZerosAsTheirChartShowsThem) {
    const CodeFormatter formatter(structureOf(2));
    EXPECT_EQ(formatter.Format("0112300001", true, '*'), "01/00001");
    EXPECT_EQ(formatter.Format("0112300001", false, '*'), "0112300001");
}

} // namespace
} // namespace veldran::services
