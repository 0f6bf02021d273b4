#include "benchmarks/screen.h"

#include "benchmarks/screen_host.h"
#include "platform/ado/recordset.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/list_view.h"
#include "platform/controls/popup_menu.h"

#include <cctype>
#include <optional>
#include <stdexcept>

namespace veldran::bench {

namespace {

/// What the user has before him, so that no action counts the looking for it.
struct Controls {
    explicit Controls(const test::ScreenUser& user)
        : tree(user.tree()), filters(user.filters()),
          soughtAccount(user.control<controls::LookupField>("TXT_CONTORICERCA")),
          search(user.control<controls::Button>("BUT_RICERCA")),
          mode(user.control<controls::Button>("CMD_ATTIVAZIONI")),
          list(user.control<controls::ListView>("LST_CAUSALI")),
          header(user.control<controls::FrameNavigator>("INV_TESTATA")),
          causale(user.control<controls::LookupField>("TXT_CAUSALE")),
          grid(user.control<controls::DataGrid>("GRD_DETTAGLIO")) {}

    controls::TreeView& tree;
    controls::TabStrip& filters;
    controls::LookupField& soughtAccount;
    controls::Button& search;
    controls::Button& mode;
    controls::ListView& list;
    controls::FrameNavigator& header;
    controls::LookupField& causale;
    controls::DataGrid& grid;
};

class Screen : public Subject {
public:
    explicit Screen(const ChartFile& file) : host_(makeHost(file)) {}

    void open() override {
        host_->open();
        controls_.emplace(host_->user());
        menus_ = host_->form().PopupRequested.subscribe(
            [this](controls::PopupMenu& menu, const controls::PopupPlace&) { menu_ = &menu; });
    }
    void filter(int filter) override { controls_->filters.Select(filter); }
    void expand() override { tree().SetExpanded(*node_, true); }
    void collapse() override { tree().SetExpanded(*node_, false); }
    void toggleCheck() override { tree().CheckFromView(*node_); }
    void search(const std::string& account) override {
        controls_->soughtAccount.TypeFromView(account);
        controls_->search.ClickFromView();
    }
    void enterCorrelations() override { controls_->mode.ClickFromView(); }
    void moveToCausale() override { list().SelectFromView(row_); }
    void save() override { controls_->header.PressFromView("Conferma"); }
    void pasteOntoCausale() override {
        host_->messages->answers = {services::answerYes};
        list().KeyDownFromView(controls::keyV, controls::shiftCtrl);
    }
    void duplicateOnto(const std::string& causale) override {
        host_->windows->whileModal = [&](controls::Form& form) {
            const test::ScreenUser user(form);
            auto& field = user.control<controls::LookupField>("TXT_CAUSALE");
            field.TypeFromView(causale);
            field.LeaveFromView();
            user.control<controls::Button>("CMD_CONFERMA").ClickFromView();
        };
        list().KeyDownFromView(controls::keyApps, controls::shiftNone);
        menu_->ClickFromView("ListDuplica");
        host_->windows->whileModal = {};
    }
    void leaveCorrelations() override { controls_->mode.ClickFromView(); }
    void pasteOntoAccount() override {
        host_->messages->answers = {services::answerYes};
        tree().KeyDownFromView(controls::keyV, controls::shiftCtrl);
    }
    void close() override {
        menus_ = {};
        controls_.reset();
        host_->form().Unload();
        host_->windows->DoEvents();
    }

    void aim(const Place& place) override {
        node_ = &nodeAt(*host_, place);
        tree().SelectFromView(*node_);
    }
    void choose(const std::string& causale) override {
        list().SetFocus();
        for (row_ = 0; row_ < list().Items().size(); ++row_) {
            if (list().Items()[row_]->Text() == causale) {
                return;
            }
        }
        throw std::runtime_error("the list lacks " + causale);
    }
    void key(const std::string& causale, const CorrelationRows& rows) override {
        controls_->header.PressFromView("Nuovo");
        controls::LookupField& field = controls_->causale;
        field.SetFocus();
        field.TypeFromView(causale);
        field.LeaveFromView();
        for (const CorrelationRow& row : rows) {
            keyRow(*host_, row);
        }
        requireNoErrors(*host_);
    }
    void copyCausale(const std::string& from, const std::string& onto) override {
        choose(from);
        moveToCausale();
        list().KeyDownFromView(controls::keyC, controls::shiftCtrl);
        choose(onto);
        moveToCausale();
    }
    void copyAccount() override { tree().KeyDownFromView(controls::keyC, controls::shiftCtrl); }

