#include "tests/platform/recordset_fixture.h"

namespace veldran::test {
namespace {

class CommandTest : public RecordsetTest {
protected:
    std::shared_ptr<ado::Command> textCommand(const std::string& text) {
        auto command = ado::Command::create();
        command->ActiveConnection(connection);
        command->CommandText(text);
        command->CommandTimeout(0);
        command->Prepared(true);
        command->Parameters().Append(command->CreateParameter("@CONTO", ado::adWChar, ado::adParamInput, 6));
        return command;
    }
    const std::string deleteByConto = "DELETE FROM #T WHERE CONTO = ?";
};

TEST_F(CommandTest, IsPreparedAtItsFirstExecutionAndOnceOnly) {
    const auto command = textCommand(deleteByConto);
    EXPECT_EQ(recording->log().prepareCount(), 0U);
    for (int i = 0; i < 5; ++i) {
        command->Parameters()["@CONTO"].Value("C0000" + std::to_string(i));
        command->Execute();
    }
    EXPECT_EQ(recording->log().prepareCount(), 1U);
    EXPECT_EQ(recording->log().executed().size(), 5U);
    EXPECT_EQ(recording->log().executed().back(),
              sentPrepared(deleteByConto).with("@CONTO", ado::adWChar, 6, "C00004").timeout(0));
}

TEST_F(CommandTest, IsPreparedAgainAfterItsTextChanged) {
    const auto command = textCommand(deleteByConto);
    command->Execute();
    command->CommandText(deleteByConto);
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 1U);
    command->CommandText("DELETE FROM #T WHERE CAUSALE = ?");
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 2U);
    EXPECT_EQ(memory->database().livePrepared, 1);
}

TEST_F(CommandTest, IsPreparedAgainAfterTheDeclarationOfAParameterChanged) {
    const auto command = textCommand(deleteByConto);
    command->Execute();
    command->Parameters()[0].Size(4);
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 2U);
    command->Parameters()[0].Value("AB");
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 2U);
}

TEST_F(CommandTest, IsPreparedAgainOnAnotherConnection) {
    const auto other = ado::Connection::create(failing);
    other->Open("memory");
    const auto command = textCommand(deleteByConto);
    command->Execute();
    command->ActiveConnection(connection);
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 1U);
    command->ActiveConnection(other);
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 2U);
}

TEST_F(CommandTest, IsPreparedAgainAfterItsConnectionWasOpenedAgain) {
    const auto command = textCommand(deleteByConto);
    command->Execute();
    connection->Close();
    EXPECT_EQ(memory->database().livePrepared, 0);
    EXPECT_ADO_ERROR(command->Execute(), ado::adErrInvalidConnection);
    connection->Open("memory");
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 2U);
}

TEST_F(CommandTest, StaysPreparedWhenAnExecutionFails) {
    const auto command = textCommand(deleteByConto);
    command->Execute();
    failing->plan().failStatement(1);
    EXPECT_ADO_ERROR(command->Execute(), 50000);
    EXPECT_EQ(connection->Errors().at(0).Description, "Guasto simulato");
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 1U);
    EXPECT_TRUE(connection->Errors().empty());
}

TEST_F(CommandTest, MayBePreparedAgainAfterPreparingFailed) {
    const auto command = textCommand(deleteByConto);
    failing->plan().failStatement(1);
    EXPECT_ADO_ERROR(command->Execute(), 50000);
    command->Execute();
    EXPECT_EQ(recording->log().prepareCount(), 1U);
}

TEST_F(CommandTest, GivesUpItsPreparedStatementWithItself) {
    {
        const auto command = textCommand(deleteByConto);
        command->Execute();
        EXPECT_EQ(memory->database().livePrepared, 1);
    }
    EXPECT_EQ(memory->database().livePrepared, 0);
}

