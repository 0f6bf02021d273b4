// Routines of the accounts' work areas one by one, on a real session.
#include "platform/ado/recordset.h"
#include "tests/screen/broken_tree_view.h"
#include "tests/screen/expected_statements.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/failing_driver.h"
#include "tests/support/recording_driver.h"
#include "tests/support/test_database.h"
#include "tests/support/work_areas.h"
#include "tree/appunti_correlazioni.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Rows = std::vector<std::vector<std::string>>;
using Labels = std::vector<std::string>;

/// Work areas over a small chart, none of whose working tables has been built.
class WorkAreaRoutines : public testing::Test {
protected:
    Rows query(const std::string& select) {
        const auto rows = w.connection->Execute(select);
        Rows all;
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            std::vector<std::string>& texts = all.emplace_back();
            for (const ado::Field& field : rows->Fields()) {
                texts.push_back(asText(field.Value()));
            }
        }
        return all;
    }
    std::shared_ptr<ado::Connection> opened() {
        auto connection = ado::Connection::create(recording);
        connection->Open(database.connectionString());
        return connection;
    }
    TabelleDiLavoro& tables() { return w.areas->tabelle; }
    Filtri& filters() { return w.areas->filtri; }
    void buildTables() {
        tables().ConfigurazioneTabelleTemporanee();
        filters().CaricamentoConti();
        ASSERT_TRUE(w.messages->errors.empty());
        recording->log().clear();
    }
    /// The selection differs from the chart's working table in both flags.
    void changeBothFlags() {
        buildTables();
        filters().ImpostazioneCorrelato(true, "0100000002");
        w.connection->Execute("UPDATE #CG24_TABPDC_SELECTED SET ATTIVO = 1", nullptr,
                              ado::adCmdText | ado::adExecuteNoRecords);
        recording->log().clear();
    }

    TestDatabase database{Chart(2)
                              .account("0100000000", "Attività", 1)
                              .account("0100000001", "Cassa", 1)
                              .account("0100000002", "Banca", 1)
                              .activated("0100000001")};
    std::shared_ptr<FailingDriver> failing = std::make_shared<FailingDriver>(database.driver());
    std::shared_ptr<RecordingDriver> recording = std::make_shared<RecordingDriver>(failing);
    WorkAreas w{opened(), {database.connectionString(), "1", 1, 2}};
};

Rows flagOf(const std::string& first, const std::string& second, const std::string& third) {
    return {{"0100000000", first}, {"0100000001", second}, {"0100000002", third}};
}

const char* const activeInChart = "SELECT CONTO, ATTIVO FROM #CG24_TABPDC ORDER BY INDICE";
const char* const correlatedInChart = "SELECT CONTO, CORRELATO FROM #CG24_TABPDC ORDER BY INDICE";
const char* const correlatedInSelection =
    "SELECT CONTO, CORRELATO FROM #CG24_TABPDC_SELECTED ORDER BY INDICE";

TEST_F(WorkAreaRoutines, BuildTheWorkingTableOnceForEachConnection) {
    tables().ConfigurazioneTabelleTemporanee();
    ASSERT_TRUE(w.messages->errors.empty());
    database.run({"DELETE FROM CI35_CONTIATTIVI"});
    tables().ConfigurazioneTabelleTemporanee();
    EXPECT_EQ(w.labels(), Labels{"ConfigurazioneTabelleTemporanee:"});
    EXPECT_EQ(w.messages->errors.at(0).error.Number, 2714);
    ASSERT_EQ(w.messages->errors.at(0).connectionErrors.size(), 1U);
    EXPECT_EQ(w.messages->errors.at(0).connectionErrors[0].Number, 2714);
    EXPECT_EQ(query(activeInChart), flagOf("0", "1", "0")) << "the first table stands as it was";
    EXPECT_EQ(w.screen.GetMousePointer(), services::mouseDefault);
}

TEST_F(WorkAreaRoutines, BuildTheWorkingTableAtASecondTryWhenTheFirstMadeNone) {
    failing->plan().failStatement(1);
    tables().ConfigurazioneTabelleTemporanee();
    EXPECT_EQ(w.labels(), Labels{"ConfigurazioneTabelleTemporanee:"});
    w.messages->clear();
    tables().ConfigurazioneTabelleTemporanee();
    EXPECT_TRUE(w.messages->errors.empty());
    EXPECT_EQ(query(activeInChart), flagOf("0", "1", "0"));
}

