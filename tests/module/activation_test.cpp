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

} // namespace

} // namespace veldran::test
