#pragma once

#include "adapters/qt/rows_model.h"

#include <QTableView>

namespace veldran::qt {

/// Rows of text under a header, one of them current. The table follows its control: what the user does with
/// mouse and keys is put to the control, and the row that the control then has is shown. Column widths go
/// both ways. Nothing is edited in place; a text that is cut is told by a tool tip.
class RowsTable : public QTableView {
public:
    RowsTable(std::unique_ptr<RowsSource> source, QWidget* parent);

    /// What is said in the middle of a table without rows.
    void setEmptyText(const QString& text);

    /// Widths of columns are given for a design with letters of 8 points; they grow with the letters shown.
    int pixelsOf(int twips) const;
    int twipsOf(int pixels) const;

    void keyboardSearch(const QString&) override {}

protected:
    /// Rows, texts or columns of the control have changed.
    void follow();
    void followRow(int row);
    void showCurrent();
    /// The user chose that row; nothing happens when there is none.
    void choose(int row);
    /// The columns are drawn up to the edge of the table while that is no further than so many pixels: the
    /// last one, and those designed as wide as it, share the room, and give up that of a scroll bar. Once the
    /// user has dragged an edge it is the last one's alone.
    void fillRoom(int pixels);

    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;

private:
    double scale() const;
    void showColumns();
    void showColumn(int column);
    int pixelsOfColumn(int column) const;
    bool grows(int column) const;
    int roomOfEach() const; ///< pixels that each growing column gets beyond its design; negative for less
    void keepWidths();      ///< that the columns have got so far
    int rowByKey(const QKeyEvent& event) const;
    int rowsInSight() const;
    bool isCut(const QModelIndex& index) const;

    RowsModel* model_;
    QString emptyText_;
    int filledRoom_ = 0; ///< pixels
    bool sharesRoom_ = true;
    bool showing_ = false;  ///< what changes now is not the user's doing
    bool dragging_ = false; ///< of a column's edge
};

} // namespace veldran::qt
