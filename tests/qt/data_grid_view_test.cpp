#include "adapters/qt/data_grid_view.h"
#include "tests/frames/frame_fixture.h"
#include "tests/qt/active_window.h"
#include "tests/qt/table_user.h"

#include <gtest/gtest.h>

#include <QScrollBar>

namespace veldran::qt {
namespace {

using test::Lines;

/// The grid of an editing frame on the embedded database.
class Grid : public test::FrameTest {
protected:
    void show(int rows, frames::LeavePolicy policy = frames::LeavePolicy::Save) {
        format = std::make_shared<controls::DataFormat>();
        kept.push_back(format->Format.subscribe([this](Value& shown) {
            ++formatted;
            shown = shown.isNull() ? shown : Value("[" + nullSafeText(shown) + "]");
        }));
        form.grid.SetColumnFormat(0, format);
        open(rows, ado::adLockBatchOptimistic, policy);
        view = new DataGridView(form.grid, &window);
        view->showAsNumbers("PERCENTUALE");
        window.activate({view});
        view->setFocus();
    }
    void press(int row) {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, cellOf(*view, row));
    }
    void key(Qt::Key code) { QTest::keyClick(view, code); }
    /// The row shown as the current one; -1 for none.
    int shown() const {
        const QModelIndexList rows = view->selectionModel()->selectedRows();
        return rows.isEmpty() ? -1 : rows.front().row();
    }

