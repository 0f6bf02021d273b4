#include "tests/support/ado_contract.h"
#include "tests/support/ado_expect.h"

#include <algorithm>
#include <map>
#include <random>

namespace veldran::test {
namespace {

/// The tests of writing recordsets need a driver that tells base tables and keys.
#define REQUIRE_BASE_TABLES()                                                                                \
    if (!database->describesBaseTables()) {                                                                  \
        GTEST_SKIP() << "the driver does not tell base tables";                                              \
    }

TEST_P(AdoContract, ReadsABatchRecordsetWithItsKey) {
    REQUIRE_BASE_TABLES()
    makeDetail(2);
    const auto recordset = openDetail();
    EXPECT_EQ(shown(*recordset), "1:C1 2:C2");
    EXPECT_TRUE(recordset->Fields()["CAUSALE"].info().key);
    EXPECT_TRUE(recordset->Fields()["PROG"].info().key);
    EXPECT_FALSE(recordset->Fields()["SEGNO"].info().key);
    EXPECT_FALSE(recordset->Fields()["SEGNO"].info().nullable);
    EXPECT_TRUE(recordset->Fields()["PERC"].info().nullable);
    EXPECT_FALSE(recordset->Fields()["PERC"].info().baseTable.empty());
}

TEST_P(AdoContract, WritesChangedNewAndDeletedRowsInOneBatch) {
    REQUIRE_BASE_TABLES()
    makeDetail(3);
    const auto recordset = openDetail();
    put(*recordset, "CONTO", "UNO");
    put(*recordset, "PERC", Value());
    recordset->MoveNext();
    recordset->Delete();
    addRow(*recordset, 4, "NUOVO");
    EXPECT_EQ(stored(), "1:C1 2:C2 3:C3");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:UNO 3:C3 4:NUOVO");
    EXPECT_TRUE(scalar("SELECT PERC FROM #D WHERE CONTO = 'UNO'").isNull());
    EXPECT_EQ(scalar("SELECT CONTO FROM #D WHERE CAUSALE = 'ALTR'"), Value("ALTRO "));
    recordset->Requery();
    EXPECT_EQ(shown(*recordset), "1:UNO 3:C3 4:NUOVO");
}

TEST_P(AdoContract, WritesIntoARecordsetThatOpenedWithoutRows) {
    REQUIRE_BASE_TABLES()
    makeDetail(0);
    ado::Recordset recordset;
    recordset.Open("SELECT * FROM #D WHERE 1 = 0", connection, ado::adOpenStatic, ado::adLockBatchOptimistic);
    addRow(recordset, 1, "UNO");
    addRow(recordset, 2, "DUE");
    recordset.UpdateBatch();
    EXPECT_EQ(stored(), "1:UNO 2:DUE");
}

TEST_P(AdoContract, WritesIntoAPermanentTable) {
    REQUIRE_BASE_TABLES()
    run("CREATE TABLE VLDCT_TAB (COD INT NOT NULL PRIMARY KEY, DESCR NVARCHAR(20) NULL)");
    run("INSERT INTO VLDCT_TAB (COD, DESCR) VALUES (1, 'uno')");
    ado::Recordset recordset;
    recordset.Open("SELECT DESCR, COD FROM VLDCT_TAB", connection, ado::adOpenStatic,
                   ado::adLockBatchOptimistic);
    EXPECT_TRUE(recordset.Fields()["COD"].info().key);
    put(recordset, "DESCR", "perché");
    recordset.AddNew();
    put(recordset, "COD", 2);
    recordset.UpdateBatch();
    EXPECT_EQ(scalar("SELECT DESCR FROM VLDCT_TAB WHERE COD = 1"), Value("perché"));
    EXPECT_TRUE(scalar("SELECT DESCR FROM VLDCT_TAB WHERE COD = 2").isNull());
}

TEST_P(AdoContract, FindsTheRowsOfAHeaderAtOnceForEachUpdate) {
    REQUIRE_BASE_TABLES()
    run("CREATE TABLE #H (CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL, PRIMARY KEY (CAUSALE))");
    ado::Recordset recordset;
    recordset.Open("SELECT * FROM #H", connection, ado::adOpenStatic, ado::adLockOptimistic);
    for (const char* causale : {"AB", "C"}) {
        recordset.AddNew();
        put(recordset, "CAUSALE", causale);
        recordset.Update();
    }
    EXPECT_EQ(scalar("SELECT COUNT(*) FROM #H").toInteger(), 2);
    recordset.AddNew();
    put(recordset, "CAUSALE", "ab");
    EXPECT_THROW(recordset.Update(), ado::AdoError);
    expectReported(2627);
    EXPECT_EQ(recordset.EditMode(), ado::adEditAdd);
    recordset.CancelUpdate();
    recordset.MoveFirst();
    recordset.Delete();
    EXPECT_EQ(scalar("SELECT CAUSALE FROM #H"), Value("C   "));
}

TEST_P(AdoContract, ClosesTheGapOfADeletedRow) {
    REQUIRE_BASE_TABLES()
    makeDetail(5);
    const auto recordset = openDetail();
    closeGap(*recordset, 2);
    addRow(*recordset, 5, "NUOVO");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:C1 2:C3 3:C4 4:C5 5:NUOVO");
}

TEST_P(AdoContract, SwapsAndRotatesKeys) {
    REQUIRE_BASE_TABLES()
    makeDetail(5);
    const auto recordset = openDetail();
    for (const int prog : {2, 1, 4, 5, 3}) {
        put(*recordset, "PROG", prog);
        recordset->MoveNext();
    }
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:C2 2:C1 3:C5 4:C3 5:C4");
}

TEST_P(AdoContract, RenumbersAnyMixtureOfRowsWithoutCollision) {
    REQUIRE_BASE_TABLES()
    makeDetail(0);
    std::mt19937 random(7);
    for (int round = 0; round < 20; ++round) {
        run("DELETE FROM #D WHERE CAUSALE = 'VEND'");
        for (int prog = 1; prog <= 6; ++prog) {
            run("INSERT INTO #D (CAUSALE, PROG, SEGNO, CONTO) VALUES ('VEND', " + std::to_string(prog) +
                ", 1, 'C" + std::to_string(prog) + "')");
        }
        const auto recordset = openDetail();
        std::vector<int> progs{1, 2, 3, 4, 5, 6, 7, 8};
        std::shuffle(progs.begin(), progs.end(), random);
        std::map<int, std::string> expected;
        for (std::size_t i = 0; !recordset->EndOfFile(); recordset->MoveNext(), ++i) {
            if (random() % 4 == 0) {
                recordset->Delete();
            } else {
                put(*recordset, "PROG", progs[i]);
                expected[progs[i]] = nullSafeText(get(*recordset, "CONTO"));
            }
        }
        addRow(*recordset, progs[6], "NUOVO");
        expected[progs[6]] = "NUOVO";
        std::string text;
        for (const auto& [prog, conto] : expected) {
            text += (text.empty() ? "" : " ") + std::to_string(prog) + ":" + conto;
        }
        ASSERT_NO_THROW(recordset->UpdateBatch());
        ASSERT_EQ(stored(), text);
    }
}

TEST_P(AdoContract, LeavesTableAndPendingRowsAsTheyWereWhicheverStatementOfABatchFails) {
    REQUIRE_BASE_TABLES()
    makeDetail(0);
    int statements = 0;
    for (int n = 0; n <= statements; ++n) {
        run("DELETE FROM #D WHERE CAUSALE = 'VEND'");
        for (int prog = 1; prog <= 4; ++prog) {
            run("INSERT INTO #D (CAUSALE, PROG, SEGNO, CONTO) VALUES ('VEND', " + std::to_string(prog) +
                ", 1, 'C" + std::to_string(prog) + "')");
        }
        const auto recordset = openDetail();
        closeGap(*recordset, 2);
        addRow(*recordset, 4, "NUOVO");
        if (n == 0) { // counts the statements of a batch that succeeds
            failing->plan().restartCount();
            recordset->UpdateBatch();
            statements = failing->plan().statementCount();
            ASSERT_GE(statements, 6);
        } else {
            failing->plan().failStatement(n);
            EXPECT_ADO_ERROR(recordset->UpdateBatch(), 50000);
            EXPECT_EQ(stored(), "1:C1 2:C2 3:C3 4:C4") << "statement " << n;
            EXPECT_EQ(shown(*recordset), "1:C1 2:C3 3:C4 4:NUOVO");
            EXPECT_FALSE(connection->inTransaction());
            recordset->UpdateBatch();
        }
        EXPECT_EQ(stored(), "1:C1 2:C3 3:C4 4:NUOVO");
    }
}

TEST_P(AdoContract, UndoesABatchThatTheDatabaseRefuses) {
    REQUIRE_BASE_TABLES()
    makeDetail(2);
    const auto recordset = openDetail();
    put(*recordset, "CONTO", "UNO");
    addRow(*recordset, 2, "DOPPIO");
    EXPECT_THROW(recordset->UpdateBatch(), ado::AdoError);
    expectReported(2627);
    EXPECT_EQ(stored(), "1:C1 2:C2");
    put(*recordset, "PROG", 3);
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:UNO 2:C2 3:DOPPIO");
}

TEST_P(AdoContract, NoticesARowThatSomebodyElseChangedOrDeleted) {
    REQUIRE_BASE_TABLES()
    makeDetail(3);
    const auto recordset = openDetail();
    put(*recordset, "CONTO", "UNO");
    recordset->MoveNext();
    put(*recordset, "CONTO", "DUE");
    recordset->Update();
    run("UPDATE #D SET CONTO = 'ALTRI' WHERE CAUSALE = 'VEND' AND PROG = 2");
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrConcurrencyViolation);
    EXPECT_EQ(stored(), "1:C1 2:ALTRI 3:C3");
    run("DELETE FROM #D WHERE CAUSALE = 'VEND' AND PROG = 2");
    EXPECT_ADO_ERROR(recordset->UpdateBatch(), ado::adErrConcurrencyViolation);
    EXPECT_EQ(stored(), "1:C1 3:C3");
}

TEST_P(AdoContract, FindsRowsWhoseOldValuesAreNull) {
    REQUIRE_BASE_TABLES()
    makeDetail(1);
    run("UPDATE #D SET PERC = NULL, CONTO = NULL WHERE CAUSALE = 'VEND'");
    const auto recordset = openDetail();
    put(*recordset, "CONTO", "UNO");
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "1:UNO");
    recordset->Delete();
    recordset->UpdateBatch();
    EXPECT_EQ(stored(), "");
}

