#include "platform/value.h"
#include "tests/support/failing_allocations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <optional>
#include <stdexcept>

namespace veldran {
namespace {

TEST(Decimal, WritesExactlyAsManyPlacesAsItsScale) {
    EXPECT_EQ((Decimal{1250, 2}.toText()), "12.50");
    EXPECT_EQ((Decimal{5, 2}.toText()), "0.05");
    EXPECT_EQ((Decimal{-5, 2}.toText()), "-0.05");
    EXPECT_EQ((Decimal{-1250, 0}.toText()), "-1250");
    EXPECT_EQ((Decimal{0, 3}.toText()), "0.000");
}

TEST(Decimal, ReadsWhatItWrites) {
    for (const char* text : {"12.50", "-0.05", "0", "99999999999999999", "-123.456"}) {
        EXPECT_EQ(Decimal::parse(text).toText(), text);
    }
}

TEST(Decimal, RefusesWhatIsNoPlainNumber) {
    for (const char* text : {"", "-", ".", "1e3", "1,5", " 1", "1 ", "0x10", "1.2.3", "--1",
                             "99999999999999999999", "0.1234567890123456789"}) {
        EXPECT_THROW(Decimal::parse(text), std::invalid_argument) << text;
    }
}

TEST(Decimal, RoundsHalfAwayFromZero) {
    EXPECT_EQ((Decimal{12345, 3}.rescaled(2).coefficient), 1235);
    EXPECT_EQ((Decimal{-12345, 3}.rescaled(2).coefficient), -1235);
    EXPECT_EQ((Decimal{12344, 3}.rescaled(2).coefficient), 1234);
    EXPECT_EQ((Decimal{5, 1}.rescaled(0).coefficient), 1);
    EXPECT_EQ((Decimal{7, 0}.rescaled(2).coefficient), 700);
}

TEST(Decimal, OverflowsRatherThanLosingDigits) {
    EXPECT_THROW((Decimal{std::numeric_limits<std::int64_t>::max(), 0}.rescaled(1)), std::overflow_error);
}

TEST(Decimal, IsEqualToTheSameNumberAtAnotherScale) {
    EXPECT_EQ((Decimal{1250, 2}), (Decimal{125, 1}));
    EXPECT_EQ((Decimal{0, 2}), (Decimal{0, 0}));
    EXPECT_FALSE((Decimal{1251, 2}) == (Decimal{125, 1}));
}

TEST(Decimal, BecomesTheNearestDouble) {
    EXPECT_EQ((Decimal{7268, 2}.toDouble()), 72.68);
    EXPECT_EQ((Decimal{-1, 1}.toDouble()), -0.1);
}

TEST(Value, WritesBooleansAsTheHostDoes) {
    EXPECT_EQ(Value(true).toText(), "-1");
    EXPECT_EQ(Value(false).toText(), "0");
    EXPECT_EQ(Value(true).toInteger(), -1);
}

TEST(Value, WritesNullAsTheEmptyText) {
    EXPECT_EQ(Value().toText(), "");
}

TEST(Value, RoundsToIntegersHalfToEven) {
    EXPECT_EQ(Value(2.5).toInteger(), 2);
    EXPECT_EQ(Value(3.5).toInteger(), 4);
    EXPECT_EQ(Value("-2.5").toInteger(), -2);
}

TEST(Value, RefusesNumbersBeyondTheTypeAskedFor) {
    EXPECT_EQ(Value(32767).toInt16(), 32767);
    EXPECT_THROW(Value(32768).toInt16(), std::overflow_error);
    EXPECT_THROW(Value(std::int64_t{1} << 40).toInt32(), std::overflow_error);
    EXPECT_THROW(Value(1e19).toInteger(), std::overflow_error);
}

TEST(Value, RefusesToReadANumberFromNullOrText) {
    EXPECT_THROW(Value().toDouble(), std::invalid_argument);
    EXPECT_THROW(Value("").toDouble(), std::invalid_argument);
    EXPECT_THROW(Value("abc").toDouble(), std::invalid_argument);
    EXPECT_THROW(Value("12 a").toInteger(), std::invalid_argument);
    EXPECT_EQ(Value("  12.5  ").toDouble(), 12.5);
}

TEST(Value, ComparesKindAndContent) {
    EXPECT_EQ(Value(1), Value(std::int64_t{1}));
    EXPECT_NE(Value(1), Value("1"));
    EXPECT_NE(Value("AB"), Value("AB "));
    EXPECT_EQ(Value(), Value());
}

TEST(NullSafeText, CutsTrailingBlanksAndTurnsNullIntoTheEmptyText) {
    EXPECT_EQ(nullSafeText(Value("AB  ")), "AB");
    EXPECT_EQ(nullSafeText(Value("  AB")), "  AB");
    EXPECT_EQ(nullSafeText(Value("    ")), "");
    EXPECT_EQ(nullSafeText(Value()), "");
    EXPECT_EQ(nullSafeText(Value(12)), "12");
}

TEST(NullSafeNumber, TakesTheEmptyTextAsZero) {
    EXPECT_EQ(nullSafeNumber(Value()), 0.0);
    EXPECT_EQ(nullSafeNumber(Value("   ")), 0.0);
    EXPECT_EQ(nullSafeNumber(Value(Decimal{3333, 2})), 33.33);
    EXPECT_THROW(nullSafeNumber(Value("x")), std::invalid_argument);
}

TEST(ValueOrDefault, ReplacesNullEmptyAndBlankValuesOnly) {
    EXPECT_EQ(valueOrDefault(Value(), Value(7)), Value(7));
    EXPECT_EQ(valueOrDefault(Value("  "), Value(7)), Value(7));
    EXPECT_EQ(valueOrDefault(Value(0), Value(7)), Value(0));
    EXPECT_EQ(valueOrDefault(Value("A "), Value(7)), Value("A "));
}

TEST(Value, IsNotCopiedWhereThereIsNoMemoryForItsText) {
    const Value text(std::string(100, 'x'));
    std::optional<Value> copy;
    Value assigned(1);
    const auto withoutMemory = [](const auto& action) {
        try {
            const test::FailingAllocations noMemory(100);
            action();
        } catch (const std::bad_alloc&) {
            return true;
        }
        return false;
    };
    EXPECT_TRUE(withoutMemory([&] { copy.emplace(text); }));
    EXPECT_TRUE(withoutMemory([&] { assigned = text; }));
    EXPECT_FALSE(copy.has_value());
    EXPECT_EQ(assigned, Value(1));
    assigned = text;
    EXPECT_EQ(assigned, text);
}

} // namespace
} // namespace veldran
