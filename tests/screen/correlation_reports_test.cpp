// What goes wrong in correlation mode beside the database: in a view, in a message box, in the host's
// services. Each failure is reported once, under the routine it happened in, and the editor goes on.
#include "tests/screen/correlation_areas.h"

#include <functional>
#include <ostream>
#include <stdexcept>

namespace veldran::test {

namespace {

namespace keys = controls::navigatorKeys;

const std::string broken = "vista guasta";
const Rows other = {{"2", "30.00"}};

/// What fails in the view, once: everything that follows works.
class BrokenView {
public:
    enum What { Property, Items, Selection, Focus, Lock, Menu };

    BrokenView(controls::Form& form, What what, const char* control) {
        const auto fail = [this](const auto&...) {
            if (!failed_) {
                failed_ = true;
                throw std::runtime_error(broken);
            }
        };
        switch (what) {
        case Property:
            view_ = form.FindControl(control)->Changed.subscribe([fail] { fail(); });
            break;
        case Items:
            view_ = list(form).ItemsChanged.subscribe([fail] { fail(); });
            break;
        case Selection:
            view_ = list(form).SelectionChanged.subscribe([fail] { fail(); });
            break;
        case Focus:
            view_ = form.FocusMoved.subscribe([fail](controls::Control*) { fail(); });
            break;
        case Lock:
            view_ = form.RedrawLocked.subscribe([fail](bool) { fail(); });
            break;
        case Menu:
            view_ = form.PopupRequested.subscribe(
                [fail](controls::PopupMenu&, const controls::PopupPlace&) { fail(); });
            break;
        }
    }

private:
    static controls::ListView& list(controls::Form& form) {
        return dynamic_cast<controls::ListView&>(*form.FindControl("LST_CAUSALI"));
    }

