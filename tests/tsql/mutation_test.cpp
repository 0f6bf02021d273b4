#include "tests/tsql/invariant.h"
#include "tests/tsql/screen_statements.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace veldran::tsql::test {
namespace {

// Pieces that turn one construct into another when they are dropped into a statement.
constexpr std::array pieces = std::to_array<std::string_view>({
    "(",
    ")",
    ",",
    ".",
    ";",
    "'",
    "[",
    "]",
    "\"",
    "?",
    "@X",
    "#T",
    "/*",
    "*/",
    "--",
    "\n",
    "\r\nGO\r\n",
    "0",
    "1.5",
    "1E",
    "N'",
    "-",
    "+",
    "*",
    "<>",
    "=",
    " AND ",
    " OR ",
    " NOT ",
    " SELECT ",
    " FROM ",
    " CASE ",
    " WHEN ",
    " END ",
    " BEGIN ",
    " IF ",
    " ELSE ",
    " UNION ",
    " IN (",
    " EXISTS (",
    " AS ",
    " NULL ",
    " COLLATE ",
    " OVER (",
    " CROSS APPLY ",
    " RETURN ",
    " CREATE PROCEDURE P AS ",
    " EXEC P ",
    "è",
    "\xFF",
    "\xEF\xBB\xBF",
});

const std::vector<std::string>& seeds() {
    static const std::vector<std::string> texts = [] {
        std::vector<std::string> all{
            "CREATE OR ALTER PROCEDURE DBO.P (@A INT = -1 OUTPUT, @B NVARCHAR(MAX) = N'x') AS SET NOCOUNT ON "
            "RETURN 0",
            "CREATE FUNCTION F (@A INT) RETURNS INT AS BEGIN DECLARE @X INT = 1 WHILE @X < @A SET @X += 1 "
            "RETURN @X END",
            "CREATE FUNCTION F (@A INT) RETURNS TABLE AS RETURN (SELECT A.*, X = 1 FROM A WITH (NOLOCK))",
            "BEGIN TRAN; IF NOT EXISTS (SELECT 1) BEGIN PRINT 'a' END ELSE ROLLBACK TRAN; COMMIT",
            "SELECT TOP (?) A, ROW_NUMBER() OVER (PARTITION BY B ORDER BY C DESC) FROM (SELECT 1 UNION ALL "
            "SELECT 2) D (A)",
            "EXEC @R = P @A = 1, @B = @C OUTPUT, @D = DEFAULT; THROW 50000, 'x', 1; RAISERROR('a', 16, 1)",
            "CREATE TABLE T (A INT IDENTITY(1, -1) NOT NULL DEFAULT (0), B BIT CHECK (B IN (0, 1)), UNIQUE "
            "(A DESC))",
        };
        for (const ScreenStatement& statement : screenStatements()) {
            all.push_back(statement.text);
        }
        return all;
    }();
    return texts;
}

class Mutator {
public:
    explicit Mutator(unsigned seed) : random_(seed) {}

    std::string next() {
        std::string text = pick(seeds());
        for (std::size_t changes = 1 + below(4); changes > 0; --changes) {
            change(text);
        }
        return text;
    }

private:
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(random_()) % bound; }

    template<typename Range>
    const typename Range::value_type& pick(const Range& range) {
        return range[below(range.size())];
    }

    void change(std::string& text) {
        const std::size_t place = below(text.size() + 1);
        const std::size_t length = below(12);
        switch (below(5)) {
        case 0:
            text.erase(place, length);
            break;
        case 1:
            text.insert(place, pick(pieces));
            break;
        case 2:
            text.replace(place, length, pick(pieces));
            break;
        case 3: {
            const std::string& other = pick(seeds());
            text.insert(place, other.substr(below(other.size()), length * 4));
            break;
        }
        default:
            text.insert(place, 1, static_cast<char>(below(256)));
            break;
        }
    }

    std::mt19937 random_;
};

TEST(TsqlMutations, EveryDamagedStatementIsUnderstoodOrRefusedInPlace) {
    constexpr int rounds = 8'000;
    Mutator mutator(20'240'229);
    int refused = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::string text = mutator.next();
        ASSERT_EQ(brokenInvariant(text), std::nullopt) << "round " << round << ":\n" << text;
        try {
            parseBatch(text);
        } catch (const SyntaxError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, rounds / 4) << "the damage is too slight to prove anything";
    EXPECT_LT(refused, rounds) << "nothing was left to print";
}

} // namespace
} // namespace veldran::tsql::test
