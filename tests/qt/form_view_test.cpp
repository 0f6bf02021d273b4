#include "adapters/qt/form_view.h"
#include "adapters/qt/tree_widget.h"
#include "tests/qt/field_form.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

namespace veldran::qt {
namespace {

class Screen : public testing::Test {
protected:
    void show() {
        view = std::make_unique<FormView>(form);
        view->resize(view->sizeHint());
        view->show();
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
    }
    template<class T>
    T* part(const char* name) const {
        return view->findChild<T*>(QString::fromUtf8(name));
    }
    bool focused(const controls::Control& control) const {
        return control.HasFocus() && view->viewOf(control)->hasFocus();
    }
    void tab(bool back = false) {
        QTest::keyClick(QApplication::focusWidget(), back ? Qt::Key_Backtab : Qt::Key_Tab,
                        back ? Qt::ShiftModifier : Qt::NoModifier);
    }

    FieldForm form;
    std::unique_ptr<FormView> view;
};

TEST_F(Screen, ShowsTheControlsOfTheFormByName) {
    show();
    EXPECT_EQ(part<QLabel>("LBL_FILTRO_CORRENTE")->text(), QStringLiteral(" Tutti i conti"));
    EXPECT_EQ(part<QPushButton>("BUT_RICERCA")->text(), QStringLiteral("&Ricerca"));
    EXPECT_TRUE(part<TreeWidget>("TRW_CONTI")->isVisible());
    EXPECT_TRUE(part<QWidget>("CMD_ATTIVAZIONI")->isHidden());
}

TEST_F(Screen, HoldsItsPaintingBackButNotWhileTheUserIsAsked) {
    show();
    {
        const controls::FormRedrawLock lock(form);
        EXPECT_FALSE(view->updatesEnabled());
        {
            QDialog question(view.get());
            question.setWindowModality(Qt::ApplicationModal);
            question.show();
            EXPECT_TRUE(view->updatesEnabled());
        }
        EXPECT_FALSE(view->updatesEnabled());
    }
    EXPECT_TRUE(view->updatesEnabled());
}

TEST_F(Screen, LeavesOutControlsThatItDoesNotKnow) {
    show();
    EXPECT_EQ(view->viewOf(form.unknown), nullptr);
    EXPECT_EQ(view->viewOf(form.sign), nullptr);
    form.hidden.SetVisible(true);
    form.sign.SetFocus();
    EXPECT_TRUE(form.sign.HasFocus()) << "the control has the focus, though nothing draws it";
}

TEST_F(Screen, StandsWithoutTheControlsThatAFormLacks) {
    controls::Form empty("FRM_EMPTY");
    FormView drawn(empty);
    drawn.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&drawn));
    empty.Load();
    empty.Activate();
    EXPECT_EQ(empty.ActiveControl(), nullptr);
}

TEST_F(Screen, GivesTheFirstFocusToTheTree) {
    show();
    EXPECT_TRUE(focused(form.tree));
}

TEST_F(Screen, GivesTheFirstFocusToATreeShownByTheStartUp) {
    form.area.SetVisible(false);
    const auto startUp = form.Activated.subscribe([this] { form.area.SetVisible(true); });
    show();
    EXPECT_EQ(form.ActiveControl(), nullptr);
    form.Load();
    form.Activate();
    EXPECT_TRUE(focused(form.tree));
    EXPECT_TRUE(part<TreeWidget>("TRW_CONTI")->isVisible());
}

TEST_F(Screen, LeavesTheFocusWhereTheFormHadIt) {
    form.code.SetFocus();
    show();
    EXPECT_TRUE(focused(form.code));
    form.Load();
    form.Activate();
    EXPECT_TRUE(focused(form.code));
}

TEST_F(Screen, MovesTheFocusWithTheControls) {
    show();
    for (controls::Control* control : std::initializer_list<controls::Control*>{
             &form.code, &form.search, &form.filters, &form.tree, &form.correlations}) {
        control->SetFocus();
        EXPECT_TRUE(focused(*control)) << control->Name();
    }
}

TEST_F(Screen, TellsTheControlsWhereTheUserMovedTheFocus) {
    show();
    std::vector<std::string> lines;
    const auto lost = form.tree.LostFocus.subscribe([&] { lines.push_back("-tree"); });
    const auto got = form.code.GotFocus.subscribe([&] { lines.push_back("+code"); });
    QTest::mouseClick(view->viewOf(form.code), Qt::LeftButton);
    EXPECT_EQ(lines, (std::vector<std::string>{"-tree", "+code"}));
    EXPECT_TRUE(focused(form.code));
}

TEST_F(Screen, TabsThroughTheControlsAsTheyStand) {
    show();
    form.code.SetFocus();
    for (const controls::Control* next : std::initializer_list<controls::Control*>{
             &form.search, &form.filters, &form.tree, &form.correlations}) {
        tab();
        EXPECT_TRUE(focused(*next)) << next->Name();
    }
    tab(true);
    EXPECT_TRUE(focused(form.tree));
}

TEST_F(Screen, TabsInTheOrderOfACustomerLayout) {
    show();
    form.tree.SetTabIndex(1);
    form.filters.SetTabIndex(2);
    form.tree.SetFocus();
    for (const controls::Control* next :
         std::initializer_list<controls::Control*>{&form.filters, &form.code, &form.search}) {
        tab();
        EXPECT_TRUE(focused(*next)) << next->Name();
    }
}

