// Parts of one text and constants, joined by "+", are put together at once.
#include "tests/embedded/session_fixture.h"

#include <algorithm>
#include <optional>
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

using Characters = std::vector<std::string>;

std::string plain(const Characters& text) {
    std::string result;
    for (const std::string& character : text) {
        result += character;
    }
    return result;
}

std::string literal(const Characters& text) {
    std::string result = "N'";
    for (const std::string& character : text) {
        result += character == "'" ? "''" : character;
    }
    return result + "'";
}

struct Part {
    std::string sql;
    std::optional<std::string> value; // what it stands for; nothing is NULL
};

/// Texts, constants and parts of columns, at random.
class Parts {
public:
    explicit Parts(unsigned seed) : random_(seed) {}

    std::size_t among(std::size_t count) { return random_() % count; }
    Characters text(std::size_t most) {
        const Characters letters{"a", "è", "€", "𝄞", " ", "0", "Z", "'"};
        Characters result;
        for (std::size_t i = among(most + 1); i > 0; --i) {
            result.push_back(letters[among(letters.size())]);
        }
        return result;
    }
    std::optional<Characters> column(std::size_t most) {
        return among(8) == 0 ? std::nullopt : std::optional(text(most));
    }
    Part constant() {
        const Characters characters = text(3);
        return {literal(characters), plain(characters)};
    }
    /// \param any also what is no part of a text at a fixed place
    Part of(const std::string& column, const std::optional<Characters>& text, bool any) {
        constexpr std::size_t huge = 2147483647;
        const std::size_t first = among(9) == 0 ? huge : 1 + among(8);
        const std::size_t count = among(9) == 0 ? huge : among(8);
        const std::size_t size = text ? text->size() : 0;
        const auto cut = [&](std::size_t from, std::size_t length) {
            const auto begin = std::min(from, size);
            const auto end = begin + std::min(length, size - begin);
            return text ? std::optional(plain(Characters(text->begin() + static_cast<std::ptrdiff_t>(begin),
                                                         text->begin() + static_cast<std::ptrdiff_t>(end))))
                        : std::nullopt;
        };
        const std::string number = std::to_string(count);
        switch (among(any ? 8 : 5)) {
        case 0:
            return constant();
        case 1:
            return {"LEFT(" + column + ", " + number + ")", cut(0, count)};
        case 5:
            return {"RIGHT(" + column + ", " + number + ")", cut(size - std::min(count, size), count)};
        case 6:
            return {"SUBSTRING(" + column + ", -1, " + number + ")", cut(0, count < 2 ? 0 : count - 2)};
        case 7:
            return {"SUBSTRING(I, 2, 2)", "23"};
        default:
            return {"SUBSTRING(" + column + ", " + std::to_string(first) + ", " + number + ")",
                    cut(first - 1, count)};
        }
    }

private:
    std::mt19937 random_;
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

TEST_F(ComposedTexts, AreTheCharactersThatTheTextSaysWhateverItIsMadeOf) {
    Parts parts(20261123);
    int composed = 0;
    for (int n = 0; n < 400; ++n) {
        const std::optional<Characters> t = parts.column(12);
        std::optional<Characters> f = parts.column(6);
        run({"DELETE FROM #TESTI", "INSERT INTO #TESTI VALUES (1, " + (t ? literal(*t) : "NULL") + ", " +
                                       (f ? literal(*f) : "NULL") + ", 1234, NULL, NULL)"});
        if (f) {
            f->resize(6, " ");
        }
        const bool mixed = parts.among(3) == 0;
        const bool ofFixed = parts.among(2) == 0;
        Part whole = parts.constant();
        for (std::size_t count = parts.among(parts.among(6) == 0 ? 60 : 7); count > 0; --count) {
            const bool fixed = mixed ? parts.among(2) == 0 : ofFixed;
            const Part part = fixed ? parts.of("F", f, mixed) : parts.of("T", t, mixed);
            const bool before = count < 10 && parts.among(4) == 0;
            whole.sql = before ? part.sql + " + (" + whole.sql + ")" : whole.sql + " + " + part.sql;
            const bool known = part.value && whole.value;
            whole.value = !known   ? std::nullopt
                          : before ? std::optional(*part.value + *whole.value)
                                   : std::optional(*whole.value + *part.value);
        }
        composed += isComposed("SELECT " + whole.sql + " FROM #TESTI") ? 1 : 0;
        ASSERT_EQ(cell("SELECT '<' + (" + whole.sql + ") + '>' FROM #TESTI"),
                  whole.value ? "<" + *whole.value + ">" : "NULL")
            << whole.sql;
    }
    EXPECT_GT(composed, 200);
}

TEST_F(ComposedTexts, TakePlacesWithDecimalsForTheWholeNumbersInThem) {
    run({"INSERT INTO #TESTI VALUES (1, 'abcdefgh', NULL, NULL, NULL, NULL)"});
    EXPECT_EQ(rows("SELECT SUBSTRING(T, 2.7, 2.0) + '/' + LEFT(T, 1.9), RIGHT(T, 1.2), LEFT(T, '3'), LEFT(T, "
                   "CAST(2.5 AS DECIMAL(4, 2))), LEFT(T, N * 2.5) FROM #TESTI"),
              (Rows{{"bc/a", "h", "abc", "ab", "ab"}}));
}

TEST_F(ComposedTexts, AreStoredAndRefusedAsAnyText) {
    run({"INSERT INTO #TESTI VALUES (1, 'abcdefgh', 'é', NULL, NULL, NULL)"});
    const std::string twice = "LEFT(T, 4) + '-' + SUBSTRING(T, 3, 2)";
    EXPECT_TRUE(isComposed("UPDATE #TESTI SET F = " + twice));
    EXPECT_EQ(error("UPDATE #TESTI SET F = " + twice).Number, 8152);
    EXPECT_EQ(cell("SELECT F FROM #TESTI"), "é     ");
    EXPECT_EQ(affected("UPDATE #TESTI SET F = LEFT(T, 1) + 'è', T = SUBSTRING(T, 5, 2) + LEFT(T, 1)"), 1);
    EXPECT_EQ(rows("SELECT F, T FROM #TESTI"), (Rows{{"aè    ", "efa"}}));
    EXPECT_EQ(cell("SELECT LEFT(T, 2) + SUBSTRING(T, 1, 0) + ' ' + ' ' FROM #TESTI"), "ef  ");
    EXPECT_EQ(error("SELECT LEFT(T, 1) + SUBSTRING(T, 1, -1) FROM #TESTI").Number, 537);
    EXPECT_EQ(rows("SELECT LEFT(X, 2) + '/' + SUBSTRING(X, 2, 1) FROM (SELECT LEFT(T, 2) + '+' + LEFT(T, 1) "
                   "AS X FROM "
                   "#TESTI) AS D"),
              (Rows{{"ef/f"}}));
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
