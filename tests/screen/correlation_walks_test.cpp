// Random walks over the correlation editor, compared after each step with a simple model of what it holds.
#include "tests/screen/correlation_model.h"

#include <rapidcheck.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>

namespace veldran::test {

enum class Act { AddRow, Percentage, Sign, Up, Down, DeleteRow, Undo, New, Click, Save, DeleteHeader, Leave };

struct Step {
    Act act = Act::AddRow;
    int choice = 0;
    Answer answer = Answer::Save;
};

std::ostream& operator<<(std::ostream& out, const Step& step) {
    static const char* const names[] = {"add row", "percentage", "sign",          "up",
                                        "down",    "delete row", "undo",          "new",
                                        "click",   "save",       "delete header", "leave"};
    static const char* const answers[] = {"yes", "no", "cancel"};
    return out << names[static_cast<int>(step.act)] << " " << step.choice << " "
               << answers[static_cast<int>(step.answer)];
}

} // namespace veldran::test

namespace rc {

template<>
struct Arbitrary<veldran::test::Step> {
    static Gen<veldran::test::Step> arbitrary() {
        using veldran::test::Act;
        using veldran::test::Answer;
        using veldran::test::Step;
        return gen::build<Step>(
            gen::set(&Step::act, gen::weightedElement<Act>({{8, Act::AddRow},
                                                            {4, Act::Percentage},
                                                            {2, Act::Sign},
                                                            {2, Act::Up},
                                                            {2, Act::Down},
                                                            {2, Act::DeleteRow},
                                                            {2, Act::Undo},
                                                            {4, Act::New},
                                                            {4, Act::Click},
                                                            {6, Act::Save},
                                                            {1, Act::DeleteHeader},
                                                            {2, Act::Leave}})),
            gen::set(&Step::choice, gen::inRange(0, 10000)),
            gen::set(&Step::answer, gen::element(Answer::Save, Answer::Discard, Answer::Stay)));
    }
};

} // namespace rc

namespace veldran::test {

namespace {

const Texts causali = {"ACQ", "GIRO", "VEND"};
const Texts accounts = {"CDCPRO0010", "CDCPRO0020", "COLACQ0010"};

std::map<std::string, Rows> initially() {
    return {{"ACQ", {{"2", "100.00", "COLACQ0010", "NULL"}, {"1", "60.00", "CDCPRO0010", "NULL"}}}};
}

Chart chartWith(const std::map<std::string, Rows>& correlations) {
    Chart chart = costChart();
    for (const auto& [causale, rows] : correlations) {
        store(chart, editedAccount, causale, rows);
    }
    return chart;
}

std::string percentageOf(int choice) {
    return std::to_string(choice % 12 * 10) + ".00";
}

template<class Container>
Container sorted(Container all) {
    std::sort(all.begin(), all.end());
    return all;
}

/// The editor and its model, taking the same steps.
class Walk {
public:
    Walk() : screen_(openEditor(chartWith(initially()))), editor_(*screen_), model_(initially()) {
        editor_.enter();
        model_.enter();
        compare();
    }

    void take(const Step& step) {
        const auto choice = static_cast<std::size_t>(step.choice);
        const std::size_t count = model_.rows().size();
        const std::size_t row = count == 0 ? 0 : choice % count;
        const bool onRows = !model_.current().empty();
        switch (step.act) {
        case Act::AddRow:
            if (onRows && count < 8) {
                addRow(
                    {choice % 3 == 0 ? "2" : "1", percentageOf(step.choice), accounts[choice % 3], "NULL"});
            }
            break;
        case Act::Percentage:
            if (count > 0 && model_.rows()[row].percentage != percentageOf(step.choice / 8)) {
                setPercentage(row, percentageOf(step.choice / 8));
            }
            break;
        case Act::Sign:
            if (count > 0) {
                setSign(row, accounts[choice / 8 % 3]);
            }
            break;
        case Act::Up:
            exchange(row, row == 0 ? count : row - 1, "CMD_SU", row);
            break;
        case Act::Down:
            exchange(row, row + 1 < count ? row : count, "CMD_GIU", row);
            break;
        case Act::DeleteRow:
            if (count > 0) {
                deleteRow(row);
            }
            break;
        case Act::Undo:
            RC_ASSERT(editor_.header().CanPress("Annulla") == (model_.isChanged() || model_.isAdding()));
            if (model_.isChanged()) {
                RC_ASSERT(editor_.header().PressFromView("Annulla"));
                model_.undo();
            }
            break;
        case Act::New:
            newHeader(causali[choice % causali.size()], step.answer);
            break;
        case Act::Click:
            click(causali[choice % causali.size()], step.answer);
            break;
        case Act::Save:
            save();
            break;
        case Act::DeleteHeader:
            deleteHeader();
            break;
        case Act::Leave:
            leave(step.answer);
            break;
        }
        compare();
    }

private:
    bool isListed(const std::string& causale) const {
        const auto& headers = model_.headers();
        return std::find(headers.begin(), headers.end(), causale) != headers.end();
    }
    void answer(Answer answer) {
        screen_->host.messages->answers = {answer == Answer::Save      ? services::answerYes
                                           : answer == Answer::Discard ? services::answerNo
                                                                       : services::answerCancel};
    }
    void confirmRow() {
        if (editor_.detail().CanPress("Conferma")) {
            RC_ASSERT(editor_.detail().PressFromView("Conferma"));
        }
    }

