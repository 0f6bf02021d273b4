#include "tests/frames/frame_fixture.h"

namespace veldran::test {
namespace {

using namespace frames;

class FrameBindings : public FrameTest {};

TEST_F(FrameBindings, ShowTheCurrentRecordInEveryControl) {
    lookups.descriptions = {{"C1", "Cassa"}, {"C2", "Banca"}};
    open(2);
    EXPECT_EQ(form.sign.Text(), "Avere");
    EXPECT_EQ(form.percentage.Text(), "10.00");
    EXPECT_EQ(form.account.Text(), "C1");
    EXPECT_EQ(form.description.Caption(), "Cassa");
    frame->MoveNext();
    EXPECT_EQ(form.sign.Text(), "Dare");
    EXPECT_EQ(form.account.Text(), "C2");
    EXPECT_EQ(form.description.Caption(), "Banca");
    EXPECT_EQ(form.grid.CurrentRow(), 1U);
}

TEST_F(FrameBindings, ShowingARecordIsNoChangeOfTheUser) {
    open(2);
    int events = 0;
    const auto clicks = form.sign.Click.subscribe([&] { ++events; });
    const auto changes = form.percentage.Change.subscribe([&] { ++events; });
    const auto texts = form.account.Change.subscribe([&] { ++events; });
    const auto items = form.account.AfterItem.subscribe([&] { ++events; });
    frame->MoveNext();
    EXPECT_EQ(events, 0);
    EXPECT_EQ(frame->Status(), statusBrowsing);
    EXPECT_FALSE(frame->HasPendingRow());
}

TEST_F(FrameBindings, WriteTheFieldBeforeAnybodyElseHearsOfTheChange) {
    open(1);
    Lines seen;
    const auto clicks =
        form.sign.Click.subscribe([&] { seen.push_back("segno " + value("SEGNO").toText()); });
    const auto changes =
        form.percentage.Change.subscribe([&] { seen.push_back("perc " + value("PERCENTUALE").toText()); });
    const auto items =
        form.account.AfterItem.subscribe([&] { seen.push_back("conto " + nullSafeText(value("CONTO"))); });
    form.sign.ChooseFromView(1);
    form.percentage.TypeFromView("33,333");
    form.percentage.LeaveFromView();
    typeAccount("C5");
    EXPECT_EQ(seen, (Lines{"segno 1", "perc 33.33", "conto C5"}));
}

TEST_F(FrameBindings, WriteNullForWhatTheUserEmpties) {
    open(1);
    typeAccount("");
    form.percentage.TypeFromView("");
    form.percentage.LeaveFromView();
    form.sign.SetListIndex(-1);
    EXPECT_TRUE(value("CONTO").isNull());
    EXPECT_TRUE(value("PERCENTUALE").isNull());
    EXPECT_TRUE(value("SEGNO").isNull());
}

TEST_F(FrameBindings, BeginANewRecordWhenTheUserTypesWhereThereIsNone) {
    open(0);
    const auto defaults = frame->AfterAddNew.subscribe([&](bool success) {
        ASSERT_TRUE(success);
        frame->Recordset()->Fields()["SEGNO"].Value(2);
    });
    form.account.TypeFromView("C");
    EXPECT_EQ(log->taken(), (Lines{"BeforeAddNew", "AfterAddNew", "0->2"}));
    EXPECT_EQ(form.account.Text(), "C");
    EXPECT_EQ(form.sign.Text(), "Avere");
    form.account.TypeFromView("C1");
    form.account.LeaveFromView();
    EXPECT_EQ(nullSafeText(value("CONTO")), "C1");
    EXPECT_TRUE(frame->HasNewRow());
    EXPECT_TRUE(told->boxes.empty());
}

TEST_F(FrameBindings, ChoosingASignWhereThereIsNoRecordOverridesTheDefaultOfTheNewOne) {
    open(0);
    const auto defaults =
        frame->AfterAddNew.subscribe([&](bool) { frame->Recordset()->Fields()["SEGNO"].Value(2); });
    form.sign.ChooseFromView(1);
    EXPECT_EQ(value("SEGNO").toInt32(), 1);
    EXPECT_EQ(form.sign.Text(), "Dare");
    EXPECT_EQ(frame->Recordset()->RecordCount(), 1);
}

TEST_F(FrameBindings, AreEmptyAgainWhenTheNewRecordIsRefused) {
    open(0);
    log->refused = "BeforeAddNew";
    form.account.TypeFromView("C1");
    EXPECT_EQ(form.account.Text(), "");
    form.percentage.TypeFromView("5");
    form.percentage.LeaveFromView();
    EXPECT_EQ(form.percentage.Text(), "");
    form.sign.ChooseFromView(0);
    EXPECT_EQ(form.sign.ListIndex(), -1);
    EXPECT_FALSE(frame->HasRecords());
    EXPECT_EQ(frame->Status(), statusBrowsing);
}

TEST_F(FrameBindings, KeepWhatWasTypedWhenTheColumnRefusesIt) {
    open(2);
    form.percentage.TypeFromView("1234,5");
    form.percentage.LeaveFromView();
    ASSERT_EQ(told->boxes.size(), 1U);
    EXPECT_EQ(told->boxes[0].text.find("Il valore «1234.50» non è ammesso nel campo «% ripartizione».\r\n"),
              0U);
    EXPECT_EQ(told->boxes[0].title, "Attenzione");
    EXPECT_EQ(form.percentage.Text(), "1234,5");
    EXPECT_EQ(value("PERCENTUALE").toText(), "10.00");
    typeAccount("TROPPOLUNGO");
    EXPECT_EQ(form.account.Text(), "TROPPOLUNGO");
    EXPECT_EQ(told->boxes.size(), 2U);
    EXPECT_EQ(nullSafeText(value("CONTO")), "C1");
}

TEST_F(FrameBindings, DoNotLetARecordBeSavedOrLeftOverATextThatIsNoValue) {
    open(2, ado::adLockOptimistic, LeavePolicy::Save);
    form.percentage.TypeFromView("12x");
    log->taken();
    EXPECT_FALSE(frame->Update());
    EXPECT_FALSE(frame->MoveNext());
    EXPECT_EQ(boxes(), (Lines{"«12x» non è un numero: correggere il campo «% ripartizione».",
                              "«12x» non è un numero: correggere il campo «% ripartizione»."}));
    EXPECT_TRUE(log->lines.empty());
    EXPECT_TRUE(form.percentage.HasFocus());
    EXPECT_EQ(form.percentage.Text(), "12x");
    EXPECT_TRUE(frame->Undo());
    EXPECT_EQ(form.percentage.Text(), "10.00");
    EXPECT_TRUE(frame->MoveNext());
}

TEST_F(FrameBindings, KeepWhatIsBeingTypedWhenTheRecordIsShownAgain) {
    open(1);
    form.percentage.TypeFromView("12");
    frame->Recordset()->Fields()["CONTO"].Value(Value());
    frame->Refresh();
    EXPECT_EQ(form.account.Text(), "");
    EXPECT_EQ(form.percentage.Text(), "12");
    EXPECT_EQ(gridColumn(0), (Lines{""}));
}

TEST_F(FrameBindings, ShowValuesThatTheComboDoesNotOfferAsNoChoice) {
    open(1);
    database.run("UPDATE #RIGHE SET SEGNO = 7");
    frame->Requery();
    EXPECT_EQ(form.sign.ListIndex(), -1);
    EXPECT_EQ(value("SEGNO").toInt32(), 7);
}

TEST_F(FrameBindings, ReportALookupThatFailsAndShowTheRecordAllTheSame) {
    open(2);
    lookups.failure = simulatedFailure("elenco guasto");
    EXPECT_TRUE(frame->MoveNext());
    EXPECT_EQ(log->failures.size(), 1U);
    EXPECT_EQ(form.account.Text(), "C2");
    EXPECT_EQ(form.sign.Text(), "Dare");
    EXPECT_EQ(form.grid.CurrentRow(), 1U);
}

TEST_F(FrameBindings, KeepTheCodeOfALookupThatFailsWhileSaving) {
    open(1);
    lookups.failure = simulatedFailure("elenco guasto");
    form.account.TypeFromView("C8");
    EXPECT_TRUE(frame->Update());
    EXPECT_GE(log->failures.size(), 1U);
    EXPECT_EQ(database.stored(), "1:C8");
}

TEST_F(FrameBindings, LeaveControlsAloneOnceTheFrameIsClosed) {
    open(1);
    frame->Close();
    EXPECT_EQ(form.account.Text(), "");
    form.sign.ChooseFromView(1);
    EXPECT_EQ(form.sign.Text(), "Dare");
    typeAccount("C3");
    EXPECT_EQ(form.account.Text(), "C3");
    EXPECT_TRUE(told->boxes.empty());
}

} // namespace
} // namespace veldran::test
