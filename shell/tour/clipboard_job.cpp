#include "shell/tour/clipboard_job.h"

#include "adapters/qt/text.h"
#include "shell/tour/demo_account.h"

#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QTableView>

namespace veldran::shell {

using namespace demo;

namespace {

constexpr const char* creditNote = "NCAC";
constexpr const char* creditNoteName = "Nota di credito da fornitore";

} // namespace

void ClipboardJob::run() {
    rows_ = stored_.correlation(accountCode, purchase);
    stage_.require(!rows_.empty() && stored_.correlation(accountCode, foreignPurchase) == rows_,
                   "il conto non ha le due correlazioni da copiare");
    copyInTree();
    moveInTree();
    duplicate();
    copyInList();
    moveInList();
    removeAll();
}

void ClipboardJob::copyInTree() {
    stage_.expectFocus("TRW_CONTI");
    stage_.press(Qt::Key_C, Qt::ControlModifier);
    stage_.press(Qt::Key_Down);
    stage_.require(chart_.isSelected(nextAccount), "la freccia non arriva al conto successivo");
    stage_.press(Qt::Key_V, Qt::ControlModifier);
    stage_.waitUntil([&] { return chart_.isMarked(nextAccount); },
                     "Ctrl+V nell'albero non incolla le correlazioni");
    for (const char* causale : {purchase, foreignPurchase}) {
        user_.expectStored(nextAccountCode, causale, rows_, "dopo la copia nell'albero");
        user_.expectStored(accountCode, causale, rows_, "dopo la copia nell'albero");
    }
    stage_.picture("copia-nell-albero",
                   "Ctrl+C su un conto, Ctrl+V su un altro: tutte le sue correlazioni sono copiate.");
}

void ClipboardJob::moveInTree() {
    stage_.press(Qt::Key_Up);
    stage_.press(Qt::Key_X, Qt::ControlModifier);
    stage_.press(Qt::Key_Down);
    stage_.expectMessage([&] { stage_.press(Qt::Key_V, Qt::ControlModifier); },
                         {"Attenzione", "Sostituire la correlazione del conto di destinazione?"},
                         {"sposta-nell-albero",
                          "Dopo Ctrl+X, Ctrl+V sposta: il conto di destinazione ha già delle correlazioni."},
                         Qt::Key_S, Qt::AltModifier);
    stage_.waitUntil([&] { return !chart_.isMarked(account); }, "il conto di partenza resta correlato");
    stage_.require(chart_.isMarked(nextAccount), "il conto di destinazione non è correlato");
    stage_.require(stored_.correlationRows(accountCode) == 0, "restano righe del conto di partenza");
    for (const char* causale : {purchase, foreignPurchase}) {
        user_.expectStored(nextAccountCode, causale, rows_, "dopo lo spostamento nell'albero");
    }
    stage_.picture("spostate-nell-albero", "Le correlazioni sono passate al secondo conto.");
}

void ClipboardJob::duplicate() {
    stage_.press(Qt::Key_A, Qt::AltModifier);
    stage_.expectFocus("GRD_DETTAGLIO");
    user_.goToFirstCausale();
    user_.openMenuByKeyboard();
    stage_.withDialog([&] { user_.chooseByKeyboard("DuplicaCorrelazione"); },
                      [&](QWidget& dialog) { chooseDestination(dialog); });
    user_.expectList(3, "dopo la duplicazione");
    user_.expectStored(nextAccountCode, creditNote, rows_, "dopo la duplicazione");
    stage_.picture("duplicata", "La nuova causale è nell'elenco, con le stesse righe.");
}

void ClipboardJob::chooseDestination(QWidget& dialog) {
    stage_.expectFocus("TXT_CAUSALE");
    stage_.type(QStringLiteral("xyz"));
    stage_.press(Qt::Key_Tab);
    stage_.expectFocus("CMD_CONFERMA");
    stage_.picture("duplica-sconosciuta",
                   "Duplicare su un'altra causale: un codice che non esiste è segnato nel campo.");
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    stage_.expectFocus("TXT_CAUSALE");
    stage_.withDialog([&] { stage_.press(Qt::Key_F4); },
                      [&](QWidget&) {
                          stage_.type(QStringLiteral("nota fornitore"));
                          stage_.picture("duplica-elenco", "F4 apre l'elenco delle causali, anche qui.");
                          stage_.press(Qt::Key_Return);
                      });
    stage_.require(stage_.find<QLabel>(QStringLiteral("TXT_DESCRCAUSALE")).text() ==
                       QString::fromUtf8(creditNoteName),
                   "la causale scelta non arriva nella finestra");
    stage_.picture("duplica", "La causale di destinazione, con la sua descrizione.");
    stage_.press(Qt::Key_Return);
    stage_.expectFocus("CMD_CONFERMA");
    stage_.press(Qt::Key_Return);
    const QPointer<QWidget> shown(&dialog);
    stage_.waitUntil([&] { return !shown || !shown->isVisible(); }, "«Conferma» non chiude la finestra");
}

void ClipboardJob::chooseCausale(const std::string& causale) {
    stage_.expectFocus("LST_CAUSALI");
    stage_.press(Qt::Key_Home);
    for (int row = 0; user_.chosenCausale() != causale && row < user_.list().model()->rowCount(); ++row) {
        stage_.press(Qt::Key_Down);
    }
    stage_.require(user_.chosenCausale() == causale, "la tastiera non arriva alla causale " + causale);
}

void ClipboardJob::pasteInList(const Shot& shot) {
    stage_.expectMessage([&] { stage_.press(Qt::Key_V, Qt::ControlModifier); },
                         {"Attenzione", "Sostituire la correlazione della causale di destinazione?"}, shot,
                         Qt::Key_S, Qt::AltModifier);
    stage_.expectFocus("LST_CAUSALI");
}

void ClipboardJob::copyInList() {
    chooseCausale(purchase);
    stage_.press(Qt::Key_C, Qt::ControlModifier);
    chooseCausale(foreignPurchase);
    pasteInList({"copia-nell-elenco", "Ctrl+C e Ctrl+V copiano una causale sull'altra anche nell'elenco."});
    user_.expectList(3, "dopo la copia nell'elenco");
    for (const char* causale : {purchase, foreignPurchase, creditNote}) {
        user_.expectStored(nextAccountCode, causale, rows_, "dopo la copia nell'elenco");
    }
}

void ClipboardJob::moveInList() {
    chooseCausale(foreignPurchase);
    stage_.press(Qt::Key_X, Qt::ControlModifier);
    chooseCausale(creditNote);
    pasteInList({"sposta-nell-elenco", "Dopo Ctrl+X la causale di partenza perde la sua correlazione."});
    user_.expectList(2, "dopo lo spostamento nell'elenco");
    user_.expectStored(nextAccountCode, foreignPurchase, {}, "dopo lo spostamento nell'elenco");
    user_.expectStored(nextAccountCode, creditNote, rows_, "dopo lo spostamento nell'elenco");
    stage_.picture("spostata-nell-elenco", "Restano due causali.");
}

void ClipboardJob::removeAll() {
    chooseCausale(purchase);
    user_.removeChosen({"elimina", "Eliminare una correlazione dal menu: prima si chiede."});
    stage_.expectFocus("LST_CAUSALI");
    user_.expectList(1, "dopo l'eliminazione");
    user_.removeChosen({"elimina-ultima", "Anche l'ultima correlazione si elimina così."});
    stage_.expectFocus("TXT_CAUSALE");
    user_.expectList(0, "dopo l'ultima eliminazione");
    stage_.require(stored_.correlationRows(nextAccountCode) == 0, "restano righe dopo l'eliminazione");
    stage_.picture("correlazioni-eliminate",
                   "Senza correlazioni la maschera è pronta per una nuova causale.");
    stage_.press(Qt::Key_A, Qt::AltModifier);
    stage_.expectFocus("TRW_CONTI");
    stage_.require(!chart_.isMarked(nextAccount), "nell'albero il conto risulta ancora correlato");
    stage_.picture("conto-non-correlato", "Nell'albero il conto non è più in evidenza.");
}

} // namespace veldran::shell
