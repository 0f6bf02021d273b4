#include "adapters/embedded/script.h"
#include "tests/embedded/session_fixture.h"
#include "tests/tsql/screen_statements.h"

#include <functional>
#include <set>

namespace veldran::embedded::test {

namespace {

using tsql::test::screenStatement;
using tsql::test::screenStatements;

/// Company 7 with a four-level chart 1: one branch of patrimonial accounts, one economic account.
class ScreenStatements : public SessionTest {
protected:
    ScreenStatements() {
        runScript(*session_, sourceFile("database/schema.sql"));
        runScript(*session_, sourceFile("database/routines.sql"));
        run({"INSERT INTO CG10_DESPDC VALUES (1, N'Piano', 4)",
             "INSERT INTO CG24_TABPDC VALUES (1, '0200000000', N'Economici', 2), (1, '0102030005', N'Cassa', "
             "1),"
             "(1, '0102030000', N'Liquidità', 1), (1, '0100000000', N'Attività', 1), (1, '0102000000', "
             "N'Correnti', 1),"
             "(1, '0102030006', N'Banca', 1), (1, '0201010001', N'Ricavi', 2), (1, '0201010000', N'Vendite', "
             "2),"
             "(1, '0201000000', N'Caratteristici', 2), (2, '0100000000', N'Altro piano', 1)",
             "INSERT INTO CI35_CONTIATTIVI VALUES (7, 1, '0102030005'), (8, 1, '0102030006')",
             "INSERT INTO CI03_CAUSALI VALUES ('FTAC', 0, N'Fattura di acquisto'), ('NC', 0, N'Nota di "
             "credito'),"
             "('XX', 9, N'Di un''altra ditta')",
             "INSERT INTO CI15_CORRCONTICOGE VALUES (7, 'FTAC', 1, '0102030006', 1, 101, 'A1', NULL, NULL, "
             "2, 100),"
             "(7, 'FTAC', 1, '0102030006', 2, 101, 'B1', 201, 'V1', 1, 60.5),"
             "(7, 'FTAC', 1, '0102030006', 3, 101, 'B2', NULL, NULL, 1, 39.5),"
             "(7, 'NC', 1, '0102030006', 1, 101, 'C1', NULL, NULL, 2, NULL),"
             "(8, 'FTAC', 1, '0102030005', 1, 101, 'A1', NULL, NULL, 2, 100)",
             "INSERT INTO PC03_ANAGPDC VALUES (101, 'A1', 0, N'Costi', 1, 1), (201, 'V1', 0, N'Voce', 0, 1)",
             "INSERT INTO CI11_CONTROLLOCONTI VALUES ('FTAC', 2, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0),"
             "('NC', 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1)"});
    }

    void send(const std::string& name) { execute(screenStatement(name)); }

    void buildChart() {
        for (const char* name : {"TabellaConti", "ChiaveConti", "IndiceConti1", "IndiceConti2",
                                 "AttivazioneIniziale", "CorrelazioneIniziale"}) {
            send(name);
        }
    }

    void select(int filter) {
        send("EliminazioneSelezione");
        send("Selezione" + std::to_string(filter));
        if (filter != 1) {
            send("InserimentoIdentita");
            while (affected(screenStatement("Completamento")) > 0) {
            }
        }
        run({"ALTER TABLE #CG24_TABPDC_SELECTED ADD PRIMARY KEY CLUSTERED (INDICE)",
             "CREATE NONCLUSTERED INDEX IDX01 ON #CG24_TABPDC_SELECTED (GRUPPO, PARENT)",
             "CREATE NONCLUSTERED INDEX IDX02 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, "
             "ATTIVO)",
             "CREATE NONCLUSTERED INDEX IDX03 ON #CG24_TABPDC_SELECTED (CG24_INDTIPOCONTO, ISANALITICO, "
             "ATTIVO, "
             "LIVELLO1)"});
    }

    void fillWorkingTables() {
        send("CreazioneTestata");
        execute(screenStatement("RiempimentoTestata"), {wide("@CONTO", "0102030006", 10)});
        send("CreazioneDettaglio");
        execute(screenStatement("RiempimentoDettaglio"), {wide("@CONTO", "0102030006", 10)});
    }

