#include "adapters/qt/lookup_field_view.h"
#include "tests/qt/field_form.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>
#include <QVBoxLayout>

namespace veldran::qt {
namespace {

class CodeField : public testing::Test {
protected:
    CodeField() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(view);
        column->addWidget(elsewhere);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        view->edit().setFocus();
    }
    void type(const char* text) { QTest::keyClicks(&view->edit(), QString::fromUtf8(text)); }
    void key(Qt::Key code) { QTest::keyClick(&view->edit(), code); }
    std::string shown() { return view->edit().text().toStdString(); }

    FieldForm form;
    QWidget window;
    LookupFieldView* view = new LookupFieldView(form.code, &window);
    QLineEdit* elsewhere = new QLineEdit(&window);
};

TEST_F(CodeField, IsDecodedWhenItIsLeftByTab) {
    type("1/2/3/5");
    EXPECT_EQ(form.code.Text(), "1/2/3/5");
    EXPECT_TRUE(form.lookup.decoded.empty());
    key(Qt::Key_Tab);
    EXPECT_TRUE(elsewhere->hasFocus());
    EXPECT_EQ(form.lookup.decoded, (std::vector<std::string>{"0102030005"}));
    EXPECT_EQ(form.code.Text(), "0102030005");
    EXPECT_EQ(form.code.Description(), "Cassa contanti");
    EXPECT_EQ(shown(), "01/02/03/0005") << "a known code is shown in its display form";
}

TEST_F(CodeField, ShowsAnUnknownCodeAsItStands) {
    type("99");
    key(Qt::Key_Tab);
    EXPECT_EQ(shown(), "9900000000");
}

TEST_F(CodeField, MarksAnUnknownCodeUntilItIsMended) {
    const QColor ground = view->edit().palette().color(QPalette::Base);
    const auto isMarked = [&] { return view->edit().palette().color(QPalette::Base) != ground; };
    const QString says = QStringLiteral("Il codice non esiste, o qui non è ammesso.");
    form.code.SetToolTipText("Codice del conto");
    type("99");
    EXPECT_FALSE(isMarked()) << "it is still being typed";
    key(Qt::Key_Tab);
    EXPECT_TRUE(isMarked());
    EXPECT_EQ(view->edit().toolTip(), QStringLiteral("Codice del conto\n") + says);
    EXPECT_EQ(view->edit().accessibleDescription(), says);
    const QImage marked = view->edit().grab().toImage();
    EXPECT_EQ(marked.pixelColor(marked.width() / 2, marked.height() - 3), QColor(0xc6, 0x28, 0x28))
        << "a line tells it without the ground";
    view->edit().setFocus();
    view->edit().selectAll();
    type("0102030005");
    EXPECT_FALSE(isMarked());
    key(Qt::Key_Tab);
    EXPECT_FALSE(isMarked());
    EXPECT_EQ(view->edit().toolTip(), QString()) << "the whole field has one";
    EXPECT_EQ(view->edit().accessibleDescription(), QString());
}

TEST_F(CodeField, MarksNoCodeThatNobodyHasLookedUp) {
    const QColor ground = view->edit().palette().color(QPalette::Base);
    form.code.SetText("9900000000");
    EXPECT_EQ(view->edit().palette().color(QPalette::Base), ground);
}

TEST_F(CodeField, ShowsTheWholeDisplayFormOfItsLongestCode) {
    form.code.SetMaxLength(10);
    type("0102030005");
    key(Qt::Key_Tab);
    EXPECT_EQ(shown(), "01/02/03/0005") << "though a code itself has ten characters";
    const int room = view->edit().width() - 12;
    EXPECT_LE(view->edit().fontMetrics().horizontalAdvance(view->edit().text()), room);
}

TEST_F(CodeField, IsAsWideAsItsCodes) {
    const int usual = view->edit().sizeHint().width();
    form.code.SetMaxLength(10);
    form.code.SetCodeStructure({24, {{0, 12}, {12, 12}}});
    EXPECT_GT(view->edit().sizeHint().width(), usual);
    form.code.SetCodeStructure({});
    EXPECT_LT(view->edit().sizeHint().width(), usual);
}

TEST_F(CodeField, ShowsDigitsThatTheDisplayFormLeavesOut) {
    form.code.SetCodeStructure({10, {{0, 2}, {5, 5}}});
    form.lookup.texts["0112300001"] = "Cassa";
    type("0112300001");
    key(Qt::Key_Tab);
    EXPECT_TRUE(form.code.IsValidItem());
    EXPECT_EQ(shown(), "0112300001") << "01/00001 would stand for another code";
}

TEST_F(CodeField, IsNotDecodedWhenTheWindowIsLeft) {
    type("0102030005");
    QFocusEvent leave(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&view->edit(), &leave);
    EXPECT_TRUE(form.lookup.decoded.empty());
}

TEST_F(CodeField, OpensItsListByF4AndByItsButton) {
    type("0102");
    form.lookup.choice = services::LookupChoice{"0102030006", "Cassa valori"};
    key(Qt::Key_F4);
    EXPECT_EQ(form.lookup.listed, (std::vector<std::string>{"0102"}));
    EXPECT_EQ(shown(), "01/02/03/0006");
    EXPECT_EQ(form.code.Description(), "Cassa valori");
    QTest::mouseClick(&view->button(), Qt::LeftButton);
    EXPECT_EQ(form.lookup.listed.size(), 2U);
    EXPECT_TRUE(view->edit().hasFocus());
}

TEST_F(CodeField, HasNoListWhileItsLookupIsDisabled) {
    form.code.SetLookupEnabled(false);
    EXPECT_FALSE(view->button().isHidden()) << "the field keeps its shape";
    EXPECT_FALSE(view->button().isEnabled());
    key(Qt::Key_F4);
    EXPECT_TRUE(form.lookup.listed.empty());
}

TEST_F(CodeField, GivesEnterToTheFormFirst) {
    bool consumes = true;
    std::vector<int> codes;
    const auto kept = form.code.KeyDown.subscribe([&](controls::KeyEvent& event) {
        if (event.keyCode == controls::keyReturn) {
            codes.push_back(event.keyCode);
            event.keyCode = consumes ? 0 : event.keyCode;
        }
    });
    type("0102030005");
    key(Qt::Key_Return);
    EXPECT_EQ(codes, (std::vector<int>{13}));
    EXPECT_TRUE(form.lookup.decoded.empty()) << "the form has answered it";
    consumes = false;
    key(Qt::Key_Enter);
    EXPECT_EQ(codes, (std::vector<int>{13, 13}));
    EXPECT_EQ(form.lookup.decoded.size(), 1U);
}

TEST_F(CodeField, MovesOnByEnterWhereItIsToldSo) {
    type("0102030005");
    key(Qt::Key_Return);
    EXPECT_TRUE(view->edit().hasFocus());
    view->setEnterMovesOn(true);
    key(Qt::Key_Return);
    EXPECT_TRUE(elsewhere->hasFocus());
    EXPECT_EQ(form.lookup.decoded.size(), 1U) << "it is decoded once";
}

TEST_F(CodeField, StaysWhereItIsWhileEnterIsRefused) {
    view->setEnterMovesOn(true);
    const auto kept = form.code.Validate.subscribe([](bool& cancel) { cancel = true; });
    type("0102030005");
    key(Qt::Key_Return);
    EXPECT_TRUE(view->edit().hasFocus());
}

TEST_F(CodeField, LeavesTheFocusWhereTheFormSendsItOnEnter) {
    view->setEnterMovesOn(true);
    auto* chosen = new QLineEdit(&window);
    window.layout()->addWidget(chosen);
    chosen->show();
    const auto kept = form.code.AfterItem.subscribe([&] { chosen->setFocus(); });
    type("0102030005");
    key(Qt::Key_Return);
    EXPECT_TRUE(chosen->hasFocus());
}

TEST_F(CodeField, MovesOnWhenAKnownCodeIsComplete) {
    form.code.SetAutoAdvance(true);
    type("010203000");
    EXPECT_TRUE(view->edit().hasFocus());
    type("5");
    EXPECT_TRUE(elsewhere->hasFocus());
    EXPECT_EQ(shown(), "01/02/03/0005");
    view->edit().setFocus();
    view->edit().selectAll();
    type("9999999999");
    EXPECT_TRUE(view->edit().hasFocus()) << "an unknown code is to be mended";
}

TEST_F(CodeField, MovesOnFromTheListBeforeItsWindowIsTheActiveOneAgain) {
    form.code.SetAutoAdvance(true);
    form.lookup.choice = services::LookupChoice{"0102030006", "Cassa valori"};
    QWidget list;
    list.show();
    list.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
    form.code.LookupFromView();
    EXPECT_EQ(window.focusWidget(), elsewhere);
}

TEST_F(CodeField, ShowsWhatItRaisesToUpperCase) {
    form.code.SetUpperCase(true);
    type("acq");
    EXPECT_EQ(shown(), "ACQ");
    EXPECT_EQ(form.code.Text(), "ACQ");
}

TEST_F(CodeField, IsSelectedWhenTheFormSendsTheFocus) {
    type("0102");
    elsewhere->setFocus();
    form.code.SetText("0102");
    view->edit().setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(view->edit().selectedText(), QStringLiteral("0102"));
}

class ManagedCode : public CodeField {
protected:
    ManagedCode() {
        form.code.SetManagementEnabled(true);
        kept = form.code.KeyButtonMenuPress.subscribe(
            [this](const std::string& item) { items.push_back(item); });
    }
    QStringList menuTexts() {
        QContextMenuEvent asked(QContextMenuEvent::Mouse, {3, 3}, view->edit().mapToGlobal(QPoint(3, 3)));
        QApplication::sendEvent(&view->edit(), &asked);
        QStringList texts;
        for (const QAction* action : openMenu()->actions()) {
            texts << action->text();
        }
        return texts;
    }
    static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    Subscription kept;
    std::vector<std::string> items;
};

TEST_F(ManagedCode, OpensItsMaintenanceByShiftF4) {
    QTest::keyClick(&view->edit(), Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(items, (std::vector<std::string>{"Kgestione"}));
    EXPECT_TRUE(form.lookup.listed.empty());
    form.code.SetManagementEnabled(false);
    QTest::keyClick(&view->edit(), Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(items.size(), 1U);
}

TEST_F(ManagedCode, OpensItsMaintenanceFromItsMenuOnceThatHasClosed) {
    const QStringList texts = menuTexts();
    ASSERT_TRUE(texts.contains(QStringLiteral("Gestione…\tMaiusc+F4")));
    QMenu* menu = openMenu();
    const auto count = menu->actions().size();
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(menu->actions()[count - 1]).center());
    EXPECT_TRUE(items.empty());
    QApplication::processEvents();
    EXPECT_EQ(items, (std::vector<std::string>{"Kgestione"}));
}

TEST_F(ManagedCode, OffersOnlyWhatTheFieldCanDo) {
    form.code.SetManagementEnabled(false);
    form.code.SetLookupEnabled(false);
    const QStringList texts = menuTexts();
    EXPECT_FALSE(texts.contains(QStringLiteral("Gestione…\tMaiusc+F4")));
    EXPECT_FALSE(texts.contains(QStringLiteral("Scegli da un elenco…\tF4")));
    delete openMenu();
}

TEST_F(ManagedCode, TellsItsKeysInItsToolTips) {
    form.code.SetToolTipText("Codice conto");
    EXPECT_EQ(view->edit().toolTip(), QStringLiteral("Codice conto\nGestione: tasto destro o Maiusc+F4"));
    EXPECT_EQ(view->button().toolTip(),
              QStringLiteral("Scegli da un elenco (F4)\nGestione: tasto destro o Maiusc+F4"));
    form.code.SetManagementEnabled(false);
    EXPECT_EQ(view->edit().toolTip(), QString()) << "the whole field has one";
    EXPECT_EQ(view->button().toolTip(), QStringLiteral("Scegli da un elenco (F4)"));
}

TEST_F(CodeField, FollowsItsControl) {
    form.code.SetText("abcÀ");
    EXPECT_EQ(shown(), "abcÀ") << "upper and lower case as they are";
    form.code.SetCodeStructure({});
    form.code.SetMaxLength(6);
    form.code.SetText("");
    type("12345678");
    EXPECT_EQ(form.code.Text(), "123456");
    EXPECT_EQ(shown(), "123456");
    form.code.SetEnabled(false);
    EXPECT_FALSE(view->isEnabled());
    form.code.SetVisible(false);
    EXPECT_TRUE(view->isHidden());
    form.code.SetToolTipText("Codice del conto");
    EXPECT_EQ(view->toolTip(), QStringLiteral("Codice del conto"));
    form.code.SetAccessibleName("Conto da ricercare");
    EXPECT_EQ(view->edit().accessibleName(), QStringLiteral("Conto da ricercare"));
}

TEST_F(CodeField, SelectsNothingInTheMiddleOfTyping) {
    type("0102");
    view->edit().setCursorPosition(2);
    type("9");
    EXPECT_EQ(shown(), "01902");
    EXPECT_EQ(view->edit().cursorPosition(), 3);
}

} // namespace
} // namespace veldran::qt
