#include "adapters/embedded/bulk_loader.h"
#include "adapters/embedded/driver.h"
#include "adapters/markers/marker_resolving_driver.h"
#include "tests/embedded/session_fixture.h"

#include <array>
#include <limits>

namespace veldran::embedded::test {

namespace {

class Prepared : public SessionTest {
protected:
    Prepared() {
        run({"CREATE TABLE T (A NCHAR(4) NOT NULL PRIMARY KEY, N DECIMAL(2), V INT)",
             "INSERT INTO T VALUES ('a', 1, 10), ('b', 2, 20)"});
    }
};

} // namespace

TEST_F(Prepared, BindsItsParametersInOrder) {
    const std::vector<ado::ParameterInfo> declared{wide("@A", "", 4).info, numeric("@N", 0, 2).info};
    const auto prepared = session_->prepare("SELECT V FROM T WHERE A = ? AND N = ?", declared);
    const auto ask = [&](const std::string& a, int n) {
        const std::vector<ado::BoundParameter> parameters{wide("@A", a, 4), numeric("@N", n, 2)};
        return asText(*prepared->execute(parameters, {}).rows);
    };
    EXPECT_EQ(ask("A", 1), (Rows{{"10"}}));
    EXPECT_EQ(ask("b", 2), (Rows{{"20"}}));
    EXPECT_EQ(ask("b", 1), Rows{});
}

TEST_F(Prepared, IsParsedOnce) {
    const std::vector<ado::ParameterInfo> declared{wide("@A", "", 4).info};
    const std::size_t before = session_->state().texts().parsed();
    const auto prepared = session_->prepare("SELECT V FROM T WHERE A = ?", declared);
    for (int i = 0; i < 10; ++i) {
        const std::vector<ado::BoundParameter> parameters{wide("@A", "a", 4)};
        prepared->execute(parameters, {});
    }
    EXPECT_EQ(session_->state().texts().parsed(), before + 1);
}

TEST_F(Prepared, RefusesValuesThatTheirDeclarationDoesNotHold) {
    const std::string text = "SELECT V FROM T WHERE A = ?";
    EXPECT_EQ(error(text, {wide("@A", "dodici lunghi", 10)}).Number, 8152);
    EXPECT_NO_THROW(execute(text, {wide("@A", "a             ", 4)})) << "only blanks are too many";
    EXPECT_EQ(error("SELECT V FROM T WHERE N = ?", {numeric("@N", 123, 2)}).Number, 8115);
    EXPECT_EQ(error("SELECT V FROM T WHERE N = ?", {numeric("@N", Decimal{45, 1}, 2)}).Number, 8114);
    EXPECT_EQ(error("SELECT V FROM T WHERE N = ?", {numeric("@N", "uno", 2)}).Number, 8114);
    EXPECT_EQ(
        error("SELECT V FROM T WHERE V = ?", {{{"@V", ado::adSmallInt, ado::adParamInput, 0, 0, 0}, 70000}})
            .Number,
        8115);
    EXPECT_EQ(
        error("SELECT V FROM T WHERE V = ?", {{{"@V", ado::adEmpty, ado::adParamInput, 0, 0, 0}, 7}}).Number,
        40517);
}

TEST_F(Prepared, RefusesANumberThatIsNone) {
    run({"CREATE TABLE F (X FLOAT)"});
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(
        error("INSERT INTO F VALUES (?)", {{{"@X", ado::adDouble, ado::adParamInput, 0, 0, 0}, none}}).Number,
        8115);
    EXPECT_EQ(error("INSERT INTO F VALUES (?)", {numeric("@X", none, 5, 2)}).Number, 8115);
    EXPECT_EQ(cell("SELECT COUNT(*) FROM F"), "0");
}

TEST_F(Prepared, RefusesTooFewAndTooManyParameters) {
    EXPECT_EQ(error("SELECT V FROM T WHERE A = ? AND N = ?", {wide("@A", "a", 4)}).Number, 8178);
    EXPECT_EQ(error("SELECT V FROM T WHERE A = ?", {wide("@A", "a", 4), integer("@B", 1)}).Number, 8144);
}

TEST_F(Prepared, RefusesAWrongTextWhenItIsPrepared) {
    EXPECT_EQ(errorOf([&] { session_->prepare("SELECT V FROM", {}); }).Number, 102);
    EXPECT_EQ(errorOf([&] { session_->prepare("SELECT X FROM T", {}); }).Number, 207);
    EXPECT_EQ(errorOf([&] { session_->prepare("SELECT V FROM NESSUNA", {}); }).Number, 208);
}

TEST_F(Prepared, BindsNullTrueAndNumbersAsTheHostSendsThem) {
    execute("INSERT INTO T VALUES (?, ?, ?)",
            {wide("@A", "c", 4), numeric("@N", Value(), 2), integer("@V", 5)});
    EXPECT_EQ(rows("SELECT N, V FROM T WHERE A = 'c'"), (Rows{{"NULL", "5"}}));
    EXPECT_EQ(cell("SELECT CASE WHEN ? = 1 THEN 'si' ELSE 'no' END", {flag("@F", true)}), "si");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE N = ?", {numeric("@N", 2.0, 2)}), "1");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T WHERE N = ?", {numeric("@N", "2", 2)}), "1");
}

