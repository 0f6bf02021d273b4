#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"
#include "shell/lookup_query.h"
#include "tests/shell/shell_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace veldran::test {
namespace {

using services::LookupKind;
using services::LookupRequest;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr std::int32_t everyKind = 1023;

/// Four levels: 1-2, 3-4, 5-6, 7-10.
const services::CodeStructure fourLevels{10, {{0, 2}, {2, 2}, {4, 2}, {6, 4}}};

class LookupQueryTest : public testing::Test {
protected:
    LookupRequest request(LookupKind kind, const std::string& code, std::int32_t pdc) {
        LookupRequest request;
        request.kind = kind;
        request.code = code;
        request.connection = connection_;
        request.ditta = "1";
        request.pdc = pdc;
        return request;
    }
    static std::vector<std::string> codesOf(const LookupRequest& request) {
        std::vector<std::string> codes;
        for (const auto& row : shell::queryRows(request)) {
            codes.push_back(row.code.toStdString());
        }
        return codes;
    }

    ScratchFolder folder_;
    std::shared_ptr<ado::Connection> connection_ = openDatabase(demoDatabase(folder_));
};

TEST_F(LookupQueryTest, DecodesAnAccountOfItsChartOnly) {
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "6805100001", 1)),
              "Compensi amministratori");
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "6805100001", 2)), std::nullopt);
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "9999999999", 1)), std::nullopt);
}

TEST_F(LookupQueryTest, DecodesNothingForACodeThatCannotBeOne) {
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "", 1)), std::nullopt);
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "68051000012345", 1)), std::nullopt);
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoge, "' OR 1 = 1", 1)), std::nullopt);
}

TEST_F(LookupQueryTest, DecodesCausaliCostAccountsAndCostItemsTypedInAnyCase) {
    const auto described = [&](LookupKind kind, const char* code, int pdc) {
        return shell::queryDescription(request(kind, code, pdc));
    };
    EXPECT_EQ(described(LookupKind::Causali, "FTAC", 0), "Fattura di acquisto");
    EXPECT_EQ(described(LookupKind::Causali, "ftac", 0), "Fattura di acquisto");
    EXPECT_EQ(described(LookupKind::ContiCoin, "CDCPRD0020", 101), "Tornitura");
    EXPECT_EQ(described(LookupKind::ContiCoin, "cdcPrd0020", 101), "Tornitura");
    EXPECT_EQ(described(LookupKind::ContiCoin, "CDCPRD0020     ", 101), "Tornitura") << "padded as stored";
    EXPECT_EQ(described(LookupKind::VociDiSpesa, "mat010", 201), "Acciai");
    EXPECT_EQ(described(LookupKind::VociDiSpesa, "CDCPRD0020", 201), std::nullopt);
    EXPECT_EQ(described(LookupKind::Causali, "FTACX", 0), std::nullopt);
}

TEST_F(LookupQueryTest, DecodesNoGroupingCode) {
    EXPECT_EQ(shell::queryDescription(request(LookupKind::ContiCoin, "CDCPRD", 101)), std::nullopt);
    EXPECT_EQ(shell::queryDescription(request(LookupKind::VociDiSpesa, "MAT", 201)), std::nullopt);
}

TEST_F(LookupQueryTest, DecodesACostAccountOfTheKindsOfTheMaskOnly) {
    auto wanted = request(LookupKind::ContiCoin, "CDCPRD0020", 101);
    constexpr int costCentre = 8;
    for (const int mask : {0, everyKind - costCentre}) {
        wanted.tipologie = mask;
        EXPECT_EQ(shell::queryDescription(wanted), std::nullopt) << "mask " << mask;
    }
    for (const std::optional<std::int32_t> mask :
         {std::optional(costCentre), std::optional(everyKind), std::optional<std::int32_t>()}) {
        wanted.tipologie = mask;
        EXPECT_EQ(shell::queryDescription(wanted), "Tornitura") << "mask " << mask.value_or(-1);
    }
}

TEST_F(LookupQueryTest, KnowsCodesReservedToItsCompanyOnly) {
    auto account = request(LookupKind::ContiCoin, "ALTVAR0030", 101);
    EXPECT_EQ(shell::queryDescription(account), "Scostamenti da standard");
    account.ditta = "2";
    EXPECT_EQ(shell::queryDescription(account), std::nullopt);
    auto causale = request(LookupKind::Causali, "BOLL", 0);
    EXPECT_EQ(shell::queryDescription(causale), std::nullopt);
    causale.ditta = "4";
    EXPECT_EQ(shell::queryDescription(causale), "Emissione di bollette");
}

