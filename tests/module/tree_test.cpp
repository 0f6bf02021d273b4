// The tree over scripted answers: keys, loading, what failures leave behind, the clipboard's gates.
#include "tests/module/scripted_work_areas.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Labels = std::vector<std::string>;

/// Level-1 account 01 below the economic root, its child 0102, and so on down to two analytic accounts.
ado::StatementResult smallTree(const Request& request) {
    if (request.text.find("NRLIVELLO = 1") != std::string::npos) {
        return children({childRow("0100000000", false, true, 1)});
    }
    if (request.procedure && request.text == "SPCI_INTERMEDIFIGLI") {
        return request.value("@PARENT").toText() == "0100000000"
                   ? children(
                         {childRow("0102000000", false, true, 2), childRow("0103000000", false, false, 2)})
                   : children({childRow("0102030000", false, true, 3)});
    }
    if (request.prepared) {
        return children({childRow("0102030005", true, true, 4), childRow("0102030006", true, Value(), 4)});
    }
    return nothing(request);
}

struct Clipboard final : AppuntiCorrelazioni {
    bool CorrelazioneInSospeso() const override { return pending; }
    void AttivazioneCopiaTree(controls::TreeNode& nodo) override { calls.push_back("copia " + nodo.Key()); }
    void AttivazioneTagliaTree(controls::TreeNode& nodo) override { calls.push_back("taglia " + nodo.Key()); }
    void IncollaCorrelazioneTree(controls::TreeNode& nodo) override {
        calls.push_back("incolla " + nodo.Key());
    }
    bool pending = false;
    std::vector<std::string> calls;
};

struct BrokenClipboard final : AppuntiCorrelazioni {
    bool CorrelazioneInSospeso() const override { fail(); }
    void AttivazioneCopiaTree(controls::TreeNode&) override { fail(); }
    void AttivazioneTagliaTree(controls::TreeNode&) override { fail(); }
    void IncollaCorrelazioneTree(controls::TreeNode&) override { fail(); }
};

class AccountsTree : public testing::Test {
protected:
    AccountsTree() {
        w.database.answer = smallTree;
        events.push_back(w.controls.TRW_CONTI.Expand.subscribe(
            [this](controls::TreeNode& node) { tree().TRW_CONTI_Expand(node); }));
        events.push_back(w.controls.TRW_CONTI.Collapse.subscribe(
            [this](controls::TreeNode& node) { tree().TRW_CONTI_Collapse(node); }));
        tree().LoadTree();
    }
    AlberoConti& tree() { return w.areas->albero; }
    void expand(controls::TreeNode& node) { w.controls.TRW_CONTI.SetExpanded(node, true); }
    /// Opens the tree down to the analytic accounts.
    void expandAll() {
        expand(w.root(Economico));
        for (const char* key : {"*E0100000000*", "*E0102000000*", "*E0102030000*"}) {
            expand(*w.node(key));
        }
    }
    void ctrl(int key) {
        controls::KeyEvent event{key, controls::shiftCtrl};
        tree().TRW_CONTI_KeyDown(event);
    }

    ScriptedWorkAreas w;
    std::vector<Subscription> events;
};

TEST_F(AccountsTree, BuildsKeysFromNatureAndCode) {
    EXPECT_EQ(tree().GetKeyByCode(Ordine, "0102030005"), "*O0102030005*");
    EXPECT_EQ(tree().GetKeyByCode(Patrimoniale, "0102030005"), "*P0102030005*");
    EXPECT_EQ(tree().GetKeyByCode(Economico, "0102030005"), "*E0102030005*");
    EXPECT_EQ(tree().GetKeyByCode(DaNonStampare, "0102030005"), "*N0102030005*");
    EXPECT_EQ(tree().GetKeyByCode(4, "0102030005"), "*0102030005*") << "no letter for an unknown nature";
    EXPECT_EQ(tree().GetKeyByCode(-1, "0102030005"), "*0102030005*");
}

TEST_F(AccountsTree, KeepsRootsOutOfItsDictionary) {
    EXPECT_EQ(w.node("CONTIECONOMICI"), nullptr);
    EXPECT_EQ(w.root(Economico).Key(), "CONTIECONOMICI");
    EXPECT_EQ(tree().Radice(4), nullptr);
    EXPECT_EQ(tree().Radice(-1), nullptr);
}

TEST_F(AccountsTree, ShowsCodeAndDescriptionAndTakesANullActivationForFalse) {
    expandAll();
    EXPECT_EQ(w.node("*E0102030005*")->Text(), "F0102030005 - Conto 0102030005");
    EXPECT_TRUE(w.node("*E0102030005*")->Checked());
    EXPECT_FALSE(w.node("*E0102030006*")->Checked());
    EXPECT_TRUE(w.messages->errors.empty());
}

TEST_F(AccountsTree, ForgetsEveryNodeWhenItIsRebuilt) {
    expandAll();
    tree().SelezioneNodo(w.node("*E0102030005*"));
    tree().LoadTree();
    EXPECT_EQ(w.node("*E0102030005*"), nullptr);
    EXPECT_FALSE(w.controls.BUT_CORRELAZIONI.Enabled());
    EXPECT_EQ(w.controls.TRW_CONTI.RootCount(), 4);
}

