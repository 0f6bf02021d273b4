#pragma once

#include "platform/services/lookup.h"

#include <QAbstractTableModel>
#include <QString>
#include <vector>

namespace veldran::shell {

/// One code of a list.
struct LookupRow {
    QString code;              ///< as stored, without trailing blanks
    QString display;           ///< as shown
    QString description;       ///< as stored
    QString foldedDescription; ///< as `folded` returns it: made once, compared at every key stroke
};

/// The rows of a list that pass its filters, in the order of their codes. Nothing is made per row for the
/// view, so that a hundred thousand rows are as quick as ten.
class LookupModel final : public QAbstractTableModel {
public:
    enum Column { codeColumn, descriptionColumn };

    LookupModel(std::vector<LookupRow> rows, QObject* parent);

    /// Shows the rows whose code begins with `code` (typed in any case, with or without the separators of its
    /// display form) and whose description holds all words of `words`.
    void setFilter(const QString& code, const QString& words);
    int total() const { return static_cast<int>(rows_.size()); }
    const LookupRow& row(int visibleRow) const {
        return rows_[visible_[static_cast<std::size_t>(visibleRow)]];
    }
    /// The code of most characters as shown, of all rows.
    QString longestDisplay() const;
    /// The first visible row whose stored code is `code`, in any case, or follows it; -1 when all come
    /// before.
    int rowAtOrAfter(const QString& code) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<LookupRow> rows_;
    std::vector<std::size_t> visible_;
};

} // namespace veldran::shell
