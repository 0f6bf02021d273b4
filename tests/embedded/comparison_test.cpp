#include "adapters/embedded/collation.h"
#include "adapters/embedded/like.h"
#include "tests/embedded/session_fixture.h"

#include <random>

namespace veldran::embedded::test {

namespace {

struct Pair {
    const char* a;
    const char* b;
    int order;

    friend void PrintTo(const Pair& pair, std::ostream* out) {
        *out << '"' << pair.a << "\" and \"" << pair.b << '"';
    }
};

class TextOrder : public ::testing::TestWithParam<Pair> {};

struct LikeCase {
    const char* text;
    const char* pattern;
    bool matches;

    friend void PrintTo(const LikeCase& like, std::ostream* out) {
        *out << '"' << like.text << "\" LIKE \"" << like.pattern << '"';
    }
};

class LikeTable : public ::testing::TestWithParam<LikeCase> {};

std::string randomText(std::mt19937& random) {
    const std::vector<std::string> letters{"a", "A", "à", "À", "b", "B",  "e", "é",
                                           "è", "È", " ", "ß", "ł", "\t", "1"};
    std::string text;
    for (std::size_t i = random() % 5; i > 0; --i) {
        text += letters[random() % letters.size()];
    }
    return text;
}

int signOf(int value) {
    return (value > 0) - (value < 0);
}

} // namespace

TEST_P(TextOrder, IsTheSameFromBothSides) {
    const auto& [a, b, order] = GetParam();
    EXPECT_EQ(compareText(a, b), order) << a << " | " << b;
    EXPECT_EQ(compareText(b, a), -order);
}

INSTANTIATE_TEST_SUITE_P(Texts, TextOrder,
                         ::testing::Values(Pair{"", "", 0}, Pair{"", "   ", 0}, Pair{"abc", "ABC  ", 0},
                                           Pair{"abc", "abd", -1}, Pair{"ab", "abc", -1},
                                           Pair{"ab ", "ab\t", 1}, Pair{"città", "CITTÀ", 0},
                                           Pair{"citta", "città", -1}, Pair{"cittadella", "città", 1},
                                           Pair{"à", "b", -1}, Pair{"è", "é", -1}, Pair{"Øre", "øRE", 0},
                                           Pair{"Ž", "ž  ", 0}, Pair{"Ñ", "n", 1}, Pair{"ДОМ", "дом", 0},
                                           Pair{"ΑΒΓ", "αβγ", 0}, Pair{"10", "9", -1}, Pair{"a b", "ab", -1},
                                           Pair{"abc\xFF", "abc", 1}));

TEST(TextOrdering, IsTransitiveOverRandomTexts) {
    std::mt19937 random(20240611);
    for (int i = 0; i < 20000; ++i) {
        const std::string a = randomText(random);
        const std::string b = randomText(random);
        const std::string c = randomText(random);
        ASSERT_EQ(signOf(compareText(a, b)), -signOf(compareText(b, a)));
        if (compareText(a, b) <= 0 && compareText(b, c) <= 0) {
            ASSERT_LE(compareText(a, c), 0) << a << "|" << b << "|" << c;
        }
    }
}

TEST_P(LikeTable, MatchesAsTheServerDoes) {
    const auto& [text, pattern, matches] = GetParam();
    EXPECT_EQ(LikePattern(pattern, std::nullopt).matches(text), matches) << text << " LIKE " << pattern;
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, LikeTable,
    ::testing::Values(LikeCase{"", "", true}, LikeCase{"", "%", true}, LikeCase{"", "_", false},
                      LikeCase{"a", "", false}, LikeCase{"abc", "ABC", true}, LikeCase{"abc", "abc ", false},
                      LikeCase{"abc ", "abc", false}, LikeCase{"abc", "a%", true},
                      LikeCase{"abc", "%c", true}, LikeCase{"abc", "%b%", true}, LikeCase{"abc", "a_c", true},
                      LikeCase{"abc", "a_", false}, LikeCase{"aXbXc", "a%b%c", true},
                      LikeCase{"aXbXd", "a%b%c", false}, LikeCase{"mississippi", "%issip%", true},
                      LikeCase{"b", "[a-c]", true}, LikeCase{"d", "[a-c]", false},
                      LikeCase{"d", "[^a-c]", true}, LikeCase{"-", "[a-]", true}, LikeCase{"%", "[%]", true},
                      LikeCase{"x", "[%]", false}, LikeCase{"[", "[[]", true}, LikeCase{"a", "[abc", false},
                      LikeCase{"È", "è", true}, LikeCase{"e", "è", false}, LikeCase{"città", "citt_", true}));

TEST(LikeEscape, MakesTheNextCharacterStandForItself) {
    EXPECT_TRUE(LikePattern("50!%", U'!').matches("50%"));
    EXPECT_FALSE(LikePattern("50!%", U'!').matches("500"));
    EXPECT_TRUE(LikePattern("a!!b", U'!').matches("a!b"));
}

TEST_F(SessionTest, ComparesGroupsAndOrdersBlindToCaseAndTrailingBlanks) {
    run({"CREATE TABLE T (A NVARCHAR(10), B INT)", "INSERT INTO T VALUES ('uno', 1), ('UNO  ', 2), ('Due', "
                                                   "3), (N'È', 4), (N'è', 5), ('e', 6), (NULL, 7)"});
    EXPECT_EQ(rows("SELECT COUNT(*) FROM T WHERE A = 'Uno'"), (Rows{{"2"}}));
    EXPECT_EQ(rows("SELECT COUNT(*) FROM T WHERE A IN ('UNO', 'due   ')"), (Rows{{"3"}}));
    EXPECT_EQ(rows("SELECT COUNT(*) FROM T WHERE A <> N'È'"), (Rows{{"4"}}));
    EXPECT_EQ(rows("SELECT SUM(B) FROM T GROUP BY A ORDER BY A"), (Rows{{"7"}, {"3"}, {"6"}, {"9"}, {"3"}}));
    EXPECT_EQ(rows("SELECT COUNT(*) FROM (SELECT DISTINCT A FROM T) AS D"), (Rows{{"5"}}));
    EXPECT_EQ(rows("SELECT COUNT(DISTINCT A) FROM T"), (Rows{{"4"}}));
    EXPECT_EQ(rows("SELECT X.B FROM T AS X INNER JOIN T AS Y ON X.A = Y.A WHERE Y.B = 2 ORDER BY X.B"),
              (Rows{{"1"}, {"2"}}));
    EXPECT_EQ(rows("SELECT B FROM T ORDER BY A, B"), (Rows{{"7"}, {"3"}, {"6"}, {"4"}, {"5"}, {"1"}, {"2"}}));
}

TEST_F(SessionTest, ComputedTextComparesLikeStoredText) {
    run({"CREATE TABLE T (A NVARCHAR(10))", "INSERT INTO T VALUES ('abX'), ('ABy')"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE SUBSTRING(A, 1, 2) = 'aB'"), "2");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM (SELECT DISTINCT LEFT(A, 2) AS P FROM T) AS D"), "1");
    EXPECT_EQ(rows("SELECT COUNT(*) FROM T GROUP BY LEFT(A, 2)"), (Rows{{"2"}}));
    EXPECT_EQ(cell("SELECT COUNT(*) FROM (SELECT LEFT(A, 2) AS P FROM T) AS D WHERE P = 'ab '"), "2");
    EXPECT_EQ(rows("SELECT LEFT(A, 2) FROM T UNION SELECT 'AB'").size(), 1U);
    EXPECT_EQ(cell("SELECT CASE LEFT(A, 2) WHEN 'AB' THEN 1 ELSE 0 END FROM T WHERE A = 'abx'"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE LEFT(A, 2) IN (SELECT 'AB')"), "2");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE ISNULL(A, '') = 'ABX'"), "1");
}

TEST_F(SessionTest, JoinsTextsThatDifferInTheBlanksAtTheirEnd) {
    for (const std::string sign : {"", "#"}) {
        const std::string codes = sign + "CODICI";
        const std::string accounts = sign + "CONTI";
        run({"CREATE TABLE " + codes + " (CODICE NVARCHAR(10) NULL)",
             "CREATE TABLE " + accounts + " (CONTO NCHAR(6) NOT NULL)",
             "DECLARE @N INT SET @N = 0 WHILE @N < 50 BEGIN INSERT INTO " + codes +
                 " VALUES (CAST(@N AS NVARCHAR(10))) INSERT INTO " + accounts +
                 " VALUES (CAST(@N AS NVARCHAR(10))) SET @N = @N + 1 END"});
        EXPECT_EQ(cell("SELECT COUNT(*) FROM " + codes + " INNER JOIN " + accounts + " ON CODICE = CONTO"),
                  "50");
        EXPECT_EQ(cell("SELECT COUNT(*) FROM " + codes + " LEFT OUTER JOIN " + accounts +
                       " ON CODICE = CONTO WHERE CONTO IS NULL"),
                  "0");
    }
}

TEST_F(SessionTest, LikeSeesTheBlanksOfFixedText) {
    run({"CREATE TABLE T (A NCHAR(5), B NVARCHAR(5))", "INSERT INTO T VALUES ('abc', 'abc')"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A LIKE 'abc'"), "0");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A LIKE 'abc%'"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A LIKE '%c'"), "0");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE B LIKE 'ABC'"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE B NOT LIKE 'x%'"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE B LIKE 'a!%%' ESCAPE '!'"), "0");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE B LIKE NULL"), "0");
    run({"CREATE TABLE P (V NVARCHAR(5), E NCHAR(1))", "INSERT INTO P VALUES ('a!b', '!'), ('a!b', '#')"});
    EXPECT_EQ(rows("SELECT E FROM P WHERE 'ab' LIKE V ESCAPE E"), (Rows{{"!"}}));
    EXPECT_EQ(cell("SELECT COUNT(*) FROM P WHERE V LIKE 'a!b' ESCAPE E"), "1");
}

TEST_F(SessionTest, APrefixPatternFindsExactlyWhatBeginsWithIt) {
    run({"CREATE TABLE T (A NVARCHAR(10))", "INSERT INTO T VALUES ('01'), ('010'), ('0102'), ('0102x'), "
                                            "('0103'), ('02'), (N'01é'), ('Ab'), ('aBc'), (N'àb')"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A LIKE '01%'"), "6");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A LIKE '0102%'"), "2");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A LIKE 'ab%'"), "2");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A LIKE '01%é'"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A LIKE '0102'"), "1");
}

TEST_F(SessionTest, ANumberAndATextCompareAsNumbers) {
    run({"CREATE TABLE T (A DECIMAL(5), B NVARCHAR(5), C DECIMAL(5, 2))",
         "INSERT INTO T VALUES (7, '07', 7.50)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A = '7'"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE B = 7"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE C = 7.5"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE C > A"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A = 7.001"), "0");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE C BETWEEN 7 AND 7.5"), "1");
    EXPECT_EQ(error("SELECT COUNT(*) FROM T WHERE A = 'sette'").Number, 8114);
}

TEST_F(SessionTest, NullIsNeitherEqualNorDifferent) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (NULL), (1)"});
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A = NULL"), "0");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE NOT (A = 2)"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A NOT IN (2, NULL)"), "0");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A IS NULL"), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE A NOT BETWEEN 5 AND 9"), "1");
}

} // namespace veldran::embedded::test