TEST_F(CommandTest, OutlivesTheCallersReferenceToItsConnection) {
    const auto command = textCommand(deleteByConto);
    command->Execute();
    connection.reset();
    command->Execute();
    EXPECT_EQ(memory->database().openSessions, 1);
}

TEST_F(CommandTest, IsSentDirectlyWhenItIsNotPrepared) {
    const auto command = textCommand(deleteByConto);
    command->Prepared(false);
    command->Parameters()["@conto"].Value("C00001");
    std::int64_t affected = -1;
    EXPECT_EQ(command->Execute(&affected, ado::adExecuteNoRecords), nullptr);
    EXPECT_EQ(affected, 0);
    EXPECT_EQ(recording->log().messages().size(), 1U);
    EXPECT_EQ(recording->log().messages().back(),
              sent(deleteByConto).with("@CONTO", ado::adWChar, 6, "C00001").timeout(0).withoutRows());
}

TEST_F(CommandTest, BindsItsMarkersInTheOrderOfAppendWhateverTheNames) {
    const auto command = ado::Command::create();
    command->ActiveConnection(connection);
    command->NamedParameters(true);
    command->CommandText("DELETE FROM #T WHERE PROG = ? AND CAUSALE = ?");
    auto prog = command->CreateParameter("@Z", ado::adNumeric, ado::adParamInput, 0, 2);
    prog.Precision(3);
    command->Parameters().Append(prog);
    command->Parameters().Append(command->CreateParameter("@A", ado::adWChar, ado::adParamInput, 4, "VEND"));
    fill({2, 1});
    std::int64_t affected = 0;
    command->Execute(&affected);
    EXPECT_EQ(affected, 1);
    EXPECT_EQ(stored(), "1:C00001");
    EXPECT_EQ(recording->log().executed().back(), sent("DELETE FROM #T WHERE PROG = ? AND CAUSALE = ?")
                                                      .with("@Z", ado::adNumeric, 0, number(2), 3)
                                                      .with("@A", ado::adWChar, 4, "VEND"));
}

TEST_F(CommandTest, SendsNullForAParameterOfATextThatWasNeverGivenAValue) {
    const auto command = textCommand(deleteByConto);
    command->Execute();
    EXPECT_EQ(recording->log().executed().back(),
              sentPrepared(deleteByConto).with("@CONTO", ado::adWChar, 6, Value()).timeout(0));
}

TEST_F(CommandTest, ReturnsARecordsetThatCanAskAgain) {
    fill({2});
    const auto command = ado::Command::create();
    command->ActiveConnection(connection);
    command->CommandText("SELECT * FROM #T");
    const auto recordset = command->Execute();
    EXPECT_EQ(recordset->ActiveCommand(), command);
    EXPECT_EQ(recordset->RecordCount(), 1);
    fill({2, 1});
    recordset->Requery();
    EXPECT_EQ(recordset->RecordCount(), 3);
}

TEST_F(CommandTest, RefusesToRunWithoutAnOpenConnection) {
    const auto command = ado::Command::create();
    command->CommandText("-- niente");
    EXPECT_ADO_ERROR(command->Execute(), ado::adErrInvalidConnection);
    const auto closed = ado::Connection::create(memory);
    EXPECT_ADO_ERROR(command->ActiveConnection(closed), ado::adErrInvalidConnection);
    command->ActiveConnection(connection);
    command->Execute();
    command->ActiveConnection(nullptr);
    EXPECT_ADO_ERROR(command->Execute(), ado::adErrInvalidConnection);
}

TEST_F(CommandTest, RefusesANegativeTimeOut) {
    EXPECT_ADO_ERROR(ado::Command::create()->CommandTimeout(-1), ado::adErrInvalidArgument);
}

struct BadValue {
    const char* why;
    ado::DataTypeEnum type;
    int size;
    std::uint8_t precision;
    std::uint8_t scale;
    Value value;
    int error;

    friend void PrintTo(const BadValue& shown, std::ostream* out) { *out << shown.why; }
};

