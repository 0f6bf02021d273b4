// Check boxes: what one click does to the database, to the working tables and to the other boxes.
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Codes = std::vector<std::string>;

Codes firstColumn(const std::vector<std::vector<std::string>>& rows) {
    Codes codes;
    for (const auto& row : rows) {
        codes.push_back(row.at(0));
    }
    return codes;
}

/// Accounts that the company has activated, as another program sees them.
Codes activated(Screen& screen, const std::string& ditta = "1") {
    return firstColumn(
        screen.database.rows("SELECT CI35_CONTO_CG24 FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = " + ditta +
                             " ORDER BY CI35_CONTO_CG24"));
}

Codes marked(Screen& screen, const std::string& table) {
    return firstColumn(screen.query("SELECT CONTO FROM " + table + " WHERE ATTIVO = 1 ORDER BY INDICE"));
}

Codes proceduresCalledFor(Screen& screen) {
    Codes codes;
    for (const Message& message : screen.sent()) {
        if (message.how == Sent::Procedure && message.text == "SPCI_VELDRANACT") {
            codes.push_back(valueOf(message, "@CONTO").toText());
        }
    }
    return codes;
}

TEST(Activation, OfARootCallsTheProcedureForEachTopAccountAndNeverForTheRoot) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0301010001");
    screen.forget();
    user.checkByMouse(user.root(2));
    EXPECT_EQ(proceduresCalledFor(screen), (Codes{"0300000000", "0400000000"}));
    EXPECT_EQ(activated(screen), (Codes{"0301010001", "0302010001", "0401010001"}));
    for (const char* key : {"CONTIECONOMICI", "*E0300000000*", "*E0301000000*", "*E0301010000*",
                            "*E0301010001*", "*E0302000000*", "*E0400000000*"}) {
        EXPECT_TRUE(user.node(key).Checked()) << key;
    }
    EXPECT_FALSE(user.root(1).Checked());
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(Activation, OfAnUnexploredRootLoadsItsTopAccountsFirst) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.checkByKeyboard(user.root(2));
    EXPECT_EQ(ScreenUser::childKeys(user.root(2)), (Codes{"*E0300000000*", "*E0400000000*"}));
    EXPECT_TRUE(user.node("*E0300000000*").Checked());
    EXPECT_EQ(activated(screen), (Codes{"0301010001", "0302010001", "0401010001"}));
}

TEST(Activation, OfARootWithoutAccountsChangesNothingButItsBox) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.checkByKeyboard(user.root(3));
    EXPECT_TRUE(user.root(3).Checked());
    EXPECT_TRUE(activated(screen).empty());
    EXPECT_TRUE(proceduresCalledFor(screen).empty());
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(Activation, OfAnIntermediateAccountReachesEveryAnalyticAccountBelowItLoadedOrNot) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    user.expand(user.node("*P0100000000*"));
    user.checkByMouse(user.node("*P0101000000*"));
    EXPECT_EQ(activated(screen), (Codes{"0101010001", "0101010002", "0101020001"}));
    user.expand(user.node("*P0101000000*"));
    EXPECT_TRUE(user.node("*P0101010000*").Checked())
        << "an unexplored branch takes its state from the database";
    user.expand(user.node("*P0101010000*"));
    EXPECT_TRUE(user.node("*P0101010001*").Checked());
    EXPECT_FALSE(user.node("*P0100000000*").Checked()) << "0102000000 is still inactive";
    const Codes working{"0101000000", "0101010000", "0101010001", "0101010002", "0101020000", "0101020001"};
    EXPECT_EQ(marked(screen, "#CG24_TABPDC_SELECTED"), working);
    EXPECT_EQ(marked(screen, "#CG24_TABPDC"), working);
}

TEST(Activation, ReachesOnlyTheNatureOfTheNode) {
    Screen screen(Chart(2)
                      .account("0100000000", "Misto", 1)
                      .account("0100000001", "Patrimoniale", 1)
                      .account("0100000002", "Economico", 2));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(2));
    user.checkByKeyboard(user.node("*E0100000000*"));
    EXPECT_EQ(activated(screen), Codes{"0100000002"});
    EXPECT_EQ(marked(screen, "#CG24_TABPDC"), Codes{"0100000002"}) << "the group itself is of another nature";
    user.expand(user.root(1));
    EXPECT_FALSE(user.node("*P0100000000*").Checked());
}

