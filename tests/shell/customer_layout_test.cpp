#include "shell/customer_layout.h"
#include "shell/screen_navigator.h"
#include "tests/shell/form_samples.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class CustomerLayoutTest : public testing::Test {
protected:
    void apply(const std::string& text) {
        shell::CustomerLayout(folder_.write("layout.json", text), navigator_, complaints_.reporter())
            .ApplyLayout(form_);
    }

    ScratchFolder folder_;
    shell::ScreenNavigator navigator_;
    Complaints complaints_;
    SampleForm form_;
};

TEST_F(CustomerLayoutTest, SetsCaptionTipVisibilityEnabledStateAndOrderByName) {
    apply(R"({"FRM_PROVA": {
        "BUT_RICERCA": {"didascalia": "&Cerca", "suggerimento": "Cerca il conto", "abilitato": false},
        "etichetta": {"visibile": false}, "TXT_CONTO": {"ordine": 3}, "FRM_PROVA": {"didascalia": "Conti"}}})");
    EXPECT_EQ(form_.BUT_RICERCA.Caption(), "&Cerca");
    EXPECT_EQ(form_.BUT_RICERCA.ToolTipText(), "Cerca il conto");
    EXPECT_FALSE(form_.BUT_RICERCA.Enabled());
    EXPECT_FALSE(form_.ETICHETTA.Visible());
    EXPECT_EQ(form_.TXT_CONTO.TabIndex(), 3);
    EXPECT_EQ(form_.Caption(), "Conti");
    EXPECT_EQ(complaints_.text(), "");
}

TEST_F(CustomerLayoutTest, LeavesOtherFormsAlone) {
    apply(R"({"FRM_ALTRA": {"BUT_RICERCA": {"didascalia": "no"}, "NON_ESISTE": 1}})");
    EXPECT_EQ(form_.BUT_RICERCA.Caption(), "");
    EXPECT_EQ(complaints_.text(), "");
}

TEST_F(CustomerLayoutTest, NamesAnUnknownControlAndAppliesTheRest) {
    apply(R"({"FRM_PROVA": {"BUT_RICERCHE": {"didascalia": "x"}, "BUT_RICERCA": {"didascalia": "Cerca"}}})");
    EXPECT_EQ(form_.BUT_RICERCA.Caption(), "Cerca");
    EXPECT_THAT(complaints_.text(),
                AllOf(HasSubstr("layout.json»"), HasSubstr("chiave «FRM_PROVA/BUT_RICERCHE»"),
                      HasSubstr("non ha un controllo con questo nome")));
}

TEST_F(CustomerLayoutTest, NamesAValueOfTheWrongTypeAndAppliesTheRest) {
    apply(
        R"({"FRM_PROVA": {"BUT_RICERCA": {"visibile": "no", "colore": "rosso", "ordine": 0, "didascalia": "Ok"},
                            "ETICHETTA": true}})");
    EXPECT_TRUE(form_.BUT_RICERCA.Visible());
    EXPECT_EQ(form_.BUT_RICERCA.TabIndex(), 0);
    EXPECT_EQ(form_.BUT_RICERCA.Caption(), "Ok");
    EXPECT_THAT(complaints_.text(), AllOf(HasSubstr("«FRM_PROVA/BUT_RICERCA/visibile»"),
                                          HasSubstr("«FRM_PROVA/BUT_RICERCA/colore»"),
                                          HasSubstr("parte da 1"), HasSubstr("«FRM_PROVA/ETICHETTA»")));
    EXPECT_EQ(complaints_.told().size(), 1U) << "one message for the whole file";
}

TEST_F(CustomerLayoutTest, TellsWhereABrokenFileBreaksAndChangesNothing) {
    apply("{\n  \"FRM_PROVA\": { oggi }\n}");
    EXPECT_THAT(complaints_.text(), AllOf(HasSubstr("layout.json»"), HasSubstr("riga 2, colonna 18")));
    EXPECT_TRUE(form_.BUT_RICERCA.Visible());
}

TEST_F(CustomerLayoutTest, TellsThatTheFileIsMissing) {
    shell::CustomerLayout(folder_.path() / "manca.json", navigator_, complaints_.reporter())
        .ApplyLayout(form_);
    EXPECT_THAT(complaints_.text(), HasSubstr("manca.json» non esiste"));
}

TEST_F(CustomerLayoutTest, IsSilentForACustomerWithoutLayout) {
    shell::CustomerLayout({}, navigator_, complaints_.reporter()).ApplyLayout(form_);
    EXPECT_EQ(complaints_.text(), "");
}

TEST_F(CustomerLayoutTest, AddressesTheFormThatTheScreenHandsOver) {
    const auto handed = std::make_shared<SampleForm>();
    const auto subscription = navigator_.InitializeLayoutObjectModel.subscribe(
        [&](services::ObjectModel& model) { model.form = handed; });
    apply(R"({"FRM_PROVA": {"BUT_RICERCA": {"didascalia": "Cerca"}}})");
    EXPECT_EQ(handed->BUT_RICERCA.Caption(), "Cerca");
    EXPECT_EQ(form_.BUT_RICERCA.Caption(), "");
}

} // namespace
} // namespace veldran::test