TEST_F(Screen, MovesOnWhenTheFocusedControlIsDisabled) {
    show();
    form.search.SetFocus();
    form.search.SetEnabled(false);
    EXPECT_FALSE(form.search.HasFocus());
    const controls::Control* active = form.ActiveControl();
    ASSERT_NE(active, nullptr);
    EXPECT_TRUE(focused(*active));
}

TEST_F(Screen, ReachesTheSearchFieldByItsMnemonic) {
    show();
    QTest::keyClick(view.get(), Qt::Key_T, Qt::AltModifier);
    EXPECT_TRUE(focused(form.code));
}

TEST_F(Screen, DecodesTheFieldBeforeTheMnemonicOfAButtonClicks) {
    show();
    form.code.SetFocus();
    std::string atClick;
    const auto kept = form.search.Click.subscribe([&] { atClick = form.code.Text(); });
    QTest::keyClicks(view->viewOf(form.code), QStringLiteral("1/2/3/5"));
    QTest::keyClick(view->viewOf(form.code), Qt::Key_R, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_EQ(atClick, "0102030005");
}

TEST_F(Screen, GoesBackToWhereTheMnemonicOfAButtonWasPressedWhenNothingCameOfIt) {
    show();
    form.code.SetFocus();
    const auto press = [this](Qt::Key letter) {
        QTest::keyClick(QApplication::focusWidget(), letter, Qt::AltModifier);
        QTest::qWait(150);
    };
    press(Qt::Key_R);
    EXPECT_TRUE(focused(form.code));
    const auto kept = form.search.Click.subscribe([this] { form.tree.SetFocus(); });
    press(Qt::Key_R);
    EXPECT_TRUE(focused(form.tree)) << "the form has moved the focus on";
    QTest::mouseClick(part<QPushButton>("BUT_CORRELAZIONI"), Qt::LeftButton);
    EXPECT_TRUE(focused(form.correlations)) << "a click puts it on the button";
}

TEST_F(Screen, FollowsItsControlsLive) {
    show();
    form.filter.SetCaption(" Conti attivati");
    form.correlations.SetEnabled(false);
    form.search.SetToolTipText("Ricerca il conto");
    form.mode.SetVisible(true);
    EXPECT_EQ(part<QLabel>("LBL_FILTRO_CORRENTE")->text(), QStringLiteral(" Conti attivati"));
    EXPECT_FALSE(part<QWidget>("BUT_CORRELAZIONI")->isEnabled());
    EXPECT_EQ(part<QWidget>("BUT_RICERCA")->toolTip(), QStringLiteral("Ricerca il conto"));
    EXPECT_TRUE(part<QWidget>("CMD_ATTIVAZIONI")->isVisible());
    form.area.SetVisible(false);
    EXPECT_FALSE(part<TreeWidget>("TRW_CONTI")->isVisible());
    EXPECT_FALSE(part<QWidget>("BUT_CORRELAZIONI")->isVisible()) << "the buttons of the area go with it";
    EXPECT_TRUE(part<QWidget>("CMD_ATTIVAZIONI")->isVisible());
    form.area.SetVisible(true);
    EXPECT_TRUE(part<TreeWidget>("TRW_CONTI")->isVisible());
}

TEST_F(Screen, FollowsItsWindowUnlessTheResizeControlRefuses) {
    show();
    bool may = true;
    const auto kept = form.resize.QueryResize.subscribe([&](bool& answer) { answer = may; });
    auto* tree = part<TreeWidget>("TRW_CONTI");
    form.resize.Start();
    view->resize(900, 700);
    QApplication::processEvents();
    const QSize before = tree->size();
    may = false;
    view->resize(700, 500);
    QApplication::processEvents();
    EXPECT_EQ(tree->size(), before);
    may = true;
    view->resize(701, 500);
    QApplication::processEvents();
    EXPECT_LT(tree->width(), before.width());
    EXPECT_LT(tree->height(), before.height());
}

TEST_F(Screen, KeepsRoomForItsSearchRowAndSomeRowsOfTheTree) {
    show();
    const QSize least = view->minimumSizeHint();
    view->resize(least);
    QApplication::processEvents();
    const auto inside = [&](const char* name) {
        const QWidget* widget = part<QWidget>(name);
        return view->rect().contains(QRect(widget->mapTo(view.get(), QPoint()), widget->size()));
    };
    for (const char* name :
         {"TXT_CONTORICERCA", "BUT_RICERCA", "STR_FILTRI", "TRW_CONTI", "BUT_CORRELAZIONI"}) {
        EXPECT_TRUE(inside(name)) << name;
    }
    EXPECT_GE(part<QWidget>("TRW_CONTI")->height(), 100);
}

TEST_F(Screen, LetsTheFormSeeTheKeysOfEveryControl) {
    show();
    std::vector<int> codes;
    const auto kept =
        form.FormKeyDown.subscribe([&](controls::KeyEvent& event) { codes.push_back(event.keyCode); });
    for (controls::Control* control :
         std::initializer_list<controls::Control*>{&form.tree, &form.filters, &form.code, &form.search}) {
        control->SetFocus();
        QTest::keyClick(view->viewOf(*control), Qt::Key_F5);
    }
    EXPECT_EQ(codes, (std::vector<int>{116, 116, 116, 116}));
}

TEST_F(Screen, CanBeDrawnAgainAfterItsViewWasClosed) {
    show();
    view.reset();
    form.search.SetCaption("&Cerca");
    form.code.SetFocus();
    show();
    EXPECT_EQ(part<QPushButton>("BUT_RICERCA")->text(), QStringLiteral("&Cerca"));
    EXPECT_TRUE(focused(form.code));
}

} // namespace
} // namespace veldran::qt
