#include "tests/platform/recordset_fixture.h"

namespace veldran::test {
namespace {

using CursorTest = RecordsetTest;

TEST_F(CursorTest, OpensOnItsFirstRecord) {
    fill({2, 1, 1});
    const auto recordset = opened();
    EXPECT_FALSE(recordset->BOF());
    EXPECT_FALSE(recordset->EndOfFile());
    EXPECT_EQ(recordset->AbsolutePosition(), 1);
    EXPECT_EQ(recordset->RecordCount(), 3);
    EXPECT_EQ(recordset->CursorType(), ado::adOpenStatic);
    EXPECT_EQ(recordset->EditMode(), ado::adEditNone);
    EXPECT_EQ(recordset->Status(), ado::adRecUnmodified);
}

TEST_F(CursorTest, IsAtBothEndsWhenEmpty) {
    const auto recordset = opened();
    EXPECT_TRUE(recordset->BOF());
    EXPECT_TRUE(recordset->EndOfFile());
    EXPECT_EQ(recordset->RecordCount(), 0);
    EXPECT_EQ(recordset->AbsolutePosition(), ado::adPosBOF);
}

TEST_F(CursorTest, RefusesEveryMoveWhenEmptyAndReportsIt) {
    const auto recordset = opened();
    EXPECT_ADO_ERROR(recordset->MoveFirst(), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->MoveLast(), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->MoveNext(), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->MovePrevious(), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->Move(0), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->AbsolutePosition(1), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->Bookmark(), ado::adErrNoCurrentRecord);
    EXPECT_EQ(connection->Errors().at(0).Number, ado::adErrNoCurrentRecord);
    EXPECT_EQ(connection->Errors().at(0).SQLState, "HY109");
}

TEST_F(CursorTest, WalksToBothEndsAndRefusesToGoFurther) {
    fill({2, 1});
    const auto recordset = opened();
    recordset->MoveNext();
    EXPECT_EQ(get(*recordset, "PROG"), number(2));
    recordset->MoveNext();
    EXPECT_TRUE(recordset->EndOfFile());
    EXPECT_FALSE(recordset->BOF());
    EXPECT_EQ(recordset->AbsolutePosition(), ado::adPosEOF);
    EXPECT_ADO_ERROR(recordset->MoveNext(), ado::adErrNoCurrentRecord);
    recordset->MovePrevious();
    EXPECT_EQ(get(*recordset, "PROG"), number(2));
    recordset->MoveFirst();
    recordset->MovePrevious();
    EXPECT_TRUE(recordset->BOF());
    EXPECT_FALSE(recordset->EndOfFile());
    EXPECT_ADO_ERROR(recordset->MovePrevious(), ado::adErrNoCurrentRecord);
    recordset->MoveNext();
    EXPECT_EQ(get(*recordset, "PROG"), number(1));
}

TEST_F(CursorTest, MovesByAnyNumberAndStopsAtTheEnds) {
    fill({2, 1, 1, 1, 1});
    const auto recordset = opened();
    recordset->Move(3);
    EXPECT_EQ(recordset->AbsolutePosition(), 4);
    recordset->Move(-2);
    EXPECT_EQ(recordset->AbsolutePosition(), 2);
    recordset->Move(0);
    EXPECT_EQ(recordset->AbsolutePosition(), 2);
    recordset->Move(100);
    EXPECT_TRUE(recordset->EndOfFile());
    recordset->Move(-1);
    EXPECT_EQ(recordset->AbsolutePosition(), 5);
    recordset->Move(-100);
    EXPECT_TRUE(recordset->BOF());
    recordset->Move(2);
    EXPECT_EQ(recordset->AbsolutePosition(), 2);
    const auto second = recordset->Bookmark();
    recordset->MoveLast();
    recordset->Move(1, second);
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
}

TEST_F(CursorTest, GoesToAPositionAndRefusesOneOutside) {
    fill({2, 1, 1});
    const auto recordset = opened();
    recordset->AbsolutePosition(3);
    EXPECT_EQ(get(*recordset, "PROG"), number(3));
    EXPECT_ADO_ERROR(recordset->AbsolutePosition(0), ado::adErrInvalidArgument);
    EXPECT_ADO_ERROR(recordset->AbsolutePosition(4), ado::adErrInvalidArgument);
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
}

TEST_F(CursorTest, ReadsFieldsByIndexAndByNameBlindToCase) {
    fill({2});
    const auto recordset = opened();
    EXPECT_EQ(recordset->Fields().Count(), 5U);
    EXPECT_EQ(recordset->Fields()[1].Value(), number(1));
    EXPECT_EQ(recordset->Fields()["prog"].Value(), number(1));
    const ado::Field& perc = recordset->Fields()["PERC"];
    EXPECT_EQ(perc.Name(), "PERC");
    EXPECT_EQ(perc.Type(), ado::adNumeric);
    EXPECT_EQ(perc.Precision(), 5);
    EXPECT_EQ(perc.NumericScale(), 2);
    EXPECT_EQ(recordset->Fields()["CAUSALE"].DefinedSize(), 4);
    EXPECT_ADO_ERROR(recordset->Fields()["ALTRO"], ado::adErrItemNotFound);
    EXPECT_ADO_ERROR(recordset->Fields()[5], ado::adErrItemNotFound);
    EXPECT_ADO_ERROR(recordset->Fields()[-1], ado::adErrItemNotFound);
}

TEST_F(CursorTest, ReadsNothingWithoutACurrentRecord) {
    fill({2});
    const auto recordset = opened();
    recordset->MoveNext();
    EXPECT_ADO_ERROR(get(*recordset, "PROG"), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->Fields()["PROG"].OriginalValue(), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(put(*recordset, "PROG", 1), ado::adErrNoCurrentRecord);
    EXPECT_ADO_ERROR(recordset->Status(), ado::adErrNoCurrentRecord);
}

TEST_F(CursorTest, ComesBackToABookmark) {
    fill({2, 1, 1});
    const auto recordset = opened();
    recordset->MoveNext();
    const ado::Bookmark second = recordset->Bookmark();
    recordset->MoveLast();
    EXPECT_FALSE(recordset->Bookmark() == second);
    recordset->Bookmark(second);
    EXPECT_EQ(get(*recordset, "PROG"), number(2));
    EXPECT_TRUE(recordset->Bookmark() == second);
}

TEST_F(CursorTest, RefusesABookmarkOfOtherRowsOrOfNone) {
    fill({2, 1});
    const auto recordset = opened();
    const auto other = opened();
    EXPECT_ADO_ERROR(recordset->Bookmark(other->Bookmark()), ado::adErrInvalidArgument);
    EXPECT_ADO_ERROR(recordset->Bookmark(ado::Bookmark()), ado::adErrInvalidArgument);
    const auto old = recordset->Bookmark();
    recordset->Requery();
    EXPECT_ADO_ERROR(recordset->Bookmark(old), ado::adErrInvalidArgument);
}

TEST_F(CursorTest, KeepsBookmarksWhileOtherRowsComeAndGo) {
    fill({2, 1, 1});
    const auto recordset = opened();
    recordset->MoveLast();
    const auto last = recordset->Bookmark();
    recordset->MoveFirst();
    recordset->Delete();
    addRow(*recordset, 9, "NUOVO");
    recordset->Bookmark(last);
    EXPECT_EQ(get(*recordset, "PROG"), number(3));
    EXPECT_EQ(recordset->AbsolutePosition(), 2);
}

TEST_F(CursorTest, ShowsOnlyTheRecordsOfItsFilter) {
    fill({2, 1, 2, 1});
    const auto recordset = opened();
    recordset->MoveLast();
    recordset->Filter("SEGNO = 2");
    EXPECT_EQ(recordset->RecordCount(), 2);
    EXPECT_EQ(recordset->AbsolutePosition(), 1);
    EXPECT_EQ(get(*recordset, "PROG"), number(1));
    recordset->MoveNext();
    EXPECT_EQ(get(*recordset, "PROG"), number(3));
    EXPECT_EQ(recordset->AbsolutePosition(), 2);
    recordset->MoveNext();
    EXPECT_TRUE(recordset->EndOfFile());
    recordset->Filter(ado::adFilterNone);
    EXPECT_EQ(recordset->RecordCount(), 4);
    EXPECT_EQ(recordset->AbsolutePosition(), 1);
}

TEST_F(CursorTest, IsAtBothEndsWhenNothingMeetsItsFilter) {
    fill({1, 1});
    const auto recordset = opened();
    recordset->Filter("SEGNO = 2");
    EXPECT_TRUE(recordset->BOF());
    EXPECT_TRUE(recordset->EndOfFile());
    EXPECT_ADO_ERROR(recordset->MoveFirst(), ado::adErrNoCurrentRecord);
    recordset->Filter("");
    EXPECT_EQ(recordset->RecordCount(), 2);
}

TEST_F(CursorTest, RefusesABookmarkThatItsFilterHides) {
    fill({2, 1});
    const auto recordset = opened();
    const auto first = recordset->Bookmark();
    recordset->Filter("SEGNO = 1");
    EXPECT_ADO_ERROR(recordset->Bookmark(first), ado::adErrInvalidArgument);
}

TEST_F(CursorTest, KeepsItsFilterWhenAnotherOneIsRefused) {
    fill({2, 1});
    const auto recordset = opened();
    recordset->Filter("SEGNO = 1");
    EXPECT_ADO_ERROR(recordset->Filter("SEGNO ="), ado::adErrInvalidArgument);
    EXPECT_EQ(recordset->RecordCount(), 1);
    EXPECT_EQ(std::get<std::string>(recordset->Filter()), "SEGNO = 1");
    EXPECT_EQ(connection->Errors().at(0).Number, ado::adErrInvalidArgument);
}

TEST_F(CursorTest, KeepsItsFilterThroughARequery) {
    fill({2, 1});
    const auto recordset = opened();
    recordset->Filter("SEGNO = 2");
    fill({2});
    recordset->Requery();
    EXPECT_EQ(recordset->RecordCount(), 2);
}

TEST_F(CursorTest, StaysWhereItWasWhenARequeryFails) {
    fill({2, 1});
    const auto recordset = opened();
    recordset->MoveNext();
    failing->plan().failStatement(1);
    EXPECT_ADO_ERROR(recordset->Requery(), 50000);
    EXPECT_EQ(get(*recordset, "PROG"), number(2));
}

TEST_F(CursorTest, IsOpenedAgainFromAnotherText) {
    fill({2, 1});
    memory->database().tables.push_back({"#U", {keyColumn("CAUSALE", ado::adWChar, 4)}, {{Value("AB  ")}}});
    const auto recordset = opened();
    EXPECT_ADO_ERROR(recordset->Source("SELECT * FROM #U"), ado::adErrObjectOpen);
    EXPECT_ADO_ERROR(recordset->LockType(ado::adLockReadOnly), ado::adErrObjectOpen);
    recordset->Close();
    EXPECT_EQ(recordset->State(), ado::adStateClosed);
    recordset->Source("SELECT * FROM #U");
    recordset->Open();
    EXPECT_EQ(recordset->Fields().Count(), 1U);
    EXPECT_EQ(get(*recordset, "causale"), Value("AB  "));
    EXPECT_EQ(recordset->LockType(), ado::adLockBatchOptimistic);
}

TEST_F(CursorTest, RefusesToOpenWithoutSourceOrConnection) {
    ado::Recordset recordset;
    EXPECT_ADO_ERROR(recordset.Open(), ado::adErrInvalidConnection);
    recordset.ActiveConnection(connection);
    EXPECT_ADO_ERROR(recordset.Open(), ado::adErrInvalidArgument);
    EXPECT_ADO_ERROR(recordset.Open(std::shared_ptr<ado::Command>()), ado::adErrInvalidConnection);
    EXPECT_ADO_ERROR(recordset.Open("SELECT * FROM #ASSENTE", connection), 208);
    EXPECT_EQ(recordset.State(), ado::adStateClosed);
    EXPECT_ADO_ERROR(recordset.Close(), ado::adErrObjectClosed);
}

TEST_F(CursorTest, RefusesACursorAtTheServer) {
    ado::Recordset recordset;
    EXPECT_ADO_ERROR(recordset.CursorLocation(ado::adUseServer), ado::adErrFeatureNotAvailable);
    recordset.CursorLocation(ado::adUseClient);
}

TEST_F(CursorTest, OpensFromACommandWithItsParameters) {
    fill({2});
    const auto command = ado::Command::create();
    command->ActiveConnection(connection);
    command->CommandText("SELECT * FROM #T");
    ado::Recordset recordset;
    recordset.Open(command, ado::adOpenStatic, ado::adLockBatchOptimistic);
    EXPECT_EQ(recordset.ActiveCommand(), command);
    EXPECT_EQ(recordset.Source(), "SELECT * FROM #T");
    EXPECT_EQ(recordset.RecordCount(), 1);
    recordset.Fields()["CONTO"].Value("NUOVO");
    recordset.UpdateBatch();
    EXPECT_EQ(stored(), "1:NUOVO");
}

} // namespace
} // namespace veldran::test
