// The search field that opens the tree down to one analytic account.
#include "tests/screen/screen_fixture.h"

#include <gtest/gtest.h>

namespace veldran::test {

namespace {

const char* const notSelected = "Il conto ricercato non è tra quelli correntemente selezionati";

void expectNotFound(Screen& screen, const std::string& code) {
    screen.host.messages->clear();
    const controls::TreeNode* selected = screen.host.user().tree().SelectedItem();
    const auto before = screen.host.user().outline();
    screen.host.user().search(code);
    ASSERT_EQ(screen.host.messages->boxes.size(), 1U) << code;
    EXPECT_EQ(screen.host.messages->boxes[0].text, notSelected);
    EXPECT_EQ(screen.host.messages->boxes[0].title, "Ricerca conto");
    EXPECT_EQ(screen.host.messages->boxes[0].style, services::styleInformation);
    EXPECT_EQ(screen.host.user().outline(), before);
    EXPECT_EQ(screen.host.user().tree().SelectedItem(), selected);
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(AccountSearch, OpensTheBranchLevelByLevelAndSelectsTheAccount) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    ASSERT_NE(user.tree().SelectedItem(), nullptr);
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0102030005*");
    EXPECT_EQ(user.outline(),
              (std::vector<std::string>{"[ ] CONTIORDINE", "  ...", "[ ] CONTIPATRIMONIALI",
                                        "  [ ] *P0100000000*", "    [ ] *P0101000000*", "      ...",
                                        "    [ ] *P0102000000*", "      [ ] *P0102030000*",
                                        "        [ ] *P0102030005*", "        [ ] *P0102030006*",
                                        "[ ] CONTIECONOMICI", "  ...", "[ ] CONTINOSTAMPA", "  ..."}));
    for (const controls::TreeNode* above = user.tree().SelectedItem()->Parent(); above != nullptr;
         above = above->Parent()) {
        EXPECT_TRUE(above->Expanded()) << above->Key();
    }
    EXPECT_TRUE(screen.host.messages->boxes.empty());
}

TEST(AccountSearch, SaysThatAnAccountHiddenByTheFilterIsNotSelected) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.user().filter(2);
    expectNotFound(screen, "0102030005");
}

TEST(AccountSearch, SaysTheSameOfAnIntermediateAccountAndOfOneThatDoesNotExist) {
    Screen screen(smallChart());
    screen.host.open();
    expectNotFound(screen, "0102030000");
    expectNotFound(screen, "0100000000");
    expectNotFound(screen, "9999999999");
}

TEST(AccountSearch, DoesNothingForAnEmptyField) {
    Screen screen(smallChart());
    screen.host.open();
    screen.forget();
    screen.host.user().search("");
    EXPECT_TRUE(screen.sent().empty());
    EXPECT_TRUE(screen.host.messages->boxes.empty());
    EXPECT_TRUE(screen.host.screen.pointers.empty() ||
                screen.host.screen.GetMousePointer() == services::mouseDefault);
}

TEST(AccountSearch, SelectsAnAccountOfAnOpenBranchWithoutReadingAnythingButTheAccount) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    screen.forget();
    user.search("0102030006");
    EXPECT_EQ(screen.sent().size(), 1U) << "the look-up of the account itself";
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0102030006*");
}

TEST(AccountSearch, ShowsAnAccountAgainWhoseBranchWasCollapsed) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    user.collapse(user.node("*P0102000000*"));
    user.collapse(user.root(1));
    user.click(user.root(0));
    screen.forget();
    user.search("0102030005");
    EXPECT_EQ(screen.sent().size(), 1U);
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0102030005*");
    EXPECT_TRUE(user.root(1).Expanded());
    EXPECT_TRUE(user.node("*P0102000000*").Expanded());
}

TEST(AccountSearch, ReadsOnlyTheLevelsThatAreNotYetExplored) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    screen.forget();
    user.search("0101010002");
    EXPECT_EQ(screen.sent().size(), 3U) << "the account, the children of 0101000000 and of 0101010000";
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0101010002*");
}

