// The object behind a tree node and the factory of its child queries, outside of any form.
#include "platform/controls/form.h"
#include "platform/controls/tree_view.h"
#include "tests/support/recording_driver.h"
#include "tests/support/test_database.h"
#include "tree/ccommand_factory.h"
#include "tree/cnode_info.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

CNodeInfo& tagged(controls::TreeNode& node, EnumTipoNodo kind, std::int16_t level, std::int16_t levels,
                  std::shared_ptr<CCommandFactory> factory = std::make_shared<CCommandFactory>()) {
    auto info = std::make_unique<CNodeInfo>();
    info->Initialize(kind, std::move(factory), true, false, Economico, 1, "0102030005", "Cassa", level,
                     levels);
    CNodeInfo& result = *info;
    node.SetTag(std::move(info));
    return result;
}

class TreeNodes : public testing::Test {
protected:
    controls::Form form{"FRM"};
    controls::TreeView tree{form, "TRW"};
};

TEST_F(TreeNodes, KeepWhatTheyWereInitialisedWith) {
    const CNodeInfo& info = tagged(tree.Add(nullptr, "k"), NodoConto, 4, 4);
    EXPECT_EQ(info.TipoNodo(), NodoConto);
    EXPECT_EQ(info.NaturaConto(), Economico);
    EXPECT_EQ(info.CodiceConto(), "0102030005");
    EXPECT_EQ(info.DescrizioneConto(), "Cassa");
    EXPECT_FALSE(info.IsCorrelato());
}