TEST(Activation, ClearsEveryAncestorWhenOneAnalyticAccountIsCleared) {
    Chart chart = smallChart();
    for (const char* code : {"0101010001", "0101010002", "0101020001", "0102030005", "0102030006"}) {
        chart.activated(code);
    }
    Screen screen(chart);
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    const Codes path{"*P0102030005*", "*P0102030000*", "*P0102000000*", "*P0100000000*", "CONTIPATRIMONIALI"};
    for (const std::string& key : path) {
        EXPECT_TRUE(user.node(key).Checked()) << key;
    }
    user.checkByMouse(user.node("*P0102030005*"));
    for (const std::string& key : path) {
        EXPECT_FALSE(user.node(key).Checked()) << key;
    }
    EXPECT_TRUE(user.node("*P0102030006*").Checked());
    EXPECT_TRUE(user.node("*P0101000000*").Checked());
    EXPECT_EQ(activated(screen), (Codes{"0101010001", "0101010002", "0101020001", "0102030006"}));
}

TEST(Activation, ChecksAnIntermediateAccountWithItsLastChildAndItsParentWhenAllSiblingsAreChecked) {
    Screen screen(smallChart()
                      .activated("0101010001")
                      .activated("0101010002")
                      .activated("0101020001")
                      .activated("0102030005"));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030006");
    EXPECT_FALSE(user.node("*P0102030000*").Checked());
    user.checkByKeyboard(user.node("*P0102030006*"));
    for (const char* key : {"*P0102030000*", "*P0102000000*", "*P0100000000*", "CONTIPATRIMONIALI"}) {
        EXPECT_TRUE(user.node(key).Checked()) << key;
    }
}

TEST(Activation, StopsItsWayUpAtTheFirstParentWithAnUncheckedChild) {
    Screen screen(smallChart().activated("0102030005"));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030006");
    user.checkByKeyboard(user.node("*P0102030006*"));
    EXPECT_TRUE(user.node("*P0102030000*").Checked());
    EXPECT_TRUE(user.node("*P0102000000*").Checked());
    EXPECT_FALSE(user.node("*P0100000000*").Checked()) << "0101000000 is unchecked";
    EXPECT_FALSE(user.root(1).Checked());
}

TEST(Activation, UnderNotActivatedReachesAllAccountsBelowButMarksOnlyTheSelectedOnes) {
    Screen screen(smallChart().activated("0101010001").correlated("0101010002"));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.filter(3);
    user.expand(user.root(1));
    user.expand(user.node("*P0100000000*"));
    screen.forget();
    user.checkByMouse(user.node("*P0101000000*"));
    ASSERT_EQ(proceduresCalledFor(screen), Codes{"0101000000"});
    for (const Message& message : screen.sent()) {
        if (message.how == Sent::Procedure) {
            EXPECT_EQ(valueOf(message, "@CORRELATI").toInteger(), 2);
        }
    }
    EXPECT_EQ(activated(screen), (Codes{"0101010001", "0101010002", "0101020001"}));
    EXPECT_EQ(marked(screen, "#CG24_TABPDC_SELECTED"),
              (Codes{"0101000000", "0101010000", "0101010002", "0101020000", "0101020001"}));
    user.checkByMouse(user.node("*P0101000000*"));
    EXPECT_TRUE(activated(screen).empty()) << "also the account that the filter hides";
    EXPECT_EQ(marked(screen, "#CG24_TABPDC"), Codes{"0101010001"}) << "stale until the next start";
}

