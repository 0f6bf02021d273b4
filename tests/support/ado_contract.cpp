#include "tests/support/ado_contract.h"

#include "tests/support/ado_expect.h"

namespace veldran::test {

AdoContract::AdoContract() {
    if (!database->whyMissing().empty()) {
        return;
    }
    connection->Open(database->connectionString());
    dropPermanentObjects();
    recording->log().clear();
}

void AdoContract::SetUp() {
    if (const std::string reason = database->whyMissing(); !reason.empty()) {
        GTEST_SKIP() << reason;
    }
}

AdoContract::~AdoContract() {
    if (!database->whyMissing().empty()) {
        return;
    }
    try {
        failing->plan().heal();
        if (connection->State() == ado::adStateClosed) {
            connection->Open();
        }
        if (connection->inTransaction()) {
            connection->RollbackTrans();
        }
        dropPermanentObjects();
    } catch (const ado::AdoError& error) {
        ADD_FAILURE() << "the database could not be cleaned: " << error.what();
    }
}

void AdoContract::dropPermanentObjects() {
    run("IF OBJECT_ID('VLDCT_PROC') IS NOT NULL DROP PROCEDURE VLDCT_PROC");
    run("IF OBJECT_ID('VLDCT_TAB') IS NOT NULL DROP TABLE VLDCT_TAB");
}

std::int64_t AdoContract::run(const std::string& text) {
    std::int64_t affected = -1;
    connection->Execute(text, &affected, ado::adCmdText | ado::adExecuteNoRecords);
    return affected;
}

void AdoContract::expectFailure(const std::string& text, int number) {
    SCOPED_TRACE(text);
    EXPECT_THROW(connection->Execute(text), ado::AdoError);
    expectReported(number);
}

void AdoContract::expectReported(int number) {
    ASSERT_FALSE(connection->Errors().empty());
    const ado::Error& first = connection->Errors().front();
    EXPECT_TRUE(database->isReportOf(first, number))
        << first.Number << " " << first.SQLState << ": " << first.Description << ", expected " << number;
    EXPECT_EQ(first.SQLState.size(), 5U);
    EXPECT_FALSE(first.Description.empty());
    EXPECT_FALSE(first.Source.empty());
}

std::shared_ptr<ado::Connection> AdoContract::secondConnection() {
    auto second = ado::Connection::create(database->driver());
    second->Open(database->connectionString());
    return second;
}

std::shared_ptr<ado::Command> AdoContract::command(const std::string& text, bool prepared) {
    auto created = ado::Command::create();
    created->ActiveConnection(connection);
    created->CommandText(text);
    created->CommandTimeout(0);
    created->Prepared(prepared);
    return created;
}

void AdoContract::makeDetail(int rows) {
    run("CREATE TABLE #D (CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL, PROG DECIMAL(3) NOT NULL, "
        "SEGNO DECIMAL(2) NOT NULL, PERC DECIMAL(5, 2) NULL, CONTO NCHAR(6) COLLATE DATABASE_DEFAULT NULL, "
        "PRIMARY KEY (CAUSALE, PROG))");
    run("INSERT INTO #D (CAUSALE, PROG, SEGNO, PERC, CONTO) VALUES ('ALTR', 1, 1, NULL, 'ALTRO')");
    for (int row = 1; row <= rows; ++row) {
        const std::string prog = std::to_string(row);
        run("INSERT INTO #D (CAUSALE, PROG, SEGNO, PERC, CONTO) VALUES ('VEND', " + prog + ", 1, 10.50, 'C" +
            prog + "')");
    }
}

std::shared_ptr<ado::Recordset> AdoContract::openDetail(ado::LockTypeEnum lock) {
    auto recordset = std::make_shared<ado::Recordset>();
    recordset->Open("SELECT * FROM #D WHERE CAUSALE = 'VEND' ORDER BY PROG ASC", connection,
                    ado::adOpenStatic, lock);
    return recordset;
}

std::string AdoContract::stored() {
    const auto recordset = query("SELECT PROG, CONTO FROM #D WHERE CAUSALE = 'VEND' ORDER BY PROG ASC");
    return shown(*recordset);
}

std::string AdoContract::shown(ado::Recordset& recordset) {
    const auto cursor = recordset.Clone();
    std::string text;
    for (; !cursor->EndOfFile(); cursor->MoveNext()) {
        text += (text.empty() ? "" : " ") + nullSafeText(cursor->Fields()["PROG"].Value()) + ":" +
                nullSafeText(cursor->Fields()["CONTO"].Value());
    }
    return text;
}

void AdoContract::addRow(ado::Recordset& recordset, int prog, const std::string& conto) {
    recordset.AddNew();
    put(recordset, "CAUSALE", "VEND");
    put(recordset, "PROG", prog);
    put(recordset, "SEGNO", 2);
    put(recordset, "CONTO", conto);
    recordset.Update();
}

void AdoContract::closeGap(ado::Recordset& recordset, std::int64_t position) {
    recordset.AbsolutePosition(position);
    recordset.Delete();
    int prog = 0;
    for (recordset.MoveFirst(); !recordset.EndOfFile(); recordset.MoveNext()) {
        put(recordset, "PROG", ++prog);
    }
}

} // namespace veldran::test
