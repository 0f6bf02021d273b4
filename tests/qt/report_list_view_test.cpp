#include "adapters/qt/report_list_view.h"
#include "adapters/qt/twips.h"
#include "platform/controls/form.h"
#include "platform/controls/popup_menu.h"
#include "tests/qt/active_window.h"
#include "tests/qt/table_user.h"

#include <gtest/gtest.h>

#include <QScrollBar>

namespace veldran::qt {
namespace {

using Lines = std::vector<std::string>;

class ReportList : public testing::Test {
protected:
    ReportList() {
        list.SetAccessibleName("Causali correlate");
        list.AddColumn("colCodice", "Cod.", 0);
        list.AddColumn("colDescrizione", "Descrizione", 0);
        window.activate({view});
        list.SetColumnWidth(0, 900);
        list.SetColumnWidth(1, 3000);
        fill();
        view->setFocus();
        kept.push_back(list.MouseDown.subscribe([this](const controls::MouseEvent& event) {
            seen.push_back("down " + std::to_string(event.button));
            pressed = event;
        }));
        kept.push_back(list.ItemClick.subscribe(
            [this](controls::ListItem& item) { seen.push_back("click " + item.Text()); }));
    }
    void fill() {
        for (const auto& [code, description] : std::initializer_list<std::pair<const char*, const char*>>{
                 {"ACQ", "Acquisto"}, {"INC", "Incasso"}, {"PAG", "Pagamento"}, {"VEND", "Vendita"}}) {
            list.Add("*" + std::string(code) + "*", code)->SetSubItem(0, description);
        }
    }
    void press(int row, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(view->viewport(), button, Qt::NoModifier, cellOf(*view, row));
    }
    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(view, code, modifiers);
    }
    std::string selected() const { return list.SelectedItem() ? list.SelectedItem()->Text() : ""; }
    /// The row that the view shows as the selected one; "" for none.
    std::string shown() const {
        const QModelIndexList rows = view->selectionModel()->selectedRows();
        return rows.isEmpty() ? "" : rows.front().data().toString().toStdString();
    }
    Lines taken() { return std::exchange(seen, {}); }

