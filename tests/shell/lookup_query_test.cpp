#include "platform/ado/connection.h"
#include "shell/lookup_query.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace veldran::test {
namespace {

using services::LookupKind;
using services::LookupRequest;

/// Four levels: 1-2, 3-4, 5-6, 7-10.
const services::CodeStructure fourLevels{10, {{0, 2}, {2, 2}, {4, 2}, {6, 4}}};

class LookupQueryTest : public testing::Test {
protected:
    LookupRequest request(LookupKind kind, const std::string& code, std::int32_t pdc) {
        LookupRequest request;
        request.kind = kind;
        request.code = code;
        request.connection = connection_;
        request.ditta = "1";
        request.pdc = pdc;
        return request;
    }

    ScratchFolder folder_;
    std::shared_ptr<ado::Connection> connection_ = openDatabase(demoDatabase(folder_));
};

TEST_F(LookupQueryTest, DecodesAnAccountOfItsChartOnly) {
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "6805100001", 1)),
              "Compensi amministratori");
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "6805100001", 2)), std::nullopt);
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "9999999999", 1)), std::nullopt);
}

TEST_F(LookupQueryTest, DecodesNothingForACodeThatCannotBeOne) {
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "", 1)), std::nullopt);
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "68051000012345", 1)), std::nullopt);
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "' OR 1 = 1", 1)), std::nullopt);
}

TEST_F(LookupQueryTest, DecodesCausaliCostAccountsAndCostItems) {
    EXPECT_TRUE(shell::queryDescription(request(LookupKind::Causali, "ftac", 0))) << "blind to case";
    EXPECT_TRUE(shell::queryDescription(request(LookupKind::ContiCoin, "COLACQ0010", 101)));
    EXPECT_EQ(shell::queryDescription(request(LookupKind::VociDiSpesa, "COLACQ0010", 201)), std::nullopt);
}

TEST_F(LookupQueryTest, ListsTheAccountsOfTheLastLevelInTheOrderOfTheirCodes) {
    auto wanted = request(LookupKind::ContiCoge, "", 1);
    wanted.structure = fourLevels;
    const auto rows = shell::queryRows(wanted);
    ASSERT_GT(rows.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end(),
                               [](const auto& a, const auto& b) { return a.code < b.code; }));
    EXPECT_TRUE(
        std::none_of(rows.begin(), rows.end(), [](const auto& row) { return row.code.endsWith("0000"); }));
    const auto found =
        std::find_if(rows.begin(), rows.end(), [](const auto& row) { return row.code == "6805100001"; });
    ASSERT_NE(found, rows.end());
    EXPECT_EQ(found->display, "68/05/10/0001");
    EXPECT_EQ(found->foldedDescription, "compensi amministratori");
}

TEST_F(LookupQueryTest, RestrictsCostAccountsToTheKindsOfTheMask) {
    auto all = request(LookupKind::ContiCoin, "", 101);
    auto some = all;
    some.tipologie = 1;
    auto none = all;
    none.tipologie = 0;
    const auto allRows = shell::queryRows(all);
    const auto someRows = shell::queryRows(some);
    EXPECT_GT(someRows.size(), 0U);
    EXPECT_LT(someRows.size(), allRows.size());
    EXPECT_TRUE(shell::queryRows(none).empty());
}

TEST_F(LookupQueryTest, OffersNoGroupingCodesOfCostAccounting) {
    const auto rows = shell::queryRows(request(LookupKind::ContiCoin, "", 101));
    EXPECT_TRUE(std::none_of(rows.begin(), rows.end(), [](const auto& row) { return row.code == "COLACQ"; }));
}

TEST_F(LookupQueryTest, RefusesARequestWithoutConnection) {
    auto lost = request(LookupKind::Causali, "FTAC", 0);
    lost.connection = nullptr;
    EXPECT_THROW(shell::queryDescription(lost), ado::AdoError);
    EXPECT_THROW(shell::queryRows(lost), ado::AdoError);
}

TEST_F(LookupQueryTest, LetsAFailureOfTheDatabaseThrough) {
    connection_->Close();
    EXPECT_THROW(shell::queryRows(request(LookupKind::Causali, "", 0)), ado::AdoError);
}

} // namespace
} // namespace veldran::test