    ActiveWindow window;
    DataGridView* view = nullptr;
    std::shared_ptr<controls::DataFormat> format;
    int formatted = 0;
    std::vector<Subscription> kept;
};

TEST_F(Grid, ShowsItsRowsThroughTheirFormats) {
    show(3);
    ASSERT_EQ(view->model()->rowCount(), 3);
    EXPECT_EQ(textOf(*view, 2, 0), QStringLiteral("[C3]"));
    EXPECT_EQ(textOf(*view, 2, 1), QStringLiteral("10.00"));
    EXPECT_EQ(view->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Conto"));
    EXPECT_GE(view->columnWidth(0), view->pixelsOf(1000));
    EXPECT_EQ(shown(), 0);
}

TEST_F(Grid, GivesTheRoomThatIsLeftToItsLastColumn) {
    show(1);
    window.resize(900, 300);
    QApplication::processEvents();
    const QHeaderView& header = *view->horizontalHeader();
    const int last = view->model()->columnCount() - 1;
    EXPECT_EQ(header.length(), view->viewport()->width());
    EXPECT_GT(view->columnWidth(last), view->pixelsOf(form.grid.Columns()[1].width));
    dragColumn(*view, 0, 40);
    EXPECT_EQ(header.length(), view->viewport()->width()) << "what one column takes, the last one gives";
    window.resize(200, 300);
    QApplication::processEvents();
    EXPECT_EQ(view->columnWidth(last), view->pixelsOf(form.grid.Columns()[1].width))
        << "but no column is cut";
}

TEST_F(Grid, SharesTheRoomThatIsLeftAmongColumnsAsWideAsItsLastOne) {
    form.grid.SetColumnWidth(1, form.grid.Columns()[0].width);
    show(1);
    window.resize(901, 300);
    QApplication::processEvents();
    const int width = view->viewport()->width();
    EXPECT_EQ(view->horizontalHeader()->length(), width);
    EXPECT_EQ(view->columnWidth(0), width / 2);
    dragColumn(*view, 0, -100);
    EXPECT_EQ(view->columnWidth(0), width / 2 - 100);
    EXPECT_EQ(form.grid.Columns()[0].width, view->twipsOf(width / 2 - 100));
    window.resize(1101, 300);
    QApplication::processEvents();
    EXPECT_EQ(view->columnWidth(0), width / 2 - 100) << "the user has said how wide it is";
    EXPECT_EQ(view->horizontalHeader()->length(), view->viewport()->width());
}

TEST_F(Grid, GivesTheRoomOfItsScrollBarUpWithoutHavingAnotherOne) {
    form.grid.SetColumnWidth(1, form.grid.Columns()[0].width);
    show(60);
    ASSERT_TRUE(view->verticalScrollBar()->isVisible());
    const int designed = 2 * view->pixelsOf(form.grid.Columns()[0].width);
    const int besideColumns = window.width() - view->viewport()->width();
    const int bar = view->verticalScrollBar()->width();
    for (const int missing : {1, bar}) {
        window.resize(designed - missing + besideColumns, 300);
        QApplication::processEvents();
        EXPECT_EQ(view->horizontalHeader()->length(), view->viewport()->width()) << missing;
    }
    window.resize(designed - bar - 1 + besideColumns, 300);
    QApplication::processEvents();
    EXPECT_EQ(view->horizontalHeader()->length(), designed) << "no column is cut by more";
}

TEST_F(Grid, AlignsNumbersToTheRight) {
    show(1);
    const auto alignment = [this](int column) {
        return view->model()->index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    EXPECT_TRUE(alignment(1).testFlag(Qt::AlignRight));
    EXPECT_TRUE(alignment(0).testFlag(Qt::AlignLeft));
}

TEST_F(Grid, AsksOnlyForTheRowsInSight) {
    show(200);
    view->grab();
    const int inSight = view->viewport()->height() / view->rowHeight(0) + 2;
    EXPECT_GT(formatted, 0);
    EXPECT_LE(formatted, inSight);
    const int first = formatted;
    view->grab();
    EXPECT_EQ(formatted, first);
}

TEST_F(Grid, MovesTheFrameByMouseAndKeys) {
    show(5);
    press(2);
    EXPECT_EQ(prog(), "3");
    key(Qt::Key_Down);
    EXPECT_EQ(prog(), "4");
    key(Qt::Key_Home);
    EXPECT_EQ(prog(), "1");
    key(Qt::Key_End);
    EXPECT_EQ(prog(), "5");
    key(Qt::Key_Down);
    EXPECT_EQ(prog(), "5");
    EXPECT_EQ(shown(), 4);
    EXPECT_EQ(log->taken(), (Lines{"0->0", "0->0", "0->0", "0->0"})) << "each move once";
}

TEST_F(Grid, FollowsTheFrame) {
    show(60);
    frame->MoveLast();
    EXPECT_EQ(shown(), 59);
    EXPECT_TRUE(view->viewport()->rect().contains(cellOf(*view, 59))) << "it is scrolled to";
    addRow("61", "C61");
    EXPECT_EQ(view->model()->rowCount(), 61);
    EXPECT_EQ(textOf(*view, 60, 0), QStringLiteral("[C61]"));
    EXPECT_EQ(shown(), 60);
    frame->Undo();
    EXPECT_EQ(view->model()->rowCount(), 60);
    EXPECT_EQ(shown(), 59);
    typeAccount("ZZ");
    EXPECT_EQ(textOf(*view, 59, 0), QStringLiteral("[ZZ]"));
}

TEST_F(Grid, GoesBackWhenTheFrameStaysWhereItIs) {
    show(3);
    form.sign.ChooseFromView(1);
    log->refused = "BeforeUpdate";
    press(2);
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(shown(), 0);
    key(Qt::Key_Down);
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(view->currentIndex().row(), 0);
}

TEST_F(Grid, KeepsItsPlaceWhileItsRowsAreReplaced) {
    show(60);
    frame->MoveLast();
    dragColumn(*view, 0, 25);
    const int width = view->columnWidth(0);
    const int place = view->verticalScrollBar()->value();
    form.grid.Refresh();
    EXPECT_EQ(view->columnWidth(0), width);
    EXPECT_EQ(form.grid.Columns()[0].width, view->twipsOf(width));
    EXPECT_EQ(view->verticalScrollBar()->value(), place);
}

TEST_F(Grid, TellsADoubleClickAfterTheMove) {
    show(3);
    std::string at;
    kept.push_back(form.grid.DblClick.subscribe([&] { at += prog(); }));
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, cellOf(*view, 1));
    EXPECT_EQ(at, "2");
}

TEST_F(Grid, EditsNothingInPlace) {
    show(2);
    key(Qt::Key_F2);
    QTest::keyClicks(view, QStringLiteral("9"));
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, cellOf(*view, 0));
    EXPECT_EQ(view->findChild<QLineEdit*>(), nullptr);
    EXPECT_EQ(test::Lines{form.grid.CellText(0, 0)}, (Lines{"[C1]"}));
}

TEST_F(Grid, GivesEnterToTheFormAndTabToTheNextControl) {
    show(2);
    int enters = 0;
    kept.push_back(form.grid.KeyDown.subscribe([&](controls::KeyEvent& event) {
        if (event.keyCode == controls::keyReturn) {
            ++enters;
            event.keyCode = 0;
        }
    }));
    key(Qt::Key_Return);
    EXPECT_EQ(enters, 1);
    EXPECT_EQ(prog(), "1");
    key(Qt::Key_Tab);
    EXPECT_TRUE(window.elsewhere().hasFocus());
}

TEST_F(Grid, MovesNothingWhileItIsDisabled) {
    show(3);
    form.grid.SetEnabled(false);
    press(2);
    EXPECT_EQ(prog(), "1");
    EXPECT_EQ(shown(), 0);
    EXPECT_FALSE(view->isEnabled());
}

TEST_F(Grid, ReadsAWholeRowToScreenReaders) {
    show(1);
    EXPECT_EQ(view->model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
              QStringLiteral("Conto [C1], Perc. 10.00"));
}

TEST_F(Grid, ShowsNothingOnceItsFrameIsGone) {
    show(3);
    frame.reset();
    EXPECT_EQ(view->model()->rowCount(), 0);
    EXPECT_EQ(shown(), -1);
}

} // namespace
} // namespace veldran::qt
