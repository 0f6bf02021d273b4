#pragma once

#include "platform/controls/data_grid.h"
#include "platform/controls/focus_catcher.h"
#include "platform/controls/frame_navigator.h"
#include "platform/controls/list_view.h"
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace veldran::test {

/// The small chart with a cost-accounting chart (101, groups 3.3.4), cost items (201, groups 3.3) and the
/// causali ACQ, VEND and GIRO; ACQ allows every kind of account on both sides, VEND centres of cost (8) in
/// Dare and connections (1) in Avere, GIRO none. Nothing is correlated.
Chart costChart();
/// The company over it.
Company costCompany();

/// One row of a correlation, with values as texts: a sign ("1" Dare, "2" Avere), "NULL" where there is none.
struct Row {
    std::string sign;
    std::string percentage;
    std::string account = "COLACQ0010";
    std::string item = "NULL";

    friend bool operator==(const Row&, const Row&) = default;
};
void PrintTo(const Row& row, std::ostream* out);
using Rows = std::vector<Row>;

/// Adds the stored correlation of an account under a causale to a chart.
Chart& store(Chart& chart, const std::string& account, const std::string& causale, const Rows& rows);

/// The editing keys of the clipboards.
inline constexpr int copyKey = controls::keyC;
inline constexpr int cutKey = controls::keyX;
inline constexpr int pasteKey = controls::keyV;

/// The user at the correlation editor: acts as a view reports it.
class Editor {
public:
    explicit Editor(Screen& screen) : screen_(screen), user_(screen.host.user()) {}

    /// Selects the account in the tree and presses the mode button.
    void enter(const std::string& account = "0102030005");
    void toggleMode() { control<controls::Button>("CMD_ATTIVAZIONI").ClickFromView(); }
    bool isOpen() const { return control<controls::Layout>("LAY_CORRELAZIONI").Visible(); }

    template<class ControlType>
    ControlType& control(std::string_view name) const {
        return user_.control<ControlType>(name);
    }
    controls::ListView& list() const { return control<controls::ListView>("LST_CAUSALI"); }
    controls::LookupField& causale() const { return control<controls::LookupField>("TXT_CAUSALE"); }
    controls::FrameNavigator& header() const { return control<controls::FrameNavigator>("INV_TESTATA"); }
    controls::DataGrid& grid() const { return control<controls::DataGrid>("GRD_DETTAGLIO"); }
    controls::ComboBox& sign() const { return control<controls::ComboBox>("CBO_SEGNO"); }
    controls::NumericField& percentage() const { return control<controls::NumericField>("TXT_PERC"); }
    controls::LookupField& account() const { return control<controls::LookupField>("TXT_CONTO"); }
    controls::LookupField& item() const { return control<controls::LookupField>("TXT_VDS"); }
    controls::FrameNavigator& detail() const { return control<controls::FrameNavigator>("GNV_DETTAGLIO"); }
    controls::Button& up() const { return control<controls::Button>("CMD_SU"); }
    controls::Button& down() const { return control<controls::Button>("CMD_GIU"); }
    controls::FocusCatcher& catcher() const { return control<controls::FocusCatcher>("PIC_FOCUSCATCH"); }
    /// Name of the control that has the focus; "" when none has.
    std::string focus() const;

    /// Types a causale into a new header and leaves the field.
    void typeCausale(const std::string& code);
    /// Fills the entry fields one after the other, as their views report it, without confirming the row.
    void typeRow(const Row& row);
    /// The same for a further row: the first one begins by being typed, others by "Nuovo".
    void addRow(const Row& row);
    /// Types another percentage into a row and stays in the field.
    void typePercentage(std::size_t row, const std::string& text) const;
    /// Keys another percentage into a row, without confirming it. \return whether the field took it
    bool changePercentage(std::size_t row, const std::string& text) const;
    /// A whole new correlation, not saved.
    void addCorrelation(const std::string& code, const Rows& rows);
    /// "Conferma" of the header. \return the frame's success.
    bool save() { return header().PressFromView("Conferma"); }
    void clickCausale(const std::string& code);
    /// Presses a key of the list together with Ctrl.
    void listKey(int key) const { list().KeyDownFromView(key, controls::shiftCtrl); }
    void clickRow(std::size_t row) { grid().MoveFromView(row); }

    /// What the grid shows, cell by cell.
    std::vector<std::vector<std::string>> shown() const;
    std::vector<std::string> listed() const;
    /// Rows of #DETTAGLIO of a causale in PROG order; numbers have to run from 1.
    Rows working(const std::string& causale) const;
    /// The same of CI15_CORRCONTICOGE, as another program sees them.
    Rows stored(const std::string& causale, const std::string& account = "0102030005") const {
        return storedIn(screen_.database, causale, account);
    }
    static Rows storedIn(const TestDatabase& database, const std::string& causale,
                         const std::string& account = "0102030005");
    std::vector<std::string> workingCausali() const;

private:
    Screen& screen_;
    ScreenUser user_;
};

using Texts = std::vector<std::string>;

/// The account whose correlations the tests edit.
inline constexpr const char* editedAccount = "0102030005";
/// An origin and the two destinations that share it out, one cost item each.
inline const Rows wholeRows = {{"2", "100.00", "COLACQ0010", "NULL"},
                               {"1", "60.00", "CDCPRO0010", "MATPRI"},
                               {"1", "40.00", "CDCPRO0020", "SERTRA"}};
/// `costChart` with one correlation of the edited account.
Chart withStored(const Rows& rows = wholeRows, const std::string& causale = "ACQ");

/// Opens the screen of a host whose lookup service knows every code that the tests key.
void openWithEveryCode(Screen& screen);
/// An open screen over the company that manages cost items, opened so.
std::unique_ptr<Screen> openEditor(const Chart& chart);
/// The same over a connection string of its own.
std::unique_ptr<Screen> openEditorAs(const Chart& chart, const Screen::SignIn& signIn);

/// The same, with its user.
class EditorTest : public ::testing::Test {
protected:
    void open(const Chart& chart = costChart(), Company company = costCompany(),
              Screen::Markers markers = Screen::Markers::Resolved);
    /// The same, with correlation mode entered and nothing recorded yet.
    void enter(const Chart& chart = costChart(), Company company = costCompany());

    Editor& e() { return *editor; }
    MessageLog& messages() { return *screen->host.messages; }
    Texts reported() { return messages().routines(); }
    LookupFake& lookups() { return screen->host.lookups; }

    std::optional<Screen> screen;
    std::optional<Editor> editor;
};

} // namespace veldran::test