    bool failed_ = false;
    Subscription view_;
};

/// A step of the user during which something that a view shows cannot be shown.
struct Step {
    const char* label; ///< of the one report
    BrokenView::What what;
    const char* control; ///< whose property fails
    std::function<void(Editor&)> before;
    std::function<void(Editor&)> act;
};

void PrintTo(const Step& step, std::ostream* out) {
    *out << step.label;
}

class EditorReports : public EditorTest, public ::testing::WithParamInterface<Step> {
protected:
    EditorReports() {
        Chart chart = withStored();
        open(store(chart, editedAccount, "VEND", other));
    }
    /// The screen still opens, edits and stores the correlations of the account, and closes cleanly.
    void expectWorkingOn() {
        const std::size_t reports = messages().errors.size();
        messages().boxFailure.clear();
        messages().answers.assign(5, services::answerNo);
        if (e().isOpen()) {
            e().toggleMode();
        }
        e().enter();
        if (!e().isOpen()) { // neither mode was shown: the first press has shown the accounts again
            e().toggleMode();
        }
        e().clickCausale("VEND");
        e().typePercentage(0, "12");
        EXPECT_TRUE(e().save());
        EXPECT_EQ(e().stored("VEND"), (Rows{{"2", "12.00"}}));
        EXPECT_EQ(messages().errors.size(), reports) << "the screen works on";
        EXPECT_EQ(screen->host.screen.GetMousePointer(), services::mouseDefault);
        messages().answers.assign(1, services::answerNo);
        EXPECT_TRUE(screen->host.component().CloseForm().toBool());
        EXPECT_EQ(screen->database.openSessions(), 0);
    }
};

TEST_P(EditorReports, OfAViewThatFailsComeOnceUnderTheRoutineThatShowedSomething) {
    const Step& step = GetParam();
    step.before(e());
    {
        const BrokenView view(screen->host.form(), step.what, step.control);
        messages().answers = {services::answerYes};
        step.act(e());
    }
    EXPECT_EQ(reported(), Texts{step.label});
    ASSERT_FALSE(messages().errors.empty());
    EXPECT_EQ(messages().errors[0].error.Description, broken);
    expectWorkingOn();
}

void select(Editor& editor) {
    editor.control<controls::LookupField>("TXT_CONTORICERCA").TypeFromView(editedAccount);
    editor.control<controls::Button>("BUT_RICERCA").ClickFromView();
}

void enterOnTheList(Editor& editor) {
    editor.enter();
    editor.clickCausale("ACQ");
}

void leaveTheSecondRowForTheList(Editor& editor) {
    editor.enter();
    editor.clickRow(1);
    editor.list().SetFocus();
}

void beginANewOne(Editor& editor) {
    editor.enter();
    editor.header().PressFromView(keys::nuovo);
}

void keyANewOne(Editor& editor) {
    editor.enter();
    editor.addCorrelation("GIRO", other);
}

void toggle(Editor& editor) {
    editor.toggleMode();
}

void pressListKey(Editor& editor, int key) {
    editor.list().KeyDownFromView(key, controls::shiftNone);
}

INSTANTIATE_TEST_SUITE_P(OfViews, EditorReports,
                         ::testing::
                             Values(Step{"Switch:", BrokenView::Property, "LAY_ATTIVAZIONE", select, toggle},
                                    Step{"AfterEnterCorrelazione:", BrokenView::Property,
                                         "TXT_CONTOSELEZIONATO", select, toggle},
                                    Step{"RimozioneVirtualFrame:", BrokenView::Property, "INV_TESTATA",
                                         enterOnTheList, toggle},
                                    Step{"AbilitazioneDettaglio:", BrokenView::Property, "PIC_FOCUSCATCH",
                                         beginANewOne, [](Editor& editor) { editor.typeCausale("GIRO"); }},
                                    Step{"TXT_CAUSALE_AfterItem:", BrokenView::Focus, "", beginANewOne,
                                         [](Editor& editor) { editor.typeCausale("GIRO"); }},
                                    Step{"CMD_SU_Click", BrokenView::Focus, "", leaveTheSecondRowForTheList,
                                         [](Editor& editor) { editor.up().ClickFromView(); }},
                                    Step{"CMD_GIU_Click", BrokenView::Focus, "", leaveTheSecondRowForTheList,
                                         [](Editor& editor) { editor.down().ClickFromView(); }},
                                    Step{"GNV_DETTAGLIO_AfterButtonClick", BrokenView::Focus, "",
                                         enterOnTheList,
                                         [](Editor& editor) { editor.detail().Press(keys::nuovo); }},
                                    Step{"INV_TESTATA_AfterButtonClick", BrokenView::Focus, "",
                                         enterOnTheList,
                                         [](Editor& editor) { editor.header().Press(keys::nuovo); }},
                                    Step{"GRD_DETTAGLIO_DblClick", BrokenView::Focus, "", enterOnTheList,
                                         [](Editor& editor) { editor.grid().DblClickFromView(); }},
                                    Step{"GRD_DETTAGLIO_KeyDown", BrokenView::Focus, "", enterOnTheList,
                                         [](Editor& editor) {
                                             editor.grid().KeyDownFromView(controls::keyReturn,
                                                                           controls::shiftNone);
                                         }},
                                    Step{"PIC_FOCUSCATCH_GotFocus", BrokenView::Focus, "", enterOnTheList,
                                         [](Editor& editor) { editor.catcher().SetFocus(); }},
                                    Step{"LST_CAUSALI_KeyDown:", BrokenView::Focus, "", enterOnTheList,
                                         [](Editor& editor) { pressListKey(editor, controls::keyReturn); }},
                                    Step{"PopupListMenu:", BrokenView::Menu, "", enterOnTheList,
                                         [](Editor& editor) { pressListKey(editor, controls::keyApps); }},
                                    Step{"gclsFrameDettaglio_ChangeStatus", BrokenView::Property, "CMD_SU",
                                         enterOnTheList, [](Editor& editor) { editor.clickRow(1); }},
                                    Step{"gclsFrameTestata_ChangeStatus", BrokenView::Selection, "",
                                         enterOnTheList,
                                         [](Editor& editor) { editor.header().Press(keys::ultimo); }},
                                    Step{"gclsFrameTestata_AfterUpdate", BrokenView::Items, "", keyANewOne,
                                         [](Editor& editor) { editor.save(); }},
                                    Step{"gclsFrameTestata_AfterDelete", BrokenView::Items, "",
                                         enterOnTheList,
                                         [](Editor& editor) { editor.header().Press(keys::elimina); }},
                                    Step{"CaricamentoListaCausali:", BrokenView::Items, "",
                                         [](Editor& editor) {
                                             editor.enter();
                                             editor.toggleMode();
                                         },
                                         toggle}),
                         [](const auto& step) {
                             std::string name = step.param.label;
                             std::erase(name, ':');
                             return name;
                         });

TEST_F(EditorReports, OfAMenuThatCannotHoldThePaintingBackLeaveTheMenuUndone) {
    enterOnTheList(e());
    controls::PopupMenu* menu = nullptr;
    const Subscription shown = screen->host.form().PopupRequested.subscribe(
        [&](controls::PopupMenu& opened, const controls::PopupPlace&) { menu = &opened; });
    pressListKey(e(), controls::keyApps);
    {
        const BrokenView view(screen->host.form(), BrokenView::Lock, "");
        menu->ClickFromView("ListElimina");
    }
    EXPECT_EQ(reported(), Texts{"gclsPopupList_AfterItemClick"});
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    expectWorkingOn();
}

TEST_F(EditorReports, OfAListThatCannotTellItsRowsOpenNoMenu) {
    enterOnTheList(e());
    e().list().SetHitTester([](int, int) -> controls::ListHit { throw std::runtime_error(broken); });
    e().list().MouseDownFromView({controls::buttonRight, controls::shiftNone, 150, 120});
    EXPECT_EQ(reported(), Texts{"LST_CAUSALI_MouseDown"});
    expectWorkingOn();
}

void change(Editor& editor) {
    editor.changePercentage(1, "55");
    editor.list().SetFocus();
}

TEST_F(EditorReports, OfAQuestionThatCannotBeAskedLeaveChangesClipboardAndHeader) {
    enterOnTheList(e());
    change(e());
    messages().boxFailure = broken;
    e().listKey(copyKey);
    e().listKey(cutKey);
    e().list().SelectFromView(1);
    EXPECT_EQ(reported(), (Texts{"AttivazioneCopiaList:", "AttivazioneTagliaList:", "ChangeItem:"}));
    EXPECT_EQ(e().causale().Text(), "ACQ");
    EXPECT_EQ(e().shown()[1][3], "55.00%");
    expectWorkingOn();
}

TEST_F(EditorReports, OfAPasteThatCannotAskPasteNothing) {
    enterOnTheList(e());
    e().listKey(copyKey);
    e().clickCausale("VEND");
    messages().boxFailure = broken;
    e().listKey(pasteKey);
    EXPECT_EQ(reported(), Texts{"CopiaIncollaCorrelazioneList:"});
    EXPECT_EQ(e().stored("VEND"), other);
    expectWorkingOn();
}

TEST_F(EditorReports, OfAPasteThatCannotAskAboutChangesPasteNothing) {
    enterOnTheList(e());
    e().listKey(copyKey);
    e().clickCausale("VEND");
    e().changePercentage(0, "55");
    e().list().SetFocus();
    messages().boxFailure = broken;
    e().listKey(pasteKey);
    EXPECT_EQ(reported(), Texts{"IncollaCorrelazioneList:"});
    EXPECT_EQ(e().shown()[0][3], "55.00%");
    EXPECT_EQ(e().stored("VEND"), other);
    expectWorkingOn();
}

TEST_F(EditorReports, OfARefusalThatCannotBeToldRefuseTheSaveAllTheSame) {
    enterOnTheList(e());
    e().typePercentage(1, "90");
    messages().boxFailure = broken;
    EXPECT_FALSE(e().save());
    EXPECT_EQ(reported(), Texts{"gclsFrameTestata_BeforeUpdate"});
    EXPECT_EQ(e().stored("ACQ"), wholeRows);
    expectWorkingOn();
}

TEST_F(EditorReports, OfAWarningThatCannotBeShownLeaveActivationModeOpen) {
    screen->host.user().click(screen->host.user().root(1));
    messages().boxFailure = broken;
    e().toggleMode();
    EXPECT_EQ(reported(), Texts{"CMD_ATTIVAZIONI_Click"});
    EXPECT_FALSE(e().isOpen());
    expectWorkingOn();
}

TEST_F(EditorReports, OfASignWhoseRowCannotBeShownKeepTheChangedRow) {
    enterOnTheList(e());
    e().clickRow(1);
    e().sign().SetFocus();
    {
        e().shown();
        const Subscription view =
            e().grid().RowChanged.subscribe([](std::size_t) { throw std::runtime_error(broken); });
        e().sign().ChooseFromView(0);
    }
    EXPECT_EQ(reported(), Texts{"CBO_SEGNO_Click"});
    expectWorkingOn();
}

/// Saves while the n-th change of the grid's rows cannot be shown. \return whether there was one.
bool saveWithBrokenRows(Editor& editor, int n) {
    int changes = 0;
    const Subscription view = editor.grid().RowsChanged.subscribe([&] {
        if (++changes == n) {
            throw std::runtime_error(broken);
        }
    });
    editor.save();
    return changes >= n;
}

TEST_F(EditorReports, OfRowsThatCannotBeShownLeaveASaveThatIsDoneOrStillDue) {
    enterOnTheList(e());
    const auto saved = [this] { return e().stored("ACQ")[1].percentage; };
    int n = 0;
    bool wasBroken = true;
    while (wasBroken) {
        messages().errors.clear();
        const std::string percentage = std::to_string(20 + ++n);
        e().changePercentage(1, percentage);
        wasBroken = saveWithBrokenRows(e(), n);
        SCOPED_TRACE("change " + std::to_string(n));
        EXPECT_EQ(reported().size(), wasBroken ? 1U : 0U);
        EXPECT_NE(saved() == percentage + ".00", e().header().CanPress(keys::conferma));
        e().save();
        EXPECT_EQ(saved(), percentage + ".00");
    }
    EXPECT_GT(n, 2);
    expectWorkingOn();
}

TEST_F(EditorReports, OfARowThatCannotBeTakenFromTheListLetItsCausaleBeListedAgain) {
    enterOnTheList(e());
    {
        const BrokenView view(screen->host.form(), BrokenView::Items, "");
        messages().answers = {services::answerYes};
        e().header().Press(keys::elimina);
    }
    EXPECT_EQ(reported(), Texts{"gclsFrameTestata_AfterDelete"});
    EXPECT_EQ(e().listed(), Texts{"VEND"});
    e().addCorrelation("ACQ", other);
    EXPECT_TRUE(e().save());
    EXPECT_EQ(e().listed(), (Texts{"VEND", "ACQ"}));
    expectWorkingOn();
}

TEST_F(EditorReports, OfADescriptionThatCannotBeReadShowTheCodeWithoutIt) {
    enterOnTheList(e());
    lookups().failure = simulatedFailure("elenco non disponibile");
    e().clickRow(1);
    lookups().failure.reset();
    EXPECT_EQ(reported(), (Texts{"TXT_CONTO_StartDecode", "TXT_VDS_StartDecode"}));
    EXPECT_EQ(e().account().Text(), "CDCPRO0010");
    EXPECT_EQ(e().control<controls::Label>("TXT_DESCRCONTO").Caption(), "");
    expectWorkingOn();
}

TEST(RowReports, OfAChartThatTheRowsCannotHoldLeaveTheNewRowWithoutIt) {
    Company company = costCompany();
    company.costChart = 12345;
    CorrelationAreas work(withStored(), company);
    work.enter();
    work.areas->frame.Dettaglio()->AddNew();
    EXPECT_EQ(work.labels(), Texts{"gclsFrameDettaglio_AfterAddNew"});
    EXPECT_EQ(work.areas->frame.Dettaglio()->Recordset()->RecordCount(), 4);
}

TEST(RowReports, OfACostItemsChartThatTheRowsCannotHoldRefuseTheRow) {
    Company company = costCompany();
    company.itemChart = 12345;
    CorrelationAreas work(withStored(), company);
    work.enter();
    frames::VirtualFrame& rows = *work.areas->frame.Dettaglio();
    rows.MoveBy(1);
    work.controls().TXT_PERC.TypeFromView("55");
    EXPECT_FALSE(rows.Update());
    EXPECT_EQ(work.labels(), Texts{"gclsFrameDettaglio_BeforeUpdate"});
    EXPECT_EQ(rows.Status(), frames::statusEditing) << "what was typed stays";
}

TEST(FormatReports, OfACodeWithoutItsFormLeaveTheCellAsItIs) {
    CorrelationAreas work(withStored());
    FormatiGriglia& formats = work.areas->formati;
    work.screen.host.lookups.failure = simulatedFailure("struttura non disponibile");
    Value account("COLACQ0010");
    Value item("MATPRI");
    formats.gclsFormatConto_Format(account);
    formats.gclsFormatVDS_Format(item);
    EXPECT_EQ(account, Value("COLACQ0010"));
    EXPECT_EQ(item, Value("MATPRI"));
    work.screen.host.lookups.failure.reset();
    work.screen.host.lookups.structures[101] = {10, {{0, 3}, {3, 3}, {6, 4}}, '.', false};
    formats.gclsFormatConto_Format(account);
    EXPECT_EQ(account, Value("COL.ACQ.0010")) << "asked again";
    EXPECT_EQ(work.labels(), (Texts{"gclsFormatConto_Format", "gclsFormatVDS_Format"}));
}

} // namespace

} // namespace veldran::test
