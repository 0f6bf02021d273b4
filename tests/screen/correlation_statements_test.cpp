// Every message of correlation mode to the database, in its order and compared whole.
#include "tests/screen/correlation_fixture.h"
#include "tests/screen/expected_correlation_statements.h"
#include "tests/screen/expected_statements.h"

namespace veldran::test {

namespace {

using expected::together;
using Messages = std::vector<Message>;

const std::string account = editedAccount;

/// A value that the record set writes, declared by its column.
struct Written {
    ado::DataTypeEnum type;
    int size;
    Value value;
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;
};

Written text(int size, std::string value) {
    value.resize(static_cast<std::size_t>(size), ' ');
    return {ado::adWChar, size, Value(std::move(value))};
}

Written number(int precision, std::int64_t value, int scale = 0) {
    return {ado::adNumeric, 0, Decimal{value, static_cast<std::uint8_t>(scale)},
            static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale)};
}

Written noText(int size) {
    return {ado::adWChar, size, Value()};
}

Written noNumber(int precision) {
    return {ado::adNumeric, 0, Value(), static_cast<std::uint8_t>(precision)};
}

/// Keys a text into a field as a keyboard does, the view reporting each letter, and leaves the field.
template<class Field>
void keyLetters(Field& field, const std::string& text) {
    field.SetFocus();
    for (std::size_t letters = 1; letters <= text.size(); ++letters) {
        field.TypeFromView(text.substr(0, letters));
    }
    field.LeaveFromView();
}

/// What a frame's record set sends to write one row.
Message written(const std::string& statement, const std::vector<Written>& values) {
    ExpectedMessage message = sent(statement).withoutRows();
    int position = 0;
    for (const Written& value : values) {
        message.with("@P" + std::to_string(++position), value.type, value.size, value.value, value.precision,
                     value.scale);
    }
    return message;
}

class CorrelationStatements : public EditorTest {
protected:
    /// What was sent since the last time it was asked.
    Messages recorded() {
        Messages all = screen->log().messages();
        screen->forget();
        return all;
    }
    void toggle() {
        screen->forget();
        e().toggleMode();
    }
    void select(const char* code = editedAccount) { screen->host.user().search(code); }
};

TEST_F(CorrelationStatements, OfTheFirstEntryCreateAndFillTheTablesInTurnAndOpenTheFrames) {
    open(withStored());
    select();
    toggle();
    EXPECT_EQ(recorded(), together({{expected::correlatedCausali(account)},
                                    expected::tablesCreated(account),
                                    {expected::headers(), expected::noRows(), expected::rowsOf("ACQ ")}}));
}

TEST_F(CorrelationStatements, OfTheFirstEntryOpenNoRowsForAnAccountWithoutCorrelations) {
    open();
    select();
    toggle();
    EXPECT_EQ(recorded(), together({{expected::correlatedCausali(account)},
                                    expected::tablesCreated(account),
                                    {expected::headers(), expected::noRows(), expected::noRows()}}));
}

TEST_F(CorrelationStatements, OfAFurtherEntryRefillTheTablesByTheSamePreparedCommands) {
    open(withStored());
    select("0102030006");
    e().toggleMode();
    e().toggleMode();
    select();
    toggle();
    EXPECT_EQ(recorded(), together({{expected::correlatedCausali(account)},
                                    expected::tablesRefilled(account),
                                    {expected::headers(), expected::noRows(), expected::rowsOf("ACQ ")}}));
}

TEST_F(CorrelationStatements, OfLeavingCountTheCorrelationsAndMarkTheAccountInBothTables) {
    open(withStored());
    e().enter();
    toggle();
    EXPECT_EQ(recorded(), together({expected::firstCorrelationCount(account),
                                    {expected::markCorrelation(true, account),
                                     sent(expected::writeBack("CORRELATO")).withoutRows()}}));
    select("0102030006");
    e().toggleMode();
    toggle();
    EXPECT_EQ(recorded(), together({expected::correlationCount("0102030006"),
                                    {expected::markCorrelation(false, "0102030006"),
                                     sent(expected::writeBack("CORRELATO")).withoutRows()}}));
}

TEST_F(CorrelationStatements, CountInTheCompanyAndTheChartOfTheFirstTime) {
    open(withStored());
    e().enter();
    e().toggleMode();
    screen->host.company.ditta = "2";
    screen->host.company.chart = 3;
    e().toggleMode();
    toggle();
    EXPECT_EQ(screen->log().containing("COUNT(*)"), expected::correlationCount(account));
}

TEST_F(CorrelationStatements, CarryTheCompanyAsTheHostNamesIt) {
    Company company = costCompany();
    company.ditta = "00017";
    const expected::Owner owner{"00017", 1};
    open(costChart(), company);
    select();
    toggle();
    EXPECT_EQ(recorded(), together({{expected::correlatedCausali(account, owner)},
                                    expected::tablesCreated(account, owner),
                                    {expected::headers(), expected::noRows(), expected::noRows()}}));
    e().addCorrelation("ACQ", {{"2", "100"}});
    EXPECT_TRUE(e().save());
    Messages all = recorded();
    ASSERT_GE(all.size(), 4U);
    EXPECT_EQ(Messages(all.end() - 4, all.end()), expected::savedCorrelation("ACQ", account, owner));
    messages().answers = {services::answerYes};
    e().header().PressFromView("Elimina");
    EXPECT_EQ(screen->log().containing("CI15_CORRCONTICOGE").at(0),
              sent(expected::deleteCorrelationText("ACQ", account, owner)).withoutRows());
    toggle();
    EXPECT_EQ(screen->log().containing("COUNT(*)"), expected::firstCorrelationCount(account, owner));
}

TEST_F(CorrelationStatements, OfChoosingTheCausaleOfANewCorrelationOpenItsRows) {
    enter();
    e().typeCausale("ACQ");
    EXPECT_EQ(recorded(), Messages{expected::rowsOf("ACQ ")});
    e().typeCausale("ZZZ");
    EXPECT_EQ(recorded(), Messages{}) << "a causale that does not decode has no rows to be shown";
}

TEST_F(CorrelationStatements, OfMovingToAnotherCausaleOpenItsRows) {
    Chart chart = withStored();
    enter(store(chart, account, "VEND", wholeRows));
    e().clickCausale("VEND");
    EXPECT_EQ(recorded(), Messages{expected::rowsOf("VEND")});
    e().header().PressFromView("Primo");
    EXPECT_EQ(recorded(), Messages{expected::rowsOf("ACQ ")});
    e().header().PressFromView("Nuovo");
    EXPECT_EQ(recorded(), Messages{expected::noRows()});
}

TEST_F(CorrelationStatements, OfSavingANewCorrelationWriteRowsThenHeaderThenWhatIsStored) {
    enter();
    e().addCorrelation("ACQ", {{"2", "100", "COLACQ0010", "NULL"}, {"1", "60", "CDCPRO0010", "MATPRI"}});
    screen->forget();
    EXPECT_TRUE(e().save());
    EXPECT_EQ(
        recorded(),
        together({expected::inTransaction(
                      {written("INSERT INTO [#DETTAGLIO] ([CAUSALE], [PROG], [SEGNO], [PERCENTUALE], [PDC], "
                               "[CONTO], [AVERE]) VALUES (?, ?, ?, ?, ?, ?, ?)",
                               {text(4, "ACQ"), number(3, 1), number(2, 2), number(5, 10000, 2),
                                number(3, 101), text(15, "COLACQ0010"), text(15, "COLACQ0010")}),
                       written("INSERT INTO [#DETTAGLIO] ([CAUSALE], [PROG], [SEGNO], [PERCENTUALE], [PDC], "
                               "[CONTO], [PDCVDS], [CONTOVDS], [DARE]) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
                               {text(4, "ACQ"), number(3, 2), number(2, 1), number(5, 6000, 2),
                                number(3, 101), text(15, "CDCPRO0010"), number(3, 201), text(15, "MATPRI"),
                                text(15, "CDCPRO0010")})}),
                  expected::inTransaction(
                      {written("INSERT INTO [#TESTATA] ([CAUSALE]) VALUES (?)", {text(4, "ACQ")})}),
                  expected::savedCorrelation("ACQ", account)}));
}

TEST_F(CorrelationStatements, OfSavingChangedRowsWriteThemAndReplaceWhatIsStored) {
    enter(withStored());
    e().changePercentage(1, "55");
    screen->forget();
    EXPECT_TRUE(e().save());
    EXPECT_EQ(
        recorded(),
        together({expected::inTransaction({written(
                      "UPDATE [#DETTAGLIO] SET [PERCENTUALE] = ? WHERE [CAUSALE] = ? AND [PROG] = ? AND "
                      "[PERCENTUALE] = ?",
                      {number(5, 5500, 2), text(4, "ACQ"), number(3, 2), number(5, 6000, 2)})}),
                  expected::savedCorrelation("ACQ", account)}));
}

TEST_F(CorrelationStatements, OfSavingAfterADeletedRowCloseTheGapInTheNumbers) {
    enter(withStored());
    e().clickRow(1);
    messages().answers = {services::answerYes};
    e().detail().PressFromView("Elimina");
    EXPECT_EQ(recorded(), Messages{}) << "rows are kept back until the correlation is saved";
    EXPECT_TRUE(e().save());
    EXPECT_EQ(
        recorded(),
        together({expected::inTransaction(
                      {written("DELETE FROM [#DETTAGLIO] WHERE [CAUSALE] = ? AND [PROG] = ? AND [SEGNO] "
                               "= ? AND [PERCENTUALE] = ? AND [PDC] = ? AND [CONTO] = ? AND [PDCVDS] = "
                               "? AND [CONTOVDS] = ? AND [AVERE] IS NULL AND [DARE] = ?",
                               {text(4, "ACQ"), number(3, 2), number(2, 1), number(5, 6000, 2),
                                number(3, 101), text(15, "CDCPRO0010"), number(3, 201), text(15, "MATPRI"),
                                text(15, "CDCPRO0010")}),
                       written("UPDATE [#DETTAGLIO] SET [PROG] = ? WHERE [CAUSALE] = ? AND [PROG] = ?",
                               {number(3, 2), text(4, "ACQ"), number(3, 3)})}),
                  expected::savedCorrelation("ACQ", account)}));
}

TEST_F(CorrelationStatements, OfKeyingARowAskForTheKindsOfItsAccountAndForDescriptionsAndNoMore) {
    enter(withStored({{"2", "60.00"}, {"1", "60.00"}}));
    e().shown();
    screen->forget();
    const auto sentBy = [this](const auto& act) {
        act();
        e().shown();
        return recorded();
    };
    EXPECT_EQ(sentBy([&] { e().detail().PressFromView("Nuovo"); }), Messages{});
    EXPECT_EQ(sentBy([&] { e().sign().TypeFromView("a"); }), Messages{});
    EXPECT_EQ(sentBy([&] { keyLetters(e().percentage(), "40"); }), Messages{});
    EXPECT_EQ(sentBy([&] { keyLetters(e().account(), "CDCPRO0020"); }),
              together({expected::firstKinds("ACQ", 2), {expected::accountDescription("CDCPRO0020")}}))
        << "once, with the last letter";
    EXPECT_EQ(sentBy([&] { keyLetters(e().item(), "SERTRA"); }),
              Messages{expected::itemDescription("SERTRA")});
    EXPECT_EQ(sentBy([&] { e().catcher().SetFocus(); }), Messages{}) << "the next row begins";
    EXPECT_TRUE(e().save());
    EXPECT_EQ(
        recorded(),
        together({expected::inTransaction({written(
                      "INSERT INTO [#DETTAGLIO] ([CAUSALE], [PROG], [SEGNO], [PERCENTUALE], [PDC], "
                      "[CONTO], [PDCVDS], [CONTOVDS], [AVERE]) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
                      {text(4, "ACQ"), number(3, 3), number(2, 2), number(5, 4000, 2), number(3, 101),
                       text(15, "CDCPRO0020"), number(3, 201), text(15, "SERTRA"), text(15, "CDCPRO0020")})}),
                  expected::savedCorrelation("ACQ", account)}));
}

TEST_F(CorrelationStatements, OfMovingARowExchangeWhatTwoPlacesHoldWhenItIsSaved) {
    enter(withStored());
    const std::string exchange =
        "UPDATE [#DETTAGLIO] SET [SEGNO] = ?, [PERCENTUALE] = ?, [CONTO] = ?, [PDCVDS] = ?, [CONTOVDS] = ?, "
        "[AVERE] = ?, [DARE] = ? WHERE [CAUSALE] = ? AND [PROG] = ? AND [SEGNO] = ? AND [PERCENTUALE] = ? "
        "AND [CONTO] = ? AND ";
    const auto originTo = [&](int place) {
        return written(exchange + "[PDCVDS] = ? AND [CONTOVDS] = ? AND [AVERE] IS NULL AND [DARE] = ?",
                       {number(2, 2), number(5, 10000, 2), text(15, "COLACQ0010"), noNumber(3), noText(15),
                        text(15, "COLACQ0010"), noText(15), text(4, "ACQ"), number(3, place), number(2, 1),
                        number(5, 6000, 2), text(15, "CDCPRO0010"), number(3, 201), text(15, "MATPRI"),
                        text(15, "CDCPRO0010")});
    };
    const auto destinationTo = [&](int place) {
        return written(
            exchange + "[PDCVDS] IS NULL AND [CONTOVDS] IS NULL AND [AVERE] = ? AND [DARE] IS NULL",
            {number(2, 1), number(5, 6000, 2), text(15, "CDCPRO0010"), number(3, 201), text(15, "MATPRI"),
             noText(15), text(15, "CDCPRO0010"), text(4, "ACQ"), number(3, place), number(2, 2),
             number(5, 10000, 2), text(15, "COLACQ0010"), text(15, "COLACQ0010")});
    };
    e().clickRow(1);
    e().up().ClickFromView();
    EXPECT_EQ(recorded(), Messages{}) << "rows are kept back until the correlation is saved";
    EXPECT_TRUE(e().save());
    EXPECT_EQ(recorded(), together({expected::inTransaction({destinationTo(1), originTo(2)}),
                                    expected::savedCorrelation("ACQ", account)}));
    e().down().ClickFromView();
    EXPECT_EQ(recorded(), Messages{});
    EXPECT_TRUE(e().save());
    EXPECT_EQ(recorded(), together({expected::inTransaction({originTo(1), destinationTo(2)}),
                                    expected::savedCorrelation("ACQ", account)}));
}

TEST_F(CorrelationStatements, OfMovingARowAwayAndBackReplaceWhatIsStoredAndWriteNoRow) {
    enter(withStored());
    e().clickRow(1);
    e().up().ClickFromView();
    e().down().ClickFromView();
    EXPECT_TRUE(e().save());
    EXPECT_EQ(recorded(), expected::savedCorrelation("ACQ", account));
}

TEST_F(CorrelationStatements, OfMovingANewRowInsertTheOneThatItPassed) {
    enter(withStored({wholeRows[0], wholeRows[1]}));
    e().addRow(wholeRows[2]);
    EXPECT_TRUE(e().detail().PressFromView("Conferma"));
    screen->forget();
    e().up().ClickFromView();
    EXPECT_EQ(recorded(), Messages{});
    EXPECT_TRUE(e().save());
    EXPECT_EQ(
        recorded(),
        together({expected::inTransaction(
                      {written("UPDATE [#DETTAGLIO] SET [PERCENTUALE] = ?, [CONTO] = ?, [CONTOVDS] = ?, "
                               "[DARE] = ? WHERE [CAUSALE] = ? AND [PROG] = ? AND [PERCENTUALE] = ? AND "
                               "[CONTO] = ? AND [CONTOVDS] = ? AND [DARE] = ?",
                               {number(5, 4000, 2), text(15, "CDCPRO0020"), text(15, "SERTRA"),
                                text(15, "CDCPRO0020"), text(4, "ACQ"), number(3, 2), number(5, 6000, 2),
                                text(15, "CDCPRO0010"), text(15, "MATPRI"), text(15, "CDCPRO0010")}),
                       written("INSERT INTO [#DETTAGLIO] ([CAUSALE], [PROG], [SEGNO], [PERCENTUALE], [PDC], "
                               "[CONTO], [PDCVDS], [CONTOVDS], [DARE]) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
                               {text(4, "ACQ"), number(3, 3), number(2, 1), number(5, 6000, 2),
                                number(3, 101), text(15, "CDCPRO0010"), number(3, 201), text(15, "MATPRI"),
                                text(15, "CDCPRO0010")})}),
                  expected::savedCorrelation("ACQ", account)}));
}

TEST_F(CorrelationStatements, OfARefusedSaveLeaveTheStoredRowsAlone) {
    enter(withStored({{"2", "60.00"}, {"2", "40.00"}}));
    e().changePercentage(1, "40.01");
    screen->forget();
    EXPECT_FALSE(e().save());
    EXPECT_EQ(recorded(), expected::inTransaction({written(
                              "UPDATE [#DETTAGLIO] SET [PERCENTUALE] = ? WHERE [CAUSALE] = ? "
                              "AND [PROG] = ? AND [PERCENTUALE] = ?",
                              {number(5, 4001, 2), text(4, "ACQ"), number(3, 2), number(5, 4000, 2)})}));
}

TEST_F(CorrelationStatements, OfDeletingRemoveRowsThenHeaderThenWhatIsStoredAndShowTheNext) {
    Chart chart = withStored();
    enter(store(chart, account, "VEND", wholeRows));
    messages().answers = {services::answerYes};
    EXPECT_TRUE(e().header().PressFromView("Elimina"));
    EXPECT_EQ(recorded(), together({{expected::deletedWorkingRows("ACQ")},
                                    expected::inTransaction({written(
                                        "DELETE FROM [#TESTATA] WHERE [CAUSALE] = ?", {text(4, "ACQ")})}),
                                    {sent(expected::deleteCorrelationText("ACQ", account)).withoutRows(),
                                     expected::rowsOf("VEND")}}))
        << "what is stored goes without a transaction";
    messages().answers = {services::answerYes};
    EXPECT_TRUE(e().header().PressFromView("Elimina"));
    EXPECT_EQ(recorded().back(), expected::noRows());
}

TEST_F(CorrelationStatements, OfUndoingReadTheRowsAgain) {
    enter(withStored());
    e().changePercentage(1, "55");
    EXPECT_TRUE(e().header().PressFromView("Annulla"));
    EXPECT_EQ(recorded(), (Messages{expected::rowsOf("ACQ "), expected::rowsOf("ACQ ")}));
}

TEST_F(CorrelationStatements, OfShowingRowsReadEachDescriptionOnce) {
    enter(withStored());
    e().shown();
    EXPECT_EQ(recorded(),
              (Messages{expected::accountDescription("COLACQ0010"),
                        expected::accountDescription("CDCPRO0010"), expected::itemDescription("MATPRI"),
                        expected::accountDescription("CDCPRO0020"), expected::itemDescription("SERTRA")}));
    e().toggleMode();
    e().toggleMode();
    screen->forget();
    EXPECT_EQ(e().shown().size(), 3U);
    EXPECT_EQ(recorded(), Messages{}) << "descriptions are kept while the form lives";
}

TEST_F(CorrelationStatements, OfKeyingAnAccountAskForTheKindsOfItsCausaleAndSign) {
    enter(withStored());
    e().clickRow(1);
    screen->forget();
    keyInto(e().account(), "CDCPRO0020");
    e().account().LookupFromView();
    EXPECT_EQ(recorded(), together({expected::firstKinds("ACQ", 1), expected::kinds("ACQ", 1)}));
}

} // namespace

} // namespace veldran::test
