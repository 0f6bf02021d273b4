#include "tests/frames/frame_fixture.h"

#include <algorithm>
#include <random>

namespace veldran::test {
namespace {

using namespace frames;

/// A header frame over causali and a detail frame over the rows of the current one, wired as a form wires
/// them.
class HeaderAndDetail : public ::testing::Test {
protected:
    HeaderAndDetail() {
        database.run("CREATE TABLE #TESTATA (CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL, PRIMARY KEY "
                     "(CAUSALE))");
        database.run("INSERT INTO #TESTATA (CAUSALE) VALUES ('ACQ')");
        database.run("INSERT INTO #TESTATA (CAUSALE) VALUES ('VEND')");
        database.run(
            "INSERT INTO #RIGHE (CAUSALE, PROG, SEGNO, PERCENTUALE, CONTO) VALUES ('ACQ', 1, 2, 100, 'A1')");
        database.fill(3);
        header.Bind(headerForm.navigator);
        header.Bind(headerForm.account, "CAUSALE");
        header.Open("SELECT * FROM #TESTATA", database.connection, ado::adLockOptimistic);
        detail.Bind(form.navigator);
        detail.Bind(form.grid);
        detail.Bind(form.sign, "SEGNO");
        detail.Bind(form.percentage, "PERCENTUALE");
        detail.Bind(form.account, "CONTO");
        detail.Open("SELECT * FROM #RIGHE WHERE 1 = 0", database.connection, ado::adLockBatchOptimistic);
        header.Follow(detail);
        wire();
        header.SetStatus(header.HasRecords() ? statusBrowsing : statusAddingNew);
    }

    void wire() {
        kept.push_back(header.RecordChanged.subscribe(
            [this](bool& changed) { changed = changed || detail.HasChangedRow() || detail.HasNewRow(); }));
        kept.push_back(header.BeforeUpdate.subscribe([this](bool& cancel) {
            if (!cancel && (detail.HasChangedRow() || detail.HasNewRow())) {
                cancel = !detail.UpdateBatch();
            }
        }));
        kept.push_back(header.AfterUndo.subscribe([this](bool) { detail.Requery(); }));
        kept.push_back(header.ChangeStatus.subscribe([this](std::int16_t status, std::int16_t previous) {
            if (status == statusBrowsing && previous != statusSaving) {
                detail.Reopen(rowsOf(causale()));
            } else if (status == statusAddingNew) {
                detail.Reopen("SELECT * FROM #RIGHE WHERE 1 = 0");
            }
        }));
        kept.push_back(detail.AfterAddNew.subscribe([this](bool success) {
            if (success) {
                detail.Recordset()->Fields()["CAUSALE"].Value(headerForm.account.Text());
                detail.Recordset()->Fields()["SEGNO"].Value(detail.Recordset()->RecordCount() == 1 ? 2 : 1);
            }
        }));
        kept.push_back(detail.UpdateBatchAll.subscribe([this](bool& written) {
            detail.DetachData();
            try {
                writeNumbered(*detail.Recordset());
                written = true;
            } catch (const ado::AdoError& failure) {
                failures.emplace_back(failure.what());
            }
            detail.AttachData();
        }));
    }

    std::string causale() const {
        return header.Recordset()->AbsolutePosition() > 0
                   ? nullSafeText(header.Recordset()->Fields()["CAUSALE"].Value())
                   : std::string();
    }
    static std::string rowsOf(const std::string& code) {
        return "SELECT * FROM #RIGHE WHERE CAUSALE = '" + code + "' ORDER BY PROG ASC";
    }
    std::string stored(const std::string& code) const { return database.stored(code); }
    void typeAccount(const std::string& code) { form.typeAccount(code); }

