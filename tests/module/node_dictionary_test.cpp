// Finding a node by its key.
#include "platform/controls/form.h"
#include "platform/controls/tree_view.h"
#include "tree/dizionario_nodi.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

class NodeDictionary : public testing::Test {
protected:
    controls::TreeNode& add(const std::string& key) {
        controls::TreeNode& node = tree.Add(nullptr, key);
        nodes.Aggiungi(node);
        return node;
    }

    controls::Form form{"F"};
    controls::TreeView tree{form, "TRW_CONTI"};
    DizionarioNodi nodes;
};

} // namespace

TEST_F(NodeDictionary, FindsNothingWhileItIsEmpty) {
    EXPECT_EQ(nodes.Cerca("*E0102030005*"), nullptr);
    EXPECT_EQ(nodes.Cerca(""), nullptr);
}

TEST_F(NodeDictionary, FindsEveryNodeHoweverManyThereAre) {
    constexpr int many = 20000;
    for (int i = 0; i < many; ++i) {
        add("*E" + std::to_string(1000000000 + i) + "*");
    }
    for (int i = 0; i < many; ++i) {
        ASSERT_EQ(nodes.Cerca("*E" + std::to_string(1000000000 + i) + "*"), tree.RootAt(i)) << i;
    }
    EXPECT_EQ(nodes.Cerca("*P1000000000*"), nullptr) << "the same account of another nature";
    EXPECT_EQ(nodes.Cerca("*E" + std::to_string(1000000000 + many) + "*"), nullptr);
}

TEST_F(NodeDictionary, ForgetsAllOfThemAtOnce) {
    add("*E0102030005*");
    nodes.Svuota();
    EXPECT_EQ(nodes.Cerca("*E0102030005*"), nullptr);
    tree.Clear();
    EXPECT_EQ(nodes.Cerca("*E0102030005*"), nullptr);
    controls::TreeNode& again = add("*E0102030005*");
    EXPECT_EQ(nodes.Cerca("*E0102030005*"), &again);
}

} // namespace veldran::test
