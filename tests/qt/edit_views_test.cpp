#include "adapters/qt/combo_box_view.h"
#include "adapters/qt/focus_catcher_view.h"
#include "adapters/qt/numeric_field_view.h"
#include "adapters/qt/simple_views.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/focus_catcher.h"
#include "platform/controls/form.h"
#include "tests/qt/active_window.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QWheelEvent>

namespace veldran::qt {
namespace {

struct EditForm : controls::Form {
    EditForm() : Form("FRM_CAMPI") {
        sign.AddItem("Avere", 2);
        sign.AddItem("Dare", 1);
        sign.AddItem("Diverso", 3);
        percentage.SetFormatMask("##0.00;-##0.00;;");
        percentage.SetCaption("% &ripartizione");
    }
    controls::ComboBox sign{*this, "CBO_SEGNO"};
    controls::NumericField percentage{*this, "TXT_PERC"};
    controls::FocusCatcher catcher{*this, "PIC_FOCUSCATCH"};
};

void turnWheel(QWidget& widget) {
    const QPoint at = widget.rect().center();
    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
}

class Choice : public testing::Test {
protected:
    Choice() {
        window.activate({view});
        view->setFocus();
    }
    void key(Qt::Key code) { QTest::keyClick(view, code); }

    EditForm form;
    ActiveWindow window;
    ComboBoxView* view = new ComboBoxView(form.sign, &window);
};

TEST_F(Choice, ShowsTheChoicesOfItsControl) {
    ASSERT_EQ(view->count(), 3);
    EXPECT_EQ(view->currentIndex(), -1);
    form.sign.SetListIndex(1);
    EXPECT_EQ(view->currentText(), QStringLiteral("Dare"));
    form.sign.Clear();
    EXPECT_EQ(view->count(), 0);
    form.sign.AddItem("Saldo", 9);
    EXPECT_EQ(view->itemText(0), QStringLiteral("Saldo"));
}

TEST_F(Choice, IsMadeByTheFirstLetter) {
    int clicks = 0;
    const auto kept = form.sign.Click.subscribe([&] { ++clicks; });
    key(Qt::Key_D);
    EXPECT_EQ(form.sign.Text(), "Dare");
    key(Qt::Key_D);
    EXPECT_EQ(form.sign.Text(), "Diverso");
    key(Qt::Key_A);
    EXPECT_EQ(form.sign.Text(), "Avere");
    EXPECT_EQ(view->currentIndex(), 0);
    EXPECT_EQ(clicks, 3);
}

TEST_F(Choice, IsMadeByArrowsAndFromTheList) {
    key(Qt::Key_Down);
    EXPECT_EQ(form.sign.Text(), "Avere");
    view->showPopup();
    QTest::keyClick(view->view(), Qt::Key_Down);
    QTest::keyClick(view->view(), Qt::Key_Return);
    EXPECT_EQ(form.sign.Text(), "Dare");
}

TEST_F(Choice, IsNotMadeByTheWheel) {
    form.sign.SetListIndex(0);
    turnWheel(*view);
    EXPECT_EQ(form.sign.Text(), "Avere");
    EXPECT_EQ(view->currentIndex(), 0);
}

TEST_F(Choice, GoesBackWhenItIsRefused) {
    form.sign.SetListIndex(0);
    const auto kept = form.sign.Validate.subscribe([](bool& cancel) { cancel = true; });
    key(Qt::Key_D);
    EXPECT_EQ(view->currentIndex(), 0);
    key(Qt::Key_Down);
    EXPECT_EQ(view->currentIndex(), 0);
}

TEST_F(Choice, IsLeftByEnterWhereEnterMovesOn) {
    key(Qt::Key_Return);
    EXPECT_TRUE(view->hasFocus());
    view->setEnterMovesOn(true);
    key(Qt::Key_Enter);
    EXPECT_TRUE(window.elsewhere().hasFocus());
}

class Number : public testing::Test {
protected:
    Number() {
        window.activate({view});
        view->setFocus();
    }
    void type(const char* text) { QTest::keyClicks(view, QString::fromUtf8(text)); }
    void key(Qt::Key code) { QTest::keyClick(view, code); }
    std::string shown() const { return view->text().toStdString(); }

    EditForm form;
    ActiveWindow window;
    NumericFieldView* view = new NumericFieldView(form.percentage, &window);
};

TEST_F(Number, IsTypedWithCommaOrPointAndShownThroughItsMask) {
    type("12,5");
    EXPECT_EQ(shown(), "12,5");
    EXPECT_TRUE(form.percentage.GetValue().isNull());
    key(Qt::Key_Tab);
    EXPECT_EQ(form.percentage.GetValue().toText(), "12.5");
    const std::string masked = form.percentage.Text();
    EXPECT_EQ(shown(), masked);
    EXPECT_NE(masked, "12,5") << "two decimals";
    view->setFocus();
    type("7.25");
    key(Qt::Key_Tab);
    EXPECT_EQ(form.percentage.GetValue().toText(), "7.25");
}

TEST_F(Number, IsSelectedWhereverTheFocusComesFrom) {
    form.percentage.ShowValue(Value("33"));
    window.elsewhere().setFocus();
    view->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(view->selectedText(), view->text());
    window.elsewhere().setFocus();
    QTest::mouseClick(view, Qt::LeftButton);
    EXPECT_EQ(view->selectedText(), view->text());
    type("50");
    EXPECT_EQ(shown(), "50");
    QTest::mouseClick(view, Qt::LeftButton);
    EXPECT_FALSE(view->hasSelectedText()) << "a second click places the cursor";
}

TEST_F(Number, IsSelectedWhenTheFormGivesItTheFocusBeforeItsWindowIsActiveAgain) {
    form.percentage.ShowValue(Value("33"));
    window.elsewhere().setFocus();
    QWidget message;
    message.show();
    message.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&message));
    ASSERT_FALSE(window.isActiveWindow());
    giveFocusTo(*view);
    EXPECT_EQ(view->selectedText(), view->text());
    message.close();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    type("50");
    EXPECT_EQ(shown(), "50");
}

