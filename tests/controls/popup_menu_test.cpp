#include "platform/controls/popup_menu.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

namespace veldran::controls {
namespace {

class PopupMenuTest : public ::testing::Test {
protected:
    PopupMenuTest() {
        kept.push_back(form.PopupRequested.subscribe([this](PopupMenu& asked, const PopupPlace& place) {
            EXPECT_EQ(&asked, &menu);
            places.push_back(place);
        }));
        kept.push_back(menu.AfterItemClick.subscribe([this](const std::string& key) {
            menu.Clear();
            clicked.push_back(key);
        }));
    }
    void fill() {
        menu.Clear();
        menu.SetName("PopupList");
        menu.AddItem("Copia", "Copia");
        menu.AddItem("-", "Separatore");
        menu.AddItem("Incolla", "Incolla", true);
    }

    SampleForm form;
    PopupMenu menu{form};
    std::vector<PopupPlace> places;
    std::vector<std::string> clicked;
    std::vector<Subscription> kept;
};

TEST_F(PopupMenuTest, KeepsItsItemsAsTheyWereAdded) {
    fill();
    ASSERT_EQ(menu.Items().size(), 3U);
    EXPECT_EQ(menu.Name(), "PopupList");
    EXPECT_FALSE(menu.Items()[0].disabled);
    EXPECT_TRUE(menu.Items()[1].IsSeparator());
    EXPECT_TRUE(menu.Items()[2].disabled);
}

TEST_F(PopupMenuTest, OpensAtAPointOfTheScreenOrAtAControl) {
    fill();
    menu.ShowAt(120, 340);
    menu.ShowAt(form.plain);
    ASSERT_EQ(places.size(), 2U);
    EXPECT_EQ(places[0].anchor, nullptr);
    EXPECT_EQ(places[0].x, 120);
    EXPECT_EQ(places[0].y, 340);
    EXPECT_EQ(places[1].anchor, &form.plain);
}

TEST_F(PopupMenuTest, DoesNotOpenWithoutItems) {
    menu.ShowAt(1, 1);
    EXPECT_TRUE(places.empty());
}

TEST_F(PopupMenuTest, TellsTheClickedItemEvenWhenTheHandlerEmptiesTheMenu) {
    fill();
    menu.ClickFromView("Copia");
    EXPECT_EQ(clicked, (std::vector<std::string>{"Copia"}));
    EXPECT_TRUE(menu.Items().empty());
}

TEST_F(PopupMenuTest, IgnoresSeparatorsDisabledItemsAndUnknownKeys) {
    fill();
    menu.ClickFromView("Separatore");
    menu.ClickFromView("Incolla");
    menu.ClickFromView("Taglia");
    EXPECT_TRUE(clicked.empty());
}

} // namespace
} // namespace veldran::controls
