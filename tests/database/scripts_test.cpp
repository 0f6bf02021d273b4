#include "tests/database/server_session.h"

#include <gtest/gtest.h>

namespace veldran::test {
namespace {

const char* const tables[] = {"CG10_DESPDC",     "CG24_TABPDC",  "CG18_DITTE",          "PC01_PDC",
                              "PC03_ANAGPDC",    "CI03_CAUSALI", "CI11_CONTROLLOCONTI", "CI15_CORRCONTICOGE",
                              "CI35_CONTIATTIVI"};

class Scripts : public testing::Test {
protected:
    ServerSession open() const { return ServerSession(database_); }

    static std::vector<std::string> counts(ServerSession& session) {
        std::vector<std::string> counted;
        for (const char* table : tables) {
            counted.push_back(session.value(std::string("SELECT COUNT(*) FROM ") + table));
        }
        return counted;
    }

    static void expectRefusal(ServerSession& session, const std::string& statement, int number) {
        try {
            session.run(statement);
            ADD_FAILURE() << statement << " was not refused";
        } catch (const ado::AdoError& error) {
            EXPECT_TRUE(isNumbered(error.first(), number)) << error.what();
        }
    }

    TestDatabase database_{TestDatabase::withoutObjects};
};

TEST_F(Scripts, AnEmptyDatabaseTakesAllThree) {
    ServerSession session = open();
    session.load("database/schema.sql");
    session.load("database/routines.sql");
    session.load("database/demo.sql");
    for (const char* table : tables) {
        EXPECT_NE(session.value(std::string("SELECT COUNT(*) FROM ") + table), "0") << table;
    }
    for (const char* routine : {"FNCI_COGE_GETCODEHEADER", "FNCI03_CAUSALI", "FNPC03_ANAGPDC_COAN",
                                "SPCI_INTERMEDIFIGLI", "SPCI_VELDRANACT"}) {
        EXPECT_NE(session.value(std::string("SELECT OBJECT_ID('") + routine + "')"), "NULL") << routine;
    }
}

TEST_F(Scripts, ASecondRunLeavesTheSameRows) {
    ServerSession session = open();
    for (const char* script : {"database/schema.sql", "database/routines.sql", "database/demo.sql"}) {
        session.load(script);
    }
    const std::vector<std::string> first = counts(session);
    for (const char* script : {"database/schema.sql", "database/routines.sql", "database/demo.sql"}) {
        session.load(script);
    }
    EXPECT_EQ(counts(session), first);
}

TEST_F(Scripts, ASecondRunOfTheDemoUndoesWhatWasChangedAndSparesOtherCompanies) {
    ServerSession session = open();
    session.load("database/schema.sql");
    session.load("database/demo.sql");
    const std::vector<std::string> first = counts(session);
    session.run("DELETE FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = 1");
    session.run("UPDATE CG24_TABPDC SET CG24_DESCR = N'Altro' WHERE CG24_GRUPPO_CG10 = 1");
    session.run("INSERT INTO CI35_CONTIATTIVI (CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24) "
                "VALUES (77, 1, N'6005050001')");
    session.load("database/demo.sql");
    EXPECT_EQ(session.value("SELECT COUNT(*) FROM CG24_TABPDC WHERE CG24_DESCR = N'Altro'"), "0");
    EXPECT_EQ(session.value("SELECT COUNT(*) FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = 77"), "1");
    session.run("DELETE FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = 77");
    EXPECT_EQ(counts(session), first);
}

TEST_F(Scripts, WhatWasLoadedIsThereForTheNextProgram) {
    {
        ServerSession session = open();
        session.load("database/schema.sql");
        session.load("database/routines.sql");
        session.load("database/demo.sql");
    }
    ServerSession session = open();
    EXPECT_EQ(session.value("SELECT CG18_RAGSOC FROM CG18_DITTE WHERE CG18_DITTA = 1"),
              "Officine Meccaniche Valdarno S.p.A.");
    EXPECT_EQ(session.value("SELECT DBO.FNCI_COGE_GETCODEHEADER(4, N'6505000000')"), "6505");
}

TEST_F(Scripts, AccentsAndQuotesOfTheDemoArriveWhole) {
    ServerSession session = open();
    session.load("database/schema.sql");
    session.load("database/demo.sql");
    EXPECT_EQ(session.value("SELECT CG24_DESCR FROM CG24_TABPDC WHERE CG24_GRUPPO_CG10 = 1 "
                            "AND CG24_DESCR = N'Clienti Valle d''Aosta'"),
              "Clienti Valle d'Aosta");
    EXPECT_EQ(session.value("SELECT COUNT(*) FROM CG24_TABPDC WHERE CG24_DESCR = N'attività RICREATIVE'"),
              "1");
    EXPECT_EQ(session.value("SELECT COUNT(*) FROM CG24_TABPDC WHERE CG24_DESCR = N'Attivita ricreative'"),
              "0");
    EXPECT_EQ(session.value("SELECT PC03_DESCR FROM PC03_ANAGPDC WHERE PC03_CODPDC_PC01 = 101 "
                            "AND PC03_CONTO = N'CDCAUS0040'"),
              "Qualità");
}

TEST_F(Scripts, CodesComeBackFilledWithBlanks) {
    ServerSession session = open();
    session.load("database/schema.sql");
    session.load("database/demo.sql");
    const auto result = session.session().execute(
        "SELECT PC03_CONTO FROM PC03_ANAGPDC WHERE PC03_CODPDC_PC01 = 101 AND PC03_CONTO = N'col'", {}, {});
    ASSERT_EQ(result.rows->rowCount(), 1U);
    EXPECT_EQ(result.rows->cell(0, 0), Value("COL            "));
}

TEST_F(Scripts, KeysAndRequiredColumnsAreEnforced) {
    ServerSession session = open();
    session.load("database/schema.sql");
    const std::string activation =
        "INSERT INTO CI35_CONTIATTIVI (CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24) "
        "VALUES (1, 1, N'0102030005')";
    session.run(activation);
    expectRefusal(session, activation, 2627);
    const std::string correlation =
        "INSERT INTO CI15_CORRCONTICOGE (CI15_DITTA_CG18, CI15_CODCAUS_CI03, CI15_CODPDC_CG10, "
        "CI15_CONTO_CG24, "
        "CI15_PROG, CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_INDSEGNO, CI15_PERC) VALUES ";
    expectRefusal(session, correlation + "(1, N'FTAC', 1, N'0102030005', 1, 101, NULL, 1, 50)", 515);
    session.run(correlation + "(1, N'FTAC', 1, N'0102030005', 1, 101, N'COL', 1, NULL)");
    expectRefusal(session, correlation + "(1, N'ftac', 1, N'0102030005', 1, 101, N'COL', 1, 50)", 2627);
    expectRefusal(session, correlation + "(1, N'FTAC', 1, N'0102030005', 2, 101, N'COL', 1, 1000)", 8115);
    expectRefusal(session, correlation + "(1, N'FTAC', 100, N'0102030005', 2, 101, N'COL', 1, 50)", 8115);
}

TEST_F(Scripts, ExistingRowsSurviveASecondRunOfTheSchema) {
    ServerSession session = open();
    session.load("database/schema.sql");
    session.run("INSERT INTO CG10_DESPDC (CG10_GRUPPO, CG10_DESCR, CG10_NUMLIVELLI) VALUES (7, N'Piano', 3)");
    session.load("database/schema.sql");
    EXPECT_EQ(session.value("SELECT CG10_NUMLIVELLI FROM CG10_DESPDC WHERE CG10_GRUPPO = 7"), "3");
}

} // namespace
} // namespace veldran::test
