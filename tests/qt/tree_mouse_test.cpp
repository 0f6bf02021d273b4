#include "tests/qt/tree_screen.h"

#include <QContextMenuEvent>

namespace veldran::qt {
namespace {

using controls::TreeNode;

/// What the form does with the presses on a check box: it remembers the node under the pointer and runs its
/// action on the release, unless the control's own check event has run it before.
class PendingNode {
public:
    explicit PendingNode(controls::TreeView& tree)
        : down_(tree.MouseDown.subscribe([this, &tree](const controls::MouseEvent& event) {
              const auto hit = tree.HitTest(event.x / twipsPerPixel, event.y / twipsPerPixel);
              if (event.button == controls::buttonLeft && hit.flags == controls::treeHitStateIcon) {
                  pending = hit.node;
                  ++pressed;
              }
          })),
          up_(tree.MouseUp.subscribe([this](const controls::MouseEvent&) {
              if (pending != nullptr) {
                  check(*pending);
              }
          })),
          check_(tree.NodeCheck.subscribe([this](TreeNode& node) { check(node); })) {}

    TreeNode* pending = nullptr;
    int pressed = 0;
    std::vector<TreeNode*> actions;

private:
    void check(TreeNode& node) {
        pending = pending == &node ? nullptr : pending;
        actions.push_back(&node);
    }
    Subscription down_, up_, check_;
};

using TreeMouse = TreeScreen;

TEST_F(TreeMouse, ChecksABoxOnceForAClickOnIt) {
    PendingNode pending(form.tree);
    click(checkBoxOf(second));
    EXPECT_EQ(lines, (Lines{"check second"}));
    EXPECT_TRUE(second->Checked());
    EXPECT_EQ(pending.pressed, 1) << "the press was seen as a press on the check box";
    EXPECT_EQ(pending.actions, (std::vector<TreeNode*>{second}));
    click(checkBoxOf(second));
    EXPECT_FALSE(second->Checked());
    EXPECT_EQ(pending.actions.size(), 2U);
    EXPECT_EQ(pending.pending, nullptr);
}

TEST_F(TreeMouse, DoesNotSelectTheRowWhoseBoxIsChecked) {
    click(checkBoxOf(second));
    EXPECT_EQ(form.tree.SelectedItem(), first);
}

TEST_F(TreeMouse, ChecksTwiceForTwoQuickClicks) {
    PendingNode pending(form.tree);
    QTest::mouseClick(widget.viewport(), Qt::LeftButton, Qt::NoModifier, checkBoxOf(first));
    QTest::mouseDClick(widget.viewport(), Qt::LeftButton, Qt::NoModifier, checkBoxOf(first));
    const auto events = lines;
    EXPECT_EQ(std::count(events.begin(), events.end(), "check first"),
              static_cast<long>(pending.actions.size()));
    EXPECT_FALSE(first->Expanded()) << "a double click on the box opens nothing";
    EXPECT_EQ(pending.pending, nullptr);
}

TEST_F(TreeMouse, ChecksOnceWhenTheButtonIsReleasedElsewhere) {
    PendingNode pending(form.tree);
    QTest::mousePress(widget.viewport(), Qt::LeftButton, Qt::NoModifier, checkBoxOf(second));
    QTest::mouseMove(widget.viewport(), labelOf(first));
    QTest::mouseRelease(widget.viewport(), Qt::LeftButton, Qt::NoModifier, labelOf(first));
    EXPECT_EQ(pending.actions, (std::vector<TreeNode*>{second}));
}

TEST_F(TreeMouse, ReportsPressCheckAndReleaseInThisOrder) {
    keep(form.tree.MouseDown.subscribe([this](const controls::MouseEvent&) { lines.push_back("down"); }));
    keep(form.tree.MouseUp.subscribe([this](const controls::MouseEvent&) { lines.push_back("up"); }));
    click(checkBoxOf(second));
    EXPECT_EQ(lines, (Lines{"down", "check second", "up"}));
}

TEST_F(TreeMouse, ReportsButtonShiftAndPlaceInTwips) {
    controls::MouseEvent seen;
    keep(form.tree.MouseDown.subscribe([&](const controls::MouseEvent& event) { seen = event; }));
    const QPoint at = labelOf(second);
    QTest::mousePress(widget.viewport(), Qt::RightButton, Qt::ShiftModifier, at);
    EXPECT_EQ(seen.button, controls::buttonRight);
    EXPECT_EQ(seen.shift, controls::shiftShift);
    EXPECT_EQ(seen.x, at.x() * 15);
    EXPECT_EQ(seen.y, at.y() * 15);
}

TEST_F(TreeMouse, SelectsTheRowThatIsClicked) {
    click(labelOf(second));
    click(labelOf(second));
    EXPECT_EQ(lines, (Lines{"click second", "click second"}));
    EXPECT_EQ(form.tree.SelectedItem(), second);
    EXPECT_EQ(widget.currentIndex(), indexOf(second));
    EXPECT_TRUE(widget.selectionModel()->isSelected(indexOf(second)));
}

TEST_F(TreeMouse, SelectsNothingWithTheRightButtonOrBesideTheRows) {
    click(labelOf(second), Qt::RightButton);
    click({widget.viewport()->width() / 2, widget.viewport()->height() - 5});
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(form.tree.SelectedItem(), first);
    EXPECT_TRUE(widget.selectionModel()->isSelected(indexOf(first)));
}

TEST_F(TreeMouse, OpensAndClosesByTheArrowWithoutSelecting) {
    click(arrowOf(second));
    EXPECT_EQ(lines, (Lines{"expand second"}));
    EXPECT_TRUE(widget.isExpanded(indexOf(second)));
    QTest::qWait(QApplication::doubleClickInterval() + 10); // else the second click is a double click
    click(arrowOf(second));
    EXPECT_EQ(lines, (Lines{"expand second", "collapse second"}));
    EXPECT_FALSE(widget.isExpanded(indexOf(second)));
    EXPECT_EQ(form.tree.SelectedItem(), first);
}

TEST_F(TreeMouse, OpensAndClosesByADoubleClickOnTheRow) {
    QTest::mouseDClick(widget.viewport(), Qt::LeftButton, Qt::NoModifier, labelOf(second));
    EXPECT_TRUE(second->Expanded());
    EXPECT_TRUE(widget.isExpanded(indexOf(second)));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "expand second"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "dblclick"), 1);
    QTest::mouseDClick(widget.viewport(), Qt::LeftButton, Qt::NoModifier, labelOf(second));
    EXPECT_FALSE(second->Expanded());
}

