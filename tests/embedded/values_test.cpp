#include "tests/embedded/session_fixture.h"

namespace veldran::embedded::test {

namespace {

struct Refusal {
    const char* type;
    const char* value;
    int number;

    friend void PrintTo(const Refusal& shown, std::ostream* out) {
        *out << shown.type << " of " << shown.value;
    }
};

struct Stored {
    const char* type;
    const char* value;
    const char* expected;

    friend void PrintTo(const Stored& shown, std::ostream* out) {
        *out << shown.type << " of " << shown.value;
    }
};

class RefusedValues : public SessionTest, public ::testing::WithParamInterface<Refusal> {};
class StoredValues : public SessionTest, public ::testing::WithParamInterface<Stored> {};
class RefusedTypes : public SessionTest, public ::testing::WithParamInterface<std::pair<const char*, int>> {};

} // namespace

TEST_P(RefusedTypes, GiveTheirNumber) {
    EXPECT_EQ(error(std::string("CREATE TABLE T (A ") + GetParam().first + ")").Number, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Types, RefusedTypes,
                         ::testing::Values(std::pair{"SQUARE", 2715}, std::pair{"DATETIME", 40517},
                                           std::pair{"DECIMAL(0)", 2750}, std::pair{"DECIMAL(5, 6)", 2750},
                                           std::pair{"DECIMAL(19)", 40517}, std::pair{"NCHAR(0)", 131},
                                           std::pair{"NCHAR(4001)", 131}, std::pair{"INT(3)", 2716}));

TEST_P(RefusedValues, GiveTheirNumberAndLeaveTheTableAlone) {
    execute(std::string("CREATE TABLE T (A ") + GetParam().type + ")");
    EXPECT_EQ(error(std::string("INSERT INTO T VALUES (") + GetParam().value + ")").Number,
              GetParam().number);
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T"), "0");
}

INSTANTIATE_TEST_SUITE_P(
    Values, RefusedValues,
    ::testing::Values(
        Refusal{"NCHAR(4) NOT NULL", "NULL", 515}, Refusal{"NCHAR(4)", "'ABCDE'", 8152},
        Refusal{"NVARCHAR(4)", "'ABC' + 'DE'", 8152}, Refusal{"NVARCHAR(2)", "N'àèì'", 8152},
        Refusal{"TINYINT", "256", 8115}, Refusal{"TINYINT", "-1", 8115}, Refusal{"SMALLINT", "32768", 8115},
        Refusal{"INT", "2147483648", 8115}, Refusal{"INT", "2147483647 + 1", 8115},
        Refusal{"BIGINT", "CAST(9223372036854775807 AS BIGINT) + 1", 8115}, Refusal{"INT", "'dodici'", 245},
        Refusal{"INT", "'12.5'", 245}, Refusal{"DECIMAL(5, 2)", "1000", 8115},
        Refusal{"DECIMAL(5, 2)", "999.995", 8115}, Refusal{"DECIMAL(3)", "'x'", 8114},
        Refusal{"DECIMAL(2)", "99.5", 8115}, Refusal{"FLOAT", "'x'", 8114}, Refusal{"BIT", "'forse'", 245},
        Refusal{"INT", "1 / 0", 8134}, Refusal{"INT", "1 % 0", 8134},
        Refusal{"DECIMAL(5, 2)", "1.5 / 0", 8134}, Refusal{"FLOAT", "1E0 / 0", 8134},
        Refusal{"INT", "1 / (2 - 2)", 8134}, Refusal{"INT", "(SELECT 1 UNION ALL SELECT 2)", 512}));

TEST_P(StoredValues, ComeBackAsTheServerGivesThem) {
    execute(std::string("CREATE TABLE T (A ") + GetParam().type + ")");
    execute(std::string("INSERT INTO T VALUES (") + GetParam().value + ")");
    EXPECT_EQ(cell("SELECT A FROM T"), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, StoredValues,
    ::testing::Values(Stored{"NCHAR(4)", "'A'", "A   "}, Stored{"NCHAR(4)", "'AB     '", "AB  "},
                      Stored{"NCHAR(3)", "N'àè'", "àè "}, Stored{"NVARCHAR(4)", "'A '", "A "},
                      Stored{"NVARCHAR(4)", "'AB        '", "AB  "}, Stored{"VARCHAR(20)", "12", "12"},
                      Stored{"VARCHAR(20)", "12.50", "12.50"}, Stored{"NCHAR(6)", "12.5", "12.5  "},
                      Stored{"BIT", "5", "1"}, Stored{"BIT", "0", "0"}, Stored{"BIT", "NULL", "NULL"},
                      Stored{"BIT", "'true'", "1"}, Stored{"SMALLINT", "-32768", "-32768"},
                      Stored{"INT", "12.9", "12"}, Stored{"INT", "-12.9", "-12"},
                      Stored{"INT", "' 12 '", "12"}, Stored{"BIGINT", "3000000000", "3000000000"},
                      Stored{"DECIMAL(5, 2)", "1.005", "1.01"}, Stored{"DECIMAL(5, 2)", "-1.005", "-1.01"},
                      Stored{"DECIMAL(5, 2)", "1.004", "1.00"}, Stored{"DECIMAL(5, 2)", "100", "100.00"},
                      Stored{"DECIMAL(5, 2)", "'12.345'", "12.35"}, Stored{"DECIMAL(3)", "2.5", "3"},
                      Stored{"DECIMAL(18)", "999999999999999999", "999999999999999999"},
                      Stored{"FLOAT", "1.5", "1.5"}, Stored{"FLOAT", "3", "3"}));

TEST_F(SessionTest, DecimalArithmeticIsExact) {
    EXPECT_EQ(rows("SELECT 0.1 + 0.2, 1.10 * 3.00, 10.00 - 0.01, 2.0 / 3, -7 / 2, 7 % 4, 100 * 0.335"),
              (Rows{{"0.3", "3.3000", "9.99", "0.666666", "-3", "3", "33.500"}}));
}

TEST_F(SessionTest, SumsKeepTheScaleAndCountsAreIntegers) {
    run({"CREATE TABLE T (A DECIMAL(5, 2), B SMALLINT)",
         "INSERT INTO T VALUES (0.10, 1), (0.20, 2), (NULL, 4)"});
    EXPECT_EQ(rows("SELECT SUM(A), AVG(A), COUNT(A), COUNT(*), SUM(B), AVG(B), MIN(A), MAX(B) FROM T"),
              (Rows{{"0.30", "0.150000", "2", "3", "7", "2", "0.10", "4"}}));
    EXPECT_EQ(rows("SELECT SUM(A), COUNT(*), AVG(B) FROM T WHERE B > 9"), (Rows{{"NULL", "0", "NULL"}}));
    const auto result = execute("SELECT SUM(A), COUNT(*), SUM(B) FROM T");
    EXPECT_EQ(result.rows->columns()[0].type, ado::adNumeric);
    EXPECT_EQ(result.rows->columns()[1].type, ado::adInteger);
    EXPECT_EQ(result.rows->columns()[2].type, ado::adInteger);
}

TEST_F(SessionTest, ASumBeyondItsTypeIsRefused) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (2000000000), (2000000000)"});
    EXPECT_EQ(error("SELECT SUM(A) FROM T").Number, 8115);
    EXPECT_EQ(error("SELECT A + A FROM T").Number, 8115);
    EXPECT_EQ(cell("SELECT SUM(CAST(A AS BIGINT)) FROM T"), "4000000000");
}

TEST_F(SessionTest, CastsCutTextAndRoundNumbers) {
    EXPECT_EQ(
        rows("SELECT CAST('ABCDEF' AS NVARCHAR(3)), CAST('AB' AS NCHAR(4)), CAST(2.567 AS DECIMAL(5, 1)), "
             "CAST(2.567 AS INT), CONVERT(NVARCHAR(10), 12), CAST('12.50' AS DECIMAL(5, 2)), CAST(3 AS BIT)"),
        (Rows{{"ABC", "AB  ", "2.6", "2", "12", "12.50", "1"}}));
}

TEST_F(SessionTest, ACastThatCannotBeIsRefused) {
    EXPECT_EQ(error("SELECT CAST('dieci' AS INT)").Number, 245);
    EXPECT_EQ(error("SELECT CAST(12345 AS NVARCHAR(3))").Number, 8115);
    EXPECT_EQ(error("SELECT CAST(300 AS TINYINT)").Number, 8115);
    EXPECT_EQ(error("SELECT CONVERT(NVARCHAR(10), 12, 103)").Number, 40517);
}

TEST_F(SessionTest, TextFunctionsCountCharactersAndIgnoreBlanksAtTheEnd) {
    EXPECT_EQ(
        rows("SELECT LEN(N'città  '), LEFT(N'èlite', 2), RIGHT(N'città', 2), SUBSTRING(N'àbcde', 2, 3), "
             "SUBSTRING('abc', 0, 3), SUBSTRING('abc', 2, 9), RTRIM('a  ') + '|', LTRIM('  a'), "
             "UPPER(N'però'), "
             "LOWER(N'È'), REPLACE('aXbx', 'x', '-'), CHARINDEX('C', 'abcabc'), CHARINDEX('c', 'abcabc', 4), "
             "REPLICATE('ab', 3), SPACE(2) + '|'"),
        (Rows{{"5", "èl", "tà", "bcd", "ab", "bc", "a|", "a", "PERÒ", "è", "a-b-", "3", "6", "ababab",
               "  |"}}));
    EXPECT_EQ(error("SELECT SUBSTRING('abc', 1, -1)").Number, 537);
    EXPECT_EQ(error("SELECT SUBSTRING('abc')").Number, 174);
    EXPECT_EQ(error("SELECT REVERSE('abc')").Number, 195);
}

TEST_F(SessionTest, FixedTextKeepsItsBlanksWhenItIsJoined) {
    run({"CREATE TABLE T (A NCHAR(4), B NVARCHAR(4))", "INSERT INTO T VALUES ('ab', 'cd')"});
    EXPECT_EQ(cell("SELECT A + B + '|' FROM T"), "ab  cd|");
    EXPECT_EQ(cell("SELECT LEN(A) FROM T"), "2");
    EXPECT_EQ(cell("SELECT A + NULL FROM T"), "NULL");
}

TEST_F(SessionTest, PlusAddsNumbersAndJoinsTexts) {
    EXPECT_EQ(rows("SELECT 1 + 2, '1' + '2', 1 + '2'"), (Rows{{"3", "12", "3"}}));
    EXPECT_EQ(error("SELECT 1 + 'x'").Number, 245);
    EXPECT_EQ(error("SELECT 'a' - 'b'").Number, 402);
}

TEST_F(SessionTest, PowersOfIntegersAreIntegers) {
    EXPECT_EQ(
        rows("SELECT POWER(2, 9), POWER(2.0E0, 3), ABS(-3), ROUND(2.567, 1), ISNULL(NULL, 5), NULLIF(1, 1), "
             "COALESCE(NULL, NULL, 7)"),
        (Rows{{"512", "8", "3", "2.600", "5", "NULL", "7"}}));
    EXPECT_EQ(error("SELECT POWER(10, 10)").Number, 8115);
}

TEST_F(SessionTest, BitwiseOperatorsWorkOnIntegers) {
    EXPECT_EQ(rows("SELECT 6 & 3, 6 | 3, 6 ^ 3"), (Rows{{"2", "7", "5"}}));
    EXPECT_EQ(error("SELECT 1.5 & 1").Number, 402);
}

} // namespace veldran::embedded::test
