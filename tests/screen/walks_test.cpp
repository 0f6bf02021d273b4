// Random walks over the screen, compared after each step with a simple model of what it should hold.
#include "tests/screen/screen_fixture.h"
#include "tests/screen/screen_model.h"
#include "tests/support/account_rules.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>
#include <map>
#include <ostream>

namespace veldran::test {

/// Seeds of one analytic account; small groups, so that accounts share their ancestors.
struct Leaf {
    int first = 1;
    int second = 1;
    int third = 1;
    int last = 1;
    int nature = 0;
    int noise = 0; ///< written into the positions that belong to no group
    bool activated = false;
    bool correlated = false;
    bool withAncestors = true;
};

enum class Act { Expand, Collapse, CheckByKeyboard, CheckByMouse, CheckSilently, Filter, Search, Reopen };

struct Step {
    Act act = Act::Expand;
    int choice = 0;
};

std::ostream& operator<<(std::ostream& out, const Leaf& leaf) {
    return out << "{" << leaf.first << "." << leaf.second << "." << leaf.third << "." << leaf.last
               << " nature " << leaf.nature << (leaf.noise != 0 ? " noise" : "")
               << (leaf.activated ? " activated" : "") << (leaf.correlated ? " correlated" : "")
               << (leaf.withAncestors ? "" : " orphan") << "}";
}

std::ostream& operator<<(std::ostream& out, const Step& step) {
    static const char* const names[] = {"expand",       "collapse", "key",    "click",
                                        "silent click", "filter",   "search", "reopen"};
    return out << names[static_cast<int>(step.act)] << " " << step.choice;
}

} // namespace veldran::test

namespace rc {

template<>
struct Arbitrary<veldran::test::Leaf> {
    static Gen<veldran::test::Leaf> arbitrary() {
        using veldran::test::Leaf;
        return gen::build<Leaf>(
            gen::set(&Leaf::first, gen::inRange(1, 3)), gen::set(&Leaf::second, gen::inRange(1, 3)),
            gen::set(&Leaf::third, gen::inRange(1, 3)), gen::set(&Leaf::last, gen::inRange(1, 4)),
            gen::set(&Leaf::nature, gen::inRange(0, 4)),
            gen::set(&Leaf::noise, gen::weightedElement<int>({{9, 0}, {1, 7}})), gen::set(&Leaf::activated),
            gen::set(&Leaf::correlated),
            gen::set(&Leaf::withAncestors, gen::weightedElement<bool>({{19, true}, {1, false}})));
    }
};

template<>
struct Arbitrary<veldran::test::Step> {
    static Gen<veldran::test::Step> arbitrary() {
        using veldran::test::Act;
        using veldran::test::Step;
        return gen::build<Step>(gen::set(&Step::act, gen::weightedElement<Act>({{6, Act::Expand},
                                                                                {2, Act::Collapse},
                                                                                {3, Act::CheckByKeyboard},
                                                                                {3, Act::CheckByMouse},
                                                                                {1, Act::CheckSilently},
                                                                                {3, Act::Filter},
                                                                                {3, Act::Search},
                                                                                {1, Act::Reopen}})),
                                gen::set(&Step::choice, gen::inRange(0, 1000)));
    }
};

} // namespace rc

namespace veldran::test {

namespace {

std::string two(int number) {
    return std::string("0") + std::to_string(number);
}

/// The code of a leaf: the groups that the number of levels has, noise where it has none.
std::string codeOf(int levels, const Leaf& leaf) {
    const std::string noise = std::to_string(leaf.noise);
    const std::string last = std::to_string(leaf.last);
    switch (levels) {
    case 2:
        return two(leaf.first) + "0" + noise + "0" + "0000" + last;
    case 3:
        return two(leaf.first) + "0" + noise + two(leaf.third) + "000" + last;
    case 4:
        return two(leaf.first) + two(leaf.second) + two(leaf.third) + "000" + last;
    default:
        return two(leaf.first) + two(leaf.second) + two(leaf.third) + two(1 + leaf.noise % 2) + "0" + last;
    }
}

std::vector<ModelAccount> accountsOf(int levels, const std::vector<Leaf>& leaves) {
    std::map<std::string, ModelAccount> accounts;
    for (const Leaf& leaf : leaves) {
        ModelAccount account{codeOf(levels, leaf), leaf.nature, leaf.activated, leaf.correlated};
        auto parent = factsOf(levels, account.code).parent;
        accounts.try_emplace(account.code, account);
        for (int above = 0; leaf.withAncestors && parent; ++above) {
            // An ancestor is of the leaf's nature or of another one, and now and then activated by itself.
            accounts.try_emplace(*parent,
                                 ModelAccount{*parent, (leaf.nature + (leaf.last == 3 ? above : 0)) % 4,
                                              leaf.activated && leaf.last == 2, false});
            parent = factsOf(levels, *parent).parent;
        }
    }
    std::vector<ModelAccount> all;
    for (auto& [code, account] : accounts) {
        all.push_back(std::move(account));
    }
    return all;
}

Chart chartOf(int levels, const std::vector<ModelAccount>& accounts) {
    Chart chart(levels);
    for (const ModelAccount& account : accounts) {
        chart.account(account.code, "Conto " + account.code, account.nature);
    }
    for (const ModelAccount& account : accounts) {
        if (account.activated) {
            chart.activated(account.code);
        }
        if (account.correlated) {
            chart.correlated(account.code);
        }
    }
    return chart;
}

std::vector<std::string> joined(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::string> lines;
    for (const auto& row : rows) {
        std::string& line = lines.emplace_back();
        for (const std::string& cell : row) {
            line += (line.empty() ? "" : " ") + cell;
        }
    }
    return lines;
}

/// The screen and its model, taking the same steps.
class Walk {
public:
    Walk(int levels, const std::vector<ModelAccount>& accounts)
        : screen_(chartOf(levels, accounts)), model_(levels, accounts) {
        openScreen();
        compare();
    }

