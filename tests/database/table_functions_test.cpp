#include "tests/database/server_session.h"

#include <gtest/gtest.h>

namespace veldran::test {
namespace {

class TableFunctions : public testing::Test {
protected:
    void SetUp() override {
        session_.run(
            "INSERT INTO CI03_CAUSALI (CI03_CODCAUS, CI03_DITTA_CG18, CI03_DESCR) VALUES "
            "(N'FTAC', 0, N'Fattura di acquisto'), (N'BOLL', 2, N'Bollette'), (N'PROP', 1, N'Propria')");
        session_.run("INSERT INTO PC03_ANAGPDC (PC03_CODPDC_PC01, PC03_CONTO, PC03_DITTA_CG18, PC03_DESCR, "
                     "PC03_INDTIPOCONTO, PC03_FLGANALITICO) VALUES "
                     "(101, N'C', 0, N'Centri', 0, 0), (101, N'C01', 0, N'Tornitura', 8, 1), "
                     "(101, N'C02', 2, N'Riservato', 8, 1), (101, N'L01', 0, N'Collegamento', 1, 1), "
                     "(101, N'R01', 0, N'Risultato', 256, 1), (102, N'C01', 0, N'Altro piano', 8, 1)");
    }

    TextRows causali(const std::string& call) {
        return session_.rows("SELECT CI03_CODCAUS, CI03_DESCR FROM FNCI03_CAUSALI(" + call +
                             ") ORDER BY CI03_CODCAUS");
    }
    TextRows conti(const std::string& call) {
        return session_.rows("SELECT PC03_CONTO, PC03_DESCR FROM FNPC03_ANAGPDC_COAN(" + call +
                             ") ORDER BY PC03_CONTO");
    }

    TestDatabase database_{Chart(4)};
    ServerSession session_{database_};
};

TEST_F(TableFunctions, CausaleIsFoundByItsCodeWhateverTheCaseAndTrailingBlanks) {
    EXPECT_EQ(causali("N'FTAC', 1"), (TextRows{{"FTAC", "Fattura di acquisto"}}));
    EXPECT_EQ(causali("'ftac', 1"), (TextRows{{"FTAC", "Fattura di acquisto"}}));
    EXPECT_EQ(causali("N'ZZZZ', 1"), TextRows{});
}

TEST_F(TableFunctions, CausaleOfAnotherCompanyIsNotSeen) {
    EXPECT_EQ(causali("N'BOLL', 1"), TextRows{});
    EXPECT_EQ(causali("N'BOLL', 2"), (TextRows{{"BOLL", "Bollette"}}));
}

TEST_F(TableFunctions, WithoutACodeEveryCausaleOfTheCompanyIsGiven) {
    EXPECT_EQ(causali("NULL, 1"), (TextRows{{"FTAC", "Fattura di acquisto"}, {"PROP", "Propria"}}));
    EXPECT_EQ(causali("NULL, NULL"), (TextRows{{"FTAC", "Fattura di acquisto"}}));
}

TEST_F(TableFunctions, CausaliOfAnAccountAreReadByApplyingTheFunctionToItsCorrelations) {
    session_.run("INSERT INTO CI15_CORRCONTICOGE (CI15_DITTA_CG18, CI15_CODCAUS_CI03, CI15_CODPDC_CG10, "
                 "CI15_CONTO_CG24, "
                 "CI15_PROG, CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_INDSEGNO) VALUES "
                 "(1, N'FTAC', 1, N'0102030005', 1, 101, N'C01', 2), (1, N'FTAC', 1, N'0102030005', 2, 101, "
                 "N'C01', 1), "
                 "(1, N'PROP', 1, N'0102030005', 1, 101, N'C01', 2), (1, N'BOLL', 1, N'0102030005', 1, 101, "
                 "N'C01', 2), "
                 "(1, N'FTAC', 1, N'0102030006', 1, 101, N'C01', 2)");
    const TextRows rows = session_.rows("SELECT DISTINCT CI03_CODCAUS, CI03_DESCR FROM CI15_CORRCONTICOGE "
                                        "CROSS APPLY FNCI03_CAUSALI(CI15_CODCAUS_CI03, CI15_DITTA_CG18) "
                                        "WHERE CI15_DITTA_CG18 = 1 AND CI15_CODPDC_CG10 = 1 "
                                        "AND CI15_CONTO_CG24 = N'0102030005' ORDER BY CI03_CODCAUS");
    EXPECT_EQ(rows, (TextRows{{"FTAC", "Fattura di acquisto"}, {"PROP", "Propria"}}));
}

TEST_F(TableFunctions, CostAccountIsFoundInItsChartForItsCompany) {
    EXPECT_EQ(conti("101, 'C01', 1, null"), (TextRows{{"C01", "Tornitura"}}));
    EXPECT_EQ(conti("102, 'C01', 1, null"), (TextRows{{"C01", "Altro piano"}}));
    EXPECT_EQ(conti("101, 'C02', 1, Null"), TextRows{});
    EXPECT_EQ(conti("101, 'C02', 2, Null"), (TextRows{{"C02", "Riservato"}}));
    EXPECT_EQ(conti("103, 'C01', 1, null"), TextRows{});
    EXPECT_EQ(conti("101, 'C', 1, null"), (TextRows{{"C", "Centri"}}));
}

TEST_F(TableFunctions, TypologyMaskKeepsTheAdmittedKindsOnly) {
    EXPECT_EQ(conti("101, NULL, 1, 8"), (TextRows{{"C01", "Tornitura"}}));
    EXPECT_EQ(conti("101, NULL, 1, 257"), (TextRows{{"L01", "Collegamento"}, {"R01", "Risultato"}}));
    EXPECT_EQ(conti("101, NULL, 1, 1023"),
              (TextRows{{"C01", "Tornitura"}, {"L01", "Collegamento"}, {"R01", "Risultato"}}));
    EXPECT_EQ(conti("101, NULL, 1, 0"), TextRows{});
    EXPECT_EQ(conti("101, N'C01', 1, 1"), TextRows{});
}

TEST_F(TableFunctions, WithoutACodeTheWholeChartIsGiven) {
    EXPECT_EQ(conti("101, NULL, 2, NULL").size(), 5U);
    EXPECT_EQ(conti("101, NULL, 1, NULL").size(), 4U);
}

TEST_F(TableFunctions, DescriptionIsReadAsTheScreenAsksForIt) {
    EXPECT_EQ(session_.rows(" SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(101, 'C01', 1, null) "),
              (TextRows{{"Tornitura"}}));
}

TEST_F(TableFunctions, TypologyStatementReadsTheFlagsAsBits) {
    session_.run(
        "INSERT INTO CI11_CONTROLLOCONTI (CI11_CODCAUS_CI03, CI11_SEGNO, CI11_FLGCOLLEG, CI11_FLGTRANSIT, "
        "CI11_FLGCOMPET, CI11_FLGCDC, CI11_FLGLAVPROG, CI11_FLGMAGAZ, CI11_FLGMARGLORDI, CI11_FLGMARGNETTI, "
        "CI11_FLGRISULT, CI11_FLGALTRITIPI) VALUES (N'FTAC', 1, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0)");
    EXPECT_EQ(session_.value("SELECT CI11_FLGCOLLEG * POWER(2, 0) + CI11_FLGRISULT * POWER(2, 8) "
                             "FROM CI11_CONTROLLOCONTI WHERE CI11_CODCAUS_CI03 = N'FTAC' AND CI11_SEGNO = 1"),
              "257");
}

} // namespace
} // namespace veldran::test
