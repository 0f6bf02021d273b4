#include "shell/lookup_model.h"

#include "shell/word_filter.h"

#include <algorithm>

namespace veldran::shell {
namespace {

constexpr int columns = 2;

/// A code as it is compared with what was typed: without the separators of its display form.
QString bare(const QString& code) {
    QString letters;
    letters.reserve(code.size());
    for (const QChar c : code) {
        if (c.isLetterOrNumber()) {
            letters += c;
        }
    }
    return letters;
}

/// Separators other than blanks, which many type where the code has none.
bool isSeparated(const QString& typed) {
    return std::any_of(typed.begin(), typed.end(),
                       [](QChar c) { return !c.isLetterOrNumber() && !c.isSpace(); });
}

} // namespace

LookupModel::LookupModel(std::vector<LookupRow> rows, QObject* parent)
    : QAbstractTableModel(parent), rows_(std::move(rows)) {
    visible_.resize(rows_.size());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        visible_[i] = i;
    }
}

void LookupModel::setFilter(const QString& code, const QString& words) {
    const QString typed = code.trimmed();
    const QString wanted = bare(typed);
    const bool asShown = isSeparated(typed);
    const WordFilter filter(words);
    beginResetModel();
    visible_.clear();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const LookupRow& row = rows_[i];
        const bool codeFits = wanted.isEmpty() || row.display.startsWith(typed, Qt::CaseInsensitive) ||
                              (!asShown && (row.code.startsWith(wanted, Qt::CaseInsensitive) ||
                                            bare(row.display).startsWith(wanted, Qt::CaseInsensitive)));
        if (codeFits && filter.accepts(row.foldedDescription)) {
            visible_.push_back(i);
        }
    }
    endResetModel();
}

QString LookupModel::longestDisplay() const {
    const auto longest = std::max_element(rows_.begin(), rows_.end(), [](const auto& a, const auto& b) {
        return a.display.size() < b.display.size();
    });
    return longest == rows_.end() ? QString() : longest->display;
}

int LookupModel::rowAtOrAfter(const QString& code) const {
    const auto found = std::find_if(visible_.begin(), visible_.end(), [&](std::size_t i) {
        return rows_[i].code.compare(code, Qt::CaseInsensitive) >= 0;
    });
    return found == visible_.end() ? -1 : static_cast<int>(found - visible_.begin());
}

int LookupModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(visible_.size());
}

int LookupModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns;
}

QVariant LookupModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    const LookupRow& shown = row(index.row());
    return index.column() == codeColumn ? shown.display : shown.description;
}

QVariant LookupModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return section == codeColumn ? QStringLiteral("Codice") : QStringLiteral("Descrizione");
}

} // namespace veldran::shell