TEST_F(WorkAreaRoutines, RefuseASecondTryOnATableThatWasLeftHalfDone) {
    failing->plan().failContaining("CI35_CONTIATTIVI");
    tables().ConfigurazioneTabelleTemporanee();
    tables().ConfigurazioneTabelleTemporanee();
    ASSERT_EQ(w.messages->errors.size(), 2U);
    EXPECT_EQ(w.messages->errors[0].error.Number, 50000);
    EXPECT_EQ(w.messages->errors[1].error.Number, 2714);
    EXPECT_EQ(query(activeInChart), flagOf("0", "0", "0")) << "what was done before the failure stays";
}

TEST_F(WorkAreaRoutines, SetTheCorrelationOfOneAccountOfTheSelectionByOneCommand) {
    buildTables();
    filters().ImpostazioneCorrelato(true, "0100000002");
    filters().ImpostazioneCorrelato(false, "0100000001");
    const auto expectedFor = [](bool correlated, const char* account) {
        return sent(expected::markCorrelation(1))
            .with("@CORRELATO", ado::adBoolean, 0, correlated)
            .with("@CONTO", ado::adWChar, 10, account)
            .timeout(0)
            .withoutRows();
    };
    const auto messages = recording->log().messages();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0], expectedFor(true, "0100000002"));
    EXPECT_EQ(messages[1], expectedFor(false, "0100000001"));
    EXPECT_EQ(query(correlatedInSelection), flagOf("0", "0", "1"));
    EXPECT_EQ(query(correlatedInChart), flagOf("0", "0", "0")) << "not yet written back";
    filters().ImpostazioneCorrelato(false, "0100000002");
    EXPECT_EQ(query(correlatedInSelection), flagOf("0", "0", "0"));
}

TEST_F(WorkAreaRoutines, KeepTheCommandOfTheCorrelationUntilItIsReleased) {
    buildTables();
    filters().ImpostazioneCorrelato(true, "0100000002");
    w.areas->ambiente.codicePDC = 9;
    filters().ImpostazioneCorrelato(true, "0100000002");
    filters().Rilascia();
    filters().ImpostazioneCorrelato(true, "0100000002");
    EXPECT_EQ(recording->log().texts(),
              (std::vector<std::string>{expected::markCorrelation(1), expected::markCorrelation(1),
                                        expected::markCorrelation(9)}));
}

TEST_F(WorkAreaRoutines, LeaveAFailedCorrelationToTheirCallerAndWorkTheNextTime) {
    buildTables();
    failing->plan().failContaining("CORRELATO = ?");
    EXPECT_THROW(filters().ImpostazioneCorrelato(true, "0100000002"), ado::AdoError);
    failing->plan().failContaining("SET #CG24_TABPDC.CORRELATO");
    EXPECT_NO_THROW(filters().ImpostazioneCorrelato(true, "0100000002"));
    EXPECT_THROW(filters().RiportoCorrelato(), ado::AdoError);
    EXPECT_EQ(query(correlatedInChart), flagOf("0", "0", "0"));
    EXPECT_NO_THROW(filters().RiportoCorrelato());
    EXPECT_EQ(query(correlatedInChart), flagOf("0", "0", "1"));
    EXPECT_TRUE(w.messages->errors.empty());
}

TEST_F(WorkAreaRoutines, WriteTheCorrelationBackAndNothingElse) {
    changeBothFlags();
    filters().RiportoCorrelato();
    ASSERT_EQ(recording->log().messages().size(), 1U);
    EXPECT_EQ(recording->log().messages()[0], sent(expected::writeBack("CORRELATO")).withoutRows());
    EXPECT_EQ(query(correlatedInChart), flagOf("0", "0", "1"));
    EXPECT_EQ(query(activeInChart), flagOf("0", "1", "0"));
}

TEST_F(WorkAreaRoutines, WriteTheActivationBackAndNothingElse) {
    changeBothFlags();
    filters().RiportoAttivo();
    ASSERT_EQ(recording->log().messages().size(), 1U);
    EXPECT_EQ(recording->log().messages()[0], sent(expected::writeBack("ATTIVO")).withoutRows());
    EXPECT_EQ(query(correlatedInChart), flagOf("0", "0", "0"));
    EXPECT_EQ(query(activeInChart), flagOf("1", "1", "1"));
}

