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

TEST_F(TreePaint, ShowsTheEdgeOfAnEmptyCheckBoxOnAnyGround) {
    for (const QColor& ground : {QColor(Qt::white), QColor(0x23, 0x26, 0x29)}) {
        QPalette colours(ground);
        colours.setColor(QPalette::Base, ground);
        colours.setColor(QPalette::Text, ground == Qt::white ? Qt::black : Qt::white);
        widget.setPalette(colours);
        const QImage image = widget.viewport()->grab(rowOf(second)).toImage();
        int edge = 0; // the longest upright line of one colour that stands out from the ground
        for (int x = 0; x < 50; ++x) {
            int line = 0;
            for (int y = 0; y < image.height(); ++y) {
                const int difference = image.pixelColor(x, y).lightness() - ground.lightness();
                line += std::abs(difference) >= 90 ? 1 : 0;
            }
            edge = std::max(edge, line);
        }
        EXPECT_GE(edge, 10) << ground.name().toStdString();
    }
}

TEST_F(TreePaint, LightensTheRedOfACorrelatedAccountOnADarkGround) {
    widget.setPalette(QPalette(QColor(0x30, 0x30, 0x30)));
    form.tree.EnsureVisible(*accounts[0]);
    accounts[0]->SetBold(true);
    accounts[0]->SetForeColor(255);
    EXPECT_FALSE(hasColour(accounts[0], Qt::red));
    EXPECT_TRUE(hasColour(accounts[0], QColor(255, 114, 114)));
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
