// Every statement of the screen, compared whole with the text it has to be.
#include "tests/screen/expected_statements.h"
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

/// Runs through the statements in the order in which they were sent.
class Reader {
public:
    explicit Reader(std::vector<Message> messages) : messages_(std::move(messages)) {}

    /// The next message. \throws std::out_of_range at the end.
    const Message& next() { return messages_.at(at_++); }
    bool atEnd() const { return at_ == messages_.size(); }
    std::string rest() const {
        std::string texts;
        for (std::size_t i = at_; i < messages_.size(); ++i) {
            texts += messages_[i].text + "\n";
        }
        return texts;
    }

private:
    std::vector<Message> messages_;
    std::size_t at_ = 0;
};

/// A text executed directly on the connection without returned records.
void expectAction(const Message& message, const std::string& text) {
    EXPECT_EQ(message.text, text);
    EXPECT_EQ(message.how, Sent::Direct) << message.text;
    EXPECT_TRUE(message.parameters.empty()) << message.text;
    EXPECT_FALSE(message.settings.wantsRows) << message.text;
}

/// A text executed directly on the connection for its rows.
void expectQuery(const Message& message, const std::string& text) {
    EXPECT_EQ(message.text, text);
    EXPECT_EQ(message.how, Sent::Direct) << message.text;
    EXPECT_TRUE(message.parameters.empty()) << message.text;
    EXPECT_TRUE(message.settings.wantsRows) << message.text;
}

void expectParameter(const Message& message, std::size_t index, const ado::ParameterInfo& info,
                     const Value& value) {
    ASSERT_LT(index, message.parameters.size()) << message.text;
    const ado::BoundParameter& parameter = message.parameters[index];
    EXPECT_EQ(parameter.info.name, info.name);
    EXPECT_EQ(parameter.info.type, info.type) << info.name;
    EXPECT_EQ(parameter.info.direction, info.direction) << info.name;
    EXPECT_EQ(parameter.info.size, info.size) << info.name;
    EXPECT_EQ(parameter.info.precision, info.precision) << info.name;
    EXPECT_EQ(parameter.info.scale, info.scale) << info.name;
    EXPECT_EQ(parameter.value, value) << info.name;
}

ado::ParameterInfo numeric(const std::string& name) {
    return {name, ado::adNumeric, ado::adParamInput, 0, 2, 0};
}

ado::ParameterInfo account(const std::string& name) {
    return {name, ado::adWChar, ado::adParamInput, 10, 0, 0};
}

Value number(int value) {
    return Decimal{value, 0};
}

void expectFilterChange(Reader& reader, int filter, int levels, int completions) {
    expectAction(reader.next(), expected::dropSelection());
    expectAction(reader.next(), expected::select(filter));
    if (filter != 1) {
        expectAction(reader.next(), expected::identityInsertOn());
        for (int i = 0; i < completions; ++i) {
            expectAction(reader.next(), expected::completeSelection(1));
        }
    }
    expectAction(reader.next(), expected::selectionKey());
    for (const std::string& index : expected::selectionIndexes(levels)) {
        expectAction(reader.next(), index);
    }
}

/// The check states of the roots; `natures` says what each needs: 0 one question (an inactive account
/// exists), 1 two questions.
void expectRootChecks(Reader& reader, const std::vector<int>& questions) {
    for (int nature = 0; nature < 4; ++nature) {
        expectQuery(reader.next(), expected::anyInactive(nature));
        if (questions[static_cast<std::size_t>(nature)] == 2) {
            expectQuery(reader.next(), expected::anyAnalytic(nature));
        }
    }
}

TEST(Statements, OfTheStartUpComeInTheirOrder) {
    Company company;
    company.ditta = "17";
    Screen screen(smallChart(), company);
    screen.host.open();
    Reader reader(screen.sent());
    expectQuery(reader.next(), expected::levels(1));
    expectAction(reader.next(), expected::workingTable(1, 4));
    expectAction(reader.next(), expected::workingTableKey());
    expectAction(reader.next(), expected::workingTableIndex1());
    expectAction(reader.next(), expected::workingTableIndex2());
    expectAction(reader.next(), expected::activationFlags("17", 1));
    expectAction(reader.next(), expected::correlationFlags("17"));
    expectFilterChange(reader, 1, 4, 0);
    expectRootChecks(reader, {1, 1, 1, 2});
    EXPECT_TRUE(reader.atEnd()) << reader.rest();
    EXPECT_EQ(screen.log().opened(), std::vector<std::string>{screen.database.connectionString()});
}

