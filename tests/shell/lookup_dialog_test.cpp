#include "shell/lookup_dialog.h"
#include "shell/word_filter.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QTableView>
#include <QTest>

namespace veldran::test {
namespace {

using shell::LookupModel;
using shell::LookupRow;

LookupRow row(const QString& code, const QString& display, const QString& description) {
    return {code, display, description, shell::folded(description)};
}

std::vector<LookupRow> someRows() {
    return {row("0101000001", "01/01/00/0001", "Cassa contanti"),
            row("6805100001", "68/05/10/0001", "Compensi amministratori"),
            row("6805100003", "68/05/10/0003", "Compensi collegio sindacale"),
            row("6805100004", "68/05/10/0004", "Qualità e sicurezza")};
}

TEST(WordFilter, IsBlindToAccentsAndCase) {
    EXPECT_EQ(shell::folded("Qualità È ÇA Ümlaut"), "qualita e ca umlaut");
    EXPECT_TRUE(shell::WordFilter("QUALITA'").isEmpty() == false);
    EXPECT_TRUE(shell::WordFilter("qualita").accepts(shell::folded("Controllo Qualità")));
    EXPECT_TRUE(shell::WordFilter("QUALITÀ").accepts(shell::folded("controllo qualita")));
}

TEST(WordFilter, WantsAllWordsInAnyOrder) {
    const shell::WordFilter filter("  sindacale   comp ");
    EXPECT_TRUE(filter.accepts("compensi collegio sindacale"));
    EXPECT_FALSE(filter.accepts("compensi amministratori"));
}

TEST(WordFilter, AcceptsEverythingWithoutWords) {
    EXPECT_TRUE(shell::WordFilter("   ").accepts("qualsiasi"));
}

TEST(LookupModel, KeepsTheRulesOfModelsWhileItIsFiltered) {
    LookupModel model(someRows(), nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setFilter("68", "compensi");
    EXPECT_EQ(model.rowCount(), 2);
    model.setFilter("", "");
    EXPECT_EQ(model.rowCount(), 4);
}

TEST(LookupModel, FiltersByTheBeginningOfTheCodeTypedEitherWay) {
    LookupModel model(someRows(), nullptr);
    const auto shown = [&](const char* typed) {
        model.setFilter(typed, "");
        return model.rowCount();
    };
    EXPECT_EQ(shown("6805"), 3);
    EXPECT_EQ(shown("68/05/1"), 3);
    EXPECT_EQ(shown("0510"), 0);
    EXPECT_EQ(shown(" 01 "), 1);
}

TEST(LookupModel, FiltersByACodeOfLettersTypedInAnyCaseWithAnySeparator) {
    LookupModel model({row("CDCPRD0010", "CDC.PRD.0010", "Taglio"),
                       row("CDCPRD0020", "CDC.PRD.0020", "Tornitura"),
                       row("COLACQ0010", "COL.ACQ.0010", "Costi di acquisto")},
                      nullptr);
    const auto shown = [&](const char* typed) {
        model.setFilter(typed, "");
        return model.rowCount();
    };
    EXPECT_EQ(shown("c"), 3);
    EXPECT_EQ(shown("cdcprd002"), 1);
    EXPECT_EQ(shown("cdc.prd.002"), 1);
    EXPECT_EQ(shown("CDC.P"), 2);
    EXPECT_EQ(shown("cdc prd"), 2);
    EXPECT_EQ(shown("CDCP.RD"), 0) << "a separator where the code has none";
    EXPECT_EQ(shown("PRD"), 0);
    EXPECT_EQ(model.rowAtOrAfter("cdcprd0015"), -1) << "no row is shown";
    EXPECT_EQ(shown(""), 3);
    EXPECT_EQ(model.rowAtOrAfter("cdcprd0015"), 1);
}

TEST(LookupModel, FindsWhereAListOpens) {
    LookupModel model(someRows(), nullptr);
    EXPECT_EQ(model.rowAtOrAfter("6805100002"), 2);
    EXPECT_EQ(model.rowAtOrAfter("9"), -1);
}

class LookupDialogTest : public testing::Test {
protected:
    void open(const QString& at = {}, const QString& restriction = {}) {
        dialog_ = std::make_unique<shell::LookupDialog>(someRows(), "Conti", at, restriction, nullptr);
        dialog_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog_.get()));
        words_ = dialog_->findChild<QLineEdit*>("filtroDescrizione");
        code_ = dialog_->findChild<QLineEdit*>("filtroCodice");
        table_ = dialog_->findChild<QTableView*>("elenco");
    }
    QString count() { return dialog_->findChild<QLabel*>("conteggio")->text(); }
    QString chosen() { return dialog_->chosen() ? dialog_->chosen()->code : QString("nessuno"); }

