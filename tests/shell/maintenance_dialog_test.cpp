#include "shell/lookup_query.h"
#include "shell/maintenance_dialog.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <functional>

namespace veldran::test {
namespace {

using shell::CostCode;
using testing::ElementsAre;

constexpr std::int32_t costCentre = 8;

class MaintenanceDialogTest : public testing::Test {
protected:
    void open(const std::string& code, std::int32_t chart = 101, const shell::UserRights& rights = {}) {
        const bool items = chart > 200;
        dialog_ = std::make_unique<shell::MaintenanceDialog>(shell::CostCodes(connection_, chart, "1", items),
                                                             shell::queryStructure(connection_, chart), code,
                                                             rights, nullptr);
        dialog_->show();
        dialog_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
        code_ = dialog_->findChild<QLineEdit*>("codice");
        description_ = dialog_->findChild<QLineEdit*>("descrizione");
        kind_ = dialog_->findChild<QComboBox*>("tipo");
        group_ = dialog_->findChild<QCheckBox*>("raggruppamento");
        reserved_ = dialog_->findChild<QCheckBox*>("riservato");
    }
    void retype(QLineEdit* field, const QString& text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    /// Enter, wherever the focus is.
    void confirm() { QTest::keyClick(dialog_->focusWidget(), Qt::Key_Return); }
    /// A mnemonic, up to what it does: a button is seen going down before it clicks.
    [[nodiscard]] bool alt(Qt::Key key, const std::function<bool()>& done) {
        QTest::keyClick(dialog_.get(), key, Qt::AltModifier);
        return QTest::qWaitFor(done);
    }
    bool isLeft() const { return !dialog_->isVisible(); }
    QString note() { return shownText("nota"); }
    /// What the window says against saving; "" while it says nothing.
    QString refusal() { return shownText("rifiuto"); }
    std::optional<CostCode> stored(const std::string& code, std::int32_t chart = 101) {
        return shell::CostCodes(connection_, chart, "1", chart > 200).find(code);
    }
    QPushButton* button(const QString& text) {
        for (QPushButton* one : dialog_->findChildren<QPushButton*>()) {
            if (one->text() == text) {
                return one;
            }
        }
        return nullptr;
    }

    ScratchFolder folder_;
    std::filesystem::path file_ = demoDatabase(folder_);
    std::shared_ptr<ado::Connection> connection_ = openDatabase(file_);
    std::unique_ptr<shell::MaintenanceDialog> dialog_;
    QLineEdit* code_ = nullptr;
    QLineEdit* description_ = nullptr;
    QComboBox* kind_ = nullptr;
    QCheckBox* group_ = nullptr;
    QCheckBox* reserved_ = nullptr;

private:
    QString shownText(const char* name) {
        const auto* label = dialog_->findChild<QLabel*>(name);
        return label->isVisible() ? label->text() : QString();
    }
};

TEST_F(MaintenanceDialogTest, ShowsWhatIsStoredOfACostAccount) {
    open("cdc.prd.0020");
    EXPECT_EQ(dialog_->windowTitle(), "Gestione conti");
    EXPECT_EQ(code_->text(), "CDC.PRD.0020");
    EXPECT_TRUE(code_->isReadOnly());
    EXPECT_EQ(description_->text(), "Tornitura");
    EXPECT_EQ(kind_->currentText(), "Centro di costo");
    EXPECT_FALSE(group_->isVisible()) << "what cannot change is no field";
    EXPECT_FALSE(reserved_->isVisible());
    EXPECT_EQ(note(), "Codice comune a tutte le ditte: le modifiche valgono per tutte.");
    EXPECT_TRUE(description_->hasFocus());
}

TEST_F(MaintenanceDialogTest, OffersTheTenKinds) {
    open("CDCPRD0020");
    QStringList kinds;
    for (int i = 0; i < kind_->count(); ++i) {
        kinds << kind_->itemText(i);
    }
    EXPECT_EQ(kinds.join(u'|'), "Collegamento|Transitorio|Competenza|Centro di costo|Lavorazione o progetto|"
                                "Magazzino|Margine lordo|Margine netto|Risultato|Altro tipo");
}

TEST_F(MaintenanceDialogTest, ShowsThatACodeIsReservedToTheCompany) {
    open("ALTVAR0030");
    EXPECT_EQ(note(), "Codice riservato alla ditta 1.");
    retype(description_, "Scostamenti");
    confirm();
    EXPECT_EQ(stored("ALTVAR0030"), (CostCode{"ALTVAR0030", "Scostamenti", 512, false, "1"}));
}

TEST_F(MaintenanceDialogTest, ChangesDescriptionAndKindByTheKeyboardAlone) {
    open("CDCPRD0020");
    EXPECT_EQ(description_->selectedText(), "Tornitura") << "ready to be typed over";
    QTest::keyClick(description_, Qt::Key_End);
    QTest::keyClicks(description_, " automatica");
    ASSERT_TRUE(alt(Qt::Key_T, [&] { return kind_->hasFocus(); }));
    QTest::keyClick(kind_, Qt::Key_Down);
    confirm();
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(stored("CDCPRD0020"), (CostCode{"CDCPRD0020", "Tornitura automatica", 16, false, "0"}));
}

TEST_F(MaintenanceDialogTest, ChangesNothingWhenItIsLeft) {
    open("CDCPRD0020");
    retype(description_, "Perduta");
    QTest::keyClick(description_, Qt::Key_Escape);
    EXPECT_FALSE(dialog_->isVisible());
    open("CDCPRD0020");
    retype(description_, "Perduta");
    EXPECT_TRUE(alt(Qt::Key_A, [&] { return isLeft(); }));
    EXPECT_EQ(stored("CDCPRD0020")->description, "Tornitura");
}

TEST_F(MaintenanceDialogTest, KeepsAGroupWithoutKind) {
    open("CDCPRD");
    EXPECT_FALSE(kind_->isVisible());
    EXPECT_EQ(note(), "Il conto è un raggruppamento di altri codici.\n"
                      "Codice comune a tutte le ditte: le modifiche valgono per tutte.");
    retype(description_, "Reparti produttivi");
    confirm();
    EXPECT_EQ(stored("CDCPRD"), (CostCode{"CDCPRD", "Reparti produttivi", 0, true, "0"}));
}

TEST_F(MaintenanceDialogTest, ShowsNoKindForCostItems) {
    open("MAT010", 201);
    EXPECT_EQ(dialog_->windowTitle(), "Gestione voci di spesa");
    EXPECT_EQ(kind_, nullptr);
    EXPECT_EQ(note(), "Codice comune a tutte le ditte: le modifiche valgono per tutte.");
    retype(description_, "Acciai e leghe");
    confirm();
    EXPECT_EQ(stored("MAT010", 201), (CostCode{"MAT010", "Acciai e leghe", 0, false, "0"}));
}

TEST_F(MaintenanceDialogTest, CreatesTheCodeOfTheFieldWhenItDoesNotExist) {
    open("cdcprd0110");
    EXPECT_EQ(code_->text(), "CDC.PRD.0110");
    EXPECT_EQ(note(), "Il conto non esiste: con OK si crea.");
    QTest::keyClicks(description_, "Sbavatura ");
    kind_->setFocus();
    QTest::keyClicks(kind_, "Centro");
    EXPECT_TRUE(alt(Qt::Key_S, [&] { return reserved_->isChecked(); }));
    EXPECT_TRUE(alt(Qt::Key_O, [&] { return isLeft(); }));
    EXPECT_EQ(stored("CDCPRD0110"), (CostCode{"CDCPRD0110", "Sbavatura", costCentre, false, "1"}));
}

TEST_F(MaintenanceDialogTest, CreatesACodeTypedIntoTheWindow) {
    open("", 201);
    EXPECT_TRUE(code_->hasFocus());
    EXPECT_EQ(note(), "Indicare il codice da creare.");
    QTest::keyClicks(code_, "mat.060");
    QTest::keyClick(code_, Qt::Key_Tab);
    QTest::keyClicks(description_, "Vernici");
    confirm();
    EXPECT_EQ(stored("MAT060", 201), (CostCode{"MAT060", "Vernici", 0, false, "0"}));
}

TEST_F(MaintenanceDialogTest, CreatesAGroupWithoutKind) {
    open("CDCNUO");
    QTest::keyClicks(description_, "Centri nuovi");
    kind_->setCurrentIndex(0);
    EXPECT_TRUE(alt(Qt::Key_R, [&] { return group_->isChecked(); }));
    EXPECT_FALSE(kind_->isEnabled());
    EXPECT_EQ(kind_->currentIndex(), -1);
    confirm();
    EXPECT_EQ(stored("CDCNUO"), (CostCode{"CDCNUO", "Centri nuovi", 0, true, "0"}));
}

TEST_F(MaintenanceDialogTest, SaysWhatIsMissingAndStaysWithTheFieldInFocus) {
    open("CDCPRD0110");
    confirm();
    EXPECT_EQ(refusal(), "Indicare la descrizione.");
    EXPECT_TRUE(description_->hasFocus());
    QTest::keyClicks(description_, "Sbavatura");
    confirm();
    EXPECT_EQ(refusal(), "Indicare il tipo del conto.");
    EXPECT_TRUE(kind_->hasFocus());
    retype(code_, "CDC.PRD.11");
    confirm();
    EXPECT_EQ(refusal(), "Il codice ha 8 caratteri: in questo piano ne ha 3, 6, 10 o 15.");
    EXPECT_TRUE(code_->hasFocus());
    EXPECT_EQ(code_->selectedText(), "CDC.PRD.11");
    EXPECT_EQ(description_->text(), "Sbavatura");
    EXPECT_EQ(stored("CDCPRD0110"), std::nullopt);
}

TEST_F(MaintenanceDialogTest, RefusesADescriptionOfBlanks) {
    open("CDCPRD0020");
    retype(description_, "   ");
    confirm();
    EXPECT_EQ(refusal(), "Indicare la descrizione.");
    EXPECT_EQ(stored("CDCPRD0020")->description, "Tornitura");
}

TEST_F(MaintenanceDialogTest, TakesNoMoreLettersThanTheDatabaseHolds) {
    open("CDCPRD0020");
    retype(description_, QString(100, u'x'));
    confirm();
    EXPECT_EQ(stored("CDCPRD0020")->description, std::string(80, 'x'));
}

TEST_F(MaintenanceDialogTest, LeavesTheCodeOfAnotherCompanyAlone) {
    connection_->Execute("UPDATE PC03_ANAGPDC SET PC03_DITTA_CG18 = 4 WHERE PC03_CODPDC_PC01 = 101 AND "
                         "PC03_CONTO = N'ALTVAR0030'");
    open("ALTVAR0030");
    EXPECT_EQ(description_->text(), "");
    EXPECT_EQ(note(), "Il codice è riservato a un'altra ditta: per crearne uno nuovo indicarne un altro.");
    EXPECT_TRUE(code_->hasFocus());
    confirm();
    EXPECT_EQ(refusal(), "Il codice ALT.VAR.0030 è già riservato a un'altra ditta.");
}

TEST_F(MaintenanceDialogTest, LosesNothingWhenTheConnectionFails) {
    open("CDCPRD0020");
    retype(description_, "Tornitura fine");
    const std::string connectionString = connection_->ConnectionString();
    connection_->Close();
    confirm();
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_TRUE(refusal().startsWith("Il salvataggio non è riuscito; i dati restano in questa finestra.\n"
                                     "Errore 3709: "))
        << refusal().toStdString();
    EXPECT_EQ(description_->text(), "Tornitura fine");
    connection_->Open(connectionString);
    confirm();
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(stored("CDCPRD0020")->description, "Tornitura fine");
}

TEST_F(MaintenanceDialogTest, DoesNotWriteOverWhatAnotherUserChangedMeanwhile) {
    open("CDCPRD0020");
    retype(description_, "Torni verticali");
    openDatabase(file_)->Execute("UPDATE PC03_ANAGPDC SET PC03_DESCR = N'Torni paralleli' WHERE "
                                 "PC03_CODPDC_PC01 = 101 AND PC03_CONTO = N'CDCPRD0020'");
    confirm();
    EXPECT_EQ(refusal(), "Nel frattempo un altro utente ha modificato o eliminato il codice: annulla e "
                         "riapri la gestione.");
    EXPECT_EQ(description_->text(), "Torni verticali");
    EXPECT_EQ(stored("CDCPRD0020")->description, "Torni paralleli");
}

TEST_F(MaintenanceDialogTest, ShowsOnlyWhatTheUserHasNoRightToChange) {
    shell::UserRights rights;
    rights.update = false;
    open("CDCPRD0020", 101, rights);
    EXPECT_TRUE(note().endsWith("\nManca il diritto di modificare i dati.")) << note().toStdString();
    QTest::keyClicks(description_, "x");
    EXPECT_EQ(description_->text(), "Tornitura");
    EXPECT_FALSE(kind_->isEnabled());
    EXPECT_FALSE(button("&OK")->isEnabled());
    open("CDCPRD0110", 101, rights);
    EXPECT_TRUE(button("&OK")->isEnabled()) << "creating is another right";
}

TEST_F(MaintenanceDialogTest, CreatesNothingWithoutTheRightTo) {
    shell::UserRights rights;
    rights.insert = false;
    open("CDCPRD0110", 101, rights);
    EXPECT_EQ(note(), "Il conto non esiste e manca il diritto di inserire dati.");
    EXPECT_FALSE(button("&OK")->isEnabled());
    open("CDCPRD0020", 101, rights);
    EXPECT_TRUE(button("&OK")->isEnabled()) << "changing is another right";
}

TEST_F(MaintenanceDialogTest, GoesThroughItsFieldsInTheOrderInWhichTheyStand) {
    open("CDCPRD0110");
    code_->setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 7; ++i) {
        const QWidget* here = dialog_->focusWidget();
        const auto* pushButton = qobject_cast<const QPushButton*>(here);
        order.push_back((pushButton ? pushButton->text() : here->objectName()).toStdString());
        QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(order, ElementsAre("codice", "descrizione", "tipo", "raggruppamento", "riservato", "&OK",
                                   "&Annulla"));
    EXPECT_TRUE(code_->hasFocus()) << "round again";
}

TEST_F(MaintenanceDialogTest, NamesItsFieldsToScreenReaders) {
    open("CDCPRD0020");
    const auto name = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).toStdString();
    };
    EXPECT_EQ(name(code_), "Codice");
    EXPECT_EQ(name(description_), "Descrizione");
    // The name of a choice is what is chosen: its label tells what it is.
    const auto labels = QAccessible::queryAccessibleInterface(kind_)->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.front().first->text(QAccessible::Name).toStdString(), "Tipo:");
    EXPECT_EQ(name(group_), "Raggruppamento di altri codici");
    EXPECT_EQ(name(reserved_), "Riservato alla ditta 1");
}

TEST_F(MaintenanceDialogTest, GrowsWithWhatItRefusesSoThatNothingIsCutOff) {
    open("CDCPRD011");
    const int before = dialog_->height();
    confirm();
    const auto* text = dialog_->findChild<QLabel*>("rifiuto");
    EXPECT_GT(dialog_->height(), before);
    EXPECT_GE(text->height(), text->heightForWidth(text->width()));
}

TEST_F(MaintenanceDialogTest, IsNotOpenedWithoutItsData) {
    connection_->Close();
    EXPECT_THROW(open("CDCPRD0020"), ado::AdoError);
}

} // namespace
} // namespace veldran::test
