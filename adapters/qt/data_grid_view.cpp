#include "adapters/qt/data_grid_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/text.h"

#include <QMouseEvent>
#include <QPointer>
#include <set>

namespace veldran::qt {

class DataGridView::Rows : public RowsSource {
public:
    explicit Rows(controls::DataGrid& grid) : grid_(grid) {}

    void addNumbers(std::string dataField) { numbers_.insert(std::move(dataField)); }

    int rows() const override { return static_cast<int>(grid_.RowCount()); }
    int columns() const override { return static_cast<int>(grid_.Columns().size()); }
    QString caption(int column) const override { return toQt(columnAt(column).caption); }
    int width(int column) const override { return columnAt(column).width; }
    void setWidth(int column, int twips) override {
        grid_.SetColumnWidth(static_cast<std::size_t>(column), twips);
    }
    bool isNumber(int column) const override { return numbers_.contains(columnAt(column).dataField); }
    QString text(int row, int column) const override {
        return toQt(grid_.CellText(static_cast<std::size_t>(row), static_cast<std::size_t>(column)));
    }
    int current() const override { return grid_.CurrentRow() ? static_cast<int>(*grid_.CurrentRow()) : -1; }
    void choose(int row) override { grid_.MoveFromView(static_cast<std::size_t>(row)); }

private:
    const controls::GridColumn& columnAt(int column) const {
        return grid_.Columns()[static_cast<std::size_t>(column)];
    }

    controls::DataGrid& grid_;
    std::set<std::string> numbers_;
};

DataGridView::DataGridView(controls::DataGrid& control, QWidget* parent)
    : DataGridView(control, new Rows(control), parent) {}

DataGridView::DataGridView(controls::DataGrid& control, Rows* rows, QWidget* parent)
    : RowsTable(std::unique_ptr<RowsSource>(rows), parent), control_(control), rows_(*rows) {
    rowsChanged_ = control_.RowsChanged.subscribe([this] { follow(); });
    rowChanged_ =
        control_.RowChanged.subscribe([this](std::size_t row) { followRow(static_cast<int>(row)); });
    currentChanged_ = control_.CurrentChanged.subscribe([this] { showCurrent(); });
    new ControlBinding(control_, *this, this, [this] { follow(); });
    fillRoom(QWIDGETSIZE_MAX);
}

void DataGridView::showAsNumbers(std::string dataField) {
    rows_.addNumbers(std::move(dataField));
    follow();
}

void DataGridView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointer<DataGridView> self(this);
    RowsTable::mouseDoubleClickEvent(event);
    if (self && event->button() == Qt::LeftButton) {
        control_.DblClickFromView();
    }
}

} // namespace veldran::qt
