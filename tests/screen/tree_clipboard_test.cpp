// What the tree's clipboard can do beyond the keys of the tree: its menu, which nothing opens, and the
// deletion of a whole account's correlations.
#include "tests/screen/clipboard_fixture.h"
#include "tests/screen/correlation_areas.h"
#include "tests/screen/expected_correlation_statements.h"
#include "tests/screen/expected_statements.h"
#include "tests/support/failing_allocations.h"

namespace veldran::test {

namespace {

using Messages = std::vector<Message>;

/// The clipboard over a loaded tree, routine by routine.
class LoadedTree {
public:
    LoadedTree() : areas(storedChart()) {
        areas.work.areas->tabelle.ConfigurazioneTabelleTemporanee();
        areas.work.areas->filtri.CaricamentoConti();
        areas.work.areas->albero.LoadTree();
        EXPECT_TRUE(areas.errors().empty());
    }

    AppuntiAlbero& clipboard() { return areas.areas->appuntiAlbero; }
    controls::TreeView& tree() { return areas.controls().TRW_CONTI; }
    MessageLog& messages() { return *areas.work.messages; }
    controls::TreeNode& select(const std::string& account) {
        areas.work.areas->ricerca.EsecuzioneRicerca(account);
        controls::TreeNode& node = *areas.work.node(accountKey(1, account));
        EXPECT_EQ(tree().SelectedItem(), &node);
        return node;
    }
    bool marked(const std::string& account) {
        return CNodeInfo::Di(*areas.work.node(accountKey(1, account)))->IsCorrelato();
    }
    Rows stored(const std::string& causale, const std::string& account) {
        return Editor::storedIn(areas.screen.database, causale, account);
    }
    std::vector<Texts> marks() {
        std::vector<Texts> all;
        const auto rows = areas.work.connection->Execute("SELECT S.CONTO, S.CORRELATO, T.CORRELATO FROM "
                                                         "#CG24_TABPDC_SELECTED AS S INNER JOIN #CG24_TABPDC "
                                                         "AS T ON S.INDICE = T.INDICE WHERE S.CONTO IN ('" +
                                                         a + "', '" + b + "', '" + c + "') ORDER BY S.CONTO");
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            Texts& row = all.emplace_back();
            for (const ado::Field& field : rows->Fields()) {
                row.push_back(asText(field.Value()));
            }
        }
        return all;
    }
    Texts menuTexts() {
        clipboard().ComponiPopupTree();
        Texts texts;
        for (const controls::PopupItem& item : clipboard().Menu().Items()) {
            texts.push_back(item.key + ": " + item.caption + (item.disabled ? " (no)" : ""));
        }
        return texts;
    }
    void choose(const std::string& key) { clipboard().gclsPopupTree_AfterItemClick(key); }

