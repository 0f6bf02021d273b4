// The rules of a correlation's rows against an independent rendering, over thousands of random lists.
#include "tests/screen/correlation_areas.h"

#include <rapidcheck.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>

namespace veldran::test {

/// A row as the rules see it: a sign, and a percentage in hundredths or none.
struct Share {
    bool origin = false;
    std::optional<int> hundredths;

    friend bool operator==(const Share&, const Share&) = default;
};

std::ostream& operator<<(std::ostream& out, const Share& share) {
    out << (share.origin ? "Avere " : "Dare ");
    return share.hundredths ? out << *share.hundredths / 100.0 : out << "vuota";
}

} // namespace veldran::test

namespace rc {

/// Percentages around the limits of the rules: whole ones, thirds and odd hundredths, now and then none.
template<>
struct Arbitrary<veldran::test::Share> {
    static Gen<veldran::test::Share> arbitrary() {
        using veldran::test::Share;
        const auto some = [](Gen<int> hundredths) {
            return gen::map(std::move(hundredths), [](int value) { return std::optional<int>(value); });
        };
        return gen::build<Share>(
            gen::set(&Share::origin),
            gen::set(&Share::hundredths, gen::weightedOneOf<std::optional<int>>(
                                             {{4, some(gen::inRange(0, 10001))},
                                              {4, some(gen::element(1000, 2500, 3333, 3334, 5000, 10000))},
                                              {3, some(gen::inRange(0, 4000))},
                                              {1, gen::just(std::optional<int>())}})));
    }
};

} // namespace rc

namespace veldran::test {

namespace {

using Shares = std::vector<Share>;

/// Rows of one block in order; a block of their own for the rows before the first origin.
std::vector<Shares> destinationBlocks(const Shares& shares) {
    std::vector<Shares> blocks(1);
    for (const Share& share : shares) {
        if (share.origin) {
            blocks.emplace_back();
        } else {
            blocks.back().push_back(share);
        }
    }
    return blocks;
}

/// In double precision, from the first row to the last.
double sum(const Shares& shares) {
    return std::accumulate(shares.begin(), shares.end(), 0.0, [](double total, const Share& share) {
        return total + share.hundredths.value_or(0) / 100.0;
    });
}

bool originsHold(const Shares& shares) {
    Shares origins;
    std::copy_if(shares.begin(), shares.end(), std::back_inserter(origins),
                 [](const Share& share) { return share.origin; });
    return !(sum(origins) > 100.0);
}

/// Every block but the last as the sum comes out; the last one rounded to hundredths.
bool destinationsHold(const Shares& shares) {
    std::vector<Shares> blocks = destinationBlocks(shares);
    const double last = std::round(sum(blocks.back()) * 100.0);
    blocks.pop_back();
    return last <= 10000.0 &&
           std::none_of(blocks.begin(), blocks.end(), [](const Shares& block) { return sum(block) > 100.0; });
}

/// The sign of a row behind these: "2" for an origin.
std::string proposedSign(const Shares& shares) {
    if (shares.empty()) {
        return "2";
    }
    if (shares.back().origin) {
        return "1";
    }
    const Shares open = destinationBlocks(shares).back();
    const bool known = std::all_of(open.begin(), open.end(),
                                   [](const Share& share) { return share.hundredths.has_value(); });
    const int total = std::accumulate(open.begin(), open.end(), 0, [](int hundredths, const Share& share) {
        return hundredths + share.hundredths.value_or(0);
    });
    return known && total < 10000 ? "1" : "2";
}

class CorrelationRules : public ::testing::Test {
protected:
    CorrelationRules() { areas.enter(); }

    RegoleCorrelazione& rules() { return areas.areas->regole; }
    frames::VirtualFrame& detail() { return *areas.areas->frame.Dettaglio(); }
    ado::Recordset& rows() { return *detail().Recordset(); }

    /// These rows and no others are in the detail, not yet written; their numbers have gaps.
    void fill(const Shares& shares) {
        areas.areas->frame.ClearChild();
        for (const Share& share : shares) {
            append(share);
        }
        rows().Update();
    }
    void append(const Share& share) {
        rows().AddNew();
        rows().Fields()["CAUSALE"].Value("ACQ");
        rows().Fields()["PROG"].Value(static_cast<std::int32_t>(rows().RecordCount() % 300) * 3);
        rows().Fields()["SEGNO"].Value(share.origin ? 2 : 1);
        rows().Fields()["PERCENTUALE"].Value(share.hundredths ? Value(Decimal{*share.hundredths, 2})
                                                              : Value());
    }
    /// A field of all rows, as text.
    Texts column(const std::string& name) {
        Texts all;
        const auto clone = rows().Clone();
        for (; !clone->EndOfFile(); clone->MoveNext()) {
            all.push_back(asText(clone->Fields()[name].Value()));
        }
        return all;
    }
    std::string signOfNewRow() {
        rows().AddNew();
        rules().ImpostaDefaultSegno();
        const std::string sign = asText(rows().Fields()["SEGNO"].Value());
        rows().CancelUpdate();
        return sign;
    }

