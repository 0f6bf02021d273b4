#include "tests/embedded/session_fixture.h"

namespace veldran::embedded::test {

namespace {

struct Refusal {
    const char* text;
    int number;
    const char* state;
    const char* named;

    friend void PrintTo(const Refusal& shown, std::ostream* out) { *out << shown.text; }
};

class Refusals : public SessionTest, public ::testing::WithParamInterface<Refusal> {
protected:
    Refusals() {
        run({"CREATE TABLE T (A INT NOT NULL PRIMARY KEY, B NVARCHAR(10), C BIT)",
             "CREATE TABLE S (A INT, D DECIMAL(5, 2))", "CREATE UNIQUE INDEX IX ON S (A)",
             "INSERT INTO T VALUES (1, 'x', 0)", "INSERT INTO S VALUES (1, 2.5)",
             "CREATE TABLE N (I INT IDENTITY(1, 1) NOT NULL, V INT)"});
    }
};

} // namespace

TEST_P(Refusals, CarryNumberStateSourceAndPlace) {
    const ado::Error refused = error(GetParam().text);
    EXPECT_EQ(refused.Number, GetParam().number) << refused.Description;
    EXPECT_EQ(refused.NativeError, GetParam().number);
    EXPECT_EQ(refused.SQLState, GetParam().state);
    EXPECT_EQ(refused.Source, "VELDRAN Embedded");
    EXPECT_NE(refused.Description.find(GetParam().named), std::string::npos) << refused.Description;
    EXPECT_EQ(rows("SELECT A, B FROM T"), (Rows{{"1", "x"}}))
        << "the session works on and the table is as it was";
}

INSTANTIATE_TEST_SUITE_P(
    Statements, Refusals,
    ::testing::Values(
        Refusal{"SELEKT 1", 102, "42000", "SELEKT"}, Refusal{"SELECT * FROM X", 208, "42S02", "X"},
        Refusal{"SELECT * FROM MASTER.DBO.T", 208, "42S02", "MASTER.DBO.T"},
        Refusal{"SELECT Z FROM T", 207, "42S22", "Z"}, Refusal{"SELECT T.Z FROM T", 207, "42S22", "Z"},
        Refusal{"SELECT X.A FROM T", 4104, "42000", "X.A"}, Refusal{"SELECT A FROM T, S", 209, "42000", "A"},
        Refusal{"SELECT * FROM T, T", 1013, "42000", "T"}, Refusal{"SELECT X.* FROM T", 107, "42000", "X"},
        Refusal{"INSERT INTO T VALUES (1, 'y', 1)", 2627, "23000", "T"},
        Refusal{"INSERT INTO S VALUES (1, 1)", 2601, "23000", "IX"},
        Refusal{"INSERT INTO T (B) VALUES ('y')", 515, "23000", "'A'"},
        Refusal{"UPDATE T SET A = NULL", 515, "23000", "'A'"},
        Refusal{"INSERT INTO T (A, B) VALUES (2)", 109, "21S01", "VALUES"},
        Refusal{"INSERT INTO T (A) VALUES (2, 3)", 110, "21S01", "VALUES"},
        Refusal{"INSERT INTO T (A) SELECT 1, 2", 121, "21S01", "elenco"},
        Refusal{"INSERT INTO T (A, Z) VALUES (2, 3)", 207, "42S22", "Z"},
        Refusal{"INSERT INTO T (A, A) VALUES (2, 3)", 264, "42000", "A"},
        Refusal{"UPDATE T SET B = 'a', B = 'b'", 264, "42000", "B"},
        Refusal{"UPDATE T SET B = 'molto troppo lungo'", 8152, "22001", "B"},
        Refusal{"CREATE TABLE T (A INT)", 2714, "42S01", "T"}, Refusal{"DROP TABLE X", 3701, "42S02", "X"},
        Refusal{"DROP INDEX IX ON T", 3701, "42S12", "IX"},
        Refusal{"CREATE INDEX IX ON S (A)", 1913, "42S11", "IX"},
        Refusal{"CREATE INDEX I2 ON S (Z)", 1911, "42000", "Z"},
        Refusal{"CREATE INDEX I2 ON X (Z)", 1088, "42S02", "X"},
        Refusal{"ALTER TABLE X ADD PRIMARY KEY (A)", 4902, "42S02", "X"},
        Refusal{"ALTER TABLE S ADD PRIMARY KEY (A)", 8111, "42000", "A"},
        Refusal{"ALTER TABLE T ADD PRIMARY KEY (A)", 1779, "42000", "T"},
        Refusal{"CREATE TABLE X (A INT, a INT)", 2705, "42S21", "a"},
        Refusal{"CREATE TABLE X (A INT, PRIMARY KEY (A), PRIMARY KEY (A))", 8110, "42000", "X"},
        Refusal{"CREATE TABLE X (A INT, PRIMARY KEY (Z))", 1911, "42000", "Z"},
        Refusal{"CREATE TABLE X (A INT CHECK (A > 0))", 40517, "42000", "CHECK"},
        Refusal{"CREATE TABLE VELDRAN_X (A INT)", 40517, "42000", "VELDRAN_X"},
        Refusal{"INSERT INTO N (I, V) VALUES (1, 1)", 544, "23000", "N"},
        Refusal{"UPDATE N SET I = 1", 8102, "42000", "I"},
        Refusal{"SET IDENTITY_INSERT T ON", 8106, "42000", "T"},
        Refusal{"SET IDENTITY_INSERT X ON", 1088, "42S02", "X"},
        Refusal{"SELECT A, COUNT(*) FROM T", 8120, "42000", "A"},
        Refusal{"SELECT B FROM T GROUP BY A", 8120, "42000", "B"},
        Refusal{"SELECT SUM(C) FROM T", 8117, "42000", "bit"},
        Refusal{"SELECT A FROM T WHERE COUNT(*) > 1", 147, "42000", "WHERE"},
        Refusal{"SELECT 1 FROM T GROUP BY 'x'", 164, "42000", "GROUP BY"},
        Refusal{"SELECT 1 UNION SELECT 1, 2", 205, "42000", "UNION"},
        Refusal{"SELECT DISTINCT A FROM T ORDER BY B", 145, "42000", "ORDER BY"},
        Refusal{"SELECT A FROM T ORDER BY 2", 108, "42000", "2"},
        Refusal{"SELECT TOP 1 1 FROM T ORDER BY COUNT(*)", 40517, "42000", "COUNT(*)"},
        Refusal{"SELECT * FROM (SELECT A + 1 FROM T) AS D", 8155, "42000", "D"},
        Refusal{"SELECT * FROM (SELECT A, A FROM T) AS D", 8156, "42000", "A"},
        Refusal{"SELECT A + 1 INTO #X FROM T", 1038, "42000", "SELECT"},
        Refusal{"SELECT IDENTITY(INT, 1, 1) AS I FROM T", 177, "42000", "IDENTITY"},
        Refusal{"SELECT (SELECT A, B FROM T)", 116, "42000", "sottoquery"},
        Refusal{"SELECT @X", 137, "42000", "@X"}, Refusal{"SET @X = 1", 137, "42000", "@X"},
        Refusal{"SELECT @@SPID", 40517, "42000", "@@SPID"}, Refusal{"SELECT DBO.F(1)", 4121, "42000", "F"},
        Refusal{"SELECT * FROM F(1)", 208, "42S02", "F"}, Refusal{"EXEC P", 2812, "42000", "P"},
        Refusal{"SELECT A FROM T WHERE A = ?", 8178, "07002", "marcator"},
        Refusal{"COMMIT TRANSACTION", 3902, "25000", "COMMIT"},
        Refusal{"ROLLBACK", 3903, "25000", "ROLLBACK"},
        Refusal{"SET ANSI_NULLS OFF", 40517, "42000", "ANSI_NULLS"},
        Refusal{"SELECT 0x0A", 40517, "42000", "0x"},
        Refusal{"SELECT * FROM T CROSS APPLY (SELECT 1 AS Q) AS D", 40517, "42000", "APPLY"}));

TEST_F(SessionTest, ARefusalQuotesItsPlace) {
    run({"CREATE TABLE T (A INT)"});
    const ado::Error refused = error("SELECT\r\n    A\r\nFROM T\r\nWHERE COUNT(*) OVER (PARTITION BY A) = 1");
    EXPECT_NE(refused.Description.find("riga 4"), std::string::npos) << refused.Description;
}

TEST_F(SessionTest, AStatementThatFailsHalfWayLeavesNothing) {
    run({"CREATE TABLE T (A INT NOT NULL PRIMARY KEY)", "INSERT INTO T VALUES (3)"});
    EXPECT_EQ(error("INSERT INTO T VALUES (1), (2), (3)").Number, 2627);
    EXPECT_EQ(rows("SELECT A FROM T"), (Rows{{"3"}}));
    EXPECT_EQ(error("SELECT A, 1 / (A - 3) AS Q INTO #X FROM T").Number, 8134);
    EXPECT_EQ(error("SELECT * FROM #X").Number, 208);
}

TEST_F(SessionTest, ABatchKeepsWhatItDidBeforeItsError) {
    run({"CREATE TABLE T (A INT NOT NULL PRIMARY KEY)"});
    EXPECT_EQ(error("INSERT INTO T VALUES (1) INSERT INTO T VALUES (1) INSERT INTO T VALUES (2)").Number,
              2627);
    EXPECT_EQ(rows("SELECT A FROM T"), (Rows{{"1"}}));
}

TEST_F(SessionTest, ALateStatementEndsInATimeout) {
    run({"CREATE TABLE T (A INT)", "INSERT INTO T VALUES (1), (2), (3), (4), (5), (6), (7), (8), (9), (10)"});
    const auto error = errorOf([&] {
        session_->execute("SELECT COUNT(*) FROM T A, T B, T C, T D, T E, T F, T G, T H, T I", {}, {1, true});
    });
    EXPECT_EQ(error.SQLState, "HYT00");
    const auto loop = errorOf([&] {
        session_->execute("DECLARE @I INT SET @I = 1 WHILE 1 = 1 SET @I = @I", {}, {1, true});
    });
    EXPECT_EQ(loop.SQLState, "HYT00");
    EXPECT_EQ(cell("SELECT COUNT(*) FROM T"), "10");
}

} // namespace veldran::embedded::test
