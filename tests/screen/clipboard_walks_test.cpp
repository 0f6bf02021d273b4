// Random walks over several accounts that mix activation, editing and both clipboards, compared after each
// step with a simple model.
#include "platform/controls/popup_menu.h"
#include "tests/screen/clipboard_model.h"
#include "tree/cnode_info.h"

#include <rapidcheck.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>

namespace veldran::test {

enum class Move {
    Activate,
    CopyAccount,
    CutAccount,
    PasteAccount,
    Reload,
    Enter,
    Leave,
    Click,
    Change,
    Save,
    CopyCausale,
    CutCausale,
    PasteCausale,
    Forget,
    Delete,
    Duplicate
};

/// In activation mode the first choice is of an account, in correlation mode of a causale.
struct Step {
    Move inActivation = Move::Enter;
    Move inCorrelation = Move::Leave;
    std::size_t choice = 0;
    Answer answer = Answer::Save;
    bool confirmed = true;
};

std::ostream& operator<<(std::ostream& out, const Step& step) {
    static const char* const names[] = {"activate", "copy account", "cut account",  "paste account",
                                        "reload",   "enter",        "leave",        "click",
                                        "change",   "save",         "copy causale", "cut causale",
                                        "paste",    "forget",       "delete",       "duplicate"};
    static const char* const answers[] = {"yes", "no", "cancel"};
    return out << names[static_cast<int>(step.inActivation)] << " or "
               << names[static_cast<int>(step.inCorrelation)] << " " << step.choice << " "
               << answers[static_cast<int>(step.answer)] << (step.confirmed ? "" : ", declined");
}

} // namespace veldran::test

namespace rc {

template<>
struct Arbitrary<veldran::test::Step> {
    static Gen<veldran::test::Step> arbitrary() {
        using veldran::test::Answer;
        using veldran::test::Move;
        using veldran::test::Step;
        return gen::build<Step>(
            gen::set(&Step::inActivation, gen::weightedElement<Move>({{1, Move::Activate},
                                                                      {3, Move::CopyAccount},
                                                                      {3, Move::CutAccount},
                                                                      {6, Move::PasteAccount},
                                                                      {1, Move::Reload},
                                                                      {5, Move::Enter}})),
            gen::set(&Step::inCorrelation, gen::weightedElement<Move>({{2, Move::Leave},
                                                                       {4, Move::Click},
                                                                       {4, Move::Change},
                                                                       {2, Move::Save},
                                                                       {3, Move::CopyCausale},
                                                                       {3, Move::CutCausale},
                                                                       {6, Move::PasteCausale},
                                                                       {1, Move::Forget},
                                                                       {2, Move::Delete},
                                                                       {4, Move::Duplicate}})),
            gen::set(&Step::choice, gen::inRange<std::size_t>(0, 1000)),
            gen::set(&Step::answer, gen::element(Answer::Save, Answer::Discard, Answer::Stay)),
            gen::set(&Step::confirmed, gen::weightedElement<bool>({{4, true}, {1, false}})));
    }
};

} // namespace rc

namespace veldran::test {

namespace {

using Correlations = ClipboardModel::Correlations;
using Mode = ClipboardModel::Mode;

const Texts accounts = {"0101010001", "0102030005", "0102030006"};
const Texts causali = {"ACQ", "GIRO", "VEND"};
const Rows keyed = {{"2", "70.00"}, {"1", "20.00", "CDCPRO0010", "MATPRI"}};

std::map<std::string, Correlations> initially() {
    return {{accounts[0], {}},
            {accounts[1],
             {{"ACQ", {{"2", "100.00"}, {"1", "60.00", "CDCPRO0010", "NULL"}}}, {"VEND", {{"2", "50.00"}}}}},
            {accounts[2], {{"GIRO", {{"2", "30.00", "COLACQ0010", "MATPRI"}}}}}};
}

Chart chartWith(const std::map<std::string, Correlations>& stored) {
    Chart chart = costChart();
    for (const auto& [account, correlations] : stored) {
        for (const auto& [causale, rows] : correlations) {
            store(chart, account, causale, rows);
        }
    }
    return chart;
}

services::MessageBoxAnswer said(Answer answer) {
    return answer == Answer::Save      ? services::answerYes
           : answer == Answer::Discard ? services::answerNo
                                       : services::answerCancel;
}

services::MessageBoxAnswer said(bool confirmed) {
    return confirmed ? services::answerYes : services::answerNo;
}

/// The screen and its model, taking the same steps.
class Walk {
public:
    Walk() : screen_(openEditor(chartWith(initially()))), editor_(*screen_), model_(initially()) {
        menu_ = screen_->host.form().PopupRequested.subscribe(
            [this](controls::PopupMenu& opened, const controls::PopupPlace&) { opened_ = &opened; });
        load();
        compare();
    }

