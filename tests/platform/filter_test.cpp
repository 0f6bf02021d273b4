#include "platform/ado/filter_expression.h"
#include "tests/platform/recordset_fixture.h"

namespace veldran::test {
namespace {

const std::vector<ado::ColumnInfo>& filterColumns() {
    static const std::vector<ado::ColumnInfo> columns{column("SEGNO", ado::adNumeric, 2),
                                                      column("CAUSALE", ado::adWChar, 4),
                                                      column("PERC", ado::adNumeric, 5, 2),
                                                      column("N", ado::adInteger),
                                                      column("ATTIVO", ado::adBoolean),
                                                      column("DUE PAROLE", ado::adVarWChar, 20),
                                                      column("X", ado::adDouble)};
    return columns;
}

bool matches(const std::string& condition) {
    static const std::vector<Value> row{number(2), "AB  ", Value(), 7, true, "L'uva è buona", 2.5};
    return ado::FilterExpression::parse(condition, filterColumns())
        ->matches([](std::size_t index) -> const Value& { return row[index]; });
}

class MatchingFilter : public ::testing::TestWithParam<const char*> {};
TEST_P(MatchingFilter, ShowsTheRecord) {
    EXPECT_TRUE(matches(GetParam()));
}
INSTANTIATE_TEST_SUITE_P(
    Conditions, MatchingFilter,
    ::testing::Values("SEGNO = 2", "segno=2.00", "SEGNO <> 1", "SEGNO > 1.5", "SEGNO >= 2", "SEGNO < 3",
                      "SEGNO <= 2", "SEGNO > -1", "CAUSALE = 'AB'", "CAUSALE = 'ab      '", "CAUSALE < 'AC'",
                      "CAUSALE LIKE 'a*'", "CAUSALE LIKE 'A%'", "CAUSALE LIKE '*b'", "CAUSALE LIKE '*'",
                      "PERC = NULL", "PERC IS NULL", "N <> NULL", "N IS NOT NULL", "ATTIVO = TRUE",
                      "ATTIVO = 1", "ATTIVO <> false", "X = 2.5", "N = 7", "N < 7.5",
                      "[DUE PAROLE] = 'L''UVA È BUONA'", "[due parole] LIKE '*uva*buona'",
                      "SEGNO = 1 OR N = 7", "SEGNO = 2 AND N = 7", "SEGNO = 1 AND N = 1 OR X > 2",
                      "(SEGNO = 1 OR SEGNO = 2) AND (N = 7)", " ( ( N = 7 ) ) ", "N = 7 and CAUSALE = 'AB'"));

class HidingFilter : public ::testing::TestWithParam<const char*> {};
TEST_P(HidingFilter, HidesTheRecord) {
    EXPECT_FALSE(matches(GetParam()));
}
INSTANTIATE_TEST_SUITE_P(Conditions, HidingFilter,
                         ::testing::Values("SEGNO = 1", "SEGNO <> 2", "CAUSALE = 'A'", "CAUSALE LIKE 'B*'",
                                           "CAUSALE LIKE 'A'", "PERC = 0", "PERC <> 0", "PERC < 100",
                                           "PERC <> NULL", "N IS NULL", "ATTIVO = 0", "SEGNO = 2 AND N = 1",
                                           "SEGNO = 2 AND (N = 1 OR X = 1)"));

struct BadFilter {
    const char* text;
    int error;
    const char* place;

    friend void PrintTo(const BadFilter& filter, std::ostream* out) { *out << '"' << filter.text << '"'; }
};
class RefusedFilter : public ::testing::TestWithParam<BadFilter> {};
TEST_P(RefusedFilter, IsRefusedWithItsPlace) {
    try {
        matches(GetParam().text);
        FAIL() << GetParam().text;
    } catch (const ado::AdoError& error) {
        EXPECT_EQ(error.first().Number, GetParam().error) << error.what();
        EXPECT_NE(error.first().Description.find(GetParam().place), std::string::npos) << error.what();
    }
}
INSTANTIATE_TEST_SUITE_P(
    Texts, RefusedFilter,
    ::testing::Values(BadFilter{"   ", ado::adErrInvalidArgument, "posizione 4"},
                      BadFilter{"SEGNO", ado::adErrInvalidArgument, "posizione 6"},
                      BadFilter{"SEGNO =", ado::adErrInvalidArgument, "posizione 8"},
                      BadFilter{"SEGNO = x", ado::adErrInvalidArgument, "posizione 9"},
                      BadFilter{"SEGNO == 2", ado::adErrInvalidArgument, "posizione 8"},
                      BadFilter{"SEGNO = 2 AND", ado::adErrInvalidArgument, "posizione 14"},
                      BadFilter{"SEGNO = 2 N = 7", ado::adErrInvalidArgument, "posizione 11"},
                      BadFilter{"(SEGNO = 2", ado::adErrInvalidArgument, "posizione 11"},
                      BadFilter{"SEGNO = 2)", ado::adErrInvalidArgument, "posizione 10"},
                      BadFilter{"CAUSALE = 'AB", ado::adErrInvalidArgument, "posizione 14"},
                      BadFilter{"[DUE PAROLE = 1", ado::adErrInvalidArgument, "posizione 2"},
                      BadFilter{"N > NULL", ado::adErrInvalidArgument, "NULL"},
                      BadFilter{"N IS 7", ado::adErrInvalidArgument, "posizione 6"},
                      BadFilter{"ALTRO = 1", ado::adErrItemNotFound, "campo ALTRO"},
                      BadFilter{"SEGNO = 'due'", ado::adErrDataConversion, "campo SEGNO"},
                      BadFilter{"CAUSALE = 12", ado::adErrDataConversion, "campo CAUSALE"},
                      BadFilter{"CAUSALE LIKE 1", ado::adErrDataConversion, "campo CAUSALE"}));

TEST(Filter, RefusesParenthesesWithoutEnd) {
    EXPECT_ADO_ERROR(matches(std::string(100000, '(') + "N = 7"), ado::adErrInvalidArgument);
    EXPECT_TRUE(matches(std::string(50, '(') + "N = 7" + std::string(50, ')')));
}

} // namespace
} // namespace veldran::test