TEST_F(LookupQueryTest, ListsTheAccountsOfTheLastLevelInTheOrderOfTheirCodes) {
    auto wanted = request(LookupKind::ContiCoge, "", 1);
    wanted.structure = fourLevels;
    const auto rows = shell::queryRows(wanted);
    ASSERT_GT(rows.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end(),
                               [](const auto& a, const auto& b) { return a.code < b.code; }));
    EXPECT_TRUE(
        std::none_of(rows.begin(), rows.end(), [](const auto& row) { return row.code.endsWith("0000"); }));
    const auto found =
        std::find_if(rows.begin(), rows.end(), [](const auto& row) { return row.code == "6805100001"; });
    ASSERT_NE(found, rows.end());
    EXPECT_EQ(found->display, "68/05/10/0001");
    EXPECT_EQ(found->foldedDescription, "compensi amministratori");
}

TEST_F(LookupQueryTest, RestrictsCostAccountsToTheKindsOfTheMask) {
    const auto codes = [&](std::optional<std::int32_t> mask) {
        auto wanted = request(LookupKind::ContiCoin, "", 101);
        wanted.tipologie = mask;
        return codesOf(wanted);
    };
    constexpr int transitAndResult = 2 + 256;
    EXPECT_THAT(codes(transitAndResult), ElementsAre("RISGES0010", "RISGES0020", "RISGES0030", "TRARIP0010",
                                                     "TRARIP0020", "TRARIP0030", "TRARIP0040"));
    EXPECT_THAT(codes(0), IsEmpty());
    EXPECT_EQ(codes(everyKind), codes(std::nullopt));
    EXPECT_THAT(codes(std::nullopt), AllOf(Contains("COLACQ0010"), Contains("ALTVAR0030")));
}

TEST_F(LookupQueryTest, FindsInTheDemoACausaleForEverySortOfRestriction) {
    const auto offered = [&](const std::string& causale, const std::string& sign) {
        const auto mask = connection_->Execute(
            "SELECT CI11_FLGCOLLEG + 2 * CI11_FLGTRANSIT + 4 * CI11_FLGCOMPET + 8 * CI11_FLGCDC + "
            "16 * CI11_FLGLAVPROG + 32 * CI11_FLGMAGAZ + 64 * CI11_FLGMARGLORDI + 128 * CI11_FLGMARGNETTI + "
            "256 * CI11_FLGRISULT + 512 * CI11_FLGALTRITIPI FROM CI11_CONTROLLOCONTI WHERE CI11_CODCAUS_CI03 "
            "= "
            "N'" +
            causale + "' AND CI11_SEGNO = " + sign);
        auto wanted = request(LookupKind::ContiCoin, "", 101);
        wanted.tipologie = mask->EndOfFile() ? 0 : mask->Fields()[0].Value().toInt32();
        return codesOf(wanted);
    };
    const auto all = codesOf(request(LookupKind::ContiCoin, "", 101));
    EXPECT_THAT(offered("FTAC", "2"),
                AllOf(Contains("COLACQ0010"), Contains("TRARIP0010"), Not(Contains("CDCPRD0020"))));
    EXPECT_THAT(offered("FTAC", "1"), AllOf(Contains("CDCPRD0020"), Not(Contains("COLACQ0010"))));
    EXPECT_EQ(offered("GIRO", "2"), all);
    EXPECT_THAT(offered("APER", "1"), IsEmpty());
}

TEST_F(LookupQueryTest, OffersAnAccountOfNoKnownKindOnlyWhereEveryKindIsAllowed) {
    connection_->Execute("UPDATE PC03_ANAGPDC SET PC03_INDTIPOCONTO = 0 WHERE PC03_CODPDC_PC01 = 101 AND "
                         "PC03_CONTO = N'CDCPRD0020'");
    auto wanted = request(LookupKind::ContiCoin, "", 101);
    wanted.tipologie = everyKind;
    EXPECT_THAT(codesOf(wanted), Contains("CDCPRD0020"));
    wanted.tipologie = everyKind - 1;
    EXPECT_THAT(codesOf(wanted), Not(Contains("CDCPRD0020")));
}

TEST_F(LookupQueryTest, NarrowsNoOtherListByKind) {
    auto items = request(LookupKind::VociDiSpesa, "", 202);
    items.tipologie = 0;
    EXPECT_THAT(codesOf(items), ElementsAre("GES01", "GES02", "GES03", "ING01", "ING02"));
    auto causali = request(LookupKind::Causali, "", 0);
    causali.tipologie = 0;
    EXPECT_THAT(codesOf(causali), AllOf(Contains("FTAC"), Contains("APER"), Not(Contains("BOLL"))));
}

