#include "shell/customer_script.h"
#include "shell/screen_navigator.h"
#include "tests/shell/form_samples.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTest>

namespace veldran::test {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;

class CustomerScriptTest : public testing::Test {
protected:
    void SetUp() override { form_.Load(); }

    std::shared_ptr<services::ScriptObject> build(const std::string& text,
                                                  std::chrono::milliseconds limit = 5s) {
        engine_ = std::make_unique<shell::CustomerScript>(folder_.write("script.js", text), navigator_,
                                                          complaints_.reporter(), limit);
        return engine_->BuildScript(form_);
    }
    /// Runs `body` as the script's tsOpen.
    void run(const std::string& body) {
        const auto script = build("function tsOpen() {\n" + body + "\n}");
        ASSERT_TRUE(script) << complaints_.text();
        EXPECT_FALSE(script->ExecuteFormEvent("tsOpen"));
    }

    ScratchFolder folder_;
    shell::ScreenNavigator navigator_;
    Complaints complaints_;
    SampleForm form_;
    std::unique_ptr<shell::CustomerScript> engine_;
};

TEST_F(CustomerScriptTest, SetsPropertiesOfControlsByName) {
    run(R"(BUT_RICERCA.caption = "Cerca"; BUT_RICERCA.enabled = false; ETICHETTA.visible = false;
           TXT_CONTO.text = "0102"; TXT_CONTO.toolTip = "Conto"; TXT_CONTO.tabIndex = 2; TXT_PERC.value = 12.5;
           CBO_SEGNO.text = "Dare"; STR_SCHEDE.selectedIndex = 2; form.caption = "Conti";)");
    EXPECT_EQ(complaints_.text(), "");
    EXPECT_EQ(form_.BUT_RICERCA.Caption(), "Cerca");
    EXPECT_FALSE(form_.BUT_RICERCA.Enabled());
    EXPECT_FALSE(form_.ETICHETTA.Visible());
    EXPECT_EQ(form_.TXT_CONTO.Text(), "0102");
    EXPECT_EQ(form_.TXT_CONTO.ToolTipText(), "Conto");
    EXPECT_EQ(form_.TXT_CONTO.TabIndex(), 2);
    EXPECT_EQ(form_.TXT_PERC.GetValue().toDouble(), 12.5);
    EXPECT_EQ(form_.CBO_SEGNO.ListIndex(), 1);
    EXPECT_EQ(form_.STR_SCHEDE.SelectedIndex(), 2);
    EXPECT_EQ(form_.Caption(), "Conti");
}

TEST_F(CustomerScriptTest, ReadsWhatControlsShow) {
    form_.ALBERO.SetSelectedItem(form_.ALBERO.FirstRoot());
    form_.ALBERO.FirstRoot()->SetChecked(true);
    form_.STR_SCHEDE.Select(1);
    form_.TXT_CONTO.SetText("0102");
    run(R"(ETICHETTA.caption = [TRW_CONTI.text, TRW_CONTI.selectedKey, TRW_CONTI.selectedChecked, STR_SCHEDE.text,
                                STR_SCHEDE.selectedIndex, TXT_CONTO.text, CBO_SEGNO.selectedIndex, TXT_PERC.value,
                                BUT_RICERCA.name].join("|");)");
    EXPECT_EQ(complaints_.text(), "");
    EXPECT_EQ(form_.ETICHETTA.Caption(), "Conti economici|RADICE|true|Prima|1|0102|-1||BUT_RICERCA");
}

TEST_F(CustomerScriptTest, EmptiesANumberWithNull) {
    form_.TXT_PERC.SetValue(Value(5.0));
    run("TXT_PERC.value = null;");
    EXPECT_EQ(complaints_.text(), "");
    EXPECT_TRUE(form_.TXT_PERC.GetValue().isNull());
}

TEST_F(CustomerScriptTest, VetoesTheCloseOnlyByReturningTrue) {
    const auto answer = [&](const char* value) {
        return build("function tsClose() { return " + std::string(value) + "; }")
            ->ExecuteFormEvent("tsClose");
    };
    EXPECT_TRUE(answer("true"));
    EXPECT_FALSE(answer("false"));
    EXPECT_FALSE(answer("undefined"));
    EXPECT_FALSE(answer("'no'"));
}

