// Correlations keyed in the real host, with real events.
#include "adapters/qt/text.h"
#include "platform/ado/recordset.h"
#include "tests/shell/host_window.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>

namespace veldran::test {
namespace {

using qt::fromQt;
using qt::toQt;
using Lines = std::vector<std::string>;

// An account of the demo company that has no correlations.
constexpr const char* account = "6805100003";

class CorrelationKeys : public ScreenKeysTest {
protected:
    void SetUp() override {
        ScreenKeysTest::SetUp();
        find(account);
        QTest::mouseClick(part<QPushButton>("CMD_ATTIVAZIONI"), Qt::LeftButton);
        ASSERT_EQ(focused(), "TXT_CAUSALE");
    }
    /// Keys one row from the sign on; every field is left by Tab but the last one.
    void keyRow(const char* sign, const char* percentage, const char* code, const char* item) {
        ASSERT_EQ(focused(), "CBO_SEGNO");
        type(sign);
        key(Qt::Key_Tab);
        ASSERT_EQ(focused(), "TXT_PERC");
        type(percentage);
        key(Qt::Key_Tab);
        ASSERT_EQ(focused(), "TXT_CONTO");
        type(code);
        key(Qt::Key_Tab);
        ASSERT_EQ(focused(), "TXT_VDS");
        type(item);
    }
    void keyCausale(const char* code) {
        type(code);
        key(Qt::Key_Tab);
    }
    /// From the detail's first field, or the grid, to "Conferma" of the header.
    void reachSave() {
        while (!focused().starts_with("INV_TESTATA")) {
            const std::string before = focused();
            back();
            ASSERT_NE(focused(), before);
        }
        key(Qt::Key_Home);
        while (focused() != "INV_TESTATA_Conferma") {
            const std::string before = focused();
            key(Qt::Key_Right);
            ASSERT_NE(focused(), before) << "there is nothing to be saved";
        }
    }
    /// The rows as stored: sign, percentage, account, cost item.
    Lines stored(const std::string& causale) {
        const auto records =
            openDatabase(folder_.path() / "demo.vdb")
                ->Execute("SELECT CI15_INDSEGNO, CI15_PERC, CI15_CONTO_PC03, CI15_VDS_PC03 FROM "
                          "CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = 1 AND CI15_CODPDC_CG10 = 1 AND "
                          "CI15_CONTO_CG24 = '" +
                          std::string(account) + "' AND CI15_CODCAUS_CI03 = '" + causale +
                          "' ORDER BY CI15_PROG");
        Lines rows;
        for (; !records->EndOfFile(); records->MoveNext()) {
            std::string row;
            for (const ado::Field& field : records->Fields()) {
                row += (row.empty() ? "" : " ") + nullSafeText(field.Value());
            }
            rows.push_back(row);
        }
        return rows;
    }
    Lines shown() {
        const QAbstractItemModel& rows = *part<QTableView>("GRD_DETTAGLIO")->model();
        Lines lines;
        for (int row = 0; row < rows.rowCount(); ++row) {
            std::string line;
            for (const int column : {0, 1, 3, 4}) {
                line += fromQt(rows.index(row, column).data().toString()) + "|";
            }
            lines.push_back(line);
        }
        return lines;
    }
};

TEST_F(CorrelationKeys, KeepTheFocusOnTheWayThroughAWholeCorrelation) {
    keyCausale("ftac");
    EXPECT_EQ(fromQt(part<QLabel>("TXT_DESCRCAUSALE")->text()), "Fattura di acquisto");
    keyRow("a", "60", "colacq0020", "");
    key(Qt::Key_Tab); // through the focus catcher into the next row
    EXPECT_EQ(fromQt(part<QComboBox>("CBO_SEGNO")->currentText()), "Dare");
    keyRow("d", "70", "CDC.GEN.0010", "ser050"); // a cost item is complete with its last letter
    keyRow("d", "30", "CDCGEN0020", "SER050");
    EXPECT_EQ(fromQt(part<QComboBox>("CBO_SEGNO")->currentText()), "Avere") << "the run is full";
    keyRow("a", "40", "TRARIP0010", "");
    key(Qt::Key_Tab);
    keyRow("d", "33,33", "CDCGEN0030", "SER050");
    keyRow("d", "66.67", "CDCGEN0040", "SER050");
    EXPECT_EQ(focused(), "CBO_SEGNO") << "a seventh row waits";
    EXPECT_EQ(stored("FTAC"), Lines{});
    reachSave();
    key(Qt::Key_Return);
    EXPECT_EQ(focused(), "GRD_DETTAGLIO");
    EXPECT_EQ(stored("FTAC"),
              (Lines{"2 60.00 COLACQ0020 ", "1 70.00 CDCGEN0010 SER050", "1 30.00 CDCGEN0020 SER050",
                     "2 40.00 TRARIP0010 ", "1 33.33 CDCGEN0030 SER050", "1 66.67 CDCGEN0040 SER050"}));
    EXPECT_EQ(shown(), (Lines{"COL.ACQ.0020||60.00%||", "|CDC.GEN.0010|70.00%|SER.050|",
                              "|CDC.GEN.0020|30.00%|SER.050|", "TRA.RIP.0010||40.00%||",
                              "|CDC.GEN.0030|33.33%|SER.050|", "|CDC.GEN.0040|66.67%|SER.050|"}));
}

TEST_F(CorrelationKeys, LeadBackFromTheFirstButtonOfTheRowsToTheirLastField) {
    keyCausale("FTAC");
    part<QWidget>("GNV_DETTAGLIO_Nuovo")->setFocus(Qt::TabFocusReason);
    back();
    EXPECT_EQ(focused(), "TXT_VDS");
}

TEST_F(CorrelationKeys, LeadFromAnUnknownCausaleToTheButtonOfANewOneAndNotToTheOneThatSaves) {
    keyCausale("FTAC");
    keyRow("a", "100", "COLACQ0020", "");
    key(Qt::Key_Tab);
    reachSave();
    key(Qt::Key_Return);
    ASSERT_EQ(focused(), "GRD_DETTAGLIO");
    key(Qt::Key_Return);
    key(Qt::Key_Tab);
    type("90");
    reachSave();
    key(Qt::Key_Return);
    ASSERT_EQ(stored("FTAC"), (Lines{"2 90.00 COLACQ0020 "}));
    QTest::mouseClick(part<QPushButton>("CMD_ATTIVAZIONI"), Qt::LeftButton);
    key(Qt::Key_Down);
    QTest::mouseClick(part<QPushButton>("CMD_ATTIVAZIONI"), Qt::LeftButton);
    ASSERT_EQ(focused(), "TXT_CAUSALE");
    keyCausale("QQQQ");
    EXPECT_EQ(focused(), "INV_TESTATA_Nuovo");
    EXPECT_TRUE(part<QWidget>("INV_TESTATA_Conferma")->isEnabled());
}

TEST_F(CorrelationKeys, TakeNoAccountOfAKindThatCausaleAndSignDoNotAllow) {
    const auto description = [this] { return fromQt(part<QLabel>("TXT_DESCRCONTO")->text()); };
    keyCausale("FTAC");
    keyRow("a", "100", "CDCGEN0010", ""); // the other side's
    EXPECT_EQ(description(), "");
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(focused(), "TXT_CONTO");
    type("COLACQ0020");
    key(Qt::Key_Tab);
    EXPECT_NE(description(), "");
    key(Qt::Key_Tab);
    reachSave();
    key(Qt::Key_Return);
    EXPECT_EQ(stored("FTAC"), Lines{"2 100.00 COLACQ0020 "});
}

TEST_F(CorrelationKeys, MendARefusedSaveWhereItWasRefused) {
    keyCausale("FTAC");
    keyRow("a", "100", "COLACQ0020", "");
    key(Qt::Key_Tab);
    keyRow("d", "60", "CDCGEN0010", "SER050");
    keyRow("d", "50", "CDCGEN0020", "SER050");
    reachSave();
    EXPECT_TRUE(withModal([] { key(Qt::Key_Return); },
                          [](QWidget& modal) {
                              EXPECT_EQ(
                                  fromQt(dynamic_cast<QMessageBox&>(modal).text()),
                                  "Attenzione, non è ammesso salvare una correlazione con la somma delle "
                                  "percentuali\nattribuite ad un insieme contiguo di righe di destinazione "
                                  "maggiore di 100");
                              QTest::keyClick(&modal, Qt::Key_Return);
                          }));
    activate();
    EXPECT_EQ(focused(), "INV_TESTATA_Conferma") << "and not on what Enter would delete";
    EXPECT_EQ(stored("FTAC"), Lines{});
    EXPECT_EQ(shown(), (Lines{"COL.ACQ.0020||100.00%||", "|CDC.GEN.0010|60.00%|SER.050|",
                              "|CDC.GEN.0020|50.00%|SER.050|"}));
    key(Qt::Key_Tab);
    ASSERT_EQ(focused(), "GRD_DETTAGLIO");
    key(Qt::Key_End);
    key(Qt::Key_Return);
    ASSERT_EQ(focused(), "CBO_SEGNO");
    key(Qt::Key_Return);
    ASSERT_EQ(focused(), "TXT_PERC");
    type("40");
    reachSave();
    key(Qt::Key_Return);
    EXPECT_EQ(stored("FTAC"),
              (Lines{"2 100.00 COLACQ0020 ", "1 60.00 CDCGEN0010 SER050", "1 40.00 CDCGEN0020 SER050"}));
}

} // namespace
} // namespace veldran::test
