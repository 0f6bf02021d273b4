#include "platform/controls/tree_view.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace veldran::controls {
namespace {

using Lines = std::vector<std::string>;

std::string keyOf(const TreeNode* node) {
    return node != nullptr ? node->Key() : "-";
}

class Recorder : public TreeViewObserver {
public:
    explicit Recorder(TreeView& tree) : tree_(tree) {}

    void beforeAppend(TreeNode* parent, int first, int count) override {
        EXPECT_EQ(tree_.ShownChildren(parent), first) << "not yet counted";
        add("append " + keyOf(parent) + " " + std::to_string(first) + " " + std::to_string(count));
    }
    void afterAppend(TreeNode* parent, int first, int count) override {
        EXPECT_EQ(tree_.ShownChildren(parent), first + count);
    }
    void beforeRemove(TreeNode& node) override { add("remove " + node.Key()); }
    void afterRemove() override { add("removed"); }
    void beforeClear() override { add("clear"); }
    void afterClear() override { add("cleared"); }
    void nodeChanged(TreeNode& node) override { add("changed " + node.Key()); }
    void expandedChanged(TreeNode& node) override {
        add((node.Expanded() ? "open " : "closed ") + node.Key());
    }
    void selectionChanged(TreeNode* node) override { add("select " + keyOf(node)); }
    void scrollTo(TreeNode& node) override { add("scroll " + node.Key()); }
    void refresh() override { add("refresh"); }
    void redrawLocked(bool locked) override { add(locked ? "lock" : "unlock"); }

    Lines lines;

private:
    void add(std::string line) { lines.push_back(std::move(line)); }
    TreeView& tree_;
};

class TreeObserver : public testing::Test {
protected:
    TreeObserver() { tree.SetObserver(&seen); }
    ~TreeObserver() override { tree.SetObserver(nullptr); }

    SampleForm form;
    TreeView tree{form, "TRW_CONTI"};
    Recorder seen{tree};
};

TEST_F(TreeObserver, ThatFailsToHoldItsPaintingBackLeavesNoLock) {
    class Broken final : public Recorder {
    public:
        using Recorder::Recorder;
        void redrawLocked(bool) override { throw std::runtime_error("broken view"); }
    } broken{tree};
    tree.SetObserver(&broken);
    EXPECT_THROW(const TreeRedrawLock lock(tree), std::runtime_error);
    tree.SetObserver(&seen);
    tree.Add(nullptr, "r");
    EXPECT_EQ(seen.lines, Lines{"append - 0 1"}) << "shown at once";
}

/// A view that fails the first time it is told of an addition.
class FailingOnce final : public Recorder {
public:
    using Recorder::Recorder;
    void beforeAppend(TreeNode* parent, int first, int count) override {
        if (!std::exchange(failed_, true)) {
            throw std::runtime_error("broken view");
        }
        Recorder::beforeAppend(parent, first, count);
    }

private:
    bool failed_ = false;
};

TEST_F(TreeObserver, ThatFailsToShowAdditionsFailsTheEndOfTheLockAndIsToldOfThemAtTheNext) {
    TreeNode& first = tree.Add(nullptr, "r");
    TreeNode& second = tree.Add(nullptr, "s");
    FailingOnce failing{tree};
    tree.SetObserver(&failing);
    const auto add = [&] {
        const TreeRedrawLock lock(tree);
        tree.Add(&first, "a");
        tree.Add(&second, "b");
    };
    EXPECT_THROW(add(), std::runtime_error);
    EXPECT_EQ(failing.lines, (Lines{"lock", "unlock"})) << "painting goes on";
    failing.lines.clear();
    add();
    EXPECT_EQ(failing.lines, (Lines{"lock", "append r 0 2", "append s 0 2", "unlock"}));
    tree.SetObserver(nullptr);
}

TEST_F(TreeObserver, ThatFailsAtTheEndOfALockLeavesTheErrorThatEndedItAsItWas) {
    FailingOnce failing{tree};
    tree.SetObserver(&failing);
    try {
        const TreeRedrawLock lock(tree);
        tree.Add(nullptr, "r");
        throw std::logic_error("a statement failed");
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "a statement failed");
    }
    EXPECT_EQ(failing.lines, (Lines{"lock", "unlock"}));
    tree.SetObserver(nullptr);
}

TEST_F(TreeObserver, IsToldEachAdditionAtOnceWithoutALock) {
    TreeNode& root = tree.Add(nullptr, "r");
    tree.Add(&root, "a");
    tree.Add(&root, "b");
    EXPECT_EQ(seen.lines, (Lines{"append - 0 1", "append r 0 1", "append r 1 1"}));
}

TEST_F(TreeObserver, IsToldAdditionsUnderALockOncePerParentAtItsEnd) {
    TreeNode& root = tree.Add(nullptr, "r");
    TreeNode& second = tree.Add(nullptr, "s");
    seen.lines.clear();
    {
        const TreeRedrawLock lock(tree);
        tree.Add(&root, "a");
        tree.Add(&second, "c");
        tree.Add(&root, "b");
        EXPECT_EQ(root.ShownChildren(), 0);
        EXPECT_EQ(root.Children(), 2);
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "append r 0 2", "append s 0 1", "unlock"}));
}

TEST_F(TreeObserver, IsToldOfGrandchildrenTogetherWithTheirParents) {
    TreeNode& root = tree.Add(nullptr, "r");
    seen.lines.clear();
    {
        const TreeRedrawLock lock(tree);
        for (int i = 0; i < 100; ++i) {
            tree.Add(&tree.Add(&root, std::to_string(i)), "placeholder");
        }
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "append r 0 100", "unlock"}));
    EXPECT_EQ(root.ChildAt(99)->ShownChildren(), 1);
}

