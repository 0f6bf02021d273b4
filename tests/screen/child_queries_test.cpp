// The commands that list the children of a node, on a real session outside of any form.
#include "platform/controls/form.h"
#include "platform/controls/tree_view.h"
#include "sql/chart_statements.h"
#include "sql/selection_statements.h"
#include "tests/support/recording_driver.h"
#include "tests/support/test_database.h"
#include "tree/ccommand_factory.h"
#include "tree/cnode_info.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

CNodeInfo& tagged(controls::TreeNode& node, EnumTipoNodo kind, std::int16_t level, std::int16_t levels,
                  CCommandFactory& factory) {
    auto info = std::make_unique<CNodeInfo>();
    info->Initialize(kind, factory, true, false, Economico, 1, "0102030005", "Cassa", level, levels);
    CNodeInfo& result = *info;
    node.SetTag(std::move(info));
    return result;
}

/// A factory over a real session whose chart is empty.
class ChildQueries : public testing::Test {
protected:
    void SetUp() override {
        connection->Open(database.connectionString());
        for (const std::string& statement : {sql::creazioneTabellaConti(1, 4), sql::creazioneSelezione(1)}) {
            connection->Execute(statement, nullptr, ado::adCmdText | ado::adExecuteNoRecords);
        }
        factory->Connessione(connection);
        driver->log().clear();
    }

    controls::Form form{"FRM"};
    controls::TreeView tree{form, "TRW"};
    TestDatabase database{Chart(4)};
    std::shared_ptr<RecordingDriver> driver = std::make_shared<RecordingDriver>(database.driver());
    std::shared_ptr<ado::Connection> connection = ado::Connection::create(driver);
    std::unique_ptr<CCommandFactory> factory = std::make_unique<CCommandFactory>();
};

TEST_F(ChildQueries, AskForTheNatureOfTheRoot) {
    for (const int kind : {1, 2, 3, 4}) {
        const auto command = tagged(tree.Add(nullptr, "k" + std::to_string(kind)),
                                    static_cast<EnumTipoNodo>(kind), 0, 0, *factory)
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
    EXPECT_EQ(tagged(tree.Add(nullptr, "a"), NodoConto, 4, 4, *factory).GetCMDGetChildren(), nullptr);
    EXPECT_EQ(
        tagged(tree.Add(nullptr, "b"), static_cast<EnumTipoNodo>(0), 1, 4, *factory).GetCMDGetChildren(),
        nullptr);
    EXPECT_EQ(
        tagged(tree.Add(nullptr, "c"), static_cast<EnumTipoNodo>(7), 1, 4, *factory).GetCMDGetChildren(),
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