TEST_F(CustomerScriptTest, AnswersFalseForAnEventThatTheScriptDoesNotHandle) {
    EXPECT_FALSE(build("var x = 1;")->ExecuteFormEvent("tsClose"));
}

struct BadScript {
    const char* text;
    const char* place;
    const char* reason;

    friend void PrintTo(const BadScript& shown, std::ostream* out) {
        *out << shown.place << ", " << shown.reason;
    }
};

class BrokenScript : public CustomerScriptTest, public testing::WithParamInterface<BadScript> {};

TEST_P(BrokenScript, IsToldWithFileAndLineAndYieldsNoScript) {
    EXPECT_EQ(build(GetParam().text), nullptr);
    EXPECT_THAT(complaints_.text(),
                AllOf(HasSubstr("script.js»"), HasSubstr(GetParam().place), HasSubstr(GetParam().reason)));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BrokenScript,
    testing::Values(BadScript{"var a = 1;\nvar b = = 2;", "riga 2", "errore di sintassi, «=» non era atteso"},
                    BadScript{"function tsOpen() {\n", "riga", "errore di sintassi"},
                    BadScript{"\n\nMANCA.caption = 'x';", "riga 3", "il nome «MANCA» non esiste"},
                    BadScript{"BUT_RICERCA.colore = 1;", "riga 1", "il controllo non ha questa proprietà"},
                    BadScript{"\n\nBUT_RICERCA.name = 'x';", "riga 3",
                              "la proprietà «name» si può solo leggere"},
                    BadScript{"\nmessaggio('x');", "riga 2", "il nome «messaggio» non esiste"},
                    BadScript{"BUT_RICERCA.caption();", "riga 1", "«caption» non è una funzione"},
                    BadScript{"\xE8", "riga 1, colonna 1", "UTF-8"}));

TEST_F(CustomerScriptTest, TellsTheSameFaultOnceThoughTheFormBuildsAgain) {
    EXPECT_EQ(build("MANCA.x = 1;"), nullptr);
    EXPECT_EQ(engine_->BuildScript(form_), nullptr);
    EXPECT_EQ(complaints_.told().size(), 1U);
}

TEST_F(CustomerScriptTest, TellsThatTheFileIsMissing) {
    shell::CustomerScript engine(folder_.path() / "manca.js", navigator_, complaints_.reporter());
    EXPECT_EQ(engine.BuildScript(form_), nullptr);
    EXPECT_THAT(complaints_.text(), HasSubstr("manca.js» non esiste"));
}

TEST_F(CustomerScriptTest, IsSilentForACustomerWithoutScript) {
    shell::CustomerScript engine({}, navigator_, complaints_.reporter());
    EXPECT_EQ(engine.BuildScript(form_), nullptr);
    EXPECT_EQ(complaints_.text(), "");
}

struct BadAction {
    const char* text;
    const char* reason;

    friend void PrintTo(const BadAction& shown, std::ostream* out) { *out << shown.text; }
};

class FailingHandler : public CustomerScriptTest, public testing::WithParamInterface<BadAction> {};

TEST_P(FailingHandler, IsToldWithEventAndLineAndRefusesNothing) {
    const auto script = build("function tsClose() {\n" + std::string(GetParam().text) + "\nreturn true; }");
    ASSERT_TRUE(script);
    EXPECT_FALSE(script->ExecuteFormEvent("tsClose"));
    EXPECT_THAT(complaints_.text(), AllOf(HasSubstr("evento tsClose, riga 2"), HasSubstr(GetParam().reason)));
}

INSTANTIATE_TEST_SUITE_P(
    Actions, FailingHandler,
    testing::Values(BadAction{"NIENTE.x = 1;", "il nome «NIENTE» non esiste"},
                    BadAction{"BUT_RICERCA.value = 1;", "il controllo BUT_RICERCA non ha la proprietà value"},
                    BadAction{"var x = ETICHETTA.selectedKey;", "non ha la proprietà selectedKey"},
                    BadAction{"CBO_SEGNO.text = 'Boh';", "non offre la scelta «Boh»"},
                    BadAction{"CBO_SEGNO.selectedIndex = 9;", "non ha una voce numero 9"},
                    BadAction{"STR_SCHEDE.selectedIndex = 0;", "non ha una scheda numero 0"},
                    BadAction{"TRW_CONTI.text = 'x';", "si può solo leggere"},
                    BadAction{"TXT_PERC.value = 'molto';", "«molto» non è un numero"},
                    BadAction{"throw new Error('a modo mio');", "a modo mio"}));

