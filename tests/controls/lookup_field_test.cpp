#include "platform/controls/lookup_field.h"
#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>

namespace veldran::controls {
namespace {

/// Decodes from a map and answers lists as the test says.
class MapLookup : public services::LookupService {
public:
    std::optional<std::string> Decode(const services::LookupRequest& request) override {
        decoded.push_back(request);
        if (broken) {
            throw std::runtime_error("the database is gone");
        }
        const auto found = texts.find(request.code);
        return found == texts.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<services::LookupChoice> Choose(const services::LookupRequest& request) override {
        listed.push_back(request);
        return choose ? choose() : std::nullopt;
    }
    void Maintain(const services::LookupRequest& request) override { maintained.push_back(request); }
    services::CodeFormatter NewCodeFormatter(const std::shared_ptr<ado::Connection>&, std::int32_t) override {
        return services::CodeFormatter({});
    }

    std::map<std::string, std::string> texts{{"0102030005", "Cassa contanti"},
                                             {"0102030006", "Cassa valori"}};
    std::function<std::optional<services::LookupChoice>()> choose;
    bool broken = false;
    std::vector<services::LookupRequest> decoded;
    std::vector<services::LookupRequest> listed;
    std::vector<services::LookupRequest> maintained;
};

class Lookup : public testing::Test {
protected:
    Lookup() {
        field.SetLookupService(&service);
        field.SetCodeStructure({10, {{0, 2}, {2, 2}, {4, 2}, {6, 4}}});
        kept.push_back(field.AfterItem.subscribe([this] { ++afterItems; }));
        kept.push_back(field.Change.subscribe([this] { ++changes; }));
    }

