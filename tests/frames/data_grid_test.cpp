#include "tests/frames/frame_fixture.h"

#include <stdexcept>

namespace veldran::test {
namespace {

using namespace frames;

class GridOfAFrame : public FrameTest {
protected:
    GridOfAFrame() {
        format = std::make_shared<controls::DataFormat>();
        kept.push_back(format->Format.subscribe([this](Value& shown) {
            ++formatted;
            if (!shown.isNull()) {
                shown = Value("*" + nullSafeText(shown));
            }
        }));
        form.grid.SetColumnFormat(0, format);
    }

    std::shared_ptr<controls::DataFormat> format;
    int formatted = 0;
    std::vector<Subscription> kept;
};

TEST_F(GridOfAFrame, ShowsEveryRowThroughItsFormats) {
    open(3);
    EXPECT_EQ(gridColumn(0), (Lines{"*C1", "*C2", "*C3"}));
    EXPECT_EQ(gridColumn(1), (Lines{"10.00", "10.00", "10.00"}));
    EXPECT_EQ(nullSafeText(value("CONTO")), "C1");
}

TEST_F(GridOfAFrame, FormatsEachRowOnceHoweverOftenItIsPainted) {
    open(3);
    gridColumn(0);
    gridColumn(0);
    gridColumn(1);
    EXPECT_EQ(formatted, 3);
    frame->MoveNext();
    frame->MoveLast();
    gridColumn(0);
    EXPECT_EQ(formatted, 3);
}

TEST_F(GridOfAFrame, FormatsOnlyTheRowThatChanged) {
    open(3);
    gridColumn(0);
    formatted = 0;
    std::size_t row = 99;
    kept.push_back(form.grid.RowChanged.subscribe([&](std::size_t changed) { row = changed; }));
    frame->MoveNext();
    typeAccount("C9");
    EXPECT_EQ(row, 1U);
    EXPECT_EQ(gridColumn(0), (Lines{"*C1", "*C9", "*C3"}));
    EXPECT_EQ(formatted, 1);
    frame->Undo();
    EXPECT_EQ(gridColumn(0), (Lines{"*C1", "*C2", "*C3"}));
    EXPECT_EQ(formatted, 2);
}

TEST_F(GridOfAFrame, ReadsARowWhenItIsFirstLookedAt) {
    open(3);
    EXPECT_EQ(form.grid.CellText(0, 0), "*C1");
    for (const char* account : {"C7", "C8", "C9"}) {
        frame->Recordset()->Fields()["CONTO"].Value(account);
        frame->Recordset()->MoveNext();
    }
    EXPECT_EQ(gridColumn(0), (Lines{"*C1", "*C8", "*C9"}));
    form.grid.Refresh();
    EXPECT_EQ(gridColumn(0), (Lines{"*C7", "*C8", "*C9"}));
    EXPECT_EQ(formatted, 4);
}

TEST_F(GridOfAFrame, TellsItsViewNothingOfARowThatWasNeverLookedAt) {
    open(3);
    gridColumn(0);
    frame->Requery();
    EXPECT_EQ(form.grid.CellText(1, 0), "*C2");
    Lines seen;
    kept.push_back(form.grid.RowChanged.subscribe(
        [&](std::size_t row) { seen.push_back("row " + std::to_string(row)); }));
    for (const char* account : {"C7", "C8", "C9"}) {
        frame->Recordset()->Fields()["CONTO"].Value(account);
        frame->Recordset()->MoveNext();
    }
    form.grid.Refresh();
    EXPECT_EQ(seen, (Lines{"row 1"}));
}

TEST_F(GridOfAFrame, ShowsNothingInARowThatCanNoLongerBeRead) {
    open(2);
    EXPECT_EQ(form.grid.CellText(0, 0), "*C1");
    database.connection->Close();
    EXPECT_EQ(gridColumn(0), (Lines{"*C1", ""}));
}

TEST_F(GridOfAFrame, TellsItsViewNoMoreThanWhatHasChanged) {
    open(3);
    gridColumn(0);
    Lines seen;
    kept.push_back(form.grid.RowsChanged.subscribe([&] { seen.push_back("rows"); }));
    kept.push_back(form.grid.RowChanged.subscribe(
        [&](std::size_t row) { seen.push_back("row " + std::to_string(row)); }));
    kept.push_back(form.grid.CurrentChanged.subscribe([&] { seen.push_back("current"); }));
    frame->MoveNext();
    EXPECT_EQ(seen, (Lines{"current"}));
    seen.clear();
    typeAccount("C9");
    frame->Update();
    EXPECT_EQ(seen, (Lines{"row 1"}));
    seen.clear();
    frame->Recordset()->Fields()["CONTO"].Value("C8");
    frame->Refresh();
    EXPECT_EQ(seen, (Lines{"row 1"}));
    seen.clear();
    frame->Undo();
    frame->AddNew();
    EXPECT_EQ(seen, (Lines{"row 1", "rows", "current"}));
}

TEST_F(GridOfAFrame, ShowsAPendingNewRowAndLosesADeletedOne) {
    open(3);
    gridColumn(0);
    formatted = 0;
    addRow("4", "C4");
    EXPECT_EQ(gridColumn(0), (Lines{"*C1", "*C2", "*C3", "*C4"}));
    EXPECT_EQ(form.grid.CurrentRow(), 3U);
    frame->Undo();
    frame->MoveFirst();
    told->answers = {services::answerYes};
    frame->Delete();
    EXPECT_EQ(gridColumn(0), (Lines{"*C2", "*C3"}));
    EXPECT_EQ(form.grid.CurrentRow(), 0U);
    EXPECT_EQ(formatted, 1);
}

TEST_F(GridOfAFrame, FormatsEverythingAgainWithAnotherFormat) {
    open(2);
    gridColumn(0);
    form.grid.SetColumnFormat(0, nullptr);
    EXPECT_EQ(gridColumn(0), (Lines{"C1", "C2"}));
}

TEST_F(GridOfAFrame, ShowsTheStoredValueWhereAFormatFails) {
    open(1);
    int failures = 0;
    kept.push_back(form.grid.FormatFailed.subscribe([&](const std::exception&) { ++failures; }));
    kept.push_back(format->Format.subscribe([](Value&) { throw std::runtime_error("formato"); }));
    EXPECT_EQ(gridColumn(0), (Lines{"C1"}));
    EXPECT_EQ(gridColumn(0), (Lines{"C1"}));
    EXPECT_EQ(failures, 1);
}

TEST_F(GridOfAFrame, IsEmptyWhereTheRecordSetLacksTheColumn) {
    form.grid.AddColumn("Altro", "ALTRO", 100);
    open(1);
    EXPECT_EQ(gridColumn(2), (Lines{""}));
    EXPECT_THROW(form.grid.CellText(0, 3), std::out_of_range);
    EXPECT_THROW(form.grid.CellText(1, 0), std::out_of_range);
    EXPECT_THROW(form.grid.RowBookmark(1), std::out_of_range);
}

TEST_F(GridOfAFrame, MovesTheFrameWithTheUser) {
    open(3);
    EXPECT_TRUE(form.grid.MoveFromView(2));
    EXPECT_EQ(prog(), "3");
    EXPECT_EQ(form.grid.CurrentRow(), 2U);
    EXPECT_TRUE(form.grid.MoveFromView(2));
    EXPECT_EQ(log->taken(), (Lines{"0->0"}));
    EXPECT_FALSE(form.grid.MoveFromView(3));
    form.grid.SetEnabled(false);
    EXPECT_FALSE(form.grid.MoveFromView(0));
}

TEST_F(GridOfAFrame, SavesTheRowThatTheUserLeaves) {
    open(3, ado::adLockBatchOptimistic, LeavePolicy::Save);
    form.sign.ChooseFromView(1);
    log->taken();
    EXPECT_TRUE(form.grid.MoveFromView(1));
    EXPECT_EQ(log->taken(), (Lines{"BeforeUpdate", "AfterUpdate", "7->0", "0->0"}));
}

TEST_F(GridOfAFrame, GoesBackWhenTheRowCannotBeLeft) {
    open(3, ado::adLockBatchOptimistic, LeavePolicy::Save);
    form.sign.ChooseFromView(1);
    log->refused = "BeforeUpdate";
    int wentBack = 0;
    kept.push_back(form.grid.CurrentChanged.subscribe([&] { ++wentBack; }));
    EXPECT_FALSE(form.grid.MoveFromView(1));
    EXPECT_EQ(form.grid.CurrentRow(), 0U);
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(wentBack, 1);
}

TEST_F(GridOfAFrame, ShowsNothingOnceItsFrameIsGone) {
    open(2);
    frame.reset();
    EXPECT_EQ(form.grid.RowCount(), 0U);
    EXPECT_FALSE(form.grid.HasDataSource());
    EXPECT_EQ(form.grid.CurrentRow(), std::nullopt);
}

TEST_F(GridOfAFrame, ShowsNoRowsOnceTheConnectionIsClosed) {
    open(2);
    database.connection->Close();
    form.grid.Refresh();
    EXPECT_EQ(form.grid.RowCount(), 0U);
}

} // namespace
} // namespace veldran::test
