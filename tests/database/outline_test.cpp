#include "database/generator/account_code.h"
#include "database/generator/outline.h"
#include "database/generator/source_error.h"

#include <gtest/gtest.h>

namespace veldran::chartgen {
namespace {

Chart chartOf(const std::string& text, int levels) {
    return buildChart(parseSource("prova.txt", text), levels);
}

std::string refusalOf(const std::string& text, int levels) {
    try {
        chartOf(text, levels);
    } catch (const SourceError& refusal) {
        return refusal.what();
    }
    return "accepted";
}

std::vector<std::string> codesOf(const std::vector<const ChartAccount*>& accounts) {
    std::vector<std::string> codes;
    for (const ChartAccount* account : accounts)
        codes.push_back(account->code);
    return codes;
}

TEST(Outline, NumbersGroupsByFivesAndAccountsByOnes) {
    const Chart chart = chartOf("natura economico\n"
                                "65 Acquisti\n"
                                "  Materie\n"
                                "    Acciai\n"
                                "      Barre; Lamiere\n"
                                "    Fusioni\n"
                                "      Ghisa\n",
                                4);
    std::vector<std::string> codes;
    for (const ChartAccount& account : chart.accounts)
        codes.push_back(account.code);
    EXPECT_EQ(codes, (std::vector<std::string>{"6500000000", "6505000000", "6505050000", "6505050001",
                                               "6505050002", "6505100000", "6505100001"}));
    EXPECT_EQ(chart.accounts[4].path, (std::vector<std::string>{"Acquisti", "Materie", "Acciai", "Lamiere"}));
    EXPECT_EQ(chart.accounts[4].nature, 2);
    EXPECT_TRUE(chart.isAnalytic(chart.accounts[4]));
    EXPECT_FALSE(chart.isAnalytic(chart.accounts[2]));
}

TEST(Outline, GivesOneAccountForEachEntryOfAListAndRepeatsWhatIsBelow) {
    const Chart chart = chartOf("lista LINEE = Pompe; Valvole\n"
                                "natura economico\n"
                                "60 Ricavi\n"
                                "  Vendite {LINEE}\n"
                                "    Nord; Sud\n",
                                3);
    EXPECT_EQ(codesOf(findByPath(chart, "Vendite Valvole / Sud")), std::vector<std::string>{"6000100002"});
    EXPECT_EQ(codesOf(findByPath(chart, "Ricavi / *")),
              (std::vector<std::string>{"6000050001", "6000050002", "6000100001", "6000100002"}));
    EXPECT_EQ(findByPath(chart, "Nord").size(), 2U);
    EXPECT_TRUE(findByPath(chart, "Estero").empty());
}

TEST(Outline, CountsByOnesWhenFivesDoNotFit) {
    std::string text = "natura ordine\n01 Beni\n";
    for (int group = 1; group <= 20; ++group)
        text += "  Gruppo " + std::to_string(group) + "\n    Conto\n";
    EXPECT_EQ(chartOf(text, 3).accounts.back().code, "0100200001");
}

TEST(Outline, RefusesWhatIsNotAChartAndNamesThePlace) {
    struct Case {
        const char* text;
        const char* refusal;
    };
    const Case cases[] = {
        {"01 Beni\n  Conto\n", "prova.txt:1: no nature has been given yet"},
        {"natura sconosciuta\n", "prova.txt:1: unknown nature in \"natura sconosciuta\""},
        {"lista X\n", "prova.txt:1: a list is written \"lista NOME = voce; voce\""},
        {"lista X = a\nlista X = b\n", "prova.txt:2: the list X is defined twice"},
        {"natura ordine\n01 Beni\n  Conto {Y}\n", "prova.txt:3: unknown list {Y}"},
        {"natura ordine\n01 Beni\n  Conto {Y\n", "prova.txt:3: unknown list {Y}"},
        {"natura ordine\n01 Beni\n", "prova.txt:2: the grouping \"01 Beni\" has no accounts below it"},
        {"natura ordine\n01 Beni\n    Conto\n", "prova.txt:3: an account of level 2 was expected here"},
        {"natura ordine\n01 Beni\n  Conto\n    Sotto\n", "prova.txt:4: the chart has 2 levels only"},
        {"natura ordine\n01 Beni\n  Conto; Conto\n", "prova.txt:3: \"Conto\" appears twice in one grouping"},
        {"natura ordine\n01 Beni\n  Conto;\n", "prova.txt:3: an account without a description"},
        {"natura ordine\n02 Beni\n  Conto\n01 Altri\n  Conto\n", "prova.txt:4: account numbers must rise"},
        {"natura ordine\n00 Beni\n  Conto\n", "prova.txt:2: \"00\" is not a number from 1 to 99"},
        {"natura ordine\nBeni vari\n  Conto\n", "prova.txt:2: \"Beni\" is not a number from 1 to 99"},
        {"natura ordine\nBeni\n  Conto\n",
         "prova.txt:2: a level-1 account is its number and its description"},
        {"natura ordine\n01 Beni; Altri\n  Conto\n", "prova.txt:2: a line of level 1 is one account"},
        {"natura ordine\n01 Beni\n\tConto\n", "prova.txt:3: a tabulator is not allowed, indent with blanks"},
        {"natura ordine\n01 Beni\n   Conto\n",
         "prova.txt:3: the indentation is not a multiple of two blanks"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(refusalOf(one.text, 2), one.refusal) << one.text;
}

TEST(Outline, RefusesMoreSiblingsThanTheGroupHolds) {
    std::string text = "natura ordine\n01 Beni\n";
    for (int group = 1; group <= 100; ++group)
        text += "  Gruppo " + std::to_string(group) + "\n    Conto\n";
    EXPECT_EQ(refusalOf(text, 3), "prova.txt:3: more than 99 accounts in one grouping");
}

TEST(Outline, RefusesALevelCountOutsideTwoToFive) {
    EXPECT_EQ(refusalOf("natura ordine\n01 Beni\n  Conto\n", 6), "a chart has 2 to 5 levels, not 6");
}

TEST(SourceText, RefusesAMissingFileByName) {
    try {
        readSource("/nonexistent/chart.txt");
        FAIL();
    } catch (const SourceError& refusal) {
        EXPECT_STREQ(refusal.what(), "cannot read /nonexistent/chart.txt");
    }
}

TEST(AccountCode, PlacesEachGroupWhereItsLevelStands) {
    EXPECT_EQ(composeCode(2, {1, 7}), "0100000007");
    EXPECT_EQ(composeCode(3, {1, 2, 7}), "0100020007");
    EXPECT_EQ(composeCode(4, {1, 2, 3, 7}), "0102030007");
    EXPECT_EQ(composeCode(5, {1, 2, 3, 4, 7}), "0102030407");
    EXPECT_EQ(composeCode(2, {99, 99999}), "9900099999");
    EXPECT_EQ(composeCode(4, {10}), "1000000000");
}

TEST(AccountCode, RefusesNumbersThatDoNotFit) {
    EXPECT_THROW(composeCode(4, {1, 2, 3, 10000}), SourceError);
    EXPECT_THROW(composeCode(4, {100}), SourceError);
    EXPECT_THROW(composeCode(4, {0}), SourceError);
    EXPECT_THROW(composeCode(4, {}), SourceError);
    EXPECT_THROW(composeCode(2, {1, 1, 1}), SourceError);
    EXPECT_THROW(composeCode(1, {1}), SourceError);
    EXPECT_THROW(groupCapacity(3, 4), SourceError);
    EXPECT_THROW(groupCapacity(3, 0), SourceError);
}

} // namespace
} // namespace veldran::chartgen
