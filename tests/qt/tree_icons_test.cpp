#include "adapters/qt/drawn_icon.h"
#include "adapters/qt/tree_icons.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QWidget>

namespace veldran::qt {
namespace {

QImage picture(int image, int side) {
    return treeIcon(image).pixmap(QSize(side, side), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
}

TEST(TreeIcons, AreSixDifferentPictures) {
    for (int a = 1; a <= treeIconCount; ++a) {
        EXPECT_FALSE(treeIcon(a).isNull());
        for (int b = a + 1; b <= treeIconCount; ++b) {
            EXPECT_NE(picture(a, 16), picture(b, 16)) << a << " and " << b;
        }
    }
    EXPECT_TRUE(treeIcon(0).isNull());
    EXPECT_TRUE(treeIcon(7).isNull());
}

TEST(TreeIcons, GrowWithTheLettersBesideThem) {
    QWidget widget;
    const int usual = widget.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &widget);
    QFont letters = widget.font();
    letters.setPixelSize(12);
    widget.setFont(letters);
    EXPECT_EQ(smallIconSize(widget), QSize(usual, usual));
    letters.setPixelSize(2 * usual);
    widget.setFont(letters);
    EXPECT_GE(smallIconSize(widget).height(), widget.fontMetrics().ascent());
    EXPECT_LE(smallIconSize(widget).height(), widget.fontMetrics().height()) << "no row becomes higher";
}

TEST(TreeIcons, AreDrawnAnewForADoubleScale) {
    for (int image = 1; image <= treeIconCount; ++image) {
        const QImage doubled = picture(image, 32);
        EXPECT_EQ(doubled.size(), QSize(32, 32));
        EXPECT_NE(doubled, picture(image, 16).scaled(32, 32)) << "a blown-up picture would be blurred";
    }
}

TEST(TreeIcons, LeaveTheirCornersTransparentAndTheirMiddleNot) {
    for (int image = 1; image <= treeIconCount; ++image) {
        const QImage drawn = picture(image, 16);
        EXPECT_EQ(qAlpha(drawn.pixel(15, 0)), 0) << image;
        EXPECT_EQ(qAlpha(drawn.pixel(6, 10)), 255) << image;
    }
}

} // namespace
} // namespace veldran::qt
