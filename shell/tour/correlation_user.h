#pragma once

#include "shell/tour/stage.h"
#include "shell/tour/stored_data.h"

#include <string>

class QMenu;
class QTableView;

namespace veldran::shell {

/// A user at the correlations of an account: reads list and grid, keys rows, walks bars and menus.
class CorrelationUser {
public:
    /// One row as the user keys it; the cost item may be left empty.
    struct Row {
        std::string sign;
        std::string percentage;
        std::string account;
        std::string item;
    };

    CorrelationUser(Stage& stage, const StoredData& stored) : stage_(stage), stored_(stored) {}

    QTableView& grid();
    QTableView& list();
    static std::string cell(QTableView& table, int row, int column);
    /// The causale of the list's chosen row.
    std::string chosenCausale();
    /// \throws TourFailure naming `when`; so do the other expectations
    void expectGrid(int rows, const std::string& when);
    void expectList(int rows, const std::string& when);
    void expectStored(const std::string& account, const std::string& causale, const StoredData::Rows& rows,
                      const std::string& when);

    void press(Qt::Key key, int times);
    /// In the field of a new correlation, which has the focus.
    void typeCausale(const std::string& code, const std::string& description);
    void keyRow(const Row& row);
    /// Moves within the bar that has the focus, by its own keys.
    void reachButton(const std::string& bar, const std::string& button);
    /// From the grid to "Conferma" of the header, by keys.
    void reachSave();
    void save();
    /// From the grid to the list's first row, by keys.
    void goToFirstCausale();
    /// The list's menu, which is open. \throws TourFailure
    QMenu& openMenu();
    /// Opens the list's menu by the keyboard.
    QMenu& openMenuByKeyboard();
    void chooseByKeyboard(const std::string& entry);
    void chooseByMouse(const std::string& entry);
    /// Deletes the correlation of the chosen causale by its menu; the focus is in the list.
    void removeChosen(const Shot& shot);

private:
    Stage& stage_;
    const StoredData& stored_;
};

} // namespace veldran::shell
