#pragma once

#include "platform/controls/control.h"

#include <memory>
#include <vector>

namespace veldran::controls {

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
class DataGrid final : public Control {
public:
    using Control::Control;

    const std::vector<GridColumn>& Columns() const { return columns_; }
    void AddColumn(std::string caption, std::string dataField, int width);
    void SetColumnFormat(std::size_t column, std::shared_ptr<DataFormat> format);

    mutable Event<> DblClick;

private:
    std::vector<GridColumn> columns_;
};

/// The bar of buttons that drives an editing frame.
class FrameNavigator final : public Control {
public:
    using Control::Control;
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
