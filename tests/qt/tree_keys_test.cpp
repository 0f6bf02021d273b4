#include "tests/qt/tree_screen.h"

#include <QAction>

namespace veldran::qt {
namespace {

using TreeKeys = TreeScreen;

TEST_F(TreeKeys, CheckTheSelectedRowOnceByTheSpaceBar) {
    key(Qt::Key_Space);
    EXPECT_EQ(lines, (Lines{"check first"}));
    EXPECT_TRUE(first->Checked());
    key(Qt::Key_Space);
    EXPECT_FALSE(first->Checked());
    EXPECT_EQ(form.tree.SelectedItem(), first);
}

TEST_F(TreeKeys, CheckNothingWhileTheSpaceBarIsHeldDown) {
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
    QApplication::sendEvent(&widget, &held);
    EXPECT_TRUE(lines.empty());
}

TEST_F(TreeKeys, CheckNothingWithoutASelection) {
    form.tree.SetSelectedItem(nullptr);
    key(Qt::Key_Space);
    EXPECT_TRUE(lines.empty());
}

TEST_F(TreeKeys, OpenAndCloseByRightAndLeft) {
    key(Qt::Key_Right);
    EXPECT_TRUE(first->Expanded());
    key(Qt::Key_Right);
    EXPECT_EQ(form.tree.SelectedItem(), branch);
    key(Qt::Key_Left);
    EXPECT_EQ(form.tree.SelectedItem(), first);
    key(Qt::Key_Left);
    EXPECT_FALSE(first->Expanded());
    EXPECT_EQ(lines, (Lines{"expand first", "click branch", "click first", "collapse first"}));
}

TEST_F(TreeKeys, OpenAndCloseByPlusAndMinus) {
    key(Qt::Key_Plus);
    EXPECT_TRUE(first->Expanded());
    key(Qt::Key_Minus);
    EXPECT_FALSE(first->Expanded());
    EXPECT_EQ(lines, (Lines{"expand first", "collapse first"}));
}

TEST_F(TreeKeys, LeaveALeafClosed) {
    form.tree.EnsureVisible(*accounts[0]);
    form.tree.SetSelectedItem(accounts[0]);
    lines.clear();
    key(Qt::Key_Plus);
    key(Qt::Key_Right);
    EXPECT_TRUE(lines.empty());
    EXPECT_FALSE(widget.isExpanded(indexOf(accounts[0])));
}

TEST_F(TreeKeys, MoveTheSelectionUpAndDownAndToTheEnds) {
    key(Qt::Key_Down);
    key(Qt::Key_Up);
    key(Qt::Key_End);
    key(Qt::Key_Home);
    EXPECT_EQ(lines, (Lines{"click second", "click first", "click second", "click first"}));
}

TEST_F(TreeKeys, OpenAllThatIsLoadedBelowByAsterisk) {
    key(Qt::Key_Asterisk);
    EXPECT_TRUE(first->Expanded());
    EXPECT_TRUE(branch->Expanded());
    EXPECT_FALSE(second->Expanded());
    EXPECT_TRUE(widget.isExpanded(indexOf(branch)));
}

TEST_F(TreeKeys, OpenABoundedNumberOfRowsByAsterisk) {
    int queries = 0;
    keep(form.tree.Expand.subscribe([&](controls::TreeNode& node) { // each row opened loads fifty more
        ++queries;
        while (node.Children() > 0) {
            form.tree.Remove(*node.Child());
        }
        for (int i = 0; i < 50; ++i) {
            form.tree.Add(&form.tree.Add(&node, "n", "Nodo", 3, 3), "placeholder");
        }
    }));
    form.tree.SetSelectedItem(second);
    key(Qt::Key_Asterisk);
    EXPECT_EQ(queries, TreeWidget::expandAllLimit);
    EXPECT_EQ(form.tree.SelectedItem(), second);
}

TEST_F(TreeKeys, ReachTheControlFirstWithTheirCodes) {
    std::vector<std::pair<int, int>> codes;
    keep(form.tree.KeyDown.subscribe([&](controls::KeyEvent& event) {
        codes.emplace_back(event.keyCode, event.shift);
        event.keyCode = 0;
    }));
    key(Qt::Key_Return);
    key(Qt::Key_Enter, Qt::KeypadModifier);
    key(Qt::Key_Menu);
    key(Qt::Key_F10, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    key(Qt::Key_X, Qt::ControlModifier);
    key(Qt::Key_V, Qt::ControlModifier);
    key(Qt::Key_Space);
    key(Qt::Key_Right);
    EXPECT_EQ(codes, (std::vector<std::pair<int, int>>{
                         {13, 0}, {13, 0}, {93, 0}, {121, 1}, {67, 2}, {88, 2}, {86, 2}, {32, 0}, {39, 0}}));
    EXPECT_TRUE(lines.empty()) << "a consumed key does nothing more";
}

TEST_F(TreeKeys, OfTheClipboardGoToTheControlBeforeTheMenusOfTheWindow) {
    int menu = 0;
    QAction copy(&widget);
    copy.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_C));
    QObject::connect(&copy, &QAction::triggered, [&] { ++menu; });
    widget.addAction(&copy);
    int control = 0;
    keep(form.tree.KeyDown.subscribe([&](controls::KeyEvent& event) { control += event.keyCode == 67; }));
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(control, 1);
    EXPECT_EQ(menu, 0);
}

TEST_F(TreeKeys, FindARowByWhatIsTyped) {
    form.tree.EnsureVisible(*accounts[0]);
    QTest::keyClicks(&widget, QStringLiteral("01020300"));
    key(Qt::Key_3);
    EXPECT_EQ(form.tree.SelectedItem(), branch) << "the digits typed so far still fit this row";
    QTest::qWait(QApplication::keyboardInputInterval() + 20);
    QTest::keyClicks(&widget, QStringLiteral("0102030002"));
    EXPECT_EQ(form.tree.SelectedItem(), accounts[1]);
    EXPECT_EQ(widget.currentIndex(), indexOf(accounts[1]));
    QTest::qWait(QApplication::keyboardInputInterval() + 20);
    QTest::keyClicks(&widget, QStringLiteral("patr"));
    EXPECT_EQ(form.tree.SelectedItem(), second);
}

TEST_F(TreeKeys, GoToTheNextRowOfALetterThatIsTypedAgain) {
    QTest::keyClicks(&widget, QStringLiteral("c"));
    EXPECT_EQ(form.tree.SelectedItem(), second);
    QTest::keyClicks(&widget, QStringLiteral("c"));
    EXPECT_EQ(form.tree.SelectedItem(), first);
}

TEST_F(TreeKeys, LeaveTheSelectionWhenNothingFitsWhatIsTyped) {
    QTest::keyClicks(&widget, QStringLiteral("zz"));
    EXPECT_EQ(form.tree.SelectedItem(), first);
    EXPECT_TRUE(lines.empty());
}

} // namespace
} // namespace veldran::qt