TEST_F(Number, StaysWhereItIsWhileEnterIsRefused) {
    view->setEnterMovesOn(true);
    std::string refused;
    const auto kept =
        form.percentage.NotANumber.subscribe([&](const std::string& typed) { refused = typed; });
    type("abc");
    key(Qt::Key_Return);
    EXPECT_EQ(refused, "abc");
    EXPECT_TRUE(view->hasFocus());
    EXPECT_EQ(shown(), "abc");
    view->selectAll();
    type("5");
    key(Qt::Key_Return);
    EXPECT_TRUE(window.elsewhere().hasFocus());
    EXPECT_EQ(form.percentage.GetValue().toText(), "5");
}

TEST_F(Number, IsNotLeftByTabWhileItIsNoNumber) {
    int refused = 0;
    const auto kept = form.percentage.NotANumber.subscribe([&](const std::string&) { ++refused; });
    type("abc");
    for (const auto& [code, modifier] :
         {std::pair(Qt::Key_Tab, Qt::NoModifier), std::pair(Qt::Key_Backtab, Qt::ShiftModifier)}) {
        QTest::keyClick(view, code, modifier);
        EXPECT_TRUE(view->hasFocus());
        EXPECT_EQ(view->selectedText(), QStringLiteral("abc")) << "what is typed next replaces it";
    }
    EXPECT_EQ(refused, 2);
    QTest::mouseClick(&window.elsewhere(), Qt::LeftButton);
    EXPECT_TRUE(window.elsewhere().hasFocus()) << "the mouse leads to what gives the edit up";
    view->setFocus();
    view->selectAll();
    type("5");
    key(Qt::Key_Tab);
    EXPECT_TRUE(window.elsewhere().hasFocus());
    EXPECT_EQ(form.percentage.GetValue().toText(), "5");
}

TEST_F(Number, IsNotChangedByWheelAndArrows) {
    form.percentage.ShowValue(Value("33"));
    const std::string before = shown();
    turnWheel(*view);
    key(Qt::Key_Up);
    key(Qt::Key_Down);
    EXPECT_EQ(shown(), before);
    EXPECT_FALSE(form.percentage.HasPendingText());
}

TEST_F(Number, IsNotTakenOverWhileItsWindowIsLeft) {
    type("12");
    QFocusEvent leave(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(view, &leave);
    EXPECT_TRUE(form.percentage.HasPendingText());
}

TEST_F(Number, HasItsCaptionBesideIt) {
    CaptionView caption(form.percentage, *view, &window);
    EXPECT_EQ(caption.text(), QStringLiteral("% &ripartizione"));
    EXPECT_EQ(caption.buddy(), view);
    form.percentage.SetCaption("Quota");
    form.percentage.SetEnabled(false);
    EXPECT_EQ(caption.text(), QStringLiteral("Quota"));
    EXPECT_FALSE(caption.isEnabled());
    form.percentage.SetVisible(false);
    EXPECT_TRUE(caption.isHidden());
}

class Catcher : public testing::Test {
protected:
    Catcher() {
        window.activate({before, view});
        QWidget::setTabOrder(before, view);
        before->setFocus();
    }

    EditForm form;
    ActiveWindow window;
    NumericFieldView* before = new NumericFieldView(form.percentage, &window);
    FocusCatcherView* view = new FocusCatcherView(form.catcher, &window);
};

TEST_F(Catcher, IsReachedByTabInBothDirections) {
    int caught = 0;
    const auto kept = form.catcher.GotFocus.subscribe([&] {
        ++caught;
        before->setFocus();
    });
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_EQ(caught, 1);
    EXPECT_TRUE(before->hasFocus());
    EXPECT_TRUE(form.percentage.HasFocus());
    window.elsewhere().setFocus();
    QTest::keyClick(&window.elsewhere(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(caught, 2);
}

TEST_F(Catcher, TakesNoMouseAndShowsNothing) {
    EXPECT_EQ(window.childAt(view->geometry().center()), nullptr);
    const QImage shown = window.grab().toImage();
    view->move(view->pos() + QPoint(0, 1));
    EXPECT_EQ(window.grab().toImage(), shown);
}

TEST_F(Catcher, IsPassedOverWhenTheFocusedFieldIsDisabled) {
    int caught = 0;
    const auto kept = form.catcher.GotFocus.subscribe([&] { ++caught; });
    form.percentage.SetEnabled(false);
    EXPECT_EQ(caught, 0) << "the user has not left the field";
    EXPECT_TRUE(window.elsewhere().hasFocus());
}

TEST_F(Catcher, IsPassedOverWhenTheFocusedFieldIsHidden) {
    int caught = 0;
    const auto kept = form.catcher.GotFocus.subscribe([&] { ++caught; });
    form.percentage.SetVisible(false);
    EXPECT_EQ(caught, 0);
    EXPECT_TRUE(window.elsewhere().hasFocus());
}

} // namespace
} // namespace veldran::qt
