#pragma once

#include "adapters/tsql/ast.h"
#include "adapters/tsql/token_stream.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veldran::tsql {

// Recursive descent over the tokens of one batch: one function for each production, which stands in the
// comment at its definition. Every function throws SyntaxError when the text at the reading place is not what
// it describes. Quoted words are keywords, {x} is any number of x, [x] an optional x.
class Grammar {
public:
    explicit Grammar(TokenStream tokens) : tokens_(std::move(tokens)) {}

    Batch batch();
    Expression loneExpression();

private:
    using Production = Expression (Grammar::*)();
    using ArithmeticOperators = std::span<const std::pair<std::string_view, ArithmeticOperator>>;

    // grammar_expressions.cpp
    Expression condition();
    Expression value();
    Expression disjunction();
    Expression conjunction();
    Expression negation();
    Expression predicate();
    Expression logicalChain(std::string_view connective, LogicalOperator op, Production operand);
    Expression arithmeticChain(ArithmeticOperators operators, Production operand);
    Expression comparison(Expression left, ComparisonOperator op);
    Expression between(Expression operand, bool negated);
    Expression in(Expression operand, bool negated);
    Expression like(Expression operand, bool negated);
    Expression isNull(Expression operand);
    Expression additive();
    Expression multiplicative();
    Expression unary();
    Expression collated();
    Expression parenthesised();
    std::vector<Expression> valueList();

    // grammar_primaries.cpp
    Expression primary();
    std::optional<Literal> literal();
    Expression constant();
    Expression caseExpression();
    Expression cast();
    Expression convert();
    Expression identityFunction();
    Expression nameOrCall();
    Expression functionCall(const SourcePosition& begin, QualifiedName name);
    Over over();
    QualifiedName qualifiedName();
    DataType dataType();

    // grammar_queries.cpp
    Query query();
    QueryTerm queryTerm();
    SelectSpecification selectSpecification();
    std::optional<Expression> top();
    SelectItem selectItem();
    bool atAllColumns() const;
    std::vector<TableSource> fromList();
    TableSource tableSource();
    std::optional<JoinKind> joinKind();
    TablePrimary tablePrimary();
    DerivedTable derivedTable();
    std::vector<std::string> tableHints();
    std::optional<std::string> tableAlias();
    std::vector<OrderItem> orderList();
    Box<Query> parenthesisedQuery();
    bool atParenthesisedQuery() const;

    // grammar_statements.cpp
    Statement statement();
    StatementNode statementNode();
    std::vector<Statement> statementsUntil(std::string_view closing);
    InsertStatement insert();
    InsertValues insertRows();
    UpdateStatement update();
    Assignment assignment();
    DeleteStatement deleteFrom();
    Expression valueOrDefault();
    Expression assigned(const SourcePosition& begin, ExpressionNode target);

    // grammar_control.cpp
    StatementNode begin();
    IfStatement ifStatement();
    WhileStatement whileStatement();
    DeclareStatement declare();
    StatementNode set();
    SetOption setOption();
    SetOption setIsolationLevel();
    TransactionStatement transaction(TransactionAction action);
    ReturnStatement returnStatement();
    RaiseErrorStatement raiseError();
    ThrowStatement throwStatement();
    ExecuteStatement execute();
    ExecuteArgument executeArgument();
    bool atValue() const;
    bool atConstant() const;
    bool acceptOutput();

    // grammar_definitions.cpp
    StatementNode create();
    StatementNode alter();
    CreateTable createTable();
    ColumnDefinition columnDefinition();
    bool columnProperty(ColumnDefinition& column);
    IdentityProperty identityProperty();
    bool atTableConstraint() const;
    TableConstraint tableConstraint();
    KeyConstraint keyConstraint(bool inlineInColumn);
    CheckConstraint checkConstraint();
    std::optional<std::string> constraintName();
    Clustering clustering();
    std::vector<IndexColumn> indexColumns();
    AlterTableAdd alterTable();
    CreateIndex createIndex();
    DropStatement drop();
    TruncateTable truncate();

    // grammar_routines.cpp
    bool atRoutine() const;
    StatementNode routine(DefinitionMode mode, const SourcePosition& begin, bool firstInBatch);
    CreateProcedure procedure(DefinitionMode mode);
    CreateFunction function(DefinitionMode mode);
    void tableFunction(CreateFunction& result);
    void scalarFunction(CreateFunction& result);
    std::vector<RoutineParameter> routineParameters();
    RoutineParameter routineParameter();
    bool acceptSchemaBinding();

    void requireCondition(const Expression& expression) const;
    void requireValue(const Expression& expression) const;
    std::string takeVariable();

    TokenStream tokens_;
    std::size_t markers_ = 0;
};

} // namespace veldran::tsql
