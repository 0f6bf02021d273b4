#pragma once

#include "adapters/qt/rows_table.h"
#include "platform/controls/data_grid.h"

namespace veldran::qt {

/// A grid over the rows of an editing frame. Moves of the user are put to the frame; the grid stays where the
/// frame is. Only the cells in sight are asked for.
///
/// The control must outlive the view.
class DataGridView : public RowsTable {
public:
    explicit DataGridView(controls::DataGrid& control, QWidget* parent = nullptr);

    /// Columns bound to that field hold numbers: they are aligned to the right.
    void showAsNumbers(std::string dataField);

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    class Rows;
    DataGridView(controls::DataGrid& control, Rows* rows, QWidget* parent);

    controls::DataGrid& control_;
    Rows& rows_; ///< owned by the table
    Subscription rowsChanged_;
    Subscription rowChanged_;
    Subscription currentChanged_;
};

} // namespace veldran::qt
