#include "tests/support/ado_contract.h"
#include "tests/support/ado_expect.h"

namespace veldran::test {
namespace {

TEST_P(AdoContract, OpensAndClosesAgain) {
    EXPECT_EQ(connection->State(), ado::adStateOpen);
    connection->Close();
    EXPECT_EQ(connection->State(), ado::adStateClosed);
    connection->Open();
    EXPECT_EQ(scalar("SELECT 1").toInteger(), 1);
}

TEST_P(AdoContract, NamesWhatIsWrongWithAConnectionString) {
    const auto other = ado::Connection::create(database->driver());
    EXPECT_THROW(other->Open(database->badConnectionString()), ado::AdoError);
    EXPECT_EQ(other->State(), ado::adStateClosed);
    ASSERT_FALSE(other->Errors().empty());
    EXPECT_FALSE(other->Errors()[0].Description.empty());
    EXPECT_EQ(other->Errors()[0].SQLState.size(), 5U);
}

TEST_P(AdoContract, CountsTheRowsOfAChange) {
    makeDetail(3);
    EXPECT_EQ(run("UPDATE #D SET SEGNO = 2 WHERE CAUSALE = 'VEND'"), 3);
    EXPECT_EQ(run("UPDATE #D SET SEGNO = 2 WHERE CAUSALE = 'VEND'"), 3);
    EXPECT_EQ(run("DELETE FROM #D WHERE PROG = 99"), 0);
    EXPECT_EQ(run("INSERT INTO #D (CAUSALE, PROG, SEGNO) SELECT 'COPI', PROG, SEGNO FROM #D WHERE CAUSALE = "
                  "'VEND'"),
              3);
    EXPECT_EQ(run("DELETE FROM #D"), 7);
}

TEST_P(AdoContract, ReturnsAClosedRecordsetForAStatementWithoutRows) {
    makeDetail(1);
    const auto recordset = query("UPDATE #D SET SEGNO = 2");
    ASSERT_NE(recordset, nullptr);
    EXPECT_EQ(recordset->State(), ado::adStateClosed);
}

TEST_P(AdoContract, ReturnsTheColumnsOfAResultWithoutRows) {
    makeDetail(1);
    const auto recordset = query("SELECT * FROM #D WHERE 1 = 0");
    EXPECT_EQ(recordset->State(), ado::adStateOpen);
    EXPECT_EQ(recordset->RecordCount(), 0);
    EXPECT_EQ(recordset->Fields().Count(), 5U);
    EXPECT_EQ(recordset->Fields()["CAUSALE"].DefinedSize(), 4);
}

TEST_P(AdoContract, DescribesTheTypesOfItsColumns) {
    run("CREATE TABLE #TIPI (A NCHAR(4) NULL, B NVARCHAR(20) NULL, C DECIMAL(5, 2) NULL, D INT NULL, E "
        "SMALLINT NULL, F BIT NULL)");
    run("INSERT INTO #TIPI (A, B, C, D, E, F) VALUES ('AB', 'testo', 12.5, 70000, -3, 1)");
    const auto recordset = query("SELECT A, B, C, D, E, F FROM #TIPI");
    auto& fields = recordset->Fields();
    EXPECT_EQ(fields[0].Type(), ado::adWChar);
    EXPECT_EQ(fields[0].DefinedSize(), 4);
    EXPECT_EQ(fields[0].Value(), Value("AB  "));
    EXPECT_EQ(fields[1].Type(), ado::adVarWChar);
    EXPECT_EQ(fields[1].DefinedSize(), 20);
    EXPECT_EQ(fields[1].Value(), Value("testo"));
    EXPECT_EQ(fields[2].Type(), ado::adNumeric);
    EXPECT_EQ(fields[2].Precision(), 5);
    EXPECT_EQ(fields[2].NumericScale(), 2);
    ASSERT_NE(fields[2].Value().asDecimal(), nullptr);
    EXPECT_EQ(fields[2].Value().toText(), "12.50");
    EXPECT_EQ(fields[3].Type(), ado::adInteger);
    EXPECT_EQ(fields[3].Value(), Value(70000));
    EXPECT_EQ(fields[4].Type(), ado::adSmallInt);
    EXPECT_EQ(fields[4].Value(), Value(-3));
    EXPECT_EQ(fields[5].Type(), ado::adBoolean);
    EXPECT_EQ(fields[5].Value(), Value(true));
}

TEST_P(AdoContract, ReturnsNullsOfEveryType) {
    run("CREATE TABLE #TIPI (A NCHAR(4) NULL, B NVARCHAR(20) NULL, C DECIMAL(5, 2) NULL, D INT NULL, F BIT "
        "NULL)");
    run("INSERT INTO #TIPI (A) VALUES (NULL)");
    const auto recordset = query("SELECT * FROM #TIPI");
    for (const ado::Field& field : recordset->Fields()) {
        EXPECT_TRUE(field.Value().isNull()) << field.Name();
    }
}

TEST_P(AdoContract, KeepsAccentsAndOtherCharacters) {
    run("CREATE TABLE #TESTI (A NVARCHAR(40) NULL)");
    const auto insert = command("INSERT INTO #TESTI (A) VALUES (?)");
    const std::string text = "perché l'€ è così — \xF0\x9F\x98\x80";
    insert->Parameters().Append(insert->CreateParameter("@A", ado::adVarWChar, ado::adParamInput, 40, text));
    insert->Execute();
    EXPECT_EQ(scalar("SELECT A FROM #TESTI"), Value(text));
}

TEST_P(AdoContract, KeepsTheDigitsOfALongDecimal) {
    run("CREATE TABLE #NUMERI (A DECIMAL(18, 2) NULL)");
    const auto insert = command("INSERT INTO #NUMERI (A) VALUES (?)");
    auto parameter = insert->CreateParameter("@A", ado::adNumeric, ado::adParamInput, 0,
                                             Value(Decimal{-123456789012345678, 2}));
    parameter.Precision(18);
    parameter.NumericScale(2);
    insert->Parameters().Append(parameter);
    insert->Execute();
    EXPECT_EQ(scalar("SELECT A FROM #NUMERI").toText(), "-1234567890123456.78");
}

TEST_P(AdoContract, ComparesTextBlindToCaseAndTrailingBlanks) {
    makeDetail(1);
    EXPECT_EQ(scalar("SELECT COUNT(*) FROM #D WHERE CAUSALE = 'vend    '").toInteger(), 1);
    const auto select = command("SELECT COUNT(*) FROM #D WHERE CONTO = ?");
    select->Parameters().Append(select->CreateParameter("@CONTO", ado::adWChar, ado::adParamInput, 6, "c1"));
    EXPECT_EQ(select->Execute()->Fields()[0].Value().toInteger(), 1);
}

TEST_P(AdoContract, BindsMarkersInTheOrderOfTheParameters) {
    makeDetail(3);
    const auto update = command("UPDATE #D SET CONTO = ?, PERC = ? WHERE CAUSALE = ? AND PROG = ?");
    update->Parameters().Append(update->CreateParameter("@Z", ado::adWChar, ado::adParamInput, 6, "NUOVO"));
    auto perc = update->CreateParameter("@P", ado::adNumeric, ado::adParamInput, 0, Value(33.33));
    perc.Precision(5);
    perc.NumericScale(2);
    update->Parameters().Append(perc);
    update->Parameters().Append(update->CreateParameter("@C", ado::adWChar, ado::adParamInput, 4, "VEND"));
    update->Parameters().Append(update->CreateParameter("@A", ado::adSmallInt, ado::adParamInput, 0, 2));
    std::int64_t affected = 0;
    update->Execute(&affected);
    EXPECT_EQ(affected, 1);
    EXPECT_EQ(stored(), "1:C1 2:NUOVO 3:C3");
    EXPECT_EQ(scalar("SELECT PERC FROM #D WHERE CONTO = 'NUOVO'").toText(), "33.33");
}

TEST_P(AdoContract, BindsParametersOfAnUnpreparedText) {
    makeDetail(2);
    const auto remove = command("DELETE FROM #D WHERE CONTO = ?", false);
    remove->Parameters().Append(remove->CreateParameter("@CONTO", ado::adWChar, ado::adParamInput, 6, "C1"));
    remove->Execute();
    EXPECT_EQ(stored(), "2:C2");
    EXPECT_EQ(recording->log().prepareCount(), 0U);
}

TEST_P(AdoContract, BindsANullToAMarker) {
    makeDetail(1);
    const auto update = command("UPDATE #D SET CONTO = ? WHERE CAUSALE = 'VEND'");
    update->Parameters().Append(
        update->CreateParameter("@CONTO", ado::adWChar, ado::adParamInput, 6, Value()));
    update->Execute();
    EXPECT_TRUE(scalar("SELECT CONTO FROM #D WHERE CAUSALE = 'VEND'").isNull());
}

TEST_P(AdoContract, TakesAQuestionMarkInATextForNoMarker) {
    makeDetail(1);
    const auto update = command("UPDATE #D SET CONTO = '?' /* ? */ WHERE CAUSALE = ? -- ?");
    update->Parameters().Append(
        update->CreateParameter("@CAUSALE", ado::adWChar, ado::adParamInput, 4, "VEND"));
    update->Execute();
    EXPECT_EQ(stored(), "1:?");
}

TEST_P(AdoContract, RefusesATextWithMoreMarkersThanParameters) {
    makeDetail(1);
    const auto remove = command("DELETE FROM #D WHERE CONTO = ? AND PROG = ?");
    remove->Parameters().Append(remove->CreateParameter("@CONTO", ado::adWChar, ado::adParamInput, 6, "C1"));
    EXPECT_THROW(remove->Execute(), ado::AdoError);
    EXPECT_FALSE(connection->Errors().empty());
    EXPECT_EQ(stored(), "1:C1");
}

TEST_P(AdoContract, ExecutesAPreparedCommandManyTimes) {
    makeDetail(0);
    const auto insert = command("INSERT INTO #D (CAUSALE, PROG, SEGNO, CONTO) VALUES ('VEND', ?, 1, ?)");
    auto prog = insert->CreateParameter("@PROG", ado::adNumeric);
    prog.Precision(3);
    insert->Parameters().Append(prog);
    insert->Parameters().Append(insert->CreateParameter("@CONTO", ado::adWChar, ado::adParamInput, 6));
    for (int i = 1; i <= 300; ++i) {
        insert->Parameters()["@PROG"].Value(i);
        insert->Parameters()["@CONTO"].Value("N" + std::to_string(i));
        insert->Execute(nullptr, ado::adExecuteNoRecords);
    }
    EXPECT_EQ(scalar("SELECT COUNT(*) FROM #D WHERE CAUSALE = 'VEND'").toInteger(), 300);
    EXPECT_EQ(recording->log().prepareCount(), 1U);
}

TEST_P(AdoContract, GoesOnWithAPreparedCommandAfterItFailed) {
    makeDetail(1);
    const auto insert = command("INSERT INTO #D (CAUSALE, PROG, SEGNO) VALUES ('VEND', ?, 1)");
    insert->Parameters().Append(insert->CreateParameter("@PROG", ado::adInteger, ado::adParamInput, 0, 1));
    EXPECT_THROW(insert->Execute(), ado::AdoError);
    expectReported(2627);
    insert->Parameters()[0].Value(2);
    insert->Execute();
    EXPECT_TRUE(connection->Errors().empty());
    EXPECT_EQ(stored(), "1:C1 2:");
    EXPECT_EQ(recording->log().prepareCount(), 1U);
}

TEST_P(AdoContract, GoesOnWithAPreparedCommandAfterItsTableWasMadeAnew) {
    run("CREATE TABLE #R (CONTO NCHAR(6) NOT NULL)");
    run("INSERT INTO #R (CONTO) VALUES ('UNO')");
    const auto select = command("SELECT * FROM #R WHERE CONTO = ?");
    select->Parameters().Append(select->CreateParameter("@CONTO", ado::adWChar, ado::adParamInput, 6, "UNO"));
    EXPECT_EQ(select->Execute()->RecordCount(), 1);
    run("DROP TABLE #R");
    EXPECT_THROW(select->Execute(), ado::AdoError);
    run("CREATE TABLE #R (CONTO NCHAR(6) NOT NULL)");
    run("INSERT INTO #R (CONTO) VALUES ('UNO')");
    run("INSERT INTO #R (CONTO) VALUES ('DUE')");
    EXPECT_EQ(select->Execute()->RecordCount(), 1);
}

TEST_P(AdoContract, ExecutesABatchAndReturnsItsFirstResult) {
    makeDetail(2);
    const auto recordset =
        query("UPDATE #D SET SEGNO = 2 WHERE CAUSALE = 'VEND'\r\nSELECT COUNT(*) FROM #D WHERE SEGNO = 2");
    ASSERT_EQ(recordset->State(), ado::adStateOpen);
    EXPECT_EQ(recordset->Fields()[0].Value().toInteger(), 2);
}

TEST_P(AdoContract, ReportsAnErrorInALaterStatementOfABatch) {
    makeDetail(1);
    EXPECT_THROW(
        run("UPDATE #D SET SEGNO = 2\r\nINSERT INTO #D (CAUSALE, PROG, SEGNO) VALUES ('VEND', 1, 1)"),
        ado::AdoError);
    expectReported(2627);
}

TEST_P(AdoContract, ReportsErrorsUnderTheNumbersOfTheServer) {
    makeDetail(1);
    expectFailure("SELECT * FROM #ASSENTE", 208);
    expectFailure("SELECT ASSENTE FROM #D", 207);
    expectFailure("SELECT 1 + )", 102);
    expectFailure("SELECT FROM WHERE", 156);
    expectFailure("CREATE TABLE #D (A INT NULL)", 2714);
    expectFailure("INSERT INTO #D (CAUSALE, PROG, SEGNO) VALUES ('VEND', 1, 1)", 2627);
    expectFailure("INSERT INTO #D (CAUSALE, PROG) VALUES ('VEND', 2)", 515);
    expectFailure("INSERT INTO #D (CAUSALE, PROG, SEGNO) VALUES ('VEND', 12345, 1)", 8115);
    expectFailure("INSERT INTO #D (CAUSALE, PROG, SEGNO) VALUES ('LUNGA', 2, 1)", 8152);
    expectFailure("SELECT 1 / 0", 8134);
    expectFailure("DROP TABLE #ASSENTE", 3701);
    EXPECT_EQ(stored(), "1:C1");
}

TEST_P(AdoContract, StaysUsableAfterEveryFailure) {
    makeDetail(1);
    for (const char* text : {"SELECT * FROM #ASSENTE", "SELECT FROM WHERE",
                             "INSERT INTO #D (CAUSALE, PROG, SEGNO) VALUES ('VEND', 1, 1)", "SELECT 1 / 0"}) {
        EXPECT_THROW(connection->Execute(text), ado::AdoError) << text;
        EXPECT_EQ(stored(), "1:C1") << text;
        EXPECT_TRUE(connection->Errors().empty());
    }
}

TEST_P(AdoContract, UndoesAStatementThatFailsHalfWay) {
    makeDetail(3);
    EXPECT_THROW(run("UPDATE #D SET PROG = 3 WHERE CAUSALE = 'VEND'"), ado::AdoError);
    EXPECT_EQ(stored(), "1:C1 2:C2 3:C3");
}

TEST_P(AdoContract, CommitsAndRollsBack) {
    makeDetail(2);
    connection->BeginTrans();
    run("DELETE FROM #D WHERE PROG = 1");
    connection->RollbackTrans();
    EXPECT_EQ(stored(), "1:C1 2:C2");
    connection->BeginTrans();
    run("DELETE FROM #D WHERE PROG = 1");
    connection->CommitTrans();
    EXPECT_EQ(stored(), "2:C2");
}

TEST_P(AdoContract, RollsBackAfterAStatementOfTheTransactionFailed) {
    makeDetail(2);
    connection->BeginTrans();
    run("DELETE FROM #D WHERE PROG = 1");
    EXPECT_THROW(run("INSERT INTO #D (CAUSALE, PROG, SEGNO) VALUES ('VEND', 2, 1)"), ado::AdoError);
    try {
        connection->RollbackTrans();
    } catch (const ado::AdoError&) {
        // A server that has rolled back by itself says so; the rows must be there all the same.
    }
    EXPECT_EQ(stored(), "1:C1 2:C2");
    connection->BeginTrans();
    run("DELETE FROM #D WHERE PROG = 2");
    connection->CommitTrans();
    EXPECT_EQ(stored(), "1:C1");
}

TEST_P(AdoContract, RollsBackWhatASessionLeavesOpen) {
    run("CREATE TABLE VLDCT_TAB (COD INT NOT NULL PRIMARY KEY)");
    auto second = secondConnection();
    second->BeginTrans();
    second->Execute("INSERT INTO VLDCT_TAB (COD) VALUES (1)");
    second.reset();
    EXPECT_EQ(scalar("SELECT COUNT(*) FROM VLDCT_TAB").toInteger(), 0);
}

TEST_P(AdoContract, ShowsPermanentRowsToOtherSessionsAndTemporaryTablesToNone) {
    run("CREATE TABLE VLDCT_TAB (COD INT NOT NULL PRIMARY KEY)");
    run("INSERT INTO VLDCT_TAB (COD) VALUES (7)");
    makeDetail(1);
    const auto second = secondConnection();
    EXPECT_EQ(second->Execute("SELECT COD FROM VLDCT_TAB")->Fields()[0].Value().toInteger(), 7);
    EXPECT_THROW(second->Execute("SELECT * FROM #D"), ado::AdoError);
    second->Execute("CREATE TABLE #D (A INT NULL)");
    EXPECT_EQ(stored(), "1:C1");
}

TEST_P(AdoContract, ForgetsTemporaryTablesWithTheirSession) {
    makeDetail(1);
    connection->Close();
    connection->Open();
    makeDetail(2);
    EXPECT_EQ(stored(), "1:C1 2:C2");
}

TEST_P(AdoContract, NumbersTheRowsOfASelectInto) {
    makeDetail(3);
    run("SELECT IDENTITY(INT, 1, 1) AS INDICE, PROG AS PROG, CONTO AS CONTO INTO #N FROM #D WHERE CAUSALE = "
        "'VEND' ORDER BY PROG DESC");
    const auto recordset = query("SELECT INDICE, PROG FROM #N ORDER BY INDICE ASC");
    EXPECT_EQ(recordset->Fields()["INDICE"].Value().toInteger(), 1);
    EXPECT_EQ(recordset->Fields()["PROG"].Value().toInteger(), 3);
    EXPECT_EQ(recordset->RecordCount(), 3);
}

TEST_P(AdoContract, DescribesAndCallsAProcedureByParameterNames) {
    if (!database->hasProcedures()) {
        GTEST_SKIP() << "the database has no procedures in T-SQL";
    }
    run("CREATE PROCEDURE VLDCT_PROC @CONTO NCHAR(10), @PERC DECIMAL(5, 2), @ON BIT AS "
        "SELECT @CONTO AS CONTO, @PERC AS PERC, @ON AS ATTIVO");
    const auto call = command("VLDCT_PROC", false);
    call->CommandType(ado::adCmdStoredProc);
    call->Parameters()["@ON"].Value(true);
    call->Parameters()["@PERC"].Value(33.33);
    call->Parameters()["@CONTO"].Value("0102030405");
    if (database->tellsParameterSizes()) {
        EXPECT_EQ(call->Parameters()["@PERC"].Precision(), 5);
        EXPECT_EQ(call->Parameters()["@PERC"].NumericScale(), 2);
        EXPECT_EQ(call->Parameters()["@CONTO"].Size(), 10);
    }
    const auto recordset = call->Execute();
    EXPECT_EQ(recordset->Fields()["CONTO"].Value(), Value("0102030405"));
    EXPECT_EQ(recordset->Fields()["PERC"].Value().toText(), "33.33");
    EXPECT_TRUE(recordset->Fields()["ATTIVO"].Value().toBool());
    EXPECT_EQ(recording->log().containing("VLDCT_PROC").at(1).how, Sent::Describe);
}

TEST_P(AdoContract, ReportsAProcedureThatIsNotThereOrLacksAParameter) {
    if (!database->hasProcedures()) {
        GTEST_SKIP() << "the database has no procedures in T-SQL";
    }
    const auto call = command("VLDCT_PROC", false);
    call->CommandType(ado::adCmdStoredProc);
    EXPECT_THROW(call->Execute(), ado::AdoError);
    expectReported(2812);
    run("CREATE PROCEDURE VLDCT_PROC @A INT, @B INT AS SELECT @A + @B AS C");
    call->Parameters()["@A"].Value(1);
    EXPECT_THROW(call->Execute(), ado::AdoError);
    expectReported(201);
    call->Parameters()["@B"].Value(2);
    EXPECT_EQ(call->Execute()->Fields()[0].Value().toInteger(), 3);
}

} // namespace
} // namespace veldran::test
