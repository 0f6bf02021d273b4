#include "tests/embedded/session_fixture.h"

namespace veldran::embedded::test {

namespace {

/// Accounts 1 to 4, of which 2 and 4 are active, and a table that names some of them.
class SparedRows : public SessionTest {
protected:
    SparedRows() {
        run({"CREATE TABLE CONTI (CONTO NCHAR(4) NOT NULL PRIMARY KEY, NATURA INT NOT NULL, ATTIVO BIT NULL, "
             "DESCR "
             "NVARCHAR(20) NULL)",
             "CREATE TABLE SCELTI (CONTO NCHAR(4) NOT NULL PRIMARY KEY, ATTIVO BIT NOT NULL)",
             "CREATE TABLE NOTE (CONTO NCHAR(4) NOT NULL, PROG INT NOT NULL, PRIMARY KEY (CONTO, PROG))",
             "INSERT INTO CONTI VALUES ('1', 1, 0, N'uno'), ('2', 1, 1, N'due'), ('3', 2, 0, NULL), ('4', 2, "
             "1, "
             "N'Quattro')",
             "INSERT INTO SCELTI VALUES ('1', 1), ('2', 1), ('3', 0)",
             "INSERT INTO NOTE VALUES ('1', 1), ('1', 2), ('4', 1)"});
    }

    struct Effect {
        std::int64_t counted;
        std::int64_t written;
        friend bool operator==(const Effect&, const Effect&) = default;
        friend void PrintTo(const Effect& effect, std::ostream* out) {
            *out << effect.counted << " counted, " << effect.written << " written";
        }
    };
    Effect effect(const std::string& text) {
        sqlite3* handle = session_->state().database().handle();
        const std::int64_t before = sqlite3_total_changes64(handle);
        const std::int64_t counted = affected(text);
        return {counted, sqlite3_total_changes64(handle) - before};
    }
    std::string active() {
        std::string result;
        for (const auto& row : rows("SELECT ATTIVO FROM CONTI ORDER BY CONTO")) {
            result += row[0];
        }
        return result;
    }
};

} // namespace

TEST_F(SparedRows, AreCountedWithTheOthers) {
    EXPECT_EQ(effect("UPDATE CONTI SET ATTIVO = 1"), (Effect{4, 2}));
    EXPECT_EQ(active(), "1111");
    EXPECT_EQ(effect("UPDATE CONTI SET ATTIVO = 1"), (Effect{4, 0}));
    EXPECT_EQ(effect("UPDATE CONTI SET ATTIVO = 0, NATURA = 1 WHERE CONTO <= '2'"), (Effect{2, 2}));
    EXPECT_EQ(active(), "0011");
}

TEST_F(SparedRows, ReachTheRowCountOfTheNextStatement) {
    EXPECT_EQ(cell("UPDATE CONTI SET ATTIVO = 1 SELECT @@ROWCOUNT"), "4");
}

TEST_F(SparedRows, AreOnlyThoseThatAreTheSameToTheLastByte) {
    EXPECT_EQ(effect("UPDATE CONTI SET DESCR = N'QUATTRO' WHERE CONTO = '4'"), (Effect{1, 1}));
    EXPECT_EQ(effect("UPDATE CONTI SET DESCR = N'QUATTRO' WHERE CONTO = '4'"), (Effect{1, 0}));
    EXPECT_EQ(effect("UPDATE CONTI SET DESCR = N'QUATTRO ' WHERE CONTO = '4'"), (Effect{1, 1}));
    EXPECT_EQ(effect("UPDATE CONTI SET DESCR = NULL"), (Effect{4, 3}));
    EXPECT_EQ(effect("UPDATE CONTI SET DESCR = N'' WHERE CONTO = '3'"), (Effect{1, 1}));
    EXPECT_EQ(rows("SELECT DESCR FROM CONTI ORDER BY CONTO"), (Rows{{"NULL"}, {"NULL"}, {""}, {"NULL"}}));
}

TEST_F(SparedRows, AreCountedOnceWhenSeveralIndexesFindThem) {
    run({"CREATE INDEX PER_NATURA ON CONTI (NATURA)", "CREATE INDEX PER_ATTIVO ON CONTI (ATTIVO)",
         "CREATE INDEX PER_DESCR ON CONTI (DESCR)"});
    EXPECT_EQ(effect("UPDATE CONTI SET ATTIVO = 1 WHERE NATURA = 1 OR DESCR = N'due'"), (Effect{2, 1}));
    EXPECT_EQ(
        effect("UPDATE CONTI SET ATTIVO = 0 WHERE NATURA IN (1, 1, 2) AND (DESCR = N'due' OR ATTIVO = 1)"),
        (Effect{3, 3}));
}

TEST_F(SparedRows, AreThoseOfAJoinByKey) {
    EXPECT_EQ(
        effect("UPDATE CONTI SET CONTI.ATTIVO = SCELTI.ATTIVO FROM CONTI INNER JOIN SCELTI ON CONTI.CONTO = "
               "SCELTI.CONTO"),
        (Effect{3, 1}));
    EXPECT_EQ(active(), "1101");
}

TEST_F(SparedRows, AreThoseOfAJoinWithDistinctRows) {
    EXPECT_EQ(
        effect("UPDATE CONTI SET ATTIVO = CASE WHEN C IS NULL THEN 0 ELSE 1 END FROM CONTI LEFT OUTER JOIN "
               "(SELECT DISTINCT CONTO AS C FROM NOTE) AS N ON CONTO = C"),
        (Effect{4, 2}));
    EXPECT_EQ(active(), "1001");
}

TEST_F(SparedRows, AreNoneWhereAJoinMayMeetARowTwice) {
    EXPECT_EQ(effect("UPDATE CONTI SET ATTIVO = 1 FROM CONTI INNER JOIN NOTE ON CONTI.CONTO = NOTE.CONTO"),
              (Effect{2, 2}));
    EXPECT_EQ(
        effect("UPDATE CONTI SET ATTIVO = 1 FROM NOTE LEFT OUTER JOIN CONTI ON CONTI.CONTO = NOTE.CONTO"),
        (Effect{2, 2}));
    EXPECT_EQ(active(), "1101");
}

TEST_F(SparedRows, StillHaveTheirValuesChecked) {
    EXPECT_EQ(error("UPDATE CONTI SET DESCR = DESCR + N' con una descrizione troppo lunga'").Number, 8152);
    EXPECT_EQ(error("UPDATE CONTI SET NATURA = NATURA / (NATURA - 1)").Number, 8134);
    EXPECT_EQ(error("UPDATE CONTI SET NATURA = NULL WHERE CONTO = '1'").Number, 515);
}

} // namespace veldran::embedded::test
