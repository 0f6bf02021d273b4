#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <memory>

namespace veldran::controls {
namespace {

using Lines = std::vector<std::string>;

class Focus : public testing::Test {
protected:
    Focus() {
        for (Control* control : std::initializer_list<Control*>{&form.plain, &form.inLayout, &form.inGroup}) {
            log.follow(*control);
        }
        log.follow(form);
    }

    SampleForm form;
    FocusLog log;
};

TEST_F(Focus, LeavesTheOldControlBeforeItReachesTheNew) {
    form.plain.SetFocus();
    form.inGroup.SetFocus();
    EXPECT_EQ(log.lines, (Lines{"+CMD_PLAIN", ">CMD_PLAIN", "-CMD_PLAIN", "+CMD_INGROUP", ">CMD_INGROUP"}));
    EXPECT_TRUE(form.inGroup.HasFocus());
    EXPECT_FALSE(form.plain.HasFocus());
}

TEST_F(Focus, IsNotMovedToWhereItIs) {
    form.plain.SetFocus();
    log.lines.clear();
    form.plain.SetFocus();
    form.MoveFocusTo(&form.plain);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(Focus, IsNotGivenToAControlThatCannotTakeIt) {
    form.plain.SetFocus();
    form.inLayout.SetEnabled(false);
    form.layout.SetVisible(false);
    log.lines.clear();
    form.inLayout.SetFocus();
    form.inGroup.SetFocus();
    form.MoveFocusTo(&form.inGroup);
    EXPECT_TRUE(log.lines.empty());
    EXPECT_TRUE(form.plain.HasFocus());
}

TEST_F(Focus, IsNotGivenToAControlOfAnotherForm) {
    SampleForm other;
    form.MoveFocusTo(&other.plain);
    EXPECT_EQ(form.ActiveControl(), nullptr);
}

TEST_F(Focus, IsLostWhenTheLayoutAroundTheControlIsHidden) {
    form.inGroup.SetFocus();
    log.lines.clear();
    form.layout.SetVisible(false);
    EXPECT_EQ(log.lines, (Lines{"-CMD_INGROUP", ">"}));
    EXPECT_EQ(form.ActiveControl(), nullptr);
}

TEST_F(Focus, IsLostWhenTheControlIsDisabledButNotWhenAnotherIs) {
    form.plain.SetFocus();
    form.inGroup.SetEnabled(false);
    EXPECT_TRUE(form.plain.HasFocus());
    form.plain.SetEnabled(false);
    EXPECT_FALSE(form.plain.HasFocus());
}

TEST_F(Focus, GoesWhereALostFocusHandlerSendsIt) {
    form.plain.SetFocus();
    const auto kept = form.plain.LostFocus.subscribe([&] { form.inLayout.SetFocus(); });
    log.lines.clear();
    form.inGroup.SetFocus();
    EXPECT_EQ(log.lines, (Lines{"-CMD_PLAIN", "+CMD_INLAYOUT", ">CMD_INLAYOUT"}));
    EXPECT_TRUE(form.inLayout.HasFocus());
}

TEST_F(Focus, GoesWhereAGotFocusHandlerSendsIt) {
    const auto kept = form.plain.GotFocus.subscribe([&] { form.inLayout.SetFocus(); });
    form.plain.SetFocus();
    EXPECT_EQ(log.lines, (Lines{"+CMD_PLAIN", "-CMD_PLAIN", "+CMD_INLAYOUT", ">CMD_INLAYOUT"}));
}

TEST_F(Focus, ReachesNobodyWhenTheTargetIsDisabledOnTheWay) {
    form.plain.SetFocus();
    const auto kept = form.plain.LostFocus.subscribe([&] { form.inGroup.SetEnabled(false); });
    log.lines.clear();
    form.inGroup.SetFocus();
    EXPECT_EQ(log.lines, (Lines{"-CMD_PLAIN", ">"}));
}

TEST_F(Focus, SurvivesATargetDestroyedOnTheWay) {
    auto extra = std::make_unique<Button>(form, "CMD_EXTRA");
    form.plain.SetFocus();
    const auto kept = form.plain.LostFocus.subscribe([&] { extra.reset(); });
    form.MoveFocusTo(extra.get());
    EXPECT_EQ(form.ActiveControl(), nullptr);
}

TEST_F(Focus, IsForgottenWithTheActiveControl) {
    auto extra = std::make_unique<Button>(form, "CMD_EXTRA");
    extra->SetFocus();
    extra.reset();
    EXPECT_EQ(form.ActiveControl(), nullptr);
    form.plain.SetFocus();
    EXPECT_TRUE(form.plain.HasFocus());
}

TEST(FocusMove, MayDestroyTheForm) {
    auto form = std::make_unique<SampleForm>();
    form->plain.SetFocus();
    Button* target = &form->inGroup;
    const auto kept = form->plain.LostFocus.subscribe([&] { form.reset(); });
    target->SetFocus();
    EXPECT_EQ(form, nullptr);
}

} // namespace
} // namespace veldran::controls
