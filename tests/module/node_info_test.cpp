// What a node of the tree knows of itself.
#include "platform/controls/form.h"
#include "tree/cnode_info.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

class NodeInfo : public testing::Test {
protected:
    CNodeInfo& attach(EnumTipoNodo kind, std::int16_t level, std::int16_t levels, bool correlated = false) {
        auto info = std::make_unique<CNodeInfo>();
        info->Initialize(kind, factory, false, correlated, Economico, 7, "0102030005", "Cassa", level, levels,
                         node.Texts());
        CNodeInfo& attached = *info;
        node.SetTag(std::move(info));
        return attached;
    }

    CCommandFactory factory;
    controls::Form form{"F"};
    controls::TreeView tree{form, "TRW_CONTI"};
    controls::TreeNode& node = tree.Add(nullptr, "*E0102030005*", "Cassa", 5, 5);
};

TEST_F(NodeInfo, NumbersKindsAndNaturesAsTheChartDoes) {
    EXPECT_EQ(NodoRadiceContiOrdine, 1);
    EXPECT_EQ(NodoRadiceContiPatrimoniali, 2);
    EXPECT_EQ(NodoRadiceContiEconomici, 3);
    EXPECT_EQ(NodoRadiceContiNoStampa, 4);
    EXPECT_EQ(NodoIntermedio, 5);
    EXPECT_EQ(NodoConto, 6);
    EXPECT_EQ(Ordine, 0);
    EXPECT_EQ(Patrimoniale, 1);
    EXPECT_EQ(Economico, 2);
    EXPECT_EQ(DaNonStampare, 3);
}

TEST_F(NodeInfo, TakesItsIconsFromItsKind) {
    for (const EnumTipoNodo root : {NodoRadiceContiOrdine, NodoRadiceContiPatrimoniali,
                                    NodoRadiceContiEconomici, NodoRadiceContiNoStampa}) {
        const CNodeInfo& info = attach(root, 0, 0);
        EXPECT_EQ(info.IconExpanded(), 2);
        EXPECT_EQ(info.IconCollapsed(), 1);
    }
    EXPECT_EQ(attach(NodoIntermedio, 1, 4).IconExpanded(), 4);
    EXPECT_EQ(attach(NodoIntermedio, 1, 4).IconCollapsed(), 3);
    EXPECT_EQ(attach(NodoConto, 4, 4).IconExpanded(), 5);
    EXPECT_EQ(attach(NodoConto, 4, 4).IconCollapsed(), 5);
    EXPECT_EQ(attach(NodoConto, 4, 4, true).IconCollapsed(), 5)
        << "the look of a correlated account comes later";
}

TEST_F(NodeInfo, IsAnalyticAtTheLastLevelOnly) {
    EXPECT_TRUE(attach(NodoConto, 4, 4).IsAnalitico());
    EXPECT_FALSE(attach(NodoIntermedio, 3, 4).IsAnalitico());
    EXPECT_FALSE(attach(NodoConto, 3, 4).IsAnalitico());
    EXPECT_FALSE(attach(NodoRadiceContiEconomici, 0, 0).IsAnalitico()) << "a root is never analytic";
    EXPECT_FALSE(attach(NodoRadiceContiEconomici, 0, 4).IsAnalitico());
    EXPECT_TRUE(attach(NodoIntermedio, 4, 4).IsAnalitico()) << "the level decides, not the kind";
}

TEST_F(NodeInfo, MakesNoKnownKindOrLevelOfNumbersThatAreNone) {
    for (const int number : {0, 7, -1, 17, 22, 1025}) {
        const CNodeInfo& info = attach(static_cast<EnumTipoNodo>(number), 1, 4);
        EXPECT_EQ(info.GetCMDGetChildren(), nullptr) << number;
        EXPECT_EQ(info.IconExpanded(), 0) << number;
        EXPECT_EQ(info.IconCollapsed(), 0) << number;
    }
    EXPECT_FALSE(attach(NodoConto, -1, -1).IsAnalitico());
    EXPECT_FALSE(attach(NodoConto, -508, 4).IsAnalitico());
    EXPECT_FALSE(attach(NodoConto, 516, 4).IsAnalitico());
}

