// What the statements derive from an account code, against an independent rendering of the same rules.
#include "platform/text.h"
#include "tests/screen/screen_fixture.h"
#include "tests/support/account_rules.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Row = std::vector<std::string>;

std::string text(const std::optional<std::string>& value) {
    return value.value_or("NULL");
}

Row expectedRow(int levels, const std::string& code) {
    const AccountFacts facts = factsOf(levels, code);
    Row row = {code, text(facts.display), text(facts.header), text(facts.parent)};
    for (const auto& ancestor : facts.ancestors) {
        row.push_back(text(ancestor));
    }
    row.push_back(facts.level ? std::to_string(*facts.level) : "NULL");
    row.push_back(facts.analytic ? (*facts.analytic ? "1" : "0") : "NULL");
    row.push_back(text(facts.header));
    return row;
}

class AccountRules : public testing::TestWithParam<int> {};

TEST_P(AccountRules, AreTheSameInTheDatabaseForEveryCodeShape) {
    const int levels = GetParam();
    Chart chart(levels);
    for (const std::string& code : everyCodeShape()) {
        chart.account(code, "Conto", 1);
    }
    Screen screen(chart);
    screen.host.open();
    ASSERT_TRUE(screen.host.messages->errors.empty());
    const auto rows =
        screen.query("SELECT CONTO, CONTOF, CODEHEADER, PARENT, LIVELLO1, LIVELLO2, LIVELLO3, LIVELLO4, "
                     "LIVELLO5, NRLIVELLO, ISANALITICO, DBO.FNCI_COGE_GETCODEHEADER(" +
                     std::to_string(levels) + ", CONTO) FROM #CG24_TABPDC ORDER BY INDICE");
    const std::vector<std::string> codes = everyCodeShape();
    ASSERT_EQ(codes.size(), 1024U);
    ASSERT_EQ(rows.size(), codes.size());
    for (std::size_t i = 0; i < codes.size(); ++i) {
        EXPECT_EQ(rows[i], expectedRow(levels, codes[i]));
    }
}

TEST_P(AccountRules, KeepTheSameColumnTypesWhateverTheNumberOfLevels) {
    Screen screen(Chart(GetParam()).account("0102030405", "Conto", 1));
    screen.host.open();
    const auto rows = screen.host.connection().Execute("SELECT * FROM #CG24_TABPDC_SELECTED");
    struct Column {
        const char* name;
        ado::DataTypeEnum type;
        int size;
    };
    const std::vector<Column> expected = {{"INDICE", ado::adInteger, 4},
                                          {"GRUPPO", ado::adNumeric, 0},
                                          {"CONTO", ado::adWChar, 10},
                                          {"DESCRIZIONE", ado::adVarWChar, 80},
                                          {"CG24_INDTIPOCONTO", ado::adNumeric, 0},
                                          {"CONTOF", ado::adVarWChar, 14},
                                          {"CODEHEADER", ado::adVarWChar, 10},
                                          {"PARENT", ado::adWChar, 10},
                                          {"LIVELLO1", ado::adWChar, 10},
                                          {"LIVELLO2", ado::adWChar, 10},
                                          {"LIVELLO3", ado::adWChar, 10},
                                          {"LIVELLO4", ado::adWChar, 10},
                                          {"LIVELLO5", ado::adWChar, 10},
                                          {"NRLIVELLO", ado::adSmallInt, 2},
                                          {"ISANALITICO", ado::adBoolean, 0},
                                          {"ATTIVO", ado::adBoolean, 0},
                                          {"CORRELATO", ado::adBoolean, 0}};
    ASSERT_EQ(rows->Fields().Count(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const ado::Field& field = rows->Fields()[i];
        EXPECT_EQ(withRaisedCase(field.Name()), expected[i].name);
        EXPECT_EQ(field.Type(), expected[i].type) << field.Name();
        if (field.Type() == ado::adWChar || field.Type() == ado::adVarWChar) {
            EXPECT_EQ(field.DefinedSize(), expected[i].size) << field.Name();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumberOfLevels, AccountRules, testing::Values(2, 3, 4, 5));
INSTANTIATE_TEST_SUITE_P(OutsideTwoToFiveLevels, AccountRules, testing::Values(-1, 0, 1, 6, 7, 100));

} // namespace

} // namespace veldran::test