TEST_P(AdoContract, WritesABatchInsideTheCallersTransaction) {
    REQUIRE_BASE_TABLES()
    makeDetail(2);
    const auto recordset = openDetail();
    put(*recordset, "CONTO", "UNO");
    connection->BeginTrans();
    recordset->UpdateBatch();
    EXPECT_TRUE(connection->inTransaction());
    EXPECT_EQ(stored(), "1:UNO 2:C2");
    connection->RollbackTrans();
    EXPECT_EQ(stored(), "1:C1 2:C2");
}

TEST_P(AdoContract, TellsIdentityColumnsAndLeavesThemToTheDatabase) {
    REQUIRE_BASE_TABLES()
    run("CREATE TABLE #I (ID INT IDENTITY(1, 1) NOT NULL, COD NCHAR(4) NOT NULL, PRIMARY KEY (COD))");
    ado::Recordset recordset;
    recordset.Open("SELECT * FROM #I", connection, ado::adOpenStatic, ado::adLockBatchOptimistic);
    EXPECT_TRUE(recordset.Fields()["ID"].info().identity);
    for (const char* code : {"A", "B"}) {
        recordset.AddNew();
        put(recordset, "COD", code);
    }
    recordset.UpdateBatch();
    recordset.Requery();
    recordset.Filter("COD = 'B'");
    EXPECT_EQ(get(recordset, "ID").toInteger(), 2);
}

