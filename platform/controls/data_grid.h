#pragma once

#include "platform/ado/bookmark.h"
#include "platform/controls/control.h"
#include "platform/controls/frame_navigator.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <vector>

namespace veldran::ado {
class Recordset;
}

namespace veldran::controls {

class GridRows;
struct GridDifference;

/// Rewrites the value shown in a cell; the stored value is unchanged. One format may serve several columns.
class DataFormat {
public:
    mutable Event<Value&> Format;
};

/// One column of a grid, bound to a field of its record set.
struct GridColumn {
    std::string caption;
    std::string dataField;
    int width = 0;                      ///< twips
    std::shared_ptr<DataFormat> format; // shared: columns may use one format, and the form keeps it too
};

/// A grid over the rows of a record set; shows each column through its format.
///
/// The grid has a cursor of its own over the rows, so that it moves nobody's record. It makes a row's texts
/// when the first of them is asked for and keeps them until it is told to look (`Refresh`, `RefreshRow`) and
/// the row has changed: a format runs once for a row, however often the row is painted. The current row is
/// that of the editing frame, which the user's moves are put to.
class DataGrid final : public Control {
public:
    DataGrid(Container& parent, std::string name);
    ~DataGrid() override;

    const std::vector<GridColumn>& Columns() const { return columns_; }
    void AddColumn(std::string caption, std::string dataField, int width);
    /// Every text of the grid is made anew. \throws std::out_of_range
    void SetColumnFormat(std::size_t column, std::shared_ptr<DataFormat> format);
    /// \throws std::out_of_range
    void SetColumnWidth(std::size_t column, int twips);

    /// Shows the rows of `source`, whose rows the grid keeps alive; nullptr detaches the grid, which then
    /// shows none. The current row stays when it is among them. \throws AdoError when the record set is
    /// closed.
    void SetDataSource(ado::Recordset* source);
    bool HasDataSource() const { return rows_ != nullptr; }
    /// Looks at all rows anew.
    void Refresh();
    /// Looks at one row anew; at all of them when it is not shown yet.
    void RefreshRow(const ado::Bookmark& row);

    std::size_t RowCount() const;
    /// What the cell shows. A column whose field the record set lacks is empty; where a format fails, the
    /// stored value is shown. \throws std::out_of_range
    const std::string& CellText(std::size_t row, std::size_t column) const;
    /// From 0; none while no row is current.
    const std::optional<std::size_t>& CurrentRow() const { return current_; }
    /// \throws std::out_of_range
    const ado::Bookmark& RowBookmark(std::size_t row) const;
    /// By the frame; a row that the grid does not show leaves it without a current row.
    void ShowCurrent(const ado::Bookmark& row);
    void ShowNoCurrent();

    /// What the user does, reported by the view. A move to another row is put to `RowChosen`; the grid is
    /// where it was when that is refused. \return true when the row is the current one in the end.
    bool MoveFromView(std::size_t row);
    void DblClickFromView() { DblClick.raise(); }

    mutable Event<> DblClick;
    mutable Event<const ado::Bookmark&, bool&>
        RowChosen;                                     ///< set to true to refuse; the frame moves to the row
    mutable Event<> RowsChanged;                       ///< rows came or went
    mutable Event<std::size_t> RowChanged;             ///< a row that was looked at has other values
    mutable Event<> CurrentChanged;                    ///< also after a refused move, for the view to go back
    mutable Event<const std::exception&> FormatFailed; ///< once for each text that could not be made

private:
    void setCurrent(std::optional<std::size_t> row);
    std::optional<ado::Bookmark> currentBookmark() const;
    void tell(const GridDifference& difference, const std::optional<ado::Bookmark>& current, bool anew);
    void makeTexts(std::size_t row) const;

    std::vector<GridColumn> columns_;
    std::unique_ptr<GridRows> rows_; // empty while detached
    std::optional<std::size_t> current_;
};

/// The host's container control that embeds a form in a document window.
class MdiContainer final : public Control {
public:
    using Control::Control;

    /// Placement handed over when the form is loaded: position in twips, window state, and whether it is
    /// modal.
    void Embed(std::int32_t top, std::int32_t left, std::int16_t windowState, bool modal);
    struct Placement {
        std::int32_t top = 0;
        std::int32_t left = 0;
        std::int16_t windowState = 0;
        bool modal = false;
    };
    const Placement& GetPlacement() const { return placement_; }
    /// The default property: the form's caption as the host's window list shows it.
    const std::string& GetValue() const { return value_; }
    void SetValue(std::string value) { value_ = std::move(value); }

    mutable Event<> FormLoad; ///< raised by the window service when it loads the form

private:
    Placement placement_;
    std::string value_;
};

} // namespace veldran::controls