    void addRow(const Row& row) {
        editor_.addRow(row);
        confirmRow();
        model_.addRow(row);
    }
    void setPercentage(std::size_t row, const std::string& percentage) {
        RC_ASSERT(editor_.changePercentage(row, percentage));
        confirmRow();
        model_.setPercentage(row, percentage);
    }
    void setSign(std::size_t row, const std::string& account) {
        const std::string sign = model_.rows()[row].sign == "2" ? "1" : "2";
        editor_.clickRow(row);
        editor_.sign().SetFocus();
        editor_.sign().ChooseFromView(sign == "2" ? 0 : 1);
        RC_ASSERT(editor_.account().Text().empty());
        keyInto(editor_.account(), account);
        confirmRow();
        model_.setSign(row, sign, account);
    }
    /// `upper`: the row that changes places with the one behind it; beyond the last one, none does.
    void exchange(std::size_t row, std::size_t upper, const char* button, std::size_t current) {
        const Rows rows = model_.rows();
        if (rows.empty()) {
            return;
        }
        editor_.clickRow(current);
        auto& pressed = editor_.control<controls::Button>(button);
        RC_ASSERT(pressed.Enabled() == (upper < rows.size()));
        if (upper < rows.size() && !(rows[upper] == rows[upper + 1])) {
            pressed.ClickFromView();
            model_.exchange(upper);
            RC_ASSERT(editor_.grid().CurrentRow() == std::optional(upper == row ? row + 1 : upper));
        }
    }
    void deleteRow(std::size_t row) {
        editor_.clickRow(row);
        answer(Answer::Save);
        ++confirmations_;
        RC_ASSERT(editor_.detail().PressFromView("Elimina"));
        model_.deleteRow(row);
    }
    void newHeader(const std::string& causale, Answer said) {
        if (isListed(causale) || causale == model_.current()) {
            return; // a second correlation of a causale is refused: the editor's own tests prove it
        }
        answer(said);
        const bool already = model_.isAdding() && !model_.isChanged();
        const bool begun = already || editor_.header().PressFromView("Nuovo");
        RC_ASSERT(begun == model_.newHeader(causale, said));
        if (begun) {
            keyInto(editor_.causale(), causale);
        }
    }
    void click(const std::string& causale, Answer said) {
        if (!isListed(causale)) {
            return;
        }
        answer(said);
        editor_.clickCausale(causale);
        model_.goTo(causale, said);
    }
    void save() {
        if (editor_.header().CanPress("Conferma")) {
            RC_ASSERT(editor_.save() == model_.save());
        }
    }
    void deleteHeader() {
        if (model_.isAdding() || model_.current().empty()) {
            RC_ASSERT(!editor_.header().CanPress("Elimina"));
            return;
        }
        answer(Answer::Save);
        ++confirmations_;
        RC_ASSERT(editor_.header().PressFromView("Elimina"));
        model_.deleteHeader();
    }
    void leave(Answer said) {
        answer(said);
        editor_.toggleMode();
        const bool left = model_.leave(said);
        RC_ASSERT(editor_.isOpen() == !left);
        if (left) {
            compareStored();
            editor_.toggleMode();
            model_.enter();
        }
    }

    void compareStored() {
        for (const std::string& causale : causali) {
            const auto found = model_.stored().find(causale);
            RC_ASSERT(editor_.stored(causale) == (found == model_.stored().end() ? Rows{} : found->second));
        }
    }
    void compare() {
        RC_ASSERT(screen_->host.messages->errors.empty());
        RC_ASSERT(screen_->host.messages->boxes.size() ==
                  static_cast<std::size_t>(model_.asked + model_.refusals + confirmations_));
        compareStored();
        for (const std::string& causale : causali) {
            RC_ASSERT(editor_.working(causale) == model_.working(causale));
        }
        RC_ASSERT(editor_.workingCausali() == sorted(model_.headers()));
        RC_ASSERT(sorted(editor_.listed()) == sorted(model_.headers()));
        RC_ASSERT(editor_.causale().Text() == model_.current());
        RC_ASSERT(editor_.causale().Enabled() == model_.isAdding());
        RC_ASSERT(editor_.grid().Enabled() == !model_.current().empty());
        RC_ASSERT(editor_.header().CanPress("Conferma") == model_.isChanged());
        if (!model_.isAdding() && !model_.current().empty()) {
            RC_ASSERT(editor_.list().SelectedItem() != nullptr);
            RC_ASSERT(editor_.list().SelectedItem()->Text() == model_.current());
        }
        compareRows();
    }
    void compareRows() {
        const Rows rows = model_.rows();
        const auto shown = editor_.shown();
        RC_ASSERT(shown.size() == rows.size());
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const std::string& code = rows[row].account;
            const std::string display = code.substr(0, 3) + "." + code.substr(3, 3) + "." + code.substr(6);
            const bool origin = rows[row].sign == "2";
            RC_ASSERT(shown[row][0] == (origin ? display : ""));
            RC_ASSERT(shown[row][1] == (origin ? "" : display));
            RC_ASSERT(shown[row][3] == rows[row].percentage + "%");
        }
    }

    std::unique_ptr<Screen> screen_;
    Editor editor_;
    CorrelationModel model_;
    int confirmations_ = 0; ///< questions before a deletion
};

/// Bounded, unless the caller of the program asks for more.
[[maybe_unused]] const int bounded = setenv("RC_PARAMS", "max_success=40 max_size=50", 0);

TEST(CorrelationWalks, LeaveFramesTablesListAndStoreAsTheModelHasThem) {
    EXPECT_TRUE(rc::check("a walk over the correlation editor", [](const std::vector<Step>& steps) {
        Walk walk;
        for (const Step& step : steps) {
            walk.take(step);
        }
    }));
}

} // namespace

} // namespace veldran::test