TEST_P(AdoContract, RefusesToWriteComputedColumnsAndRowsWithoutKey) {
    REQUIRE_BASE_TABLES()
    makeDetail(1);
    ado::Recordset computed;
    computed.Open("SELECT CAUSALE, PROG, SEGNO + 1 AS S FROM #D", connection, ado::adOpenStatic,
                  ado::adLockBatchOptimistic);
    put(computed, "S", 5);
    EXPECT_ADO_ERROR(computed.UpdateBatch(), ado::adErrFeatureNotAvailable);
    run("CREATE TABLE #K (A INT NULL)");
    run("INSERT INTO #K (A) VALUES (1)");
    ado::Recordset keyless;
    keyless.Open("SELECT * FROM #K", connection, ado::adOpenStatic, ado::adLockBatchOptimistic);
    put(keyless, "A", 2);
    EXPECT_ADO_ERROR(keyless.UpdateBatch(), ado::adErrFeatureNotAvailable);
    EXPECT_EQ(scalar("SELECT A FROM #K").toInteger(), 1);
}

TEST_P(AdoContract, RefusesToWriteRowsWhoseKeyIsOnlyPartlySelected) {
    REQUIRE_BASE_TABLES()
    makeDetail(2);
    ado::Recordset recordset;
    recordset.Open("SELECT CAUSALE, CONTO FROM #D WHERE CAUSALE = 'VEND'", connection, ado::adOpenStatic,
                   ado::adLockBatchOptimistic);
    put(recordset, "CONTO", "UNO");
    EXPECT_ADO_ERROR(recordset.UpdateBatch(), ado::adErrFeatureNotAvailable);
    EXPECT_EQ(stored(), "1:C1 2:C2");
}

TEST_P(AdoContract, FiltersAndClonesRealRows) {
    makeDetail(4);
    run("UPDATE #D SET SEGNO = 2 WHERE CAUSALE = 'VEND' AND PROG > 2");
    const auto recordset = openDetail();
    const auto clone = recordset->Clone();
    clone->Filter("SEGNO = 2 AND CONTO = 'c4 '");
    EXPECT_EQ(clone->RecordCount(), 1);
    recordset->Bookmark(clone->Bookmark());
    EXPECT_EQ(recordset->AbsolutePosition(), 4);
    EXPECT_EQ(recordset->RecordCount(), 4);
}

TEST_P(AdoContract, ReopensADetailFromAnotherText) {
    makeDetail(2);
    const auto recordset = openDetail();
    recordset->Close();
    recordset->Source("SELECT * FROM #D WHERE CAUSALE = 'ALTR' ORDER BY PROG ASC");
    recordset->Open();
    EXPECT_EQ(shown(*recordset), "1:ALTRO");
    recordset->Close();
    recordset->Source("SELECT * FROM #D WHERE 1 = 0");
    recordset->Open();
    EXPECT_TRUE(recordset->BOF());
    EXPECT_TRUE(recordset->EndOfFile());
}

} // namespace
} // namespace veldran::test