TEST_F(TreeNodes, HaveTheValuesThatTheChartUses) {
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

TEST_F(TreeNodes, AreAnalyticAtTheLastLevelWhateverTheirKind) {
    EXPECT_TRUE(tagged(tree.Add(nullptr, "a"), NodoConto, 4, 4).IsAnalitico());
    EXPECT_TRUE(tagged(tree.Add(nullptr, "b"), NodoIntermedio, 3, 3).IsAnalitico());
    EXPECT_FALSE(tagged(tree.Add(nullptr, "c"), NodoConto, 3, 4).IsAnalitico());
    EXPECT_FALSE(tagged(tree.Add(nullptr, "d"), NodoRadiceContiOrdine, 0, 0).IsAnalitico());
    EXPECT_FALSE(tagged(tree.Add(nullptr, "e"), NodoRadiceContiOrdine, 0, 4).IsAnalitico());
}

TEST_F(TreeNodes, AreExploredFromTheStartOnlyAsLeaves) {
    for (const int kind : {1, 2, 3, 4, 5}) {
        CNodeInfo& info =
            tagged(tree.Add(nullptr, "k" + std::to_string(kind)), static_cast<EnumTipoNodo>(kind), 1, 4);
        EXPECT_FALSE(info.Esplorato());
        info.MarkAsExplored();
        EXPECT_TRUE(info.Esplorato());
    }
    EXPECT_TRUE(tagged(tree.Add(nullptr, "leaf"), NodoConto, 4, 4).Esplorato());
}

TEST_F(TreeNodes, HaveTheIconsOfTheirKind) {
    for (const int kind : {1, 2, 3, 4}) {
        const CNodeInfo& root =
            tagged(tree.Add(nullptr, "k" + std::to_string(kind)), static_cast<EnumTipoNodo>(kind), 0, 0);
        EXPECT_EQ(root.IconExpanded(), 2);
        EXPECT_EQ(root.IconCollapsed(), 1);
    }
    const CNodeInfo& group = tagged(tree.Add(nullptr, "g"), NodoIntermedio, 1, 4);
    EXPECT_EQ(group.IconExpanded(), 4);
    EXPECT_EQ(group.IconCollapsed(), 3);
    const CNodeInfo& account = tagged(tree.Add(nullptr, "c"), NodoConto, 4, 4);
    EXPECT_EQ(account.IconExpanded(), 5);
    EXPECT_EQ(account.IconCollapsed(), 5);
}

TEST_F(TreeNodes, TurnBoldRedAndToTheirOwnSelectedIconWhenCorrelatedWhileCollapsed) {
    controls::TreeNode& node = tree.Add(nullptr, "k", "Cassa", 5, 5);
    CNodeInfo& info = tagged(node, NodoConto, 4, 4);
    info.ChangeStatoCorrelazione(node, true);
    EXPECT_TRUE(info.IsCorrelato());
    EXPECT_EQ(info.IconExpanded(), 6);
    EXPECT_EQ(info.IconCollapsed(), 6);
    EXPECT_TRUE(node.Bold());
    EXPECT_EQ(node.ForeColor(), 255);
    EXPECT_EQ(node.Image(), 1);
    EXPECT_EQ(node.SelectedImage(), 6);
    info.ChangeStatoCorrelazione(node, false);
    EXPECT_FALSE(info.IsCorrelato());
    EXPECT_EQ(info.IconCollapsed(), 5);
    EXPECT_FALSE(node.Bold());
    EXPECT_EQ(node.ForeColor(), 0);
    EXPECT_EQ(node.Image(), 1);
    EXPECT_EQ(node.SelectedImage(), 5);
}

TEST_F(TreeNodes, TakeTheOtherFixedImageWhenCorrelatedWhileExpanded) {
    controls::TreeNode& node = tree.Add(nullptr, "k", "Cassa", 5, 5);
    CNodeInfo& info = tagged(node, NodoConto, 4, 4);
    tree.Add(&node, "child");
    tree.SetExpanded(node, true);
    info.ChangeStatoCorrelazione(node, true);
    EXPECT_EQ(node.Image(), 2);
    EXPECT_EQ(node.SelectedImage(), 6);
}

TEST_F(TreeNodes, KeepTheirLookWhenTheyAreNoAccounts) {
    controls::TreeNode& node = tree.Add(nullptr, "k", "Gruppo", 3, 3);
    CNodeInfo& info = tagged(node, NodoIntermedio, 2, 4);
    info.ChangeStatoCorrelazione(node, true);
    EXPECT_TRUE(info.IsCorrelato());
    EXPECT_EQ(info.IconCollapsed(), 3);
    EXPECT_FALSE(node.Bold());
    EXPECT_EQ(node.ForeColor(), 0);
    EXPECT_EQ(node.Image(), 3);
    EXPECT_EQ(node.SelectedImage(), 3);
}

/// A factory over a real session with an empty selection.
class ChildQueries : public TreeNodes {
protected:
    void SetUp() override {
        connection->Open(database.connectionString());
        connection->Execute(
            "SELECT CAST(CG24_CONTO AS NCHAR(10)) AS CONTO, CG24_DESCR AS CONTOF, CG24_DESCR AS "
            "DESCRIZIONE, CAST(0 AS BIT) AS ISANALITICO, CAST(0 AS BIT) AS ATTIVO, CAST(0 AS BIT) AS "
            "CORRELATO, CAST(1 AS SMALLINT) AS NRLIVELLO, CG24_GRUPPO_CG10 AS GRUPPO, CG24_CONTO AS "
            "PARENT, CG24_INDTIPOCONTO, CG24_CONTO AS LIVELLO1, CG24_CONTO AS LIVELLO2, CG24_CONTO AS "
            "LIVELLO3, CG24_CONTO AS LIVELLO4, CAST(1 AS INT) AS INDICE INTO #CG24_TABPDC_SELECTED "
            "FROM CG24_TABPDC",
            nullptr, ado::adCmdText | ado::adExecuteNoRecords);
        factory->Connessione(connection);
        driver->log().clear();
    }

    TestDatabase database{Chart(4)};
    std::shared_ptr<RecordingDriver> driver = std::make_shared<RecordingDriver>(database.driver());
    std::shared_ptr<ado::Connection> connection = ado::Connection::create(driver);
    std::shared_ptr<CCommandFactory> factory = std::make_shared<CCommandFactory>();
};

TEST_F(ChildQueries, AskForTheNatureOfTheRoot) {
    for (const int kind : {1, 2, 3, 4}) {
        const auto command = tagged(tree.Add(nullptr, "k" + std::to_string(kind)),
                                    static_cast<EnumTipoNodo>(kind), 0, 0, factory)
                                 .GetCMDGetChildren();
        ASSERT_NE(command, nullptr);
        EXPECT_EQ(command->CommandType(), ado::adCmdText);
        EXPECT_EQ(command->CommandTimeout(), 0);
        EXPECT_EQ(command->Parameters()["@NATURA1"].Value(), Value(kind - 1));
        EXPECT_EQ(command->Parameters()["@NATURA2"].Value(), Value(kind - 1));
    }
}

TEST_F(ChildQueries, LeaveTheNatureAsItWasForAValueThatIsNone) {
    const auto command = factory->GetCMDChildrenRadice(Economico);
    EXPECT_EQ(factory->GetCMDChildrenRadice(static_cast<EnumNaturaConto>(4)), command);
    EXPECT_EQ(factory->GetCMDChildrenRadice(static_cast<EnumNaturaConto>(-1)), command);
    EXPECT_EQ(command->Parameters()["@NATURA1"].Value(), Value(2));
    EXPECT_EQ(command->Parameters()["@NATURA2"].Value(), Value(2));
}

TEST_F(ChildQueries, AreNoneForAnAnalyticAccountAndForAnUnknownKind) {
    EXPECT_EQ(tagged(tree.Add(nullptr, "a"), NodoConto, 4, 4, factory).GetCMDGetChildren(), nullptr);
    EXPECT_EQ(tagged(tree.Add(nullptr, "b"), static_cast<EnumTipoNodo>(0), 1, 4, factory).GetCMDGetChildren(),
              nullptr);
    EXPECT_EQ(tagged(tree.Add(nullptr, "c"), static_cast<EnumTipoNodo>(7), 1, 4, factory).GetCMDGetChildren(),
              nullptr);
}

TEST_F(ChildQueries, ChooseTextOrProcedureByTheLevelsThatAreLeft) {
    struct Case {
        std::int16_t level;
        std::int16_t levels;
        ado::CommandTypeEnum type;
    };
    for (const Case& c :
         {Case{2, 3, ado::adCmdText}, Case{1, 3, ado::adCmdStoredProc}, Case{1, 2, ado::adCmdText},
          Case{3, 5, ado::adCmdStoredProc}, Case{4, 5, ado::adCmdText}, Case{4, 4, ado::adCmdText},
          Case{5, 4, ado::adCmdText}}) {
        const auto command =
            factory->GetCMDChildrenContoIntermedio(1, "0100000000", c.level, c.levels, Patrimoniale);
        EXPECT_EQ(command->CommandType(), c.type) << c.level << " of " << c.levels;
        EXPECT_EQ(command->Prepared(), c.type == ado::adCmdText);
        EXPECT_EQ(command->CommandTimeout(), 0);
        EXPECT_EQ(command->Parameters()["@GRUPPO"].Value(), Value(1));
        EXPECT_EQ(command->Parameters()["@PARENT"].Value(), Value("0100000000"));
        EXPECT_EQ(command->Parameters()["@NATURA"].Value(), Value(1));
        if (c.type == ado::adCmdStoredProc) {
            EXPECT_EQ(command->Parameters()["@LIVELLO_PARENT"].Value(), Value(c.level));
        }
    }
}

TEST_F(ChildQueries, AreMadeOnceAndBoundAnewEachTime) {
    const auto text = factory->GetCMDChildrenContoIntermedio(1, "0100000000", 3, 4, Patrimoniale);
    const auto procedure = factory->GetCMDChildrenContoIntermedio(1, "0100000000", 1, 4, Patrimoniale);
    text->Execute();
    procedure->Execute();
    EXPECT_EQ(factory->GetCMDChildrenContoIntermedio(1, "0200000000", 3, 4, Economico), text);
    EXPECT_EQ(factory->GetCMDChildrenContoIntermedio(1, "0200000000", 2, 4, Economico), procedure);
    EXPECT_EQ(text->Parameters()["@PARENT"].Value(), Value("0200000000"));
    EXPECT_EQ(procedure->Parameters()["@LIVELLO_PARENT"].Value(), Value(2));
    text->Execute();
    procedure->Execute();
    EXPECT_EQ(driver->log().prepareCount(), 1U);
    EXPECT_EQ(database.livePreparedStatements(), 1);
}

TEST_F(ChildQueries, EndWithTheirFactory) {
    const std::weak_ptr<ado::Command> root = factory->GetCMDChildrenRadice(Ordine);
    auto text = factory->GetCMDChildrenContoIntermedio(1, "0100000000", 3, 4, Patrimoniale);
    text->Execute();
    EXPECT_EQ(database.livePreparedStatements(), 1);
    factory.reset();
    EXPECT_TRUE(root.expired());
    EXPECT_EQ(text->ActiveConnection(), nullptr);
    EXPECT_EQ(database.livePreparedStatements(), 0);
}

TEST_F(ChildQueries, LeaveErrorsToTheirCaller) {
    connection->Close();
    EXPECT_THROW(factory->GetCMDChildrenContoIntermedio(1, "0100000000", 1, 4, Patrimoniale), ado::AdoError);
    EXPECT_THROW(factory->GetCMDChildrenRadice(Ordine)->Execute(), ado::AdoError);
}

} // namespace

} // namespace veldran::test
