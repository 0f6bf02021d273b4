#include "tests/frames/frame_fixture.h"

#include <stdexcept>
#include <utility>

namespace veldran::test {
namespace {

using namespace frames;

class NavigatorOfAFrame : public FrameTest {
protected:
    const controls::FrameNavigator& bar() const { return form.navigator; }
};

TEST_F(NavigatorOfAFrame, FollowsPositionAndStatus) {
    open(3);
    EXPECT_EQ(bar().PositionText(), "1 di 3");
    EXPECT_EQ(enabledButtons(), (Lines{"Successivo", "Ultimo", "Nuovo", "Elimina"}));
    frame->MoveNext();
    EXPECT_EQ(bar().PositionText(), "2 di 3");
    EXPECT_EQ(enabledButtons(), (Lines{"Primo", "Precedente", "Successivo", "Ultimo", "Nuovo", "Elimina"}));
    frame->MoveLast();
    EXPECT_EQ(enabledButtons(), (Lines{"Primo", "Precedente", "Nuovo", "Elimina"}));
}

TEST_F(NavigatorOfAFrame, OffersToConfirmAndToUndoWhileSomethingIsChanged) {
    open(1);
    EXPECT_EQ(enabledButtons(), (Lines{"Nuovo", "Elimina"}));
    form.account.TypeFromView("C9");
    EXPECT_EQ(enabledButtons(), (Lines{"Nuovo", "Conferma", "Annulla", "Elimina"}));
    frame->Update();
    EXPECT_EQ(enabledButtons(), (Lines{"Nuovo", "Elimina"}));
}

TEST_F(NavigatorOfAFrame, OffersToGiveANewRecordUpAndToConfirmItOnceItHasContent) {
    open(0);
    EXPECT_EQ(bar().PositionText(), "0 di 0");
    EXPECT_EQ(enabledButtons(), (Lines{"Nuovo"}));
    frame->AddNew();
    EXPECT_EQ(bar().PositionText(), "1 di 1");
    EXPECT_EQ(enabledButtons(), (Lines{"Nuovo", "Annulla"}));
    typeAccount("C1");
    EXPECT_EQ(enabledButtons(), (Lines{"Nuovo", "Conferma", "Annulla"}));
}

TEST_F(NavigatorOfAFrame, OffersNoChangeOfARecordSetThatIsReadOnly) {
    open(2, ado::adLockReadOnly);
    EXPECT_EQ(enabledButtons(), (Lines{"Successivo", "Ultimo"}));
}

TEST_F(NavigatorOfAFrame, NamesWhatItSavesAndDeletes) {
    open(1);
    EXPECT_EQ(bar().Button("Conferma").toolTipText, "Salva la riga");
    EXPECT_EQ(bar().Button("Elimina").toolTipText, "Elimina la riga");
}

TEST_F(NavigatorOfAFrame, DoesWhatItsButtonsSay) {
    open(3);
    auto& navigator = form.navigator;
    Lines after;
    const auto kept = navigator.AfterButtonClick.subscribe(
        [&](bool success, const std::string& key) { after.push_back(key + (success ? "" : " refused")); });
    EXPECT_TRUE(navigator.Press("Successivo"));
    EXPECT_EQ(prog(), "2");
    EXPECT_TRUE(navigator.Press("Ultimo"));
    EXPECT_EQ(prog(), "3");
    EXPECT_TRUE(navigator.Press("Precedente"));
    EXPECT_TRUE(navigator.Press("Primo"));
    EXPECT_EQ(prog(), "1");
    typeAccount("C9");
    EXPECT_TRUE(navigator.Press("Annulla"));
    EXPECT_EQ(form.account.Text(), "C1");
    typeAccount("C8");
    EXPECT_TRUE(navigator.Press("Conferma"));
    EXPECT_EQ(database.stored(), "1:C8 2:C2 3:C3");
    told->answers = {services::answerYes};
    EXPECT_TRUE(navigator.Press("Elimina"));
    EXPECT_EQ(database.stored(), "2:C2 3:C3");
    EXPECT_TRUE(navigator.PressFromView("Nuovo"));
    EXPECT_EQ(frame->Status(), statusAddingNew);
    EXPECT_TRUE(navigator.Press("Nuovo"));
    EXPECT_EQ(after, (Lines{"Successivo", "Ultimo", "Precedente", "Primo", "Annulla", "Conferma", "Elimina",
                            "Nuovo", "Nuovo"}));
}

TEST_F(NavigatorOfAFrame, TellsARefusal) {
    open(2);
    log->refused = "BeforeAddNew";
    bool answered = true;
    const auto kept = form.navigator.AfterButtonClick.subscribe(
        [&](bool success, const std::string&) { answered = success; });
    EXPECT_FALSE(form.navigator.Press("Nuovo"));
    EXPECT_FALSE(answered);
}

TEST_F(NavigatorOfAFrame, OffersNothingOnceTheFrameIsClosedOrGone) {
    open(2);
    frame->Close();
    EXPECT_TRUE(enabledButtons().empty());
    EXPECT_EQ(bar().PositionText(), "");
    open(0);
    EXPECT_FALSE(enabledButtons().empty());
    frame.reset();
    EXPECT_TRUE(enabledButtons().empty());
    EXPECT_FALSE(form.navigator.Press("Nuovo"));
}

TEST_F(NavigatorOfAFrame, FollowsTheChangesOfTheDetail) {
    open(1);
    RowsForm other;
    VirtualFrame header(messages, "la correlazione");
    header.Open("SELECT DISTINCT CAUSALE FROM #RIGHE", database.connection, ado::adLockReadOnly);
    header.Bind(other.navigator);
    const auto kept = header.RecordChanged.subscribe(
        [&](bool& changed) { changed = changed || frame->HasChangedRow() || frame->HasNewRow(); });
    header.Follow(*frame);
    EXPECT_FALSE(other.navigator.Button("Conferma").enabled);
    form.sign.ChooseFromView(1);
    EXPECT_TRUE(other.navigator.Button("Conferma").enabled);
    EXPECT_TRUE(other.navigator.Button("Annulla").enabled);
    frame->Undo();
    EXPECT_FALSE(other.navigator.Button("Conferma").enabled);
}

TEST_F(NavigatorOfAFrame, IsToldAgainAfterAViewHasFailed) {
    open(3);
    bool broken = true;
    const auto view = form.navigator.Changed.subscribe([&] {
        if (std::exchange(broken, false)) {
            throw std::runtime_error("vista");
        }
    });
    EXPECT_THROW(frame->MoveLast(), std::runtime_error);
    EXPECT_FALSE(bar().Button("Precedente").enabled);
    frame->Refresh();
    EXPECT_EQ(enabledButtons(), (Lines{"Primo", "Precedente", "Nuovo", "Elimina"}));
}

} // namespace
} // namespace veldran::test
