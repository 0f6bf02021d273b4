// Check boxes over scripted answers: the pending node, and what failures leave behind.
#include "tests/module/scripted_work_areas.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Labels = std::vector<std::string>;

/// Two level-1 accounts below each root; header codes are two digits.
ado::StatementResult twoAccounts(const Request& request) {
    if (request.text.find("NRLIVELLO = 1") != std::string::npos) {
        return children({childRow("0100000000", false, false, 1), childRow("0200000000", false, false, 1)});
    }
    if (request.text.find("GETCODEHEADER") != std::string::npos) {
        return rows({""}, {{request.value("@CONTO").toText().substr(0, 2)}});
    }
    return nothing(request);
}

class Activation : public testing::Test {
protected:
    Activation() {
        w.database.answer = twoAccounts;
        w.areas->albero.LoadTree();
        w.areas->albero.EspansioneNodo(w.root(Patrimoniale));
        account = w.node("*P0100000000*");
        w.controls.STR_FILTRI.Select(1);
        w.controls.TRW_CONTI.SetHitTester([this](int x, int y) {
            lastPixel = {x, y};
            return controls::TreeHit{account, hitFlags};
        });
        w.database.requests.clear();
    }
    AttivazioneConti& activation() { return w.areas->attivazione; }
    void press(int button = controls::buttonLeft) {
        activation().TRW_CONTI_MouseDown({button, controls::shiftNone, 150, 240});
    }
    void release() { activation().TRW_CONTI_MouseUp({controls::buttonLeft, controls::shiftNone, 150, 240}); }
    std::size_t actions() const { return w.database.containing("SPCI_VELDRANACT").size(); }

    ScriptedWorkAreas w;
    controls::TreeNode* account = nullptr;
    int hitFlags = controls::treeHitStateIcon;
    std::pair<int, int> lastPixel;
};

TEST_F(Activation, TurnsThePointersTwipsIntoPixels) {
    press();
    EXPECT_EQ(lastPixel, (std::pair<int, int>{10, 20}));
}

TEST_F(Activation, RunsOnceWhenTheControlReportsTheCheckBeforeTheButtonComesUp) {
    press();
    account->SetChecked(true);
    activation().TRW_CONTI_NodeCheck(*account);
    release();
    EXPECT_EQ(actions(), 1U);
}

TEST_F(Activation, RunsOnceWhenTheControlReportsTheCheckAfterTheButtonCameUp) {
    press();
    release();
    EXPECT_EQ(actions(), 0U);
    account->SetChecked(true);
    activation().TRW_CONTI_NodeCheck(*account);
    release();
    EXPECT_EQ(actions(), 1U);
}

TEST_F(Activation, RunsOnceWhenTheControlReportsNothing) {
    press();
    account->SetChecked(true);
    release();
    release();
    EXPECT_EQ(actions(), 1U);
}

TEST_F(Activation, RunsAtTheNextButtonWhenTheReleaseWasLost) {
    press();
    account->SetChecked(true);
    press();
    EXPECT_EQ(actions(), 1U);
    release();
    EXPECT_EQ(actions(), 1U);
}

TEST_F(Activation, DoesNotRunForAPressThatChangedNoBox) {
    press();
    release();
    hitFlags = controls::treeHitLabel;
    press();
    account->SetChecked(true);
    release();
    hitFlags = controls::treeHitStateIcon;
    press(controls::buttonRight);
    account->SetChecked(false);
    release();
    EXPECT_EQ(actions(), 0U);
}

TEST_F(Activation, SendsTheNodesDataByName) {
    account->SetChecked(true);
    activation().TRW_CONTI_NodeCheck(*account);
    ASSERT_EQ(actions(), 1U);
    const Request request = w.database.containing("SPCI_VELDRANACT")[0];
    EXPECT_TRUE(request.value("@ON").toBool());
    EXPECT_EQ(request.value("@DITTA").toInteger(), 31);
    EXPECT_EQ(request.value("@GRUPPO").toInteger(), 7);
    EXPECT_EQ(request.value("@CONTO").toText(), "0100000000");
    EXPECT_EQ(request.value("@NATURA").toInteger(), 1);
    EXPECT_EQ(request.value("@CORRELATI").toInteger(), 2);
}

TEST_F(Activation, MarksByPrefixAndWritesBack) {
    account->SetChecked(true);
    activation().TRW_CONTI_NodeCheck(*account);
    ASSERT_EQ(w.database.containing("CONTO LIKE '01%'").size(), 1U);
    EXPECT_EQ(w.database.containing("SET #CG24_TABPDC.ATTIVO").size(), 1U);
    EXPECT_TRUE(w.messages->errors.empty());
}