    void take(const Step& step) {
        step_ = &step;
        screen_->host.messages->answers.clear();
        if (model_.isEditing()) {
            edit(step.inCorrelation, causali[step.choice % causali.size()]);
        } else {
            activate(step.inActivation, accounts[step.choice % accounts.size()]);
        }
        compare();
    }

private:
    ScreenUser user() { return screen_->host.user(); }
    controls::TreeNode& node(const std::string& account) { return user().node(accountKey(1, account)); }
    /// Every account's node, so that its mark can be seen.
    void load() {
        for (const std::string& account : accounts) {
            user().search(account);
        }
    }
    template<class... Answers>
    void answer(Answers... answers) {
        screen_->host.messages->answers = {said(answers)...};
    }

    void activate(Move move, const std::string& account) {
        user().search(account);
        switch (move) {
        case Move::Activate:
            user().checkByKeyboard(node(account));
            model_.activate(account);
            break;
        case Move::CopyAccount:
            user().key(controls::keyC, controls::shiftCtrl);
            model_.takeAccount(account, Mode::Copy);
            break;
        case Move::CutAccount:
            user().key(controls::keyX, controls::shiftCtrl);
            model_.takeAccount(account, Mode::Cut);
            break;
        case Move::PasteAccount:
            answer(step_->confirmed);
            user().key(controls::keyV, controls::shiftCtrl);
            model_.pasteAccount(account, step_->confirmed);
            break;
        case Move::Reload:
            user().filter(2);
            user().filter(1);
            load();
            break;
        default:
            editor_.toggleMode();
            RC_ASSERT(editor_.isOpen());
            model_.enter(account);
            break;
        }
    }

    void edit(Move move, const std::string& causale) {
        if (move == Move::Leave) {
            answer(step_->answer);
            editor_.toggleMode();
            RC_ASSERT(editor_.isOpen() != model_.leave(step_->answer));
        } else if (model_.current().empty()) {
            editor_.addCorrelation(causale, keyed);
            RC_ASSERT(editor_.save());
            model_.key(causale, keyed);
        } else {
            editCausale(move, causale);
        }
    }

    void editCausale(Move move, const std::string& causale) {
        editor_.list().SetFocus();
        switch (move) {
        case Move::Click:
            click(causale);
            break;
        case Move::Change:
            change(std::to_string(1 + step_->choice % 69) + ".00");
            break;
        case Move::Save:
            RC_ASSERT(editor_.header().CanPress("Conferma") == model_.isChanged());
            if (model_.isChanged()) {
                RC_ASSERT(editor_.save());
                model_.save();
            }
            break;
        case Move::CopyCausale:
            answer(step_->answer);
            listKey(controls::keyC);
            model_.takeCausale(Mode::Copy, step_->answer);
            break;
        case Move::CutCausale:
            answer(step_->answer);
            choose("ListTaglia");
            model_.takeCausale(Mode::Cut, step_->answer);
            break;
        case Move::PasteCausale:
            paste(causale);
            break;
        case Move::Forget:
            choose("ListAnnulla");
            model_.forgetCausale();
            break;
        case Move::Delete:
            answer(step_->confirmed);
            choose("ListElimina");
            model_.deleteCausale(step_->confirmed);
            break;
        default:
            duplicate(causale);
            break;
        }
    }

    void listKey(int key) { editor_.list().KeyDownFromView(key, controls::shiftCtrl); }
    void choose(const std::string& item) {
        editor_.list().KeyDownFromView(controls::keyApps, controls::shiftNone);
        opened_->ClickFromView(item);
    }
    bool click(const std::string& causale) {
        if (!model_.correlations().contains(causale)) {
            return false;
        }
        answer(step_->answer);
        editor_.clickCausale(causale);
        return model_.goTo(causale, step_->answer);
    }
    void change(const std::string& percentage) {
        const std::string& stored = model_.correlations().at(model_.current()).front().percentage;
        if (percentage == stored || percentage == model_.rows().front().percentage) {
            return;
        }
        RC_ASSERT(editor_.changePercentage(0, percentage));
        model_.change(percentage);
    }
    void paste(const std::string& causale) {
        if (!click(causale)) {
            return;
        }
        if (model_.isChanged()) {
            answer(step_->answer, step_->confirmed);
        } else {
            answer(step_->confirmed);
        }
        listKey(controls::keyV);
        if (model_.listHoldsSomething()) {
            model_.pasteCausale(step_->answer, step_->confirmed);
        }
    }
    void duplicate(const std::string& causale) {
        screen_->host.windows->whileModal = [&](controls::Form& dialog) {
            auto& field = dynamic_cast<controls::LookupField&>(*dialog.FindControl("TXT_CAUSALE"));
            field.TypeFromView(causale);
            field.LeaveFromView();
            dynamic_cast<controls::Button&>(*dialog.FindControl("CMD_CONFERMA")).ClickFromView();
        };
        answer(step_->answer);
        choose("ListDuplica");
        model_.duplicate(causale, step_->answer);
    }