    SampleForm form;
    LookupField field{form, "TXT_CONTORICERCA"};
    MapLookup service;
    std::vector<Subscription> kept;
    int afterItems = 0;
    int changes = 0;
};

TEST_F(Lookup, DecodesWhatWasTypedWhenItIsLeft) {
    field.TypeFromView("1/2/3/5");
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(service.decoded.empty());
    field.LeaveFromView();
    EXPECT_EQ(field.Text(), "0102030005");
    EXPECT_EQ(field.Description(), "Cassa contanti");
    EXPECT_TRUE(field.IsValidItem());
    EXPECT_EQ(afterItems, 1);
}

TEST_F(Lookup, IsNotDecodedAgainWhenItIsLeftUnchanged) {
    field.LeaveFromView();
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    field.LeaveFromView();
    EXPECT_EQ(service.decoded.size(), 1U);
    EXPECT_EQ(afterItems, 1);
}

TEST_F(Lookup, ForgetsTheDescriptionAsSoonAsTheUserTypes) {
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    field.TypeFromView("010203000");
    EXPECT_FALSE(field.IsValidItem());
    EXPECT_EQ(field.Description(), "");
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    EXPECT_TRUE(field.IsValidItem()) << "typed back to the same code, it is decoded again";
}

TEST_F(Lookup, KeepsAnUnknownCodeAndSaysItIsNotValid) {
    field.TypeFromView("99");
    field.LeaveFromView();
    EXPECT_EQ(field.Text(), "9900000000");
    EXPECT_FALSE(field.IsValidItem());
    EXPECT_TRUE(field.IsUnknownItem());
    EXPECT_EQ(field.Description(), "");
    EXPECT_EQ(afterItems, 1);
}

TEST_F(Lookup, CallsACodeUnknownOnlyAfterItWasLookedUp) {
    field.SetText("9900000000");
    EXPECT_FALSE(field.IsUnknownItem()) << "nobody has looked";
    field.ShowCode("9800000000", false);
    EXPECT_FALSE(field.IsUnknownItem());
    field.ShowCode("9800000000", true);
    EXPECT_TRUE(field.IsUnknownItem());
    field.TypeFromView("98");
    EXPECT_FALSE(field.IsUnknownItem()) << "it is being typed";
    field.LeaveFromView();
    EXPECT_TRUE(field.IsUnknownItem());
    field.TypeFromView("");
    field.LeaveFromView();
    EXPECT_FALSE(field.IsUnknownItem());
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    EXPECT_FALSE(field.IsUnknownItem());
    field.SetLookupService(nullptr);
    field.TypeFromView("98");
    field.LeaveFromView();
    EXPECT_FALSE(field.IsUnknownItem()) << "there is nobody to ask";
}

TEST_F(Lookup, DoesNotAskForAnEmptyCode) {
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    field.TypeFromView(" ");
    field.LeaveFromView();
    EXPECT_EQ(service.decoded.size(), 1U);
    EXPECT_EQ(field.Text(), "");
    EXPECT_FALSE(field.IsValidItem());
    EXPECT_EQ(afterItems, 2);
}

TEST_F(Lookup, DecodesNothingThatCodeHasSet) {
    field.SetText("0102030005");
    field.LeaveFromView();
    EXPECT_TRUE(service.decoded.empty());
    EXPECT_EQ(afterItems, 0);
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(field.Decode()) << "unless it asks";
}

TEST_F(Lookup, LetsTheFormFillTheRequest) {
    kept.push_back(field.StartDecode.subscribe([](services::LookupRequest& request) {
        request.kind = services::LookupKind::ContiCoin;
        request.pdc = 7;
    }));
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    ASSERT_EQ(service.decoded.size(), 1U);
    EXPECT_EQ(service.decoded[0].kind, services::LookupKind::ContiCoin);
    EXPECT_EQ(service.decoded[0].pdc, 7);
    EXPECT_EQ(service.decoded[0].code, "0102030005");
    EXPECT_EQ(service.decoded[0].structure.codeLength, 10);
}

TEST_F(Lookup, TypesAndDecodesTheChoiceOfTheList) {
    field.TypeFromView("0102");
    service.choose = [] { return services::LookupChoice{"0102030006", "Cassa valori"}; };
    kept.push_back(
        field.StartLookup.subscribe([](services::LookupRequest& request) { request.title = "Conti"; }));
    field.LookupFromView();
    ASSERT_EQ(service.listed.size(), 1U);
    EXPECT_EQ(service.listed[0].code, "0102") << "the list opens at what was typed";
    EXPECT_EQ(service.listed[0].title, "Conti");
    EXPECT_EQ(field.Text(), "0102030006");
    EXPECT_EQ(field.Description(), "Cassa valori");
    EXPECT_EQ(afterItems, 1);
    field.LeaveFromView();
    EXPECT_EQ(afterItems, 1);
}

TEST_F(Lookup, StaysAsItIsWhenTheListIsLeftWithoutAChoice) {
    field.TypeFromView("0102");
    field.LookupFromView();
    EXPECT_EQ(field.Text(), "0102");
    EXPECT_EQ(afterItems, 0);
}

TEST_F(Lookup, OpensNoListWhileItMayNot) {
    field.SetLookupEnabled(false);
    field.LookupFromView();
    field.SetLookupEnabled(true);
    field.SetEnabled(false);
    field.LookupFromView();
    EXPECT_TRUE(service.listed.empty());
}

TEST_F(Lookup, TellsAFailureOfTheServiceOnceAndIsNotValid) {
    std::string told;
    kept.push_back(field.Failed.subscribe([&](const std::exception& failure) { told += failure.what(); }));
    service.broken = true;
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    EXPECT_EQ(told, "the database is gone");
    EXPECT_FALSE(field.IsValidItem());
    EXPECT_EQ(field.Text(), "0102030005");
    EXPECT_EQ(afterItems, 0);
    field.LeaveFromView();
    EXPECT_EQ(told, "the database is gone") << "leaving again does not ask again";
    service.broken = false;
    EXPECT_TRUE(field.Decode());
}

TEST_F(Lookup, PassesAFailureOnWhereNobodyListens) {
    service.broken = true;
    field.TypeFromView("0102030005");
    EXPECT_THROW(field.LeaveFromView(), std::runtime_error);
    EXPECT_THROW(field.Decode(), std::runtime_error);
}

TEST_F(Lookup, FindsNothingWithoutAService) {
    field.SetLookupService(nullptr);
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    field.LookupFromView();
    EXPECT_FALSE(field.IsValidItem());
    EXPECT_EQ(afterItems, 1);
}

TEST_F(Lookup, TakesTheWholeDisplayFormOfACode) {
    EXPECT_EQ(field.TypingLimit(), 0);
    field.SetMaxLength(10);
    EXPECT_EQ(field.TypingLimit(), 13);
    field.TypeFromView("01/02/03/00059");
    EXPECT_EQ(field.Text(), "01/02/03/0005");
    field.LeaveFromView();
    EXPECT_TRUE(field.IsValidItem());
}

TEST_F(Lookup, CutsTypedTextAtItsLengthInCharacters) {
    field.SetCodeStructure({});
    field.SetMaxLength(4);
    field.TypeFromView("perché");
    EXPECT_EQ(field.Text(), "perc");
    field.TypeFromView("àèìòù");
    EXPECT_EQ(field.Text(), "àèìò");
    field.SetText("12345");
    EXPECT_EQ(field.Text(), "1234");
}

TEST_F(Lookup, ShowsARecordsCodeWithItsDescriptionAndTellsNobody) {
    int validates = 0;
    kept.push_back(field.Validate.subscribe([&](bool&) { ++validates; }));
    field.TypeFromView("99");
    changes = 0;
    field.ShowCode("0102030005", true);
    EXPECT_EQ(field.Description(), "Cassa contanti");
    EXPECT_TRUE(field.IsValidItem());
    EXPECT_FALSE(field.HasPendingText());
    field.ShowCode("0102030005", true);
    EXPECT_EQ(service.decoded.size(), 1U);
    field.ShowCode("0102030006", false);
    EXPECT_EQ(field.Text(), "0102030006");
    EXPECT_EQ(field.Description(), "");
    field.ShowCode("", true);
    EXPECT_EQ(service.decoded.size(), 1U);
    EXPECT_EQ(changes + afterItems + validates, 0);
}

TEST_F(Lookup, ShowsARecordsCodeEvenWhenItsDescriptionCannotBeRead) {
    service.broken = true;
    EXPECT_THROW(field.ShowCode("0102030005", true), std::runtime_error);
    EXPECT_EQ(field.Text(), "0102030005");
    EXPECT_EQ(field.Description(), "");
    EXPECT_FALSE(field.IsValidItem());
}

TEST_F(Lookup, KeepsWhatWasTypedWhenTheCodeIsRefused) {
    std::string seen;
    kept.push_back(field.Validate.subscribe([&](bool& cancel) {
        seen = field.Text();
        cancel = true;
    }));
    field.TypeFromView("1/2/3/5");
    field.LeaveFromView();
    EXPECT_EQ(seen, "0102030005");
    EXPECT_EQ(field.Text(), "1/2/3/5");
    EXPECT_TRUE(field.HasPendingText());
    EXPECT_TRUE(service.decoded.empty());
    EXPECT_EQ(afterItems, 0);
}

TEST_F(Lookup, HandsTheCodeOverBeforeItIsDescribed) {
    std::vector<std::string> order;
    kept.push_back(field.Validate.subscribe([&](bool&) { order.push_back("validate"); }));
    kept.push_back(field.StartDecode.subscribe([&](services::LookupRequest&) { order.push_back("decode"); }));
    kept.push_back(field.AfterItem.subscribe([&] { order.push_back("after"); }));
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    EXPECT_EQ(order, (std::vector<std::string>{"validate", "decode", "after"}));
}

TEST_F(Lookup, RaisesWhatIsTypedToUpperCaseWhereTheDesignSaysSo) {
    field.TypeFromView("ab");
    EXPECT_EQ(field.Text(), "ab");
    field.SetUpperCase(true);
    field.TypeFromView("acqà");
    EXPECT_EQ(field.Text(), "ACQÀ");
    field.TypeFromView("acqÀ");
    EXPECT_EQ(changes, 2) << "the same in capitals is no change";
    service.choose = [] { return services::LookupChoice{"vend", "Vendite"}; };
    field.LookupFromView();
    EXPECT_EQ(field.Text(), "VEND");
    field.SetText("code");
    EXPECT_EQ(field.Text(), "code") << "a code set by the form stays as it is";
}

TEST_F(Lookup, KeepsTheBoundValuesAtWhatItHolds) {
    std::string code = "?";
    std::string description = "?";
    field.SetText("0102030006");
    field.BindValues(&code, &description);
    EXPECT_EQ(code, "0102030006");
    EXPECT_EQ(description, "");
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    EXPECT_EQ(code, "0102030005");
    EXPECT_EQ(description, "Cassa contanti");
    field.ShowCode("0102030006", true);
    EXPECT_EQ(code, "0102030006");
    EXPECT_EQ(description, "Cassa valori");
    field.SetText("");
    EXPECT_EQ(code, "");
    EXPECT_EQ(description, "");
    field.BindValues(nullptr, nullptr);
    field.SetText("0102030005");
    EXPECT_EQ(code, "") << "no longer bound";
}

/// A field that moves the focus on when its code is complete; codes of ten characters.
class AdvancingLookup : public Lookup {
protected:
    AdvancingLookup() {
        field.SetAutoAdvance(true);
        kept.push_back(field.Completed.subscribe([this] { ++completed; }));
    }

