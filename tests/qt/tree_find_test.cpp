#include "adapters/qt/tree_search.h"
#include "tests/qt/tree_screen.h"

namespace veldran::qt {
namespace {

class TreeFind : public testing::Test {
protected:
    controls::TreeNode* find(const QString& typed, controls::TreeNode* start = nullptr, bool after = false) {
        return findTyped(form.tree, start, after, typed);
    }

    TreeForm form;
    controls::TreeNode& assets = form.tree.Add(nullptr, "a", "Conti patrimoniali");
    controls::TreeNode& cash = form.tree.Add(&assets, "c", "01/02/03/0005 - Cassa e disponibilità");
    controls::TreeNode& bank = form.tree.Add(&assets, "b", "01/02/04/0001 - Banca d'Italia c/c 0102");
    controls::TreeNode& costs = form.tree.Add(nullptr, "e", "Conti economici");
};

TEST_F(TreeFind, FindsACodeWithAndWithoutItsSlashes) {
    form.tree.SetExpanded(assets, true);
    EXPECT_EQ(find(QStringLiteral("01/02/04")), &bank);
    EXPECT_EQ(find(QStringLiteral("010204")), &bank);
    EXPECT_EQ(find(QStringLiteral("01020")), &cash);
    EXPECT_EQ(find(QStringLiteral("0204")), nullptr) << "a code is found by its beginning";
}

TEST_F(TreeFind, FindsAWordByItsBeginningBlindToCaseAndAccents) {
    form.tree.SetExpanded(assets, true);
    EXPECT_EQ(find(QStringLiteral("DISPONIBILITA")), &cash);
    EXPECT_EQ(find(QStringLiteral("disponibilità")), &cash);
    EXPECT_EQ(find(QStringLiteral("ital")), &bank);
    EXPECT_EQ(find(QStringLiteral("talia")), nullptr);
    EXPECT_EQ(find(QStringLiteral("econ")), &costs);
}

TEST_F(TreeFind, LooksOnlyAtOpenRows) {
    EXPECT_EQ(find(QStringLiteral("cassa")), nullptr);
    EXPECT_FALSE(assets.Expanded());
    form.tree.SetExpanded(assets, true);
    EXPECT_EQ(find(QStringLiteral("cassa")), &cash);
}

TEST_F(TreeFind, BeginsWhereItIsToldAndGoesAroundTheEnd) {
    form.tree.SetExpanded(assets, true);
    EXPECT_EQ(find(QStringLiteral("conti"), &assets), &assets);
    EXPECT_EQ(find(QStringLiteral("conti"), &assets, true), &costs);
    EXPECT_EQ(find(QStringLiteral("conti"), &costs, true), &assets);
    EXPECT_EQ(find(QStringLiteral("econ"), &costs, true), &costs) << "itself last";
}

TEST_F(TreeFind, FindsNothingForNothingOrInAnEmptyTree) {
    EXPECT_EQ(find(QString()), nullptr);
    form.tree.Clear();
    EXPECT_EQ(find(QStringLiteral("c")), nullptr);
}

} // namespace
} // namespace veldran::qt