TEST_F(WorkAreaRoutines, WriteNothingBackForAccountsThatTheFilterHides) {
    buildTables();
    w.controls.STR_FILTRI.Select(2);
    filters().CaricamentoConti();
    filters().ImpostazioneCorrelato(true, "0100000001");
    filters().ImpostazioneCorrelato(true, "0100000002");
    filters().RiportoCorrelato();
    EXPECT_EQ(query(correlatedInChart), flagOf("0", "1", "0"));
}

TEST_F(WorkAreaRoutines, ReportAKeyThatCannotBeMade) {
    const std::string conto(10000, '1');
    {
        const FailingAllocations noMemory(conto.size());
        EXPECT_EQ(w.areas->albero.GetKeyByCode(1, conto), "");
    }
    EXPECT_EQ(w.labels(), Labels{"GetKeyByCode:"});
    EXPECT_EQ(w.messages->errors.at(0).error.Number, 7);
    EXPECT_EQ(w.messages->errors.at(0).error.Description, "Memoria esaurita");
    EXPECT_EQ(w.areas->albero.GetKeyByCode(1, conto), "*P" + conto + "*");
}

TEST_F(WorkAreaRoutines, ReportAPlaceholderThatTheTreeCannotShow) {
    buildTables();
    w.areas->albero.LoadTree();
    {
        const BrokenTreeView view(w.controls.TRW_CONTI, BrokenTreeView::Appended, "CONTIPATRIMONIALI");
        EXPECT_EQ(w.areas->albero.CaricaDummyChild(w.root(1)), nullptr);
    }
    EXPECT_EQ(w.labels(), Labels{"CaricaDummyChild:"});
    w.areas->albero.LoadTree();
    w.controls.TRW_CONTI.SetExpanded(w.root(1), true);
    w.areas->albero.TRW_CONTI_Expand(w.root(1));
    EXPECT_NE(w.node("*P0100000000*"), nullptr);
    EXPECT_EQ(w.messages->errors.size(), 1U);
}

TEST_F(WorkAreaRoutines, ReportAClipboardThatFailsUnderTheKeyThatAsked) {
    class BrokenClipboard final : public AppuntiCorrelazioni {
    public:
        bool CorrelazioneInSospeso() const override { return true; }
        void AttivazioneCopiaTree(controls::TreeNode&) override {}
        void AttivazioneTagliaTree(controls::TreeNode&) override {}
        void IncollaCorrelazioneTree(controls::TreeNode&) override {
            throw std::runtime_error("appunti guasti");
        }
    } clipboard;
    buildTables();
    w.areas->albero.LoadTree();
    w.areas->ricerca.EsecuzioneRicerca("0100000001");
    w.areas->albero.UsaAppunti(&clipboard);
    controls::KeyEvent paste{controls::keyV, controls::shiftCtrl};
    w.areas->albero.TRW_CONTI_KeyDown(paste);
    EXPECT_EQ(w.labels(), Labels{"TRW_CONTI_KeyDown"});
    w.areas->albero.UsaAppunti(nullptr);
    w.areas->albero.TRW_CONTI_KeyDown(paste);
    EXPECT_EQ(w.messages->errors.size(), 1U);
}

TEST_F(WorkAreaRoutines, KnowTheHeaderCodeOfAnAccountByOneCommand) {
    EXPECT_EQ(tables().GetCodeHeader("0100000000"), "01");
    EXPECT_EQ(tables().GetCodeHeader("0100000002"), "0100000002");
    const auto expectedFor = [](const char* account) {
        return sent(expected::header(2)).with("@CONTO", ado::adWChar, 10, account).timeout(0);
    };
    ASSERT_EQ(recording->log().messages().size(), 2U);
    EXPECT_EQ(recording->log().messages()[0], expectedFor("0100000000"));
    EXPECT_EQ(recording->log().messages()[1], expectedFor("0100000002"));
    w.areas->ambiente.livelli = 0;
    EXPECT_EQ(tables().GetCodeHeader("0100000000"), "01") << "the command of the first use";
    tables().Rilascia();
    EXPECT_EQ(tables().GetCodeHeader("0100000000"), "") << "the server yields NULL without levels";
    EXPECT_TRUE(w.messages->errors.empty());
}

} // namespace

} // namespace veldran::test
