#include "platform/controls/tab_strip.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <memory>

namespace veldran::controls {
namespace {

TEST(Control, TellsEachPropertyThatChangesAndNoneThatDoesNot) {
    SampleForm form;
    int told = 0;
    const auto kept = form.plain.Changed.subscribe([&] { ++told; });
    const auto changes = [&](auto change) {
        const int before = told;
        change();
        const int first = told - before;
        change();
        return first == 1 && told == before + 1;
    };
    EXPECT_TRUE(changes([&] { form.plain.SetCaption("&Ricerca"); }));
    EXPECT_TRUE(changes([&] { form.plain.SetToolTipText("tip"); }));
    EXPECT_TRUE(changes([&] { form.plain.SetAccessibleName("name"); }));
    EXPECT_TRUE(changes([&] { form.plain.SetEnabled(false); }));
    EXPECT_TRUE(changes([&] { form.plain.SetVisible(false); }));
    EXPECT_TRUE(changes([&] { form.plain.SetTabIndex(3); }));
}

TEST(Control, IsReadByItsCaptionUntilItHasANameOfItsOwn) {
    SampleForm form;
    form.plain.SetCaption("Ricerca");
    EXPECT_EQ(form.plain.AccessibleName(), "Ricerca");
    form.plain.SetAccessibleName("Ricerca conto");
    EXPECT_EQ(form.plain.AccessibleName(), "Ricerca conto");
}

TEST(Control, TakesFocusOnlyWhileItAndAllAroundItAreEnabledAndVisible) {
    SampleForm form;
    EXPECT_TRUE(form.inGroup.CanTakeFocus());
    for (Control* around : std::initializer_list<Control*>{&form.inGroup, &form.group, &form.layout, &form}) {
        around->SetEnabled(false);
        EXPECT_FALSE(form.inGroup.CanTakeFocus()) << around->Name();
        around->SetEnabled(true);
        around->SetVisible(false);
        EXPECT_FALSE(form.inGroup.CanTakeFocus()) << around->Name();
        around->SetVisible(true);
    }
    EXPECT_TRUE(form.inGroup.CanTakeFocus());
}

TEST(Control, IsFoundInTheFormAtAnyDepthBlindToCase) {
    SampleForm form;
    EXPECT_EQ(form.FindControl("cmd_ingroup"), &form.inGroup);
    EXPECT_EQ(form.FindControl("LAY_AREA"), &form.layout);
    EXPECT_EQ(form.FindControl("CMD_NONE"), nullptr);
}

TEST(Control, LeavesItsContainerWhenDestroyed) {
    SampleForm form;
    auto extra = std::make_unique<Button>(form.group, "CMD_EXTRA");
    EXPECT_EQ(form.FindControl("CMD_EXTRA"), extra.get());
    extra.reset();
    EXPECT_EQ(form.FindControl("CMD_EXTRA"), nullptr);
    EXPECT_EQ(form.group.Controls().size(), 1U);
}

TEST(Control, SeesAKeyAfterItsFormAndOnlyIfTheFormLeavesIt) {
    SampleForm form;
    std::vector<std::string> seen;
    bool formTakes = false;
    const auto ofForm = form.FormKeyDown.subscribe([&](KeyEvent& event) {
        seen.push_back("form");
        event.keyCode = formTakes ? 0 : event.keyCode;
    });
    const auto ofControl = form.plain.KeyDown.subscribe([&](KeyEvent& event) {
        seen.push_back("control " + std::to_string(event.keyCode) + " " + std::to_string(event.shift));
    });
    EXPECT_FALSE(form.plain.KeyDownFromView(keyC, shiftCtrl));
    formTakes = true;
    EXPECT_TRUE(form.plain.KeyDownFromView(keyC, shiftCtrl));
    EXPECT_EQ(seen, (std::vector<std::string>{"form", "control 67 2", "form"}));
}

TEST(Control, ReportsAConsumedKey) {
    SampleForm form;
    const auto kept = form.plain.KeyDown.subscribe([](KeyEvent& event) { event.keyCode = 0; });
    EXPECT_TRUE(form.plain.KeyDownFromView(keyReturn, shiftNone));
}

TEST(Control, MayBeDestroyedByItsOwnKeyHandler) {
    SampleForm form;
    auto extra = std::make_unique<Button>(form, "CMD_EXTRA");
    const auto kept = extra->KeyDown.subscribe([&](KeyEvent&) { extra.reset(); });
    EXPECT_TRUE(extra->KeyDownFromView(keyReturn, shiftNone)) << "nobody is left to act on the key";
}

TEST(Button, ClicksOnlyWhileItCanTakeTheFocus) {
    SampleForm form;
    int clicks = 0;
    const auto kept = form.inLayout.Click.subscribe([&] { ++clicks; });
    form.inLayout.ClickFromView();
    form.inLayout.SetEnabled(false);
    form.inLayout.ClickFromView();
    form.inLayout.SetEnabled(true);
    form.layout.SetVisible(false);
    form.inLayout.ClickFromView();
    EXPECT_EQ(clicks, 1);
}

TEST(ResizeControl, RefusesUntilAHandlerAllows) {
    SampleForm form;
    ResizeControl resize(form, "QRV_RESIZEFORM");
    EXPECT_FALSE(resize.MayResize());
    const auto kept = resize.QueryResize.subscribe([](bool& may) { may = true; });
    EXPECT_TRUE(resize.MayResize());
    EXPECT_FALSE(resize.Started());
    resize.Start();
    EXPECT_TRUE(resize.Started());
}

TEST(TabStrip, RaisesClickForEverySelectionAlsoOfTheSelectedTab) {
    SampleForm form;
    TabStrip strip(form, "STR_FILTRI");
    strip.AddTab("Tutti", "Tutti i conti");
    strip.AddTab("Att.", "Conti attivati");
    std::vector<int> clicks;
    const auto kept = strip.Click.subscribe([&] { clicks.push_back(strip.SelectedIndex()); });
    EXPECT_EQ(strip.SelectedIndex(), 0);
    EXPECT_EQ(strip.SelectedTab(), nullptr);
    strip.Select(1);
    strip.Select(2);
    strip.Select(2);
    EXPECT_EQ(clicks, (std::vector<int>{1, 2, 2}));
    EXPECT_EQ(strip.SelectedTab()->toolTipText, "Conti attivati");
}

TEST(TabStrip, RefusesATabThatIsNotThereAndKeepsItsSelection) {
    SampleForm form;
    TabStrip strip(form, "STR_FILTRI");
    strip.AddTab("Tutti", "");
    strip.Select(1);
    EXPECT_THROW(strip.Select(0), std::out_of_range);
    EXPECT_THROW(strip.Select(2), std::out_of_range);
    EXPECT_THROW(strip.SetTabCaption(2, "", ""), std::out_of_range);
    EXPECT_EQ(strip.SelectedIndex(), 1);
}

TEST(TabStrip, TakesTranslatedCaptions) {
    SampleForm form;
    TabStrip strip(form, "STR_FILTRI");
    strip.AddTab("Tutti", "Tutti i conti");
    int told = 0;
    const auto kept = strip.Changed.subscribe([&] { ++told; });
    strip.SetTabCaption(1, "Alle", "Alle Konten");
    EXPECT_EQ(strip.Tabs()[0].caption, "Alle");
    EXPECT_EQ(strip.Tabs()[0].toolTipText, "Alle Konten");
    EXPECT_EQ(told, 1);
}

} // namespace
} // namespace veldran::controls
