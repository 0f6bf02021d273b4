#pragma once

#include "shell/tour/stage.h"

#include <memory>
#include <string>
#include <vector>

class QMenu;
class QTableView;

namespace veldran::ado {
class Connection;
}

namespace veldran::shell {

class ChartUser;

/// The correlations of one account, from the first to their removal, keyed as a user does it. The screen is
/// open in activation mode before and after, and the account has no correlations before and after.
class CorrelationJob {
public:
    /// \param company code of the company whose screen is open
    /// \param connection the tour's own, to look into the database
    CorrelationJob(Stage& stage, ChartUser& chart, std::string company,
                   std::shared_ptr<ado::Connection> connection)
        : stage_(stage), chart_(chart), company_(std::move(company)), connection_(std::move(connection)) {}

    /// \throws TourFailure at the first step that does not show what it should
    void run();

private:
    /// One row as the user keys it; the cost item may be left empty.
    struct Row {
        std::string sign;
        std::string percentage;
        std::string account;
        std::string item;
    };
    /// Rows of a correlation as the database holds them: sign, percentage, account and cost item.
    using StoredRows = std::vector<std::string>;

    void enter();
    void typeCausale(const std::string& code, const std::string& description);
    void keyRows();
    void saveNew();
    void refuseAndMend();
    void moveRow();
    void chooseFromRestrictedList();
    void addSecond();
    void copyByKeyboard();
    void pasteByMouse();
    void showMark();
    void removeAll();

    void keyRow(const Row& row);
    void keyPercentage(int row, const std::string& typed);
    /// Moves within the bar that has the focus, by its own keys.
    void reachButton(const std::string& bar, const std::string& button);
    /// From the grid to "Conferma" of the header, by keys.
    void reachSave();
    void save();
    /// From the grid to the list's first row, by keys.
    void goToFirstCausale();
    /// The list's menu, which is open. \throws TourFailure
    QMenu& openMenu();
    void chooseByKeyboard(const std::string& entry);
    void chooseByMouse(const std::string& entry);
    void removeCurrent(const Shot& shot);
    void press(Qt::Key key, int times);

    QTableView& grid();
    QTableView& list();
    std::string cell(QTableView& table, int row, int column);
    void expectGrid(int rows, const std::string& when);
    StoredRows stored(const std::string& causale);
    void expectStored(const std::string& causale, const StoredRows& rows, const std::string& when);

    Stage& stage_;
    ChartUser& chart_;
    std::string company_;
    std::shared_ptr<ado::Connection> connection_;
};

} // namespace veldran::shell
