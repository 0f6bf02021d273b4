// The tree of accounts: its nodes, their children, and what the keyboard does on them.
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Keys = std::vector<std::string>;

/// A view of the tree that counts what it is told while its redraw is locked and while it is free.
class LockWatcher final : public controls::TreeViewObserver {
public:
    explicit LockWatcher(controls::TreeView& tree) : tree_(tree) { tree_.SetObserver(this); }
    ~LockWatcher() override { tree_.SetObserver(nullptr); }
    LockWatcher(const LockWatcher&) = delete;
    LockWatcher& operator=(const LockWatcher&) = delete;

    void beforeAppend(controls::TreeNode*, int, int) override {}
    void afterAppend(controls::TreeNode*, int, int) override {
        ++appends;
        told();
    }
    void beforeRemove(controls::TreeNode&) override {}
    void afterRemove() override { told(); }
    void beforeClear() override {}
    void afterClear() override { told(); }
    void nodeChanged(controls::TreeNode&) override { told(); }
    void expandedChanged(controls::TreeNode&) override { told(); }
    void selectionChanged(controls::TreeNode*) override { told(); }
    void scrollTo(controls::TreeNode&) override { told(); }
    void refresh() override { told(); }
    void redrawLocked(bool isLocked) override {
        locked = isLocked;
        ++changes;
    }

    bool locked = false;
    int changes = 0;
    int appends = 0;
    int whileLocked = 0;
    int whileFree = 0;

private:
    void told() { ++(locked ? whileLocked : whileFree); }

    controls::TreeView& tree_;
};

TEST(AccountTree, AlwaysShowsTheFourRootsWithPlaceholders) {
    Screen screen(Chart(4));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    ASSERT_EQ(user.tree().RootCount(), 4);
    for (int nature = 0; nature < 4; ++nature) {
        const controls::TreeNode& root = *user.tree().RootAt(nature);
        EXPECT_EQ(root.Key(), rootKeys[nature]);
        EXPECT_TRUE(ScreenUser::hasPlaceholder(root));
        EXPECT_EQ(root.Child()->Key(), root.Key() + "DummyChild");
        EXPECT_EQ(root.Child()->Text(), "");
        EXPECT_EQ(root.Image(), 1);
        EXPECT_EQ(root.SelectedImage(), 1);
        EXPECT_FALSE(root.Checked());
        EXPECT_FALSE(root.Expanded());
    }
    EXPECT_EQ(user.tree().SelectedItem(), user.tree().RootAt(0));
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(AccountTree, LeavesARootWithoutChildrenWhenItsNatureHasNoAnalyticAccount) {
    Screen screen(Chart(4).account("0300000000", "Costi", 2).account("0301000000", "Costi diretti", 2));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(2));
    EXPECT_EQ(user.root(2).Children(), 0);
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(AccountTree, ListsUnderARootTheTopAccountsThatHaveAnalyticAccountsOfItsNature) {
    Screen screen(Chart(2)
                      .account("0100000000", "Misto, di natura patrimoniale", 1)
                      .account("0100000001", "Patrimoniale", 1)
                      .account("0100000002", "Economico", 2)
                      .account("0200000000", "Senza conti", 2)
                      .account("0300000000", "Economico", 2)
                      .account("0300000001", "Economico", 2));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    user.expand(user.root(2));
    EXPECT_EQ(ScreenUser::childKeys(user.root(1)), Keys{"*P0100000000*"});
    EXPECT_EQ(ScreenUser::childKeys(user.root(2)), (Keys{"*E0100000000*", "*E0300000000*"}));
    user.expand(user.node("*E0100000000*"));
    EXPECT_EQ(ScreenUser::childKeys(user.node("*E0100000000*")), Keys{"*E0100000002*"});
    user.expand(user.node("*P0100000000*"));
    EXPECT_EQ(ScreenUser::childKeys(user.node("*P0100000000*")), Keys{"*P0100000001*"});
}

TEST(AccountTree, ShowsOneActivationForAllTopAccountsOfARoot) {
    Chart chart = smallChart();
    chart.activated("0301010001").activated("0302010001");
    {
        Screen screen(chart);
        screen.host.open();
        const ScreenUser user = screen.host.user();
        EXPECT_FALSE(user.root(2).Checked());
        user.expand(user.root(2));
        EXPECT_FALSE(user.node("*E0300000000*").Checked()) << "0401010001 is inactive";
        EXPECT_FALSE(user.node("*E0400000000*").Checked());
    }
    chart.activated("0401010001");
    Screen screen(chart);
    screen.host.open();
    const ScreenUser user = screen.host.user();
    EXPECT_TRUE(user.root(2).Checked());
    EXPECT_FALSE(user.root(1).Checked());
    user.expand(user.root(2));
    EXPECT_TRUE(user.node("*E0300000000*").Checked());
    EXPECT_TRUE(user.node("*E0400000000*").Checked());
}

TEST(AccountTree, ShowsDisplayCodeAndDescriptionWithTheCollapsedIcons) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    const controls::TreeNode& account = user.node("*P0102030005*");
    EXPECT_EQ(account.Text(), "01/02/03/0005 - Cassa contanti");
    EXPECT_EQ(account.Image(), 5);
    EXPECT_EQ(account.SelectedImage(), 5);
    EXPECT_EQ(account.Children(), 0);
    const controls::TreeNode& sibling = user.node("*P0101000000*");
    EXPECT_EQ(sibling.Text(), "01/01/00/0000 - Immobilizzazioni");
    EXPECT_EQ(sibling.Image(), 3);
    EXPECT_EQ(sibling.SelectedImage(), 3);
}

