// The list of the causali: its columns, its rows, and what clicks and keys on it do.
#include "tests/screen/correlation_areas.h"

namespace veldran::test {

namespace {

using controls::ListView;

/// What the list asks of the clipboard, in order.
class ClipboardRecorder final : public AppuntiCausali {
public:
    bool CorrelazioneInSospeso() const override { return pending; }
    void AttivazioneCopiaList() override { calls.push_back("copy"); }
    void AttivazioneTagliaList() override { calls.push_back("cut"); }
    void IncollaCorrelazioneList() override { calls.push_back("paste"); }
    void PopupListMenu(const ListView::Item& row, int x, int y, const controls::Control* anchor) override {
        calls.push_back("menu of " + row->Text() +
                        (anchor != nullptr ? " beside " + anchor->Name()
                                           : " at " + std::to_string(x) + ", " + std::to_string(y)));
    }
    void CorrelazioneEliminata() override { calls.push_back("deleted"); }

    Texts calls;
    bool pending = false;
};

Chart withThree() {
    Chart chart = withStored();
    store(chart, editedAccount, "GIRO", {{"2", "50.00"}});
    store(chart, editedAccount, "VEND", {{"2", "10.00"}, {"1", "20.00"}});
    return chart;
}

/// The list with the recorder in the clipboard's place; its events reach the routines as in the form.
class CausaliList : public ::testing::Test {
protected:
    explicit CausaliList(const Chart& chart = withThree()) : areas(chart) {
        areas.areas->lista.UsaAppunti(&clipboard);
        connect(list().ItemClick.subscribe(
            [this](controls::ListItem& row) { lista().LST_CAUSALI_ItemClick(row); }));
        connect(list().MouseDown.subscribe(
            [this](const controls::MouseEvent& event) { lista().LST_CAUSALI_MouseDown(event); }));
        connect(
            list().KeyDown.subscribe([this](controls::KeyEvent& key) { lista().LST_CAUSALI_KeyDown(key); }));
        areas.enter();
        list().SetFocus();
    }

    void connect(Subscription event) { events.push_back(std::move(event)); }
    ListView& list() { return areas.controls().LST_CAUSALI; }
    ListaCausali& lista() { return areas.areas->lista; }
    FrameCorrelazioni& frame() { return areas.areas->frame; }
    std::string shown() { return frame().CausaleCorrente(); }
    std::string selected() { return list().SelectedItem() ? list().SelectedItem()->Text() : ""; }
    std::deque<services::MessageBoxAnswer>& answers() { return areas.work.messages->answers; }
    std::size_t boxes() { return areas.work.messages->boxes.size(); }

    void click(const std::string& causale) {
        for (std::size_t i = 0; i < list().Items().size(); ++i) {
            if (list().Items()[i]->Text() == causale) {
                list().SelectFromView(i);
            }
        }
    }
    /// Rows of 20 pixels stand under each other; a point of the list in twips is 15 by 12 to a pixel.
    void showRows() {
        list().SetHitTester([this](int, int y) {
            const int row = y / 20;
            return row < static_cast<int>(list().Items().size())
                       ? controls::ListHit{row, controls::listHitLabel}
                       : controls::ListHit{};
        });
    }
    void pressButton(int button, int row) {
        list().MouseDownFromView({button, controls::shiftNone, 10 * 15, (row * 20 + 5) * 12});
    }
    void rightClick(int row) { pressButton(controls::buttonRight, row); }
    bool key(int code, int shift = controls::shiftNone) { return list().KeyDownFromView(code, shift); }
    void changeTheFirstRow(const char* percentage = "99") {
        areas.controls().TXT_PERC.TypeFromView(percentage);
        areas.controls().TXT_PERC.LeaveFromView();
        ASSERT_TRUE(frame().Testata()->IsRecordChanged());
    }

