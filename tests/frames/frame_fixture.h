#pragma once

#include "adapters/embedded/driver.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/form.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/frames/virtual_frame.h"
#include "tests/support/failing_driver.h"
#include "tests/support/host_fakes.h"
#include "tests/support/message_recorder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace veldran::test {

using Lines = std::vector<std::string>;

/// A database in a file of its own, with a table #RIGHE (CAUSALE, PROG: the key; SEGNO, PERCENTUALE, CONTO)
/// on an open connection whose statements may be made to fail.
class RowsDatabase {
public:
    RowsDatabase();
    ~RowsDatabase();
    RowsDatabase(const RowsDatabase&) = delete;
    RowsDatabase& operator=(const RowsDatabase&) = delete;

    void run(const std::string& statement) const { connection->Execute(statement); }
    /// Rows PROG 1..n of causale VEND: sign 2 for the first and 1 for the others, 10 percent each, account
    /// "C1"...
    void fill(int rows) const;
    /// "1:C1 2:C2", as the table holds the rows of a causale.
    std::string stored(const std::string& causale = "VEND") const;

    std::filesystem::path directory;
    std::shared_ptr<FailingDriver> driver;
    std::shared_ptr<ado::Connection> connection;
};

/// Numbers the rows from 1 and writes them all, as a frame's handler does.
void writeNumbered(ado::Recordset& rows);

/// A form with the controls of an editor of rows.
struct RowsForm : controls::Form {
    RowsForm();

    /// Types an account and leaves the field.
    void typeAccount(const std::string& code);
    Lines gridColumn(std::size_t column) const;

    controls::DataGrid grid{*this, "GRD_DETTAGLIO"};
    controls::ComboBox sign{*this, "CBO_SEGNO"};
    controls::NumericField percentage{*this, "TXT_PERC"};
    controls::LookupField account{*this, "TXT_CONTO"};
    controls::Label description{*this, "TXT_DESCRCONTO"};
    controls::FrameNavigator navigator{*this, "GNV_DETTAGLIO"};
};

/// Writes down the events of a frame, and refuses the "Before" event that the test names.
class FrameLog {
public:
    explicit FrameLog(frames::VirtualFrame& frame);

    Lines lines;
    std::string refused; ///< "BeforeUpdate" and its like
    Lines failures;
    /// What was written since the last call.
    Lines taken() { return std::exchange(lines, {}); }

private:
    void before(Event<bool&>& event, const std::string& name);
    void after(Event<bool>& event, const std::string& name);

    std::vector<Subscription> kept_;
};

/// A frame over #RIGHE with every control bound.
class FrameTest : public ::testing::Test {
protected:
    /// Opens the frame on the first of `rows` rows, and browses.
    void open(int rows, ado::LockTypeEnum lock = ado::adLockOptimistic,
              frames::LeavePolicy policy = frames::LeavePolicy::Ask);

    Value value(const char* column) const { return frame->Recordset()->Fields()[column].Value(); }
    std::string prog() const { return value("PROG").toText(); }
    void typeAccount(const std::string& code) { form.typeAccount(code); }
    /// A new row complete enough for the table.
    void addRow(const std::string& prog, const std::string& account);
    /// Keys of the navigator's buttons that can be pressed.
    Lines enabledButtons() const;
    Lines boxes() const { return told->boxTexts(); }
    Lines gridColumn(std::size_t column) const { return form.gridColumn(column); }

    RowsDatabase database;
    RowsForm form;
    std::shared_ptr<MessageLog> told = std::make_shared<MessageLog>();
    SharedJournal journal = std::make_shared<Journal>();
    MessageRecorder messages{told, journal};
    LookupFake lookups;
    std::unique_ptr<frames::VirtualFrame> frame;
    std::unique_ptr<FrameLog> log;
    Subscription reported;
};

} // namespace veldran::test