    CorrelationAreas areas;
};

Share avere(int hundredths) {
    return {true, hundredths};
}

Share dare(int hundredths) {
    return {false, hundredths};
}

/// Thousands of lists, unless the caller of the program asks for another number.
[[maybe_unused]] const int thousands = setenv("RC_PARAMS", "max_success=2000 max_size=24", 0);

TEST_F(CorrelationRules, AgreeWithTheirRenderingOnRandomLists) {
    int brokenOrigins = 0;
    int brokenDestinations = 0;
    EXPECT_TRUE(rc::check("both checks and the proposed sign", [&](const Shares& shares) {
        fill(shares);
        RC_ASSERT(rules().CheckTotaleRigheOrigine() == originsHold(shares));
        RC_ASSERT(rules().CheckTotalePartiteProposte() == destinationsHold(shares));
        RC_ASSERT(signOfNewRow() == proposedSign(shares));
        RC_ASSERT(areas.errors().empty());
        brokenOrigins += originsHold(shares) ? 0 : 1;
        brokenDestinations += destinationsHold(shares) ? 0 : 1;
    }));
    EXPECT_GT(brokenOrigins, 100) << "too few lists break the rule of the origins";
    EXPECT_GT(brokenDestinations, 100) << "too few lists break the rule of the destinations";
}

TEST_F(CorrelationRules, NumberTheRowsInTheirOrderAndLeaveTheRestOfThem) {
    EXPECT_TRUE(rc::check("numbers", [&](const Shares& shares) {
        fill(shares);
        const Texts signs = column("SEGNO");
        const Texts percentages = column("PERCENTUALE");
        const std::int64_t position = rows().AbsolutePosition();
        RC_ASSERT(rules().EnumerazioneRigheDettaglio());
        Texts numbers;
        for (std::size_t number = 1; number <= shares.size(); ++number) {
            numbers.push_back(std::to_string(number));
        }
        RC_ASSERT(column("PROG") == numbers);
        RC_ASSERT(column("SEGNO") == signs);
        RC_ASSERT(column("PERCENTUALE") == percentages);
        RC_ASSERT(rows().AbsolutePosition() == position);
    }));
    EXPECT_TRUE(areas.errors().empty());
}

TEST_F(CorrelationRules, LeaveTheCurrentRowAndTheFilterWhereTheyWere) {
    fill({avere(10000), dare(6000), dare(4000)});
    rows().AbsolutePosition(2);
    EXPECT_TRUE(rules().CheckTotaleRigheOrigine());
    EXPECT_TRUE(rules().CheckTotalePartiteProposte());
    EXPECT_EQ(rows().AbsolutePosition(), 2);
    EXPECT_EQ(rows().RecordCount(), 3);
}

struct Example {
    std::string name;
    Shares shares;
    bool origins = true;
    bool destinations = true;
};

std::ostream& operator<<(std::ostream& out, const Example& example) {
    return out << example.name;
}

class DocumentedExamples : public CorrelationRules, public ::testing::WithParamInterface<Example> {};

TEST_P(DocumentedExamples, AreJudgedAsTheyAreDocumented) {
    fill(GetParam().shares);
    EXPECT_EQ(rules().CheckTotaleRigheOrigine(), GetParam().origins);
    EXPECT_EQ(rules().CheckTotalePartiteProposte(), GetParam().destinations);
    EXPECT_TRUE(areas.errors().empty());
}

INSTANTIATE_TEST_SUITE_P(
    OfTheRules, DocumentedExamples,
    ::testing::Values(
        Example{"OriginsOfExactlyAHundred", {avere(6000), avere(4000)}, true, true},
        Example{"OriginsAHundredthAbove", {avere(6000), avere(4001)}, false, true},
        Example{"TwoGroupsEachFull",
                {avere(10000), dare(5000), dare(5000), avere(10000), dare(10000)},
                false,
                true},
        Example{"ABlockAboveAHundred", {avere(10000), dare(6000), dare(5000)}, true, false},
        Example{"ALeadingBlockAboveAHundredWithoutOrigin", {dare(7000), dare(4000)}, true, false},
        Example{"ALeadingBlockWithinAHundred", {dare(3000), avere(10000), dare(10000)}, true, true},
        Example{"ALeadingBlockAboveClosedByAnOrigin", {dare(7000), dare(4000), avere(10000)}, true, false},
        Example{"EmptyPercentagesCountAsNothing",
                {{true, std::nullopt}, avere(10000), {false, std::nullopt}, dare(10000)},
                true,
                true},
        Example{"NoRowsAtAll", {}, true, true}),
    [](const auto& tested) { return tested.param.name; });

/// 72.68 + 10.93 + 2.73 + 13.66 is a hundred on paper and a little more in double precision: as origins it is
/// refused, as a block that an origin closes it is refused, as the last block, which is rounded, it passes.
TEST_F(CorrelationRules, RefuseAHundredOnPaperThatDoublePrecisionMakesMore) {
    ASSERT_GT(72.68 + 10.93 + 2.73 + 13.66, 100.0);
    fill({avere(7268), avere(1093), avere(273), avere(1366)});
    EXPECT_FALSE(rules().CheckTotaleRigheOrigine());
    fill({dare(7268), dare(1093), dare(273), dare(1366), avere(10000)});
    EXPECT_FALSE(rules().CheckTotalePartiteProposte());
    fill({avere(10000), dare(7268), dare(1093), dare(273), dare(1366)});
    EXPECT_TRUE(rules().CheckTotalePartiteProposte());
}

TEST_F(CorrelationRules, AcceptThreeThirdsOfAHundredWhereverTheyStand) {
    ASSERT_LE(33.33 + 33.33 + 33.34, 100.0);
    fill({avere(3333), avere(3333), avere(3334)});
    EXPECT_TRUE(rules().CheckTotaleRigheOrigine());
    fill({dare(3333), dare(3333), dare(3334), avere(10000)});
    EXPECT_TRUE(rules().CheckTotalePartiteProposte());
    fill({avere(10000), dare(3333), dare(3333), dare(3334)});
    EXPECT_TRUE(rules().CheckTotalePartiteProposte());
}

TEST_F(CorrelationRules, ProposeAsDocumentedAndTakeAFullBlockAsFullWhateverDoublePrecisionSays) {
    const auto proposed = [&](const Shares& shares) {
        fill(shares);
        return signOfNewRow();
    };
    EXPECT_EQ(proposed({}), "2");
    EXPECT_EQ(proposed({avere(10000)}), "1");
    EXPECT_EQ(proposed({avere(10000), dare(6000)}), "1");
    EXPECT_EQ(proposed({avere(10000), dare(6000), dare(4000)}), "2");
    EXPECT_EQ(proposed({avere(10000), dare(7268), dare(1093), dare(273), dare(1366)}), "2");
    EXPECT_EQ(proposed({avere(10000), dare(7268), dare(1093), dare(273), dare(1365)}), "1");
    EXPECT_EQ(proposed({avere(10000), {false, std::nullopt}}), "2") << "nobody knows how full that block is";
    EXPECT_EQ(proposed({dare(5000), {false, std::nullopt}, dare(1)}), "2");
    EXPECT_EQ(proposed({{false, std::nullopt}, avere(10000), dare(1)}), "1");
}

TEST_F(CorrelationRules, ReportNumbersThatTheirColumnCannotHold) {
    areas.areas->frame.ClearChild();
    for (int row = 0; row < 999; ++row) {
        append(avere(1));
    }
    rows().Update();
    EXPECT_TRUE(rules().EnumerazioneRigheDettaglio());
    EXPECT_TRUE(areas.errors().empty());
    append(avere(1));
    rows().Update();
    EXPECT_FALSE(rules().EnumerazioneRigheDettaglio());
    EXPECT_EQ(areas.labels(), Texts{"EnumerazioneRigheDettaglio:"});
}

TEST_F(CorrelationRules, AreBrokenAndReportedWhereThereAreNoRowsToWalk) {
    areas.areas->frame.RimozioneVirtualFrame();
    EXPECT_FALSE(rules().CheckTotaleRigheOrigine());
    EXPECT_FALSE(rules().CheckTotalePartiteProposte());
    EXPECT_FALSE(rules().EnumerazioneRigheDettaglio());
    rules().ImpostaDefaultSegno();
    EXPECT_EQ(areas.labels(), (Texts{"CheckTotaleRigheOrigine:", "CheckTotalePartiteProposte:",
                                     "EnumerazioneRigheDettaglio:", "ImpostaDefaultSegno:"}));
}

} // namespace

} // namespace veldran::test
