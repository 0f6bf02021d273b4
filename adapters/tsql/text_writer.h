#pragma once

#include "adapters/tsql/ast.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldran::tsql {

// Writes trees as canonical text. Each overload appends one kind of node.
class TextWriter {
public:
    void write(const Expression& expression) { write(expression, Binding::Disjunction); }
    void write(const Query& query);
    void write(const Statement& statement);
    void write(const QualifiedName& name);
    void write(const DataType& type);
    void write(const std::vector<Statement>& statements);

    std::string take() { return std::move(text_); }

private:
    // How tightly a node holds together, loosest first: an operand that is looser than its place asks for is
    // put in parentheses.
    enum class Binding {
        Disjunction,
        Conjunction,
        Negation,
        Predicate,
        Sum,
        Product,
        Sign,
        Inverted,
        Collated,
        Atom
    };

    static Binding bindingOf(const Expression& expression);
    void write(const Expression& expression, Binding atLeast);

    // text_writer_expressions.cpp
    void node(const Literal& literal);
    void node(const ColumnReference& column) { write(column.name); }
    void node(const Variable& variable) { text_ += variable.name; }
    void node(const ParameterMarker&) { text_ += '?'; }
    void node(const DefaultValue&) { text_ += "DEFAULT"; }
    void node(const Unary& unary);
    void node(const Arithmetic& chain);
    void node(const Comparison& comparison);
    void node(const Logical& chain);
    void node(const Not& negation);
    void node(const Between& between);
    void node(const InList& in);
    void node(const InQuery& in);
    void node(const Like& like);
    void node(const IsNull& isNull);
    void node(const Exists& exists);
    void node(const ScalarSubquery& subquery);
    void node(const Case& choice);
    void node(const Cast& cast);
    void node(const Collate& collate);
    void node(const FunctionCall& call);
    void node(const IdentityFunction& identity);
    void values(const std::vector<Expression>& expressions);
    void order(const std::vector<OrderItem>& items);
    void word(std::string_view keyword, bool present) { text_ += present ? keyword : ""; }
    void identifier(std::string_view name);
    void identifiers(const std::vector<std::string>& names);

    // text_writer_queries.cpp
    void node(const QueryTerm& term);
    void node(const SelectSpecification& select);
    void node(const Box<Query>& query);
    void node(const SelectItem& item);
    void node(const AllColumns& all);
    void node(const SelectValue& value);
    void node(const SelectAssignment& assignment);
    void node(const TableSource& source);
    void node(const JoinStep& step);
    void node(const NamedTable& table);
    void node(const DerivedTable& table);
    void node(const TableFunction& function);
    void node(const NestedJoin& join);
    void from(const std::vector<TableSource>& sources);
    void where(const std::optional<Expression>& condition);

    // text_writer_statements.cpp
    void node(const SelectStatement& select) { write(select.query); }
    void node(const InsertStatement& insert);
    void node(const InsertValues& rows);
    void node(const Query& query) { write(query); }
    void node(const InsertDefaults&) { text_ += "DEFAULT VALUES"; }
    void node(const UpdateStatement& update);
    void node(const DeleteStatement& deletion);
    void node(const SetIdentityInsert& set);
    void node(const SetOption& set);
    void node(const TransactionStatement& transaction);
    void node(const Block& block);
    void node(const IfStatement& choice);
    void node(const WhileStatement& loop);
    void node(const BreakStatement&) { text_ += "BREAK"; }
    void node(const ContinueStatement&) { text_ += "CONTINUE"; }
    void node(const DeclareStatement& declare);
    void node(const SetVariable& set);
    void node(const ReturnStatement& result);
    void node(const PrintStatement& print);
    void node(const RaiseErrorStatement& raise);
    void node(const ThrowStatement& thrown);
    void node(const ExecuteStatement& execute);

    // text_writer_definitions.cpp
    void node(const CreateTable& table);
    void node(const ColumnDefinition& column);
    void node(const KeyConstraint& key);
    void node(const CheckConstraint& check);
    void node(const AlterTableAdd& alter);
    void node(const CreateIndex& index);
    void node(const DropStatement& drop);
    void node(const TruncateTable& truncate);
    void node(const CreateProcedure& procedure);
    void node(const CreateFunction& function);
    void node(const ScalarFunctionBody& body);
    void node(const InlineTableBody& body);
    void columns(const std::vector<IndexColumn>& columns);
    void constraintName(const std::optional<std::string>& name);
    void clustering(Clustering clustering);
    void definition(DefinitionMode mode, std::string_view kind, const QualifiedName& name);
    void parameters(const std::vector<RoutineParameter>& parameters);

    std::string text_;
};

} // namespace veldran::tsql
