#include "adapters/qt/tree_widget.h"
#include "platform/ado/recordset.h"
#include "shell/drivers.h"
#include "tests/shell/host_window.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QToolBar>
#include <QToolTip>

namespace veldran::test {
namespace {

using shell::MainWindow;
using testing::HasSubstr;

class MainWindowTest : public HostWindowTest {
protected:
    QMdiArea& area() { return *window_->findChild<QMdiArea*>(); }
    qt::TreeWidget* tree() { return window_->findChild<qt::TreeWidget*>(); }
    QComboBox& chooser() { return *window_->findChild<QComboBox*>("ditta"); }
    QAction& button(int index) {
        return *window_->findChild<QAction*>(QStringLiteral("pulsante%1").arg(index));
    }
    static void settle() {
        QTest::qWait(1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QTest::qWait(1);
    }
    /// The text of the box that `action` brings up; the box is answered by Enter.
    QString messageOf(const std::function<void()>& action) {
        QString text;
        EXPECT_TRUE(withModal(action, [&](QWidget& modal) {
            text = dynamic_cast<QMessageBox&>(modal).text();
            QTest::keyClick(&modal, Qt::Key_Return);
        }));
        return text;
    }
    QString catalogue(int number) { return QString::fromStdString(host_->catalogue().message(number).text); }
};

TEST_F(MainWindowTest, ShowsCompanyUserAndDatabase) {
    start(R"("ditta": "1", "utente": "Rossi", "applicazione": "Suite")");
    EXPECT_EQ(window_->windowTitle(), "Suite - Officine Meccaniche Valdarno S.p.A.");
    EXPECT_EQ(window_->findChild<QLabel*>("statoUtente")->text(), " Utente: Rossi");
    EXPECT_EQ(window_->findChild<QLabel*>("statoDatabase")->text(), " Database: demo.vdb");
    EXPECT_EQ(chooser().count(), 5);
    EXPECT_EQ(chooser().currentText(), "1 - Officine Meccaniche Valdarno S.p.A.");
    EXPECT_FALSE(button(25).isEnabled()) << "no screen is open yet";
}

TEST_F(MainWindowTest, TellsWhatTheStatusBarHasNoRoomFor) {
    auto& company = *window_->findChild<QLabel*>("statoDitta");
    const auto tip = [&] {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, QPoint(3, 3), company.mapToGlobal(QPoint(3, 3)));
        QApplication::sendEvent(&company, &help);
        return qt::fromQt(QToolTip::text());
    };
    EXPECT_EQ(tip(), "");
    company.resize(60, company.height());
    EXPECT_EQ(tip(), " Ditta 1 - Officine Meccaniche Valdarno S.p.A.");
}

TEST_F(MainWindowTest, OpensTheScreenInADocumentWindow) {
    openScreen();
    EXPECT_EQ(complaints_.text(), "");
    ASSERT_EQ(area().subWindowList().size(), 1);
    EXPECT_EQ(area().subWindowList().at(0)->windowTitle(),
              "UO - COIN - Att. conti coge per COIN partita doppia");
    ASSERT_NE(tree(), nullptr);
    ASSERT_EQ(tree()->model()->rowCount(), 4);
    EXPECT_EQ(tree()->model()->index(3, 0).data().toString(), "Conti da non stampare");
    EXPECT_TRUE(button(25).isEnabled());
}

TEST_F(MainWindowTest, BringsAnOpenScreenToTheFrontInsteadOfOpeningItTwice) {
    openScreen();
    area().subWindowList().at(0)->showMinimized();
    openScreen();
    EXPECT_EQ(window_->screens().size(), 1U);
    EXPECT_FALSE(area().subWindowList().at(0)->isMinimized());
}

TEST_F(MainWindowTest, HandsTheComponentItsContext) {
    start(R"("ditta": "1", "diritti": {"modifica": false})");
    openScreen();
    Cinterface& component = window_->screens().at(0)->component();
    EXPECT_EQ(component.GetClsGlobal()->CodiceDitta(), "1");
    EXPECT_EQ(component.GetCanInsert(), variantTrue);
    EXPECT_EQ(component.GetCanUpdate(), variantFalse);
    EXPECT_EQ(component.GetCaption().toText(), MainWindow::accountsEntry().caption);
    EXPECT_EQ(component.GetMenuModulo().toText(), "CI");
    EXPECT_EQ(component.GetClsVoceMenu()->GetProperty("Caption").toText(),
              MainWindow::accountsEntry().caption);
    EXPECT_TRUE(component.GetConnection()) << "handed back by the form";
}

TEST_F(MainWindowTest, LetsTheScreenRefuseAChangeOfCompany) {
    openScreen();
    EXPECT_EQ(messageOf([&] { EXPECT_FALSE(window_->changeCompany(1)); }), catalogue(30179));
    EXPECT_EQ(host_->current()->code, "1");
    EXPECT_EQ(chooser().currentIndex(), 0);
}

TEST_F(MainWindowTest, ChangesTheCompanyWhileNoScreenIsOpen) {
    EXPECT_TRUE(window_->changeCompany(1));
    EXPECT_EQ(host_->current()->code, "2");
    EXPECT_THAT(window_->windowTitle().toStdString(), HasSubstr(host_->current()->name));
    openScreen();
    EXPECT_EQ(window_->screens().at(0)->component().GetClsGlobal()->CodiceDitta(), "2");
}

TEST_F(MainWindowTest, LetsTheScreenRefuseTheExport) {
    openScreen();
    EXPECT_EQ(messageOf([&] { button(24).trigger(); }), catalogue(69054));
}

TEST_F(MainWindowTest, LetsTheScreenRefuseTheButtonOfIndex25) {
    openScreen();
    EXPECT_EQ(messageOf([&] { button(25).trigger(); }), catalogue(45614));
}

TEST_F(MainWindowTest, ClosesTheActiveScreenByItsButtonAndOpensItAgain) {
    openScreen();
    button(30).trigger();
    settle();
    EXPECT_TRUE(window_->screens().empty());
    EXPECT_TRUE(area().subWindowList().isEmpty());
    EXPECT_FALSE(button(30).isEnabled());
    openScreen();
    EXPECT_EQ(window_->screens().size(), 1U);
    EXPECT_NE(tree(), nullptr);
}

TEST_F(MainWindowTest, ClosesTheActiveScreenByItsKeyWhereverTheFocusIs) {
    openScreen();
    tree()->setFocus();
    QTest::keyClick(window_->windowHandle(), Qt::Key_F4, Qt::ControlModifier);
    settle();
    EXPECT_TRUE(window_->screens().empty());
    openScreen();
    chooser().setFocus();
    QTest::keyClick(window_->windowHandle(), Qt::Key_F4, Qt::ControlModifier);
    settle();
    EXPECT_TRUE(window_->screens().empty());
}

TEST_F(MainWindowTest, LeavesNoConnectionBehindAClosedScreen) {
    openScreen();
    const std::weak_ptr<ado::Connection> connection = window_->screens().at(0)->component().GetConnection();
    ASSERT_FALSE(connection.expired());
    button(30).trigger();
    settle();
    EXPECT_TRUE(connection.expired());
}

TEST_F(MainWindowTest, WarnsAndClosesForACompanyWithoutAnalyticAccounting) {
    window_->changeCompany(4);
    EXPECT_THAT(messageOf([&] { openScreen(); }).toStdString(),
                HasSubstr("la gestione della contabilità analitica"));
    settle();
    EXPECT_TRUE(window_->screens().empty());
    EXPECT_TRUE(area().subWindowList().isEmpty());
}

TEST_F(MainWindowTest, StaysOpenWhileAScriptRefusesToCloseTheScreen) {
    folder_.write("script.js",
                  "var vieta = true; function tsClose() { return vieta && TXT_CONTORICERCA.text !== 'ok'; }");
    start(R"("ditta": "1", "script": "script.js")");
    openScreen();
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(window_->isVisible());
    button(30).trigger();
    settle();
    ASSERT_EQ(window_->screens().size(), 1U);
    ASSERT_NE(tree(), nullptr);
    auto* field = window_->findChild<QWidget*>("TXT_CONTORICERCA")->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "ok");
    EXPECT_TRUE(window_->close());
    settle();
    EXPECT_TRUE(window_->screens().empty());
}

TEST_F(MainWindowTest, ShowsTheScreenThatRefusesToBeClosed) {
    folder_.write("script.js", "function tsClose() { return true; }");
    start(R"("ditta": "1", "script": "script.js")");
    openScreen();
    window_->findChild<QMenu*>("menuFinestra")->actions().at(0)->trigger();
    const auto& first = *window_->screens().at(0);
    ASSERT_FALSE(first.owns(*area().activeSubWindow()));
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(first.owns(*area().activeSubWindow()));
}

TEST_F(MainWindowTest, OpensTheScreenThoughLayoutAndScriptAreBroken) {
    folder_.write("layout.json",
                  R"({"FRMCI_VELDRAN": {"BUT_RICERCA": {"didascalia": "C&erca"}, "BUT_CHE": {}}})");
    folder_.write("script.js", "function tsOpen( {");
    start(R"("ditta": "1", "layout": "layout.json", "script": "script.js")");
    openScreen();
    ASSERT_NE(tree(), nullptr);
    EXPECT_EQ(tree()->model()->rowCount(), 4);
    EXPECT_THAT(complaints_.text(), HasSubstr("script.js», riga 1"));
    EXPECT_THAT(complaints_.text(), HasSubstr("chiave «FRMCI_VELDRAN/BUT_CHE»"));
}

TEST_F(MainWindowTest, OpensTheExampleThatIsShippedWithItsTextsLayoutAndScript) {
    open(placesFor(folder_).data / "esempio" / "azienda.json");
    openScreen();
    EXPECT_EQ(complaints_.text(), "");
    EXPECT_THAT(window_->windowTitle().toStdString(),
                HasSubstr("Contabilità industriale - Officine Meccaniche Valdarno"));
    ASSERT_NE(tree(), nullptr);
    EXPECT_EQ(tree()->model()->index(3, 0).data().toString(), "Conti da non stampare in bilancio");
    EXPECT_EQ(window_->findChild<QPushButton*>("BUT_RICERCA")->text(), "C&erca");
    const auto* search = window_->findChild<QWidget*>("TXT_CONTORICERCA");
    ASSERT_NE(search, nullptr);
    EXPECT_THAT(search->toolTip().toStdString(), HasSubstr("F4 apre l'elenco"));
}

TEST_F(MainWindowTest, TellsThatTheComponentIsMissing) {
    component_ = "/manca/libveldran.so";
    start(R"("ditta": "1")");
    openScreen();
    EXPECT_THAT(complaints_.text(), HasSubstr("«/manca/libveldran.so» non esiste"));
    EXPECT_TRUE(window_->screens().empty());
}

TEST_F(MainWindowTest, ExplainsWhyNoScreenOpensWithoutACompany) {
    start(R"("ditta": "99")");
    EXPECT_EQ(chooser().currentIndex(), -1);
    openScreen();
    EXPECT_THAT(complaints_.text(), HasSubstr("Nessuna ditta è aperta"));
    EXPECT_TRUE(window_->screens().empty());
}

TEST_F(MainWindowTest, KeepsTwoScreensApart) {
    openScreen();
    auto* windows = window_->findChild<QMenu*>("menuFinestra");
    windows->actions().at(0)->trigger();
    ASSERT_EQ(window_->screens().size(), 2U);
    EXPECT_NE(window_->screens().at(0)->component().GetConnection(),
              window_->screens().at(1)->component().GetConnection());
    EXPECT_NE(&window_->screens().at(0)->navigator(), &window_->screens().at(1)->navigator());
    button(30).trigger();
    settle();
    ASSERT_EQ(window_->screens().size(), 1U);
    EXPECT_NE(tree(), nullptr);
}

TEST_F(MainWindowTest, OffersNoMenuThatHidesItsNavigator) {
    auto& bar = *window_->findChild<QToolBar*>("navigatore");
    const QPoint free(bar.width() - 5, bar.height() / 2);
    QContextMenuEvent rightClick(QContextMenuEvent::Mouse, free, bar.mapToGlobal(free));
    QApplication::sendEvent(&bar, &rightClick);
    QTest::qWait(1);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(MainWindowTest, NumbersTheWindowsOfOneScreenFromTheSecondOn) {
    const auto titles = [this] {
        std::vector<std::string> shown;
        for (const QMdiSubWindow* window : area().subWindowList()) {
            if (!window->isHidden()) {
                shown.push_back(window->windowTitle().toStdString());
            }
        }
        return shown;
    };
    openScreen();
    const std::string caption = "UO - COIN - Att. conti coge per COIN partita doppia";
    auto* another = window_->findChild<QMenu*>("menuFinestra")->actions().at(0);
    another->trigger();
    another->trigger();
    EXPECT_EQ(titles(), (std::vector{caption, caption + " (2)", caption + " (3)"}));
    area().subWindowList().at(1)->close();
    settle();
    another->trigger();
    EXPECT_EQ(titles(), (std::vector{caption, caption + " (3)", caption + " (2)"}));
}

TEST_F(MainWindowTest, SaysHowAScreenIsOpenedWhileNoneIs) {
    const auto letters = [this] { // points in the middle that are not of the ground
        QWidget& ground = *area().viewport();
        const QImage image = ground.grab().toImage();
        int found = 0;
        for (int x = 0; x < image.width(); ++x) {
            found += image.pixelColor(x, image.height() / 2 - 5) != image.pixelColor(0, 0) ? 1 : 0;
        }
        return found;
    };
    EXPECT_GT(letters(), 20);
    openScreen();
    area().activeSubWindow()->setGeometry(0, 0, 200, 100);
    EXPECT_EQ(letters(), 0);
    button(30).trigger();
    settle();
    EXPECT_GT(letters(), 20);
}

} // namespace
} // namespace veldran::test
