#include "shell/main_window.h"

#include "adapters/qt/text.h"
#include "platform/services/message_service.h"
#include "shell/form_window.h"
#include "shell/lock_keys.h"
#include "shell/message_box.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>

namespace veldran::shell {

using qt::toQt;

namespace {

constexpr QSize openingSize(1120, 760);
constexpr QSize roomForFrame(16, 40); ///< that a window manager draws around the window
const QString noDocument =
    QStringLiteral("Nessuna maschera aperta.\nLe maschere si aprono dal menu «Contabilità industriale».");

} // namespace

const MenuEntry& MainWindow::accountsEntry() {
    static const MenuEntry entry{"CLSCI_VELDRAN", "UO - COIN - Att. conti coge per COIN partita doppia", "CI",
                                 1, 1};
    return entry;
}

MainWindow::MainWindow(Host& host, std::filesystem::path component)
    : host_(host), component_(std::move(component)), area_(new WorkArea(noDocument, this)),
      bar_(new NavigatorBar(this)) {
    setObjectName(QStringLiteral("finestraPrincipale"));
    resize(openingSize.boundedTo(screen()->availableSize() - roomForFrame));
    setContextMenuPolicy(Qt::PreventContextMenu); // its menu would put the navigator out of sight for good
    setCentralWidget(area_);
    addToolBar(bar_);
    status_ = std::make_unique<StatusLine>(*statusBar());
    auto* locks = new LockKeys(this);
    locks->onChanged = [this, locks] { status_->showLocks(locks->capitals(), locks->numbers()); };
    locks->onChanged();

    buildMenus();
    bar_->onCompanyChosen = [this](int index) { changeCompany(index); };
    bar_->onButton = [this](NavigatorButton button) { pressed(button); };
    connect(area_, &QMdiArea::subWindowActivated, this, &MainWindow::activeWindowChanged);
    showCompany();
    activeWindowChanged();
}

MainWindow::~MainWindow() {
    bar_->onCompanyChosen = nullptr;
    disconnect(area_, nullptr, this, nullptr);
    // Windows before the components of their forms; no window may call back into a half-destroyed host.
    qDeleteAll(area_->findChildren<FormWindow*>());
    screens_.clear();
}

void MainWindow::buildMenus() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("menuFile"));
    file->addAction(QStringLiteral("&Esci"), QKeySequence(QStringLiteral("Ctrl+Q")), this, &QWidget::close);

    QMenu* accounting = menuBar()->addMenu(QStringLiteral("&Contabilità industriale"));
    accounting->setObjectName(QStringLiteral("menuContabilita"));
    QMenu* archives = accounting->addMenu(QStringLiteral("&Archivi"));
    archives->setObjectName(QStringLiteral("menuArchivi"));
    QAction* open =
        archives->addAction(toQt(accountsEntry().caption), this, [this] { openScreen(accountsEntry()); });
    open->setObjectName(QStringLiteral("voceAttivazioneConti"));
    open->setStatusTip(QStringLiteral("Attivazione dei conti di contabilità generale per la COIN"));

    QMenu* windows = menuBar()->addMenu(QStringLiteral("F&inestra"));
    windows->setObjectName(QStringLiteral("menuFinestra"));
    buildWindowMenu(*windows);

    QMenu* help = menuBar()->addMenu(QStringLiteral("&?"));
    help->setObjectName(QStringLiteral("menuAiuto"));
    help->addAction(QStringLiteral("&Informazioni…"), this, &MainWindow::about);
}

void MainWindow::buildWindowMenu(QMenu& menu) {
    anotherAction_ = menu.addAction(QStringLiteral("&Nuova finestra della maschera"), this, [this] {
        if (const OpenScreen* screen = activeScreen()) {
            openAnother(screen->entry());
        }
    });
    menu.addSeparator();
    auto* closeAction = new QAction(QStringLiteral("&Chiudi"), &menu);
    connect(closeAction, &QAction::triggered, area_, &QMdiArea::closeActiveSubWindow);
    windowActions_ = {
        menu.addAction(QStringLiteral("&Sovrapponi"), area_, &QMdiArea::cascadeSubWindows),
        menu.addAction(QStringLiteral("&Affianca"), area_, &QMdiArea::tileSubWindows),
        menu.addAction(QStringLiteral("Finestra s&uccessiva"), QKeySequence::NextChild, area_,
                       &QMdiArea::activateNextSubWindow),
        closeAction,
    };
    menu.addAction(closeAction);
    windowActions_.push_back(
        menu.addAction(QStringLiteral("Chiudi &tutte"), area_, &QMdiArea::closeAllSubWindows));
    QList<QKeySequence> closeKeys = QKeySequence::keyBindings(QKeySequence::Close);
    const QKeySequence everywhere(Qt::CTRL | Qt::Key_F4);
    if (!closeKeys.contains(everywhere)) {
        closeKeys.prepend(everywhere);
    }
    closeAction->setShortcuts(closeKeys);
    menu.addSeparator();
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] { listWindows(menu); });
}

