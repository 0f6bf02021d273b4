#include "adapters/qt/rows_table.h"

#include "adapters/qt/colours.h"
#include "adapters/qt/row_delegate.h"
#include "adapters/qt/twips.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace veldran::qt {

namespace {

constexpr double designLetter = 5; ///< pixels of an average letter of the design
constexpr int softness = 55;       ///< per cent of the text's colour in what an empty table says

} // namespace

RowsTable::RowsTable(std::unique_ptr<RowsSource> source, QWidget* parent)
    : QTableView(parent), model_(new RowsModel(std::move(source), this)) {
    setItemDelegate(new RowDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setAutoScroll(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setFocusPolicy(Qt::StrongFocus);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    setModel(model_);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int pixels) {
        if (!showing_) {
            const QScopedValueRollback dragging(dragging_, true);
            keepWidths();
            model_->source().setWidth(column, twipsOf(pixels));
            if (const int last = model_->columnCount() - 1; column != last) {
                showColumn(last); // it takes what the other one leaves
            }
        }
    });
    showColumns();
}

void RowsTable::setEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

double RowsTable::scale() const {
    return std::max(1.0, fontMetrics().averageCharWidth() / designLetter);
}

int RowsTable::pixelsOf(int twips) const {
    return static_cast<int>(std::lround(twips * scale() / twipsPerPixel));
}

int RowsTable::twipsOf(int pixels) const {
    return static_cast<int>(std::lround(pixels * twipsPerPixel / scale()));
}

void RowsTable::showColumns() {
    const QScopedValueRollback showing(showing_, true);
    verticalHeader()->setDefaultSectionSize(RowDelegate::rowHeight(fontMetrics()));
    for (int column = 0; column < model_->columnCount() && !dragging_; ++column) {
        showColumn(column);
    }
}

void RowsTable::showColumn(int column) {
    const QScopedValueRollback showing(showing_, true);
    int width = pixelsOfColumn(column);
    const int more = grows(column) ? roomOfEach() : 0;
    if (column == model_->columnCount() - 1) {
        const int room = viewport()->width() - horizontalHeader()->sectionPosition(column);
        width = room - width <= filledRoom_ ? std::max(room, width + std::min(more, 0)) : width;
    } else {
        width += more;
    }
    if (columnWidth(column) != width) {
        setColumnWidth(column, width);
    }
}

bool RowsTable::grows(int column) const {
    const RowsSource& source = model_->source();
    return sharesRoom_ && source.width(column) >= source.width(model_->columnCount() - 1);
}

int RowsTable::roomOfEach() const {
    int room = viewport()->width();
    int growing = 0;
    for (int column = 0; column < model_->columnCount(); ++column) {
        room -= pixelsOfColumn(column);
        growing += grows(column) ? 1 : 0;
    }
    if (room < 0) { // they give up the room of a scroll bar, and no more
        const bool giveUp = verticalScrollBar()->isVisible() && -room <= verticalScrollBar()->width();
        return giveUp ? -((growing - 1 - room) / growing) : 0;
    }
    return room <= filledRoom_ ? room / growing : 0;
}

void RowsTable::keepWidths() {
    for (int column = 0; column < model_->columnCount() - 1 && sharesRoom_; ++column) {
        if (grows(column)) {
            model_->source().setWidth(column, twipsOf(columnWidth(column)));
        }
    }
    sharesRoom_ = false;
}

int RowsTable::pixelsOfColumn(int column) const {
    return std::max(pixelsOf(model_->source().width(column)), horizontalHeader()->minimumSectionSize());
}

void RowsTable::fillRoom(int pixels) {
    filledRoom_ = pixels;
    showColumns();
}

void RowsTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    showColumns();
}

void RowsTable::follow() {
    {
        const QScopedValueRollback showing(showing_, true);
        model_->follow();
    }
    showColumns();
    showCurrent();
    viewport()->update();
}

void RowsTable::followRow(int row) {
    model_->rowChanged(row);
}

