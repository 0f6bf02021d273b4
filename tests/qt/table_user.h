#pragma once

#include "adapters/qt/rows_table.h"

#include <QHeaderView>
#include <QTest>

namespace veldran::qt {

/// A point within that cell, in the viewport of the table.
inline QPoint cellOf(const RowsTable& table, int row, int column = 0) {
    return table.visualRect(table.model()->index(row, column)).center();
}

inline QString textOf(const RowsTable& table, int row, int column) {
    return table.model()->index(row, column).data().toString();
}

/// Drags the right edge of a column's header by so many pixels.
inline void dragColumn(RowsTable& table, int column, int by) {
    QHeaderView& header = *table.horizontalHeader();
    const QPoint edge(header.sectionViewportPosition(column) + header.sectionSize(column) - 1,
                      header.height() / 2);
    QTest::mousePress(header.viewport(), Qt::LeftButton, Qt::NoModifier, edge);
    QTest::mouseMove(header.viewport(), edge + QPoint(by, 0));
    QTest::mouseRelease(header.viewport(), Qt::LeftButton, Qt::NoModifier, edge + QPoint(by, 0));
}

} // namespace veldran::qt