TEST(Statements, OfTheStartUpCarryChartAndCompanyAsTheHostNamesThem) {
    Company company;
    company.ditta = "00321";
    company.chart = 42;
    Chart chart(2, 42);
    chart.account("0100000000", "Attività", 1)
        .account("0100000001", "Cassa", 1)
        .activated("0100000001", "321");
    Screen screen(chart, company);
    screen.host.open();
    Reader reader(screen.sent());
    expectQuery(reader.next(), expected::levels(42));
    expectAction(reader.next(), expected::workingTable(42, 2));
    reader.next();
    reader.next();
    reader.next();
    expectAction(reader.next(), expected::activationFlags("00321", 42));
    expectAction(reader.next(), expected::correlationFlags("00321"));
    EXPECT_TRUE(screen.host.user().root(1).Checked());
}

class WorkingTableStatement : public testing::TestWithParam<int> {};

TEST_P(WorkingTableStatement, DerivesEveryColumnByTheNumberOfLevels) {
    Screen screen{Chart(GetParam())};
    screen.host.open();
    ASSERT_GT(screen.sent().size(), 1U);
    expectAction(screen.sent()[1], expected::workingTable(1, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(OfOneToFiveLevels, WorkingTableStatement, testing::Range(1, 6));

class FilterStatements : public testing::TestWithParam<std::tuple<int, int>> {};

TEST_P(FilterStatements, ComeInTheirOrderWithTheIndexesOfTheLevels) {
    const auto [levels, filter] = GetParam();
    // One account of each of the four combinations, so that every filter has to climb to the top.
    Chart chart(levels);
    chart.account("0100000000", "Livello 1", 1);
    if (levels >= 4) {
        chart.account("0101000000", "Livello 2", 1);
    }
    if (levels >= 3) {
        chart.account("0101010000", levels == 3 ? "Livello 2" : "Livello 3", 1);
    }
    if (levels == 5) {
        chart.account("0101010100", "Livello 4", 1);
    }
    for (int i = 1; i <= 4; ++i) {
        const std::string code = (levels == 2   ? "010000000"
                                  : levels == 5 ? "010101010"
                                                : "010101000") +
                                 std::to_string(i);
        chart.account(code, "Analitico", 1);
        if (i == 2 || i == 4) {
            chart.activated(code);
        }
        if (i >= 3) {
            chart.correlated(code);
        }
    }
    Screen screen(chart);
    screen.host.open();
    screen.host.user().addFilterTabs();
    screen.forget();
    screen.host.user().filter(filter);
    Reader reader(screen.sent());
    // Each pass adds one level; the last one finds nothing to add.
    expectFilterChange(reader, filter, levels, levels);
    const bool someInactive = filter != 2 && filter != 6 && filter != 7;
    expectRootChecks(reader, {2, someInactive ? 1 : 2, 2, 2});
    EXPECT_TRUE(reader.atEnd()) << reader.rest();
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

INSTANTIATE_TEST_SUITE_P(OfEveryChartAndFilter, FilterStatements,
                         testing::Combine(testing::Values(2, 3, 4, 5), testing::Range(1, 10)));

TEST(Statements, OfAnUnknownFilterRunTheCompletionOnceAndAddNothing) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.user().addFilterTabs();
    screen.host.user().filters().AddTab("Altro", "Altri");
    screen.forget();
    screen.host.user().filter(10);
    Reader reader(screen.sent());
    expectFilterChange(reader, 10, 4, 1);
}

TEST(Statements, OfAnExpansionAreOneForEachNodeAndNoneTheSecondTime) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    screen.forget();

    user.expand(user.root(1));
    ASSERT_EQ(screen.sent().size(), 1U);
    const Message root = screen.sent()[0];
    EXPECT_EQ(root.text, expected::rootChildren());
    EXPECT_EQ(root.how, Sent::Direct);
    EXPECT_EQ(root.settings.commandTimeout, 0);
    EXPECT_EQ(root.parameters.size(), 2U);
    expectParameter(root, 0, numeric("@NATURA1"), number(1));
    expectParameter(root, 1, numeric("@NATURA2"), number(1));

    screen.forget();
    user.expand(user.node("*P0100000000*"));
    ASSERT_EQ(screen.sent().size(), 1U);
    const Message procedure = screen.sent()[0];
    EXPECT_EQ(procedure.how, Sent::Procedure);
    EXPECT_EQ(procedure.text, "SPCI_INTERMEDIFIGLI");
    EXPECT_EQ(procedure.settings.commandTimeout, 0);
    EXPECT_EQ(valueOf(procedure, "@LIVELLO_PARENT").toInteger(), 1);
    EXPECT_EQ(valueOf(procedure, "@GRUPPO").toInteger(), 1);
    EXPECT_EQ(valueOf(procedure, "@PARENT"), Value("0100000000"));
    EXPECT_EQ(valueOf(procedure, "@NATURA").toInteger(), 1);
    EXPECT_EQ(procedure.parameters.size(), 4U);

    screen.forget();
    user.expand(user.node("*P0102000000*"));
    ASSERT_EQ(screen.sent().size(), 1U);
    EXPECT_EQ(screen.sent()[0].how, Sent::Procedure);
    EXPECT_EQ(valueOf(screen.sent()[0], "@LIVELLO_PARENT").toInteger(), 2);

    screen.forget();
    user.expand(user.node("*P0102030000*"));
    ASSERT_EQ(screen.sent().size(), 1U);
    const Message text = screen.sent()[0];
    EXPECT_EQ(text.text, expected::analyticChildren());
    EXPECT_EQ(text.how, Sent::Prepared);
    EXPECT_EQ(text.settings.commandTimeout, 0);
    EXPECT_EQ(text.parameters.size(), 3U);
    expectParameter(text, 0, numeric("@GRUPPO"), number(1));
    expectParameter(text, 1, account("@PARENT"), Value("0102030000"));
    expectParameter(text, 2, numeric("@NATURA"), number(1));

    screen.forget();
    for (const char* key : {"*P0102030000*", "*P0102000000*", "*P0100000000*", "CONTIPATRIMONIALI"}) {
        user.collapse(user.node(key));
        user.expand(user.node(key));
    }
    EXPECT_TRUE(screen.log().messages().empty());
}

TEST(Statements, OfClosingAreNoneBecauseTheWorkingTablesEndWithTheConnection) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.user().expand(screen.host.user().root(1));
    screen.forget();
    screen.host.form().Unload();
    EXPECT_TRUE(screen.log().messages().empty());
}

TEST(Statements, OfTheProceduresTakeTheirParametersFromTheDatabase) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    user.checkByKeyboard(user.node("*P0102030005*"));
    const auto session = screen.database.driver()->open(screen.database.connectionString(), {}, {});
    for (const char* name : {"SPCI_INTERMEDIFIGLI", "SPCI_VELDRANACT"}) {
        const auto declared = session->describeProcedure(name);
        std::size_t described = 0;
        std::size_t called = 0;
        for (const Message& message : screen.log().messages()) {
            if (message.text != name) {
                continue;
            }
            if (message.how == Sent::Describe) {
                ++described;
                continue;
            }
            ++called;
            ASSERT_EQ(message.parameters.size(), declared.size());
            for (std::size_t i = 0; i < declared.size(); ++i) {
                EXPECT_EQ(message.parameters[i].info, declared[i]);
            }
        }
        EXPECT_EQ(described, 1U) << name;
        EXPECT_GE(called, 1U) << name;
    }
}