void RowsTable::showCurrent() {
    const QScopedValueRollback showing(showing_, true);
    const int row = model_->source().current();
    if (row < 0 || row >= model_->rowCount() || model_->columnCount() == 0) {
        selectionModel()->clear();
        return;
    }
    const QModelIndex index = model_->index(row, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    const int sideways = horizontalScrollBar()->value(); // the row is to be in sight, not its first column
    scrollTo(index);
    horizontalScrollBar()->setValue(sideways);
}

void RowsTable::choose(int row) {
    if (row < 0 || row >= model_->source().rows()) {
        return;
    }
    const QPointer<RowsTable> self(this);
    model_->source().choose(row);
    if (self) {
        showCurrent(); // where the control stands now
    }
}

int RowsTable::rowsInSight() const {
    return std::max(1, viewport()->height() / std::max(1, verticalHeader()->defaultSectionSize()) - 1);
}

int RowsTable::rowByKey(const QKeyEvent& event) const {
    const int current = model_->source().current();
    const int last = model_->source().rows() - 1;
    switch (event.key()) {
    case Qt::Key_Up:
        return std::max(current - 1, 0);
    case Qt::Key_Down:
        return std::min(current + 1, last);
    case Qt::Key_PageUp:
        return std::max(current - rowsInSight(), 0);
    case Qt::Key_PageDown:
        return std::min(current + rowsInSight(), last);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    default:
        return -1;
    }
}

void RowsTable::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == Qt::NoModifier;
    const bool toEdge = event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
    const int row = plain || toEdge ? rowByKey(*event) : -1;
    if (row >= 0) {
        if (row != model_->source().current()) {
            choose(row);
        }
    } else if (plain && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)) {
        QScrollBar& bar = *horizontalScrollBar();
        bar.setValue(bar.value() + (event->key() == Qt::Key_Left ? -1 : 1) * bar.pageStep() / 4);
    } else if (plain && !event->text().isEmpty() && event->text().at(0).isPrint()) {
        keyboardSearch(event->text());
    } else {
        event->ignore();
    }
}

void RowsTable::mousePressEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() == Qt::LeftButton) {
        choose(rowAt(event->position().toPoint().y()));
    }
}

void RowsTable::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
}

void RowsTable::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void RowsTable::mouseMoveEvent(QMouseEvent* event) {
    event->accept(); // dragging chooses nothing
}

void RowsTable::contextMenuEvent(QContextMenuEvent* event) {
    event->accept(); // the form answers mouse and key events; the window around has nothing to show here
}

void RowsTable::focusInEvent(QFocusEvent* event) {
    {
        const QScopedValueRollback showing(showing_, true);
        QTableView::focusInEvent(event); // would make the first row current where there is none
    }
    showCurrent();
}

void RowsTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        showColumns();
    }
}

void RowsTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (model_->rowCount() == 0 && !emptyText_.isEmpty()) {
        constexpr int inset = 12;
        QPainter painter(viewport());
        painter.setPen(blended(palette().color(QPalette::Text), palette().color(QPalette::Base),
                               isEnabled() ? softness : 100));
        painter.drawText(viewport()->rect().adjusted(inset, inset, -inset, -inset),
                         Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
    }
}

bool RowsTable::isCut(const QModelIndex& index) const {
    const int padding = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    return fontMetrics().horizontalAdvance(index.data().toString()) > visualRect(index).width() - padding;
}

bool RowsTable::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto& help = static_cast<QHelpEvent&>(*event);
        const QModelIndex index = indexAt(help.pos());
        if (index.isValid() && isCut(index)) {
            QToolTip::showText(help.globalPos(), index.data().toString(), viewport(), visualRect(index));
            return true;
        }
    }
    return QTableView::viewportEvent(event);
}

void RowsTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!showing_ && current.isValid() && current.row() != model_->source().current()) {
        choose(current.row()); // assistive programs choose this way
    }
}

void RowsTable::initViewItemOption(QStyleOptionViewItem* option) const {
    QTableView::initViewItemOption(option);
    RowDelegate::softenSelection(option->palette, hasFocus());
}

} // namespace veldran::qt