    controls::Form form{"FRM_LISTA"};
    controls::ListView list{form, "LST_CAUSALI"};
    ActiveWindow window;
    ReportListView* view = new ReportListView(list, &window);
    std::vector<Subscription> kept;
    Lines seen;
    controls::MouseEvent pressed;
};

TEST_F(ReportList, ShowsColumnsAndRowsOfItsControl) {
    ASSERT_EQ(view->model()->rowCount(), 4);
    EXPECT_EQ(view->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Descrizione"));
    EXPECT_EQ(textOf(*view, 3, 0), QStringLiteral("VEND"));
    EXPECT_EQ(textOf(*view, 3, 1), QStringLiteral("Vendita"));
    EXPECT_EQ(view->columnWidth(1), view->pixelsOf(3000));
    EXPECT_EQ(view->accessibleName(), QStringLiteral("Causali correlate"));
    list.Find("*INC*")->SetText("INC2");
    EXPECT_EQ(textOf(*view, 1, 0), QStringLiteral("INC2"));
    list.Remove("*ACQ*");
    EXPECT_EQ(view->model()->rowCount(), 3);
    EXPECT_EQ(textOf(*view, 0, 0), QStringLiteral("INC2"));
}

TEST_F(ReportList, ReportsWidthsThatTheUserDrags) {
    const int before = view->columnWidth(0);
    dragColumn(*view, 0, 30);
    EXPECT_EQ(view->columnWidth(0), before + 30);
    EXPECT_EQ(list.Columns()[0].width, view->twipsOf(before + 30));
    list.Clear();
    fill();
    EXPECT_EQ(view->columnWidth(0), before + 30) << "other rows leave the columns as the user left them";
    EXPECT_EQ(list.Columns()[1].width, 3000);
}

TEST_F(ReportList, ReportsAWidthThatItsColumnsCanFill) {
    window.resize(700, 300);
    QApplication::processEvents();
    list.SetColumnWidth(0, 550);
    list.SetColumnWidth(1, list.Width() - 550);
    for (int i = 0; i < 100; ++i) {
        list.Add("*" + std::to_string(i) + "*", std::to_string(i));
    }
    QApplication::processEvents();
    EXPECT_GT(list.Width(), view->twipsOf(600));
    EXPECT_TRUE(view->verticalScrollBar()->isVisible());
    EXPECT_FALSE(view->horizontalScrollBar()->isVisible());
}

TEST_F(ReportList, LeavesNoStripForAScrollBarThatIsNotThere) {
    window.resize(700, 300);
    QApplication::processEvents();
    list.SetColumnWidth(0, 550);
    list.SetColumnWidth(1, list.Width() - 550);
    EXPECT_EQ(view->horizontalHeader()->length(), view->viewport()->width());
    EXPECT_EQ(list.Columns()[1].width, list.Width() - 550) << "its column is not another one";
    window.resize(900, 300);
    QApplication::processEvents();
    EXPECT_EQ(view->columnWidth(1), view->pixelsOf(list.Columns()[1].width))
        << "a wider list leaves its columns as they are";
}

TEST_F(ReportList, GrowsItsColumnsWithItsLetters) {
    const int before = view->columnWidth(1);
    QFont large = view->font();
    large.setPointSize(3 * large.pointSize());
    view->setFont(large);
    EXPECT_GT(view->columnWidth(1), 2 * before);
    EXPECT_EQ(list.Columns()[1].width, 3000);
}

TEST_F(ReportList, SelectsTheRowUnderTheLeftButton) {
    press(2);
    EXPECT_EQ(taken(), (Lines{"down 1", "click PAG"}));
    EXPECT_EQ(selected(), "PAG");
    EXPECT_EQ(shown(), "PAG");
    press(2);
    EXPECT_EQ(taken(), (Lines{"down 1", "click PAG"}));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, {5, view->viewport()->height() - 3});
    EXPECT_EQ(taken(), (Lines{"down 1"}));
    EXPECT_EQ(selected(), "PAG");
}

TEST_F(ReportList, ReportsTheRightButtonAndSelectsNothing) {
    press(0);
    taken();
    press(2, Qt::RightButton);
    EXPECT_EQ(taken(), (Lines{"down 2"}));
    EXPECT_EQ(selected(), "ACQ");
    EXPECT_EQ(shown(), "ACQ");
}

TEST_F(ReportList, SelectsTheRowWhoseMenuTheFormOpens) {
    press(0);
    taken();
    controls::PopupMenu menu(form);
    menu.AddItem("Copia correlazione", "ListCopia");
    kept.push_back(list.MouseDown.subscribe([&](const controls::MouseEvent& event) {
        if (event.button == controls::buttonRight) {
            menu.ShowAt(0, 0);
        }
    }));
    press(2, Qt::RightButton);
    EXPECT_EQ(taken(), (Lines{"down 2", "click PAG"}));
    EXPECT_EQ(shown(), "PAG");
    press(2, Qt::RightButton);
    EXPECT_EQ(taken(), (Lines{"down 2"})) << "it is selected already";
}

TEST_F(ReportList, FindsRowsAtPixelsFromItsCorner) {
    press(1, Qt::RightButton);
    const controls::ListHit hit = list.HitTest(pressed.x / twipsPerPixel, pressed.y / twipsPerPixel);
    EXPECT_EQ(hit.index, 1);
    EXPECT_EQ(hit.flags & controls::listHitItem, controls::listHitLabel);
    EXPECT_EQ(list.ItemAt(pressed.x / twipsPerPixel, pressed.y / twipsPerPixel)->Text(), "INC");
    EXPECT_EQ(list.HitTest(5, 5).flags, controls::listHitNowhere) << "the header";
    EXPECT_EQ(list.HitTest(5, view->height() - 5).flags, controls::listHitNowhere) << "below the last row";
    const auto corner = list.ScreenOrigin();
    EXPECT_EQ(QPoint(corner.x, corner.y), view->mapToGlobal(QPoint()));
}

TEST_F(ReportList, CannotBeHitOnceItsViewIsGone) {
    delete view;
    EXPECT_EQ(list.HitTest(20, 40).index, -1);
    EXPECT_EQ(list.ScreenOrigin().x, 0);
    list.Clear();
}

TEST_F(ReportList, IsWalkedByTheKeys) {
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), "ACQ");
    key(Qt::Key_Down);
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_End);
    key(Qt::Key_Down);
    key(Qt::Key_Home);
    key(Qt::Key_PageDown);
    EXPECT_EQ(taken(),
              (Lines{"click ACQ", "click INC", "click ACQ", "click VEND", "click ACQ", "click VEND"}));
    EXPECT_EQ(shown(), "VEND");
}

