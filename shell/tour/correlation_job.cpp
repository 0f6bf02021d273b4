#include "shell/tour/correlation_job.h"

#include "adapters/qt/text.h"
#include "adapters/qt/tree_widget.h"
#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"
#include "shell/tour/chart_user.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>

namespace veldran::shell {

using qt::fromQt;
using qt::toQt;

namespace {

// An account of the demo company without correlations, and two causali that allow the accounts keyed here.
constexpr const char* account = "68/05/10/0003";
constexpr const char* accountCode = "6805100003";
constexpr const char* purchase = "FTAC";
constexpr const char* purchaseName = "Fattura di acquisto";
constexpr const char* foreignPurchase = "FTAI";
constexpr const char* foreignPurchaseName = "Fattura di acquisto intracomunitaria";

/// The rows as they stand at the end; the first ones are keyed so.
const std::vector<std::string> sixRows = {"2 60.00 COLACQ0020",        "1 70.00 CDCGEN0010 SER050",
                                          "1 30.00 CDCGEN0020 SER050", "2 40.00 TRARIP0010",
                                          "1 50.00 CDCGEN0030 SER050", "1 50.00 CDCGEN0040 SER050"};

enum GridColumn { fromAccount, toAccount, accountName, percentage, item, itemName };

std::vector<std::string> exchanged(std::vector<std::string> rows, std::size_t one, std::size_t other) {
    std::swap(rows[one], rows[other]);
    return rows;
}

} // namespace

void CorrelationJob::run() {
    enter();
    typeCausale(purchase, purchaseName);
    keyRows();
    saveNew();
    refuseAndMend();
    moveRow();
    chooseFromRestrictedList();
    addSecond();
    copyByKeyboard();
    pasteByMouse();
    showMark();
    removeAll();
}

QTableView& CorrelationJob::grid() {
    return stage_.find<QTableView>(QStringLiteral("GRD_DETTAGLIO"));
}

QTableView& CorrelationJob::list() {
    return stage_.find<QTableView>(QStringLiteral("LST_CAUSALI"));
}

std::string CorrelationJob::cell(QTableView& table, int row, int column) {
    return fromQt(table.model()->index(row, column).data().toString());
}

void CorrelationJob::expectGrid(int rows, const std::string& when) {
    stage_.require(grid().model()->rowCount() == rows,
                   when + ": la griglia non mostra " + std::to_string(rows) + " righe");
}

CorrelationJob::StoredRows CorrelationJob::stored(const std::string& causale) {
    const auto records = connection_->Execute(
        "SELECT CI15_INDSEGNO, CI15_PERC, CI15_CONTO_PC03, CI15_VDS_PC03 FROM CI15_CORRCONTICOGE"
        " WHERE CI15_DITTA_CG18 = " +
        company_ + " AND CI15_CONTO_CG24 = '" + accountCode + "' AND CI15_CODCAUS_CI03 = '" + causale +
        "' ORDER BY CI15_PROG");
    StoredRows rows;
    for (; !records->EndOfFile(); records->MoveNext()) {
        std::string row;
        for (const ado::Field& field : records->Fields()) {
            const std::string text = nullSafeText(field.Value());
            row += (row.empty() || text.empty() ? "" : " ") + text;
        }
        rows.push_back(row);
    }
    return rows;
}

void CorrelationJob::expectStored(const std::string& causale, const StoredRows& rows,
                                  const std::string& when) {
    std::string found;
    const StoredRows now = stored(causale);
    for (const std::string& row : now) {
        found += "\n  " + row;
    }
    stage_.require(now == rows, when + ": nel database la correlazione " + causale + " è:" + found);
}

void CorrelationJob::press(Qt::Key key, int times) {
    for (int i = 0; i < times; ++i) {
        stage_.press(key);
    }
}

void CorrelationJob::enter() {
    chart_.typeIntoSearch(QString::fromLatin1(accountCode));
    chart_.searchNow(account);
    stage_.require(!chart_.isMarked(account), "il conto risulta già correlato");
    stage_.press(Qt::Key_A, Qt::AltModifier);
    stage_.expectFocus("TXT_CAUSALE");
    stage_.require(stage_.find<QLabel>(QStringLiteral("TXT_CONTOSELEZIONATO")).text().contains(toQt(account)),
                   "la maschera non dice di quale conto sono le correlazioni");
    stage_.require(list().model()->rowCount() == 0, "il conto ha già delle causali");
    expectGrid(0, "all'ingresso");
    stage_.require(!grid().isEnabled(), "le righe sono aperte prima che ci sia una causale");
    stage_.picture("correlazioni",
                   "Alt+A passa alle correlazioni del conto: non ce ne sono, si comincia dalla "
                   "causale.");
}

void CorrelationJob::typeCausale(const std::string& code, const std::string& description) {
    stage_.type(toQt(code).toLower());
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("CBO_SEGNO");
    stage_.require(stage_.find<QLabel>(QStringLiteral("TXT_DESCRCAUSALE")).text() == toQt(description),
                   "la causale non viene decodificata");
    stage_.require(grid().isEnabled(), "la causale non apre le righe");
}

void CorrelationJob::keyRow(const Row& row) {
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

void CorrelationJob::keyRows() {
    stage_.picture("causale-digitata", "La causale digitata viene decodificata e apre la prima riga.");
    keyRow({"Avere", "60", "COL.ACQ.0020", ""});
    stage_.picture("prima-riga", "La prima riga: segno con la sua iniziale, percentuale, conto.");
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("CBO_SEGNO");
    stage_.require(stage_.find<QComboBox>(QStringLiteral("CBO_SEGNO")).currentText() ==
                       QStringLiteral("Dare"),
                   "dopo una riga di origine non viene proposto il segno Dare");
    stage_.picture("riga-successiva",
                   "Tab dall'ultimo campo registra la riga e ne apre un'altra, con il segno che segue.");
    // A cost item is complete with its last letter: the next row begins by itself.
    keyRow({"Dare", "70,00", "CDCGEN0010", "SER050"});
    keyRow({"Dare", "30", "CDC.GEN.0020", "SER050"});
    keyRow({"Avere", "40", "TRARIP0010", ""});
    stage_.press(Qt::Key_Tab);
    keyRow({"Dare", "50", "CDCGEN0030", "SER050"});
    keyRow({"Dare", "50", "CDCGEN0040", "SER050"});
    stage_.expectFocus("CBO_SEGNO");
    expectGrid(7, "dopo sei righe");
    expectStored(purchase, {}, "prima di salvare");
    stage_.picture("sei-righe",
                   "Sei righe digitate di seguito senza mouse; la settima aspetta, ancora vuota.");
}

void CorrelationJob::reachButton(const std::string& bar, const std::string& button) {
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

void CorrelationJob::reachSave() {
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    reachButton("INV_TESTATA", "Conferma");
}

void CorrelationJob::save() {
    reachSave();
    stage_.press(Qt::Key_Return);
    stage_.expectFocus("GRD_DETTAGLIO");
}

void CorrelationJob::saveNew() {
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    save();
    expectGrid(6, "dopo il salvataggio");
    expectStored(purchase, sixRows, "dopo il salvataggio");
    stage_.require(list().model()->rowCount() == 1 && cell(list(), 0, 0) == purchase &&
                       cell(list(), 0, 1) == purchaseName,
                   "la nuova causale non è nell'elenco");
    stage_.picture("correlazione-salvata",
                   "«Conferma» dalla tastiera: la correlazione è nel database e la causale nell'elenco.");
}

/// From the grid into the row's percentage, and on through the fields until the row is confirmed.
void CorrelationJob::keyPercentage(int row, const std::string& typed) {
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.press(Qt::Key_Home);
    press(Qt::Key_Down, row);
    stage_.press(Qt::Key_Return);
    stage_.expectFocus("CBO_SEGNO");
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("TXT_PERC");
    stage_.type(toQt(typed));
    press(Qt::Key_Return, 3);
    stage_.expectFocus("GRD_DETTAGLIO");
}

void CorrelationJob::refuseAndMend() {
    keyPercentage(1, "80");
    stage_.require(cell(grid(), 1, percentage) == "80.00%", "la griglia non mostra la percentuale digitata");
    reachSave();
    stage_.expectMessage(
        [&] { stage_.press(Qt::Key_Return); },
        {"Controllo correlazione",
         "Attenzione, non è ammesso salvare una correlazione con la somma delle percentuali\n"
         "attribuite ad un insieme contiguo di righe di destinazione maggiore di 100"},
        {"percentuali-rifiutate",
         "80 e 30 fanno 110: la correlazione non viene salvata, e il messaggio dice perché."});
    stage_.expectFocus("INV_TESTATA_Conferma");
    expectGrid(6, "dopo il rifiuto");
    stage_.require(cell(grid(), 1, percentage) == "80.00%",
                   "il rifiuto toglie quello che era stato digitato");
    expectStored(purchase, sixRows, "dopo il rifiuto");
    stage_.press(Qt::Key_Tab);
    keyPercentage(1, "70");
    save();
    expectStored(purchase, sixRows, "dopo la correzione");
    stage_.picture("correlazione-corretta",
                   "Corretta la percentuale, dove la si era lasciata, la correlazione si salva.");
}

void CorrelationJob::moveRow() {
    stage_.press(Qt::Key_Home);
    press(Qt::Key_Down, 2);
    stage_.press(Qt::Key_U, Qt::AltModifier);
    stage_.waitUntil([&] { return grid().currentIndex().row() == 1; }, "la riga non sale");
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.require(cell(grid(), 1, toAccount) == "CDC.GEN.0020" &&
                       cell(grid(), 2, toAccount) == "CDC.GEN.0010",
                   "la riga non è salita");
    expectStored(purchase, sixRows, "prima di salvare lo spostamento");
    save();
    expectStored(purchase, exchanged(sixRows, 1, 2), "dopo lo spostamento");
    stage_.picture("riga-spostata", "Alt+U sposta la riga verso l'alto; l'ordine è salvato con «Conferma».");
    stage_.press(Qt::Key_G, Qt::AltModifier);
    stage_.waitUntil([&] { return grid().currentIndex().row() == 2; }, "la riga non scende");
    save();
    expectStored(purchase, sixRows, "dopo lo spostamento all'indietro");
}

void CorrelationJob::chooseFromRestrictedList() {
    stage_.press(Qt::Key_End);
    stage_.press(Qt::Key_Return);
    press(Qt::Key_Return, 2);
    stage_.expectFocus("TXT_CONTO");
    stage_.withDialog([&] { stage_.press(Qt::Key_F4); },
                      [&](QWidget&) {
                          auto& choices = stage_.find<QTableView>(QStringLiteral("elenco"));
                          stage_.require(!stage_.find<QLabel>(QStringLiteral("restrizione")).text().isEmpty(),
                                         "l'elenco non dice di essere ristretto");
                          for (int row = 0; row < choices.model()->rowCount(); ++row) {
                              stage_.require(!cell(choices, row, 0).starts_with("COL"),
                                             "l'elenco offre un conto di collegamento in Dare");
                          }
                          stage_.picture("elenco-conti-ristretto",
                                         "F4: solo i conti che la causale ammette per il segno della riga.");
                          stage_.type(QStringLiteral("marketing"));
                          stage_.require(choices.model()->rowCount() == 1,
                                         "le parole non filtrano l'elenco ristretto");
                          stage_.press(Qt::Key_Return);
                      });
    stage_.expectFocus("TXT_VDS");
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.require(cell(grid(), 5, toAccount) == "CDC.COM.0030" &&
                       cell(grid(), 5, accountName) == "Marketing e fiere",
                   "il conto scelto non arriva nella riga");
    save();
    auto expected = sixRows;
    expected[5] = "1 50.00 CDCCOM0030 SER050";
    expectStored(purchase, expected, "dopo la scelta dall'elenco");
    stage_.picture("conto-dall-elenco", "Il conto scelto dall'elenco, salvato nella sesta riga.");
}

void CorrelationJob::addSecond() {
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    reachButton("INV_TESTATA", "Nuovo");
    stage_.press(Qt::Key_Return);
    stage_.expectFocus("TXT_CAUSALE");
    expectGrid(0, "con una causale nuova");
    typeCausale(foreignPurchase, foreignPurchaseName);
    keyRow({"Avere", "100", "COLACQ0010", ""});
    stage_.press(Qt::Key_Tab);
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    save();
    expectStored(foreignPurchase, {"2 100.00 COLACQ0010"}, "dopo il salvataggio");
    stage_.require(list().model()->rowCount() == 2, "l'elenco non mostra due causali");
    stage_.require(cell(list(), list().currentIndex().row(), 0) == foreignPurchase,
                   "la causale salvata non è quella scelta nell'elenco");
    stage_.picture("seconda-causale", "Una seconda causale per lo stesso conto.");
}

QMenu& CorrelationJob::openMenu() {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    stage_.require(menu != nullptr, "il menu dell'elenco non si apre");
    return *menu;
}

void CorrelationJob::chooseByKeyboard(const std::string& entry) {
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

void CorrelationJob::chooseByMouse(const std::string& entry) {
    QMenu& menu = openMenu();
    for (QAction* action : menu.actions()) {
        if (fromQt(action->text()) == entry) {
            stage_.click(menu, menu.actionGeometry(action).center());
            return;
        }
    }
    throw TourFailure("il menu non ha la voce «" + entry + "»");
}

void CorrelationJob::goToFirstCausale() {
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    stage_.expectFocus("LST_CAUSALI");
    stage_.press(Qt::Key_Home);
}

void CorrelationJob::copyByKeyboard() {
    goToFirstCausale();
    stage_.require(cell(list(), list().currentIndex().row(), 0) == purchase,
                   "la tastiera non sceglie la causale nell'elenco");
    expectGrid(6, "scelta la prima causale");
    stage_.press(Qt::Key_F10, Qt::ShiftModifier);
    stage_.picture("menu-da-tastiera", "Maiusc+F10 apre il menu della causale scelta.");
    chooseByKeyboard("Copia correlazione");
    stage_.expectFocus("LST_CAUSALI");
}

void CorrelationJob::pasteByMouse() {
    const StoredRows source = stored(purchase);
    stage_.click(*list().viewport(), list().visualRect(list().model()->index(1, 0)).center(),
                 Qt::RightButton);
    openMenu();
    stage_.require(cell(list(), list().currentIndex().row(), 0) == foreignPurchase,
                   "il tasto destro non sceglie la causale");
    stage_.picture("menu-con-il-mouse", "Il tasto destro su un'altra causale la sceglie e apre il menu.");
    const std::string paste = std::string("Incolla corr. ") + purchase + " - " + purchaseName;
    stage_.expectMessage([&] { chooseByMouse(paste); },
                         {"Attenzione", "Sostituire la correlazione della causale di destinazione?"},
                         {"incolla", "Incollando si sostituisce la correlazione che c'è: prima si chiede."},
                         Qt::Key_S, Qt::AltModifier);
    expectStored(foreignPurchase, source, "dopo la copia");
    expectStored(purchase, source, "dopo la copia");
    expectGrid(6, "dopo la copia");
    stage_.require(cell(list(), list().currentIndex().row(), 0) == foreignPurchase,
                   "dopo la copia l'elenco non sta sulla causale mostrata");
    stage_.picture("correlazione-incollata", "La causale di destinazione ha ora le stesse sei righe.");
}

void CorrelationJob::showMark() {
    stage_.press(Qt::Key_A, Qt::AltModifier);
    stage_.expectFocus("TRW_CONTI");
    stage_.require(chart_.isMarked(account), "nell'albero il conto non risulta correlato");
    stage_.picture("conto-correlato", "Di ritorno nell'albero: il conto è in evidenza, perché è correlato.");
}

void CorrelationJob::removeCurrent(const Shot& shot) {
    stage_.press(Qt::Key_F10, Qt::ShiftModifier);
    stage_.expectMessage([&] { chooseByKeyboard("Elimina correlazione"); },
                         {"Attenzione", "Eliminare la correlazione?"}, shot, Qt::Key_S, Qt::AltModifier);
}

void CorrelationJob::removeAll() {
    stage_.press(Qt::Key_A, Qt::AltModifier);
    stage_.expectFocus("GRD_DETTAGLIO");
    expectGrid(6, "tornando alle correlazioni");
    goToFirstCausale();
    removeCurrent({"elimina", "Eliminare una correlazione dal menu: prima si chiede."});
    stage_.expectFocus("LST_CAUSALI");
    stage_.require(list().model()->rowCount() == 1, "la causale eliminata è ancora nell'elenco");
    removeCurrent({"elimina-ultima", "Anche l'ultima correlazione si elimina così."});
    stage_.expectFocus("TXT_CAUSALE");
    stage_.require(list().model()->rowCount() == 0, "l'ultima causale eliminata è ancora nell'elenco");
    expectStored(purchase, {}, "dopo l'eliminazione");
    expectStored(foreignPurchase, {}, "dopo l'eliminazione");
    stage_.picture("correlazioni-eliminate",
                   "Senza correlazioni la maschera è pronta per una nuova causale.");
    stage_.press(Qt::Key_A, Qt::AltModifier);
    stage_.expectFocus("TRW_CONTI");
    stage_.require(!chart_.isMarked(account), "nell'albero il conto risulta ancora correlato");
    stage_.picture("conto-non-correlato", "Nell'albero il conto non è più in evidenza.");
}

} // namespace veldran::shell