    int completed = 0;
};

TEST_F(AdvancingLookup, MovesOnWhenAFoundCodeIsTypedToItsFullLength) {
    field.TypeFromView("010203000");
    EXPECT_EQ(completed, 0);
    EXPECT_TRUE(service.decoded.empty());
    field.TypeFromView("0102030005");
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(field.Description(), "Cassa contanti");
    EXPECT_EQ(afterItems, 1);
    field.LeaveFromView();
    EXPECT_EQ(afterItems, 1) << "decoded already";
}

TEST_F(AdvancingLookup, StaysOnACodeThatIsUnknownOrRefused) {
    field.TypeFromView("9999999999");
    EXPECT_EQ(completed, 0);
    EXPECT_FALSE(field.IsValidItem());
    const auto refusing = field.Validate.subscribe([](bool& cancel) { cancel = true; });
    field.TypeFromView("0102030005");
    EXPECT_EQ(completed, 0);
    EXPECT_TRUE(field.HasPendingText());
}

TEST_F(AdvancingLookup, MovesOnAfterAChoiceOfTheList) {
    service.choose = [] { return services::LookupChoice{"0102030006", "Cassa valori"}; };
    field.LookupFromView();
    EXPECT_EQ(completed, 1);
    service.choose = [] { return services::LookupChoice{"9999999999", "Sparito"}; };
    field.LookupFromView();
    EXPECT_EQ(completed, 1);
}

TEST_F(AdvancingLookup, StaysWhereTheDesignDoesNotSaySo) {
    field.SetAutoAdvance(false);
    field.TypeFromView("0102030005");
    EXPECT_EQ(completed, 0);
    EXPECT_TRUE(service.decoded.empty());
}

TEST_F(AdvancingLookup, TakesTheLengthOfTheFieldWhereCodesHaveNoStructure) {
    field.SetCodeStructure({});
    field.SetMaxLength(4);
    service.texts["VEND"] = "Vendite";
    field.TypeFromView("VEN");
    EXPECT_EQ(completed, 0);
    field.TypeFromView("VEND");
    EXPECT_EQ(completed, 1);
}

TEST_F(AdvancingLookup, TellsAFailureOfTheServiceWhileTyping) {
    int failures = 0;
    const auto listening = field.Failed.subscribe([&](const std::exception&) { ++failures; });
    service.broken = true;
    field.TypeFromView("0102030005");
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(completed, 0);
}

TEST_F(Lookup, RaisesTheItemsOfItsMenuOnlyWhileItCanBeMaintained) {
    std::vector<std::string> pressed;
    kept.push_back(
        field.KeyButtonMenuPress.subscribe([&](const std::string& item) { pressed.push_back(item); }));
    field.PressKeyButtonMenuFromView(LookupField::menuManagement);
    EXPECT_TRUE(pressed.empty());
    field.SetManagementEnabled(true);
    field.PressKeyButtonMenuFromView(LookupField::menuManagement);
    field.PressKeyButtonMenuFromView("Kaltro");
    EXPECT_EQ(pressed, (std::vector<std::string>{"Kgestione", "Kaltro"}));
    field.SetEnabled(false);
    field.PressKeyButtonMenuFromView(LookupField::menuManagement);
    EXPECT_EQ(pressed.size(), 2U);
    EXPECT_TRUE(service.maintained.empty()) << "what an item does is the form's";
}

TEST_F(Lookup, AsksInItsChartAndSaysWhetherTheUserEnteredTheCode) {
    field.SetChartCode("101");
    field.TypeFromView("0102030005");
    field.LeaveFromView();
    field.ShowCode("0102030006", true);
    field.LookupFromView();
    ASSERT_EQ(service.decoded.size(), 2U);
    EXPECT_EQ(service.decoded[0].pdc, 101);
    EXPECT_TRUE(service.decoded[0].entered);
    EXPECT_EQ(service.decoded[1].pdc, 101);
    EXPECT_FALSE(service.decoded[1].entered);
    ASSERT_EQ(service.listed.size(), 1U);
    EXPECT_EQ(service.listed[0].pdc, 101);
    EXPECT_FALSE(service.listed[0].tipologie.has_value());
    field.SetChartCode("");
    field.LookupFromView();
    EXPECT_EQ(service.listed[1].pdc, 0);
}

TEST(LabelPlace, IsBehindTheControlItWasToldOfUntilItIsToldOtherwise) {
    SampleForm form;
    Label description{form, "TXT_DESCRCONTO"};
    LookupField field{form, "TXT_CONTO"};
    int told = 0;
    const auto kept = description.Changed.subscribe([&] { ++told; });
    EXPECT_EQ(description.StandsBehind(), nullptr);
    description.StandBehind(&field);
    EXPECT_EQ(description.StandsBehind(), &field);
    description.StandBehind(&field);
    EXPECT_EQ(told, 1) << "its view hears of it";
    description.StandBehind(nullptr);
    EXPECT_EQ(description.StandsBehind(), nullptr);
    EXPECT_EQ(told, 2);
}

TEST(LookupFieldLife, MayEndWhileTheListIsOpen) {
    SampleForm form;
    MapLookup service;
    auto field = std::make_unique<LookupField>(form, "TXT_CONTORICERCA");
    field->SetLookupService(&service);
    service.choose = [&] {
        field.reset();
        return services::LookupChoice{"0102030006", "Cassa valori"};
    };
    field->LookupFromView();
    EXPECT_EQ(field, nullptr);
    EXPECT_TRUE(service.decoded.empty());
}

} // namespace
} // namespace veldran::controls
