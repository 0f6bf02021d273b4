// Every message of the clipboards to the database, in its order and compared whole.
#include "platform/text.h"
#include "tests/screen/clipboard_fixture.h"
#include "tests/screen/expected_correlation_statements.h"
#include "tests/screen/expected_statements.h"

namespace veldran::test {

namespace {

using expected::together;
using Messages = std::vector<Message>;

const std::string columns = "    CI15_DITTA_CG18\r\n    , CI15_CODCAUS_CI03\r\n    , CI15_CODPDC_CG10\r\n"
                            "    , CI15_CONTO_CG24\r\n    , CI15_PROG\r\n    , CI15_CODPDC_PC01\r\n"
                            "    , CI15_CONTO_PC03\r\n    , CI15_CODVDS_PC01\r\n    , CI15_VDS_PC03\r\n"
                            "    , CI15_INDSEGNO\r\n    , CI15_PERC";
const std::string ofAccount = "WHERE\r\n    CI15_DITTA_CG18 = 1\r\n    AND CI15_CODPDC_CG10 = 1\r\n"
                              "    AND CI15_CONTO_CG24 = ?";
const std::string ofCausale = "\r\n    AND CI15_CODCAUS_CI03 = ?";

std::string copyText(const std::string& replaced, const std::string& where, const std::string& order) {
    return "INSERT INTO CI15_CORRCONTICOGE\r\n(\r\n" + columns + "\r\n)\r\nSELECT\r\n" +
           replaceAll(columns, replaced, "?") + "\r\nFROM\r\n    CI15_CORRCONTICOGE\r\n" + where +
           "\r\nORDER BY\r\n" + order;
}

Message deleteAccount(const std::string& account) {
    return sent("DELETE FROM CI15_CORRCONTICOGE\r\n" + ofAccount)
        .with("@CONTO", ado::adWChar, 10, Value(account))
        .timeout(0)
        .withoutRows();
}

Message copyAccount(const std::string& destination, const std::string& origin) {
    return sent(copyText("CI15_CONTO_CG24", ofAccount, "    CI15_CODCAUS_CI03 ASC\r\n    , CI15_PROG ASC"))
        .with("@DESTINAZIONE", ado::adWChar, 10, Value(destination))
        .with("@ORIGINE", ado::adWChar, 10, Value(origin))
        .timeout(0)
        .withoutRows();
}

Message deleteCausale(const std::string& causale) {
    return sent("DELETE FROM CI15_CORRCONTICOGE\r\n" + ofAccount + ofCausale)
        .with("@CONTO", ado::adWChar, 10, Value(a))
        .with("@CAUSALE", ado::adWChar, 4, Value(causale))
        .timeout(0)
        .withoutRows();
}

Message copyCausale(const std::string& destination, const std::string& origin) {
    return sent(copyText("CI15_CODCAUS_CI03", ofAccount + ofCausale, "    CI15_PROG ASC"))
        .with("@DESTINAZIONE", ado::adWChar, 4, Value(destination))
        .with("@CONTO", ado::adWChar, 10, Value(a))
        .with("@ORIGINE", ado::adWChar, 4, Value(origin))
        .timeout(0)
        .withoutRows();
}

Message writeBack() {
    return sent(expected::writeBack("CORRELATO")).withoutRows();
}

class ClipboardStatements : public Clipboard {
protected:
    /// What an action has sent.
    template<class Act>
    Messages sentBy(Act act) {
        screen->forget();
        act();
        return screen->log().messages();
    }
    Messages paste() {
        return sentBy([this] { user().key(pasteKey, controls::shiftCtrl); });
    }
    Messages pasteInList() {
        return sentBy([this] { listKey(pasteKey); });
    }
    void editTheFirstAccount() {
        e().enter(a);
        e().clickCausale("ACQ");
    }
    /// The refill, the headers, the rows of the first one and then of the causale that stays shown, the list.
    static Messages shownAnew(const Messages& rows) {
        return together(
            {expected::tablesRefilled(a), {expected::headers()}, rows, {expected::correlatedCausali(a)}});
    }
};

TEST_F(ClipboardStatements, OfCopyingAnAccountAreNone) {
    select(a);
    EXPECT_EQ(sentBy([this] { user().key(copyKey, controls::shiftCtrl); }), Messages{});
    EXPECT_EQ(sentBy([this] { user().key(cutKey, controls::shiftCtrl); }), Messages{});
}

TEST_F(ClipboardStatements, OfPastingACopiedAccountReplaceTheDestinationAndMarkIt) {
    treeKey(a, copyKey);
    select(c);
    EXPECT_EQ(paste(), (Messages{deleteAccount(c), copyAccount(c, a), expected::markCorrelation(true, c),
                                 writeBack()}));
}

TEST_F(ClipboardStatements, OfPastingACutAccountAlsoDeleteAndUnmarkTheSource) {
    treeKey(a, cutKey);
    select(c);
    EXPECT_EQ(paste(), (Messages{deleteAccount(c), copyAccount(c, a), expected::markCorrelation(true, c),
                                 deleteAccount(a), expected::markCorrelation(false, a), writeBack()}));
}

TEST_F(ClipboardStatements, OfAPasteThatTheUserDeclinesOnlyWriteTheMarksBack) {
    treeKey(a, cutKey);
    select(b);
    messages().answers = {services::answerNo};
    EXPECT_EQ(paste(), Messages{writeBack()});
}

TEST_F(ClipboardStatements, OfPastingAnAccountOntoItselfAreNone) {
    treeKey(a, cutKey);
    EXPECT_EQ(paste(), Messages{});
}

TEST_F(ClipboardStatements, OfCopyingACausaleAreNone) {
    editTheFirstAccount();
    EXPECT_EQ(sentBy([this] { listKey(copyKey); }), Messages{});
    EXPECT_EQ(sentBy([this] { listKey(cutKey); }), Messages{});
}

TEST_F(ClipboardStatements, OfPastingACopiedCausaleReplaceTheDestinationAndShowItAnew) {
    editTheFirstAccount();
    listKey(copyKey);
    e().clickCausale("VEND");
    messages().answers = {services::answerYes};
    EXPECT_EQ(pasteInList(), together({{deleteCausale("VEND"), copyCausale("VEND", "ACQ")},
                                       shownAnew({expected::rowsOf("ACQ "), expected::rowsOf("VEND")})}));
}

TEST_F(ClipboardStatements, OfPastingACutCausaleAlsoDeleteTheSource) {
    editTheFirstAccount();
    listKey(cutKey);
    e().clickCausale("VEND");
    messages().answers = {services::answerYes};
    EXPECT_EQ(pasteInList(),
              together({{deleteCausale("VEND"), copyCausale("VEND", "ACQ"), deleteCausale("ACQ")},
                        shownAnew({expected::rowsOf("VEND")})}));
}

TEST_F(ClipboardStatements, OfACausalesPasteThatTheUserDeclinesOnlyShowItAnew) {
    editTheFirstAccount();
    listKey(copyKey);
    e().clickCausale("VEND");
    messages().answers = {services::answerNo};
    EXPECT_EQ(pasteInList(), shownAnew({expected::rowsOf("ACQ "), expected::rowsOf("VEND")}));
}

TEST_F(ClipboardStatements, OfDeletingACausaleInTheListAreThoseOfDeletingItInTheEditor) {
    editTheFirstAccount();
    messages().answers = {services::answerYes};
    const Messages header = expected::inTransaction({sent("DELETE FROM [#TESTATA] WHERE [CAUSALE] = ?")
                                                         .with("@P1", ado::adWChar, 4, Value("ACQ "))
                                                         .withoutRows()});
    EXPECT_EQ(sentBy([this] { choose("ListElimina"); }),
              together({{expected::deletedWorkingRows("ACQ")},
                        header,
                        {sent(expected::deleteCorrelationText("ACQ", a)).withoutRows(),
                         expected::rowsOf("VEND")}}));
}

TEST_F(ClipboardStatements, OfPastingACausaleOntoItselfAreNone) {
    editTheFirstAccount();
    listKey(cutKey);
    EXPECT_EQ(pasteInList(), Messages{});
}

class DuplicationStatements : public Duplication {};

TEST_F(DuplicationStatements, CopyTheRowsOnceAndShowTheCorrelationsAnew) {
    screen->forget();
    confirm("GIRO");
    EXPECT_EQ(screen->log().messages(),
              together({{copyCausale("GIRO", "ACQ")},
                        expected::tablesRefilled(a),
                        {expected::headers(), expected::rowsOf("ACQ "), expected::correlatedCausali(a)}}));
}

TEST_F(DuplicationStatements, AreNoneForACausaleThatIsCorrelatedAlready) {
    screen->forget();
    confirm("VEND");
    EXPECT_EQ(screen->log().messages(), Messages{});
}

} // namespace

} // namespace veldran::test