    RowsDatabase database;
    RowsForm headerForm;
    RowsForm form;
    std::shared_ptr<MessageLog> told = std::make_shared<MessageLog>();
    SharedJournal journal = std::make_shared<Journal>();
    MessageRecorder messages{told, journal};
    VirtualFrame header{messages, "la correlazione"};
    VirtualFrame detail{messages, "la riga", LeavePolicy::Save};
    Lines failures;
    std::vector<Subscription> kept;
};

TEST_F(HeaderAndDetail, ShowTheRowsOfTheCurrentHeader) {
    EXPECT_EQ(causale(), "ACQ");
    EXPECT_EQ(detail.Recordset()->RecordCount(), 1);
    header.MoveNext();
    EXPECT_EQ(detail.Recordset()->RecordCount(), 3);
    EXPECT_EQ(form.account.Text(), "C1");
}

TEST_F(HeaderAndDetail, AChangedRowIsAChangeOfTheHeader) {
    header.MoveNext();
    EXPECT_FALSE(header.IsRecordChanged());
    EXPECT_FALSE(headerForm.navigator.Button("Conferma").enabled);
    typeAccount("C9");
    EXPECT_TRUE(header.IsRecordChanged());
    EXPECT_TRUE(headerForm.navigator.Button("Conferma").enabled);
    told->answers = {services::answerCancel};
    EXPECT_FALSE(header.MovePrevious());
    EXPECT_EQ(told->boxes[0].text,
              "Ci sono modifiche non salvate.\r\nSalvare la correlazione prima di proseguire?");
    EXPECT_EQ(causale(), "VEND");
}

TEST_F(HeaderAndDetail, SavingTheHeaderWritesTheRowsAndDoesNotReloadThem) {
    header.MoveNext();
    detail.MoveNext();
    typeAccount("C9");
    const auto rows = detail.Recordset();
    EXPECT_TRUE(headerForm.navigator.Press("Conferma"));
    EXPECT_EQ(stored("VEND"), "1:C1 2:C9 3:C3");
    EXPECT_EQ(detail.Recordset(), rows);
    EXPECT_EQ(form.grid.CurrentRow(), 1U);
    EXPECT_FALSE(header.IsRecordChanged());
    EXPECT_FALSE(headerForm.navigator.Button("Conferma").enabled);
}

TEST_F(HeaderAndDetail, UndoingTheHeaderShowsTheStoredRows) {
    header.MoveNext();
    typeAccount("C9");
    detail.Update();
    told->answers = {services::answerYes};
    detail.Delete();
    EXPECT_TRUE(headerForm.navigator.Press("Annulla"));
    EXPECT_EQ(form.account.Text(), "C1");
    EXPECT_EQ(form.grid.RowCount(), 3U);
    EXPECT_FALSE(header.IsRecordChanged());
    EXPECT_EQ(stored("VEND"), "1:C1 2:C2 3:C3");
}

TEST_F(HeaderAndDetail, ANewHeaderIsKeyedWithItsRows) {
    headerForm.navigator.Press("Nuovo");
    EXPECT_EQ(header.Status(), statusAddingNew);
    EXPECT_FALSE(detail.HasRecords());
    headerForm.typeAccount("GIRO");
    EXPECT_EQ(causale(), "GIRO");
    detail.Reopen(rowsOf(causale()));
    typeAccount("G1");
    form.navigator.Press("Nuovo");
    typeAccount("G2");
    EXPECT_TRUE(header.Update());
    EXPECT_EQ(stored("GIRO"), "1:G1 2:G2");
    EXPECT_EQ(header.Recordset()->RecordCount(), 3);
    EXPECT_EQ(header.Status(), statusBrowsing);
    EXPECT_EQ(causale(), "GIRO");
}

TEST_F(HeaderAndDetail, ANewHeaderWithoutContentIsLeftWithoutAQuestion) {
    const ado::Bookmark first = header.Recordset()->Bookmark();
    header.AddNew();
    EXPECT_TRUE(header.MoveTo(first));
    EXPECT_TRUE(told->boxes.empty());
    EXPECT_EQ(causale(), "ACQ");
    EXPECT_EQ(detail.Recordset()->RecordCount(), 1);
}

TEST_F(HeaderAndDetail, AFailedBatchRefusesTheSaveAndKeepsTheRows) {
    header.MoveNext();
    typeAccount("C9");
    auto& plan = database.driver->plan();
    int statement = 1;
    for (;; ++statement) {
        const int raised = plan.failuresRaised();
        plan.failStatement(statement);
        const bool saved = header.Update();
        plan.heal();
        if (plan.failuresRaised() == raised) {
            EXPECT_TRUE(saved);
            break;
        }
        EXPECT_FALSE(saved);
        EXPECT_EQ(stored("VEND"), "1:C1 2:C2 3:C3");
        EXPECT_TRUE(header.IsRecordChanged());
        EXPECT_EQ(form.account.Text(), "C9");
    }
    EXPECT_GT(statement, 1);
    EXPECT_EQ(failures.size(), static_cast<std::size_t>(statement - 1));
    EXPECT_EQ(stored("VEND"), "1:C9 2:C2 3:C3");
}

TEST_F(HeaderAndDetail, RowsKeyedOneAfterTheOtherAgreeWithAModel) {
    header.MoveNext();
    std::mt19937 random(20240607);
    Lines model{"C1", "C2", "C3"};
    Lines saved = model;
    std::size_t at = 0;
    for (int step = 0; step < 400; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        const std::string code = "N" + std::to_string(step);
        switch (random() % 7) {
        case 0:
            ASSERT_TRUE(detail.AddNew());
            typeAccount(code);
            at = model.size();
            model.push_back(code);
            break;
        case 1:
            typeAccount(code);
            if (model.empty()) {
                model.push_back(code);
                at = 0;
            } else {
                model[at] = code;
            }
            break;
        case 2:
            if (!model.empty()) {
                const std::size_t row = random() % model.size();
                ASSERT_TRUE(form.grid.MoveFromView(row));
                at = row;
            }
            break;
        case 3:
            if (!model.empty() && detail.Status() != statusAddingNew) {
                told->answers = {services::answerYes};
                ASSERT_TRUE(detail.Delete());
                model.erase(model.begin() + static_cast<std::ptrdiff_t>(at));
                at = std::min(at, model.empty() ? 0 : model.size() - 1);
            }
            break;
        case 4:
            ASSERT_TRUE(detail.Update());
            break;
        case 5:
            ASSERT_TRUE(header.Update());
            saved = model;
            break;
        case 6:
            if (random() % 4 == 0) {
                ASSERT_TRUE(header.Undo());
                model = saved;
                detail.MoveFirst();
                at = 0;
            }
            break;
        }
        ASSERT_EQ(form.gridColumn(0), model);
        ASSERT_EQ(form.account.Text(), model.empty() ? "" : model[at]);
        std::string table;
        for (std::size_t row = 0; row < saved.size(); ++row) {
            table += (row == 0 ? "" : " ") + std::to_string(row + 1) + ":" + saved[row];
        }
        ASSERT_EQ(stored("VEND"), table);
    }
}

} // namespace
} // namespace veldran::test