TEST(Statements, OfASearchAreTheLookUpAndOneForEachUnexploredLevel) {
    Screen screen(smallChart());
    screen.host.open();
    screen.forget();
    screen.host.user().search("0102030005");
    Reader reader(screen.sent());
    const Message lookUp = reader.next();
    EXPECT_EQ(lookUp.text, expected::search(1));
    EXPECT_EQ(lookUp.parameters.size(), 1U);
    expectParameter(lookUp, 0, account("@CONTO"), Value("0102030005"));
    EXPECT_TRUE(lookUp.settings.wantsRows);
    EXPECT_EQ(reader.next().text, expected::rootChildren());
    EXPECT_EQ(valueOf(reader.next(), "@PARENT"), Value("0100000000"));
    EXPECT_EQ(valueOf(reader.next(), "@PARENT"), Value("0102000000"));
    EXPECT_EQ(valueOf(reader.next(), "@PARENT"), Value("0102030000"));
    EXPECT_TRUE(reader.atEnd()) << reader.rest();
}

TEST(Statements, OfACheckedAccountAreProcedureHeaderMarkAndWriteBack) {
    Company company;
    company.ditta = "17";
    Screen screen(smallChart(), company);
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    screen.forget();
    user.checkByKeyboard(user.node("*P0102000000*"));
    {
        Reader reader(screen.sent());
        const Message procedure = reader.next();
        EXPECT_EQ(procedure.how, Sent::Procedure);
        EXPECT_EQ(procedure.text, "SPCI_VELDRANACT");
        EXPECT_EQ(procedure.settings.commandTimeout, 0);
        EXPECT_EQ(procedure.parameters.size(), 6U);
        EXPECT_EQ(valueOf(procedure, "@ON"), Value(true));
        EXPECT_EQ(valueOf(procedure, "@DITTA").toInteger(), 17);
        EXPECT_EQ(valueOf(procedure, "@GRUPPO").toInteger(), 1);
        EXPECT_EQ(valueOf(procedure, "@CONTO"), Value("0102000000"));
        EXPECT_EQ(valueOf(procedure, "@NATURA").toInteger(), 1);
        EXPECT_EQ(valueOf(procedure, "@CORRELATI").toInteger(), 2);
        const Message header = reader.next();
        EXPECT_EQ(header.text, expected::header(4));
        EXPECT_EQ(header.settings.commandTimeout, 0);
        EXPECT_EQ(header.parameters.size(), 1U);
        expectParameter(header, 0, account("@CONTO"), Value("0102000000"));
        expectAction(reader.next(), expected::markActivation(true, "0102%", 1));
        expectAction(reader.next(), expected::writeBack("ATTIVO"));
        EXPECT_TRUE(reader.atEnd()) << reader.rest();
    }
    screen.forget();
    user.checkByKeyboard(user.node("*P0102030005*"));
    Reader reader(screen.sent());
    EXPECT_EQ(valueOf(reader.next(), "@ON"), Value(false));
    EXPECT_EQ(valueOf(reader.next(), "@CONTO"), Value("0102030005"));
    expectAction(reader.next(), expected::markActivation(false, "0102030005", 1));
    expectAction(reader.next(), expected::writeBack("ATTIVO"));
    EXPECT_TRUE(reader.atEnd()) << reader.rest();
}