TEST_F(CustomerScriptTest, InterruptsAHandlerThatDoesNotEnd) {
    const auto script = build("function tsClose() { while (true) {} }", 100ms);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(script->ExecuteFormEvent("tsClose"));
    EXPECT_LT(clock.elapsed(), 10000);
    EXPECT_THAT(complaints_.text(),
                AllOf(HasSubstr("evento tsClose"), HasSubstr("entro 0,1 secondi"), HasSubstr("interrotto")));
}

TEST_F(CustomerScriptTest, InterruptsATopLevelThatDoesNotEnd) {
    EXPECT_EQ(build("for (;;) {}", 100ms), nullptr);
    EXPECT_THAT(complaints_.text(), HasSubstr("interrotto"));
}

TEST_F(CustomerScriptTest, RunsOnAfterAnInterruption) {
    const auto script = build(
        "var n = 0; function tsOpen() { while (n++ < 1e15) {} } function tsClose() { return true; }", 100ms);
    script->ExecuteFormEvent("tsOpen");
    EXPECT_TRUE(script->ExecuteFormEvent("tsClose"));
}

TEST_F(CustomerScriptTest, DoesNotCountTheTimeTheUserTakesToAnswer) {
    const auto script = build("function tsClose() { return confirm('Chiudere?', 'Prova'); }", 50ms);
    bool vetoed = false;
    EXPECT_TRUE(withModal([&] { vetoed = script->ExecuteFormEvent("tsClose"); },
                          [](QWidget& modal) {
                              auto& box = dynamic_cast<QMessageBox&>(modal);
                              EXPECT_EQ(box.text(), "Chiudere?");
                              EXPECT_EQ(box.windowTitle(), "Prova");
                              QTest::qWait(150);
                              box.buttons().at(0)->click();
                          }));
    EXPECT_TRUE(vetoed);
    EXPECT_EQ(complaints_.text(), "");
}

TEST_F(CustomerScriptTest, ShowsAMessage) {
    const auto script = build("function tsOpen() { message('Buongiorno'); }");
    QString text;
    EXPECT_TRUE(withModal([&] { script->ExecuteFormEvent("tsOpen"); },
                          [&](QWidget& modal) {
                              text = dynamic_cast<QMessageBox&>(modal).text();
                              modal.close();
                          }));
    EXPECT_EQ(text, "Buongiorno");
}

TEST_F(CustomerScriptTest, FindsTheFormClosedOnceItHasUnloaded) {
    const auto script = build("function tsOpen() { BUT_RICERCA.caption = 'tardi'; }");
    ASSERT_TRUE(form_.Unload());
    EXPECT_FALSE(script->ExecuteFormEvent("tsOpen"));
    EXPECT_THAT(complaints_.text(), HasSubstr("è stata chiusa"));
    EXPECT_EQ(form_.BUT_RICERCA.Caption(), "");
}

TEST_F(CustomerScriptTest, AddressesTheFormThatTheScreenHandsOver) {
    const auto handed = std::make_shared<SampleForm>();
    const auto subscription = navigator_.InitializeScriptObjectModel.subscribe(
        [&](services::ObjectModel& model) { model.form = handed; });
    run("BUT_RICERCA.caption = 'Cerca';");
    EXPECT_EQ(handed->BUT_RICERCA.Caption(), "Cerca");
}

TEST_F(CustomerScriptTest, AcceptsTheExampleThatIsShipped) {
    SampleForm like;
    shell::CustomerScript engine(shell::Places::ofThisProgram().data / "esempio" / "script.js", navigator_,
                                 complaints_.reporter());
    EXPECT_TRUE(engine.BuildScript(like));
    EXPECT_EQ(complaints_.text(), "");
}

} // namespace
} // namespace veldran::test
