#include "adapters/qt/report_list_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/key_codes.h"
#include "adapters/qt/text.h"
#include "adapters/qt/twips.h"
#include "platform/controls/form.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <algorithm>

namespace veldran::qt {

namespace {

constexpr int widthOfRounding = 2; ///< pixels that columns given in twips may miss of the edge

class ListRows : public RowsSource {
public:
    explicit ListRows(controls::ListView& list) : list_(list) {}

    int rows() const override { return static_cast<int>(list_.Items().size()); }
    int columns() const override { return static_cast<int>(list_.Columns().size()); }
    QString caption(int column) const override { return toQt(columnAt(column).caption); }
    int width(int column) const override { return columnAt(column).width; }
    void setWidth(int column, int twips) override {
        list_.SetColumnWidth(static_cast<std::size_t>(column), twips);
    }
    bool isNumber(int) const override { return false; }
    QString text(int row, int column) const override {
        const controls::ListItem& item = *list_.Items()[static_cast<std::size_t>(row)];
        return toQt(column == 0 ? item.Text() : item.SubItem(static_cast<std::size_t>(column - 1)));
    }
    int current() const override {
        const auto& items = list_.Items();
        const auto found = std::find(items.begin(), items.end(), list_.SelectedItem());
        return found == items.end() ? -1 : static_cast<int>(found - items.begin());
    }
    void choose(int row) override { list_.SelectFromView(static_cast<std::size_t>(row)); }

private:
    const controls::ListView::Column& columnAt(int column) const {
        return list_.Columns()[static_cast<std::size_t>(column)];
    }

    controls::ListView& list_;
};

} // namespace

ReportListView::ReportListView(controls::ListView& control, QWidget* parent)
    : RowsTable(std::make_unique<ListRows>(control), parent), control_(control) {
    setShowGrid(false);
    fillRoom(verticalScrollBar()->sizeHint().width() + widthOfRounding);
    control_.SetHitTester([this](int x, int y) { return hitTest(x, y); });
    control_.SetScreenOrigin([this] {
        const QPoint corner = mapToGlobal(QPoint());
        return controls::ListView::ScreenPoint{corner.x(), corner.y()};
    });
    itemsChanged_ = control_.ItemsChanged.subscribe([this] { follow(); });
    selectionChanged_ = control_.SelectionChanged.subscribe([this] { showCurrent(); });
    new ControlBinding(control_, *this, this, [this] { follow(); });
}

ReportListView::~ReportListView() {
    control_.SetHitTester({});
    control_.SetScreenOrigin({});
}

controls::ListHit ReportListView::hitTest(int x, int y) const {
    const QPoint at = viewport()->mapFrom(this, QPoint(x, y));
    const QModelIndex index = viewport()->rect().contains(at) ? indexAt(at) : QModelIndex();
    return index.isValid() ? controls::ListHit{index.row(), controls::listHitLabel} : controls::ListHit{};
}

bool ReportListView::reportPress(const QMouseEvent& event) {
    const int button = buttonOf(event.button());
    if (button == 0) {
        return false;
    }
    bool opened = false;
    Subscription menu;
    if (const controls::Form* form = control_.OwnerForm()) {
        menu = form->PopupRequested.subscribe([&opened](auto&, auto&) { opened = true; });
    }
    const QPoint at = viewport()->mapTo(this, event.position().toPoint());
    control_.MouseDownFromView(
        {button, shiftOf(event.modifiers()), at.x() * twipsPerPixel, at.y() * twipsPerPixel});
    return opened;
}

void ReportListView::mousePressEvent(QMouseEvent* event) {
    const int row = rowAt(event->position().toPoint().y());
    const auto& items = control_.Items();
    const auto pressed = row < 0 ? nullptr : items.at(static_cast<std::size_t>(row));
    const QPointer<ReportListView> self(this);
    const bool menuOpened = reportPress(*event);
    if (!self) {
        return;
    }
    if (event->button() == Qt::LeftButton) {
        RowsTable::mousePressEvent(event);
        return;
    }
    event->accept();
    const bool selects = menuOpened && pressed != nullptr && pressed->IsInList();
    if (selects && pressed != control_.SelectedItem()) {
        choose(static_cast<int>(std::find(items.begin(), items.end(), pressed) - items.begin()));
    }
}

void ReportListView::resizeEvent(QResizeEvent* event) {
    RowsTable::resizeEvent(event);
    // Columns that fill this width leave room for the scroll bar that longer lists have.
    control_.SetWidth(twipsOf(contentsRect().width() - verticalScrollBar()->sizeHint().width()));
}

void ReportListView::keyboardSearch(const QString& typed) {
    const bool goesOn = typedAt_.isValid() && typedAt_.elapsed() < QApplication::keyboardInputInterval();
    typed_ = goesOn ? typed_ + typed : typed;
    typedAt_.start();
    const int rows = model()->rowCount();
    const int start = currentIndex().isValid() ? currentIndex().row() : -1;
    for (int step = goesOn ? 0 : 1; step <= rows; ++step) {
        const int row = std::max(start + step, 0) % std::max(rows, 1);
        if (row < rows && model()->index(row, 0).data().toString().startsWith(typed_, Qt::CaseInsensitive)) {
            if (row != start) {
                choose(row);
            }
            return;
        }
    }
}

} // namespace veldran::qt
