#include "database/generator/demo_check.h"
#include "database/generator/demo_reader.h"
#include "database/generator/source_error.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>

namespace veldran::chartgen {
namespace {

using Files = std::map<std::string, std::string>;

// The smallest set of source tables that passes.
Files goodFiles() {
    return {
        {"charts.txt", "[coge]\n1 | 2 | chart.txt | Piano\n"
                       "[coan]\n10 | conti | . | 1 2 | Costi\n20 | voci | . | 3 | Voci\n"
                       "[ditte]\n1 | 1 | 10 | 20 | si | P | Uno\n2 | 1 | - | - | no | - | Due\n"},
        {"chart.txt", "natura economico\n60 Ricavi\n  Pane; Dolci\n"},
        {"cost_accounts.txt",
         "10 | C | 0 | | Centri\n10 | C01 | 0 | CDC | Forno\n10 | C02 | 0 | COLLEG | Costi\n"
         "10 | C03 | 2 | CDC | Riservato\n"},
        {"cost_items.txt", "20 | ING | 0 | voce | Ingredienti\n"},
        {"causali.txt", "[causali]\nFTAC | 0 | Fattura\nBOLL | 2 | Bollette\n"
                        "[tipologie]\nFTAC | A | COLLEG\nFTAC | D | CDC\n"},
        {"activations.txt", "ditta 1\nRicavi / *\nPane\n"},
        {"correlations.txt", "ditta 1\nPane\n  FTAC\n    A 100 C02\n    D 60.5 C01 ING\n    D 39.5 C01\n"},
    };
}

class DemoRefusals : public testing::Test {
protected:
    void SetUp() override {
        folder_ =
            std::filesystem::temp_directory_path() /
            ("veldran_demo_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    DemoModel read(const Files& files) {
        for (const auto& [name, content] : files)
            std::ofstream(folder_ / name, std::ios::binary) << content;
        DemoModel model = readDemo(folder_.string());
        checkDemo(model);
        return model;
    }

    std::string refusal(const std::string& file, const std::string& content) {
        Files files = goodFiles();
        files[file] = content;
        try {
            read(files);
        } catch (const SourceError& error) {
            return error.what();
        }
        return "accepted";
    }

    std::filesystem::path folder_;
};

TEST_F(DemoRefusals, ASmallSetOfTablesIsReadWhole) {
    const DemoModel model = read(goodFiles());
    ASSERT_EQ(model.activations.size(), 2U);
    EXPECT_EQ(model.activations[0].account, "6000000001");
    ASSERT_EQ(model.correlations.size(), 1U);
    ASSERT_EQ(model.correlations[0].rows.size(), 3U);
    EXPECT_EQ(model.correlations[0].rows[1].hundredths, 6050);
    EXPECT_EQ(model.correlations[0].rows[1].costItem, "ING");
    EXPECT_EQ(model.correlations[0].rows[2].costItem, "");
}

TEST_F(DemoRefusals, CorrelationsThatTheScreenWouldRefuse) {
    const std::string head = "ditta 1\nPane\n  FTAC\n";
    const std::pair<std::string, std::string> cases[] = {
        {head + "    A 60 C02\n    A 40.01 C02\n", "correlations.txt:3: the percentages go over 100"},
        {head + "    A 100 C02\n    D 60 C01\n    D 50 C01\n",
         "correlations.txt:3: the percentages go over 100"},
        {head + "    D 100 C01\n", "correlations.txt:3: a correlation begins with an origin row"},
        {head, "correlations.txt:3: a correlation begins with an origin row"},
        {head + "    A 100 C01\n",
         "correlations.txt:3: C01 is of a kind that the causale FTAC does not admit on that side"},
        {head + "    A 100 C99\n", "correlations.txt:3: no cost account C99"},
        {head + "    A 100 C\n", "correlations.txt:3: no cost account C"},
        {head + "    A 100 C02\n    D 100 C03\n", "correlations.txt:3: no cost account C03"},
        {head + "    A 100 C02 ZZZ\n", "correlations.txt:3: no cost item ZZZ"},
        {"ditta 1\nPane\n  BOLL\n    A 100 C02\n", "correlations.txt:3: the company has no causale BOLL"},
        {"ditta 1\nPane\n  NONE\n    A 100 C02\n", "correlations.txt:3: the company has no causale NONE"},
        {head + "    A 100 C02\n  FTAC\n    A 100 C02\n",
         "correlations.txt:5: the correlation of account 6000000001 is given twice"},
    };
    for (const auto& [content, message] : cases)
        EXPECT_EQ(refusal("correlations.txt", content), message) << content;
}

TEST_F(DemoRefusals, CorrelationLinesThatCannotBeRead) {
    const std::pair<std::string, std::string> cases[] = {
        {"Pane\n", "correlations.txt:1: no company has been named yet"},
        {"ditta 9\n", "correlations.txt:1: there is no such company"},
        {"ditta 1\nGrissini\n", "correlations.txt:2: \"Grissini\" names 0 accounts"},
        {"ditta 1\nRicavi\n", "correlations.txt:2: \"Ricavi\" is a grouping, end it with / *"},
        {"ditta 1\n    A 100 C02\n", "correlations.txt:2: a row without an account and a causale"},
        {"ditta 1\nPane\n  FTAC\n    X 100 C02\n", "correlations.txt:4: the sign is D or A, not \"X\""},
        {"ditta 1\nPane\n  FTAC\n    A 100\n",
         "correlations.txt:4: a row is sign, percentage, cost account and, if any, cost item"},
        {"ditta 1\nPane\n  FTAC\n    A 1.234 C02\n",
         "correlations.txt:4: \"1.234\" is not a percentage with at most two decimals"},
        {"ditta 1\nPane\n  FTAC\n    A cento C02\n",
         "correlations.txt:4: \"cento\" is not a number from 0 to 999"},
    };
    for (const auto& [content, message] : cases)
        EXPECT_EQ(refusal("correlations.txt", content), message) << content;
}

TEST_F(DemoRefusals, CostCodesOutsideTheirChart) {
    const std::pair<std::string, std::string> cases[] = {
        {"10 | C | 0 | | Centri\n10 | C0 | 0 | CDC | Forno\n",
         "cost code 10 C0 does not end on a group of its chart"},
        {"10 | C01 | 0 | CDC | Forno\n", "cost code 10 C01 has no grouping above it"},
        {"10 | C | 0 | CDC | Centri\n10 | C01 | 0 | CDC | Forno\n",
         "cost code 10 C01 has no grouping above it"},
        {"10 | C | 0 | | Centri\n10 | C | 0 | | Centri\n", "cost code 10 C is given twice"},
        {"99 | C | 0 | | Centri\n", "cost code 99 C is of a missing chart"},
        {"10 | C | 0 | BOH | Centri\n", "cost_accounts.txt:1: unknown kind of cost account \"BOH\""},
        {"10 | C | 0 | Centri\n", "cost_accounts.txt:1: the line has 4 fields instead of 5"},
    };
    for (const auto& [content, message] : cases)
        EXPECT_EQ(refusal("cost_accounts.txt", content), message) << content;
}

TEST_F(DemoRefusals, CausaliAndTypologies) {
    const std::pair<std::string, std::string> cases[] = {
        {"[causali]\nFTA | 0 | Fattura\n[tipologie]\n", "causale FTA is not of four characters"},
        {"[causali]\nFTAC | 0 | A\nFTAC | 0 | B\n[tipologie]\n", "causale FTAC is given twice"},
        {"[causali]\nFTAC | 0 | A\n[tipologie]\nXXXX | D | CDC\n", "typology of the missing causale XXXX"},
        {"[causali]\nFTAC | 0 | A\n[tipologie]\nFTAC | D | CDC\nFTAC | D | CDC\n",
         "typology of FTAC is given twice"},
        {"[causali]\nFTAC | 0 | A\n", "causali.txt: the section [tipologie] is missing"},
    };
    for (const auto& [content, message] : cases)
        EXPECT_EQ(refusal("causali.txt", content), message) << content;
}

TEST_F(DemoRefusals, CompaniesAndCharts) {
    const std::string charts = "[coge]\n1 | 2 | chart.txt | Piano\n[coan]\n10 | conti | . | 1 2 | Costi\n"
                               "20 | voci | . | 3 | Voci\n[ditte]\n";
    const std::pair<std::string, std::string> cases[] = {
        {charts + "1 | 7 | 10 | 20 | si | P | Uno\n", "charts.txt: company 1 names a missing chart"},
        {charts + "1 | 1 | - | 20 | si | P | Uno\n",
         "company 1 keeps analytic accounting without a chart of cost accounts or a parameter"},
        {charts + "1 | 1 | 10 | 20 | si | - | Uno\n",
         "company 1 keeps analytic accounting without a chart of cost accounts or a parameter"},
        {charts + "1 | 1 | 10 | 10 | si | P | Uno\n", "company 1 names a missing chart of cost items"},
        {charts + "1 | 1 | 10 | 20 | forse | P | Uno\n", "charts.txt:7: \"forse\" is neither si nor no"},
        {charts + "1 | 1 | 10 | 20 | si | P | Uno\n1 | 1 | 10 | 20 | si | P | Due\n",
         "company 1 is given twice"},
    };
    for (const auto& [content, message] : cases)
        EXPECT_EQ(refusal("charts.txt", content), message) << content;
}

} // namespace
} // namespace veldran::chartgen
