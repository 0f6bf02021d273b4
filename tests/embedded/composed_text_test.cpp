// Parts of one text and constants, joined by "+", are put together at once.
#include "tests/embedded/session_fixture.h"

#include <random>

namespace veldran::embedded::test {

namespace {

class ComposedTexts : public SessionTest {
protected:
    ComposedTexts() {
        run({"CREATE TABLE #TESTI (N INT NOT NULL PRIMARY KEY, T NVARCHAR(12) NULL, F NCHAR(6) NULL, I INT "
             "NULL, J "
             "INT NULL, K INT NULL)"});
    }
    bool isComposed(const std::string& text) {
        return session_->explain(text, {}).find("ts_compose(") != std::string::npos;
    }
};

} // namespace

TEST_F(ComposedTexts, CountCharactersAndNotBytes) {
    run({"INSERT INTO #TESTI VALUES (1, N'àèìòù€𝄞z', N'é', NULL, NULL, NULL)"});
    const std::string text =
        "SELECT SUBSTRING(T, 2, 3) + N'–' + SUBSTRING(T, 6, 2) + LEFT(T, 1), SUBSTRING(F, 1, 3) "
        "+ '|' + SUBSTRING(F, 6, 9) + '|' FROM #TESTI";
    EXPECT_TRUE(isComposed(text));
    EXPECT_EQ(rows(text), (Rows{{"èìò–€𝄞à", "é  | |"}}));
}

TEST_F(ComposedTexts, AreNothingOfNothing) {
    run({"INSERT INTO #TESTI VALUES (1, NULL, NULL, NULL, NULL, NULL), (2, '', '', NULL, NULL, NULL)"});
    EXPECT_EQ(
        rows("SELECT SUBSTRING(T, 1, 2) + '/' + SUBSTRING(T, 5, 2), '<' + LEFT(T, 0) FROM #TESTI ORDER BY N"),
        (Rows{{"NULL", "NULL"}, {"/", "<"}}));
}

TEST_F(ComposedTexts, CompareByTheCollationAsAnyText) {
    run({"INSERT INTO #TESTI VALUES (1, 'abcd', 'x', NULL, NULL, NULL), (2, 'ABCD', 'y', NULL, NULL, NULL)"});
    EXPECT_EQ(rows("SELECT N FROM #TESTI WHERE SUBSTRING(T, 3, 2) + SUBSTRING(T, 1, 2) = 'CdaB' ORDER BY N"),
              (Rows{{"1"}, {"2"}}));
    EXPECT_EQ(rows("SELECT DISTINCT LEFT(T, 2) + '-' FROM #TESTI").size(), 1U);
}

TEST_F(ComposedTexts, AreJoinedPartByPartWhereThereAreManyOrOfSeveralTexts) {
    run({"INSERT INTO #TESTI VALUES (1, 'abc', 'x', NULL, NULL, NULL)"});
    std::string many = "SUBSTRING(T, 1, 1)";
    for (int i = 0; i < 60; ++i) {
        many += " + SUBSTRING(T, " + std::to_string(1 + i % 3) + ", 1)";
    }
    std::string expected = "a";
    for (int i = 0; i < 60; ++i) {
        expected += "abc"[i % 3];
    }
    EXPECT_EQ(cell("SELECT " + many + " FROM #TESTI"), expected);
    EXPECT_EQ(cell("SELECT SUBSTRING(T, 2, 1) + SUBSTRING(F, 1, 1) + SUBSTRING(T, 1, 1) FROM #TESTI"), "bxa");
}

TEST_F(ComposedTexts, AreWhatTheirPartsAreOneByOne) {
    const std::vector<std::string> letters{"a", "è", "€", "𝄞", " ", "0"};
    std::mt19937 random(20261122);
    for (int n = 0; n < 200; ++n) {
        std::string text;
        for (std::size_t i = random() % 9; i > 0; --i) {
            text += letters[random() % letters.size()];
        }
        const auto number = [&] { return std::to_string(random() % 7); };
        const std::string i = std::to_string(1 + random() % 6);
        const std::string j = number();
        const std::string k = number();
        run({"DELETE FROM #TESTI",
             "INSERT INTO #TESTI VALUES (1, N'" + text + "', NULL, " + i + ", " + j + ", " + k + ")"});
        const auto joined = [](const std::string& from, const std::string& first, const std::string& second) {
            return "SELECT '<' + SUBSTRING(T, " + from + ", " + first + ") + '/' + SUBSTRING(T, " + from +
                   ", " + second + ") FROM #TESTI";
        };
        EXPECT_TRUE(isComposed(joined(i, j, k)));
        EXPECT_FALSE(isComposed(joined("I", "J", "K")));
        EXPECT_EQ(rows(joined(i, j, k)), rows(joined("I", "J", "K"))) << text;
    }
}

} // namespace veldran::embedded::test