TEST(Activation, TellsTheProcedureWhichAccountsTheFilterMeans) {
    const int expected[] = {2, 2, 2, 1, 0, 1, 0, 1, 0, 2};
    for (int filter = 1; filter <= 10; ++filter) {
        // Of each combination one account, so that every filter shows one.
        Screen screen(Chart(2)
                          .account("0100000000", "Gruppo", 1)
                          .account("0100000001", "Né attivo né correlato", 1)
                          .account("0100000002", "Attivo", 1)
                          .account("0100000003", "Correlato", 1)
                          .account("0100000004", "Attivo e correlato", 1)
                          .activated("0100000002")
                          .activated("0100000004")
                          .correlated("0100000003")
                          .correlated("0100000004"));
        screen.host.open();
        const ScreenUser user = screen.host.user();
        user.addFilterTabs();
        user.filters().AddTab("Altro", "Altri conti");
        user.filter(filter);
        user.expand(user.root(1));
        screen.forget();
        controls::TreeNode& group = user.node("*P0100000000*");
        const bool on = !group.Checked();
        user.checkByKeyboard(group);
        bool called = false;
        for (const Message& message : screen.sent()) {
            if (message.how == Sent::Procedure) {
                called = true;
                EXPECT_EQ(valueOf(message, "@CORRELATI").toInteger(), expected[filter - 1])
                    << "filter " << filter;
                EXPECT_EQ(valueOf(message, "@ON").toBool(), on);
            }
        }
        EXPECT_TRUE(called) << "filter " << filter;
        EXPECT_TRUE(screen.host.messages->errors.empty()) << "filter " << filter;
    }
}

TEST(Activation, UnderCorrelatedLeavesTheUncorrelatedAccountsAlone) {
    Screen screen(smallChart().correlated("0101010002"));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.addFilterTabs();
    user.filter(4);
    user.expand(user.root(1));
    user.checkByKeyboard(user.node("*P0100000000*"));
    EXPECT_EQ(activated(screen), Codes{"0101010002"});
    user.filter(5);
    user.expand(user.root(1));
    user.checkByKeyboard(user.node("*P0100000000*"));
    EXPECT_EQ(activated(screen),
              (Codes{"0101010001", "0101010002", "0101020001", "0102030005", "0102030006"}));
}

TEST(Activation, RunsOnceForEachClickWhetherTheControlRaisesItsOwnEventOrNot) {
    for (const bool silent : {false, true}) {
        Screen screen(smallChart());
        screen.host.open();
        const ScreenUser user = screen.host.user();
        user.search("0102030005");
        screen.forget();
        controls::TreeNode& account = user.node("*P0102030005*");
        if (silent) {
            user.checkByMouseSilently(account);
        } else {
            user.checkByMouse(account);
        }
        EXPECT_EQ(proceduresCalledFor(screen), Codes{"0102030005"});
        EXPECT_TRUE(account.Checked());
        EXPECT_EQ(activated(screen), Codes{"0102030005"});
        screen.forget();
        user.checkByKeyboard(account);
        EXPECT_EQ(proceduresCalledFor(screen), Codes{"0102030005"});
        EXPECT_TRUE(activated(screen).empty());
    }
}

TEST(Activation, RunsForTheClickedNodeOnlyAndNotAgainForALaterClickBesideTheBoxes) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    user.checkByMouse(user.node("*P0102030005*"));
    screen.forget();
    controls::TreeNode& account = user.node("*P0102030005*");
    user.tree().SetHitTester([&account](int, int) {
        return controls::TreeHit{&account, controls::treeHitLabel};
    });
    const controls::MouseEvent left{controls::buttonLeft, controls::shiftNone, 150, 120};
    user.tree().MouseDownFromView(left);
    user.tree().MouseUpFromView(left);
    user.tree().SetHitTester({});
    EXPECT_TRUE(screen.sent().empty());
    EXPECT_EQ(activated(screen), Codes{"0102030005"});
}