    CorrelationAreas areas;
};

class TreeClipboard : public ::testing::Test, protected LoadedTree {};

TEST_F(TreeClipboard, OffersNothingOnANodeThatIsNoCorrelatedAccount) {
    const Texts nothing = {"TreeCopia: Copia correlazione (no)",
                           "TreeTaglia: Taglia correlazione (no)",
                           "TreeIncolla: Incolla correlazione (no)",
                           "TreeSep1: -",
                           "TreeAnnulla: Annulla (no)",
                           "TreeSep2: -",
                           "TreeElimina: Elimina correlazione (no)"};
    EXPECT_EQ(menuTexts(), nothing) << "a root";
    select(c);
    EXPECT_EQ(menuTexts(), nothing) << "an account without correlation";
    select(a);
    tree().SetSelectedItem(tree().SelectedItem()->Parent());
    EXPECT_EQ(menuTexts(), nothing) << "a grouping account";
    tree().SetSelectedItem(nullptr);
    EXPECT_EQ(menuTexts(), nothing) << "no node";
    EXPECT_EQ(clipboard().Menu().Name(), "PopupTree");
}

TEST_F(TreeClipboard, TellsInItsMenuWhatWillBePasted) {
    select(a);
    EXPECT_EQ(menuTexts(),
              (Texts{"TreeCopia: Copia correlazione", "TreeTaglia: Taglia correlazione",
                     "TreeIncolla: Incolla correlazione (no)", "TreeSep1: -", "TreeAnnulla: Annulla (no)",
                     "TreeSep2: -", "TreeElimina: Elimina correlazione"}));
    choose("TreeCopia");
    EXPECT_EQ(menuTexts()[2], "TreeIncolla: Incolla corr. 01/02/03/0005 - Cassa contanti");
    EXPECT_EQ(menuTexts()[4], "TreeAnnulla: Annulla copia correlazione");
    choose("TreeTaglia");
    EXPECT_EQ(menuTexts()[4], "TreeAnnulla: Annulla taglia correlazione");
    select(c);
    EXPECT_EQ(menuTexts(),
              (Texts{"TreeCopia: Copia correlazione (no)", "TreeTaglia: Taglia correlazione (no)",
                     "TreeIncolla: Incolla corr. 01/02/03/0005 - Cassa contanti", "TreeSep1: -",
                     "TreeAnnulla: Annulla taglia correlazione", "TreeSep2: -",
                     "TreeElimina: Elimina correlazione (no)"}));
    choose("TreeAnnulla");
    EXPECT_EQ(menuTexts()[2], "TreeIncolla: Incolla correlazione (no)");
    EXPECT_EQ(menuTexts()[4], "TreeAnnulla: Annulla (no)");
    EXPECT_EQ(stored("ACQ", a), two) << "an undone cut changes nothing";
}

TEST_F(TreeClipboard, FillsItsMenuAnewEachTime) {
    EXPECT_EQ(menuTexts().size(), 7U);
    EXPECT_EQ(menuTexts().size(), 7U);
}

TEST_F(TreeClipboard, CopiesAndPastesByTheKeysOfItsMenu) {
    select(a);
    choose("TreeCopia");
    select(c);
    choose("TreeIncolla");
    EXPECT_EQ(stored("ACQ", c), two);
    EXPECT_EQ(stored("ACQ", a), two);
    EXPECT_TRUE(clipboard().CorrelazioneInSospeso()) << "a copy stays";
    select(a);
    choose("TreeTaglia");
    select(b);
    messages().answers = {services::answerYes};
    choose("TreeIncolla");
    EXPECT_EQ(stored("ACQ", b), two);
    EXPECT_TRUE(stored("ACQ", a).empty());
    EXPECT_FALSE(clipboard().CorrelazioneInSospeso()) << "a cut ends";
    EXPECT_TRUE(areas.errors().empty());
}

TEST_F(TreeClipboard, StaysAsItWasWhenAnAccountCannotBeTaken) {
    controls::TreeNode& node = select(a);
    const std::string text = node.Text();
    const std::string longText(10000, 'x');
    node.SetText(longText);
    {
        const FailingAllocations noMemory(longText.size());
        choose("TreeCopia");
        choose("TreeTaglia");
    }
    EXPECT_EQ(areas.labels(), (Texts{"AttivazioneCopiaTree:", "AttivazioneTagliaTree:"}));
    EXPECT_FALSE(clipboard().CorrelazioneInSospeso());
    node.SetText(text);
    choose("TreeCopia");
    EXPECT_EQ(menuTexts()[2], "TreeIncolla: Incolla corr. 01/02/03/0005 - Cassa contanti");
}

TEST_F(TreeClipboard, DoesNothingForAnUnknownKeyNorWithoutASelectedNode) {
    select(a);
    areas.screen.forget();
    choose("TreeQualcosa");
    choose("TreeSep1");
    choose("");
    tree().SetSelectedItem(nullptr);
    for (const char* key : {"TreeCopia", "TreeTaglia", "TreeIncolla"}) {
        choose(key);
    }
    EXPECT_FALSE(clipboard().CorrelazioneInSospeso());
    EXPECT_TRUE(areas.screen.log().messages().empty());
    EXPECT_TRUE(messages().boxes.empty());
    EXPECT_TRUE(areas.errors().empty());
}

TEST_F(TreeClipboard, DeletesAllCorrelationsOfTheSelectedAccountAfterItsQuestion) {
    select(c); // what is loaded is marked below
    select(a);
    messages().answers = {services::answerYes};
    areas.screen.forget();
    choose("TreeElimina");
    ASSERT_EQ(messages().boxes.size(), 1U);
    EXPECT_EQ(messages().boxes[0].text, "Tutte le correlazioni memorizzate per il conto selezionato verranno "
                                        "eliminate, procedere comunque?");
    EXPECT_EQ(messages().boxes[0].title, "Attenzione");
    EXPECT_EQ(messages().boxes[0].style, services::styleYesNo | services::styleExclamation);
    EXPECT_EQ(areas.screen.log().messages(),
              (Messages{sent("DELETE FROM CI15_CORRCONTICOGE\r\nWHERE\r\n    CI15_DITTA_CG18 = 1\r\n"
                             "    AND CI15_CODPDC_CG10 = 1\r\n    AND CI15_CONTO_CG24 = ?")
                            .with("@CONTO", ado::adWChar, 10, Value(a))
                            .timeout(0)
                            .withoutRows(),
                        expected::markCorrelation(false, a),
                        sent(expected::writeBack("CORRELATO")).withoutRows()}));
    EXPECT_TRUE(stored("ACQ", a).empty());
    EXPECT_TRUE(stored("VEND", a).empty());
    EXPECT_EQ(stored("GIRO", b), one);
    EXPECT_FALSE(marked(a));
    EXPECT_TRUE(marked(b));
    EXPECT_EQ(marks(), (std::vector<Texts>{{c, "0", "0"}, {a, "0", "0"}, {b, "1", "1"}}));
    EXPECT_TRUE(areas.errors().empty());
}

TEST_F(TreeClipboard, DeletesNothingWhenTheUserDeclinesOrNoAccountIsSelected) {
    select(a);
    messages().answers = {services::answerNo, services::answerYes, services::answerYes};
    areas.screen.forget();
    clipboard().EliminaCorrelazioneTree();
    tree().SetSelectedItem(nullptr);
    clipboard().EliminaCorrelazioneTree();
    EXPECT_EQ(messages().boxes.size(), 2U) << "the question comes first";
    EXPECT_TRUE(areas.screen.log().messages().empty());
    EXPECT_EQ(stored("ACQ", a), two);
    EXPECT_TRUE(marked(a));
}

TEST_F(TreeClipboard, KeepsACopyOfTheDeletedAccountWhichThenPastesNothing) {
    select(a);
    choose("TreeCopia");
    messages().answers = {services::answerYes};
    choose("TreeElimina");
    EXPECT_TRUE(clipboard().CorrelazioneInSospeso());
    select(b);
    messages().answers = {services::answerYes};
    choose("TreeIncolla");
    EXPECT_TRUE(stored("GIRO", b).empty()) << "replaced by the rows of an account that has none";
    EXPECT_TRUE(marked(b));
}

TEST(TreeClipboardFailures, OfADeletionAreReportedOnceAndLeaveWhatCameBefore) {
    struct Case {
        const char* failing;
        bool deleted;
        bool unmarked;
        std::vector<Texts> marks;
    };
    const Texts untouched = {a, "1", "1"};
    for (const Case& tested :
         {Case{"DELETE FROM CI15", false, false, {{c, "0", "0"}, untouched, {b, "1", "1"}}},
          Case{"UPDATE #CG24_TABPDC_SELECTED", true, true, {{c, "0", "0"}, untouched, {b, "1", "1"}}},
          Case{"SET #CG24_TABPDC.CORRELATO", true, true, {{c, "0", "0"}, {a, "0", "1"}, {b, "1", "1"}}}}) {
        SCOPED_TRACE(tested.failing);
        LoadedTree fresh;
        fresh.select(a);
        fresh.messages().answers = {services::answerYes};
        fresh.areas.screen.failures().failContaining(tested.failing);
        fresh.clipboard().EliminaCorrelazioneTree();
        EXPECT_EQ(fresh.areas.labels(), Texts{"EliminaCorrelazioneTree:"});
        EXPECT_EQ(fresh.stored("ACQ", a).empty(), tested.deleted);
        EXPECT_EQ(fresh.marked(a), !tested.unmarked);
        EXPECT_EQ(fresh.marks(), tested.marks);
        fresh.messages().answers = {services::answerYes};
        fresh.clipboard().EliminaCorrelazioneTree();
        EXPECT_EQ(fresh.areas.errors().size(), 1U) << "the same deletion then succeeds";
        EXPECT_TRUE(fresh.stored("ACQ", a).empty());
        EXPECT_EQ(fresh.marks(), (std::vector<Texts>{{c, "0", "0"}, {a, "0", "0"}, {b, "1", "1"}}));
    }
}

} // namespace

} // namespace veldran::test
