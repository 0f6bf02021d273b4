#include "shell/cost_codes.h"
#include "shell/cost_kinds.h"
#include "shell/lookup_query.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldran::test {
namespace {

using shell::CostCode;
using shell::CostCodeObjection;
using shell::CostCodes;
using testing::HasSubstr;

constexpr std::int32_t costCentre = 8;

class CostCodesTest : public testing::Test {
protected:
    CostCodes codesOf(std::int32_t chart, const std::string& company = "1", bool items = false) {
        return {connection_, chart, company, items};
    }
    /// What is said against a new code of the chart; "" when nothing is.
    std::string saidOfNew(const CostCode& code, std::int32_t chart = 101) {
        const auto objection =
            objectionTo(code, true, codesOf(chart), shell::queryStructure(connection_, chart));
        return objection ? objection->text : "";
    }

    ScratchFolder folder_;
    std::shared_ptr<ado::Connection> connection_ = openDatabase(demoDatabase(folder_));
};

TEST_F(CostCodesTest, AreFoundInAnyCaseWithoutTheirPadding) {
    const auto found = codesOf(101).find("cdcprd0020");
    ASSERT_TRUE(found);
    EXPECT_EQ(*found, (CostCode{"CDCPRD0020", "Tornitura", costCentre, false, "0"}));
    EXPECT_EQ(*codesOf(101).find("CDCPRD"), (CostCode{"CDCPRD", "Centri produttivi", 0, true, "0"}));
    EXPECT_EQ(*codesOf(201, "1", true).find("MAT010"), (CostCode{"MAT010", "Acciai", 0, false, "0"}));
}

TEST_F(CostCodesTest, OfOtherCompaniesAreFoundToo) {
    EXPECT_EQ(codesOf(101, "3").find("ALTVAR0030")->company, "1");
}

TEST_F(CostCodesTest, AreNotFoundInAnotherChartOrBeyondTheirLength) {
    EXPECT_EQ(codesOf(102).find("CDCPRD0020"), std::nullopt);
    EXPECT_EQ(codesOf(101).find("CDCPRD0020CDCPRD"), std::nullopt);
}

TEST_F(CostCodesTest, KnowTheNameOfTheirChart) {
    EXPECT_EQ(codesOf(101).chartName(), "Piano COAN industriale");
    EXPECT_EQ(codesOf(999).chartName(), std::nullopt);
}

TEST_F(CostCodesTest, AreReadBackAsTheyWereInserted) {
    const CostCode account{"CDCPRD0110", "Sbavatura d'angolo – qualità", costCentre, false, "1"};
    const CostCode group{"LAVCOM2025", "Commesse dell'anno 2025", 0, true, shell::commonToAll};
    CostCodes codes = codesOf(101);
    codes.insert(account);
    codes.insert(group);
    EXPECT_EQ(codes.find("CDCPRD0110"), account);
    EXPECT_EQ(codes.find("LAVCOM2025"), group);
}

TEST_F(CostCodesTest, AreInsertedOnce) {
    const CostCode again{"CDCPRD0020", "Tornitura", costCentre, false, shell::commonToAll};
    EXPECT_THROW(codesOf(101).insert(again), ado::AdoError);
}

TEST_F(CostCodesTest, AreUpdatedInDescriptionAndKindOnly) {
    CostCodes codes = codesOf(101);
    const CostCode before = *codes.find("CDCPRD0020");
    CostCode after = before;
    after.description = "Tornitura a controllo numerico";
    after.kind = 16;
    EXPECT_TRUE(codes.update(before, after));
    EXPECT_EQ(codes.find("CDCPRD0020"), after);
    EXPECT_EQ(codes.find("CDCPRD0010")->description, "Taglio e ossitaglio");
}

TEST_F(CostCodesTest, AreNotUpdatedOverWhatAnotherUserWrote) {
    CostCodes codes = codesOf(101);
    const CostCode read = *codes.find("CDCPRD0020");
    CostCode others = read;
    others.description = "Torni paralleli";
    ASSERT_TRUE(codes.update(read, others));
    CostCode mine = read;
    mine.description = "Torni verticali";
    EXPECT_FALSE(codes.update(read, mine));
    EXPECT_EQ(codes.find("CDCPRD0020"), others);
}

struct Refusal {
    const char* code;
    bool group;
    const char* text;
};

TEST_F(CostCodesTest, ObjectToACodeThatIsNoneOfTheChart) {
    for (const Refusal& row : {
             Refusal{"", false, "Indicare il codice."},
             Refusal{"CDCPRD'001", false, "Il codice può contenere soltanto lettere non accentate e cifre."},
             Refusal{"CDCPRDÈ010", false, "Il codice può contenere soltanto lettere non accentate e cifre."},
             Refusal{"C", false, "Il codice ha 1 carattere: in questo piano ne ha 3, 6, 10 o 15."},
             Refusal{"CDCPRD01", false, "Il codice ha 8 caratteri: in questo piano ne ha 3, 6, 10 o 15."},
             Refusal{"LAVCOM202400099", true,
                     "Un codice dell'ultimo livello non può essere un raggruppamento."},
             Refusal{"CDCPRD0020", false, "Il codice CDC.PRD.0020 esiste già: «Tornitura»."},
             Refusal{"CDCXYZ0010", false, "Manca il raggruppamento CDC.XYZ che deve contenere il codice."},
             Refusal{"CDCPRD002000001", false,
                     "CDC.PRD.0020 «Tornitura» non è un raggruppamento: non può contenere altri codici."},
         }) {
        EXPECT_EQ(saidOfNew({row.code, "Prova", row.group ? 0 : costCentre, row.group, "0"}), row.text);
    }
}

TEST_F(CostCodesTest, ObjectToACodeThatBelongsToAnotherCompany) {
    const auto objection = objectionTo({"ALTVAR0030", "Prova", costCentre, false, "0"}, true,
                                       codesOf(101, "3"), shell::queryStructure(connection_, 101));
    ASSERT_TRUE(objection);
    EXPECT_EQ(objection->text, "Il codice ALT.VAR.0030 è già riservato a un'altra ditta.");
}

TEST_F(CostCodesTest, ObjectToACommonCodeBelowAReservedGroup) {
    CostCodes codes = codesOf(101);
    codes.insert({"CDCNUO", "Centri nuovi", 0, true, "1"});
    EXPECT_EQ(saidOfNew({"CDCNUO0010", "Prova", costCentre, false, "0"}),
              "Il raggruppamento CDC.NUO è riservato alla ditta: lo deve essere anche il codice.");
    EXPECT_EQ(saidOfNew({"CDCNUO0010", "Prova", costCentre, false, "1"}), "");
    codes.insert({"CDCALT", "Centri altrui", 0, true, "4"});
    EXPECT_EQ(saidOfNew({"CDCALT0010", "Prova", costCentre, false, "1"}),
              "Il raggruppamento CDC.ALT è riservato a un'altra ditta.");
}

TEST_F(CostCodesTest, ObjectToWhatIsMissing) {
    const auto structure = shell::queryStructure(connection_, 101);
    const auto place = [&](const CostCode& code, bool items) {
        const auto objection = objectionTo(code, false, codesOf(101, "1", items), structure);
        return objection ? std::optional(objection->place) : std::nullopt;
    };
    EXPECT_EQ(place({"CDCPRD0020", "", costCentre, false, "0"}, false), CostCodeObjection::Description);
    EXPECT_EQ(place({"CDCPRD0020", "Torni", 0, false, "0"}, false), CostCodeObjection::Kind);
    EXPECT_EQ(place({"CDCPRD", "Centri", 0, true, "0"}, false), std::nullopt) << "a group has no kind";
    EXPECT_EQ(place({"MAT010", "Acciai", 0, false, "0"}, true), std::nullopt) << "a cost item has no kind";
}

TEST_F(CostCodesTest, AreCreatedAtTheTopAndBelowTheirGroup) {
    EXPECT_EQ(saidOfNew({"NUO", "Nuovi", 0, true, "0"}), "");
    EXPECT_EQ(saidOfNew({"CDCPRD0110", "Sbavatura", costCentre, false, "0"}), "");
    EXPECT_EQ(saidOfNew({"LAVCOM202400099", "Commessa", 16, false, "0"}), "");
}

TEST_F(CostCodesTest, MayHaveAnyLengthInAChartWithoutGroups) {
    const services::CodeStructure none;
    const auto said = [&](const char* code) {
        const auto objection = objectionTo({code, "Prova", costCentre, false, "0"}, true, codesOf(101), none);
        return objection ? objection->text : "";
    };
    EXPECT_EQ(said("ABCDEFGHIJKLMNO"), "");
    EXPECT_THAT(said("ABCDEFGHIJKLMNOP"), HasSubstr("al massimo 15 caratteri"));
}

TEST(CostKinds, SayWhatAListIsNarrowedTo) {
    EXPECT_EQ(shell::restrictionText(2 + 256), "Solo conti di tipo: transitorio, risultato.");
    EXPECT_EQ(shell::restrictionText(0), "Nessun tipo di conto è ammesso.");
    EXPECT_EQ(shell::restrictionText(shell::everyCostKind), "");
}

} // namespace
} // namespace veldran::test