    ClipboardRecorder clipboard;
    CorrelationAreas areas;
    std::vector<Subscription> events;
};

class EmptyCausaliList : public CausaliList {
protected:
    EmptyCausaliList() : CausaliList(costChart()) {}
};

TEST_F(CausaliList, SetsItsColumnsOnceAndLeavesThemToTheUserThen) {
    EXPECT_EQ(list().Columns()[0].width, 550);
    EXPECT_EQ(list().Columns()[1].width, 3600 - 550);
    list().SetColumnWidth(0, 900);
    list().SetColumnWidth(1, 1234);
    list().SetWidth(6000);
    lista().CaricamentoListaCausali();
    EXPECT_EQ(list().Columns()[0].width, 900);
    EXPECT_EQ(list().Columns()[1].width, 1234);
}

TEST_F(EmptyCausaliList, HasNoRowNoIndexAndNoSelection) {
    EXPECT_TRUE(list().Items().empty());
    EXPECT_TRUE(lista().IndiceCausali().empty());
    EXPECT_EQ(list().SelectedItem(), nullptr);
    EXPECT_TRUE(areas.errors().empty());
}

TEST_F(CausaliList, HoldsCodeDescriptionAndTagWithoutTrailingBlanksUnderAKeyInAsterisks) {
    ASSERT_EQ(list().Items().size(), 3U);
    Texts rows;
    for (const auto& row : list().Items()) {
        rows.push_back(row->Key() + "|" + row->Text() + "|" + row->SubItem(0) + "|" + row->Tag());
        EXPECT_EQ(lista().IndiceCausali().at(row->Key()), row);
    }
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows,
              (Texts{"*ACQ*|ACQ|Acquisti|ACQ", "*GIRO*|GIRO|Giroconto|GIRO", "*VEND*|VEND|Vendite|VEND"}));
    EXPECT_EQ(lista().IndiceCausali().size(), 3U);
}

TEST_F(CausaliList, TakesCodesThatDifferInTrailingBlanksForOne) {
    EXPECT_EQ(lista().RigaDi("ACQ "), lista().RigaDi("ACQ"));
    lista().Aggiungi("ACQ ", "Acquisti");
    EXPECT_EQ(list().Items().size(), 3U);
    lista().Rimuovi("ACQ ");
    EXPECT_EQ(list().Items().size(), 2U);
    EXPECT_EQ(lista().RigaDi("ACQ"), nullptr);
}

TEST_F(CausaliList, KeepsItsIndexWithItsRows) {
    lista().Aggiungi("NUOV", "Nuova");
    EXPECT_EQ(lista().RigaDi("NUOV"), list().Find("*NUOV*"));
    EXPECT_EQ(lista().RigaDi("NUOV")->SubItem(0), "Nuova");
    EXPECT_EQ(lista().RigaDi("NUOV")->Tag(), "NUOV");
    lista().Rimuovi("ACQ");
    EXPECT_EQ(list().Find("*ACQ*"), nullptr);
    EXPECT_EQ(clipboard.calls, Texts{"deleted"});
    const auto before = lista().RigaDi("VEND");
    lista().CaricamentoListaCausali();
    EXPECT_EQ(lista().IndiceCausali().size(), 3U);
    EXPECT_NE(lista().RigaDi("VEND"), before);
    EXPECT_FALSE(before->IsInList());
    EXPECT_EQ(list().SelectedItem(), nullptr) << "a reload selects no row";
}

TEST_F(CausaliList, MovesTheHeaderToTheClickedRow) {
    click("VEND");
    EXPECT_EQ(shown(), "VEND");
    EXPECT_EQ(selected(), "VEND");
    EXPECT_EQ(areas.controls().GRD_DETTAGLIO.RowCount(), 2U);
    click("ACQ");
    EXPECT_EQ(shown(), "ACQ");
    EXPECT_TRUE(areas.errors().empty());
}

TEST_F(CausaliList, AnswersTrueForNoRowAndForARowThatTheHeaderDoesNotHave) {
    lista().Aggiungi("NUOV", "Nuova");
    areas.screen.forget();
    EXPECT_TRUE(lista().ChangeItem(nullptr));
    EXPECT_TRUE(lista().ChangeItem(lista().RigaDi("NUOV")));
    EXPECT_EQ(shown(), "ACQ");
    EXPECT_TRUE(areas.screen.sent().empty()) << "the header is where it was";
}

TEST_F(CausaliList, TakesTheHighlightBackWhenTheUserStaysWithHisChanges) {
    click("VEND");
    changeTheFirstRow("9");
    answers() = {services::answerCancel};
    click("GIRO");
    EXPECT_EQ(shown(), "VEND");
    EXPECT_EQ(selected(), "VEND");
    EXPECT_EQ(boxes(), 1U) << "going back asks nothing";
    answers() = {services::answerNo};
    click("GIRO");
    EXPECT_EQ(shown(), "GIRO");
    EXPECT_EQ(selected(), "GIRO");
}

TEST_F(CausaliList, TakesTheHighlightBackBeforeAnyRowWasClicked) {
    changeTheFirstRow();
    answers() = {services::answerCancel};
    click("VEND");
    EXPECT_EQ(shown(), "ACQ");
    EXPECT_EQ(selected(), "ACQ");
}

TEST_F(CausaliList, AsksOnceWhenTheUserStaysWithANewCorrelation) {
    click("VEND");
    areas.controls().INV_TESTATA.Press("Nuovo");
    areas.controls().TXT_CAUSALE.TypeFromView("PAG");
    areas.controls().TXT_CAUSALE.LeaveFromView();
    list().SetFocus();
    answers() = {services::answerCancel};
    click("GIRO");
    EXPECT_EQ(boxes(), 1U) << "going back asks nothing";
    EXPECT_EQ(shown(), "PAG");
    EXPECT_EQ(selected(), "VEND");
}

TEST_F(CausaliList, TakesTheHighlightBackWhenTheChangesAreNotValid) {
    areas.controls().GNV_DETTAGLIO.Press("Nuovo");
    areas.controls().CBO_SEGNO.SetListIndex(0); // a second origin
    areas.controls().TXT_PERC.TypeFromView("1");
    answers() = {services::answerYes};
    list().SetFocus();
    click("VEND");
    EXPECT_EQ(shown(), "ACQ");
    EXPECT_EQ(selected(), "ACQ");
    ASSERT_EQ(boxes(), 2U);
    EXPECT_EQ(areas.work.messages->boxes[1].title, "Controllo correlazione");
}

TEST_F(CausaliList, IgnoresSelectionsMadeWhileAnotherControlHasTheFocus) {
    areas.controls().GRD_DETTAGLIO.SetFocus();
    list().SetSelectedItem(lista().RigaDi("VEND"));
    EXPECT_EQ(shown(), "ACQ");
    list().SetFocus();
    list().SelectFromView(0);
    list().SetSelectedItem(lista().RigaDi("VEND"));
    EXPECT_EQ(shown(), "VEND");
}

TEST_F(CausaliList, FollowsTheHeaderThatItsNavigatorMovesAndComesBackByAClick) {
    click("ACQ");
    areas.controls().INV_TESTATA.PressFromView("Ultimo");
    const std::string last = shown();
    ASSERT_NE(last, "ACQ");
    EXPECT_EQ(selected(), last);
    list().SetFocus();
    click("ACQ");
    EXPECT_EQ(shown(), "ACQ");
    EXPECT_EQ(selected(), "ACQ");
    areas.controls().INV_TESTATA.PressFromView("Ultimo");
    changeTheFirstRow("9");
    answers() = {services::answerCancel};
    list().SetFocus();
    click("ACQ");
    EXPECT_EQ(shown(), last);
    EXPECT_EQ(selected(), last) << "the highlight is on the causale still shown";
}

TEST_F(CausaliList, OpensItsMenuWhereTheRightButtonWasPressed) {
    showRows();
    rightClick(1);
    const std::string second = list().Items()[1]->Text();
    EXPECT_EQ(shown(), second);
    EXPECT_EQ(selected(), second);
    EXPECT_EQ(clipboard.calls, Texts{"menu of " + second + " at 150, 300"});
}

TEST_F(CausaliList, TakesAHitOfIndexNoughtForTheFirstRowWhateverItsFlags) {
    click("VEND");
    list().SetHitTester([](int, int) { return controls::ListHit{0, controls::listHitNowhere}; });
    rightClick(7);
    const std::string first = list().Items()[0]->Text();
    EXPECT_EQ(shown(), first);
    EXPECT_EQ(clipboard.calls, Texts{"menu of " + first + " at 150, 1740"});
}

TEST_F(EmptyCausaliList, OpensNoMenuForARightClick) {
    list().SetHitTester([](int, int) { return controls::ListHit{0, controls::listHitNowhere}; });
    rightClick(0);
    EXPECT_TRUE(clipboard.calls.empty());
    EXPECT_TRUE(areas.errors().empty());
}

TEST_F(CausaliList, OpensTheMenuOfTheSelectedRowWithoutMovingTheHeader) {
    showRows();
    const std::string first = list().Items()[0]->Text();
    click(first);
    areas.screen.forget();
    rightClick(0);
    EXPECT_TRUE(areas.screen.sent().empty());
    EXPECT_EQ(clipboard.calls, Texts{"menu of " + first + " at 150, 60"});
}

TEST_F(CausaliList, OpensNoMenuBelowItsLastRowNorForTheLeftButton) {
    showRows();
    const std::string before = shown();
    rightClick(3);
    pressButton(controls::buttonLeft, 1);
    pressButton(controls::buttonMiddle, 1);
    EXPECT_TRUE(clipboard.calls.empty());
    EXPECT_EQ(shown(), before);
}

TEST_F(CausaliList, OpensNoMenuWhenTheHeaderRefusesToMove) {
    showRows();
    click(list().Items()[0]->Text());
    const std::string before = shown();
    changeTheFirstRow("9");
    answers() = {services::answerCancel};
    list().SetFocus();
    rightClick(2);
    EXPECT_TRUE(clipboard.calls.empty());
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(selected(), before);
}

TEST_F(CausaliList, GoesToTheRowsWithEnterAndSwallowsTheKey) {
    click("ACQ");
    EXPECT_TRUE(key(controls::keyReturn));
    EXPECT_TRUE(areas.controls().GRD_DETTAGLIO.HasFocus());
}

TEST_F(CausaliList, GoesToTheSignWithEnterWhereThereAreNoRowsYet) {
    answers() = {services::answerYes};
    click("GIRO");
    areas.controls().GNV_DETTAGLIO.Press("Elimina");
    ASSERT_EQ(areas.controls().GRD_DETTAGLIO.RowCount(), 0U);
    list().SetFocus();
    EXPECT_TRUE(key(controls::keyReturn));
    EXPECT_TRUE(areas.controls().CBO_SEGNO.HasFocus());
}

TEST_F(CausaliList, LeavesEnterWithAnotherKeyToItsView) {
    click("ACQ");
    for (const int shift : {controls::shiftShift, controls::shiftCtrl, controls::shiftAlt}) {
        EXPECT_FALSE(key(controls::keyReturn, shift));
        EXPECT_TRUE(list().HasFocus());
    }
}

TEST_F(CausaliList, DoesNothingForAnyKeyWithoutASelectedRow) {
    list().SetSelectedItem(nullptr);
    clipboard.pending = true;
    EXPECT_FALSE(key(controls::keyReturn));
    EXPECT_FALSE(key(controls::keyApps));
    EXPECT_FALSE(key(controls::keyF10, controls::shiftShift));
    for (const int letter : {controls::keyC, controls::keyX, controls::keyV}) {
        EXPECT_FALSE(key(letter, controls::shiftCtrl));
    }
    EXPECT_TRUE(clipboard.calls.empty());
    EXPECT_TRUE(list().HasFocus());
}

TEST_F(CausaliList, OpensItsMenuBesideItselfWithTheMenuKeys) {
    click("VEND");
    key(controls::keyApps);
    key(controls::keyApps, controls::shiftCtrl);
    key(controls::keyF10, controls::shiftShift);
    EXPECT_EQ(clipboard.calls, Texts(3, "menu of VEND beside LST_CAUSALI"));
    key(controls::keyF10);
    key(controls::keyF10, controls::shiftCtrl);
    EXPECT_EQ(clipboard.calls.size(), 3U);
}

TEST_F(CausaliList, CopiesCutsAndPastesWithTheControlKey) {
    click("VEND");
    key(controls::keyC, controls::shiftCtrl);
    key(controls::keyX, controls::shiftCtrl);
    key(controls::keyV, controls::shiftCtrl);
    EXPECT_EQ(clipboard.calls, (Texts{"copy", "cut"})) << "nothing waits to be pasted";
    clipboard.pending = true;
    key(controls::keyV, controls::shiftCtrl);
    EXPECT_EQ(clipboard.calls, (Texts{"copy", "cut", "paste"}));
    EXPECT_TRUE(list().HasFocus());
}

TEST_F(CausaliList, HasNoOtherShortcuts) {
    click("VEND");
    clipboard.pending = true;
    for (const int shift : std::vector<int>{controls::shiftNone, controls::shiftShift, controls::shiftAlt,
                                            controls::shiftCtrl + controls::shiftShift}) {
        for (const int letter : {controls::keyC, controls::keyX, controls::keyV}) {
            EXPECT_FALSE(key(letter, shift));
        }
    }
    EXPECT_FALSE(key(controls::keyDelete));
    EXPECT_FALSE(key(controls::keyDelete, controls::shiftCtrl));
    EXPECT_TRUE(clipboard.calls.empty());
    EXPECT_EQ(list().Items().size(), 3U);
}

TEST_F(CausaliList, StandsAsItIsWhenLoadingFails) {
    const auto before = list().Items();
    areas.screen.failures().failContaining("FNCI03_CAUSALI");
    lista().CaricamentoListaCausali();
    EXPECT_EQ(areas.labels(), Texts{"CaricamentoListaCausali:"});
    EXPECT_EQ(list().Items(), before);
    EXPECT_EQ(lista().IndiceCausali().size(), 3U);
    lista().CaricamentoListaCausali();
    EXPECT_EQ(areas.errors().size(), 1U);
}

} // namespace

} // namespace veldran::test