TEST(AccountTree, GivesAnExpandedNodeTheFixedImageAndItsOwnExpandedIcon) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    controls::TreeNode& root = user.root(1);
    user.expand(root);
    EXPECT_EQ(root.Image(), 2);
    EXPECT_EQ(root.SelectedImage(), 2);
    controls::TreeNode& account = user.node("*P0100000000*");
    user.expand(account);
    EXPECT_EQ(account.Image(), 2);
    EXPECT_EQ(account.SelectedImage(), 4);
    user.collapse(account);
    EXPECT_EQ(account.Image(), 1);
    EXPECT_EQ(account.SelectedImage(), 3);
    user.collapse(root);
    EXPECT_EQ(root.Image(), 1);
    EXPECT_EQ(root.SelectedImage(), 1);
    user.expand(account);
    EXPECT_EQ(account.Image(), 1) << "an explored node is left as the control expands it";
    EXPECT_EQ(account.SelectedImage(), 3);
}

TEST(AccountTree, PutsPlaceholdersUnderIntermediateAccountsAndNoneUnderAnalyticOnes) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    user.expand(user.node("*P0100000000*"));
    for (const char* key : {"*P0101000000*", "*P0102000000*"}) {
        EXPECT_TRUE(ScreenUser::hasPlaceholder(user.node(key)));
    }
    user.expand(user.node("*P0102000000*"));
    user.expand(user.node("*P0102030000*"));
    EXPECT_EQ(ScreenUser::childKeys(user.node("*P0102030000*")), (Keys{"*P0102030005*", "*P0102030006*"}));
    for (const char* key : {"*P0102030005*", "*P0102030006*"}) {
        EXPECT_EQ(user.node(key).Children(), 0);
    }
}

TEST(AccountTree, IssuesNoQueryWhenAnExploredNodeIsCollapsedAndExpandedAgain) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    user.expand(user.node("*P0100000000*"));
    screen.forget();
    user.collapse(user.node("*P0100000000*"));
    user.expand(user.node("*P0100000000*"));
    user.collapse(user.root(1));
    user.expand(user.root(1));
    EXPECT_TRUE(screen.sent().empty());
    EXPECT_EQ(ScreenUser::childKeys(user.node("*P0100000000*")), (Keys{"*P0101000000*", "*P0102000000*"}));
}

TEST(AccountTree, UsesTheProcedureAboveTheLastIntermediateLevelAndTheTextOnIt) {
    Screen screen(Chart(3)
                      .account("0100000000", "Attività", 1)
                      .account("0100020000", "Liquidità", 1)
                      .account("0100020001", "Cassa", 1));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.expand(user.root(1));
    screen.forget();
    user.expand(user.node("*P0100000000*"));
    ASSERT_EQ(screen.sent().size(), 1U);
    EXPECT_EQ(screen.sent()[0].how, Sent::Procedure);
    EXPECT_EQ(screen.sent()[0].text, "SPCI_INTERMEDIFIGLI");
    EXPECT_EQ(valueOf(screen.sent()[0], "@LIVELLO_PARENT"), Value(1));
    screen.forget();
    user.expand(user.node("*P0100020000*"));
    ASSERT_EQ(screen.sent().size(), 1U);
    EXPECT_NE(screen.sent()[0].how, Sent::Procedure);
    EXPECT_EQ(ScreenUser::childKeys(user.node("*P0100020000*")), Keys{"*P0100020001*"});
}