TEST_F(ReportList, FindsWhatIsTyped) {
    key(Qt::Key_P);
    EXPECT_EQ(selected(), "PAG");
    key(Qt::Key_X);
    EXPECT_EQ(taken(), (Lines{"click PAG"})) << "no code begins with PX";
}

TEST_F(ReportList, ShowsTheRowThatTheFormGoesBackTo) {
    press(0);
    kept.push_back(list.ItemClick.subscribe([this](controls::ListItem& item) {
        if (item.Text() != "ACQ") {
            list.SetSelectedItem(list.Find("*ACQ*"));
        }
    }));
    press(2);
    EXPECT_EQ(shown(), "ACQ");
    key(Qt::Key_Down);
    EXPECT_EQ(shown(), "ACQ");
    EXPECT_EQ(view->currentIndex().row(), 0);
}

TEST_F(ReportList, StandsAFormThatEmptiesItWhileARowIsChosen) {
    kept.push_back(list.ItemClick.subscribe([this](controls::ListItem&) { list.Clear(); }));
    press(2);
    EXPECT_EQ(view->model()->rowCount(), 0);
    EXPECT_EQ(shown(), "");
}

TEST_F(ReportList, SelectsNothingWhenItGetsTheFocus) {
    window.elsewhere().setFocus();
    view->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(list.HasFocus());
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(taken(), Lines{});
}

TEST_F(ReportList, ScrollsToTheRowThatTheFormSelects) {
    for (int i = 0; i < 100; ++i) {
        list.Add("*" + std::to_string(i) + "*", std::to_string(i));
    }
    list.SetSelectedItem(list.Items().back());
    EXPECT_TRUE(view->viewport()->rect().contains(cellOf(*view, 103)));
    EXPECT_EQ(shown(), "99");
}

TEST_F(ReportList, GivesItsKeysToTheFormFirst) {
    press(0);
    taken();
    std::vector<std::pair<int, int>> keys;
    kept.push_back(list.KeyDown.subscribe([&](controls::KeyEvent& event) {
        keys.emplace_back(event.keyCode, event.shift);
        event.keyCode = event.keyCode == 40 ? 0 : event.keyCode;
    }));
    key(Qt::Key_Return);
    key(Qt::Key_Menu);
    key(Qt::Key_F10, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    key(Qt::Key_Down);
    EXPECT_EQ(keys, (std::vector<std::pair<int, int>>{{13, 0}, {93, 0}, {121, 1}, {67, 2}, {40, 0}}));
    EXPECT_EQ(selected(), "ACQ") << "the form has answered the arrow key";
}

TEST_F(ReportList, KeepsTheKeysOfItsMenuFromTheMenusOfTheHost) {
    QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_F10, Qt::ShiftModifier);
    asked.ignore();
    QApplication::sendEvent(view, &asked);
    EXPECT_TRUE(asked.isAccepted());
}

TEST_F(ReportList, SaysThatItIsEmpty) {
    list.Clear();
    const QImage bare = view->grab().toImage();
    view->setEmptyText(QStringLiteral("Nessuna causale correlata"));
    const QImage told = view->grab().toImage();
    EXPECT_NE(told, bare);
    fill();
    const QImage filled = view->grab().toImage();
    view->setEmptyText({});
    EXPECT_EQ(view->grab().toImage(), filled);
}

TEST_F(ReportList, TellsATextThatIsCut) {
    EXPECT_EQ(tipAt(*view->viewport(), cellOf(*view, 2, 1)), QString());
    list.SetColumnWidth(1, 300);
    EXPECT_EQ(tipAt(*view->viewport(), cellOf(*view, 2, 1)), QStringLiteral("Pagamento"));
}

} // namespace
} // namespace veldran::qt
