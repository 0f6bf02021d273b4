#include "shell/tour/activation_job.h"

#include "adapters/qt/text.h"
#include "adapters/qt/tree_widget.h"
#include "shell/host.h"
#include "shell/main_window.h"

#include <QComboBox>
#include <QLabel>
#include <QMenu>
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

void ActivationJob::run() {
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

void ActivationJob::showWindow() {
    stage_.waitUntil([&] { return window_.isVisible(); }, "la finestra non si apre");
    stage_.activate();
    const auto& company = stage_.find<QLabel>(QStringLiteral("statoDitta"));
    stage_.require(company.text().contains(toQt(host_.current()->name)),
                   "la barra di stato non mostra la ditta");
    stage_.picture("finestra",
                   "La finestra dell'applicazione: menu, navigatore con la ditta corrente, barra di stato.");
}

void ActivationJob::chooseMenuEntry() {
    QMenu& accounting = stage_.openMenu(QStringLiteral("menuContabilita"));
    QMenu* archives = stage_.clickEntry(accounting, QStringLiteral("menuArchivi"));
    stage_.clickEntry(*archives, QStringLiteral("voceAttivazioneConti"));
    stage_.waitUntil([&] { return window_.screens().size() == 1; }, "la maschera non si apre");
}

void ActivationJob::openByMenu() {
    QMenu& accounting = stage_.openMenu(QStringLiteral("menuContabilita"));
    QMenu* archives = stage_.clickEntry(accounting, QStringLiteral("menuArchivi"));
    stage_.picture("menu", "La voce di menu che apre la maschera.");
    stage_.clickEntry(*archives, QStringLiteral("voceAttivazioneConti"));
    stage_.waitUntil([&] { return window_.screens().size() == 1 && chart_.hasRow(patrimoniali); },
                     "la maschera non si apre");
    const qt::TreeWidget& view = chart_.tree();
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

void ActivationJob::openBranches() {
    chart_.clickRow(patrimoniali, controls::treeHitButton);
    stage_.waitUntil([&] { return chart_.tree().isExpanded(chart_.row(patrimoniali)); },
                     "la radice non si espande con il mouse");
    stage_.require(chart_.tree().model()->rowCount(chart_.row(patrimoniali)) > 5,
                   "sotto la radice mancano i mastri");
    stage_.picture("espansione-mouse", "Un clic sulla freccia apre i conti patrimoniali.");

    stage_.press(Qt::Key_Home);
    chart_.clickRow(economici, controls::treeHitLabel);
    for (const char* branch : {generalServices, consulting, boards}) {
        stage_.press(Qt::Key_Right);
        stage_.waitUntil([&] { return chart_.hasRow(branch); },
                         std::string("la tastiera non apre fino a ") + branch);
        stage_.pauseTyping();
        stage_.type(toQt(branch).left(8));
        stage_.waitUntil([&] { return chart_.tree().currentIndex() == chart_.row(branch); },
                         std::string("digitando non si arriva a ") + branch);
    }
    stage_.press(Qt::Key_Right);
    stage_.waitUntil([&] { return chart_.hasRow(directors); }, "i conti analitici non compaiono");
    stage_.require(chart_.isChecked("68/05/05/0000"), "i conti già attivati non sono spuntati");
    stage_.require(!chart_.isChecked(directors), "il conto è già attivo");
    stage_.picture("espansione-tastiera",
                   "Dalla tastiera: freccia a destra apre un livello, digitando si trova la riga.");
}

void ActivationJob::expectFilter(const QString& tab, const std::string& label) {
    auto& tabs = stage_.find<QTabBar>(QStringLiteral("STR_FILTRI"));
    stage_.require(tabs.tabText(tabs.currentIndex()) == tab, "la scheda scelta non è " + tab.toStdString());
    stage_.require(stage_.find<QLabel>(QStringLiteral("LBL_FILTRO_CORRENTE")).text() == toQt(label),
                   "l'etichetta del filtro non è «" + label + "»");
}

void ActivationJob::filter() {
    const auto choose = [&](int index) {
        auto& tabs = stage_.find<QTabBar>(QStringLiteral("STR_FILTRI"));
        stage_.click(tabs, tabs.tabRect(index).center());
        stage_.waitUntil([&] { return tabs.currentIndex() == index; }, "la scheda non si apre");
    };
    choose(1);
    expectFilter(QStringLiteral("Att."), " Conti attivati");
    chart_.clickRow(economici, controls::treeHitButton);
    stage_.require(!chart_.hasRow("67/05"), "il filtro mostra un mastro senza conti attivati");
    stage_.require(chart_.isChecked(economici), "con il filtro Att. la radice deve essere spuntata");
    stage_.picture("filtro-attivati", "La scheda «Att.» mostra i conti attivati e i loro raggruppamenti.");
    choose(2);
    expectFilter(QStringLiteral("Non att."), " Conti non attivati");
    chart_.clickRow(economici, controls::treeHitButton);
    stage_.require(!chart_.isChecked(economici), "con il filtro Non att. la radice non può essere spuntata");
    stage_.picture("filtro-non-attivati", "La scheda «Non att.» mostra i conti ancora da attivare.");
    choose(0);
    expectFilter(QStringLiteral("Tutti"), " Tutti i conti");
}

void ActivationJob::searchTypedCode() {
    chart_.typeIntoSearch(QStringLiteral("68/5/10/1"));
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
    chart_.searchNow(directors);
    stage_.picture("ricerca", "Invio apre i rami fino al conto e lo seleziona.");
}

void ActivationJob::searchFromList() {
    chart_.typeIntoSearch({});
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
    chart_.searchNow(auditors);
    stage_.picture("conto-scelto", "Il conto scelto dall'elenco, ricercato con Invio.");
}

void ActivationJob::checkByMouse() {
    stage_.require(stored_.activeAccounts(directorsCode) == 0, "il conto risulta già attivo nel database");
    chart_.clickRow(directors, controls::treeHitStateIcon);
    stage_.waitUntil([&] { return chart_.isChecked(directors); }, "il clic sulla casella non la spunta");
    stage_.require(stored_.activeAccounts(directorsCode) == 1, "la spunta non è arrivata nel database");
    stage_.require(!chart_.isChecked(boards), "il raggruppamento è spuntato benché restino conti non attivi");
    stage_.picture("spunta-mouse", "Un clic sulla casella attiva il conto: la riga è già nel database.");
}

void ActivationJob::checkBySpace() {
    chart_.clickRow(boards, controls::treeHitLabel);
    stage_.press(Qt::Key_Space);
    stage_.waitUntil([&] { return chart_.isChecked(boards) && chart_.isChecked(auditors); },
                     "lo spazio non spunta il raggruppamento");
    stage_.require(stored_.activeAccounts(boardsStart) == boardsAccounts,
                   "non tutti i conti del raggruppamento sono nel database");
    stage_.require(chart_.isChecked(consulting),
                   "il raggruppamento superiore non è spuntato con tutti i suoi conti");
    stage_.picture(
        "spunta-spazio",
        "La barra spaziatrice su un raggruppamento attiva tutti i suoi conti, e spunta chi sta sopra.");
}

void ActivationJob::lookForUnknownAccount() {
    chart_.typeIntoSearch(QStringLiteral("99/99/99/9999"));
    stage_.expectMessage([&] { stage_.press(Qt::Key_Return); }, {"Ricerca conto", notFound},
                         {"conto-sconosciuto", "Un conto che non c'è: il messaggio lo dice."});
}

void ActivationJob::expectCatalogueMessage(const std::function<void()>& action, int number,
                                           const Shot& shot) {
    const CatalogueMessage message = host_.catalogue().message(number);
    stage_.expectMessage(action, {message.title, message.text}, shot);
}

void ActivationJob::refuseHostCommands() {
    const QString before = stage_.find<QComboBox>(QStringLiteral("ditta")).currentText();
    stage_.press(Qt::Key_D, Qt::AltModifier);
    expectCatalogueMessage([&] { stage_.press(Qt::Key_Down); }, 30179,
                           {"cambio-ditta", "Con la maschera aperta il cambio di ditta è rifiutato."});
    stage_.require(stage_.find<QComboBox>(QStringLiteral("ditta")).currentText() == before,
                   "la ditta mostrata è cambiata benché il cambio sia stato rifiutato");
    expectCatalogueMessage([&] { stage_.clickToolButton(QStringLiteral("pulsante24")); }, 69054,
                           {"esportazione", "Anche l'esportazione è rifiutata, con il suo messaggio."});
    expectCatalogueMessage([&] { stage_.clickToolButton(QStringLiteral("pulsante25")); }, 45614,
                           {"stampa-scheda", "La stampa della scheda non è prevista per questa maschera."});
}

void ActivationJob::closeAndReopen() {
    chart_.clickRow(economici, controls::treeHitLabel);
    stage_.press(Qt::Key_F4, Qt::ControlModifier);
    stage_.waitUntil([&] { return window_.screens().empty(); }, "la maschera non si chiude");
    stage_.picture("chiusa", "La maschera è chiusa; la finestra dell'applicazione resta.");
    chooseMenuEntry();
    stage_.waitUntil([&] { return chart_.hasRow(economici); }, "la maschera non si riapre");
    chart_.typeIntoSearch(QStringLiteral("6805100001"));
    chart_.searchNow(directors);
    stage_.require(chart_.isChecked(directors) && chart_.isChecked(boards) && chart_.isChecked(consulting),
                   "riaprendo la maschera le attivazioni non ci sono più");
    stage_.picture("riaperta", "Riaperta, la maschera mostra le attivazioni appena fatte.");
}

void ActivationJob::undo() {
    chart_.clickRow(boards, controls::treeHitLabel);
    stage_.press(Qt::Key_Space);
    stage_.waitUntil([&] { return !chart_.isChecked(boards) && !chart_.isChecked(consulting); },
                     "lo spazio non toglie la spunta al raggruppamento");
    stage_.require(stored_.activeAccounts(boardsStart) == 0, "restano conti del raggruppamento nel database");
    stage_.picture("disattivati",
                   "Ancora lo spazio: i conti del raggruppamento sono disattivati, e tutto è come prima.");
}

} // namespace veldran::shell
