#include "platform/controls/list_view.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace veldran::controls {
namespace {

class ListViewTest : public ::testing::Test {
protected:
    ListViewTest() {
        list.AddColumn("colCodice", "Cod.", 400);
        list.AddColumn("colDescrizione", "Descrizione", 1000);
        kept.push_back(list.ItemClick.subscribe([this](ListItem& item) { clicked.push_back(item.Text()); }));
    }

    ListView::Item add(const std::string& code) { return list.Add("*" + code + "*", code); }

    SampleForm form;
    ListView list{form, "LST_CAUSALI"};
    std::vector<std::string> clicked;
    std::vector<Subscription> kept;
};

using Texts = std::vector<std::string>;

TEST_F(ListViewTest, KeepsColumnsWithWidthsInTwips) {
    EXPECT_EQ(list.Columns()[0].key, "colCodice");
    EXPECT_EQ(list.Columns()[1].caption, "Descrizione");
    list.SetWidth(4000);
    list.SetColumnWidth(0, 550);
    list.SetColumnWidth(1, list.Width() - list.Columns()[0].width);
    EXPECT_EQ(list.Columns()[0].width, 550);
    EXPECT_EQ(list.Columns()[1].width, 3450);
    EXPECT_THROW(list.SetColumnWidth(2, 100), std::out_of_range);
}

TEST_F(ListViewTest, KeepsRowsInTheOrderOfTheirAdditionWithTheirParts) {
    const auto second = add("VEND");
    const auto first = add("ACQ");
    second->SetSubItem(0, "Vendite");
    second->SetTag("VEND");
    EXPECT_EQ(list.Items()[0], second);
    EXPECT_EQ(list.Items()[1], first);
    EXPECT_EQ(list.Find("*VEND*")->SubItem(0), "Vendite");
    EXPECT_EQ(list.Find("*VEND*")->Tag(), "VEND");
    EXPECT_EQ(first->SubItem(0), "");
    EXPECT_EQ(list.Find("*vend*"), nullptr);
}

TEST_F(ListViewTest, RefusesASecondRowWithTheSameKey) {
    add("ACQ");
    EXPECT_THROW(add("ACQ"), std::invalid_argument);
    EXPECT_EQ(list.Items().size(), 1U);
}

TEST_F(ListViewTest, HasNoSelectionUntilARowIsChosen) {
    add("ACQ");
    EXPECT_EQ(list.SelectedItem(), nullptr);
    EXPECT_TRUE(clicked.empty());
}

TEST_F(ListViewTest, TellsASelectionByCodeOnlyWhenItIsAnotherRow) {
    const auto item = add("ACQ");
    list.SetSelectedItem(item);
    list.SetSelectedItem(item);
    EXPECT_EQ(clicked, (Texts{"ACQ"}));
    list.SetSelectedItem(nullptr);
    EXPECT_EQ(list.SelectedItem(), nullptr);
    EXPECT_EQ(clicked, (Texts{"ACQ"}));
}

TEST_F(ListViewTest, TellsEveryClickOfTheUser) {
    add("ACQ");
    add("VEND");
    list.SelectFromView(1);
    list.SelectFromView(1);
    list.SelectFromView(7);
    EXPECT_EQ(clicked, (Texts{"VEND", "VEND"}));
    EXPECT_EQ(list.SelectedItem()->Text(), "VEND");
}

TEST_F(ListViewTest, IgnoresTheUserWhileItIsDisabled) {
    add("ACQ");
    list.SetEnabled(false);
    list.SelectFromView(0);
    EXPECT_EQ(list.SelectedItem(), nullptr);
}

TEST_F(ListViewTest, LosesTheSelectionWithItsRow) {
    add("ACQ");
    const auto vend = add("VEND");
    int selections = 0;
    kept.push_back(list.SelectionChanged.subscribe([&] { ++selections; }));
    list.SetSelectedItem(vend);
    list.Remove("*ACQ*");
    EXPECT_EQ(list.SelectedItem(), vend);
    list.Remove("*VEND*");
    list.Remove("*VEND*");
    EXPECT_EQ(list.SelectedItem(), nullptr);
    EXPECT_EQ(selections, 2);
    EXPECT_TRUE(list.Items().empty());
}

TEST_F(ListViewTest, LeavesARowThatSomebodyKeepsReadableAfterTheListWasCleared) {
    const auto vend = add("VEND");
    list.SetSelectedItem(vend);
    list.Clear();
    EXPECT_EQ(vend->Text(), "VEND");
    EXPECT_FALSE(vend->IsInList());
    vend->SetSubItem(0, "Vendite");
    EXPECT_EQ(list.SelectedItem(), nullptr);
    EXPECT_THROW(list.SetSelectedItem(vend), std::invalid_argument);
    add("VEND");
    EXPECT_EQ(list.Items().size(), 1U);
}

TEST_F(ListViewTest, LetsAHandlerClearTheListThatRaisesIt) {
    add("ACQ");
    kept.push_back(list.SelectionChanged.subscribe([this] { list.Clear(); }));
    list.SelectFromView(0);
    EXPECT_TRUE(clicked.empty());
    EXPECT_TRUE(list.Items().empty());
}

TEST_F(ListViewTest, TellsItsViewOfChangedRows) {
    int told = 0;
    kept.push_back(list.ItemsChanged.subscribe([&] { ++told; }));
    const auto item = add("ACQ");
    item->SetText("ACQ");
    item->SetText("ACQU");
    item->SetSubItem(0, "Acquisti");
    item->SetSubItem(0, "Acquisti");
    EXPECT_EQ(told, 3);
}

TEST_F(ListViewTest, HitsNothingWithoutAView) {
    add("ACQ");
    EXPECT_EQ(list.HitTest(5, 5).index, -1);
    EXPECT_EQ(list.HitTest(5, 5).flags & listHitItem, 0);
    EXPECT_EQ(list.ItemAt(5, 5), nullptr);
    EXPECT_EQ(list.ScreenOrigin().x, 0);
}

TEST_F(ListViewTest, AsksTheViewWhatLiesUnderAPoint) {
    add("ACQ");
    add("VEND");
    list.SetHitTester([](int, int y) {
        return y < 40   ? ListHit{y / 20, listHitLabel}
               : y < 60 ? ListHit{9, listHitIcon}
                        : ListHit{0, listHitNowhere};
    });
    list.SetScreenOrigin([] { return ListView::ScreenPoint{100, 200}; });
    EXPECT_EQ(list.ItemAt(3, 25)->Text(), "VEND");
    EXPECT_EQ(list.ItemAt(3, 45), nullptr);
    EXPECT_EQ(list.ItemAt(3, 99), nullptr);
    EXPECT_EQ(list.ScreenOrigin().y, 200);
}

TEST_F(ListViewTest, PassesTheMouseAndTheKeysOn) {
    add("ACQ");
    int button = 0;
    kept.push_back(list.MouseDown.subscribe([&](const MouseEvent& event) { button = event.button; }));
    kept.push_back(list.KeyDown.subscribe(
        [&](KeyEvent& event) { event.keyCode = event.keyCode == keyReturn ? 0 : event.keyCode; }));
    list.MouseDownFromView({buttonRight, shiftNone, 30, 45});
    EXPECT_EQ(button, buttonRight);
    EXPECT_TRUE(list.KeyDownFromView(keyReturn, shiftNone));
    EXPECT_FALSE(list.KeyDownFromView(keyC, shiftNone));
}

TEST(ListViewLife, LetsARowOutliveItsList) {
    SampleForm form;
    ListView::Item item;
    {
        ListView list(form, "LST_CAUSALI");
        item = list.Add("*ACQ*", "ACQ");
    }
    item->SetText("ACQU");
    EXPECT_FALSE(item->IsInList());
}

} // namespace
} // namespace veldran::controls