TEST(AccountSearch, FindsTheAccountUnderTheRootOfItsOwnNature) {
    Screen screen(Chart(3)
                      .account("0100000000", "Misto", 1)
                      .account("0100010000", "Misto", 1)
                      .account("0100010001", "Economico", 2)
                      .account("0100010002", "Da non stampare", 3)
                      .account("0900000000", "Ordine", 0)
                      .account("0900010000", "Ordine", 0)
                      .account("0900010001", "Ordine", 0));
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0100010001");
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*E0100010001*");
    user.search("0100010002");
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*N0100010002*");
    user.search("0900010001");
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*O0900010001*");
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(AccountSearch, ShowsTheBusyPointerOnlyWhileItOpensTheBranch) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.screen.pointers.clear();
    screen.host.user().search("0102030005");
    EXPECT_EQ(screen.host.screen.pointers,
              (std::vector<int>{services::mouseArrowHourglass, services::mouseDefault}));
}

TEST(AccountSearch, EnablesTheCorrelationButtonsByWhatIsSelectedAfterwards) {
    Screen screen(smallChart());
    screen.host.open();
    const ScreenUser user = screen.host.user();
    user.search("0102030005");
    EXPECT_TRUE(user.control<controls::Button>("BUT_CORRELAZIONI").Enabled());
    user.click(user.root(0));
    user.search("0102030000");
    EXPECT_FALSE(user.control<controls::Button>("BUT_CORRELAZIONI").Enabled());
}

TEST(AccountSearch, TakesADisplayCodeTypedWithSlashes) {
    Screen screen(smallChart());
    screen.host.lookups.descriptions = {{"0102030005", "Cassa contanti"}};
    screen.host.open();
    auto& field = screen.host.user().control<controls::LookupField>("TXT_CONTORICERCA");
    field.TypeFromView("01/02/3/5");
    field.LeaveFromView();
    EXPECT_TRUE(field.IsValidItem());
    ASSERT_FALSE(screen.host.lookups.decodes.empty());
    EXPECT_EQ(screen.host.lookups.decodes.back().code, "0102030005");
}

TEST(AccountSearch, DecodesTheFieldThroughTheHostAndShowsTheDescription) {
    Screen screen(smallChart());
    screen.host.lookups.descriptions = {{"0102030005", "Cassa contanti"}};
    screen.host.open();
    const ScreenUser user = screen.host.user();
    auto& field = user.control<controls::LookupField>("TXT_CONTORICERCA");
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    ASSERT_EQ(screen.host.lookups.decodes.size(), 1U);
    const services::LookupRequest& request = screen.host.lookups.decodes[0];
    EXPECT_EQ(request.kind, services::LookupKind::ContiCoge);
    EXPECT_EQ(request.code, "0102030005");
    EXPECT_EQ(request.connection.get(), &screen.host.connection()) << "the form's own connection";
    EXPECT_EQ(request.ditta, "1");
    EXPECT_EQ(request.pdc, 1);
    EXPECT_EQ(request.structure.codeLength, 10);
    EXPECT_EQ(request.structure.display("0102030005"), "01/02/03/0005");
    EXPECT_EQ(user.control<controls::Label>("LBB_DESCRCONTORICERCA").Caption(), "Cassa contanti");
    field.TypeFromView("0102030006");
    EXPECT_EQ(user.control<controls::Label>("LBB_DESCRCONTORICERCA").Caption(), "")
        << "what is being typed has no description yet";
    field.LeaveFromView();
    EXPECT_EQ(user.control<controls::Label>("LBB_DESCRCONTORICERCA").Caption(), "") << "unknown to the host";
}