TEST_F(AccountsTree, StandsWithItsFourRootsWhenTheirStateCannotBeRead) {
    w.database.answer = [](const Request&) -> ado::StatementResult { fail(); };
    tree().LoadTree();
    EXPECT_EQ(w.controls.TRW_CONTI.RootCount(), 4);
    EXPECT_EQ(w.labels(), (Labels{"PrimoLivelloChecked:", "PrimoLivelloChecked:", "PrimoLivelloChecked:",
                                  "PrimoLivelloChecked:"}));
    EXPECT_EQ(w.controls.TRW_CONTI.SelectedItem(), &w.root(Ordine));
}

TEST_F(AccountsTree, KeepsTheNodesOfALoadThatFailedHalfwayAndAddsTheRestLater) {
    w.database.answer = [](const Request&) {
        return children({childRow("0100000000", false, true, 1),
                         childRow("0200000000", false, true, 1),
                         {"0300000000", "03", "Guasto", "né sì né no", true, false, 1}});
    };
    expand(w.root(Economico));
    EXPECT_EQ(w.labels(), Labels{"CaricaChildren:"});
    ASSERT_EQ(w.root(Economico).Children(), 2) << "nodes already added stay";
    controls::TreeNode* first = w.root(Economico).Child();
    EXPECT_EQ(first->Children(), 1);
    w.database.answer = [](const Request&) {
        return children({childRow("0100000000", false, true, 1), childRow("0200000000", false, true, 1),
                         childRow("0300000000", false, true, 1)});
    };
    tree().EspansioneNodo(w.root(Economico));
    ASSERT_EQ(w.root(Economico).Children(), 3);
    EXPECT_EQ(w.root(Economico).Child(), first) << "no real child is taken for the placeholder";
    EXPECT_EQ(first->Children(), 1) << "one placeholder is enough";
    EXPECT_EQ(w.node("*E0300000000*")->Children(), 1);
}

TEST_F(AccountsTree, LeavesAPlaceholderAloneThatTheUserActsOn) {
    controls::TreeNode& placeholder = *w.root(Economico).Child();
    w.database.requests.clear();
    tree().TRW_CONTI_Expand(placeholder);
    tree().TRW_CONTI_Collapse(placeholder);
    tree().TRW_CONTI_NodeClick(placeholder);
    EXPECT_FALSE(w.controls.BUT_CORRELAZIONI.Enabled());
    tree().EspansioneNodo(w.root(Economico));
    EXPECT_TRUE(w.messages->errors.empty());
}

TEST_F(AccountsTree, GatesTheClipboardKeysByTheNode) {
    expandAll();
    Clipboard clipboard;
    tree().UsaAppunti(&clipboard);
    controls::TreeNode& account = *w.node("*E0102030005*");
    w.controls.TRW_CONTI.SetSelectedItem(&account);
    for (const int key : {controls::keyC, controls::keyX, controls::keyV}) {
        ctrl(key);
    }
    EXPECT_TRUE(clipboard.calls.empty()) << "not correlated, nothing to paste";
    CNodeInfo::Di(account)->ChangeStatoCorrelazione(account, true);
    clipboard.pending = true;
    for (const int key : {controls::keyC, controls::keyX, controls::keyV}) {
        ctrl(key);
    }
    EXPECT_EQ(clipboard.calls, (std::vector<std::string>{"copia *E0102030005*", "taglia *E0102030005*",
                                                         "incolla *E0102030005*"}));
    clipboard.calls.clear();
    CNodeInfo::Di(*w.node("*E0102030000*"))->ChangeStatoCorrelazione(*w.node("*E0102030000*"), true);
    w.controls.TRW_CONTI.SetSelectedItem(w.node("*E0102030000*"));
    for (const int key : {controls::keyC, controls::keyX, controls::keyV}) {
        ctrl(key);
    }
    controls::KeyEvent plain{controls::keyC, controls::shiftNone};
    w.controls.TRW_CONTI.SetSelectedItem(&account);
    tree().TRW_CONTI_KeyDown(plain);
    EXPECT_TRUE(clipboard.calls.empty()) << "a grouping account, or a key without Ctrl";
    tree().UsaAppunti(nullptr);
}

TEST_F(AccountsTree, ReportsAClipboardThatFailsUnderTheKey) {
    expandAll();
    BrokenClipboard clipboard;
    tree().UsaAppunti(&clipboard);
    controls::TreeNode& account = *w.node("*E0102030005*");
    CNodeInfo::Di(account)->ChangeStatoCorrelazione(account, true);
    w.controls.TRW_CONTI.SetSelectedItem(&account);
    for (const int key : {controls::keyC, controls::keyX, controls::keyV}) {
        w.messages->clear();
        ctrl(key);
        EXPECT_EQ(w.labels(), Labels{"TRW_CONTI_KeyDown"}) << key;
    }
    tree().UsaAppunti(nullptr);
}

TEST_F(AccountsTree, DoesNothingOnClipboardKeysWithoutAClipboard) {
    expandAll();
    controls::TreeNode& account = *w.node("*E0102030005*");
    CNodeInfo::Di(account)->ChangeStatoCorrelazione(account, true);
    w.controls.TRW_CONTI.SetSelectedItem(&account);
    w.database.requests.clear();
    for (const int key : {controls::keyC, controls::keyX, controls::keyV}) {
        ctrl(key);
    }
    EXPECT_TRUE(w.database.requests.empty());
    EXPECT_TRUE(w.messages->errors.empty());
}

} // namespace

} // namespace veldran::test
