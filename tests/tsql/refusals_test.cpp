#include "adapters/tsql/printer.h"
#include "tests/tsql/invariant.h"
#include "tests/tsql/refusal.h"

#include <string>

namespace veldran::tsql::test {
namespace {

std::string repeated(std::string_view text, int times) {
    std::string all;
    for (; times > 0; --times) {
        all += text;
    }
    return all;
}

TEST(TsqlRefusals, RefusesAnUnclosedStringAtItsOpeningQuote) {
    EXPECT_EQ(refusalOf("SELECT CONTO\r\nFROM T WHERE CONTO = 'abc"), (Refusal{105, 2, 22}));
    EXPECT_EQ(messageOf("SELECT 'abc"),
              "Virgolette non chiuse dopo la stringa di caratteri 'abc' (riga 1, colonna 8)");
}

TEST(TsqlRefusals, RefusesAnUnclosedDelimitedName) {
    EXPECT_EQ(refusalOf("SELECT [CONTO FROM T"), (Refusal{105, 1, 8}));
    EXPECT_EQ(refusalOf("SELECT \"CONTO FROM T"), (Refusal{105, 1, 8}));
}

TEST(TsqlRefusals, RefusesAnUnclosedCommentAndNamesItsPlace) {
    EXPECT_EQ(refusalOf("SELECT 1\n/* a comment"), (Refusal{113, 2, 1}));
    EXPECT_EQ(messageOf("SELECT 1 /* a"), "Commento non chiuso: manca '*/' (riga 1, colonna 10)");
}

TEST(TsqlRefusals, RefusesACommentWhoseInnerCommentAloneIsClosed) {
    EXPECT_EQ(refusalOf("SELECT 1 /* a /* b */ c"), (Refusal{113, 1, 10}));
}

TEST(TsqlRefusals, QuotesTheTextAtThePlaceWithLineAndColumn) {
    EXPECT_EQ(messageOf("SELECT\r\n    CONTO\r\nFROM T WHERE = 1"),
              "Sintassi non corretta vicino a '=' (riga 3, colonna 14)");
}

TEST(TsqlRefusals, NamesAKeywordAsAKeyword) {
    EXPECT_EQ(messageOf("SELECT FROM T"),
              "Sintassi non corretta vicino alla parola chiave 'FROM' (riga 1, colonna 8)");
    EXPECT_EQ(refusalOf("SELECT FROM T"), (Refusal{156, 1, 8}));
}

TEST(TsqlRefusals, SaysWhatIsMissing) {
    EXPECT_EQ(messageOf("SELECT CAST(1 INT)"),
              "Sintassi non corretta vicino a 'INT' (riga 1, colonna 15): manca 'AS'");
    EXPECT_EQ(messageOf("DROP TABLE"),
              "Sintassi non corretta alla fine del testo (riga 1, colonna 11): manca un nome");
}

TEST(TsqlRefusals, CountsColumnsInCharactersAndNotInBytes) {
    EXPECT_EQ(refusalOf("SELECT 'à è' AS X, = 1"), (Refusal{102, 1, 20}));
}

TEST(TsqlRefusals, CutsALongQuotationAtACharacter) {
    const std::string message = messageOf("SELECT '" + repeated("è", 100));
    EXPECT_EQ(message, "Virgolette non chiuse dopo la stringa di caratteri '" + repeated("è", 20) +
                           "...' (riga 1, colonna 8)");
}

TEST(TsqlRefusals, ShowsAQuotationOfSeveralLinesOnOne) {
    EXPECT_EQ(messageOf("SELECT 'a\nb"),
              "Virgolette non chiuse dopo la stringa di caratteri 'a b' (riga 1, colonna 8)");
}

TEST(TsqlRefusals, CarriesTheStateOfASyntaxError) {
    try {
        parseBatch("SELEC 1");
        FAIL() << "accepted";
    } catch (const SyntaxError& error) {
        EXPECT_STREQ(error.sqlState(), "42000");
        EXPECT_EQ(error.number(), 102);
        EXPECT_EQ(error.position().offset, 0U);
    }
}

TEST(TsqlRefusals, RefusesAMarkerThatWasLeftInTheText) {
    EXPECT_EQ(refusalOf("SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(1, '1', <DITTA>, null)"),
              (Refusal{102, 1, 52}));
    EXPECT_EQ(messageOf("SELECT PC03_DESCR FROM FNPC03_ANAGPDC_COAN(1, '1', <DITTA>, null)"),
              "Sintassi non corretta vicino a '<' (riga 1, colonna 52)");
}

TEST(TsqlRefusals, RefusesACharacterThatBeginsNothing) {
    EXPECT_EQ(refusalOf("SELECT !1"), (Refusal{102, 1, 8}));
    EXPECT_EQ(refusalOf("SELECT {fn NOW()}"), (Refusal{102, 1, 8}));
    EXPECT_EQ(refusalOf("SELECT @"), (Refusal{102, 1, 8}));
    EXPECT_EQ(refusalOf("SELECT []"), (Refusal{102, 1, 8}));
}

TEST(TsqlRefusals, RefusesAZeroByte) {
    EXPECT_EQ(refusalOf(std::string_view("SELECT 1\0, 2", 12)), (Refusal{102, 1, 9}));
    EXPECT_EQ(messageOf(std::string_view("SELECT 1\0, 2", 12)),
              "Sintassi non corretta vicino a ' ' (riga 1, colonna 9)");
}

TEST(TsqlRefusals, RefusesAStatementThatEndsTooEarly) {
    EXPECT_EQ(refusalOf("SELECT"), (Refusal{102, 1, 7}));
    EXPECT_EQ(refusalOf("SELECT (1"), (Refusal{102, 1, 10}));
    EXPECT_EQ(refusalOf("UPDATE T SET"), (Refusal{102, 1, 13}));
    EXPECT_EQ(refusalOf("INSERT INTO T (A) VALUES (1"), (Refusal{102, 1, 28}));
    EXPECT_EQ(refusalOf("BEGIN SELECT 1"), (Refusal{102, 1, 15}));
}

TEST(TsqlRefusals, RefusesAConditionWhereAValueIsAskedFor) {
    EXPECT_EQ(refusalOf("SELECT A > 1 FROM T"), (Refusal{102, 1, 10}));
    EXPECT_EQ(refusalOf("SELECT (A > 1) FROM T"), (Refusal{102, 1, 8}));
    EXPECT_EQ(refusalOf("SELECT 1 + (A = 1) FROM T"), (Refusal{102, 1, 12}));
    EXPECT_EQ(refusalOf("SELECT F((A = 1)) FROM T"), (Refusal{102, 1, 10}));
    EXPECT_EQ(refusalOf("SELECT 1 WHERE (A = 1) = 1"), (Refusal{102, 1, 16}));
}

TEST(TsqlRefusals, RefusesAValueWhereAConditionIsAskedFor) {
    EXPECT_EQ(refusalOf("SELECT A FROM T WHERE A"), (Refusal{4145, 1, 24}));
    EXPECT_EQ(refusalOf("SELECT A FROM T WHERE A = 1 AND B ORDER BY A"), (Refusal{4145, 1, 35}));
    EXPECT_EQ(refusalOf("SELECT A FROM T WHERE A OR B = 1"), (Refusal{4145, 1, 25}));
    EXPECT_EQ(refusalOf("SELECT A FROM T WHERE NOT A"), (Refusal{4145, 1, 28}));
    EXPECT_EQ(
        messageOf("SELECT A FROM T WHERE A"),
        "Espressione non booleana dove è richiesta una condizione, alla fine del testo (riga 1, colonna 24)");
}

TEST(TsqlRefusals, RefusesNestingBeyondItsBoundAndNotWithinIt) {
    const auto nested = [](int levels) {
        return "SELECT " + repeated("(", levels) + "1" + repeated(")", levels);
    };
    EXPECT_EQ(refusalOf(nested(maximumNesting - 10)), Refusal{});
    EXPECT_EQ(refusalOf(nested(maximumNesting + 1)).number, 191);
}

TEST(TsqlRefusals, RefusesEveryKindOfDeepNestingInsteadOfExhaustingTheStack) {
    constexpr int depth = 5'000;
    for (const std::string_view opening : {"(", "- ", "~", "NOT ", "CASE WHEN ", "CASE ", "F(", "CAST(",
                                           "(SELECT ", "1 IN (SELECT 1 WHERE ", "EXISTS (SELECT 1 WHERE "}) {
        EXPECT_EQ(refusalOf("IF " + repeated(opening, depth)).number, 191) << opening;
    }
    for (const std::string_view opening : {"BEGIN ", "IF 1 = 1 ", "WHILE 1 = 1 ", "IF 1 = 1 BREAK ELSE "}) {
        EXPECT_EQ(refusalOf(repeated(opening, depth)).number, 191) << opening;
    }
    EXPECT_EQ(refusalOf("SELECT * FROM " + repeated("(", depth)).number, 191);
    EXPECT_EQ(refusalOf("SELECT * FROM " + repeated("(SELECT * FROM ", depth)).number, 191);
    EXPECT_EQ(refusalOf(repeated("(", depth)).number, 191);
}

TEST(TsqlRefusals, TakesLongChainsBecauseTheyAreNotDeep) {
    constexpr int length = 20'000;
    EXPECT_EQ(refusalOf("SELECT 1" + repeated(" + 1", length)), Refusal{});
    EXPECT_EQ(refusalOf("SELECT 1 WHERE A = 1" + repeated(" OR A = 1", length)), Refusal{});
    EXPECT_EQ(refusalOf("SELECT 1" + repeated(" UNION ALL SELECT 1", length)), Refusal{});
    EXPECT_EQ(refusalOf("SELECT 1 FROM T" + repeated(" CROSS JOIN T", length)), Refusal{});
}

TEST(TsqlRefusals, PrintsTheDeepestTextsNoDeeperThanTheyWere) {
    for (const std::string_view opening : {"~", "- ", "A * -", "A + (", "CASE WHEN 1 = 1 THEN "}) {
        int levels = maximumNesting;
        const auto nested = [&] {
            return "SELECT " + repeated(opening, levels) + "A" +
                   repeated(opening == "A + (" ? ")" : "", levels) +
                   repeated(opening.starts_with("CASE") ? " END" : "", levels);
        };
        while (refusalOf(nested()) != Refusal{}) {
            --levels;
        }
        EXPECT_GT(levels, maximumNesting / 2) << opening;
        EXPECT_EQ(brokenInvariant(nested()), std::nullopt) << opening;
    }
    std::string compound =
        "SET @A += A + " + repeated("(", maximumNesting - 4) + "1" + repeated(")", maximumNesting - 4);
    EXPECT_EQ(refusalOf(compound), Refusal{});
    EXPECT_EQ(brokenInvariant(compound), std::nullopt);
}

TEST(TsqlRefusals, RefusesReservedWordsAsNames) {
    EXPECT_EQ(refusalOf("SELECT 1 AS ORDER"), (Refusal{156, 1, 13}));
    EXPECT_EQ(refusalOf("CREATE TABLE TABLE (A INT)"), (Refusal{156, 1, 14}));
    EXPECT_EQ(refusalOf("DELETE FROM T.SELECT"), (Refusal{156, 1, 15}));
}

TEST(TsqlRefusals, RefusesNamesOfFiveParts) {
    EXPECT_EQ(refusalOf("SELECT * FROM A.B.C.D"), Refusal{});
    EXPECT_EQ(refusalOf("SELECT * FROM A.B.C.D.E"), (Refusal{102, 1, 22}));
}

TEST(TsqlRefusals, RefusesNamesThatEndInADot) {
    EXPECT_EQ(refusalOf("DELETE FROM A."), (Refusal{102, 1, 15}));
    EXPECT_EQ(refusalOf("DELETE FROM A.. WHERE 1 = 1"), (Refusal{156, 1, 17}));
}

TEST(TsqlRefusals, RefusesWhatTheLanguageHereLeavesOut) {
    EXPECT_EQ(refusalOf("SELECT A FROM T RIGHT JOIN U ON 1 = 1").number, 156);
    EXPECT_EQ(refusalOf("SELECT A FROM T FULL OUTER JOIN U ON 1 = 1").number, 156);
    EXPECT_EQ(refusalOf("SELECT TOP 5 PERCENT A FROM T").number, 156);
    EXPECT_EQ(refusalOf("SELECT 1 INTERSECT SELECT 1").number, 156);
    EXPECT_EQ(refusalOf("WITH C AS (SELECT 1 AS A) SELECT A FROM C").number, 156);
    EXPECT_EQ(refusalOf("MERGE INTO T USING U ON 1 = 1").number, 156);
    EXPECT_EQ(refusalOf("DECLARE @T TABLE (A INT)").number, 156);
    EXPECT_EQ(refusalOf("DECLARE C CURSOR FOR SELECT 1").number, 102);
    EXPECT_EQ(refusalOf("EXEC ('SELECT 1')").number, 102);
    EXPECT_EQ(refusalOf("BEGIN TRY SELECT 1 END TRY").number, 102);
    EXPECT_EQ(refusalOf("SET ROWCOUNT 5").number, 156);
    EXPECT_EQ(refusalOf("ALTER TABLE T DROP COLUMN A").number, 156);
}

TEST(TsqlRefusals, RefusesAJoinWithoutItsCondition) {
    EXPECT_EQ(refusalOf("SELECT A FROM T INNER JOIN U WHERE 1 = 1"), (Refusal{156, 1, 30}));
    EXPECT_EQ(refusalOf("SELECT A FROM T CROSS JOIN U ON 1 = 1"), (Refusal{156, 1, 30}));
}

TEST(TsqlRefusals, RefusesADerivedTableWithoutAnAlias) {
    EXPECT_EQ(messageOf("SELECT * FROM (SELECT 1 AS A)"),
              "Sintassi non corretta alla fine del testo (riga 1, colonna 30): manca un alias");
}

TEST(TsqlRefusals, RefusesAnUnknownLockHint) {
    EXPECT_EQ(refusalOf("SELECT * FROM T WITH (LOCKALL)"), (Refusal{102, 1, 23}));
}

TEST(TsqlRefusals, RefusesRowsOfDifferentLengths) {
    EXPECT_EQ(refusalOf("INSERT INTO T (A, B) VALUES (1, 2), (3)"), (Refusal{10709, 1, 37}));
}

TEST(TsqlRefusals, RefusesATableWithoutColumns) {
    EXPECT_EQ(refusalOf("CREATE TABLE T ()"), (Refusal{102, 1, 17}));
    EXPECT_EQ(refusalOf("CREATE TABLE T (PRIMARY KEY (A))"), (Refusal{102, 1, 32}));
}

TEST(TsqlRefusals, RefusesAColumnPropertyGivenTwice) {
    EXPECT_EQ(refusalOf("CREATE TABLE T (A INT NULL NOT NULL)"), (Refusal{156, 1, 28}));
    EXPECT_EQ(refusalOf("CREATE TABLE T (A INT DEFAULT 1 DEFAULT 2)"), (Refusal{156, 1, 33}));
    EXPECT_EQ(refusalOf("CREATE TABLE T (A INT IDENTITY IDENTITY)"), (Refusal{156, 1, 32}));
}

TEST(TsqlRefusals, RefusesATypeLengthThatIsNoInteger) {
    EXPECT_EQ(refusalOf("SELECT CAST(A AS NCHAR(X))"), (Refusal{102, 1, 24}));
    EXPECT_EQ(refusalOf("SELECT CAST(A AS NCHAR(-1))"), (Refusal{102, 1, 24}));
    EXPECT_EQ(refusalOf("SELECT CAST(A AS NCHAR(99999999999999999999))"), (Refusal{102, 1, 24}));
}

TEST(TsqlRefusals, RefusesARoutineThatIsNotAloneInItsBatch) {
    EXPECT_EQ(refusalOf("SELECT 1\nCREATE PROCEDURE P AS SELECT 1"), (Refusal{111, 2, 1}));
    EXPECT_EQ(refusalOf("IF 1 = 1 ALTER FUNCTION F() RETURNS INT AS BEGIN RETURN 1 END"),
              (Refusal{111, 1, 10}));
    EXPECT_EQ(refusalOf("CREATE FUNCTION F() RETURNS INT AS BEGIN RETURN 1 END SELECT 1"),
              (Refusal{156, 1, 55}));
    EXPECT_EQ(messageOf("SELECT 1 CREATE PROC P AS SELECT 1"),
              "'CREATE/ALTER PROCEDURE' deve essere la prima istruzione del gruppo (riga 1, colonna 10)");
}

TEST(TsqlRefusals, RefusesARoutineWithoutABody) {
    EXPECT_EQ(refusalOf("CREATE PROCEDURE P AS"), (Refusal{102, 1, 22}));
    EXPECT_EQ(refusalOf("CREATE FUNCTION F() RETURNS INT AS BEGIN END"), (Refusal{156, 1, 42}));
    EXPECT_EQ(refusalOf("BEGIN END"), (Refusal{156, 1, 7}));
}

TEST(TsqlRefusals, RefusesAFunctionThatReturnsATableVariable) {
    EXPECT_EQ(refusalOf("CREATE FUNCTION F() RETURNS @T TABLE (A INT) AS BEGIN RETURN END"),
              (Refusal{102, 1, 29}));
}

TEST(TsqlRefusals, RefusesAnAssignmentToASystemValue) {
    EXPECT_EQ(refusalOf("SET @@ROWCOUNT = 1"), (Refusal{102, 1, 5}));
    EXPECT_EQ(refusalOf("DECLARE @@X INT"), (Refusal{102, 1, 9}));
}

TEST(TsqlRefusals, NamesPlacesOfTheScriptThatTheBatchWasCutFrom) {
    try {
        parseBatch("SELECT\n  FROM", SourcePosition{100, 10, 5});
        FAIL() << "accepted";
    } catch (const SyntaxError& error) {
        EXPECT_EQ(error.position(), (SourcePosition{109, 11, 3}));
    }
}

} // namespace
} // namespace veldran::tsql::test