TEST_F(NodeInfo, StartsExploredOnlyAsALeaf) {
    EXPECT_TRUE(attach(NodoConto, 4, 4).Esplorato());
    for (const EnumTipoNodo kind : {NodoRadiceContiOrdine, NodoRadiceContiPatrimoniali,
                                    NodoRadiceContiEconomici, NodoRadiceContiNoStampa, NodoIntermedio}) {
        CNodeInfo& info = attach(kind, 1, 4);
        EXPECT_FALSE(info.Esplorato());
        info.MarkAsExplored();
        EXPECT_TRUE(info.Esplorato());
    }
}

TEST_F(NodeInfo, GivesBackWhatItWasInitializedWith) {
    const CNodeInfo& info = attach(NodoConto, 4, 4, true);
    EXPECT_EQ(info.CodiceConto(), "0102030005");
    EXPECT_EQ(info.DescrizioneConto(), "Cassa");
    EXPECT_EQ(info.TipoNodo(), NodoConto);
    EXPECT_EQ(info.NaturaConto(), Economico);
    EXPECT_TRUE(info.IsCorrelato());
    EXPECT_EQ(CNodeInfo::Di(node), &info);
}

TEST_F(NodeInfo, KeepsItsTextsInThoseOfTheNodeWhicheverTheNodeTakesLater) {
    const CNodeInfo& info = attach(NodoConto, 4, 4);
    EXPECT_EQ(info.CodiceConto(), "0102030005");
    EXPECT_EQ(info.DescrizioneConto(), "Cassa");
    node.SetText("Banca");
    EXPECT_EQ(node.Key(), "*E0102030005*");
    EXPECT_EQ(info.CodiceConto(), "0102030005");
    EXPECT_EQ(info.DescrizioneConto(), "Cassa");
}

TEST_F(NodeInfo, IsMissingOnAPlaceholder) {
    EXPECT_EQ(CNodeInfo::Di(node), nullptr);
}

TEST_F(NodeInfo, MakesACollapsedCorrelatedAccountBoldAndRed) {
    CNodeInfo& info = attach(NodoConto, 4, 4);
    info.ChangeStatoCorrelazione(node, true);
    EXPECT_TRUE(info.IsCorrelato());
    EXPECT_TRUE(node.Bold());
    EXPECT_EQ(node.ForeColor(), 255);
    EXPECT_EQ(node.Image(), 1);
    EXPECT_EQ(node.SelectedImage(), 6);
    EXPECT_EQ(info.IconExpanded(), 6);
    EXPECT_EQ(info.IconCollapsed(), 6);
    info.ChangeStatoCorrelazione(node, false);
    EXPECT_FALSE(info.IsCorrelato());
    EXPECT_EQ(info.IconExpanded(), 5);
    EXPECT_EQ(info.IconCollapsed(), 5);
    EXPECT_FALSE(node.Bold());
    EXPECT_EQ(node.ForeColor(), 0);
    EXPECT_EQ(node.Image(), 1);
    EXPECT_EQ(node.SelectedImage(), 5);
}

TEST_F(NodeInfo, KeepsTheFixedImageOfAnExpandedAccount) {
    CNodeInfo& info = attach(NodoConto, 4, 4);
    tree.Add(&node, "figlio");
    tree.SetExpanded(node, true);
    info.ChangeStatoCorrelazione(node, true);
    EXPECT_EQ(node.Image(), 2);
    EXPECT_EQ(node.SelectedImage(), 6);
}

TEST_F(NodeInfo, RemembersTheCorrelationOfAGroupingAccountWithoutChangingItsLook) {
    CNodeInfo& info = attach(NodoIntermedio, 1, 4);
    info.ChangeStatoCorrelazione(node, true);
    EXPECT_TRUE(info.IsCorrelato());
    EXPECT_FALSE(node.Bold());
    EXPECT_EQ(node.ForeColor(), 0);
    EXPECT_EQ(node.Image(), 5);
    EXPECT_EQ(node.SelectedImage(), 5);
    EXPECT_EQ(info.IconCollapsed(), 3);
}

} // namespace

} // namespace veldran::test