TEST_F(Prepared, FollowsATableThatIsMadeAnew) {
    run({"CREATE TABLE #T (A INT)", "INSERT INTO #T VALUES (1)"});
    const auto prepared = session_->prepare("SELECT * FROM #T", {});
    EXPECT_EQ(asText(*prepared->execute({}, {}).rows), (Rows{{"1"}}));
    run({"DROP TABLE #T"});
    EXPECT_EQ(errorOf([&] { prepared->execute({}, {}); }).Number, 208);
    run({"CREATE TABLE #T (A DECIMAL(5, 2), B NCHAR(2))", "INSERT INTO #T VALUES (1, 'x')"});
    EXPECT_EQ(asText(*prepared->execute({}, {}).rows), (Rows{{"1.00", "x "}}));
}

TEST_F(Prepared, FollowsATableThatAnotherProgramChanged) {
    const auto other = anotherSession();
    const auto prepared = session_->prepare("SELECT * FROM T WHERE A = 'a'", {});
    EXPECT_EQ(asText(*prepared->execute({}, {}).rows), (Rows{{"a   ", "1", "10"}}));
    for (const char* text : {"DROP TABLE T", "CREATE TABLE T (A NCHAR(1), N DECIMAL(4, 2))",
                             "INSERT INTO T VALUES ('a', 1.5)"}) {
        other->execute(text, {}, {});
    }
    EXPECT_EQ(asText(*prepared->execute({}, {}).rows), (Rows{{"a", "1.50"}}));
}

TEST_F(Prepared, LivesOnWhenTheTextsAreManyAndItsPlanIsDropped) {
    const auto prepared = session_->prepare("SELECT COUNT(*) FROM T", {});
    for (int i = 0; i < 600; ++i) {
        cell("SELECT " + std::to_string(i));
    }
    EXPECT_LE(session_->state().texts().size(), 256U);
    EXPECT_EQ(asText(*prepared->execute({}, {}).rows), (Rows{{"2"}}));
}

TEST_F(Prepared, DropsRowsNobodyWants) {
    EXPECT_FALSE(session_->execute("SELECT * FROM T", {}, {30, false}).rows);
    EXPECT_EQ(errorOf([&] { session_->execute("SELECT V / 0 FROM T", {}, {30, false}); }).Number, 8134);
}

TEST_F(Prepared, GivesTheFirstResultOfABatch) {
    const auto result = execute(
        "UPDATE T SET V = 1 SELECT V FROM T WHERE A = 'a' SELECT 'altro' UPDATE T SET V = 2 WHERE A = 'a'");
    EXPECT_EQ(asText(*result.rows), (Rows{{"1"}}));
    EXPECT_EQ(result.rowsAffected, 1);
}

TEST_F(Prepared, TellsTheColumnsOfAnEmptyResult) {
    const auto result = execute("SELECT A AS X, N, V * 2 AS Y FROM T WHERE 1 = 0");
    ASSERT_TRUE(result.rows);
    EXPECT_EQ(result.rows->rowCount(), 0U);
    EXPECT_EQ(result.rows->columns()[0].name, "X");
    EXPECT_EQ(result.rows->columns()[0].baseColumn, "A");
    EXPECT_TRUE(result.rows->columns()[0].key);
    EXPECT_FALSE(result.rows->columns()[0].nullable);
    EXPECT_TRUE(result.rows->columns()[2].baseTable.empty());
}

