#include "shell/tour/job.h"

#include "adapters/qt/text.h"
#include "adapters/qt/tree_widget.h"
#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"
#include "shell/drivers.h"
#include "shell/host.h"
#include "shell/main_window.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTabBar>
#include <QTableView>

namespace veldran::shell {

using qt::toQt;

namespace {

// Accounts of the demo company: a group whose accounts are not yet activated, inside one whose others are.
constexpr const char* patrimoniali = "Conti patrimoniali";
constexpr const char* economici = "Conti economici";
constexpr const char* generalServices = "68/00/00/0000";
constexpr const char* consulting = "68/05/00/0000";
constexpr const char* boards = "68/05/10/0000";
constexpr const char* boardsStart = "680510";
constexpr int boardsAccounts = 6;
constexpr const char* directors = "68/05/10/0001";
constexpr const char* directorsCode = "6805100001";
constexpr const char* auditors = "68/05/10/0003";
constexpr const char* notFound = "Il conto ricercato non è tra quelli correntemente selezionati";

} // namespace

TourJob::TourJob(Stage& stage, MainWindow& window, Host& host)
    : stage_(stage), window_(window), host_(host),
      connection_(ado::Connection::create(driverFor(host.file().connectionString, host.current()->code))) {
    connection_->Open(host.file().connectionString);
}

TourJob::~TourJob() = default;

void TourJob::run() {
    showWindow();
    openByMenu();
    openBranches();
    filter();
    searchTypedCode();
    searchFromList();
    checkByMouse();
    checkBySpace();
    lookForUnknownAccount();
    refuseHostCommands();
    closeAndReopen();
}

qt::TreeWidget& TourJob::tree() {
    return stage_.find<qt::TreeWidget>(QStringLiteral("TRW_CONTI"));
}

QModelIndex TourJob::row(const std::string& text) {
    const qt::TreeWidget& view = tree();
    for (QModelIndex index = view.model()->index(0, 0); index.isValid(); index = view.indexBelow(index)) {
        if (index.data().toString().startsWith(toQt(text))) {
            return index;
        }
    }
    throw TourFailure("l'albero non mostra la riga " + text);
}

bool TourJob::hasRow(const std::string& text) {
    try {
        return row(text).isValid();
    } catch (const TourFailure&) {
        return false;
    }
}

bool TourJob::isChecked(const std::string& text) {
    return row(text).data(Qt::CheckStateRole).toInt() == Qt::Checked;
}

void TourJob::clickRow(const std::string& text, int hitFlag) {
    qt::TreeWidget& view = tree();
    const QModelIndex index = row(text);
    view.scrollTo(index);
    const int y = view.visualRect(index).center().y();
    for (int x = 0; x < view.viewport()->width(); ++x) {
        // Two pixels into the part, clear of its edge.
        if (view.hitTest(x, y).flags == hitFlag && view.hitTest(x + 2, y).flags == hitFlag) {
            stage_.click(*view.viewport(), {x + 2, y});
            return;
        }
    }
    throw TourFailure("la riga " + text + " non mostra la parte da premere");
}

int TourJob::activeAccounts(const std::string& codeStart) {
    const auto rows = connection_->Execute(
        "SELECT COUNT(*) FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = " + host_.current()->code +
        " AND CI35_CONTO_CG24 LIKE '" + codeStart + "%'");
    return rows->Fields()[0].Value().toInt32();
}

void TourJob::showWindow() {
    stage_.waitUntil([&] { return window_.isVisible(); }, "la finestra non si apre");
    stage_.activate();
    const auto& company = stage_.find<QLabel>(QStringLiteral("statoDitta"));
    stage_.require(company.text().contains(toQt(host_.current()->name)),
                   "la barra di stato non mostra la ditta");
    stage_.picture("finestra",
                   "La finestra dell'applicazione: menu, navigatore con la ditta corrente, barra di stato.");
}

void TourJob::chooseMenuEntry() {
    QMenu& accounting = stage_.openMenu(QStringLiteral("menuContabilita"));
    QMenu* archives = stage_.clickEntry(accounting, QStringLiteral("menuArchivi"));
    stage_.clickEntry(*archives, QStringLiteral("voceAttivazioneConti"));
    stage_.waitUntil([&] { return window_.screens().size() == 1; }, "la maschera non si apre");
}

void TourJob::openByMenu() {
    QMenu& accounting = stage_.openMenu(QStringLiteral("menuContabilita"));
    QMenu* archives = stage_.clickEntry(accounting, QStringLiteral("menuArchivi"));
    stage_.picture("menu", "La voce di menu che apre la maschera.");
    stage_.clickEntry(*archives, QStringLiteral("voceAttivazioneConti"));
    stage_.waitUntil([&] { return window_.screens().size() == 1 && hasRow(patrimoniali); },
                     "la maschera non si apre");
    const qt::TreeWidget& view = tree();
    stage_.require(view.model()->rowCount() == 4, "l'albero non mostra le quattro radici");
    const QStringList captions{QStringLiteral("Conti d'ordine"), QStringLiteral("Conti patrimoniali"),
                               QStringLiteral("Conti economici"), QStringLiteral("Conti da non stampare")};
    for (int i = 0; i < captions.size(); ++i) {
        stage_.require(view.model()->index(i, 0).data().toString() == captions.at(i),
                       "la radice " + captions.at(i).toStdString() + " non è al suo posto");
    }
    expectFilter(QStringLiteral("Tutti"), " Tutti i conti");
    stage_.picture("maschera", "La maschera aperta: le quattro radici del piano dei conti.");
}

void TourJob::openBranches() {
    clickRow(patrimoniali, controls::treeHitButton);
    stage_.waitUntil([&] { return tree().isExpanded(row(patrimoniali)); },
                     "la radice non si espande con il mouse");
    stage_.require(tree().model()->rowCount(row(patrimoniali)) > 5, "sotto la radice mancano i mastri");
    stage_.picture("espansione-mouse", "Un clic sulla freccia apre i conti patrimoniali.");

    stage_.press(Qt::Key_Home);
    clickRow(economici, controls::treeHitLabel);
    for (const char* branch : {generalServices, consulting, boards}) {
        stage_.press(Qt::Key_Right);
        stage_.waitUntil([&] { return hasRow(branch); },
                         std::string("la tastiera non apre fino a ") + branch);
        stage_.pauseTyping();
        stage_.type(toQt(branch).left(8));
        stage_.waitUntil([&] { return tree().currentIndex() == row(branch); },
                         std::string("digitando non si arriva a ") + branch);
    }
    stage_.press(Qt::Key_Right);
    stage_.waitUntil([&] { return hasRow(directors); }, "i conti analitici non compaiono");
    stage_.require(isChecked("68/05/05/0000"), "i conti già attivati non sono spuntati");
    stage_.require(!isChecked(directors), "il conto è già attivo");
    stage_.picture("espansione-tastiera",
                   "Dalla tastiera: freccia a destra apre un livello, digitando si trova la riga.");
}

void TourJob::expectFilter(const QString& tab, const std::string& label) {
    auto& tabs = stage_.find<QTabBar>(QStringLiteral("STR_FILTRI"));
    stage_.require(tabs.tabText(tabs.currentIndex()) == tab, "la scheda scelta non è " + tab.toStdString());
    stage_.require(stage_.find<QLabel>(QStringLiteral("LBL_FILTRO_CORRENTE")).text() == toQt(label),
                   "l'etichetta del filtro non è «" + label + "»");
}

void TourJob::filter() {
    const auto choose = [&](int index) {
        auto& tabs = stage_.find<QTabBar>(QStringLiteral("STR_FILTRI"));
        stage_.click(tabs, tabs.tabRect(index).center());
        stage_.waitUntil([&] { return tabs.currentIndex() == index; }, "la scheda non si apre");
    };
    choose(1);
    expectFilter(QStringLiteral("Att."), " Conti attivati");
    clickRow(economici, controls::treeHitButton);
    stage_.require(!hasRow("67/05"), "il filtro mostra un mastro senza conti attivati");
    stage_.require(isChecked(economici), "con il filtro Att. la radice deve essere spuntata");
    stage_.picture("filtro-attivati", "La scheda «Att.» mostra i conti attivati e i loro raggruppamenti.");
    choose(2);
    expectFilter(QStringLiteral("Non att."), " Conti non attivati");
    clickRow(economici, controls::treeHitButton);
    stage_.require(!isChecked(economici), "con il filtro Non att. la radice non può essere spuntata");
    stage_.picture("filtro-non-attivati", "La scheda «Non att.» mostra i conti ancora da attivare.");
    choose(0);
    expectFilter(QStringLiteral("Tutti"), " Tutti i conti");
}

void TourJob::typeIntoSearch(const QString& code) {
    auto& field = stage_.find<QWidget>(QStringLiteral("TXT_CONTORICERCA"));
    stage_.click(*field.findChild<QLineEdit*>());
    stage_.press(Qt::Key_A, Qt::ControlModifier);
    stage_.type(code);
}

void TourJob::searchNow(const std::string& selectedText) {
    stage_.press(Qt::Key_Return);
    stage_.waitUntil([&] { return tree().currentIndex().data().toString().startsWith(toQt(selectedText)); },
                     "la ricerca non arriva al conto " + selectedText);
    stage_.require(tree().viewport()->rect().intersects(tree().visualRect(tree().currentIndex())),
                   "il conto trovato non è in vista");
}

void TourJob::searchTypedCode() {
    typeIntoSearch(QStringLiteral("68/5/10/1"));
    stage_.press(Qt::Key_Tab);
    stage_.waitUntil(
        [&] {
            return stage_.find<QLabel>(QStringLiteral("LBB_DESCRCONTORICERCA")).text() ==
                   QStringLiteral("Compensi amministratori");
        },
        "lasciando il campo non compare la descrizione del conto");
    stage_.picture("codice-digitato",
                   "Il codice digitato viene completato e decodificato lasciando il campo.");
    stage_.press(Qt::Key_Backtab, Qt::ShiftModifier);
    searchNow(directors);
    stage_.picture("ricerca", "Invio apre i rami fino al conto e lo seleziona.");
}

void TourJob::searchFromList() {
    typeIntoSearch({});
    stage_.press(Qt::Key_Delete);
    stage_.withDialog([&] { stage_.press(Qt::Key_F4); },
                      [&](QWidget& dialog) {
                          auto& list = stage_.find<QTableView>(QStringLiteral("elenco"));
                          const int all = list.model()->rowCount();
                          stage_.type(QStringLiteral("SINDACALE collé"));
                          stage_.require(list.model()->rowCount() < all,
                                         "le parole della descrizione non filtrano l'elenco");
                          stage_.require(list.model()->index(0, 1).data().toString() ==
                                             QStringLiteral("Compensi collegio sindacale"),
                                         "l'elenco non trova «Compensi collegio sindacale»");
                          stage_.picture("elenco-conti",
                                         "F4 apre l'elenco dei conti: filtro per codice e per parole, senza "
                                         "badare ad accenti, maiuscole e ordine.");
                          stage_.press(Qt::Key_Return);
                          static_cast<void>(dialog);
                      });
    stage_.require(stage_.find<QLabel>(QStringLiteral("LBB_DESCRCONTORICERCA")).text() ==
                       QStringLiteral("Compensi collegio sindacale"),
                   "la scelta dall'elenco non arriva nel campo");
    searchNow(auditors);
    stage_.picture("conto-scelto", "Il conto scelto dall'elenco, ricercato con Invio.");
}

void TourJob::checkByMouse() {
    stage_.require(activeAccounts(directorsCode) == 0, "il conto risulta già attivo nel database");
    clickRow(directors, controls::treeHitStateIcon);
    stage_.waitUntil([&] { return isChecked(directors); }, "il clic sulla casella non la spunta");
    stage_.require(activeAccounts(directorsCode) == 1, "la spunta non è arrivata nel database");
    stage_.require(!isChecked(boards), "il raggruppamento è spuntato benché restino conti non attivi");
    stage_.picture("spunta-mouse", "Un clic sulla casella attiva il conto: la riga è già nel database.");
}

void TourJob::checkBySpace() {
    clickRow(boards, controls::treeHitLabel);
    stage_.press(Qt::Key_Space);
    stage_.waitUntil([&] { return isChecked(boards) && isChecked(auditors); },
                     "lo spazio non spunta il raggruppamento");
    stage_.require(activeAccounts(boardsStart) == boardsAccounts,
                   "non tutti i conti del raggruppamento sono nel database");
    stage_.require(isChecked(consulting),
                   "il raggruppamento superiore non è spuntato con tutti i suoi conti");
    stage_.picture(
        "spunta-spazio",
        "La barra spaziatrice su un raggruppamento attiva tutti i suoi conti, e spunta chi sta sopra.");
}

void TourJob::lookForUnknownAccount() {
    typeIntoSearch(QStringLiteral("99/99/99/9999"));
    stage_.withDialog([&] { stage_.press(Qt::Key_Return); },
                      [&](QWidget& dialog) {
                          auto* box = qobject_cast<QMessageBox*>(&dialog);
                          stage_.require(box && box->text() == toQt(notFound),
                                         "il messaggio di ricerca non è il suo");
                          stage_.require(box->windowTitle() == QStringLiteral("Ricerca conto"),
                                         "il titolo del messaggio non è «Ricerca conto»");
                          stage_.picture("conto-sconosciuto", "Un conto che non c'è: il messaggio lo dice.");
                          stage_.press(Qt::Key_Return);
                      });
}

void TourJob::expectCatalogueMessage(const std::function<void()>& action, int number, const std::string& name,
                                     const std::string& caption) {
    const QString expected = toQt(host_.catalogue().message(number).text);
    stage_.withDialog(action, [&](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        stage_.require(box && box->text() == expected,
                       "non compare il messaggio " + std::to_string(number) + " del catalogo");
        stage_.picture(name, caption);
        stage_.press(Qt::Key_Return);
    });
}

void TourJob::refuseHostCommands() {
    const QString before = stage_.find<QComboBox>(QStringLiteral("ditta")).currentText();
    stage_.press(Qt::Key_D, Qt::AltModifier);
    expectCatalogueMessage([&] { stage_.press(Qt::Key_Down); }, 30179, "cambio-ditta",
                           "Con la maschera aperta il cambio di ditta è rifiutato.");
    stage_.require(stage_.find<QComboBox>(QStringLiteral("ditta")).currentText() == before,
                   "la ditta mostrata è cambiata benché il cambio sia stato rifiutato");
    expectCatalogueMessage([&] { stage_.clickToolButton(QStringLiteral("pulsante24")); }, 69054,
                           "esportazione", "Anche l'esportazione è rifiutata, con il suo messaggio.");
    expectCatalogueMessage([&] { stage_.clickToolButton(QStringLiteral("pulsante25")); }, 45614,
                           "stampa-scheda", "La stampa della scheda non è prevista per questa maschera.");
}

void TourJob::closeAndReopen() {
    clickRow(economici, controls::treeHitLabel);
    stage_.press(Qt::Key_F4, Qt::ControlModifier);
    stage_.waitUntil([&] { return window_.screens().empty(); }, "la maschera non si chiude");
    stage_.picture("chiusa", "La maschera è chiusa; la finestra dell'applicazione resta.");
    chooseMenuEntry();
    stage_.waitUntil([&] { return hasRow(economici); }, "la maschera non si riapre");
    typeIntoSearch(QStringLiteral("6805100001"));
    searchNow(directors);
    stage_.require(isChecked(directors) && isChecked(boards) && isChecked(consulting),
                   "riaprendo la maschera le attivazioni non ci sono più");
    stage_.picture("riaperta", "Riaperta, la maschera mostra le attivazioni appena fatte.");
}

} // namespace veldran::shell
