#pragma once

#include "adapters/qt/rows_table.h"
#include "platform/controls/list_view.h"

#include <QElapsedTimer>

namespace veldran::qt {

/// A list in report view. Every press of a mouse button is reported before the list acts on it. The left
/// button selects the row under it, the right one the row whose menu the form opens then; typing selects the
/// next row that begins so. Positions are pixels from the list's upper left corner, its header included.
///
/// The control must outlive the view.
class ReportListView : public RowsTable {
public:
    explicit ReportListView(controls::ListView& control, QWidget* parent = nullptr);
    ~ReportListView() override;

    void keyboardSearch(const QString& typed) override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    controls::ListHit hitTest(int x, int y) const;
    /// Reports the press. \return true when the form opened a menu for it.
    bool reportPress(const QMouseEvent& event);

    controls::ListView& control_;
    Subscription itemsChanged_;
    Subscription selectionChanged_;
    QString typed_;
    QElapsedTimer typedAt_;
};

} // namespace veldran::qt
