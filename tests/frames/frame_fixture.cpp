#include "tests/frames/frame_fixture.h"

#include <unistd.h>

#include <utility>

namespace veldran::test {

RowsDatabase::RowsDatabase() {
    static int number = 0;
    directory = std::filesystem::temp_directory_path() /
                ("veldran-frames-" + std::to_string(getpid()) + "-" + std::to_string(++number));
    std::filesystem::create_directories(directory);
    driver = std::make_shared<FailingDriver>(std::make_shared<embedded::EmbeddedDriver>());
    connection = ado::Connection::create(driver);
    connection->Open("Provider=VeldranEmbedded;Data Source=" + (directory / "prova.vdb").string() +
                     ";Mode=Create");
    run("CREATE TABLE #RIGHE (CAUSALE NCHAR(4) COLLATE DATABASE_DEFAULT NOT NULL, PROG DECIMAL(3) NOT NULL, "
        "SEGNO DECIMAL(2) NULL, PERCENTUALE DECIMAL(5, 2) NULL, CONTO NCHAR(6) COLLATE DATABASE_DEFAULT "
        "NULL, "
        "PRIMARY KEY (CAUSALE, PROG))");
}

RowsDatabase::~RowsDatabase() {
    if (connection->State() == ado::adStateOpen) {
        connection->Close();
    }
    std::error_code ignored; // a directory that cannot be removed is no failure of the test
    std::filesystem::remove_all(directory, ignored);
}

void RowsDatabase::fill(int rows) const {
    for (int row = 1; row <= rows; ++row) {
        run("INSERT INTO #RIGHE (CAUSALE, PROG, SEGNO, PERCENTUALE, CONTO) VALUES ('VEND', " +
            std::to_string(row) + ", " + (row == 1 ? "2" : "1") + ", 10, 'C" + std::to_string(row) + "')");
    }
}

std::string RowsDatabase::stored(const std::string& causale) const {
    const auto rows =
        connection->Execute("SELECT PROG, CONTO FROM #RIGHE WHERE CAUSALE = '" + causale + "' ORDER BY PROG");
    std::string text;
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        text += (text.empty() ? "" : " ") + rows->Fields()["PROG"].Value().toText() + ":" +
                nullSafeText(rows->Fields()["CONTO"].Value());
    }
    return text;
}

void writeNumbered(ado::Recordset& rows) {
    const auto walker = rows.Clone();
    for (int number = 1; !walker->EndOfFile(); walker->MoveNext()) {
        walker->Fields()["PROG"].Value(number++);
    }
    if (walker->RecordCount() > 0) {
        walker->MoveFirst(); // which ends the edit of the last one
    }
    rows.UpdateBatch(ado::adAffectAll);
}

RowsForm::RowsForm() : Form("FRM_RIGHE") {
    grid.AddColumn("Conto", "CONTO", 1000);
    grid.AddColumn("Perc.", "PERCENTUALE", 800);
    sign.AddItem("Avere", 2);
    sign.AddItem("Dare", 1);
    percentage.SetFormatMask("##0.00;-##0.00;;");
    percentage.SetCaption("% ripartizione");
    account.SetCaption("Codice conto");
}

void RowsForm::typeAccount(const std::string& code) {
    account.TypeFromView(code);
    account.LeaveFromView();
}

Lines RowsForm::gridColumn(std::size_t column) const {
    Lines texts;
    for (std::size_t row = 0; row < grid.RowCount(); ++row) {
        texts.push_back(grid.CellText(row, column));
    }
    return texts;
}

FrameLog::FrameLog(frames::VirtualFrame& frame) {
    before(frame.BeforeAddNew, "BeforeAddNew");
    before(frame.BeforeUpdate, "BeforeUpdate");
    before(frame.BeforeUndo, "BeforeUndo");
    before(frame.BeforeDelete, "BeforeDelete");
    after(frame.AfterAddNew, "AfterAddNew");
    after(frame.AfterUpdate, "AfterUpdate");
    after(frame.AfterUndo, "AfterUndo");
    after(frame.AfterDelete, "AfterDelete");
    kept_.push_back(frame.ChangeStatus.subscribe([this](std::int16_t status, std::int16_t previous) {
        lines.push_back(std::to_string(previous) + "->" + std::to_string(status));
    }));
}

void FrameLog::before(Event<bool&>& event, const std::string& name) {
    kept_.push_back(event.subscribe([this, name](bool& cancel) {
        lines.push_back(name);
        cancel = cancel || refused == name;
    }));
}

void FrameLog::after(Event<bool>& event, const std::string& name) {
    kept_.push_back(
        event.subscribe([this, name](bool success) { lines.push_back(name + (success ? "" : " failed")); }));
}

void FrameTest::open(int rows, ado::LockTypeEnum lock, frames::LeavePolicy policy) {
    database.fill(rows);
    frame = std::make_unique<frames::VirtualFrame>(messages, "la riga", policy);
    log = std::make_unique<FrameLog>(*frame);
    reported = frame->Failed.subscribe(
        [this](const std::exception& failure) { log->failures.emplace_back(failure.what()); });
    form.account.SetLookupService(&lookups);
    frame->Open("SELECT * FROM #RIGHE ORDER BY PROG ASC", database.connection, lock);
    frame->Bind(form.navigator);
    frame->Bind(form.grid);
    frame->Bind(form.sign, "SEGNO");
    frame->Bind(form.percentage, "PERCENTUALE");
    frame->Bind(form.account, "CONTO", &form.description);
    frame->SetStatus(frames::statusBrowsing);
    log->lines.clear();
    database.driver->plan().restartCount();
}

void FrameTest::addRow(const std::string& prog, const std::string& account) {
    ASSERT_TRUE(frame->AddNew());
    frame->Recordset()->Fields()["CAUSALE"].Value("VEND");
    frame->Recordset()->Fields()["PROG"].Value(prog);
    typeAccount(account);
}

Lines FrameTest::enabledButtons() const {
    Lines keys;
    for (const auto& button : form.navigator.Buttons()) {
        if (button.enabled) {
            keys.push_back(button.key);
        }
    }
    return keys;
}

} // namespace veldran::test
