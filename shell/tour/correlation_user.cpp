#include "shell/tour/correlation_user.h"

#include "adapters/qt/text.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QTableView>

namespace veldran::shell {

using qt::fromQt;
using qt::toQt;

QTableView& CorrelationUser::grid() {
    return stage_.find<QTableView>(QStringLiteral("GRD_DETTAGLIO"));
}

QTableView& CorrelationUser::list() {
    return stage_.find<QTableView>(QStringLiteral("LST_CAUSALI"));
}

std::string CorrelationUser::cell(QTableView& table, int row, int column) {
    return fromQt(table.model()->index(row, column).data().toString());
}

void CorrelationUser::expectGrid(int rows, const std::string& when) {
    stage_.require(grid().model()->rowCount() == rows,
                   when + ": la griglia non mostra " + std::to_string(rows) + " righe");
}

void CorrelationUser::expectList(int rows, const std::string& when) {
    stage_.require(list().model()->rowCount() == rows,
                   when + ": l'elenco non mostra " + std::to_string(rows) + " causali");
}

std::string CorrelationUser::chosenCausale() {
    return cell(list(), list().currentIndex().row(), 0);
}

void CorrelationUser::expectStored(const std::string& account, const std::string& causale,
                                   const StoredData::Rows& rows, const std::string& when) {
    std::string found;
    const StoredData::Rows now = stored_.correlation(account, causale);
    for (const std::string& row : now) {
        found += "\n  " + row;
    }
    stage_.require(now == rows, when + ": nel database la correlazione " + causale + " è:" + found);
}

void CorrelationUser::press(Qt::Key key, int times) {
    for (int i = 0; i < times; ++i) {
        stage_.press(key);
    }
}

void CorrelationUser::typeCausale(const std::string& code, const std::string& description) {
    stage_.type(toQt(code).toLower());
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("CBO_SEGNO");
    stage_.require(stage_.find<QLabel>(QStringLiteral("TXT_DESCRCAUSALE")).text() == toQt(description),
                   "la causale non viene decodificata");
    stage_.require(grid().isEnabled(), "la causale non apre le righe");
}

void CorrelationUser::keyRow(const Row& row) {
    stage_.expectFocus("CBO_SEGNO");
    stage_.type(toQt(row.sign).left(1).toLower());
    stage_.require(stage_.find<QComboBox>(QStringLiteral("CBO_SEGNO")).currentText() == toQt(row.sign),
                   "la lettera non sceglie il segno " + row.sign);
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("TXT_PERC");
    stage_.type(toQt(row.percentage));
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("TXT_CONTO");
    stage_.type(toQt(row.account));
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("TXT_VDS");
    stage_.require(!stage_.find<QLabel>(QStringLiteral("TXT_DESCRCONTO")).text().isEmpty(),
                   "il conto " + row.account + " non viene decodificato");
    stage_.type(toQt(row.item));
}

void CorrelationUser::reachButton(const std::string& bar, const std::string& button) {
    const std::string wanted = bar + "_" + button;
    stage_.require(stage_.focused().starts_with(bar + "_"),
                   "il fuoco è su «" + stage_.focused() + "» e non sulla barra " + bar);
    stage_.press(Qt::Key_Home);
    for (std::string before; stage_.focused() != wanted && before != stage_.focused();) {
        before = stage_.focused();
        stage_.press(Qt::Key_Right);
    }
    stage_.expectFocus(wanted);
}

void CorrelationUser::reachSave() {
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    reachButton("INV_TESTATA", "Conferma");
}

void CorrelationUser::save() {
    reachSave();
    stage_.press(Qt::Key_Return);
    stage_.expectFocus("GRD_DETTAGLIO");
}

void CorrelationUser::goToFirstCausale() {
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    stage_.expectFocus("LST_CAUSALI");
    stage_.press(Qt::Key_Home);
}

QMenu& CorrelationUser::openMenu() {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    stage_.require(menu != nullptr, "il menu dell'elenco non si apre");
    return *menu;
}

QMenu& CorrelationUser::openMenuByKeyboard() {
    stage_.expectFocus("LST_CAUSALI");
    stage_.press(Qt::Key_F10, Qt::ShiftModifier);
    return openMenu();
}

void CorrelationUser::chooseByKeyboard(const std::string& entry) {
    const QMenu& menu = openMenu();
    for (qsizetype i = 0; i < menu.actions().size(); ++i) {
        if (menu.activeAction() != nullptr && fromQt(menu.activeAction()->text()) == entry) {
            stage_.press(Qt::Key_Return);
            return;
        }
        stage_.press(Qt::Key_Down);
    }
    throw TourFailure("il menu non ha la voce «" + entry + "»");
}

void CorrelationUser::chooseByMouse(const std::string& entry) {
    QMenu& menu = openMenu();
    for (QAction* action : menu.actions()) {
        if (fromQt(action->text()) == entry) {
            stage_.click(menu, menu.actionGeometry(action).center());
            return;
        }
    }
    throw TourFailure("il menu non ha la voce «" + entry + "»");
}

void CorrelationUser::removeChosen(const Shot& shot) {
    openMenuByKeyboard();
    stage_.expectMessage([&] { chooseByKeyboard("Elimina correlazione"); },
                         {"Attenzione", "Eliminare la correlazione?"}, shot, Qt::Key_S, Qt::AltModifier);
}

} // namespace veldran::shell
