#include "shell/tour/correlation_job.h"

#include "adapters/qt/text.h"
#include "adapters/qt/tree_widget.h"
#include "shell/tour/demo_account.h"

#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QTableView>

namespace veldran::shell {

using qt::fromQt;
using qt::toQt;
using namespace demo;

namespace {

/// The rows as they stand at the end; the first ones are keyed so.
const StoredData::Rows sixRows = {"2 60.00 COLACQ0020",        "1 70.00 CDCGEN0010 SER050",
                                  "1 30.00 CDCGEN0020 SER050", "2 40.00 TRARIP0010",
                                  "1 50.00 CDCGEN0030 SER050", "1 50.00 CDCGEN0040 SER050"};

enum GridColumn { fromAccount, toAccount, accountName, percentage, item, itemName };

StoredData::Rows exchanged(StoredData::Rows rows, std::size_t one, std::size_t other) {
    std::swap(rows[one], rows[other]);
    return rows;
}

} // namespace

void CorrelationJob::run() {
    enter();
    user_.typeCausale(purchase, purchaseName);
    keyRows();
    saveNew();
    refuseAndMend();
    moveRow();
    chooseFromRestrictedList();
    addSecond();
    copyByMenu();
    pasteByMouse();
    showMark();
}

void CorrelationJob::expectStored(const std::string& causale, const StoredData::Rows& rows,
                                  const std::string& when) {
    user_.expectStored(accountCode, causale, rows, when);
}

void CorrelationJob::enter() {
    chart_.typeIntoSearch(QString::fromLatin1(accountCode));
    chart_.searchNow(account);
    stage_.require(!chart_.isMarked(account), "il conto risulta già correlato");
    stage_.press(Qt::Key_A, Qt::AltModifier);
    stage_.expectFocus("TXT_CAUSALE");
    stage_.require(stage_.find<QLabel>(QStringLiteral("TXT_CONTOSELEZIONATO")).text().contains(toQt(account)),
                   "la maschera non dice di quale conto sono le correlazioni");
    user_.expectList(0, "all'ingresso");
    user_.expectGrid(0, "all'ingresso");
    stage_.require(!user_.grid().isEnabled(), "le righe sono aperte prima che ci sia una causale");
    stage_.picture("correlazioni",
                   "Alt+A passa alle correlazioni del conto: non ce ne sono, si comincia dalla "
                   "causale.");
}

void CorrelationJob::keyRows() {
    stage_.picture("causale-digitata", "La causale digitata viene decodificata e apre la prima riga.");
    user_.keyRow({"Avere", "60", "COL.ACQ.0020", ""});
    stage_.picture("prima-riga", "La prima riga: segno con la sua iniziale, percentuale, conto.");
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("CBO_SEGNO");
    stage_.require(stage_.find<QComboBox>(QStringLiteral("CBO_SEGNO")).currentText() ==
                       QStringLiteral("Dare"),
                   "dopo una riga di origine non viene proposto il segno Dare");
    stage_.picture("riga-successiva",
                   "Tab dall'ultimo campo registra la riga e ne apre un'altra, con il segno che segue.");
    // A cost item is complete with its last letter: the next row begins by itself.
    user_.keyRow({"Dare", "70,00", "CDCGEN0010", "SER050"});
    user_.keyRow({"Dare", "30", "CDC.GEN.0020", "SER050"});
    user_.keyRow({"Avere", "40", "TRARIP0010", ""});
    stage_.press(Qt::Key_Tab);
    user_.keyRow({"Dare", "50", "CDCGEN0030", "SER050"});
    user_.keyRow({"Dare", "50", "CDCGEN0040", "SER050"});
    stage_.expectFocus("CBO_SEGNO");
    user_.expectGrid(7, "dopo sei righe");
    expectStored(purchase, {}, "prima di salvare");
    stage_.picture("sei-righe",
                   "Sei righe digitate di seguito senza mouse; la settima aspetta, ancora vuota.");
}

void CorrelationJob::saveNew() {
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    user_.save();
    user_.expectGrid(6, "dopo il salvataggio");
    expectStored(purchase, sixRows, "dopo il salvataggio");
    stage_.require(user_.list().model()->rowCount() == 1 && user_.cell(user_.list(), 0, 0) == purchase &&
                       user_.cell(user_.list(), 0, 1) == purchaseName,
                   "la nuova causale non è nell'elenco");
    stage_.picture("correlazione-salvata",
                   "«Conferma» dalla tastiera: la correlazione è nel database e la causale nell'elenco.");
}

/// From the grid into the row's percentage, and on through the fields until the row is confirmed.
void CorrelationJob::keyPercentage(int row, const std::string& typed) {
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.press(Qt::Key_Home);
    user_.press(Qt::Key_Down, row);
    stage_.press(Qt::Key_Return);
    stage_.expectFocus("CBO_SEGNO");
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("TXT_PERC");
    stage_.type(toQt(typed));
    user_.press(Qt::Key_Return, 3);
    stage_.expectFocus("GRD_DETTAGLIO");
}

void CorrelationJob::refuseAndMend() {
    keyPercentage(1, "80");
    stage_.require(user_.cell(user_.grid(), 1, percentage) == "80.00%",
                   "la griglia non mostra la percentuale digitata");
    user_.reachSave();
    stage_.expectMessage(
        [&] { stage_.press(Qt::Key_Return); },
        {"Controllo correlazione",
         "Attenzione, non è ammesso salvare una correlazione con la somma delle percentuali\n"
         "attribuite ad un insieme contiguo di righe di destinazione maggiore di 100"},
        {"percentuali-rifiutate",
         "80 e 30 fanno 110: la correlazione non viene salvata, e il messaggio dice perché."});
    stage_.expectFocus("INV_TESTATA_Conferma");
    user_.expectGrid(6, "dopo il rifiuto");
    stage_.require(user_.cell(user_.grid(), 1, percentage) == "80.00%",
                   "il rifiuto toglie quello che era stato digitato");
    expectStored(purchase, sixRows, "dopo il rifiuto");
    stage_.press(Qt::Key_Tab);
    keyPercentage(1, "70");
    user_.save();
    expectStored(purchase, sixRows, "dopo la correzione");
    stage_.picture("correlazione-corretta",
                   "Corretta la percentuale, dove la si era lasciata, la correlazione si salva.");
}

void CorrelationJob::moveRow() {
    stage_.press(Qt::Key_Home);
    user_.press(Qt::Key_Down, 2);
    stage_.press(Qt::Key_U, Qt::AltModifier);
    stage_.waitUntil([&] { return user_.grid().currentIndex().row() == 1; }, "la riga non sale");
    stage_.expectFocus("GRD_DETTAGLIO");
    stage_.require(user_.cell(user_.grid(), 1, toAccount) == "CDC.GEN.0020" &&
                       user_.cell(user_.grid(), 2, toAccount) == "CDC.GEN.0010",
                   "la riga non è salita");
    expectStored(purchase, sixRows, "prima di salvare lo spostamento");
    user_.save();
    expectStored(purchase, exchanged(sixRows, 1, 2), "dopo lo spostamento");
    stage_.picture("riga-spostata", "Alt+U sposta la riga verso l'alto; l'ordine è salvato con «Conferma».");
    stage_.press(Qt::Key_G, Qt::AltModifier);
    stage_.waitUntil([&] { return user_.grid().currentIndex().row() == 2; }, "la riga non scende");
    user_.save();
    expectStored(purchase, sixRows, "dopo lo spostamento all'indietro");
}

void CorrelationJob::chooseFromRestrictedList() {
    stage_.press(Qt::Key_End);
    stage_.press(Qt::Key_Return);
    user_.press(Qt::Key_Return, 2);
    stage_.expectFocus("TXT_CONTO");
    stage_.withDialog([&] { stage_.press(Qt::Key_F4); },
                      [&](QWidget&) {
                          auto& choices = stage_.find<QTableView>(QStringLiteral("elenco"));
                          stage_.require(!stage_.find<QLabel>(QStringLiteral("restrizione")).text().isEmpty(),
                                         "l'elenco non dice di essere ristretto");
                          for (int row = 0; row < choices.model()->rowCount(); ++row) {
                              stage_.require(!user_.cell(choices, row, 0).starts_with("COL"),
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
    stage_.require(user_.cell(user_.grid(), 5, toAccount) == "CDC.COM.0030" &&
                       user_.cell(user_.grid(), 5, accountName) == "Marketing e fiere",
                   "il conto scelto non arriva nella riga");
    user_.save();
    auto expected = sixRows;
    expected[5] = "1 50.00 CDCCOM0030 SER050";
    expectStored(purchase, expected, "dopo la scelta dall'elenco");
    stage_.picture("conto-dall-elenco", "Il conto scelto dall'elenco, salvato nella sesta riga.");
}

void CorrelationJob::addSecond() {
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    user_.reachButton("INV_TESTATA", "Nuovo");
    stage_.press(Qt::Key_Return);
    stage_.expectFocus("TXT_CAUSALE");
    user_.expectGrid(0, "con una causale nuova");
    user_.typeCausale(foreignPurchase, foreignPurchaseName);
    user_.keyRow({"Avere", "100", "COLACQ0010", ""});
    stage_.press(Qt::Key_Tab);
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    user_.save();
    expectStored(foreignPurchase, {"2 100.00 COLACQ0010"}, "dopo il salvataggio");
    user_.expectList(2, "dopo la seconda causale");
    stage_.require(user_.chosenCausale() == foreignPurchase,
                   "la causale salvata non è quella scelta nell'elenco");
    stage_.picture("seconda-causale", "Una seconda causale per lo stesso conto.");
}

void CorrelationJob::copyByMenu() {
    user_.goToFirstCausale();
    stage_.require(user_.chosenCausale() == purchase, "la tastiera non sceglie la causale nell'elenco");
    user_.expectGrid(6, "scelta la prima causale");
    user_.openMenuByKeyboard();
    stage_.picture("menu-da-tastiera", "Maiusc+F10 apre il menu della causale scelta.");
    user_.chooseByKeyboard("Copia correlazione");
    stage_.expectFocus("LST_CAUSALI");
}

void CorrelationJob::pasteByMouse() {
    const StoredData::Rows source = stored_.correlation(accountCode, purchase);
    stage_.click(*user_.list().viewport(),
                 user_.list().visualRect(user_.list().model()->index(1, 0)).center(), Qt::RightButton);
    user_.openMenu();
    stage_.require(user_.chosenCausale() == foreignPurchase, "il tasto destro non sceglie la causale");
    stage_.picture("menu-con-il-mouse", "Il tasto destro su un'altra causale la sceglie e apre il menu.");
    const std::string paste = std::string("Incolla corr. ") + purchase + " - " + purchaseName;
    stage_.expectMessage([&] { user_.chooseByMouse(paste); },
                         {"Attenzione", "Sostituire la correlazione della causale di destinazione?"},
                         {"incolla", "Incollando si sostituisce la correlazione che c'è: prima si chiede."},
                         Qt::Key_S, Qt::AltModifier);
    expectStored(foreignPurchase, source, "dopo la copia");
    expectStored(purchase, source, "dopo la copia");
    user_.expectGrid(6, "dopo la copia");
    stage_.require(user_.chosenCausale() == foreignPurchase,
                   "dopo la copia l'elenco non sta sulla causale mostrata");
    stage_.picture("correlazione-incollata", "La causale di destinazione ha ora le stesse sei righe.");
}

void CorrelationJob::showMark() {
    stage_.press(Qt::Key_A, Qt::AltModifier);
    stage_.expectFocus("TRW_CONTI");
    stage_.require(chart_.isMarked(account), "nell'albero il conto non risulta correlato");
    stage_.picture("conto-correlato", "Di ritorno nell'albero: il conto è in evidenza, perché è correlato.");
}

} // namespace veldran::shell