void MainWindow::listWindows(QMenu& menu) {
    for (QAction* action : windowList_) {
        delete action;
    }
    windowList_.clear();
    int number = 0;
    for (QMdiSubWindow* window : area_->subWindowList()) {
        if (window->isHidden()) {
            continue;
        }
        ++number;
        const QString mark = number < 10 ? QStringLiteral("&%1 ") : QStringLiteral("%1 ");
        QAction* action =
            menu.addAction(mark.arg(number) + window->windowTitle().replace(u'&', QStringLiteral("&&")), this,
                           [this, window] { area_->setActiveSubWindow(window); });
        action->setCheckable(true);
        action->setChecked(window == area_->activeSubWindow());
        windowList_.push_back(action);
    }
}

void MainWindow::openScreen(const MenuEntry& entry) {
    const auto open = std::find_if(screens_.begin(), screens_.end(), [&](const auto& screen) {
        return screen->entry().className == entry.className;
    });
    if (open == screens_.end()) {
        openAnother(entry);
    } else {
        (*open)->bringToFront();
    }
}

void MainWindow::openAnother(const MenuEntry& entry) {
    if (!host_.current()) {
        host_.report()("Nessuna ditta è aperta: la maschera non può essere mostrata.\n\nControllare il file "
                       "della ditta «" +
                       host_.file().path.string() + "» e riavviare.");
        return;
    }
    OpenScreen* screen = nullptr;
    try {
        if (!library_) {
            library_ = ComponentLibrary::load(component_);
        }
        screens_.push_back(std::make_unique<OpenScreen>(host_, *library_, *area_, entry));
        screen = screens_.back().get();
        // The last window goes from inside the toolkit's own clearing up: the screen is let go of afterwards.
        screen->onGone = [this, screen] { QTimer::singleShot(0, this, [this, screen] { forget(screen); }); };
        screen->navigator().onStatusChanged = [this] { activeWindowChanged(); };
        screen->show(static_cast<std::intptr_t>(winId()));
    } catch (const std::exception& error) {
        host_.report()(error.what());
        forget(screen);
    }
}

void MainWindow::forget(const OpenScreen* screen) {
    std::erase_if(screens_, [&](const auto& one) { return one.get() == screen; });
    activeWindowChanged();
}

OpenScreen* MainWindow::activeScreen() const {
    const QMdiSubWindow* window = area_->activeSubWindow();
    for (const auto& screen : screens_) {
        if (window && !window->isHidden() && screen->owns(*window)) {
            return screen.get();
        }
    }
    return nullptr;
}

void MainWindow::activeWindowChanged() {
    OpenScreen* screen = activeScreen();
    bar_->showState(screen != nullptr, screen ? screen->navigator().status() : std::nullopt);
    anotherAction_->setEnabled(screen != nullptr);
    for (QAction* action : windowActions_) {
        action->setEnabled(screen != nullptr);
    }
}

bool MainWindow::changeCompany(int index) {
    if (index == host_.currentIndex()) {
        return true;
    }
    const bool refused = std::any_of(screens_.begin(), screens_.end(), [](const auto& screen) {
        return screen->navigator().refusesChangeOfCompany();
    });
    if (!refused) {
        host_.select(index);
    }
    showCompany();
    return !refused;
}

void MainWindow::showCompany() {
    std::vector<std::string> names;
    for (const Company& company : host_.companies()) {
        names.push_back(company.code + " - " + company.name);
    }
    bar_->setCompanies(names, host_.currentIndex());
    status_->show(host_);
    const Company* company = host_.current();
    const std::string& title = host_.file().applicationTitle;
    setWindowTitle(toQt(company ? title + " - " + company->name : title));
}

void MainWindow::pressed(NavigatorButton button) {
    OpenScreen* screen = activeScreen();
    if (!screen) {
        return;
    }
    if (button == buttonExport) {
        if (!screen->navigator().refusesExport("Foglio di calcolo")) {
            showBox({QStringLiteral("Esportazione"),
                     QStringLiteral("La maschera non offre dati da esportare."),
                     {},
                     {}},
                    services::styleOkOnly | services::styleInformation);
        }
        return;
    }
    if (!screen->navigator().refusesButton(button) && button == buttonCloseScreen) {
        area_->closeActiveSubWindow();
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // A screen that has let go of its form is only waiting to be forgotten.
    for (std::size_t i = 0; i < screens_.size(); ++i) {
        if (!screens_[i]->hasWindows()) {
            continue;
        }
        screens_[i]->bringToFront(); // it may ask about what is not saved
        if (!screens_[i]->close()) {
            event->ignore();
            return;
        }
    }
    event->accept();
}

void MainWindow::about() {
    showBox({QStringLiteral("Informazioni"),
             QStringLiteral("%1\nVersione %2")
                 .arg(toQt(host_.file().applicationTitle), qApp->applicationVersion()),
             QStringLiteral("Componente: %1\nFile della ditta: %2\nQt %3")
                 .arg(toQt(component_.string()), toQt(host_.file().path.string()), QLatin1String(qVersion())),
             {}},
            services::styleOkOnly | services::styleInformation);
}

} // namespace veldran::shell
