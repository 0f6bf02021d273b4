#include "platform/controls/tree_view.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <memory>

namespace veldran::controls {
namespace {

using Lines = std::vector<std::string>;

/// A root with a branch with a leaf, and a second root.
class Tree : public testing::Test {
protected:
    Tree() {
        const auto log = [this](const char* event) {
            return [this, event](TreeNode& node) { lines.push_back(event + (" " + node.Key())); };
        };
        kept.push_back(tree.Expand.subscribe(log("expand")));
        kept.push_back(tree.Collapse.subscribe(log("collapse")));
        kept.push_back(tree.NodeClick.subscribe(log("click")));
        kept.push_back(tree.NodeCheck.subscribe(log("check")));
    }

    SampleForm form;
    TreeView tree{form, "TRW_CONTI"};
    TreeNode& root = tree.Add(nullptr, "root");
    TreeNode& branch = tree.Add(&root, "branch");
    TreeNode& leaf = tree.Add(&branch, "leaf");
    TreeNode& other = tree.Add(nullptr, "other");
    std::vector<Subscription> kept;
    Lines lines;
};

TEST_F(Tree, ExpandsAndCollapsesANodeWithChildrenOnceEach) {
    tree.SetExpanded(root, true);
    tree.SetExpanded(root, true);
    EXPECT_TRUE(root.Expanded());
    tree.SetExpanded(root, false);
    tree.SetExpanded(root, false);
    EXPECT_EQ(lines, (Lines{"expand root", "collapse root"}));
}

TEST_F(Tree, DoesNotOpenANodeWithoutChildren) {
    tree.SetExpanded(leaf, true);
    EXPECT_FALSE(leaf.Expanded());
    EXPECT_TRUE(lines.empty());
}

TEST_F(Tree, ShowsTheExpandedStateToTheExpandHandler) {
    bool seen = false;
    kept.push_back(tree.Expand.subscribe([&](TreeNode& node) { seen = node.Expanded(); }));
    tree.SetExpanded(root, true);
    EXPECT_TRUE(seen);
}

TEST_F(Tree, LetsTheExpandHandlerReplaceThePlaceholder) {
    kept.push_back(tree.Expand.subscribe([&](TreeNode& node) {
        if (&node == &other) {
            tree.Remove(*node.Child());
            tree.Add(&node, "real");
        }
    }));
    tree.Add(&other, "placeholder");
    tree.SetExpanded(other, true);
    ASSERT_EQ(other.Children(), 1);
    EXPECT_EQ(other.Child()->Key(), "real");
    EXPECT_TRUE(other.Expanded());
}

TEST_F(Tree, SelectsByCodeWithoutAClickAndByTheUserWithOne) {
    tree.SetSelectedItem(&leaf);
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(tree.SelectedItem(), &leaf);
    tree.SelectFromView(branch);
    tree.SelectFromView(branch);
    EXPECT_EQ(lines, (Lines{"click branch", "click branch"}));
    tree.SetSelectedItem(nullptr);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
}

TEST_F(Tree, ChecksByCodeInSilenceAndByTheUserWithTheEvent) {
    leaf.SetChecked(true);
    EXPECT_TRUE(lines.empty());
    tree.CheckFromView(leaf);
    EXPECT_FALSE(leaf.Checked());
    tree.CheckFromView(leaf);
    EXPECT_TRUE(leaf.Checked());
    EXPECT_EQ(lines, (Lines{"check leaf", "check leaf"}));
}

TEST_F(Tree, OpensTheAncestorsOfANodeToShowItFromTheTopDown) {
    tree.EnsureVisible(leaf);
    EXPECT_EQ(lines, (Lines{"expand root", "expand branch"}));
    tree.EnsureVisible(leaf);
    EXPECT_EQ(lines.size(), 2U);
    EXPECT_FALSE(leaf.Expanded());
}

TEST_F(Tree, StopsShowingANodeThatAnExpandHandlerRemoves) {
    kept.push_back(tree.Expand.subscribe([&](TreeNode& node) {
        if (&node == &root) {
            tree.Remove(branch);
        }
    }));
    tree.EnsureVisible(leaf);
    EXPECT_EQ(lines, (Lines{"expand root"}));
    EXPECT_EQ(root.Children(), 0);
}

TEST_F(Tree, MovesASelectionThatAClosingNodeWouldHideToThatNode) {
    tree.EnsureVisible(leaf);
    tree.SetSelectedItem(&leaf);
    lines.clear();
    tree.SetExpanded(root, false);
    EXPECT_EQ(tree.SelectedItem(), &root);
    EXPECT_EQ(lines, (Lines{"collapse root", "click root"}));
}

TEST_F(Tree, KeepsASelectionThatAClosingNodeDoesNotHide) {
    tree.EnsureVisible(leaf);
    tree.SetSelectedItem(&root);
    lines.clear();
    tree.SetExpanded(root, false);
    tree.SetSelectedItem(&other);
    tree.SetExpanded(root, true);
    EXPECT_EQ(tree.SelectedItem(), &other);
    EXPECT_EQ(lines, (Lines{"collapse root", "expand root"}));
}

TEST_F(Tree, LosesASelectionInsideARemovedBranchAndKeepsOneOutside) {
    tree.SetSelectedItem(&other);
    tree.Remove(leaf);
    EXPECT_EQ(tree.SelectedItem(), &other);
    tree.SetSelectedItem(&branch);
    tree.Remove(root);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
    EXPECT_EQ(tree.RootCount(), 1);
    EXPECT_EQ(other.IndexInParent(), 0);
}

TEST_F(Tree, IsEmptyAfterClear) {
    tree.SetSelectedItem(&leaf);
    tree.Clear();
    EXPECT_EQ(tree.RootCount(), 0);
    EXPECT_EQ(tree.FirstRoot(), nullptr);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
}

TEST_F(Tree, SurvivesHandlersThatRemoveTheirNode) {
    kept.push_back(tree.Collapse.subscribe([&](TreeNode& node) { tree.Remove(node); }));
    tree.EnsureVisible(leaf);
    tree.SetSelectedItem(&leaf);
    lines.clear();
    tree.SetExpanded(root, false);
    EXPECT_EQ(lines, (Lines{"collapse root"})) << "a node that is gone is not clicked";
    EXPECT_EQ(tree.SelectedItem(), nullptr);
    kept.push_back(tree.NodeCheck.subscribe([&](TreeNode&) { tree.Clear(); }));
    tree.CheckFromView(other);
    EXPECT_EQ(tree.RootCount(), 0);
}

TEST_F(Tree, HitsNothingWithoutAView) {
    EXPECT_EQ(tree.HitTest(1, 1).node, nullptr);
    tree.SetHitTester([&](int x, int) { return TreeHit{&leaf, x == 5 ? treeHitStateIcon : treeHitLabel}; });
    EXPECT_EQ(tree.HitTest(5, 1).flags, treeHitStateIcon);
    tree.SetHitTester({});
    EXPECT_EQ(tree.HitTest(5, 1).flags, treeHitNone);
}

TEST(TreeLife, MayEndInItsOwnExpandHandler) {
    SampleForm form;
    auto tree = std::make_unique<TreeView>(form, "TRW_CONTI");
    TreeNode& root = tree->Add(nullptr, "root");
    TreeNode& leaf = tree->Add(&root, "leaf");
    const auto kept = tree->Expand.subscribe([&](TreeNode&) { tree.reset(); });
    tree->EnsureVisible(leaf);
    EXPECT_EQ(tree, nullptr);
}

} // namespace
} // namespace veldran::controls
