#include "database/generator/source_error.h"
#include "database/generator/synthetic_chart.h"
#include "database/generator/synthetic_script.h"
#include "tests/support/account_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <vector>

namespace veldran::chartgen {
namespace {

std::vector<SyntheticAccount> accountsOf(const SyntheticOptions& options) {
    std::vector<SyntheticAccount> accounts;
    generateChart(options, [&](const SyntheticAccount& account) { accounts.push_back(account); });
    return accounts;
}

SyntheticOptions optionsOf(std::int64_t accounts, int levels) {
    SyntheticOptions options;
    options.accounts = accounts;
    options.levels = levels;
    options.seed = 7;
    return options;
}

class SyntheticChart : public testing::TestWithParam<int> {};

TEST_P(SyntheticChart, HasExactlyTheWantedAccountsInCodeOrder) {
    for (const std::int64_t wanted : {4 * GetParam(), 100, 2345}) {
        const auto accounts = accountsOf(optionsOf(wanted, GetParam()));
        EXPECT_EQ(static_cast<std::int64_t>(accounts.size()), wanted);
        EXPECT_TRUE(std::is_sorted(
            accounts.begin(), accounts.end(),
            [](const SyntheticAccount& a, const SyntheticAccount& b) { return a.code < b.code; }));
    }
}

TEST_P(SyntheticChart, HasEveryParentAndNoEmptyGrouping) {
    const auto accounts = accountsOf(optionsOf(2345, GetParam()));
    std::set<std::string> codes;
    std::set<std::string> parents;
    for (const SyntheticAccount& account : accounts)
        EXPECT_TRUE(codes.insert(account.code).second);
    for (const SyntheticAccount& account : accounts) {
        const test::AccountFacts facts = test::factsOf(GetParam(), account.code);
        EXPECT_EQ(facts.analytic, account.analytic);
        if (facts.parent) {
            EXPECT_TRUE(codes.contains(*facts.parent)) << account.code;
            parents.insert(*facts.parent);
        }
    }
    for (const SyntheticAccount& account : accounts)
        EXPECT_TRUE(account.analytic || parents.contains(account.code)) << account.code;
}

TEST_P(SyntheticChart, KeepsOneNatureAlongABranchAndHasAllFour) {
    std::map<std::string, std::set<int>> natures;
    for (const SyntheticAccount& account : accountsOf(optionsOf(600, GetParam())))
        natures[account.code.substr(0, 2)].insert(account.nature);
    std::set<int> all;
    for (const auto& [master, found] : natures) {
        EXPECT_EQ(found.size(), 1U) << master;
        all.insert(*found.begin());
    }
    EXPECT_EQ(all, (std::set<int>{0, 1, 2, 3}));
}

TEST_P(SyntheticChart, GivesSiblingsDifferentDescriptions) {
    std::set<std::pair<std::string, std::string>> seen;
    for (const SyntheticAccount& account : accountsOf(optionsOf(5000, GetParam()))) {
        const std::string parent = test::factsOf(GetParam(), account.code).parent.value_or("");
        EXPECT_TRUE(seen.emplace(parent, account.description).second) << account.description;
        EXPECT_LE(account.description.size(), 80U);
    }
}

TEST_P(SyntheticChart, ActivatesEconomicAnalyticAccountsOnly) {
    int activated = 0;
    int correlated = 0;
    for (const SyntheticAccount& account : accountsOf(optionsOf(5000, GetParam()))) {
        EXPECT_TRUE(!account.activated || (account.analytic && account.nature == 2));
        EXPECT_TRUE(!account.correlated ||
                    (account.analytic && (account.nature == 1 || account.nature == 2)));
        activated += account.activated ? 1 : 0;
        correlated += account.correlated ? 1 : 0;
    }
    EXPECT_GT(activated, 0);
    EXPECT_GT(correlated, 0);
}

TEST_P(SyntheticChart, IsTheSameForTheSameSeedAndAnotherForAnother) {
    SyntheticOptions options = optionsOf(500, GetParam());
    const auto textOf = [](const SyntheticOptions& wanted) {
        std::ostringstream out;
        writeSyntheticScript(wanted, {}, out);
        return out.str();
    };
    const std::string first = textOf(options);
    EXPECT_EQ(textOf(options), first);
    options.seed = 8;
    EXPECT_NE(textOf(options), first);
}

INSTANTIATE_TEST_SUITE_P(Levels, SyntheticChart, testing::Values(2, 3, 4, 5));

TEST(SyntheticChart, WideOptionGivesOneAccountExactlyThatManyChildren) {
    SyntheticOptions options = optionsOf(30000, 3);
    options.wide = 9999;
    const auto accounts = accountsOf(options);
    std::map<std::string, int> children;
    for (const SyntheticAccount& account : accounts)
        if (account.analytic)
            ++children[*test::factsOf(3, account.code).parent];
    EXPECT_EQ(accounts.size(), 30000U);
    EXPECT_EQ(
        std::count_if(children.begin(), children.end(), [](const auto& one) { return one.second == 9999; }),
        1);
}

TEST(SyntheticChart, TwoLevelsFillTheirGroupToItsLastNumber) {
    SyntheticOptions options = optionsOf(8 + 1 + 99999, 2);
    options.wide = 99999;
    std::map<std::string, std::string> lastCodes;
    for (const SyntheticAccount& account : accountsOf(options))
        lastCodes[account.code.substr(0, 2)] = account.code;
    EXPECT_TRUE(std::any_of(lastCodes.begin(), lastCodes.end(),
                            [](const auto& one) { return one.second.substr(2) == "00099999"; }));
}

TEST(SyntheticChart, RefusesWhatTheShapeCannotHold) {
    EXPECT_THROW(accountsOf(optionsOf(19, 5)), SourceError);
    EXPECT_THROW(accountsOf(optionsOf(99LL * 100000 + 1, 2)), SourceError);
    EXPECT_THROW(accountsOf(optionsOf(100, 6)), SourceError);
    EXPECT_THROW(accountsOf(optionsOf(100, 1)), SourceError);
    SyntheticOptions wide = optionsOf(1000, 5);
    wide.wide = 100;
    EXPECT_THROW(accountsOf(wide), SourceError);
    wide.wide = -1;
    EXPECT_THROW(accountsOf(wide), SourceError);
    wide.wide = 99;
    wide.accounts = 100;
    EXPECT_THROW(accountsOf(wide), SourceError);
}

} // namespace
} // namespace veldran::chartgen
