#include "adapters/qt/frame_navigator_view.h"
#include "adapters/qt/navigator_icons.h"
#include "platform/controls/form.h"
#include "platform/controls/frame_navigator.h"
#include "tests/qt/active_window.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QToolButton>

namespace veldran::qt {
namespace {

namespace keys = controls::navigatorKeys;
using Lines = std::vector<std::string>;

class Navigator : public testing::Test {
protected:
    Navigator() {
        bar.SetAccessibleName("Comandi delle righe");
        for (const auto key : {keys::primo, keys::nuovo, keys::conferma, keys::elimina}) {
            bar.SetButtonEnabled(key, true);
        }
        window.activate({view});
        kept.push_back(bar.ButtonClick.subscribe([this](const std::string& key, bool& success) {
            pressed.push_back(key);
            success = true;
        }));
    }
    QToolButton* button(std::string_view key) const {
        return view->findChild<QToolButton*>(QStringLiteral("GNV_DETTAGLIO_") +
                                             QString::fromUtf8(key.data(), static_cast<int>(key.size())));
    }
    void key(Qt::Key code) { QTest::keyClick(QApplication::focusWidget(), code); }
    bool focused(std::string_view key) const { return bar.HasFocus() && button(key)->hasFocus(); }

    controls::Form form{"FRM_NAVIGATORE"};
    controls::FrameNavigator bar{form, "GNV_DETTAGLIO"};
    ActiveWindow window;
    FrameNavigatorView* view = new FrameNavigatorView(bar, &window);
    std::vector<Subscription> kept;
    Lines pressed;
};

TEST_F(Navigator, ShowsWhatItsControlSays) {
    bar.SetPositionText("2 di 5");
    EXPECT_EQ(view->findChild<QLabel*>()->text(), QStringLiteral("2 di 5"));
    EXPECT_EQ(button(keys::nuovo)->toolTip(), QStringLiteral("Nuovo: Inserisce un nuovo elemento"));
    EXPECT_EQ(button(keys::nuovo)->accessibleName(), QStringLiteral("Nuovo"));
    EXPECT_EQ(view->accessibleName(), QStringLiteral("Comandi delle righe"));
    EXPECT_TRUE(button(keys::conferma)->isEnabled());
    EXPECT_FALSE(button(keys::annulla)->isEnabled());
    bar.SetButtonTexts(keys::nuovo, "Aggiungi", "");
    EXPECT_EQ(button(keys::nuovo)->toolTip(), QStringLiteral("Aggiungi"));
}

TEST_F(Navigator, FramesTheButtonThatHasTheFocus) {
    const auto isFramed = [this](std::string_view key) {
        const QImage image = button(key)->grab().toImage();
        const QColor mark = view->palette().color(QPalette::Highlight);
        return image.pixelColor(image.width() / 2, 0) == mark &&
               image.pixelColor(0, image.height() / 2) == mark;
    };
    button(keys::nuovo)->setFocus();
    EXPECT_TRUE(isFramed(keys::nuovo));
    EXPECT_FALSE(isFramed(keys::conferma));
    key(Qt::Key_Right);
    EXPECT_FALSE(isFramed(keys::nuovo));
    EXPECT_TRUE(isFramed(keys::conferma));
}

TEST_F(Navigator, HasADifferentPictureForEachButton) {
    std::vector<QImage> pictures;
    for (const auto& one : bar.Buttons()) {
        for (const double scale : {1.0, 2.0}) {
            const QImage picture = navigatorIcon(one.key).pixmap(QSize(16, 16), scale).toImage();
            for (const QImage& other : pictures) {
                EXPECT_NE(picture, other) << one.key;
            }
            pictures.push_back(picture);
        }
    }
    EXPECT_EQ(pictures.size(), 16U);
    EXPECT_TRUE(navigatorIcon("Altro").isNull());
}

TEST_F(Navigator, IsPressedByMouseEnterAndSpace) {
    QTest::mouseClick(button(keys::nuovo), Qt::LeftButton);
    EXPECT_TRUE(focused(keys::nuovo));
    key(Qt::Key_Return);
    key(Qt::Key_Enter);
    key(Qt::Key_Space);
    EXPECT_EQ(pressed, (Lines{"Nuovo", "Nuovo", "Nuovo", "Nuovo"}));
    QTest::mouseClick(button(keys::annulla), Qt::LeftButton);
    EXPECT_EQ(pressed.size(), 4U);
}

TEST_F(Navigator, IsOneStopOfTheTabKeyAndWalkedByTheArrows) {
    window.elsewhere().setFocus();
    QTest::keyClick(&window.elsewhere(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(focused(keys::primo));
    key(Qt::Key_Right);
    EXPECT_TRUE(focused(keys::nuovo)) << "buttons that cannot be pressed are passed over";
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_TRUE(focused(keys::elimina));
    key(Qt::Key_Home);
    EXPECT_TRUE(focused(keys::primo));
    key(Qt::Key_End);
    key(Qt::Key_Left);
    EXPECT_TRUE(focused(keys::conferma));
    key(Qt::Key_Tab);
    EXPECT_TRUE(window.elsewhere().hasFocus());
    QTest::keyClick(&window.elsewhere(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(focused(keys::conferma)) << "the bar is entered where it was left";
    EXPECT_TRUE(pressed.empty());
}

TEST_F(Navigator, KnowsTheButtonBeforeTheFormHearsOfTheFocus) {
    std::string entered;
    kept.push_back(bar.GotFocus.subscribe([&] { entered = bar.FocusedButton(); }));
    button(keys::elimina)->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(entered, "Elimina");
}

TEST_F(Navigator, MovesToTheButtonThatTheFormNames) {
    button(keys::primo)->setFocus();
    bar.FocusButton(keys::elimina);
    EXPECT_TRUE(focused(keys::elimina));
    bar.FocusButton(keys::nuovo);
    EXPECT_TRUE(focused(keys::nuovo));
}

TEST_F(Navigator, NeverLeavesTheFocusOnADisabledButton) {
    button(keys::conferma)->setFocus();
    bar.SetButtonEnabled(keys::conferma, false);
    EXPECT_TRUE(focused(keys::nuovo)) << "the nearest one";
    bar.SetButtonEnabled(keys::nuovo, false);
    EXPECT_TRUE(focused(keys::primo)) << "rather than the one that deletes";
    bar.SetButtonEnabled(keys::primo, false);
    EXPECT_TRUE(focused(keys::elimina));
    bar.SetButtonEnabled(keys::elimina, false);
    EXPECT_TRUE(window.elsewhere().hasFocus()) << "there is nothing left to press";
}

TEST_F(Navigator, ReturnsTheFocusToAButtonThatWasDisabledInPassing) {
    bar.SetButtonEnabled(keys::annulla, true);
    button(keys::conferma)->setFocus();
    bar.SetButtonEnabled(keys::conferma, false);
    bar.SetButtonEnabled(keys::annulla, false);
    bar.SetButtonEnabled(keys::annulla, true);
    EXPECT_FALSE(focused(keys::conferma));
    bar.SetButtonEnabled(keys::conferma, true);
    EXPECT_TRUE(focused(keys::conferma));
}

TEST_F(Navigator, ReturnsTheFocusToAButtonThatWasDisabledWhileAMessageWasShown) {
    button(keys::conferma)->setFocus();
    bar.SetButtonEnabled(keys::conferma, false);
    QDialog message(&window);
    message.show();
    message.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&message));
    message.close();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    button(keys::nuovo)->clearFocus();
    button(keys::nuovo)->setFocus(); // as a document window gives it back
    bar.SetButtonEnabled(keys::conferma, true);
    EXPECT_TRUE(focused(keys::conferma));
}

TEST_F(Navigator, KeepsTheFocusWhereTheUserHasMovedItAfterAButtonWasDisabled) {
    button(keys::conferma)->setFocus();
    bar.SetButtonEnabled(keys::conferma, false);
    key(Qt::Key_Home);
    bar.SetButtonEnabled(keys::conferma, true);
    EXPECT_TRUE(focused(keys::primo));
}

TEST_F(Navigator, KeepsTheFocusWhereTheFormHasPutItAfterAButtonWasDisabled) {
    button(keys::conferma)->setFocus();
    bar.SetButtonEnabled(keys::conferma, false);
    bar.FocusButton(keys::elimina);
    bar.SetButtonEnabled(keys::conferma, true);
    EXPECT_TRUE(focused(keys::elimina));
}

TEST_F(Navigator, KeepsTheFocusOnTheButtonThatTheFormNamesThoughTheBarHadChosenItToo) {
    button(keys::conferma)->setFocus();
    bar.SetButtonEnabled(keys::conferma, false);
    ASSERT_TRUE(focused(keys::nuovo));
    window.elsewhere().setFocus();
    bar.FocusButton(keys::nuovo);
    view->focusPart().setFocus(Qt::OtherFocusReason); // as the form's view does
    bar.SetButtonEnabled(keys::conferma, true);
    EXPECT_TRUE(focused(keys::nuovo)) << "the form has moved on";
}

TEST_F(Navigator, GivesTheFocusAwayWhenTheBarIsDisabled) {
    button(keys::conferma)->setFocus();
    bar.SetEnabled(false);
    EXPECT_TRUE(window.elsewhere().hasFocus());
    QTest::mouseClick(button(keys::nuovo), Qt::LeftButton);
    EXPECT_TRUE(pressed.empty());
}

TEST_F(Navigator, GivesItsKeysToTheFormFirst) {
    std::vector<int> codes;
    kept.push_back(bar.KeyDown.subscribe([&](controls::KeyEvent& event) {
        codes.push_back(event.keyCode);
        event.keyCode = 0;
    }));
    button(keys::nuovo)->setFocus();
    key(Qt::Key_Return);
    key(Qt::Key_Right);
    EXPECT_EQ(codes, (std::vector<int>{13, 39}));
    EXPECT_TRUE(pressed.empty());
    EXPECT_TRUE(focused(keys::nuovo));
}

TEST_F(Navigator, StandsAButtonThatDisablesItself) {
    kept.push_back(bar.ButtonClick.subscribe(
        [this](const std::string& key, bool&) { bar.SetButtonEnabled(key, false); }));
    QTest::mouseClick(button(keys::conferma), Qt::LeftButton);
    EXPECT_EQ(pressed, (Lines{"Conferma"}));
    EXPECT_FALSE(button(keys::conferma)->hasFocus());
    EXPECT_TRUE(bar.HasFocus());
}

} // namespace
} // namespace veldran::qt
