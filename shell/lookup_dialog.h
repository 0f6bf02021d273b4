#pragma once

#include "shell/lookup_model.h"

#include <QDialog>
#include <optional>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace veldran::shell {

/// A list of codes to choose from, narrowed by code and by words of the description. Everything works from
/// the keyboard: while a filter is being typed the arrows move in the list and Enter takes the current row.
class LookupDialog final : public QDialog {
public:
    /// \param openAt stored code near which the list opens; may be empty
    /// \param restriction why the list does not show everything; may be empty
    LookupDialog(std::vector<LookupRow> rows, const QString& title, const QString& openAt,
                 const QString& restriction, QWidget* parent);

    /// The row taken; none when the dialog was left.
    std::optional<LookupRow> chosen() const { return chosen_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void applyFilter();
    void showCount();
    void select(int row);
    void takeCurrent();

    LookupModel* model_;
    QLineEdit* code_;
    QLineEdit* words_;
    QTableView* table_;
    QLabel* count_;
    QPushButton* accept_ = nullptr;
    std::optional<LookupRow> chosen_;
};

} // namespace veldran::shell