    std::vector<std::string> accounts(const std::string& table) {
        std::vector<std::string> result;
        for (const auto& row : rows("SELECT CONTO FROM " + table + " ORDER BY INDICE")) {
            result.push_back(row[0]);
        }
        return result;
    }
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(ScreenStatements, ReadsTheNumberOfLevels) {
    EXPECT_EQ(cell(screenStatement("LivelliPDC")), "4");
}

TEST_F(ScreenStatements, GivesTheHeaderCodeOfAnAccount) {
    EXPECT_EQ(cell(screenStatement("CodeHeader"), {wide("@CONTO", "0102030000", 10)}), "010203");
    EXPECT_EQ(cell(screenStatement("CodeHeader"), {wide("@CONTO", "0102030005", 10)}), "0102030005");
}

TEST_F(ScreenStatements, BuildsTheChartInOrderWithItsDerivedColumns) {
    buildChart();
    EXPECT_EQ(
        rows("SELECT INDICE, CONTO, CONTOF, CODEHEADER, PARENT, LIVELLO1, LIVELLO2, LIVELLO3, LIVELLO4, "
             "LIVELLO5, NRLIVELLO, ISANALITICO FROM #CG24_TABPDC WHERE INDICE IN (1, 3, 4)"),
        (Rows{{"1", "0100000000", "01/00/00/0000", "01", "NULL", "0100000000", "0100000000", "0100000000",
               "0100000000", "NULL", "1", "0"},
              {"3", "0102030000", "01/02/03/0000", "010203", "0102000000", "0100000000", "0102000000",
               "0102030000", "0102030000", "NULL", "3", "0"},
              {"4", "0102030005", "01/02/03/0005", "0102030005", "0102030000", "0100000000", "0102000000",
               "0102030000", "0102030005", "NULL", "4", "1"}}));
}

TEST_F(ScreenStatements, FlagsTheAccountsThatTheCompanyActivatedAndCorrelated) {
    buildChart();
    EXPECT_EQ(rows("SELECT CONTO FROM #CG24_TABPDC WHERE ATTIVO = 1"), (Rows{{"0102030005"}}));
    EXPECT_EQ(rows("SELECT CONTO FROM #CG24_TABPDC WHERE CORRELATO = 1"), (Rows{{"0102030006"}}));
}

TEST_F(ScreenStatements, DescribesTheChartColumnsAsTheScreenNeedsThem) {
    buildChart();
    const auto result = execute("SELECT * FROM #CG24_TABPDC");
    ASSERT_EQ(result.rows->columns().size(), 17U);
    const auto& indice = result.rows->columns()[0];
    EXPECT_TRUE(indice.identity);
    EXPECT_TRUE(indice.key);
    EXPECT_EQ(indice.type, ado::adInteger);
    const auto& contof = result.rows->columns()[5];
    EXPECT_EQ(contof.name, "CONTOF");
    EXPECT_EQ(contof.type, ado::adVarWChar);
    EXPECT_EQ(contof.definedSize, 14);
    EXPECT_EQ(result.rows->columns()[7].type, ado::adWChar);
    EXPECT_EQ(result.rows->columns()[13].type, ado::adSmallInt);
    EXPECT_EQ(result.rows->columns()[15].type, ado::adBoolean);
}

TEST_F(ScreenStatements, RefusesToBuildTheChartTwice) {
    buildChart();
    EXPECT_EQ(error(screenStatement("TabellaConti")).Number, 2714);
}

TEST_F(ScreenStatements, SelectsEveryAccountWithItsOwnIndex) {
    buildChart();
    select(1);
    EXPECT_EQ(accounts("#CG24_TABPDC_SELECTED"), accounts("#CG24_TABPDC"));
    EXPECT_EQ(accounts("#CG24_TABPDC_SELECTED").size(), 9U);
}

TEST_F(ScreenStatements, CompletesAFilteredSelectionWithItsAncestors) {
    buildChart();
    select(2);
    EXPECT_EQ(accounts("#CG24_TABPDC_SELECTED"),
              (Names{"0100000000", "0102000000", "0102030000", "0102030005"}));
    EXPECT_EQ(rows("SELECT S.INDICE FROM #CG24_TABPDC_SELECTED AS S INNER JOIN #CG24_TABPDC AS T ON S.INDICE "
                   "= T.INDICE "
                   "WHERE S.CONTO <> T.CONTO"),
              Rows{});
}

TEST_F(ScreenStatements, SelectsByEveryFilter) {
    buildChart();
    const std::vector<std::pair<int, std::string>> analytic{{2, "0102030005"}, {3, "0102030006"},
                                                            {4, "0102030006"}, {5, "0102030005"},
                                                            {8, "0102030006"}, {7, "0102030005"}};
    for (const auto& [filter, account] : analytic) {
        select(filter);
        EXPECT_EQ(rows("SELECT TOP 1 CONTO FROM #CG24_TABPDC_SELECTED WHERE ISANALITICO = 1 ORDER BY INDICE"),
                  (Rows{{account}}))
            << filter;
    }
    select(6);
    EXPECT_TRUE(accounts("#CG24_TABPDC_SELECTED").empty());
    select(9);
    EXPECT_EQ(accounts("#CG24_TABPDC_SELECTED").back(), "0201010001");
}

TEST_F(ScreenStatements, WritesTheFlagsOfTheSelectionBack) {
    buildChart();
    select(1);
    execute("UPDATE #CG24_TABPDC_SELECTED SET ATTIVO = 1, CORRELATO = 1 WHERE CONTO = '0201010001'");
    EXPECT_EQ(affected(screenStatement("RiportoAttivo")), 9);
    EXPECT_EQ(affected(screenStatement("RiportoCorrelato")), 9);
    EXPECT_EQ(rows("SELECT ATTIVO, CORRELATO FROM #CG24_TABPDC WHERE CONTO = '0201010001'"),
              (Rows{{"1", "1"}}));
}

TEST_F(ScreenStatements, FlagsOneAccountAsCorrelated) {
    buildChart();
    select(1);
    EXPECT_EQ(affected(screenStatement("CorrelatoDelConto"),
                       {flag("@CORRELATO", true), wide("@CONTO", "0102030005", 10)}),
              1);
    EXPECT_EQ(cell("SELECT CORRELATO FROM #CG24_TABPDC_SELECTED WHERE CONTO = '0102030005'"), "1");
}

TEST_F(ScreenStatements, ListsTheChildrenOfARootByNature) {
    buildChart();
    select(1);
    const auto ask = [&](int nature) {
        return rows(screenStatement("FigliDellaRadice"),
                    {numeric("@NATURA1", nature, 2), numeric("@NATURA2", nature, 2)});
    };
    EXPECT_EQ(ask(1), (Rows{{"0100000000", "01/00/00/0000", "Attività", "0", "0", "0", "1"}}));
    EXPECT_EQ(ask(0), Rows{});
    execute("UPDATE #CG24_TABPDC_SELECTED SET ATTIVO = 1 WHERE CG24_INDTIPOCONTO = 2");
    EXPECT_EQ(ask(2).at(0).at(4), "1");
}

TEST_F(ScreenStatements, ListsTheChildrenOfAnAccount) {
    buildChart();
    select(1);
    EXPECT_EQ(rows(screenStatement("FigliDelConto"),
                   {numeric("@GRUPPO", 1, 2), wide("@PARENT", "0102030000", 10), numeric("@NATURA", 1, 2)}),
              (Rows{{"0102030005", "01/02/03/0005", "Cassa", "1", "1", "0", "4"},
                    {"0102030006", "01/02/03/0006", "Banca", "1", "0", "1", "4"}}));
}

TEST_F(ScreenStatements, ListsTheIntermediateChildrenByTheProcedure) {
    buildChart();
    select(1);
    const std::vector<ado::BoundParameter> parameters{integer("@LIVELLO_PARENT", 1), integer("@GRUPPO", 1),
                                                      wide("@PARENT", "0100000000", 10),
                                                      integer("@NATURA", 1)};
    const auto result = session_->callProcedure("SPCI_INTERMEDIFIGLI", parameters, {});
    ASSERT_TRUE(result.rows);
    EXPECT_EQ(asText(*result.rows), (Rows{{"0102000000", "01/02/00/0000", "Correnti", "0", "0", "0", "2"}}));
}

TEST_F(ScreenStatements, FindsAnAnalyticAccount) {
    buildChart();
    select(1);
    EXPECT_EQ(rows(screenStatement("RicercaConto"), {wide("@CONTO", "0102030005", 10)}).size(), 1U);
    EXPECT_EQ(rows(screenStatement("RicercaConto"), {wide("@CONTO", "0102030000", 10)}).size(), 0U);
}

TEST_F(ScreenStatements, ActivatesWhatLiesUnderAHeader) {
    buildChart();
    select(1);
    execute("UPDATE #CG24_TABPDC_SELECTED SET ATTIVO = 0");
    execute("UPDATE #CG24_TABPDC_SELECTED SET CG24_INDTIPOCONTO = 2 WHERE CONTO = '0102030006'");
    send("AttivazioneSelezione");
    EXPECT_EQ(rows("SELECT CONTO FROM #CG24_TABPDC_SELECTED WHERE ATTIVO = 1"), (Rows{{"0102030006"}}));
}

TEST_F(ScreenStatements, ActivatesByTheProcedure) {
    const auto activate = [&](bool on, const std::string& account) {
        const std::vector<ado::BoundParameter> parameters{flag("@ON", on),       integer("@DITTA", 7),
                                                          integer("@GRUPPO", 1), wide("@CONTO", account, 10),
                                                          integer("@NATURA", 1), integer("@CORRELATI", 2)};
        session_->callProcedure("SPCI_VELDRANACT", parameters, {});
        Names active;
        for (const auto& row :
             rows("SELECT CI35_CONTO_CG24 FROM CI35_CONTIATTIVI WHERE CI35_DITTA_CG18 = 7")) {
            active.push_back(row[0]);
        }
        return active;
    };
    EXPECT_EQ(activate(true, "0100000000"), (Names{"0102030005", "0102030006"}));
    EXPECT_EQ(activate(false, "0102030005"), (Names{"0102030006"}));
    EXPECT_EQ(activate(false, "0102000000"), Names{});
}

TEST_F(ScreenStatements, CountsTheCorrelationsOfAnAccount) {
    EXPECT_EQ(cell(screenStatement("ConteggioCorrelazioni"), {wide("@CONTO", "0102030006", 10)}), "4");
}

TEST_F(ScreenStatements, FillsHeaderAndDetailOfTheAccount) {
    fillWorkingTables();
    EXPECT_EQ(rows(screenStatement("Testata")), (Rows{{"FTAC"}, {"NC  "}}));
    EXPECT_EQ(rows("SELECT PROG, SEGNO, PERCENTUALE, AVERE, DARE FROM #DETTAGLIO WHERE CAUSALE = 'FTAC' "
                   "ORDER BY PROG ASC"),
              (Rows{{"1", "2", "100.00", "A1             ", "NULL"},
                    {"2", "1", "60.50", "NULL", "B1             "},
                    {"3", "1", "39.50", "NULL", "B2             "}}));
    EXPECT_EQ(rows(screenStatement("DettaglioVuoto")), Rows{});
    send("SvuotamentoDettaglio");
    send("SvuotamentoTestata");
    EXPECT_EQ(rows(screenStatement("Testata")), Rows{});
}

TEST_F(ScreenStatements, TellsTheKeyOfTheDetailForItsBatchUpdates) {
    fillWorkingTables();
    const auto result = execute("SELECT * FROM #DETTAGLIO WHERE CAUSALE = 'FTAC' ORDER BY PROG ASC");
    Names keys;
    for (const auto& column : result.rows->columns()) {
        EXPECT_EQ(column.baseTable, "#DETTAGLIO");
        EXPECT_EQ(column.baseColumn, column.name);
        if (column.key) {
            keys.push_back(column.name);
        }
    }
    EXPECT_EQ(keys, (Names{"CAUSALE", "PROG"}));
    EXPECT_EQ(result.rows->columns()[3].precision, 5);
    EXPECT_EQ(result.rows->columns()[3].scale, 2);
}

TEST_F(ScreenStatements, ReplacesTheRowsOfACausaleInOneTransaction) {
    fillWorkingTables();
    const auto count = [&] {
        return cell("SELECT COUNT(*) FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = 7");
    };
    session_->begin();
    send("EliminazionePerSalvataggio");
    send("InserimentoPerSalvataggio");
    session_->rollback();
    EXPECT_EQ(count(), "4");
    session_->begin();
    send("EliminazionePerSalvataggio");
    send("InserimentoPerSalvataggio");
    session_->commit();
    EXPECT_EQ(session_->state().transactionCount(), 0);
}

TEST_F(ScreenStatements, ComputesTheTypologyMask) {
    EXPECT_EQ(rows(screenStatement("Tipologia"), {wide("@CAUSALE", "FTAC", 4), numeric("@SEGNO", 2, 1)}),
              (Rows{{"257", "0"}}));
    EXPECT_EQ(rows(screenStatement("Tipologia"), {wide("@CAUSALE", "NC", 4), numeric("@SEGNO", 1, 1)}),
              (Rows{{"1023", "1"}}));
    EXPECT_EQ(rows(screenStatement("Tipologia"), {wide("@CAUSALE", "ZZ", 4), numeric("@SEGNO", 1, 1)}),
              Rows{});
}

TEST_F(ScreenStatements, DescribesACostItem) {
    EXPECT_EQ(cell("SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(201, 'V1', 7, Null) "), "Voce");
    EXPECT_EQ(rows(screenStatement("DescrizioneVDS")).size(), 0U);
}

TEST_F(ScreenStatements, RefusesAMarkerThatNobodyResolved) {
    EXPECT_EQ(error(" SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(101, 'A1', <DITTA>, null) ").Number, 102);
}

TEST_F(ScreenStatements, ListsTheCausaliOfAnAccount) {
    Rows causali = rows(screenStatement("Causali"), {wide("@CONTO", "0102030006", 10)});
    std::sort(causali.begin(), causali.end());
    EXPECT_EQ(causali, (Rows{{"FTAC", "Fattura di acquisto"}, {"NC  ", "Nota di credito"}}));
}

TEST_F(ScreenStatements, CopiesAndDeletesTheCorrelationsOfAnAccount) {
    EXPECT_EQ(affected(screenStatement("CopiaConto"),
                       {wide("@DESTINAZIONE", "0102030005", 10), wide("@ORIGINE", "0102030006", 10)}),
              4);
    EXPECT_EQ(error(screenStatement("CopiaConto"),
                    {wide("@DESTINAZIONE", "0102030005", 10), wide("@ORIGINE", "0102030006", 10)})
                  .Number,
              2627);
    EXPECT_EQ(affected(screenStatement("EliminazioneCausale"),
                       {wide("@CONTO", "0102030005", 10), wide("@CAUSALE", "nc", 4)}),
              1);
    EXPECT_EQ(affected(screenStatement("EliminazioneConto"), {wide("@CONTO", "0102030005", 10)}), 3);
}

TEST_F(ScreenStatements, CopiesOneCausaleOntoAnother) {
    EXPECT_EQ(affected(screenStatement("CopiaCausale"),
                       {wide("@DESTINAZIONE", "GIRO", 4), wide("@CONTO", "0102030006", 10),
                        wide("@ORIGINE", "FTAC", 4)}),
              3);
    EXPECT_EQ(cell("SELECT SUM(CI15_PERC) FROM CI15_CORRCONTICOGE WHERE CI15_CODCAUS_CI03 = 'GIRO'"),
              "200.00");
}

TEST_F(ScreenStatements, RunsEveryTextThatTheScreenSends) {
    buildChart();
    select(2);
    fillWorkingTables();
    // Texts that make what is there already, or that belong to the set-up above.
    const std::set<std::string> done{"TabellaConti", "ChiaveConti",      "IndiceConti1",
                                     "IndiceConti2", "CreazioneTestata", "CreazioneDettaglio"};
    for (const auto& statement : screenStatements()) {
        if (done.contains(statement.name)) {
            continue;
        }
        if (statement.name.starts_with("Selezione")) {
            send("EliminazioneSelezione");
        }
        std::vector<ado::BoundParameter> parameters;
        for (std::size_t i = 0; i < statement.markers; ++i) {
            parameters.push_back(wide("@P" + std::to_string(i), "1", 10));
        }
        session_->begin();
        EXPECT_NO_THROW(execute(statement.text, parameters)) << statement.name;
        session_->state().transactionCount() > 0 && statement.name.starts_with("Selezione")
            ? session_->commit()
            : session_->rollback();
    }
}

} // namespace veldran::embedded::test