TEST_F(TreeObserver, IsToldOnlyOfTheOutermostLock) {
    {
        const TreeRedrawLock outer(tree);
        {
            const TreeRedrawLock inner(tree);
            tree.Add(nullptr, "r");
        }
        EXPECT_EQ(seen.lines, (Lines{"lock"}));
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "append - 0 1", "unlock"}));
}

TEST_F(TreeObserver, IsToldRemovalsAtOnceUnderALockToo) {
    TreeNode& root = tree.Add(nullptr, "r");
    TreeNode& placeholder = tree.Add(&root, "p");
    seen.lines.clear();
    {
        const TreeRedrawLock lock(tree);
        tree.Remove(placeholder);
        tree.Add(&root, "a");
        tree.Add(&root, "b");
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "remove p", "removed", "append r 0 2", "unlock"}));
}

TEST_F(TreeObserver, HearsNothingOfANodeThatComesAndGoesUnderALock) {
    TreeNode& root = tree.Add(nullptr, "r");
    seen.lines.clear();
    {
        const TreeRedrawLock lock(tree);
        TreeNode& passing = tree.Add(&root, "a");
        passing.SetText("A");
        tree.Remove(passing);
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "unlock"}));
}

TEST_F(TreeObserver, IsToldTheRestWhenANewNodeGoesUnderALock) {
    TreeNode& root = tree.Add(nullptr, "r");
    tree.Add(&root, "a");
    seen.lines.clear();
    {
        const TreeRedrawLock lock(tree);
        tree.Add(&root, "b");
        TreeNode& passing = tree.Add(&root, "c");
        tree.Add(&root, "d");
        tree.Remove(passing);
        tree.Remove(*root.Child());
        EXPECT_EQ(root.ShownChildren(), 0);
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "remove a", "removed", "append r 0 2", "unlock"}));
}

TEST_F(TreeObserver, HearsNothingOfABranchRemovedBeforeItsAdditionsWereTold) {
    TreeNode& root = tree.Add(nullptr, "r");
    TreeNode& branch = tree.Add(&root, "b");
    seen.lines.clear();
    {
        const TreeRedrawLock lock(tree);
        tree.Add(&branch, "x");
        tree.Remove(branch);
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "remove b", "removed", "unlock"}));
}

TEST_F(TreeObserver, StartsAfreshWhenTheTreeIsClearedUnderALock) {
    TreeNode& root = tree.Add(nullptr, "r");
    seen.lines.clear();
    {
        const TreeRedrawLock lock(tree);
        tree.Add(&root, "a");
        tree.Clear();
        tree.Add(nullptr, "new");
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "clear", "cleared", "append - 0 1", "unlock"}));
}

TEST_F(TreeObserver, KnowsANodeBeforeItIsSelectedOrShown) {
    TreeNode& root = tree.Add(nullptr, "r");
    seen.lines.clear();
    {
        const TreeRedrawLock lock(tree);
        TreeNode& leaf = tree.Add(&root, "a");
        tree.SetSelectedItem(&leaf);
        tree.EnsureVisible(leaf);
    }
    EXPECT_EQ(seen.lines, (Lines{"lock", "append r 0 1", "select a", "open r", "scroll a", "unlock"}));
}

TEST_F(TreeObserver, LosesTheSelectionBeforeTheNodeGoes) {
    TreeNode& root = tree.Add(nullptr, "r");
    TreeNode& leaf = tree.Add(&root, "a");
    tree.SetSelectedItem(&leaf);
    seen.lines.clear();
    tree.Remove(root);
    EXPECT_EQ(seen.lines, (Lines{"select -", "remove r", "removed"}));
}

TEST_F(TreeObserver, IsToldEachShownPropertyThatChanges) {
    TreeNode& root = tree.Add(nullptr, "r");
    const auto changes = [&](auto change) {
        seen.lines.clear();
        change();
        change();
        return seen.lines == Lines{"changed r"};
    };
    EXPECT_TRUE(changes([&] { root.SetText("Radice"); }));
    EXPECT_TRUE(changes([&] { root.SetImage(2); }));
    EXPECT_TRUE(changes([&] { root.SetSelectedImage(4); }));
    EXPECT_TRUE(changes([&] { root.SetChecked(true); }));
    EXPECT_TRUE(changes([&] { root.SetBold(true); }));
    EXPECT_TRUE(changes([&] { root.SetForeColor(255); }));
}

TEST_F(TreeObserver, RepaintsWhenAsked) {
    tree.Refresh();
    EXPECT_EQ(seen.lines, (Lines{"refresh"}));
}

TEST_F(TreeObserver, FindsEveryNodeShownWhenItComesLate) {
    tree.SetObserver(nullptr);
    TreeNode& root = tree.Add(nullptr, "r");
    const TreeRedrawLock lock(tree);
    tree.Add(&root, "a");
    tree.SetObserver(&seen);
    EXPECT_EQ(tree.ShownChildren(nullptr), 1);
    EXPECT_EQ(root.ShownChildren(), 1);
    tree.Add(&root, "b");
    EXPECT_EQ(root.ShownChildren(), 1);
    tree.SetObserver(nullptr);
    EXPECT_EQ(root.ShownChildren(), 2) << "nothing stays held back for nobody";
    EXPECT_TRUE(seen.lines.empty());
}

} // namespace
} // namespace veldran::controls