TEST(AccountTree, LocksItsRedrawWhileChildrenAreAdded) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    const LockWatcher watcher(user.tree());
    user.expand(user.root(1));
    EXPECT_EQ(watcher.changes, 2) << "locked once, unlocked once";
    EXPECT_FALSE(watcher.locked);
    EXPECT_EQ(watcher.appends, 1) << "the child with the placeholder below it, told once";
    user.collapse(user.root(1));
    EXPECT_EQ(watcher.changes, 4);
    EXPECT_FALSE(watcher.locked);
}

TEST(AccountTree, LocksItsRedrawWhileItIsRebuilt) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    const LockWatcher watcher(user.tree());
    user.filter(2);
    EXPECT_EQ(watcher.changes, 2) << "locked once, unlocked once";
    EXPECT_FALSE(watcher.locked);
    EXPECT_GT(watcher.whileLocked, 0);
    EXPECT_EQ(watcher.whileFree, 0);
}

TEST(AccountTree, LocksItsRedrawWhileASearchOpensTheBranch) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    const LockWatcher watcher(user.tree());
    user.search("0102030005");
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0102030005*");
    EXPECT_EQ(watcher.changes, 2) << "locked once, unlocked once";
    EXPECT_FALSE(watcher.locked);
    EXPECT_GT(watcher.whileLocked, 0);
    EXPECT_EQ(watcher.whileFree, 0);
}

TEST(AccountTree, EnablesTheCorrelationButtonsOnAnalyticAccountsOnly) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    const auto& correlations = user.control<controls::Button>("BUT_CORRELAZIONI");
    const auto& edit = user.control<controls::Button>("BUT_EDITCORRELAZIONI");
    EXPECT_FALSE(correlations.Enabled());
    EXPECT_FALSE(edit.Enabled());
    user.search("0102030005");
    EXPECT_TRUE(correlations.Enabled());
    EXPECT_TRUE(edit.Enabled());
    user.click(user.node("*P0102030000*"));
    EXPECT_FALSE(correlations.Enabled());
    EXPECT_FALSE(edit.Enabled());
    user.click(user.node("*P0102030006*"));
    EXPECT_TRUE(correlations.Enabled());
    user.click(user.root(1));
    EXPECT_FALSE(correlations.Enabled());
    user.click(user.node("*P0102030006*"));
    user.filter(1);
    EXPECT_FALSE(correlations.Enabled()) << "a rebuilt tree starts with the buttons disabled";
    EXPECT_FALSE(edit.Enabled());
}

TEST(AccountTree, DoesNothingOnTheClipboardKeysOverAnUncorrelatedAccount) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    const auto before = user.outline();
    screen.forget();
    user.key(controls::keyC, controls::shiftCtrl);
    user.key(controls::keyX, controls::shiftCtrl);
    user.key(controls::keyV, controls::shiftCtrl);
    EXPECT_TRUE(screen.sent().empty());
    EXPECT_EQ(user.outline(), before);
    EXPECT_TRUE(screen.host.messages->boxes.empty());
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(AccountTree, ShowsNoMenuAndTakesNoActionOnEnterOnTheMenuKeyOrOnARightClick) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    const auto before = user.outline();
    screen.forget();
    user.key(controls::keyReturn);
    user.key(controls::keyApps);
    user.key(controls::keyF10, controls::shiftShift);
    controls::TreeNode& account = user.node("*P0102030005*");
    user.tree().SetHitTester([&account](int, int) {
        return controls::TreeHit{&account, controls::treeHitLabel};
    });
    const controls::MouseEvent right{controls::buttonRight, controls::shiftNone, 150, 150};
    user.tree().MouseDownFromView(right);
    user.tree().MouseUpFromView(right);
    user.tree().DblClickFromView();
    user.tree().SetHitTester({});
    EXPECT_TRUE(screen.sent().empty());
    EXPECT_EQ(user.outline(), before);
    EXPECT_TRUE(screen.host.messages->boxes.empty());
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(AccountTree, TakesKeysWithoutASelectionQuietly) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.tree().SetSelectedItem(nullptr);
    for (const int shift : {controls::shiftNone, controls::shiftShift, controls::shiftCtrl}) {
        for (const int key : {controls::keyReturn, controls::keyApps, controls::keyF10, controls::keyC,
                              controls::keyX, controls::keyV}) {
            user.key(key, shift);
        }
    }
    user.tree().DblClickFromView();
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

} // namespace

} // namespace veldran::test