TEST_F(SessionTest, TheBulkLoaderKeepsAllRowsOrNone) {
    run({"CREATE TABLE T (A NCHAR(3) NOT NULL PRIMARY KEY, N DECIMAL(5, 2))"});
    {
        BulkLoader loader(*session_, "T", {"N", "A"});
        loader.append(std::array<Value, 2>{Value(1.5), Value("x")});
    }
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T"), "0");
    BulkLoader loader(*session_, "t", {"N", "A"});
    for (int i = 0; i < 500; ++i) {
        loader.append(std::array<Value, 2>{Value(), Value(std::to_string(i))});
    }
    EXPECT_EQ(errorOf([&] { loader.append(std::array<Value, 2>{Value(), Value("7")}); }).Number, 2627);
    EXPECT_EQ(errorOf([&] { loader.append(std::array<Value, 2>{Value(1000), Value("x")}); }).Number, 8115);
    EXPECT_EQ(errorOf([&] { loader.append(std::array<Value, 1>{Value(1)}); }).Number, 109);
    EXPECT_EQ(loader.finish(), 500);
    EXPECT_EQ(rows("SELECT COUNT(*), MAX(A) FROM T"), (Rows{{"500", "99 "}}));
}

TEST_F(SessionTest, TheBulkLoaderRefusesWhatIsNotThere) {
    run({"CREATE TABLE T (A INT)"});
    EXPECT_EQ(errorOf([&] { BulkLoader(*session_, "X", {"A"}); }).Number, 208);
    EXPECT_EQ(errorOf([&] { BulkLoader(*session_, "T", {"B"}); }).Number, 207);
    session_->begin();
    EXPECT_EQ(errorOf([&] { BulkLoader(*session_, "T", {"A"}); }).Number, 40517);
}

TEST(MarkerTexts, ResolveOutsideTextsNamesAndComments) {
    const std::vector<Marker> markers{{"<DITTA>", [] { return std::string("7"); }}};
    EXPECT_EQ(resolveMarkers("", markers), "");
    EXPECT_EQ(resolveMarkers("F(<DITTA>, <ditta>)", markers), "F(7, 7)");
    EXPECT_EQ(resolveMarkers("'<DITTA>' + N'it''s <DITTA>' [<DITTA>] \"<DITTA>\" <DITTA>", markers),
              "'<DITTA>' + N'it''s <DITTA>' [<DITTA>] \"<DITTA>\" 7");
    EXPECT_EQ(resolveMarkers("-- <DITTA>\n<DITTA> /* <DITTA> /* x */ <DITTA> */ <DITTA>", markers),
              "-- <DITTA>\n7 /* <DITTA> /* x */ <DITTA> */ 7");
    EXPECT_EQ(resolveMarkers("<ALTRO> A<B", markers), "<ALTRO> A<B");
    EXPECT_EQ(resolveMarkers("'<DITTA>", markers), "'<DITTA>")
        << "an unclosed text is the database's to refuse";
    EXPECT_EQ(resolveMarkers("/* <DITTA>", markers), "/* <DITTA>");
}

TEST_F(SessionTest, AResolvingDriverAsksForTheValueEachTime) {
    std::string company = "7";
    MarkerResolvingDriver driver(std::make_shared<EmbeddedDriver>(),
                                 std::vector<Marker>{{"<DITTA>", [&] { return company; }}});
    const auto session = driver.open(connectionString(path()), "", "");
    EXPECT_EQ(asText(*session->execute("SELECT <DITTA>, '<DITTA>'", {}, {}).rows), (Rows{{"7", "<DITTA>"}}));
    company = "8";
    EXPECT_EQ(asText(*session->execute("SELECT <DITTA>", {}, {}).rows), (Rows{{"8"}}));
    EXPECT_EQ(asText(*session->prepare("SELECT <DITTA> + 1", {})->execute({}, {}).rows), (Rows{{"9"}}));
    EXPECT_EQ(errorOf([&] { session->execute("SELECT <ALTRO>", {}, {}); }).Number, 102);
    session->execute("CREATE PROCEDURE P @N INT AS SELECT @N AS N", {}, {});
    EXPECT_EQ(session->describeProcedure("P").size(), 1U);
    const std::vector<ado::BoundParameter> parameters{integer("@N", 3)};
    session->begin();
    EXPECT_EQ(asText(*session->callProcedure("P", parameters, {}).rows), (Rows{{"3"}}));
    session->commit();
    session->begin();
    session->rollback();
}

} // namespace veldran::embedded::test
