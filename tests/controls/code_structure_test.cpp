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

} // namespace
} // namespace veldran::services
