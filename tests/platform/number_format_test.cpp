#include "platform/number_format.h"

#include <gtest/gtest.h>

namespace veldran {
namespace {

constexpr std::string_view percentage = "##0.00;-##0.00;;";

TEST(NumberFormat, ShowsTheFixedPlacesOfTheMask) {
    EXPECT_EQ(formatNumber(Decimal{125, 1}, percentage), "12.50");
    EXPECT_EQ(formatNumber(Decimal{100, 0}, percentage), "100.00");
    EXPECT_EQ(formatNumber(Value(7), percentage), "7.00");
    EXPECT_EQ(formatNumber(Value(0.5), percentage), "0.50");
    EXPECT_EQ(formatNumber(Value("33.3"), percentage), "33.30");
}

TEST(NumberFormat, UsesTheNegativeSectionForNegativeNumbers) {
    EXPECT_EQ(formatNumber(Decimal{-125, 1}, percentage), "-12.50");
    EXPECT_EQ(formatNumber(Decimal{-125, 1}, "0.00;(0.0)"), "(12.5)");
    EXPECT_EQ(formatNumber(Decimal{-125, 1}, "0.00"), "-12.50");
}

TEST(NumberFormat, ShowsZeroThroughThePositiveSectionWhenItsOwnIsEmpty) {
    EXPECT_EQ(formatNumber(Value(0), percentage), "0.00");
    EXPECT_EQ(formatNumber(Value(0), "0.00;;nulla"), "nulla");
    EXPECT_EQ(formatNumber(Decimal{-1, 3}, percentage), "0.00");
}

TEST(NumberFormat, ShowsNothingForNullUnlessTheMaskHasASectionForIt) {
    EXPECT_EQ(formatNumber(Value(), percentage), "");
    EXPECT_EQ(formatNumber(Value(), "0;0;0;vuoto"), "vuoto");
}

TEST(NumberFormat, RoundsHalfAwayFromZero) {
    EXPECT_EQ(formatNumber(Decimal{12345, 3}, percentage), "12.35");
    EXPECT_EQ(formatNumber(Decimal{-12345, 3}, percentage), "-12.35");
    EXPECT_EQ(formatNumber(Value(1.005), percentage), "1.01");
}

TEST(NumberFormat, LeavesOptionalDigitsOut) {
    EXPECT_EQ(formatNumber(Decimal{1250, 2}, "#.##"), "12.5");
    EXPECT_EQ(formatNumber(Decimal{5, 1}, "#.##"), ".5");
    EXPECT_EQ(formatNumber(Value(7), "000"), "007");
    EXPECT_EQ(formatNumber(Value(7), "n. 0 pz"), "n. 7 pz");
}

TEST(NumberFormat, ShowsNumbersBeyondADecimal) {
    EXPECT_EQ(formatNumber(Value(1e20), "0.00"), "100000000000000000000.00");
}

TEST(NumberFormat, LeavesATextThatIsNoNumberAsItIs) {
    EXPECT_EQ(formatNumber(Value("conto"), percentage), "conto");
}

TEST(TypedNumber, TakesCommaAndPointAlike) {
    EXPECT_EQ(typedNumber("12,5"), (Decimal{125, 1}));
    EXPECT_EQ(typedNumber("12.5"), (Decimal{125, 1}));
    EXPECT_EQ(typedNumber(" 100 "), (Decimal{100, 0}));
    EXPECT_EQ(typedNumber("-3,25"), (Decimal{-325, 2}));
    EXPECT_EQ(typedNumber(",5"), (Decimal{5, 1}));
    EXPECT_EQ(typedNumber("12,"), (Decimal{12, 0}));
}

TEST(TypedNumber, RefusesWhatIsNoNumber) {
    for (const char* text : {"", "  ", "-", ",", "1,2,3", "1.234,5", "12%", "1e3", "dodici", "1 2", "+-1",
                             "1234567890123456789012"}) {
        EXPECT_EQ(typedNumber(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace veldran