TEST_F(LookupQueryTest, GivesStoredCodesWithoutTheirPaddingAndInTheDisplayForm) {
    auto wanted = request(LookupKind::ContiCoin, "", 101);
    wanted.structure = shell::queryStructure(connection_, 101);
    const auto rows = shell::queryRows(wanted);
    const auto found =
        std::find_if(rows.begin(), rows.end(), [](const auto& row) { return row.code == "LAVCOM202400013"; });
    ASSERT_NE(found, rows.end());
    EXPECT_EQ(found->display, "LAV.COM.2024.00013");
    EXPECT_TRUE(
        std::none_of(rows.begin(), rows.end(), [](const auto& row) { return row.code.endsWith(' '); }));
}

TEST_F(LookupQueryTest, OffersNoGroupingCodesOfCostAccounting) {
    const auto rows = shell::queryRows(request(LookupKind::ContiCoin, "", 101));
    EXPECT_TRUE(std::none_of(rows.begin(), rows.end(), [](const auto& row) { return row.code == "COLACQ"; }));
}

/// A chart with this separator and these lengths of its groups, read back.
class ChartStructure : public LookupQueryTest {
protected:
    services::CodeStructure structureOf(const std::string& separator, const std::string& lengths) {
        connection_->Execute("INSERT INTO PC01_PDC (PC01_CODPDC, PC01_DESCR, PC01_TIPOPDC, PC01_SEPARATORE, "
                             "PC01_LUNGGR1, PC01_LUNGGR2, PC01_LUNGGR3, PC01_LUNGGR4, PC01_LUNGGR5) VALUES "
                             "(900, N'Prova', 1, N'" +
                             separator + "', " + lengths + ")");
        return shell::queryStructure(connection_, 900);
    }
};

TEST_F(ChartStructure, IsReadFromTheChartsTable) {
    const auto structure = shell::queryStructure(connection_, 101);
    EXPECT_EQ(structure.codeLength, 15);
    EXPECT_EQ(structure.separator, '.');
    EXPECT_FALSE(structure.filledWithZeros);
    EXPECT_EQ(structure.display("LAVCOM202400013"), "LAV.COM.2024.00013");
    EXPECT_EQ(shell::queryStructure(connection_, 202).display("ING01"), "ING.01");
}

TEST_F(ChartStructure, OfAMissingChartLeavesCodesAsTheyAre) {
    const auto structure = shell::queryStructure(connection_, 999);
    EXPECT_EQ(structure.codeLength, 0);
    EXPECT_EQ(structure.display("CDCPRD0020"), "CDCPRD0020");
    EXPECT_EQ(structure.codeOf(" CDC.PRD "), "CDC.PRD");
}

TEST_F(ChartStructure, TakesABlankSeparatorForABlankBetweenGroups) {
    const auto structure = structureOf(" ", "3, 2, 0, 0, 0");
    EXPECT_EQ(structure.display("LAB01"), "LAB 01");
    EXPECT_EQ(structure.codeOf("LAB 01"), "LAB01");
}

TEST_F(ChartStructure, TakesAPointForASeparatorThatIsNoPlainCharacter) {
    EXPECT_EQ(structureOf("–", "3, 2, 0, 0, 0").display("LAB01"), "LAB.01");
}

TEST_F(ChartStructure, SkipsAGroupThatIsNotUsed) {
    const auto structure = structureOf("-", "3, 0, 2, 0, 4");
    EXPECT_EQ(structure.codeLength, 9);
    EXPECT_EQ(structure.display("LAB010001"), "LAB-01-0001");
}

TEST_F(ChartStructure, WithoutAnyGroupLeavesCodesAsTheyAre) {
    EXPECT_EQ(structureOf(".", "0, 0, 0, 0, 0").display("LAB01"), "LAB01");
}

TEST_F(LookupQueryTest, RefusesARequestWithoutConnection) {
    auto lost = request(LookupKind::Causali, "FTAC", 0);
    lost.connection = nullptr;
    EXPECT_THROW(shell::queryDescription(lost), ado::AdoError);
    EXPECT_THROW(shell::queryRows(lost), ado::AdoError);
    EXPECT_THROW(shell::queryStructure(nullptr, 101), ado::AdoError);
}

TEST_F(LookupQueryTest, LetsAFailureOfTheDatabaseThrough) {
    connection_->Close();
    EXPECT_THROW(shell::queryRows(request(LookupKind::Causali, "", 0)), ado::AdoError);
}

} // namespace
} // namespace veldran::test