    std::array<bool, 4> rootChecks() override {
        requireNoErrors(*host_);
        return {tree().RootAt(0)->Checked(), tree().RootAt(1)->Checked(), tree().RootAt(2)->Checked(),
                tree().RootAt(3)->Checked()};
    }
    TreeRows children() override {
        requireNoErrors(*host_);
        TreeRows rows;
        for (const controls::TreeNode* child = node_->Child(); child != nullptr; child = child->Next()) {
            rows.push_back({child->Text(), child->Checked()});
        }
        return rows;
    }
    std::string selectedText() override {
        requireNoErrors(*host_);
        return tree().SelectedItem()->Text();
    }
    CorrelationRows shownRows() override {
        requireNoErrors(*host_);
        const controls::DataGrid& grid = controls_->grid;
        CorrelationRows rows;
        for (std::size_t row = 0; row < grid.RowCount(); ++row) {
            const std::string origin = cellCode(grid, row, "AVERE");
            const std::string share = cellCode(grid, row, "PERCENTUALE");
            rows.push_back({origin.empty() ? 1 : 2, share.empty() ? 0 : std::stoll(share),
                            origin.empty() ? cellCode(grid, row, "DARE") : origin});
        }
        return rows;
    }
    std::vector<std::string> listedCausali() override {
        std::vector<std::string> codes;
        for (const auto& item : list().Items()) {
            codes.push_back(item->Text());
        }
        return codes;
    }
    Sums chart() override { return sums("#CG24_TABPDC"); }
    Sums selection() override { return sums("#CG24_TABPDC_SELECTED"); }

private:
    controls::TreeView& tree() { return controls_->tree; }
    controls::ListView& list() { return controls_->list; }
    /// Letters and digits of a cell: a code without its separators, a percentage in hundredths.
    static std::string cellCode(const controls::DataGrid& grid, std::size_t row, std::string_view field) {
        for (std::size_t column = 0; column < grid.Columns().size(); ++column) {
            if (grid.Columns()[column].dataField == field) {
                std::string code = grid.CellText(row, column);
                std::erase_if(code, [](unsigned char c) { return std::isalnum(c) == 0; });
                return code;
            }
        }
        throw std::runtime_error("the grid lacks " + std::string(field));
    }
    Sums sums(const std::string& table) {
        requireNoErrors(*host_);
        const auto rows = host_->connection().Execute(
            "SELECT COUNT(*) AS A, SUM(CASE ATTIVO WHEN 1 THEN 1 ELSE 0 END) AS B, SUM(CASE CORRELATO WHEN 1 "
            "THEN 1 ELSE 0 END) AS C, SUM(CAST(NRLIVELLO AS INT)) AS D, COUNT(PARENT) AS E, COUNT(DISTINCT "
            "LIVELLO2) AS F FROM " +
            table);
        const auto cell = [&](int column) {
            return rows->Fields()[column].Value().isNull() ? 0 : rows->Fields()[column].Value().toInteger();
        };
        return {cell(0), cell(1), cell(2), cell(3), cell(4), cell(5)};
    }

    std::unique_ptr<test::TestHost> host_;
    std::optional<Controls> controls_; ///< while the screen is open
    controls::TreeNode* node_ = nullptr;
    std::size_t row_ = 0; ///< of the causale that was chosen, in the list
    controls::PopupMenu* menu_ = nullptr;
    Subscription menus_;
};

} // namespace

std::unique_ptr<Subject> makeScreen(const ChartFile& file) {
    return std::make_unique<Screen>(file);
}

} // namespace veldran::bench