TEST_F(TreeMouse, LeavesALeafClosedWhenItIsDoubleClicked) {
    form.tree.EnsureVisible(*accounts[0]);
    QTest::mouseDClick(widget.viewport(), Qt::LeftButton, Qt::NoModifier, labelOf(accounts[0]));
    EXPECT_FALSE(accounts[0]->Expanded());
    EXPECT_FALSE(widget.isExpanded(indexOf(accounts[0])));
}

TEST_F(TreeMouse, TellsThePartOfTheRowUnderThePointer) {
    form.tree.EnsureVisible(*accounts[0]);
    const auto flagsAt = [&](const QPoint& at) { return form.tree.HitTest(at.x(), at.y()).flags; };
    EXPECT_EQ(flagsAt(checkBoxOf(branch)), controls::treeHitStateIcon);
    EXPECT_EQ(flagsAt({rowOf(branch).left() + 28, rowOf(branch).center().y()}), controls::treeHitIcon);
    EXPECT_EQ(flagsAt(labelOf(branch)), controls::treeHitLabel);
    EXPECT_EQ(flagsAt(arrowOf(branch)), controls::treeHitButton);
    EXPECT_EQ(flagsAt({2, rowOf(branch).center().y()}), controls::treeHitIndent);
    EXPECT_EQ(flagsAt(arrowOf(accounts[0])), controls::treeHitIndent) << "a leaf has no arrow";
    EXPECT_EQ(flagsAt({widget.viewport()->width() - 3, rowOf(branch).center().y()}), controls::treeHitRight);
    EXPECT_EQ(form.tree.HitTest(labelOf(branch).x(), labelOf(branch).y()).node, branch);
    EXPECT_EQ(form.tree.HitTest(5, widget.viewport()->height() - 2).node, nullptr);
}

TEST_F(TreeMouse, SelectsNothingWhileDragging) {
    QTest::mousePress(widget.viewport(), Qt::LeftButton, Qt::NoModifier, labelOf(first));
    QMouseEvent drag(QEvent::MouseMove, QPointF(labelOf(second)),
                     widget.viewport()->mapToGlobal(QPointF(labelOf(second))), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(widget.viewport(), &drag);
    QTest::mouseRelease(widget.viewport(), Qt::LeftButton, Qt::NoModifier, labelOf(second));
    EXPECT_EQ(form.tree.SelectedItem(), first);
}

TEST_F(TreeMouse, SurvivesAPressWhoseHandlerEmptiesTheTree) {
    keep(form.tree.MouseDown.subscribe([this](const controls::MouseEvent&) { form.tree.Clear(); }));
    click(checkBoxOf(second));
    EXPECT_EQ(lines, (Lines{}));
    EXPECT_EQ(form.tree.RootCount(), 0);
}

TEST_F(TreeMouse, SurvivesADoubleClickWhoseHandlerEmptiesTheTree) {
    keep(form.tree.DblClick.subscribe([this] { form.tree.Clear(); }));
    QTest::mouseDClick(widget.viewport(), Qt::LeftButton, Qt::NoModifier, labelOf(second));
    EXPECT_EQ(form.tree.RootCount(), 0);
}

TEST_F(TreeMouse, KeepsTheContextMenuOfTheWindowAroundIt) {
    QContextMenuEvent menu(QContextMenuEvent::Mouse, labelOf(first),
                           widget.viewport()->mapToGlobal(labelOf(first)));
    menu.ignore();
    QApplication::sendEvent(widget.viewport(), &menu);
    EXPECT_TRUE(menu.isAccepted());
}

} // namespace
} // namespace veldran::qt
