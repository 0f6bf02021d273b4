#pragma once

#include <QAbstractTableModel>
#include <memory>

namespace veldran::qt {

/// What a table needs of the control it shows: texts, asked for cell by cell and only for what is in sight,
/// and the row that is current. Rows and columns count from 0; -1 is no row.
class RowsSource {
public:
    virtual ~RowsSource() = default;
    virtual int rows() const = 0;
    virtual int columns() const = 0;
    virtual QString caption(int column) const = 0;
    virtual int width(int column) const = 0; ///< twips
    virtual void setWidth(int column, int twips) = 0;
    virtual bool isNumber(int column) const = 0;
    virtual QString text(int row, int column) const = 0;
    virtual int current() const = 0;
    /// The user chose a row. The control may refuse it, or make another one the current row.
    virtual void choose(int row) = 0;
};

/// The texts of a rows source as a Qt model. It never resets, so a view keeps its place and its column widths
/// while rows come and go.
class RowsModel : public QAbstractTableModel {
public:
    explicit RowsModel(std::unique_ptr<RowsSource> source, QObject* parent = nullptr);

    RowsSource& source() const { return *source_; }
    /// Takes over how many rows and columns there are; every text may be another one.
    void follow();
    void rowChanged(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString spokenRow(int row) const;

    std::unique_ptr<RowsSource> source_;
    int rows_ = 0;
    int columns_ = 0;
};

} // namespace veldran::qt
