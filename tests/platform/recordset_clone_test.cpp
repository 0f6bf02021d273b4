#include "tests/platform/recordset_fixture.h"

namespace veldran::test {
namespace {

using CloneTest = RecordsetTest;

TEST_F(CloneTest, StandsOnTheFirstRecordAndMovesByItself) {
    fill({2, 1, 1});
    const auto recordset = opened();
    recordset->MoveLast();
    const auto clone = recordset->Clone();
    EXPECT_EQ(clone->AbsolutePosition(), 1);
    clone->MoveNext();
    EXPECT_EQ(clone->AbsolutePosition(), 2);
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
    EXPECT_TRUE(recording->log().messages().empty());
}

TEST_F(CloneTest, HasAFilterOfItsOwn) {
    fill({2, 1, 1});
    const auto recordset = opened();
    recordset->Filter("SEGNO = 1");
    const auto clone = recordset->Clone();
    EXPECT_EQ(clone->RecordCount(), 3);
    clone->Filter("SEGNO = 2");
    EXPECT_EQ(clone->RecordCount(), 1);
    EXPECT_EQ(recordset->RecordCount(), 2);
}

TEST_F(CloneTest, SharesItsBookmarks) {
    fill({2, 1, 1});
    const auto recordset = opened();
    const auto clone = recordset->Clone();
    clone->Filter("PROG = 3");
    recordset->Bookmark(clone->Bookmark());
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
    EXPECT_TRUE(recordset->Bookmark() == clone->Bookmark());
}

TEST_F(CloneTest, SeesAValueAtOnceEvenBeforeTheUpdate) {
    fill({2});
    const auto recordset = opened();
    const auto clone = recordset->Clone();
    put(*recordset, "CONTO", "NUOVO");
    EXPECT_EQ(get(*clone, "CONTO"), Value("NUOVO "));
    recordset->CancelUpdate();
    EXPECT_EQ(get(*clone, "CONTO"), Value("C00001"));
}

TEST_F(CloneTest, CountsThePendingNewRecordAsTheLastOne) {
    fill({2, 1});
    const auto recordset = opened();
    const auto clone = recordset->Clone();
    recordset->AddNew();
    put(*recordset, "SEGNO", 1);
    EXPECT_EQ(clone->RecordCount(), 3);
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
    clone->MoveLast();
    EXPECT_EQ(get(*clone, "SEGNO"), number(1));
    EXPECT_EQ(clone->EditMode(), ado::adEditNone);
    recordset->CancelUpdate();
    EXPECT_EQ(clone->RecordCount(), 2);
    EXPECT_ADO_ERROR(get(*clone, "SEGNO"), ado::adErrNoCurrentRecord);
    clone->MovePrevious();
    EXPECT_EQ(get(*clone, "PROG"), number(2));
}

TEST_F(CloneTest, SeesDeletionsAtOnce) {
    fill({2, 1, 1});
    const auto recordset = opened();
    const auto clone = recordset->Clone();
    clone->MoveNext();
    recordset->MoveNext();
    recordset->Delete();
    EXPECT_EQ(clone->RecordCount(), 2);
    EXPECT_ADO_ERROR(get(*clone, "PROG"), ado::adErrNoCurrentRecord);
    EXPECT_EQ(clone->AbsolutePosition(), ado::adPosUnknown);
    clone->MoveNext();
    EXPECT_EQ(get(*clone, "PROG"), number(3));
}

TEST_F(CloneTest, RenumbersTheSharedRowsWithoutMovingTheOther) {
    fill({2, 1, 1, 1});
    const auto recordset = opened();
    recordset->MoveNext();
    recordset->Delete();
    recordset->MoveLast();
    const auto clone = recordset->Clone();
    std::int64_t prog = 0;
    for (clone->MoveFirst(); !clone->EndOfFile(); clone->MoveNext()) {
        put(*clone, "PROG", number(++prog));
    }
    EXPECT_EQ(get(*recordset, "PROG"), number(3));
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
    EXPECT_EQ(shown(*recordset), "1:C00001 2:C00003 3:C00004");
}

TEST_F(CloneTest, JoinsAnEditThatAnotherCursorBegan) {
    fill({2});
    const auto recordset = opened();
    const auto clone = recordset->Clone();
    put(*recordset, "CONTO", "NUOVO");
    put(*clone, "SEGNO", 1);
    EXPECT_EQ(clone->EditMode(), ado::adEditNone);
    recordset->CancelUpdate();
    EXPECT_EQ(get(*clone, "SEGNO"), number(2));
    EXPECT_EQ(get(*clone, "CONTO"), Value("C00001"));
}

TEST_F(CloneTest, LeavesItsEditBehindCancelledWhenItIsLetGo) {
    fill({2});
    const auto recordset = opened();
    {
        const auto clone = recordset->Clone();
        put(*clone, "CONTO", "NUOVO");
    }
    EXPECT_EQ(get(*recordset, "CONTO"), Value("C00001"));
    EXPECT_EQ(recordset->Status(), ado::adRecUnmodified);
}

TEST_F(CloneTest, LivesOnWhenTheOtherIsClosedAndKeepsWhatIsPending) {
    fill({2, 1});
    auto recordset = opened();
    const auto clone = recordset->Clone();
    put(*recordset, "CONTO", "NUOVO");
    recordset->Update();
    recordset->Close();
    recordset.reset();
    EXPECT_EQ(shown(*clone), "1:NUOVO 2:C00002");
    clone->UpdateBatch();
    EXPECT_EQ(stored(), "1:NUOVO 2:C00002");
}

TEST_F(CloneTest, KeepsItsRowsWhenTheOtherIsRequeried) {
    fill({2, 1});
    const auto recordset = opened();
    const auto clone = recordset->Clone();
    rows().pop_back();
    recordset->Requery();
    EXPECT_EQ(recordset->RecordCount(), 1);
    EXPECT_EQ(clone->RecordCount(), 2);
    EXPECT_ADO_ERROR(recordset->Bookmark(clone->Bookmark()), ado::adErrInvalidArgument);
}

TEST_F(CloneTest, MayBeReadOnly) {
    fill({2});
    const auto recordset = opened();
    const auto clone = recordset->Clone(ado::adLockReadOnly);
    EXPECT_ADO_ERROR(put(*clone, "SEGNO", 1), ado::adErrFeatureNotAvailable);
    EXPECT_EQ(recordset->Clone()->LockType(), ado::adLockBatchOptimistic);
}

TEST_F(CloneTest, IsRefusedByAClosedRecordset) {
    ado::Recordset recordset;
    EXPECT_ADO_ERROR(recordset.Clone(), ado::adErrObjectClosed);
}

} // namespace
} // namespace veldran::test