    void compare() {
        RC_ASSERT(screen_->host.messages->errors.empty());
        RC_ASSERT(screen_->host.messages->boxes.size() == static_cast<std::size_t>(model_.asked));
        RC_ASSERT(screen_->host.screen.GetMousePointer() == services::mouseDefault);
        compareStored();
        if (model_.isEditing()) {
            compareEditor();
        } else {
            compareMarks();
        }
    }
    void compareStored() {
        std::map<std::string, Correlations> found;
        for (const std::string& account : accounts) {
            found[account];
        }
        for (const Texts& row : screen_->database.rows(
                 "SELECT CI15_CONTO_CG24, CI15_CODCAUS_CI03, CI15_PROG, CI15_INDSEGNO, CI15_PERC, "
                 "CI15_CONTO_PC03, CI15_VDS_PC03 FROM CI15_CORRCONTICOGE ORDER BY CI15_CONTO_CG24, "
                 "CI15_CODCAUS_CI03, CI15_PROG")) {
            Rows& rows = found[row.at(0)][row.at(1)];
            rows.push_back({row.at(3), row.at(4), row.at(5), row.at(6)});
            RC_ASSERT(row.at(2) == std::to_string(rows.size()));
        }
        RC_ASSERT(found == model_.stored());
        Texts activated;
        for (const Texts& row : screen_->database.rows(
                 "SELECT CI35_CONTO_CG24 FROM CI35_CONTIATTIVI ORDER BY CI35_CONTO_CG24")) {
            activated.push_back(row.at(0));
        }
        RC_ASSERT(activated == Texts(model_.activated().begin(), model_.activated().end()));
    }
    void compareMarks() {
        Texts marked;
        for (const std::string& account : accounts) {
            RC_ASSERT(CNodeInfo::Di(node(account))->IsCorrelato() == model_.isMarked(account));
            if (model_.isMarked(account)) {
                marked.push_back(account);
            }
        }
        for (const char* table : {"#CG24_TABPDC", "#CG24_TABPDC_SELECTED"}) {
            Texts found;
            for (const Texts& row : screen_->query(std::string("SELECT CONTO FROM ") + table +
                                                   " WHERE CORRELATO = 1 ORDER BY CONTO")) {
                found.push_back(row.at(0));
            }
            RC_ASSERT(found == marked);
        }
    }
    void compareEditor() {
        Texts listed = editor_.listed();
        std::sort(listed.begin(), listed.end());
        Texts expected;
        for (const auto& [causale, rows] : model_.correlations()) {
            expected.push_back(causale);
        }
        RC_ASSERT(listed == expected);
        RC_ASSERT(editor_.workingCausali() == expected);
        RC_ASSERT(editor_.causale().Text() == model_.current());
        RC_ASSERT(editor_.causale().Enabled() == model_.current().empty());
        RC_ASSERT(editor_.header().CanPress("Conferma") == model_.isChanged());
        if (!model_.current().empty()) {
            RC_ASSERT(editor_.list().SelectedItem() != nullptr);
            RC_ASSERT(editor_.list().SelectedItem()->Text() == model_.current());
        }
        const Rows rows = model_.rows();
        const auto shown = editor_.shown();
        RC_ASSERT(shown.size() == rows.size());
        for (std::size_t row = 0; row < rows.size(); ++row) {
            RC_ASSERT(shown[row][3] == rows[row].percentage + "%");
        }
        for (const auto& [causale, working] : model_.correlations()) {
            RC_ASSERT(editor_.working(causale) == working);
        }
    }

    std::unique_ptr<Screen> screen_;
    Editor editor_;
    ClipboardModel model_;
    const Step* step_ = nullptr;
    controls::PopupMenu* opened_ = nullptr;
    Subscription menu_;
};

/// Bounded, unless the caller of the program asks for more.
[[maybe_unused]] const int bounded = setenv("RC_PARAMS", "max_success=40 max_size=70", 0);

TEST(ClipboardWalks, LeaveStoreMarksAndEditorAsTheModelHasThem) {
    EXPECT_TRUE(rc::check("a walk over accounts and causali", [](const std::vector<Step>& steps) {
        Walk walk;
        for (const Step& step : steps) {
            walk.take(step);
        }
    }));
}

} // namespace

} // namespace veldran::test
