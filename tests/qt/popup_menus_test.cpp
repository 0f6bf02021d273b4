#include "adapters/qt/popup_menus.h"
#include "adapters/qt/report_list_view.h"
#include "platform/controls/form.h"
#include "platform/controls/list_view.h"
#include "tests/qt/active_window.h"

#include <gtest/gtest.h>

namespace veldran::qt {
namespace {

using Lines = std::vector<std::string>;

class Menus : public testing::Test {
protected:
    Menus() {
        list.AddColumn("colCodice", "Cod.", 900);
        list.Add("*ACQ*", "ACQ");
        list.Add("*VEND*", "VEND");
        menu.SetName("PopupList");
        menu.AddItem("Copia correlazione", "ListCopia");
        menu.AddItem("Incolla corr. ACQ - A & B", "ListIncolla", true);
        menu.AddItem("-", "ListSep1");
        menu.AddItem("Elimina correlazione", "ListElimina");
        kept = menu.AfterItemClick.subscribe([this](const std::string& key) {
            clicked.push_back(key + (shown() != nullptr && shown()->isVisible() ? " while open" : ""));
        });
        window.activate({view});
        new PopupMenus(form, window, [this](const controls::Control& control) {
            return &control == &list ? view : nullptr;
        });
    }
    QMenu* shown() const { return window.findChild<QMenu*>(QStringLiteral("PopupList")); }

    controls::Form form{"FRM_MENU"};
    controls::ListView list{form, "LST_CAUSALI"};
    controls::PopupMenu menu{form};
    Subscription kept;
    Lines clicked;
    ActiveWindow window;
    ReportListView* view = new ReportListView(list, &window);
};

TEST_F(Menus, ShowCaptionsSeparatorsAndDisabledItems) {
    menu.ShowAt(30, 40);
    ASSERT_NE(shown(), nullptr);
    const auto actions = shown()->actions();
    ASSERT_EQ(actions.size(), 4);
    EXPECT_EQ(actions[0]->text(), QStringLiteral("Copia correlazione"));
    EXPECT_EQ(actions[1]->text(), QStringLiteral("Incolla corr. ACQ - A && B"));
    EXPECT_TRUE(actions[0]->isEnabled());
    EXPECT_FALSE(actions[1]->isEnabled());
    EXPECT_TRUE(actions[2]->isSeparator());
    EXPECT_EQ(shown()->pos(), QPoint(30, 40));
}

TEST_F(Menus, TellTheItemOnceTheyHaveClosed) {
    menu.ShowAt(30, 40);
    QTest::mouseClick(shown(), Qt::LeftButton, Qt::NoModifier,
                      shown()->actionGeometry(shown()->actions()[3]).center());
    QApplication::processEvents();
    EXPECT_EQ(clicked, (Lines{"ListElimina"}));
}

TEST_F(Menus, AreLeftWithoutAChoiceByEscape) {
    menu.ShowAt(30, 40);
    QTest::keyClick(shown(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_FALSE(shown()->isVisible());
    EXPECT_TRUE(clicked.empty());
}

TEST_F(Menus, OfTheKeyboardOpenBelowTheCurrentRowOnTheirFirstItem) {
    list.SetSelectedItem(list.Items()[1]);
    menu.ShowAt(list);
    const QRect row = view->visualRect(view->currentIndex());
    EXPECT_EQ(shown()->pos(), view->viewport()->mapToGlobal(row.bottomLeft()));
    QTest::keyClick(shown(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(clicked, (Lines{"ListCopia"}));
}

TEST_F(Menus, OfAControlWithoutARowOpenAtItsCorner) {
    menu.ShowAt(list);
    EXPECT_EQ(shown()->pos(), view->mapToGlobal(QPoint()));
}

TEST_F(Menus, AreShownOneAtATime) {
    menu.ShowAt(30, 40);
    const QPointer<QMenu> first = shown();
    menu.Clear();
    menu.AddItem("Annulla", "ListAnnulla");
    menu.ShowAt(50, 60);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull());
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(shown()->actions().size(), 1);
}

TEST_F(Menus, MayBeOpenedAgainByTheirOwnItem) {
    int opened = 0;
    const auto again = menu.AfterItemClick.subscribe([&](const std::string&) {
        if (++opened == 1) {
            menu.ShowAt(10, 10);
        }
    });
    menu.ShowAt(list);
    QTest::keyClick(shown(), Qt::Key_Return);
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(shown()->isVisible());
}

TEST_F(Menus, GoAwayWithTheirForm) {
    form.Load();
    menu.ShowAt(list);
    QTest::keyClick(shown(), Qt::Key_Return);
    EXPECT_TRUE(form.Unload());
    QApplication::processEvents();
    EXPECT_TRUE(clicked.empty()) << "the choice was on its way to a form that is no more";
    EXPECT_EQ(shown(), nullptr);
}

} // namespace
} // namespace veldran::qt
