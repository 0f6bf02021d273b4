#include "tests/qt/tree_screen.h"

#include <QHelpEvent>
#include <QToolTip>

namespace veldran::qt {
namespace {

class TreePaint : public TreeScreen {
protected:
    /// Colours of a row as it is painted.
    bool hasColour(const controls::TreeNode* node, const QColor& colour) {
        const QImage image = widget.viewport()->grab(rowOf(node)).toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 50; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == colour) {
                    return true;
                }
            }
        }
        return false;
    }
};

TEST_F(TreePaint, DrawsACorrelatedAccountRedAlsoWhileItIsSelected) {
    form.tree.EnsureVisible(*accounts[0]);
    EXPECT_FALSE(hasColour(accounts[0], Qt::red));
    accounts[0]->SetBold(true);
    accounts[0]->SetForeColor(255);
    EXPECT_TRUE(hasColour(accounts[0], Qt::red));
    form.tree.SetSelectedItem(accounts[0]);
    EXPECT_TRUE(hasColour(accounts[0], Qt::red));
}

TEST_F(TreePaint, LeavesTheCheckBoxOfAColouredAccountAsItIs) {
    form.tree.EnsureVisible(*accounts[0]);
    accounts[0]->SetChecked(true);
    const auto box = [this] {
        const QRect row = rowOf(accounts[0]);
        return widget.viewport()->grab(QRect(row.left(), row.top(), 20, row.height())).toImage();
    };
    const QImage before = box();
    accounts[0]->SetForeColor(255);
    EXPECT_EQ(box(), before);
}

TEST_F(TreePaint, ShowsTheSelectedRowOnADarkGroundToo) {
    widget.setPalette(QPalette(QColor(0x30, 0x30, 0x30)));
    form.tree.SetSelectedItem(first);
    const auto groundOf = [this](const controls::TreeNode* node) {
        const QImage image = widget.viewport()->grab(rowOf(node)).toImage();
        return image.pixelColor(image.width() - 5, image.height() / 2).lightness();
    };
    for (const bool focused : {true, false}) {
        focused ? widget.setFocus() : widget.clearFocus();
        EXPECT_GE(std::abs(groundOf(first) - groundOf(second)), 20) << "focused: " << focused;
    }
}

TEST_F(TreePaint, GivesEveryRowTheSameHeight) {
    form.tree.EnsureVisible(*accounts[0]);
    accounts[1]->SetBold(true);
    EXPECT_EQ(rowOf(accounts[0]).height(), rowOf(accounts[1]).height());
    EXPECT_EQ(rowOf(first).height(), rowOf(accounts[1]).height());
}

TEST_F(TreePaint, TellsATextThatIsCut) {
    const auto tipOf = [&](controls::TreeNode* node) {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, labelOf(node), widget.viewport()->mapToGlobal(labelOf(node)));
        QApplication::sendEvent(widget.viewport(), &help);
        return QToolTip::text();
    };
    EXPECT_EQ(tipOf(second), QString());
    const std::string text(200, 'x');
    second->SetText(text);
    EXPECT_EQ(tipOf(second).toStdString(), text);
}

} // namespace
} // namespace veldran::qt