TEST(Activation, ForgetsAClickedNodeWhenTheTreeIsRebuiltBeforeTheButtonComesUp) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    controls::TreeNode& account = user.node("*P0102030005*");
    user.tree().SetHitTester([&account](int, int) {
        return controls::TreeHit{&account, controls::treeHitStateIcon};
    });
    const controls::MouseEvent left{controls::buttonLeft, controls::shiftNone, 150, 120};
    user.tree().MouseDownFromView(left);
    user.tree().SetHitTester({});
    user.filter(1);
    screen.forget();
    user.tree().MouseUpFromView(left);
    EXPECT_TRUE(screen.sent().empty());
    EXPECT_TRUE(activated(screen).empty());
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(Activation, OfTheRootOfANatureWithoutSelectedAccountsStartsUnchecked) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    EXPECT_FALSE(user.root(3).Checked()) << "no account at all";
    user.filter(2);
    for (int nature = 0; nature < 4; ++nature) {
        EXPECT_FALSE(user.root(nature).Checked());
    }
}

TEST(Activation, ShowsTheBusyPointerWhileItRuns) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    screen.host.screen.pointers.clear();
    user.checkByKeyboard(user.node("*P0102030005*"));
    EXPECT_EQ(screen.host.screen.pointers,
              (std::vector<int>{services::mouseArrowHourglass, services::mouseDefault}));
}

TEST(Activation, LeavesOtherCompaniesAndChartsAlone) {
    Chart chart = smallChart();
    chart.activated("0102030005", "2").activated("0102030006", "2");
    chart.script("INSERT INTO CI35_CONTIATTIVI (CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24) "
                 "VALUES (1, 7, N'0102030005')");
    Screen screen(chart);
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    user.checkByKeyboard(user.node("*P0100000000*"));
    user.checkByKeyboard(user.node("*P0100000000*"));
    EXPECT_EQ(activated(screen, "2"), (Codes{"0102030005", "0102030006"}));
    EXPECT_EQ(screen.database.rows("SELECT COUNT(*) FROM CI35_CONTIATTIVI WHERE CI35_GRUPPO_CG10 = 7"),
              (std::vector<std::vector<std::string>>{{"1"}}));
}

TEST(Activation, IsReportedWhenAnotherProgramHoldsTheDatabaseAndWorksOnceItLetsGo) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    screen.waitBrieflyForLocks();
    const auto other = screen.database.driver()->open(screen.database.connectionString(), {}, {});
    other->begin();
    other->execute("INSERT INTO CI35_CONTIATTIVI (CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24) "
                   "VALUES (1, 1, N'0102030005')",
                   {}, {});
    user.checkByKeyboard(user.node("*P0102030005*"));
    ASSERT_EQ(screen.host.messages->errors.size(), 1U);
    EXPECT_EQ(screen.host.messages->errors[0].routine, "AttivazioneConto:");
    EXPECT_FALSE(screen.host.messages->errors[0].error.Description.empty());
    EXPECT_EQ(screen.host.screen.GetMousePointer(), services::mouseDefault);
    other->rollback();
    EXPECT_TRUE(activated(screen).empty());
    user.checkByKeyboard(user.node("*P0102030005*"));
    user.checkByKeyboard(user.node("*P0102030005*"));
    EXPECT_EQ(screen.host.messages->errors.size(), 1U);
    EXPECT_EQ(activated(screen), Codes{"0102030005"});
}

TEST(Activation, OfTwoScreensOnOneDatabaseIsSeenByEachAfterItsNextOpening) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser first = screen.host.user();
    const auto second = screen.host.newComponent();
    second->ShowForm();
    const ScreenUser other(screen.host.form());
    first.search("0102030005");
    first.checkByKeyboard(first.node("*P0102030005*"));
    other.search("0102030006");
    other.checkByKeyboard(other.node("*P0102030006*"));
    EXPECT_EQ(activated(screen), (Codes{"0102030005", "0102030006"}));
    EXPECT_FALSE(other.node("*P0102030005*").Checked()) << "its working tables are of its own start";
    EXPECT_TRUE(second->CloseForm().toBool());
    second->ShowForm();
    const ScreenUser again(screen.host.form());
    again.search("0102030005");
    EXPECT_TRUE(again.node("*P0102030005*").Checked());
    EXPECT_TRUE(again.node("*P0102030000*").Checked());
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

} // namespace

} // namespace veldran::test