    void take(const Step& step) {
        const auto choice = static_cast<std::size_t>(step.choice);
        const std::vector<std::string> keys = model_.keys();
        const std::string& key = keys[choice % keys.size()];
        const ScreenUser user = screen_.host.user();
        switch (step.act) {
        case Act::Expand:
            user.expand(user.node(key));
            model_.expand(key);
            break;
        case Act::Collapse:
            user.collapse(user.node(key));
            break;
        case Act::CheckByKeyboard:
            user.checkByKeyboard(user.node(key));
            model_.check(key);
            break;
        case Act::CheckByMouse:
            user.checkByMouse(user.node(key));
            model_.check(key);
            break;
        case Act::CheckSilently:
            user.checkByMouseSilently(user.node(key));
            model_.check(key);
            break;
        case Act::Filter:
            user.filter(1 + step.choice % 9);
            model_.filter(1 + step.choice % 9);
            break;
        case Act::Search:
            search(model_.accounts()[choice % model_.accounts().size()]);
            break;
        case Act::Reopen:
            RC_ASSERT(screen_.host.component().CloseForm().toBool());
            RC_ASSERT(screen_.database.openSessions() == 0);
            openScreen();
            model_.open();
            break;
        }
        compare();
    }

private:
    void openScreen() {
        screen_.host.open();
        screen_.host.user().addFilterTabs();
    }

    void search(const ModelAccount& account) {
        if (!model_.hasPath(account.code)) {
            return; // a chart with holes: the search has nowhere to open, and says so
        }
        screen_.host.messages->boxes.clear();
        screen_.host.user().search(account.code);
        const bool found = model_.search(account.code);
        RC_ASSERT(screen_.host.messages->boxes.size() == (found ? 0U : 1U));
        if (found) {
            RC_ASSERT(screen_.host.user().tree().SelectedItem()->Key() ==
                      accountKey(account.nature, account.code));
        }
    }

    void compare() {
        RC_ASSERT(screen_.host.messages->errors.empty());
        RC_ASSERT(screen_.host.screen.GetMousePointer() == services::mouseDefault);
        RC_ASSERT(screen_.host.user().outline() == model_.outline());
        RC_ASSERT(joined(screen_.query(
                      "SELECT CONTO, ATTIVO, CORRELATO FROM #CG24_TABPDC_SELECTED ORDER BY INDICE")) ==
                  model_.selection());
        RC_ASSERT(
            joined(screen_.query("SELECT CONTO, ATTIVO, CORRELATO FROM #CG24_TABPDC ORDER BY INDICE")) ==
            model_.workingTable());
        RC_ASSERT(
            joined(screen_.query("SELECT CI35_CONTO_CG24 FROM CI35_CONTIATTIVI ORDER BY CI35_CONTO_CG24")) ==
            model_.activations());
    }

    Screen screen_;
    ScreenModel model_;
};

/// Bounded, unless the caller of the program asks for more.
[[maybe_unused]] const int bounded = setenv("RC_PARAMS", "max_success=60 max_size=60", 0);

class Walks : public testing::TestWithParam<int> {};

TEST_P(Walks, LeaveBoxesWorkingTablesAndActivationsAsTheModelHasThem) {
    const int levels = GetParam();
    EXPECT_TRUE(rc::check("a walk over a chart of " + std::to_string(levels) + " levels",
                          [levels](const std::vector<Leaf>& leaves, const std::vector<Step>& steps) {
                              const std::vector<ModelAccount> accounts = accountsOf(levels, leaves);
                              RC_PRE(!accounts.empty());
                              Walk walk(levels, accounts);
                              for (const Step& step : steps) {
                                  walk.take(step);
                              }
                          }));
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumberOfLevels, Walks, testing::Values(2, 3, 4, 5));

} // namespace

} // namespace veldran::test