TEST(AccountSearch, OffersTheFormsConnectionAndTheChartsCodesToWhoeverHearsTheFieldFirst) {
    Screen screen(smallChart());
    std::vector<Subscription> kept;
    services::LookupRequest first;
    screen.host.windows->beforeShowing = [&](controls::Form& form) {
        const auto& field = dynamic_cast<controls::LookupField&>(*form.FindControl("TXT_CONTORICERCA"));
        const auto note = [&first](services::LookupRequest& request) { first = request; };
        kept.push_back(field.StartDecode.subscribe(note));
        kept.push_back(field.StartLookup.subscribe(note));
    };
    screen.host.open();
    auto& field = screen.host.user().control<controls::LookupField>("TXT_CONTORICERCA");
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    EXPECT_EQ(first.connection.get(), &screen.host.connection());
    EXPECT_EQ(first.structure.display("0102030005"), "01/02/03/0005");
    first = {};
    field.LookupFromView();
    EXPECT_EQ(first.connection.get(), &screen.host.connection());
    EXPECT_EQ(first.structure.display("0102030005"), "01/02/03/0005");
}

TEST(AccountSearch, TakesTheDescriptionAwayFromATextThatIsSetByCode) {
    Screen screen(smallChart());
    screen.host.lookups.descriptions = {{"0102030005", "Cassa contanti"}};
    screen.host.open();
    const ScreenUser user = screen.host.user();
    auto& field = user.control<controls::LookupField>("TXT_CONTORICERCA");
    const auto& description = user.control<controls::Label>("LBB_DESCRCONTORICERCA");
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    ASSERT_EQ(description.Caption(), "Cassa contanti");
    field.SetText("0102030006");
    EXPECT_EQ(description.Caption(), "");
    field.ShowCode("0102030005", true);
    EXPECT_EQ(description.Caption(), "Cassa contanti");
    field.SetText("");
    EXPECT_EQ(description.Caption(), "");
    EXPECT_TRUE(screen.host.messages->errors.empty());
}

TEST(AccountSearch, GoesOnAfterEnterWhenTheHostCannotDecodeTheCode) {
    Screen screen(smallChart());
    screen.host.open();
    screen.host.lookups.failure = simulatedFailure("decodifica guasta");
    const ScreenUser user = screen.host.user();
    auto& field = user.control<controls::LookupField>("TXT_CONTORICERCA");
    field.TypeFromView("0102030006");
    EXPECT_TRUE(field.KeyDownFromView(controls::keyReturn, controls::shiftNone));
    ASSERT_EQ(screen.host.messages->errors.size(), 1U);
    EXPECT_EQ(screen.host.messages->errors[0].routine, "TXT_CONTORICERCA_StartDecode");
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0102030006*");
}

TEST(AccountSearch, TypesTheAccountThatTheUserPicksFromTheHostsList) {
    Screen screen(smallChart());
    screen.host.lookups.descriptions = {{"0102030006", "Banca c/c"}};
    screen.host.lookups.choice = services::LookupChoice{"0102030006", "Banca c/c"};
    screen.host.open();
    const ScreenUser user = screen.host.user();
    auto& field = user.control<controls::LookupField>("TXT_CONTORICERCA");
    field.LookupFromView();
    ASSERT_EQ(screen.host.lookups.lists.size(), 1U);
    EXPECT_EQ(screen.host.lookups.lists[0].kind, services::LookupKind::ContiCoge);
    EXPECT_EQ(screen.host.lookups.lists[0].connection.get(), &screen.host.connection());
    EXPECT_EQ(screen.host.lookups.lists[0].connectionString, screen.database.connectionString());
    EXPECT_EQ(screen.host.lookups.lists[0].title, "Conti di contabilità generale");
    EXPECT_EQ(field.Text(), "0102030006");
    EXPECT_EQ(user.control<controls::Label>("LBB_DESCRCONTORICERCA").Caption(), "Banca c/c");
    user.control<controls::Button>("BUT_RICERCA").ClickFromView();
    EXPECT_EQ(user.tree().SelectedItem()->Key(), "*P0102030006*");
}

} // namespace

} // namespace veldran::test