TEST_F(Activation, MarksNothingWhenTheHeaderCodeIsMissing) {
    w.database.answer = [](const Request& request) {
        if (request.text.find("GETCODEHEADER") != std::string::npos) {
            return rows({""}, {{Value()}});
        }
        return twoAccounts(request);
    };
    account->SetChecked(true);
    activation().TRW_CONTI_NodeCheck(*account);
    EXPECT_TRUE(w.database.containing("LIKE").empty()) << "an empty prefix would mark the whole chart";
    EXPECT_EQ(actions(), 1U);
}

TEST_F(Activation, ReportsAFailedHeaderOnceAndLeavesTheWorkingTablesStale) {
    w.database.answer = [](const Request& request) {
        if (request.text.find("GETCODEHEADER") != std::string::npos) {
            fail();
        }
        return twoAccounts(request);
    };
    account->SetChecked(true);
    activation().TRW_CONTI_NodeCheck(*account);
    EXPECT_EQ(w.labels(), Labels{"GetCodeHeader:"});
    EXPECT_TRUE(w.database.containing("LIKE").empty());
    EXPECT_TRUE(account->Checked());
}

TEST_F(Activation, LeavesTheBoxAsTheUserSetItWhenTheProcedureFails) {
    w.database.answer = [](const Request& request) {
        if (request.procedure) {
            fail();
        }
        return twoAccounts(request);
    };
    account->SetChecked(true);
    w.screen.pointers.clear();
    activation().TRW_CONTI_NodeCheck(*account);
    EXPECT_EQ(w.labels(), Labels{"AttivazioneConto:"});
    EXPECT_TRUE(account->Checked());
    EXPECT_EQ(w.screen.GetMousePointer(), services::mouseDefault);
}

TEST_F(Activation, GoesOnWithTheOtherAccountsOfARootWhenOneFails) {
    w.database.answer = [](const Request& request) {
        if (request.procedure && request.value("@CONTO").toText() == "0100000000") {
            fail();
        }
        return twoAccounts(request);
    };
    controls::TreeNode& root = w.root(Patrimoniale);
    root.SetChecked(true);
    activation().TRW_CONTI_NodeCheck(root);
    EXPECT_EQ(actions(), 2U);
    EXPECT_EQ(w.labels(), Labels{"AttivazioneConto:"});
    EXPECT_TRUE(w.node("*P0200000000*")->Checked());
}

TEST_F(Activation, IgnoresAPlaceholder) {
    controls::TreeNode& placeholder = *account->Child();
    placeholder.SetChecked(true);
    activation().TRW_CONTI_NodeCheck(placeholder);
    EXPECT_EQ(actions(), 0U);
    EXPECT_TRUE(w.messages->errors.empty());
}

TEST_F(Activation, ForgetsAPendingPlaceholderThatIsRemoved) {
    controls::TreeNode* parent = account;
    account = account->Child();
    press();
    account->SetChecked(true);
    w.areas->albero.EspansioneNodo(*parent);
    release();
    EXPECT_EQ(actions(), 0U);
}

TEST_F(Activation, BubblesACheckUpOnlyWhileAllSiblingsAreChecked) {
    account->SetChecked(true);
    activation().BubbleCheck(*account);
    EXPECT_FALSE(w.root(Patrimoniale).Checked());
    controls::TreeNode& other = *w.node("*P0200000000*");
    other.SetChecked(true);
    activation().BubbleCheck(other);
    EXPECT_TRUE(w.root(Patrimoniale).Checked());
    account->SetChecked(false);
    activation().BubbleCheck(*account);
    EXPECT_FALSE(w.root(Patrimoniale).Checked());
}

TEST_F(Activation, ReachesCorrelatedOrUncorrelatedAccountsByTheFilter) {
    for (int tab = 4; tab <= 10; ++tab) {
        w.controls.STR_FILTRI.AddTab("F" + std::to_string(tab), "");
    }
    const int expected[] = {2, 2, 2, 1, 0, 1, 0, 1, 0, 2};
    for (int filter = 1; filter <= 10; ++filter) {
        w.controls.STR_FILTRI.Select(filter);
        w.database.requests.clear();
        activation().AttivazioneConto(*account, true);
        ASSERT_EQ(actions(), 1U);
        EXPECT_EQ(w.database.requests[0].value("@CORRELATI").toInteger(), expected[filter - 1]) << filter;
    }
}

TEST_F(Activation, KnowsARootCheckedOnlyWithAccountsAndAllOfThemActive) {
    int inactive = 0;
    int all = 0;
    w.database.answer = [&](const Request& request) {
        const bool asksInactive = request.text.find("ATTIVO = 0") != std::string::npos;
        return (asksInactive ? inactive : all) > 0 ? rows({""}, {{1}}) : rows({""}, {});
    };
    EXPECT_FALSE(activation().PrimoLivelloChecked(Ordine)) << "no accounts";
    all = 1;
    EXPECT_TRUE(activation().PrimoLivelloChecked(Ordine));
    inactive = 1;
    EXPECT_FALSE(activation().PrimoLivelloChecked(Ordine));
}

} // namespace

} // namespace veldran::test
