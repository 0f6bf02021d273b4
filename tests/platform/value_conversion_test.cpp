#include "platform/ado/value_conversion.h"
#include "tests/platform/recordset_fixture.h"

#include <cmath>
#include <limits>

namespace veldran::test {
namespace {

using ado::Places;

Value into(ado::DataTypeEnum type, const Value& value, int size = 0, int precision = 0, int scale = 0,
           Places places = Places::Rounded) {
    return ado::converted(
        value,
        {{"campo", "X"}, type, size, static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale)},
        places);
}

TEST(ValueConversion, LeavesNullAlone) {
    EXPECT_EQ(into(ado::adNumeric, Value(), 0, 5, 2), Value());
    EXPECT_EQ(into(ado::adWChar, Value(), 4), Value());
}

TEST(ValueConversion, RoundsADecimalHalfAwayFromZero) {
    EXPECT_EQ(into(ado::adNumeric, Value(Decimal{12345, 3}), 0, 5, 2), percent(1235));
    EXPECT_EQ(into(ado::adNumeric, Value(-12.345), 0, 5, 2), percent(-1235));
    EXPECT_EQ(into(ado::adNumeric, Value("12.344"), 0, 5, 2), percent(1234));
    EXPECT_EQ(into(ado::adNumeric, Value(7), 0, 5, 2), percent(700));
    EXPECT_EQ(into(ado::adNumeric, Value("  7 "), 0, 5, 2), percent(700));
}

TEST(ValueConversion, RoundsTheDigitsOfADoubleAsTheyAreWritten) {
    EXPECT_EQ(into(ado::adNumeric, Value(1.005), 0, 5, 2), percent(101));
    EXPECT_EQ(into(ado::adNumeric, Value(0.1 + 0.2), 0, 5, 2), percent(30));
    EXPECT_EQ(into(ado::adNumeric, Value(1e-300), 0, 5, 2), percent(0));
}

TEST(ValueConversion, RefusesADecimalBeyondItsPrecision) {
    EXPECT_EQ(into(ado::adNumeric, Value(Decimal{99999, 2}), 0, 5, 2), percent(99999));
    EXPECT_ADO_ERROR(into(ado::adNumeric, Value(1000), 0, 5, 2), ado::sqlErrOverflow);
    EXPECT_ADO_ERROR(into(ado::adNumeric, Value(Decimal{999995, 3}), 0, 5, 2), ado::sqlErrOverflow);
    EXPECT_ADO_ERROR(into(ado::adNumeric, Value(1e30), 0, 18, 0), ado::sqlErrOverflow);
    EXPECT_ADO_ERROR(into(ado::adNumeric, Value(std::numeric_limits<std::int64_t>::max()), 0, 18, 2),
                     ado::sqlErrOverflow);
}

TEST(ValueConversion, RoundsIntegersHalfToEvenAndKeepsThemInRange) {
    EXPECT_EQ(into(ado::adInteger, Value(2.5)), Value(2));
    EXPECT_EQ(into(ado::adSmallInt, Value("-32768")), Value(-32768));
    EXPECT_EQ(into(ado::adInteger, Value(Decimal{1200, 2})), Value(12));
    EXPECT_ADO_ERROR(into(ado::adSmallInt, Value(32768)), ado::sqlErrOverflow);
    EXPECT_ADO_ERROR(into(ado::adInteger, Value(std::int64_t{1} << 31)), ado::sqlErrOverflow);
    EXPECT_ADO_ERROR(into(ado::adBigInt, Value(1e19)), ado::sqlErrOverflow);
}

TEST(ValueConversion, RefusesPlacesThatTheTypeCannotHoldWhenAskedTo) {
    EXPECT_ADO_ERROR(into(ado::adNumeric, Value(Decimal{12345, 3}), 0, 5, 2, Places::Refused),
                     ado::adErrDataConversion);
    EXPECT_ADO_ERROR(into(ado::adNumeric, Value("12.345"), 0, 5, 2, Places::Refused),
                     ado::adErrDataConversion);
    EXPECT_EQ(into(ado::adNumeric, Value(Decimal{12340, 3}), 0, 5, 2, Places::Refused), percent(1234));
    EXPECT_EQ(into(ado::adNumeric, Value(0.1 + 0.2), 0, 5, 2, Places::Refused), percent(30));
    EXPECT_EQ(into(ado::adNumeric, Value(33.33), 0, 5, 2, Places::Refused), percent(3333));
}

TEST(ValueConversion, RefusesTextThatIsTooLongButDropsItsTrailingBlanks) {
    EXPECT_EQ(into(ado::adWChar, Value("ABCD  "), 4), Value("ABCD"));
    EXPECT_EQ(into(ado::adWChar, Value("àèìò"), 4), Value("àèìò"));
    EXPECT_EQ(into(ado::adVarWChar, Value("senza limite"), 0), Value("senza limite"));
    EXPECT_ADO_ERROR(into(ado::adWChar, Value("ABCDE"), 4), ado::sqlErrTextTooLong);
    EXPECT_ADO_ERROR(into(ado::adVarWChar, Value("ABCD  X"), 4), ado::sqlErrTextTooLong);
    EXPECT_ADO_ERROR(into(ado::adWChar, Value(12345), 4), ado::sqlErrTextTooLong);
}

TEST(ValueConversion, WritesNumbersAsText) {
    EXPECT_EQ(into(ado::adWChar, Value(12), 4), Value("12"));
}

TEST(ValueConversion, TakesAnyNumberForABoolean) {
    EXPECT_EQ(into(ado::adBoolean, Value(2)), Value(true));
    EXPECT_EQ(into(ado::adBoolean, Value("0")), Value(false));
    EXPECT_ADO_ERROR(into(ado::adBoolean, Value("")), ado::adErrDataConversion);
}

TEST(ValueConversion, RefusesWhatIsNoNumberOrNotFinite) {
    EXPECT_ADO_ERROR(into(ado::adDouble, Value("x")), ado::adErrDataConversion);
    EXPECT_ADO_ERROR(into(ado::adDouble, Value(std::nan(""))), ado::adErrDataConversion);
    EXPECT_ADO_ERROR(into(ado::adNumeric, Value(INFINITY), 0, 5, 2), ado::adErrDataConversion);
    EXPECT_ADO_ERROR(into(ado::adNumeric, Value(""), 0, 5, 2), ado::adErrDataConversion);
    EXPECT_ADO_ERROR(into(ado::adInteger, Value("12,5")), ado::adErrDataConversion);
}

TEST(ValueConversion, NamesTheCarrierAndTheValueInItsRefusal) {
    try {
        into(ado::adWChar, Value("ABCDE"), 4);
        FAIL();
    } catch (const ado::AdoError& error) {
        EXPECT_NE(error.first().Description.find("campo X"), std::string::npos);
        EXPECT_NE(error.first().Description.find("ABCDE"), std::string::npos);
        EXPECT_EQ(error.first().SQLState, "22001");
    }
}

TEST(PaddedTo, FillsWithBlanksByCharactersNotBytes) {
    EXPECT_EQ(ado::paddedTo(4, "è"), "è   ");
    EXPECT_EQ(ado::paddedTo(2, "ABC"), "ABC");
    EXPECT_EQ(ado::paddedTo(0, "A"), "A");
}

} // namespace
} // namespace veldran::test
