// The commands that list the children of a node.
#include "platform/ado/recordset.h"
#include "tests/module/scripted_driver.h"
#include "tree/ccommand_factory.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

class CommandFactory : public testing::Test {
protected:
    CommandFactory() { factory->Connessione(connection); }

    ScriptedDatabase database;
    std::shared_ptr<ado::Connection> connection = connectTo(database); // shared with the commands
    std::unique_ptr<CCommandFactory> factory = std::make_unique<CCommandFactory>();
};

TEST_F(CommandFactory, BindsTheNatureOfARootTwiceAsNumericOfTwoDigits) {
    const auto command = factory->GetCMDChildrenRadice(DaNonStampare);
    EXPECT_EQ(command->CommandTimeout(), 0);
    EXPECT_FALSE(command->Prepared());
    command->Execute();
    ASSERT_EQ(database.requests.size(), 1U);
    const Request& request = database.requests[0];
    ASSERT_EQ(request.parameters.size(), 2U);
    for (const char* name : {"@NATURA1", "@NATURA2"}) {
        EXPECT_EQ(request.info(name).type, ado::adNumeric);
        EXPECT_EQ(request.info(name).precision, 2);
        EXPECT_EQ(request.info(name).scale, 0);
        EXPECT_EQ(request.value(name).toInteger(), 3);
    }
    EXPECT_EQ(request.parameters[0].info.name, "@NATURA1");
}

TEST_F(CommandFactory, LeavesTheParametersAsTheyWereForAValueThatIsNoNature) {
    factory->GetCMDChildrenRadice(Economico);
    const auto command = factory->GetCMDChildrenRadice(static_cast<EnumNaturaConto>(4));
    EXPECT_EQ(command->Parameters()["@NATURA1"].Value(), Value(2));
}

TEST_F(CommandFactory, UsesThePreparedTextWhenTheChildrenAreAnalytic) {
    const auto command = factory->GetCMDChildrenContoIntermedio(7, "0102030000", 3, 4, Patrimoniale);
    command->Execute();
    factory->GetCMDChildrenContoIntermedio(7, "0102040000", 3, 4, Economico)->Execute();
    ASSERT_EQ(database.requests.size(), 2U);
    EXPECT_EQ(database.prepares, 1);
    const Request& request = database.requests[1];
    EXPECT_TRUE(request.prepared);
    ASSERT_EQ(request.parameters.size(), 3U);
    EXPECT_EQ(request.parameters[0].info.name, "@GRUPPO");
    EXPECT_EQ(request.parameters[1].info.name, "@PARENT");
    EXPECT_EQ(request.parameters[2].info.name, "@NATURA");
    EXPECT_EQ(request.info("@PARENT").type, ado::adWChar);
    EXPECT_EQ(request.info("@PARENT").size, 10);
    EXPECT_EQ(request.value("@GRUPPO").toInteger(), 7);
    EXPECT_EQ(request.value("@PARENT").toText(), "0102040000");
    EXPECT_EQ(request.value("@NATURA").toInteger(), 2);
}

TEST_F(CommandFactory, UsesTheProcedureWhenTheChildrenAreGroupingAccounts) {
    factory->GetCMDChildrenContoIntermedio(7, "0100000000", 1, 4, Patrimoniale)->Execute();
    ASSERT_EQ(database.requests.size(), 1U);
    const Request& request = database.requests[0];
    EXPECT_TRUE(request.procedure);
    EXPECT_EQ(request.text, "SPCI_INTERMEDIFIGLI");
    EXPECT_EQ(request.value("@LIVELLO_PARENT").toInteger(), 1);
    EXPECT_EQ(request.value("@GRUPPO").toInteger(), 7);
    EXPECT_EQ(request.value("@PARENT").toText(), "0100000000");
    EXPECT_EQ(request.value("@NATURA").toInteger(), 1);
}

TEST_F(CommandFactory, TakesTheTextAlsoWhereLevelsMakeNoSense) {
    EXPECT_EQ(factory->GetCMDChildrenContoIntermedio(7, "01", 4, 4, Ordine)->CommandType(), ado::adCmdText);
    EXPECT_EQ(factory->GetCMDChildrenContoIntermedio(7, "01", 3, 2, Ordine)->CommandType(), ado::adCmdText);
    EXPECT_EQ(factory->GetCMDChildrenContoIntermedio(7, "01", 2, 4, Ordine)->CommandType(),
              ado::adCmdStoredProc);
}

TEST_F(CommandFactory, CreatesEachCommandOnce) {
    EXPECT_EQ(factory->GetCMDChildrenRadice(Ordine), factory->GetCMDChildrenRadice(Economico));
    EXPECT_EQ(factory->GetCMDChildrenContoIntermedio(7, "01", 1, 4, Ordine),
              factory->GetCMDChildrenContoIntermedio(7, "02", 2, 4, Ordine));
}

TEST_F(CommandFactory, DetachesItsCommandsWhenItEnds) {
    const auto command = factory->GetCMDChildrenContoIntermedio(7, "0102030000", 3, 4, Patrimoniale);
    command->Execute();
    EXPECT_EQ(database.livePrepared, 1);
    factory.reset();
    EXPECT_EQ(command->ActiveConnection(), nullptr);
    EXPECT_EQ(database.livePrepared, 0);
}

TEST_F(CommandFactory, LetsAnErrorThrough) {
    database.answer = [](const Request&) -> ado::StatementResult { fail(); };
    EXPECT_THROW(factory->GetCMDChildrenRadice(Ordine)->Execute(), ado::AdoError);
}

} // namespace

} // namespace veldran::test
