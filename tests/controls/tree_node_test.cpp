#include "platform/controls/tree_view.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

namespace veldran::controls {
namespace {

class Nodes : public testing::Test {
protected:
    SampleForm form;
    TreeView tree{form, "TRW_CONTI"};
};

TEST_F(Nodes, ChainFromTheFirstChildThroughItsSiblings) {
    TreeNode& root = tree.Add(nullptr, "R", "Radice", 1, 2);
    TreeNode& first = tree.Add(&root, "a", "A", 3, 4);
    TreeNode& second = tree.Add(&root, "b");
    EXPECT_EQ(tree.FirstRoot(), &root);
    EXPECT_EQ(root.Parent(), nullptr);
    EXPECT_EQ(root.Child(), &first);
    EXPECT_EQ(first.Next(), &second);
    EXPECT_EQ(second.Next(), nullptr);
    EXPECT_EQ(second.Parent(), &root);
    EXPECT_EQ(first.Key(), "a");
    EXPECT_EQ(first.Text(), "A");
    EXPECT_EQ(first.Image(), 3);
    EXPECT_EQ(first.SelectedImage(), 4);
    EXPECT_EQ(second.Text(), "") << "a placeholder has neither text nor image";
    EXPECT_EQ(second.Image(), 0);
}

TEST_F(Nodes, ChainTheRootsToo) {
    TreeNode& first = tree.Add(nullptr, "1");
    TreeNode& second = tree.Add(nullptr, "2");
    EXPECT_EQ(first.Next(), &second);
    EXPECT_EQ(second.Next(), nullptr);
    EXPECT_EQ(tree.RootCount(), 2);
    EXPECT_EQ(tree.RootAt(1), &second);
}

TEST_F(Nodes, KeepTheirAddressesAndPositionsWhileOthersComeAndGo) {
    TreeNode& root = tree.Add(nullptr, "R");
    std::vector<TreeNode*> nodes;
    for (int i = 0; i < 1000; ++i) {
        nodes.push_back(&tree.Add(&root, std::to_string(i)));
    }
    for (int i = 999; i >= 0; i -= 3) {
        tree.Remove(*nodes[static_cast<std::size_t>(i)]);
        nodes.erase(nodes.begin() + i);
    }
    ASSERT_EQ(root.Children(), static_cast<int>(nodes.size()));
    for (int i = 0; i < root.Children(); ++i) {
        EXPECT_EQ(root.ChildAt(i), nodes[static_cast<std::size_t>(i)]);
        EXPECT_EQ(root.ChildAt(i)->IndexInParent(), i);
    }
}

TEST_F(Nodes, CarryATagThatGoesWithThem) {
    struct Counted : NodeTag {
        explicit Counted(int& alive) : alive_(alive) { ++alive_; }
        ~Counted() override { --alive_; }
        int& alive_;
    };
    int alive = 0;
    TreeNode& root = tree.Add(nullptr, "R");
    tree.Add(&root, "a").SetTag(std::make_unique<Counted>(alive));
    root.SetTag(std::make_unique<Counted>(alive));
    EXPECT_EQ(alive, 2);
    tree.Remove(*root.Child());
    EXPECT_EQ(alive, 1);
    tree.Clear();
    EXPECT_EQ(alive, 0);
}

} // namespace
} // namespace veldran::controls
