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
