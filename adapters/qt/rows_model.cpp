#include "adapters/qt/rows_model.h"

#include <QStringList>

namespace veldran::qt {

RowsModel::RowsModel(std::unique_ptr<RowsSource> source, QObject* parent)
    : QAbstractTableModel(parent), source_(std::move(source)) {
    follow();
}

void RowsModel::follow() {
    const int columns = source_->columns();
    if (columns > columns_) { // a design only adds columns
        beginInsertColumns({}, columns_, columns - 1);
        columns_ = columns;
        endInsertColumns();
    }
    const int rows = source_->rows();
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    } else if (rows < rows_) {
        beginRemoveRows({}, rows, rows_ - 1);
        rows_ = rows;
        endRemoveRows();
    }
    if (columns_ > 0) {
        emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
    }
    if (rows_ > 0 && columns_ > 0) {
        emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
    }
}

void RowsModel::rowChanged(int row) {
    if (row < rows_ && columns_ > 0) {
        emit dataChanged(index(row, 0), index(row, columns_ - 1));
    }
}

int RowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int RowsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= source_->rows()) { // the source may be ahead of what was told
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return source_->text(index.row(), index.column());
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter |
                        (source_->isNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::AccessibleTextRole: // a screen reader comes to the first cell of a row
        return index.column() == 0 ? spokenRow(index.row()) : source_->text(index.row(), index.column());
    default:
        return {};
    }
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return source_->caption(section);
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant(Qt::AlignVCenter | (source_->isNumber(section) ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

QString RowsModel::spokenRow(int row) const {
    QStringList parts;
    for (int column = 0; column < columns_; ++column) {
        if (const QString text = source_->text(row, column); !text.isEmpty()) {
            parts << source_->caption(column) + QLatin1Char(' ') + text;
        }
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace veldran::qt