    std::unique_ptr<shell::LookupDialog> dialog_;
    QLineEdit* words_ = nullptr;
    QLineEdit* code_ = nullptr;
    QTableView* table_ = nullptr;
};

TEST_F(LookupDialogTest, NarrowsWhileWordsAreTypedAndTakesTheRowByEnter) {
    open();
    EXPECT_EQ(dialog_->windowTitle(), "Conti");
    EXPECT_EQ(count(), "4 di 4");
    QTest::keyClicks(words_, "SINDACALE coll");
    EXPECT_EQ(count(), "1 di 4");
    QTest::keyClick(words_, Qt::Key_Return);
    EXPECT_EQ(chosen(), "6805100003");
    EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(LookupDialogTest, MovesInTheListWhileAFilterHasTheFocus) {
    open();
    QTest::keyClick(words_, Qt::Key_Down);
    QTest::keyClick(words_, Qt::Key_Down);
    QTest::keyClick(words_, Qt::Key_Up);
    QTest::keyClick(words_, Qt::Key_Return);
    EXPECT_EQ(chosen(), "6805100001");
}

TEST_F(LookupDialogTest, GoesOnFilteringWhenTypingInTheList) {
    open();
    table_->setFocus();
    QTest::keyClick(table_, Qt::Key_Q);
    EXPECT_EQ(words_->text(), "q");
    EXPECT_EQ(count(), "1 di 4");
}

TEST_F(LookupDialogTest, OpensNearTheCodeThatWasTyped) {
    open("6805100002");
    EXPECT_EQ(table_->currentIndex().row(), 2);
    QTest::keyClick(table_, Qt::Key_Return);
    EXPECT_EQ(chosen(), "6805100003");
}

TEST_F(LookupDialogTest, TakesARowByDoubleClick) {
    open();
    const QPoint at = table_->visualRect(table_->model()->index(1, 1)).center();
    QTest::mouseClick(table_->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(table_->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    EXPECT_EQ(chosen(), "6805100001");
}

TEST_F(LookupDialogTest, IsLeftWithoutAChoiceByEscape) {
    open();
    QTest::keyClick(words_, Qt::Key_Escape);
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(chosen(), "nessuno");
}

TEST_F(LookupDialogTest, TakesNothingWhenNoRowPasses) {
    open();
    QTest::keyClicks(code_, "77");
    EXPECT_EQ(count(), "Nessun codice corrisponde ai filtri.");
    QTest::keyClick(code_, Qt::Key_Return);
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(chosen(), "nessuno");
}

TEST(LookupDialog, ShowsTheLongestCodeWhole) {
    const QString longest = "LAV.COM.2024.00013";
    shell::LookupDialog dialog(
        {row("LAVSVI0010", "LAV.SVI.0010", "Riduttore"), row("LAVCOM202400013", longest, "")}, "Conti", {},
        {}, nullptr);
    const auto* table = dialog.findChild<QTableView*>("elenco");
    const int margins = 2 * (table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, table) + 1);
    EXPECT_GE(table->columnWidth(LookupModel::codeColumn),
              table->fontMetrics().horizontalAdvance(longest) + margins);
}

TEST_F(LookupDialogTest, SaysWhyItDoesNotShowEverything) {
    open({}, "Solo conti di collegamento");
    EXPECT_EQ(dialog_->findChild<QLabel*>("restrizione")->text(), "Solo conti di collegamento");
}

TEST(LookupDialog, FiltersAHundredThousandRowsWithoutMakingTheUserWait) {
    std::vector<LookupRow> rows;
    for (int i = 0; i < 100000; ++i) {
        const QString code = QString::number(1000000000 + i);
        rows.push_back(row(code, code, QStringLiteral("Fornitore numero %1 qualità").arg(i)));
    }
    shell::LookupDialog dialog(std::move(rows), "Molti", {}, {}, nullptr);
    dialog.show();
    auto* words = dialog.findChild<QLineEdit*>("filtroDescrizione");
    QElapsedTimer clock;
    clock.start();
    QTest::keyClicks(words, "99999");
    EXPECT_EQ(dialog.findChild<QTableView*>("elenco")->model()->rowCount(), 1);
    EXPECT_LT(clock.elapsed(), 5000) << "five keys on a busy machine";
}

} // namespace
} // namespace veldran::test