class BadParameterTest : public CommandTest, public ::testing::WithParamInterface<BadValue> {};

TEST_P(BadParameterTest, IsRefusedBeforeAnythingIsSent) {
    const auto command = ado::Command::create();
    command->ActiveConnection(connection);
    command->CommandText(deleteByConto);
    auto parameter =
        command->CreateParameter("@X", GetParam().type, ado::adParamInput, GetParam().size, GetParam().value);
    parameter.Precision(GetParam().precision);
    parameter.NumericScale(GetParam().scale);
    command->Parameters().Append(parameter);
    EXPECT_ADO_ERROR(command->Execute(), GetParam().error);
    EXPECT_EQ(connection->Errors().at(0).Number, GetParam().error);
    EXPECT_NE(connection->Errors().at(0).Description.find("@X"), std::string::npos);
    EXPECT_TRUE(recording->log().messages().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Values, BadParameterTest,
    ::testing::Values(
        BadValue{"TextTooLong", ado::adWChar, 10, 0, 0, "012345678901", ado::sqlErrTextTooLong},
        BadValue{"PlacesBeyondScale", ado::adNumeric, 0, 2, 0, Value(4.5), ado::adErrDataConversion},
        BadValue{"DigitsBeyondPrecision", ado::adNumeric, 0, 2, 0, Value(123), ado::sqlErrOverflow},
        BadValue{"TextForANumber", ado::adNumeric, 0, 5, 2, "abc", ado::adErrDataConversion},
        BadValue{"NoPrecision", ado::adNumeric, 0, 0, 0, Value(1), ado::adErrInvalidParamInfo},
        BadValue{"BeyondSmallInteger", ado::adSmallInt, 0, 0, 0, Value(32768), ado::sqlErrOverflow},
        BadValue{"FractionForInteger", ado::adInteger, 0, 0, 0, Value(1.5), ado::adErrDataConversion},
        BadValue{"TextForABoolean", ado::adBoolean, 0, 0, 0, "sì", ado::adErrDataConversion}),
    [](const auto& test) { return test.param.why; });

TEST_F(CommandTest, RefusesToAppendAParameterWithoutTypeOrATextWithoutSize) {
    const auto command = ado::Command::create();
    EXPECT_ADO_ERROR(command->Parameters().Append(command->CreateParameter("@A")),
                     ado::adErrInvalidParamInfo);
    EXPECT_ADO_ERROR(command->Parameters().Append(command->CreateParameter("@A", ado::adWChar)),
                     ado::adErrInvalidParamInfo);
    EXPECT_EQ(command->Parameters().Count(), 0U);
}

TEST_F(CommandTest, RefusesParametersThatAreNotThere) {
    const auto command = textCommand(deleteByConto);
    EXPECT_ADO_ERROR(command->Parameters()["@ALTRO"], ado::adErrItemNotFound);
    EXPECT_ADO_ERROR(command->Parameters()[1], ado::adErrItemNotFound);
    EXPECT_ADO_ERROR(command->Parameters()[-1], ado::adErrItemNotFound);
    EXPECT_ADO_ERROR(command->Parameters().Delete("@ALTRO"), ado::adErrItemNotFound);
    command->Parameters().Delete("@CONTO");
    EXPECT_EQ(command->Parameters().Count(), 0U);
}

TEST_F(CommandTest, KeepsReferencesToParametersWhileOthersAreAppended) {
    const auto command = textCommand(deleteByConto);
    ado::Parameter& first = command->Parameters()[0];
    for (int i = 0; i < 50; ++i) {
        command->Parameters().Append(command->CreateParameter("@P" + std::to_string(i), ado::adInteger));
    }
    first.Value("C00001");
    EXPECT_EQ(command->Parameters()["@CONTO"].Value(), Value("C00001"));
}

TEST_F(CommandTest, RefusesOutputParameters) {
    const auto command = ado::Command::create();
    command->ActiveConnection(connection);
    command->CommandText("-- niente");
    command->Parameters().Append(command->CreateParameter("@R", ado::adInteger, ado::adParamOutput));
    EXPECT_ADO_ERROR(command->Execute(), ado::adErrFeatureNotAvailable);
}

class ProcedureTest : public RecordsetTest {
protected:
    ProcedureTest() {
        memory->database().procedures["SPCI_PROVA"] = {
            {"@RETURN_VALUE", ado::adInteger, ado::adParamReturnValue, 0, 10, 0},
            {"@ON", ado::adBoolean, ado::adParamInput, 0, 0, 0},
            {"@CONTO", ado::adWChar, ado::adParamInput, 10, 0, 0}};
        command->ActiveConnection(connection);
        command->CommandType(ado::adCmdStoredProc);
        command->CommandText("SPCI_PROVA");
    }
    std::shared_ptr<ado::Command> command = ado::Command::create();
};

TEST_F(ProcedureTest, TakesItsParametersFromWhatTheDriverReports) {
    EXPECT_EQ(command->Parameters().Count(), 3U);
    EXPECT_EQ(command->Parameters()["@conto"].Size(), 10);
    EXPECT_EQ(recording->log().containing("SPCI_PROVA").size(), 1U);
    command->Parameters()["@ON"].Value(true);
    command->Parameters()["@CONTO"].Value("0102");
    command->Execute();
    EXPECT_EQ(recording->log().executed().back(), calledProcedure("SPCI_PROVA")
                                                      .with("@ON", ado::adBoolean, 0, true)
                                                      .with("@CONTO", ado::adWChar, 10, "0102"));
}

TEST_F(ProcedureTest, AsksTheDriverOnceHoweverOftenItRuns) {
    for (int i = 0; i < 3; ++i) {
        command->Parameters()["@CONTO"].Value("0102");
        command->Execute();
    }
    EXPECT_EQ(recording->log().messages().size(), 4U);
    EXPECT_EQ(recording->log().messages().front().how, Sent::Describe);
}

TEST_F(ProcedureTest, DoesNotSendWhatWasNeverGivenAValue) {
    command->Parameters()["@CONTO"].Value(Value());
    command->Execute();
    EXPECT_EQ(recording->log().executed().back(),
              calledProcedure("SPCI_PROVA").with("@CONTO", ado::adWChar, 10, Value()));
}

TEST_F(ProcedureTest, ReportsAProcedureThatIsNotThere) {
    command->CommandText("SPCI_ASSENTE");
    EXPECT_ADO_ERROR(command->Parameters()["@ON"], 2812);
    EXPECT_EQ(connection->Errors().at(0).Number, 2812);
}

TEST_F(ProcedureTest, KeepsParametersAppendedByHandWithoutAsking) {
    command->Parameters().Append(
        command->CreateParameter("@CONTO", ado::adWChar, ado::adParamInput, 10, "01"));
    command->Execute();
    EXPECT_EQ(recording->log().messages().size(), 1U);
    command->Parameters().Refresh();
    EXPECT_EQ(command->Parameters().Count(), 3U);
}

TEST_F(ProcedureTest, RefusesToRefreshTheParametersOfAText) {
    command->CommandType(ado::adCmdText);
    EXPECT_ADO_ERROR(command->Parameters().Refresh(), ado::adErrIllegalOperation);
}

TEST_F(ProcedureTest, HasNoParametersToOfferWithoutAConnection) {
    command->ActiveConnection(nullptr);
    EXPECT_EQ(command->Parameters().Count(), 0U);
    EXPECT_ADO_ERROR(command->Parameters().Refresh(), ado::adErrInvalidConnection);
    command->ActiveConnection(connection);
    EXPECT_EQ(command->Parameters().Count(), 3U);
}

} // namespace
} // namespace veldran::test
