#include "platform/controls/data_grid.h"
#include "platform/controls/edit_controls.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace veldran::controls {
namespace {

TEST(ComboBox, ChoosesByCodeAndTellsEachNewChoiceOnce) {
    SampleForm form;
    ComboBox combo(form, "CBO_SEGNO");
    combo.AddItem("Avere", 2);
    combo.AddItem("Dare", 1);
    int clicks = 0;
    const auto kept = combo.Click.subscribe([&] { ++clicks; });
    EXPECT_EQ(combo.ListIndex(), -1);
    EXPECT_EQ(combo.Text(), "");
    combo.SetListIndex(1);
    combo.SetListIndex(1);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(combo.Text(), "Dare");
    combo.SetListIndex(-1);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(combo.Text(), "");
}

TEST(ComboBox, RefusesAChoiceThatIsNotThere) {
    SampleForm form;
    ComboBox combo(form, "CBO_SEGNO");
    combo.AddItem("Avere", 2);
    combo.SetListIndex(0);
    EXPECT_THROW(combo.SetListIndex(1), std::out_of_range);
    EXPECT_THROW(combo.SetListIndex(-2), std::out_of_range);
    EXPECT_EQ(combo.ListIndex(), 0);
}

TEST(ComboBox, HasNoChoiceAfterItWasCleared) {
    SampleForm form;
    ComboBox combo(form, "CBO_SEGNO");
    combo.AddItem("Avere", 2);
    combo.SetListIndex(0);
    combo.Clear();
    EXPECT_TRUE(combo.Items().empty());
    EXPECT_EQ(combo.ListIndex(), -1);
}

TEST(NumericField, TellsAChangedNumberAndAChangedMask) {
    SampleForm form;
    NumericField field(form, "TXT_PERC");
    int changes = 0;
    int told = 0;
    const auto ofValue = field.Change.subscribe([&] { ++changes; });
    const auto ofView = field.Changed.subscribe([&] { ++told; });
    EXPECT_TRUE(field.GetValue().isNull());
    field.SetValue(Decimal{1250, 2});
    field.SetValue(Decimal{1250, 2});
    EXPECT_EQ(changes, 1);
    field.SetValue({});
    EXPECT_EQ(changes, 2);
    field.SetFormatMask("##0.00;-##0.00;;");
    field.SetFormatMask("##0.00;-##0.00;;");
    EXPECT_EQ(told, 3);
}

TEST(ComboBox, ShowsARecordsChoiceWithoutTellingAnybodyButItsView) {
    SampleForm form;
    ComboBox combo(form, "CBO_SEGNO");
    combo.AddItem("Avere", 2);
    combo.AddItem("Dare", 1);
    int events = 0;
    int told = 0;
    const auto validates = combo.Validate.subscribe([&](bool&) { ++events; });
    const auto clicks = combo.Click.subscribe([&] { ++events; });
    const auto views = combo.Changed.subscribe([&] { ++told; });
    combo.ShowListIndex(combo.IndexOf(1));
    combo.ShowListIndex(1);
    EXPECT_EQ(combo.Text(), "Dare");
    EXPECT_EQ(combo.IndexOf(3), -1);
    EXPECT_EQ(events, 0);
    EXPECT_EQ(told, 1);
    EXPECT_THROW(combo.ShowListIndex(2), std::out_of_range);
}

TEST(ComboBox, GoesBackToTheOldChoiceWhenTheNewOneIsRefused) {
    SampleForm form;
    ComboBox combo(form, "CBO_SEGNO");
    combo.AddItem("Avere", 2);
    combo.AddItem("Dare", 1);
    combo.ChooseFromView(0);
    int clicks = 0;
    std::string seen;
    const auto validates = combo.Validate.subscribe([&](bool& cancel) {
        seen = combo.Text();
        cancel = true;
    });
    const auto kept = combo.Click.subscribe([&] { ++clicks; });
    combo.ChooseFromView(1);
    EXPECT_EQ(seen, "Dare");
    EXPECT_EQ(combo.Text(), "Avere");
    EXPECT_EQ(clicks, 0);
}

TEST(ComboBox, ChoosesTheNextItemThatBeginsWithWhatIsTyped) {
    SampleForm form;
    ComboBox combo(form, "CBO_SEGNO");
    combo.TypeFromView("a");
    combo.AddItem("Avere", 2);
    combo.AddItem("Dare", 1);
    combo.AddItem("Altro", 3);
    combo.TypeFromView("d");
    EXPECT_EQ(combo.Text(), "Dare");
    combo.TypeFromView("A");
    EXPECT_EQ(combo.Text(), "Altro");
    combo.TypeFromView("a");
    EXPECT_EQ(combo.Text(), "Avere");
    combo.TypeFromView("x");
    combo.TypeFromView("");
    EXPECT_EQ(combo.Text(), "Avere");
    combo.SetEnabled(false);
    combo.TypeFromView("d");
    EXPECT_EQ(combo.Text(), "Avere");
}

TEST(NumericField, TakesCommaAndPointAndShowsTheMaskOnceItIsLeft) {
    SampleForm form;
    NumericField field(form, "TXT_PERC");
    field.SetFormatMask("##0.00;-##0.00;;");
    field.TypeFromView("12,5");
    EXPECT_TRUE(field.HasPendingText());
    EXPECT_EQ(field.Text(), "12,5");
    EXPECT_TRUE(field.GetValue().isNull());
    EXPECT_TRUE(field.LeaveFromView());
    EXPECT_EQ(field.GetValue(), Value(Decimal{125, 1}));
    EXPECT_EQ(field.Text(), "12.50");
    field.TypeFromView("33.3");
    EXPECT_TRUE(field.LeaveFromView());
    EXPECT_EQ(field.Text(), "33.30");
}

TEST(NumericField, BecomesEmptyWhenItsTextIsDeleted) {
    SampleForm form;
    NumericField field(form, "TXT_PERC");
    field.SetValue(Decimal{50, 0});
    field.TypeFromView(" ");
    EXPECT_TRUE(field.LeaveFromView());
    EXPECT_TRUE(field.GetValue().isNull());
    EXPECT_EQ(field.Text(), "");
}

TEST(NumericField, KeepsATextThatIsNoNumberAsItWasTyped) {
    SampleForm form;
    NumericField field(form, "TXT_PERC");
    field.SetValue(Decimal{50, 0});
    std::string refused;
    const auto kept = field.NotANumber.subscribe([&](const std::string& text) { refused = text; });
    field.TypeFromView("12x");
    EXPECT_FALSE(field.LeaveFromView());
    EXPECT_EQ(refused, "12x");
    EXPECT_EQ(field.Text(), "12x");
    EXPECT_EQ(field.GetValue(), Value(Decimal{50, 0}));
    EXPECT_TRUE(field.HasPendingText());
}

TEST(NumericField, KeepsTheTypedTextWhenItsValueIsRefused) {
    SampleForm form;
    NumericField field(form, "TXT_PERC");
    field.SetValue(Decimal{50, 0});
    int changes = 0;
    const auto validates = field.Validate.subscribe([](bool& cancel) { cancel = true; });
    const auto kept = field.Change.subscribe([&] { ++changes; });
    field.TypeFromView("5000");
    EXPECT_FALSE(field.LeaveFromView());
    EXPECT_EQ(field.Text(), "5000");
    EXPECT_EQ(field.GetValue(), Value(Decimal{50, 0}));
    EXPECT_EQ(changes, 0);
    field.SetValue(Decimal{60, 0});
    EXPECT_EQ(field.GetValue(), Value(Decimal{50, 0}));
}

TEST(NumericField, TellsNothingWhenTheSameNumberIsTypedAgain) {
    SampleForm form;
    NumericField field(form, "TXT_PERC");
    field.SetFormatMask("##0.00;-##0.00;;");
    field.SetValue(Decimal{50, 0});
    int changes = 0;
    int typed = 0;
    const auto ofValue = field.Change.subscribe([&] { ++changes; });
    const auto ofText = field.Typed.subscribe([&] { ++typed; });
    field.TypeFromView("50.00");
    EXPECT_EQ(typed, 0);
    field.TypeFromView("50,0");
    EXPECT_TRUE(field.LeaveFromView());
    EXPECT_EQ(field.Text(), "50.00");
    EXPECT_EQ(typed, 1);
    EXPECT_EQ(changes, 0);
}

TEST(NumericField, ShowsARecordsValueAndForgetsWhatWasTyped) {
    SampleForm form;
    NumericField field(form, "TXT_PERC");
    int events = 0;
    const auto validates = field.Validate.subscribe([&](bool&) { ++events; });
    const auto changes = field.Change.subscribe([&] { ++events; });
    field.TypeFromView("12x");
    field.ShowValue({});
    EXPECT_EQ(field.Text(), "");
    field.ShowValue(Decimal{2550, 2});
    EXPECT_EQ(field.Text(), "25.50");
    EXPECT_FALSE(field.HasPendingText());
    EXPECT_EQ(events, 0);
}

TEST(DataGrid, ShowsSeveralColumnsThroughOneFormat) {
    SampleForm form;
    DataGrid grid(form, "GRD_DETTAGLIO");
    grid.AddColumn("Avere", "AVERE", 1800);
    grid.AddColumn("Dare", "DARE", 1800);
    const auto format = std::make_shared<DataFormat>();
    grid.SetColumnFormat(0, format);
    grid.SetColumnFormat(1, format);
    EXPECT_EQ(grid.Columns()[0].format, grid.Columns()[1].format);
    EXPECT_EQ(grid.Columns()[1].dataField, "DARE");
    EXPECT_THROW(grid.SetColumnFormat(2, format), std::out_of_range);
}

TEST(MdiContainer, KeepsThePlacementItIsGiven) {
    SampleForm form;
    MdiContainer container(form, "MDIActiveX1");
    container.Embed(100, 200, windowMaximized, true);
    container.SetValue("Attivazione");
    EXPECT_EQ(container.GetPlacement().top, 100);
    EXPECT_EQ(container.GetPlacement().left, 200);
    EXPECT_EQ(container.GetPlacement().windowState, windowMaximized);
    EXPECT_TRUE(container.GetPlacement().modal);
    EXPECT_EQ(container.GetValue(), "Attivazione");
}

} // namespace
} // namespace veldran::controls
