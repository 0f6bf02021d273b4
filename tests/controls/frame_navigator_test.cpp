#include "platform/controls/focus_catcher.h"
#include "platform/controls/frame_navigator.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace veldran::controls {
namespace {

class FrameNavigatorTest : public ::testing::Test {
protected:
    FrameNavigatorTest() {
        kept.push_back(navigator->ButtonClick.subscribe([this](const std::string& key, bool& success) {
            lines.push_back("click " + key);
            success = answer;
        }));
        kept.push_back(navigator->AfterButtonClick.subscribe([this](bool success, const std::string& key) {
            lines.push_back("after " + key + (success ? " done" : " refused"));
        }));
    }

    SampleForm form;
    std::unique_ptr<FrameNavigator> navigator = std::make_unique<FrameNavigator>(form, "INV_TESTATA");
    std::vector<std::string> lines;
    std::vector<Subscription> kept;
    bool answer = true;
};

using Lines = std::vector<std::string>;

TEST_F(FrameNavigatorTest, HasItsEightButtonsInOrderAndNoneEnabledWithoutAFrame) {
    Lines keys;
    for (const auto& button : navigator->Buttons()) {
        keys.push_back(button.key);
        EXPECT_FALSE(button.enabled) << button.key;
        EXPECT_FALSE(button.caption.empty()) << button.key;
        EXPECT_FALSE(button.toolTipText.empty()) << button.key;
    }
    EXPECT_EQ(keys, (Lines{"Primo", "Precedente", "Successivo", "Ultimo", "Nuovo", "Conferma", "Annulla",
                           "Elimina"}));
}

TEST_F(FrameNavigatorTest, PutsAPressToTheFrameAndTellsItsAnswer) {
    navigator->SetButtonEnabled("Nuovo", true);
    EXPECT_TRUE(navigator->Press("Nuovo"));
    answer = false;
    EXPECT_FALSE(navigator->Press("Nuovo"));
    EXPECT_EQ(lines, (Lines{"click Nuovo", "after Nuovo done", "click Nuovo", "after Nuovo refused"}));
}

TEST_F(FrameNavigatorTest, IgnoresAPressWhileButtonOrBarAreDisabled) {
    EXPECT_FALSE(navigator->Press("Conferma"));
    navigator->SetButtonEnabled("Conferma", true);
    navigator->SetEnabled(false);
    EXPECT_FALSE(navigator->CanPress("Conferma"));
    EXPECT_FALSE(navigator->Press("Conferma"));
    EXPECT_FALSE(navigator->PressFromView("Conferma"));
    EXPECT_TRUE(lines.empty());
}

TEST_F(FrameNavigatorTest, TakesTheFocusWhenTheUserPressesAndNotWhenTheCodeDoes) {
    navigator->SetButtonEnabled("Elimina", true);
    int entered = 0;
    kept.push_back(navigator->GotFocus.subscribe([&] { ++entered; }));
    navigator->Press("Elimina");
    EXPECT_EQ(entered, 0);
    navigator->PressFromView("Elimina");
    EXPECT_EQ(entered, 1);
    EXPECT_TRUE(navigator->HasFocus());
    EXPECT_EQ(navigator->FocusedButton(), "Elimina");
}

TEST_F(FrameNavigatorTest, GivesTheFocusToOneOfItsButtons) {
    int told = 0;
    kept.push_back(navigator->Changed.subscribe([&] { ++told; }));
    navigator->FocusButton("Nuovo");
    navigator->FocusButton("Nuovo");
    EXPECT_TRUE(navigator->HasFocus());
    EXPECT_EQ(navigator->FocusedButton(), "Nuovo");
    EXPECT_EQ(told, 1);
}

TEST_F(FrameNavigatorTest, RefusesKeysThatItDoesNotHave) {
    EXPECT_THROW(navigator->Press("Salva"), std::out_of_range);
    EXPECT_THROW(navigator->FocusButton("nuovo"), std::out_of_range);
    EXPECT_THROW(navigator->SetButtonEnabled("", true), std::out_of_range);
}

TEST_F(FrameNavigatorTest, TellsItsViewWhatChanged) {
    int told = 0;
    kept.push_back(navigator->Changed.subscribe([&] { ++told; }));
    navigator->SetButtonEnabled("Primo", true);
    navigator->SetButtonEnabled("Primo", true);
    navigator->SetPositionText("2 di 5");
    navigator->SetPositionText("2 di 5");
    navigator->SetButtonTexts("Elimina", "Elimina", "Elimina la riga");
    navigator->SetButtonTexts("Elimina", "Elimina", "Elimina la riga");
    EXPECT_EQ(told, 3);
    EXPECT_EQ(navigator->PositionText(), "2 di 5");
    EXPECT_EQ(navigator->Button("Elimina").toolTipText, "Elimina la riga");
}

TEST_F(FrameNavigatorTest, MayBeDestroyedByItsOwnPress) {
    navigator->SetButtonEnabled("Elimina", true);
    kept.push_back(
        navigator->ButtonClick.subscribe([this](const std::string&, bool&) { navigator.reset(); }));
    navigator->Press("Elimina");
    EXPECT_EQ(lines, (Lines{"click Elimina"}));
}

TEST(FocusCatcher, TellsThatTheFocusReachedIt) {
    SampleForm form;
    FocusCatcher catcher(form, "PIC_FOCUSCATCH");
    int reached = 0;
    const auto kept = catcher.GotFocus.subscribe([&] {
        ++reached;
        form.plain.SetFocus();
    });
    catcher.SetFocus();
    EXPECT_EQ(reached, 1);
    EXPECT_TRUE(form.plain.HasFocus());
    catcher.SetEnabled(false);
    catcher.SetFocus();
    EXPECT_EQ(reached, 1);
}

} // namespace
} // namespace veldran::controls
