#include "tests/screen/correlation_fixture.h"

#include <ostream>

namespace veldran::test {

namespace {

std::string costAccount(int chart, const std::string& code, const std::string& description, int kind,
                        bool analytic) {
    return "INSERT INTO PC03_ANAGPDC (PC03_CODPDC_PC01, PC03_CONTO, PC03_DITTA_CG18, PC03_DESCR, "
           "PC03_INDTIPOCONTO, PC03_FLGANALITICO) VALUES (" +
           std::to_string(chart) + ", " + literal(code) + ", 0, " + literal(description) + ", " +
           std::to_string(kind) + ", " + (analytic ? "1" : "0") + ")";
}

std::string causale(const std::string& code, const std::string& description) {
    return "INSERT INTO CI03_CAUSALI (CI03_CODCAUS, CI03_DITTA_CG18, CI03_DESCR) VALUES (" + literal(code) +
           ", 0, " + literal(description) + ")";
}

/// Flags in the order of their bits.
std::string kinds(const std::string& code, int sign, std::int32_t mask) {
    std::string text =
        "INSERT INTO CI11_CONTROLLOCONTI VALUES (" + literal(code) + ", " + std::to_string(sign);
    for (int bit = 0; bit < 10; ++bit) {
        text += (mask >> bit) % 2 != 0 ? ", 1" : ", 0";
    }
    return text + ")";
}

Rows numbered(const std::vector<std::vector<std::string>>& rows) {
    Rows all;
    for (const auto& row : rows) {
        EXPECT_EQ(row.at(0), std::to_string(all.size() + 1)) << "numbers run from 1 without gaps";
        all.push_back({row.at(1), row.at(2), row.at(3), row.at(4)});
    }
    return all;
}

} // namespace

Chart costChart() {
    Chart chart = smallChart();
    chart
        .script("INSERT INTO PC01_PDC VALUES (101, N'Conti analitici', 1, N'.', 3, 3, 4, 0, 0), "
                "(201, N'Voci di spesa', 2, N'.', 3, 3, 0, 0, 0)")
        .script(causale("ACQ", "Acquisti"))
        .script(causale("VEND", "Vendite"))
        .script(causale("GIRO", "Giroconto"))
        .script(kinds("ACQ", 1, 1023))
        .script(kinds("ACQ", 2, 1023))
        .script(kinds("VEND", 1, 8))
        .script(kinds("VEND", 2, 1))
        .script(costAccount(101, "COLACQ", "Collegamento acquisti", 0, false))
        .script(costAccount(101, "COLACQ0010", "Costi di acquisto", 1, true))
        .script(costAccount(101, "CDCPRO0010", "Reparto produzione", 8, true))
        .script(costAccount(101, "CDCPRO0020", "Reparto verniciatura", 8, true))
        .script(costAccount(201, "MATPRI", "Materie prime", 0, true))
        .script(costAccount(201, "SERTRA", "Trasporti", 0, true));
    return chart;
}

Company costCompany() {
    Company company;
    company.costChart = 101;
    company.itemChart = 201;
    return company;
}

void PrintTo(const Row& row, std::ostream* out) {
    *out << "{" << row.sign << ", " << row.percentage << ", " << row.account << ", " << row.item << "}";
}

Chart& store(Chart& chart, const std::string& account, const std::string& causale, const Rows& rows) {
    int number = 0;
    for (const Row& row : rows) {
        const bool hasItem = row.item != "NULL";
        chart.script("INSERT INTO CI15_CORRCONTICOGE VALUES (1, " + literal(causale) + ", " +
                     std::to_string(chart.code()) + ", " + literal(account) + ", " +
                     std::to_string(++number) + ", 101, " + literal(row.account) + ", " +
                     (hasItem ? "201" : "NULL") + ", " + (hasItem ? literal(row.item) : "NULL") + ", " +
                     row.sign + ", " + row.percentage + ")");
    }
    return chart;
}

void Editor::enter(const std::string& account) {
    user_.search(account);
    toggleMode();
}

std::string Editor::focus() const {
    const controls::Control* active = screen_.host.form().ActiveControl();
    return active == nullptr ? std::string() : active->Name();
}

void Editor::typeCausale(const std::string& code) {
    keyInto(causale(), code);
}

void Editor::typeRow(const Row& row) {
    sign().SetFocus();
    sign().ChooseFromView(row.sign == "2" ? 0 : 1);
    percentage().SetFocus();
    if (row.percentage != "NULL") {
        percentage().TypeFromView(row.percentage);
        percentage().LeaveFromView();
    }
    keyInto(account(), row.account);
    item().SetFocus();
    if (row.item != "NULL") {
        item().TypeFromView(row.item);
        item().LeaveFromView();
    }
}

void Editor::addRow(const Row& row) {
    if (grid().RowCount() > 0) {
        detail().PressFromView("Nuovo");
    }
    typeRow(row);
}

void Editor::typePercentage(std::size_t row, const std::string& text) const {
    grid().MoveFromView(row);
    percentage().SetFocus();
    percentage().TypeFromView(text);
}

bool Editor::changePercentage(std::size_t row, const std::string& text) const {
    typePercentage(row, text);
    return percentage().LeaveFromView();
}

void Editor::addCorrelation(const std::string& code, const Rows& rows) {
    if (!causale().Enabled()) {
        header().PressFromView("Nuovo");
    }
    typeCausale(code);
    for (const Row& row : rows) {
        addRow(row);
    }
}

void Editor::clickCausale(const std::string& code) {
    list().SetFocus();
    for (std::size_t i = 0; i < list().Items().size(); ++i) {
        if (list().Items()[i]->Text() == code) {
            list().SelectFromView(i);
            return;
        }
    }
    ADD_FAILURE() << code << " is not in the list";
}

std::vector<std::vector<std::string>> Editor::shown() const {
    std::vector<std::vector<std::string>> all;
    for (std::size_t row = 0; row < grid().RowCount(); ++row) {
        auto& cells = all.emplace_back();
        for (std::size_t column = 0; column < grid().Columns().size(); ++column) {
            cells.push_back(grid().CellText(row, column));
        }
    }
    return all;
}

std::vector<std::string> Editor::listed() const {
    std::vector<std::string> codes;
    for (const auto& item : list().Items()) {
        codes.push_back(item->Text());
    }
    return codes;
}

Rows Editor::working(const std::string& causale) const {
    return numbered(screen_.query("SELECT PROG, SEGNO, PERCENTUALE, CONTO, CONTOVDS FROM #DETTAGLIO WHERE "
                                  "CAUSALE = '" +
                                  causale + "' ORDER BY PROG"));
}

Rows Editor::storedIn(const TestDatabase& database, const std::string& causale, const std::string& account) {
    return numbered(database.rows(
        "SELECT CI15_PROG, CI15_INDSEGNO, CI15_PERC, CI15_CONTO_PC03, CI15_VDS_PC03 FROM CI15_CORRCONTICOGE "
        "WHERE CI15_DITTA_CG18 = 1 AND CI15_CODPDC_CG10 = 1 AND CI15_CONTO_CG24 = '" +
        account + "' AND CI15_CODCAUS_CI03 = '" + causale + "' ORDER BY CI15_PROG"));
}

std::vector<std::string> Editor::workingCausali() const {
    std::vector<std::string> codes;
    for (const auto& row : screen_.query("SELECT CAUSALE FROM #TESTATA ORDER BY CAUSALE")) {
        codes.push_back(row.at(0));
    }
    return codes;
}

Chart withStored(const Rows& rows, const std::string& causale) {
    Chart chart = costChart();
    store(chart, editedAccount, causale, rows);
    return chart;
}

void openWithEveryCode(Screen& screen) {
    LookupFake& lookups = screen.host.lookups;
    lookups.descriptions = {{"ACQ", "Acquisti"},
                            {"VEND", "Vendite"},
                            {"GIRO", "Giroconto"},
                            {"COLACQ0010", "Costi di acquisto"},
                            {"CDCPRO0010", "Reparto produzione"},
                            {"CDCPRO0020", "Reparto verniciatura"},
                            {"MATPRI", "Materie prime"},
                            {"SERTRA", "Trasporti"}};
    lookups.structures[101] = {10, {{0, 3}, {3, 3}, {6, 4}}, '.', false};
    lookups.structures[201] = {6, {{0, 3}, {3, 3}}, '.', false};
    screen.host.open();
}

std::unique_ptr<Screen> openEditor(const Chart& chart) {
    return openEditorAs(chart, std::identity());
}

std::unique_ptr<Screen> openEditorAs(const Chart& chart, const Screen::SignIn& signIn) {
    auto screen = std::make_unique<Screen>(chart, costCompany(), Screen::Markers::Resolved, signIn);
    openWithEveryCode(*screen);
    return screen;
}

void EditorTest::open(const Chart& chart, Company company, Screen::Markers markers) {
    editor.reset();
    screen.emplace(chart, std::move(company), markers);
    openWithEveryCode(*screen);
    editor.emplace(*screen);
}

void EditorTest::enter(const Chart& chart, Company company) {
    open(chart, std::move(company));
    e().enter();
    screen->forget();
}

} // namespace veldran::test