TEST(Statements, OfACheckedRootAreThoseOfItsTopAccountsInTurn) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    screen.forget();
    user.checkByKeyboard(user.root(2));
    Reader reader(screen.sent());
    EXPECT_EQ(reader.next().text, expected::rootChildren());
    EXPECT_EQ(valueOf(reader.next(), "@CONTO"), Value("0300000000"));
    EXPECT_EQ(valueOf(reader.next(), "@CONTO"), Value("0400000000"));
    for (const char* pattern : {"03", "04"}) {
        EXPECT_EQ(reader.next().text, expected::header(4));
        expectAction(reader.next(), expected::markActivation(true, std::string(pattern) + "%", 2));
        expectAction(reader.next(), expected::writeBack("ATTIVO"));
    }
    EXPECT_TRUE(reader.atEnd()) << reader.rest();
}

TEST(Statements, ThatAreKeptArePreparedAtMostOnce) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    for (const char* code :
         {"0102030005", "0101010001", "0101020001", "0301010001", "0302010001", "0401010001"}) {
        user.search(code);
        user.checkByKeyboard(*user.tree().SelectedItem());
    }
    user.filter(2);
    user.search("0102030005");
    user.filter(1);
    user.search("0102030005");
    EXPECT_EQ(screen.log().prepareCount(expected::analyticChildren()), 1U);
    std::vector<std::string> prepared;
    for (const Message& message : screen.log().messages()) {
        if (message.how == Sent::Prepare) {
            EXPECT_EQ(std::find(prepared.begin(), prepared.end(), message.text), prepared.end())
                << message.text;
            prepared.push_back(message.text);
        }
    }
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(Statements, ThatMakeATemporaryTableAreSentDirectlyAndWithoutParameters) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.addFilterTabs();
    for (int filter = 9; filter >= 1; --filter) {
        user.filter(filter);
    }
    user.search("0102030005");
    user.checkByKeyboard(user.root(1));
    std::size_t made = 0;
    for (const Message& message : screen.log().messages()) {
        made += makesTemporaryTable(message.text) ? 1U : 0U; // the log refuses those that are not sent so
    }
    EXPECT_GE(made, 11U) << "the chart once, the selection once for each filter";
}

} // namespace

} // namespace veldran::test
