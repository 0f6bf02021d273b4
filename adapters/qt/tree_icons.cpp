#include "adapters/qt/tree_icons.h"

#include "adapters/qt/drawn_icon.h"

#include <QPainter>
#include <array>

namespace veldran::qt {

namespace {

const QColor bookCover(0x2F, 0x5D, 0x8A);
const QColor bookEdge(0x1F, 0x41, 0x63);
const QColor paper(0xFF, 0xFF, 0xFF);
const QColor paperEdge(0x6B, 0x77, 0x85);
const QColor ruling(0x9A, 0xA7, 0xB5);
const QColor folderBack(0xD9, 0xA4, 0x41);
const QColor folderFront(0xF4, 0xC9, 0x6B);
const QColor folderEdge(0xA8, 0x78, 0x1F);
const QColor link(0xC6, 0x28, 0x28);

void fill(QPainter& painter, const QColor& colour, const QColor& edge, const QPolygonF& shape) {
    painter.setBrush(colour);
    painter.setPen(QPen(edge, 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawPolygon(shape);
}

void lines(QPainter& painter, const QColor& colour, std::initializer_list<QLineF> strokes) {
    painter.setPen(QPen(colour, 1, Qt::SolidLine, Qt::FlatCap));
    for (const QLineF& stroke : strokes) {
        painter.drawLine(stroke);
    }
}

void closedBook(QPainter& painter) {
    fill(painter, bookCover, bookEdge, QRectF(2.5, 1.5, 11, 13));
    fill(painter, paper, bookEdge, QRectF(4.5, 12.5, 9, 2));
    painter.fillRect(QRectF(6, 4, 5, 1), paper);
    painter.fillRect(QRectF(6, 6, 5, 1), paper);
    lines(painter, bookEdge, {{4.5, 2, 4.5, 12.5}});
}

void openBook(QPainter& painter) {
    fill(painter, bookCover, bookEdge, QRectF(0.5, 3.5, 15, 10));
    fill(painter, paper, bookEdge, {{1.5, 2.5}, {7.5, 3.5}, {7.5, 12.5}, {1.5, 11.5}});
    fill(painter, paper, bookEdge, {{14.5, 2.5}, {8.5, 3.5}, {8.5, 12.5}, {14.5, 11.5}});
    lines(painter, ruling,
          {{3, 5.5, 6, 5.5},
           {3, 7.5, 6, 7.5},
           {3, 9.5, 6, 9.5},
           {10, 5.5, 13, 5.5},
           {10, 7.5, 13, 7.5},
           {10, 9.5, 13, 9.5}});
}

void closedFolder(QPainter& painter) {
    fill(painter, folderBack, folderEdge,
         {{1.5, 3.5}, {6.5, 3.5}, {8.5, 5.5}, {14.5, 5.5}, {14.5, 13.5}, {1.5, 13.5}});
    fill(painter, folderFront, folderEdge, QRectF(1.5, 6.5, 13, 7));
}

void openFolder(QPainter& painter) {
    fill(painter, folderBack, folderEdge,
         {{1.5, 2.5}, {6.5, 2.5}, {8.5, 4.5}, {13.5, 4.5}, {13.5, 13.5}, {1.5, 13.5}});
    fill(painter, folderFront, folderEdge, {{4, 7.5}, {15.5, 7.5}, {13.5, 13.5}, {1.5, 13.5}});
}

void accountSheet(QPainter& painter) {
    fill(painter, paper, paperEdge, {{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}});
    fill(painter, ruling, paperEdge, {{9.5, 1.5}, {12.5, 4.5}, {9.5, 4.5}});
    lines(painter, ruling, {{5, 7.5, 11, 7.5}, {5, 9.5, 11, 9.5}, {5, 11.5, 11, 11.5}});
}

void correlatedSheet(QPainter& painter) {
    fill(painter, paper, paperEdge, {{1.5, 1.5}, {7.5, 1.5}, {10.5, 4.5}, {10.5, 14.5}, {1.5, 14.5}});
    fill(painter, ruling, paperEdge, {{7.5, 1.5}, {10.5, 4.5}, {7.5, 4.5}});
    lines(painter, ruling, {{3, 6.5, 9, 6.5}, {3, 8.5, 6, 8.5}});
    painter.setBrush(paper); // two rings, one in the other: the account is linked
    for (const double radius : {3.0, 1.0}) {
        painter.setPen(QPen(radius > 2 ? paper : link, radius > 2 ? 3.5 : 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(5, 10, 6, 4), 2, 2);
        painter.drawRoundedRect(QRectF(9, 10, 6, 4), 2, 2);
    }
}

constexpr std::array<IconDrawing, treeIconCount> pictures{closedBook, openBook,     closedFolder,
                                                          openFolder, accountSheet, correlatedSheet};

} // namespace

QIcon treeIcon(int image) {
    static const std::array<QIcon, treeIconCount> icons = [] {
        std::array<QIcon, treeIconCount> all;
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            all[i] = drawnIcon(pictures[i]);
        }
        return all;
    }();
    return image >= 1 && image <= treeIconCount ? icons[static_cast<std::size_t>(image - 1)] : QIcon();
}

QString spokenTreeIcon(int image) {
    return image == 6 ? QStringLiteral("Con correlazioni") : QString();
}

} // namespace veldran::qt
