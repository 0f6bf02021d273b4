// The search over scripted answers: the field, the path down the tree, and what failures leave behind.
#include "tests/module/scripted_work_areas.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

using Labels = std::vector<std::string>;

ado::StatementResult found(const std::string& conto, int nature) {
    return rows({"CONTO", "CG24_INDTIPOCONTO", "NRLIVELLO", "LIVELLO1", "LIVELLO2", "LIVELLO3", "LIVELLO4",
                 "LIVELLO5"},
                {{conto, nature, 4, conto.substr(0, 2) + "00000000", conto.substr(0, 4) + "000000",
                  conto.substr(0, 6) + "0000", conto, Value()}});
}

/// One branch of the economic nature down to 0102030005.
ado::StatementResult oneBranch(const Request& request) {
    if (request.text.find("SELECT * FROM") != std::string::npos) {
        return request.value("@CONTO").toText() == "0102030005" ? found("0102030005", 2)
                                                                : rows({"CONTO"}, {});
    }
    if (request.text.find("NRLIVELLO = 1") != std::string::npos) {
        return children({childRow("0100000000", false, true, 1)});
    }
    if (request.procedure) {
        return request.value("@LIVELLO_PARENT").toInteger() == 1
                   ? children({childRow("0102000000", false, true, 2)})
                   : children({childRow("0102030000", false, true, 3)});
    }
    if (request.prepared) {
        return children({childRow("0102030005", true, true, 4)});
    }
    return nothing(request);
}

class Search : public testing::Test {
protected:
    Search() {
        w.database.answer = oneBranch;
        w.areas->albero.LoadTree();
        w.areas->ricerca.Configurazione(lookups);
        auto& field = w.controls.TXT_CONTORICERCA;
        RicercaConto& search = w.areas->ricerca;
        events.push_back(field.StartDecode.subscribe(
            [&search](services::LookupRequest& r) { search.TXT_CONTORICERCA_StartDecode(r); }));
        events.push_back(field.StartLookup.subscribe(
            [&search](services::LookupRequest& r) { search.TXT_CONTORICERCA_StartLookup(r); }));
        events.push_back(field.Changed.subscribe([&search] { search.TXT_CONTORICERCA_Changed(); }));
        events.push_back(
            field.Failed.subscribe([&search](const std::exception&) { search.TXT_CONTORICERCA_Failed(); }));
        w.database.requests.clear();
    }
    RicercaConto& search() { return w.areas->ricerca; }
    std::string selected() const {
        const controls::TreeNode* node = w.controls.TRW_CONTI.SelectedItem();
        return node ? node->Key() : "";
    }

    ScriptedWorkAreas w;
    LookupFake lookups;
    std::vector<Subscription> events;
};

TEST_F(Search, EnterDecodesSearchesAndPutsTheUserIntoTheTree) {
    lookups.descriptions["0102030005"] = "Cassa";
    w.controls.TXT_CONTORICERCA.TypeFromView("1/2/3/5");
    controls::KeyEvent enter{controls::keyReturn, controls::shiftNone};
    search().TXT_CONTORICERCA_KeyDown(enter);
    EXPECT_EQ(enter.keyCode, 0) << "consumed";
    EXPECT_EQ(selected(), "*E0102030005*");
    EXPECT_TRUE(w.controls.BUT_CORRELAZIONI.Enabled());
    EXPECT_EQ(w.controls.LBB_DESCRCONTORICERCA.Caption(), "Cassa");
    EXPECT_TRUE(w.controls.TRW_CONTI.HasFocus());
}

TEST_F(Search, LeavesEveryOtherKeyAlone) {
    controls::KeyEvent shifted{controls::keyReturn, controls::shiftCtrl};
    search().TXT_CONTORICERCA_KeyDown(shifted);
    controls::KeyEvent tab{controls::keyTab, controls::shiftNone};
    search().TXT_CONTORICERCA_KeyDown(tab);
    EXPECT_EQ(shifted.keyCode, controls::keyReturn);
    EXPECT_EQ(tab.keyCode, controls::keyTab);
    EXPECT_TRUE(w.database.requests.empty());
}

TEST_F(Search, SaysThatATextLongerThanAnyAccountIsNotSelected) {
    search().EsecuzioneRicerca("01020300051");
    ASSERT_EQ(w.messages->boxes.size(), 1U);
    EXPECT_EQ(w.messages->boxes[0].title, "Ricerca conto");
    EXPECT_TRUE(w.database.requests.empty());
    EXPECT_TRUE(w.messages->errors.empty());
}

TEST_F(Search, SaysWhichGroupingAccountTheTreeDoesNotHave) {
    w.database.answer = [](const Request& request) {
        return request.procedure ? children({}) : oneBranch(request);
    };
    search().EsecuzioneRicerca("0102030005");
    ASSERT_EQ(w.labels(), Labels{"CostruzioneNodo:"});
    EXPECT_NE(w.messages->errors[0].error.Description.find("0102000000"), std::string::npos);
    EXPECT_EQ(selected(), "CONTIORDINE");
}

TEST_F(Search, SaysThatTheAccountIsNotUnderItsGroup) {
    w.database.answer = [](const Request& request) {
        return request.prepared ? children({}) : oneBranch(request);
    };
    search().EsecuzioneRicerca("0102030005");
    EXPECT_EQ(w.labels(), Labels{"SelezioneConto:"});
}

TEST_F(Search, SaysThatAnAccountHasAnUnknownNature) {
    w.database.answer = [](const Request& request) {
        return request.text.find("SELECT * FROM") != std::string::npos ? found("0102030005", 8)
                                                                       : oneBranch(request);
    };
    search().EsecuzioneRicerca("0102030005");
    EXPECT_EQ(w.labels(), Labels{"CostruzioneNodo:"});
}

TEST_F(Search, LetsGoOfTheHostsServiceAndOfTheConnectionWhenReleased) {
    std::shared_ptr<ado::Connection> offered;
    events.push_back(w.controls.TXT_CONTORICERCA.StartDecode.subscribe(
        [&offered](services::LookupRequest& request) { offered = request.connection; }));
    w.controls.TXT_CONTORICERCA.TypeFromView("01");
    EXPECT_FALSE(w.controls.TXT_CONTORICERCA.Decode());
    EXPECT_EQ(lookups.decodes.size(), 1U);
    EXPECT_EQ(offered, w.connection);
    search().EsecuzioneRicerca("0102030005");
    search().Rilascia();
    w.controls.TXT_CONTORICERCA.TypeFromView("02");
    EXPECT_FALSE(w.controls.TXT_CONTORICERCA.Decode());
    EXPECT_EQ(lookups.decodes.size(), 1U);
    EXPECT_EQ(offered, nullptr);
}

} // namespace

} // namespace veldran::test
