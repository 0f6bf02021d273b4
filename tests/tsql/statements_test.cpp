#include "adapters/tsql/printer.h"
#include "tests/tsql/refusal.h"

namespace veldran::tsql::test {
namespace {

std::string shape(std::string_view text) {
    return toText(parseBatch(text));
}

TEST(TsqlStatements, RefusesAnInsertWithoutRows) {
    EXPECT_EQ(messageOf("INSERT INTO T (A)"),
              "Sintassi non corretta alla fine del testo (riga 1, colonna 18): manca VALUES o SELECT");
    EXPECT_NE(refusalOf("INSERT INTO T () VALUES (1)"), Refusal{});
    EXPECT_EQ(refusalOf("INSERT INTO T EXEC P"), (Refusal{156, 1, 15}));
}

TEST(TsqlStatements, RefusesDefaultOutsideOfRowsAndAssignments) {
    EXPECT_NE(refusalOf("SELECT DEFAULT"), Refusal{});
    EXPECT_NE(refusalOf("INSERT INTO T VALUES (1 + DEFAULT)"), Refusal{});
}

TEST(TsqlStatements, RefusesAnUpdateOfAVariable) {
    EXPECT_NE(refusalOf("UPDATE T SET @A = 1"), Refusal{});
}

TEST(TsqlStatements, RefusesAnUnknownSwitch) {
    EXPECT_EQ(refusalOf("SET NOCAUNT ON"), (Refusal{102, 1, 5}));
}

TEST(TsqlStatements, RefusesASwitchThatIsNeitherOnNorOff) {
    EXPECT_EQ(messageOf("SET NOCOUNT 1"),
              "Sintassi non corretta vicino a '1' (riga 1, colonna 13): manca 'OFF'");
}

TEST(TsqlStatements, RefusesAnElseWithoutItsIf) {
    EXPECT_EQ(refusalOf("ELSE SELECT 1"), (Refusal{156, 1, 1}));
}

TEST(TsqlStatements, RefusesAnExpressionAsAnArgumentOfAProcedure) {
    EXPECT_NE(refusalOf("EXEC P @A + 1"), Refusal{});
    EXPECT_NE(refusalOf("EXEC P @A = F(1)"), Refusal{});
    EXPECT_NE(refusalOf("EXEC P 1 OUTPUT"), Refusal{});
}

TEST(TsqlStatements, TakesAnEmptyTextForAnEmptyBatch) {
    EXPECT_TRUE(parseBatch("").statements.empty());
    EXPECT_TRUE(parseBatch(" ; -- nothing\n;").statements.empty());
}

TEST(TsqlStatements, SeparatesStatementsWithOrWithoutSemicolons) {
    EXPECT_EQ(parseBatch("SELECT 1 SELECT 2; SELECT 3;").statements.size(), 3U);
}

TEST(TsqlStatements, CountsMarkersOverTheWholeBatch) {
    EXPECT_EQ(parseBatch("UPDATE T SET A = ? WHERE B = ?; DELETE FROM T WHERE A = ?").parameterCount, 3U);
    EXPECT_EQ(parseBatch("SELECT '?' -- ?").parameterCount, 0U);
}

TEST(TsqlStatements, SpansEachStatement) {
    const Batch batch = parseBatch("SELECT 1;\n  DELETE FROM T  ;");
    EXPECT_EQ(batch.statements[1].span.begin, (SourcePosition{12, 2, 3}));
    EXPECT_EQ(batch.statements[1].span.end, (SourcePosition{25, 2, 16}));
}

TEST(TsqlStatements, ReadsInsertsOfSeveralRows) {
    const auto insert = parsed<InsertStatement>("INSERT T (A, [B C]) VALUES (1, 'x'), (DEFAULT, NULL)");
    EXPECT_EQ(insert.columns, (std::vector<std::string>{"A", "B C"}));
    const auto& values = std::get<InsertValues>(insert.source);
    ASSERT_EQ(values.rows.size(), 2U);
    EXPECT_TRUE(std::holds_alternative<DefaultValue>(values.rows[1][0].node));
}

TEST(TsqlStatements, ReadsInsertsFromQueries) {
    EXPECT_TRUE(
        std::holds_alternative<Query>(parsed<InsertStatement>("INSERT INTO T (A) SELECT B FROM U").source));
    EXPECT_TRUE(
        std::holds_alternative<Query>(parsed<InsertStatement>("INSERT INTO T (SELECT B FROM U)").source));
    EXPECT_TRUE(std::holds_alternative<Query>(
        parsed<InsertStatement>("INSERT INTO T ((SELECT 1) UNION SELECT 2)").source));
    EXPECT_TRUE(std::holds_alternative<InsertDefaults>(
        parsed<InsertStatement>("INSERT INTO T DEFAULT VALUES").source));
}

TEST(TsqlStatements, ReadsUpdatesOverJoinsWithQualifiedColumns) {
    const auto update = parsed<UpdateStatement>("UPDATE #A SET #A.X = #B.X, Y = DEFAULT, Z += 1 FROM #A "
                                                "INNER JOIN #B ON #A.I = #B.I WHERE #A.X <> #B.X");
    ASSERT_EQ(update.assignments.size(), 3U);
    EXPECT_EQ(update.assignments[0].column.parts, (std::vector<std::string>{"#A", "X"}));
    EXPECT_EQ(toText(update.assignments[2].value), "Z + 1");
    EXPECT_EQ(update.from.size(), 1U);
    EXPECT_TRUE(update.where.has_value());
}

TEST(TsqlStatements, ReadsDeletesOverJoins) {
    EXPECT_EQ(shape("DELETE D FROM #DETTAGLIO AS D, #TESTATA AS T WHERE D.CAUSALE = T.CAUSALE"),
              "DELETE FROM D FROM #DETTAGLIO AS D, #TESTATA AS T WHERE D.CAUSALE = T.CAUSALE");
    EXPECT_FALSE(parsed<DeleteStatement>("DELETE FROM #DETTAGLIO").where.has_value());
}

TEST(TsqlStatements, ReadsSwitches) {
    EXPECT_TRUE(parsed<SetIdentityInsert>("SET IDENTITY_INSERT #X ON").on);
    EXPECT_FALSE(parsed<SetIdentityInsert>("SET IDENTITY_INSERT DBO.X OFF").on);
    const auto option = parsed<SetOption>("set nocount, xact_abort on");
    EXPECT_EQ(option.names, (std::vector<std::string>{"NOCOUNT", "XACT_ABORT"}));
    EXPECT_TRUE(option.on);
    EXPECT_EQ(parsed<SetOption>("SET LOCK_TIMEOUT -1").value, "-1");
    EXPECT_EQ(parsed<SetOption>("SET TRANSACTION ISOLATION LEVEL READ COMMITTED").value, "READ COMMITTED");
    EXPECT_EQ(parsed<SetOption>("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ").value, "REPEATABLE READ");
}

TEST(TsqlStatements, ReadsTransactions) {
    EXPECT_EQ(parsed<TransactionStatement>("BEGIN TRAN").action, TransactionAction::Begin);
    EXPECT_EQ(parsed<TransactionStatement>("BEGIN TRANSACTION SALVA").name, "SALVA");
    EXPECT_EQ(parsed<TransactionStatement>("COMMIT").action, TransactionAction::Commit);
    EXPECT_EQ(parsed<TransactionStatement>("COMMIT WORK").action, TransactionAction::Commit);
    EXPECT_EQ(parsed<TransactionStatement>("ROLLBACK TRAN").action, TransactionAction::Rollback);
    EXPECT_EQ(parsed<TransactionStatement>("SAVE TRAN P").name, "P");
}

TEST(TsqlStatements, BindsAnElseToTheNearestIf) {
    const auto outer = parsed<IfStatement>("IF 1 = 1 IF 2 = 2 SELECT 1 ELSE SELECT 2");
    EXPECT_FALSE(outer.otherwise.has_value());
    EXPECT_TRUE(std::get<IfStatement>(outer.then->node).otherwise.has_value());
}

TEST(TsqlStatements, AllowsASemicolonBeforeElse) {
    EXPECT_TRUE(parsed<IfStatement>("IF 1 = 1 SELECT 1; ELSE SELECT 2").otherwise.has_value());
}

TEST(TsqlStatements, ReadsBlocksAndLoops) {
    const auto loop = parsed<WhileStatement>("WHILE @I < 3 BEGIN SET @I += 1; IF @I = 2 CONTINUE; BREAK END");
    EXPECT_EQ(std::get<Block>(loop.body->node).statements.size(), 3U);
}

TEST(TsqlStatements, ReadsDeclarations) {
    const auto declare =
        parsed<DeclareStatement>("DECLARE @A INT = 1, @B AS NCHAR(10), @C DECIMAL(5, 2) = -1.5");
    ASSERT_EQ(declare.variables.size(), 3U);
    EXPECT_TRUE(declare.variables[0].initial.has_value());
    EXPECT_EQ(declare.variables[1].type.name, "NCHAR");
    EXPECT_EQ(toText(*declare.variables[2].initial), "-1.5");
}

TEST(TsqlStatements, ReadsAssignmentsWithAnOperation) {
    EXPECT_EQ(shape("SET @A *= 2 + 1"), "SET @A = @A * (2 + 1)");
    EXPECT_EQ(shape("SET @A = @A + 1"), "SET @A = @A + 1");
}

TEST(TsqlStatements, TellsAReturnOfAValueFromAnEmptyOne) {
    EXPECT_TRUE(parsed<ReturnStatement>("RETURN (SELECT 1)").value.has_value());
    EXPECT_TRUE(parsed<ReturnStatement>("RETURN -1").value.has_value());
    EXPECT_TRUE(parsed<ReturnStatement>("RETURN LEFT(@A, 2)").value.has_value());
    EXPECT_FALSE(parsed<ReturnStatement>("RETURN").value.has_value());
    EXPECT_EQ(parseBatch("RETURN SELECT 1").statements.size(), 2U);
    EXPECT_EQ(parseBatch("IF 1 = 1 RETURN THROW 50000, 'x', 1").statements.size(), 2U);
}

TEST(TsqlStatements, ReadsErrorsThatAProcedureRaises) {
    EXPECT_EQ(parsed<RaiseErrorStatement>("RAISERROR('conto %s', 16, 1, @CONTO)").arguments.size(), 4U);
    EXPECT_EQ(shape("THROW 50001, 'no', 1"), "THROW 50001, 'no', 1");
    EXPECT_EQ(shape("PRINT 'a' + @B"), "PRINT 'a' + @B");
}

TEST(TsqlStatements, ReadsCallsOfProcedures) {
    const auto call = parsed<ExecuteStatement>(
        "EXEC @RC = SPCI_VELDRANACT @ON = 1, @CONTO = N'01', @N = DEFAULT, @X = @Y OUTPUT");
    EXPECT_EQ(call.returnVariable, "@RC");
    ASSERT_EQ(call.arguments.size(), 4U);
    EXPECT_EQ(call.arguments[1].name, "@CONTO");
    EXPECT_TRUE(std::holds_alternative<DefaultValue>(call.arguments[2].value.node));
    EXPECT_TRUE(call.arguments[3].output);
}

TEST(TsqlStatements, ReadsCallsByPosition) {
    const auto call = parsed<ExecuteStatement>("EXECUTE DBO.P ?, -1, 'x', NULL");
    ASSERT_EQ(call.arguments.size(), 4U);
    EXPECT_FALSE(call.arguments[0].name.has_value());
    EXPECT_EQ(parseBatch("EXEC P\nSELECT 1").statements.size(), 2U);
}

} // namespace
} // namespace veldran::tsql::test
