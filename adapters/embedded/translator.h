#pragma once

#include "adapters/embedded/catalogue.h"
#include "adapters/embedded/program.h"
#include "adapters/embedded/scope.h"

#include <span>
#include <string_view>

namespace veldran::embedded {

/// What a statement is bound against.
struct BindingContext {
    Catalogue& catalogue;
    const RowCopies& copies;
    const Variables& variables;
    std::span<const SqlType> markers; ///< types of the "?" parameters, in their order
    std::string_view text;            ///< for quoting the place of a refusal
    std::string_view identityInsert;  ///< the table with IDENTITY_INSERT ON, or empty
    bool ofShape = false;             ///< the markers stand for the literals of texts of one shape
};

/// Binds one T-SQL statement to the catalogue and writes it as SQLite. Every member throws AdoError: an
/// unknown or ambiguous name, operands that do not go together, or a construct that the embedded database
/// does not offer (then the message quotes the place). It is one class, because each part of a statement may
/// contain every other; its members stand in one file a part (translate_*.cpp).
class Translator {
public:
    explicit Translator(const BindingContext& context) : context_(context), text_(context.text) {}

    TranslatedStatement select(const tsql::SelectStatement& statement);
    Program insert(const tsql::InsertStatement& statement);
    TranslatedStatement update(const tsql::UpdateStatement& statement);
    Program erase(const tsql::DeleteStatement& statement);
    /// SELECT value: one column of the type (or of its own type), for variables and arguments.
    Program value(const tsql::Expression& expression, const SqlType* type, std::string_view target);
    /// SELECT 1 or 0: whether the condition is true.
    Program condition(const tsql::Expression& expression);

private:
    // Names and places
    [[noreturn]] void refuse(const tsql::NodeSpan& span, std::string_view what) const;
    std::string excerpt(const tsql::NodeSpan& span) const;
    Fragment column(const tsql::QualifiedName& name);
    std::shared_ptr<const Table> table(const tsql::QualifiedName& name);
    std::shared_ptr<const Routine> routine(const tsql::QualifiedName& name);
    Fragment slot(Slot slot);
    Program finish(std::string sql);
    Program finishChange(std::string sql, const Table& target);

    // Values
    Fragment expression(const tsql::Expression& node);
    Fragment literal(const tsql::Literal& node);
    Fragment variable(const tsql::Variable& node, const tsql::NodeSpan& span);
    Fragment marker(const tsql::ParameterMarker& node);
    Fragment unary(const tsql::Unary& node, const tsql::NodeSpan& span);
    Fragment arithmetic(const tsql::Arithmetic& node);
    Fragment scalarSubquery(const tsql::ScalarSubquery& node, const tsql::NodeSpan& span);
    Fragment caseValue(const tsql::Case& node);
    Fragment castValue(const tsql::Cast& node, const tsql::NodeSpan& span);
    Fragment call(const tsql::FunctionCall& node, const tsql::NodeSpan& span);
    Fragment aggregate(const std::string& name, const tsql::FunctionCall& node, const tsql::NodeSpan& span);
    Fragment rowNumber(const tsql::FunctionCall& node, const tsql::NodeSpan& span);
    std::optional<Fragment> textFunction(const std::string& name, const std::vector<Fragment>& arguments,
                                         const tsql::NodeSpan& span);
    std::optional<Fragment> otherFunction(const std::string& name, const std::vector<Fragment>& arguments,
                                          const tsql::NodeSpan& span);
    Fragment userFunction(const tsql::FunctionCall& node, const tsql::NodeSpan& span);
    std::vector<Fragment> expressions(const std::vector<tsql::Expression>& nodes);

    // Conditions
    Condition truth(const tsql::Expression& node);
    Condition inQuery(const tsql::InQuery& node, const tsql::NodeSpan& span);
    Condition exists(const tsql::Exists& node);
    Condition isNull(const tsql::IsNull& node);

    // Sources
    std::string fromList(const std::vector<tsql::TableSource>& sources, Scope& scope,
                         std::vector<Condition>& conditions);
    std::string joined(const tsql::TableSource& source, Scope& scope, std::vector<Condition>& conditions,
                       bool outerSide);
    std::string primary(const tsql::TablePrimary& node, Scope& scope, std::vector<Condition>& conditions,
                        bool outerSide);
    std::string namedTable(const tsql::NamedTable& node, Scope& scope);
    std::string derivedTable(const tsql::DerivedTable& node, Scope& scope);
    std::string tableFunction(const tsql::TableFunction& node, Scope& scope, const tsql::NodeSpan& span);
    std::string applied(const tsql::JoinStep& step, Scope& scope, std::vector<Condition>& conditions);
    void addTable(Scope& scope, std::shared_ptr<const Table> table, const std::string& name,
                  const std::string& alias);
    void addDerived(Scope& scope, const BoundQuery& query, const std::string& name,
                    const std::vector<std::string>& columnNames, const tsql::NodeSpan& span);
    static void makeNullable(Scope& scope, std::size_t from);

    // Queries
    BoundQuery query(const tsql::Query& node, const Scope* outer);
    BoundSelect selectArm(const tsql::SelectSpecification& node, const Scope* outer, Scope& scope);
    void addArm(BoundQuery& result, const tsql::QueryTerm& term, const Scope* outer, Scope& scope);
    void bindItems(const tsql::SelectSpecification& node, BoundSelect& select, Scope& scope);
    void checkGrouping(const tsql::SelectSpecification& node);
    void unifyArms(BoundQuery& query, const tsql::NodeSpan& span);
    std::string orderItems(const std::vector<tsql::OrderItem>& items, const BoundQuery& query, bool single);
    std::string limitOf(const tsql::Expression& top);
    std::string write(const BoundSelect& select, bool named, bool collate) const;
    std::string write(const BoundQuery& query, bool named, bool collate) const;
    /// The query with its columns converted, around itself where it is not plain.
    std::string writeConverted(BoundQuery& query, const std::vector<SqlType>& types,
                               const std::vector<std::string>& names);
    TranslatedStatement selectInto(const tsql::SelectSpecification& node, BoundQuery& query);

    // Changes
    std::vector<std::size_t> insertColumns(const tsql::InsertStatement& statement, const Table& target);
    Program writeInsert(const tsql::InsertStatement& statement, const Table& target);
    Fragment defaultOf(const Table& target, std::size_t column);
    std::string valuesRows(const tsql::InsertValues& source, const Table& target,
                           const std::vector<std::size_t>& columns, std::vector<std::size_t>& omitted);
    struct Target {
        std::shared_ptr<const Table> table;
        std::size_t source = 0; ///< its place in the scope
        bool joined = false;    ///< there are sources beside the target
        bool added = false;     ///< FROM does not name it: it was put beside what FROM names
    };
    Target changeTarget(const tsql::QualifiedName& name, const std::vector<tsql::TableSource>& from,
                        Scope& scope);
    struct AssignedColumn {
        std::size_t column;
        Fragment value;
    };
    std::vector<AssignedColumn> assignments(const tsql::UpdateStatement& statement, const Target& target);
    bool meetsOnce(const tsql::UpdateStatement& statement, const Target& target, const Scope& scope);
    static bool joinsRowNumbers(const Target& target, const std::string& condition, const Scope& scope);
    static std::optional<WriteBack>
    writeBackOf(const Target& target, const std::vector<AssignedColumn>& assigned, const Scope& scope);
    static std::optional<RowCopy> rowCopyOf(const BoundQuery& query, const Table& target,
                                            const std::vector<std::string>& names);
    /// Which rows an UPDATE of a whole table may have to write, where that is known without asking each.
    std::optional<RowsToWrite> rowsToWrite(const tsql::UpdateStatement& statement, const Target& target,
                                           const AssignedColumn& assigned, const Scope& scope);
    std::optional<Partner> subqueryPartner(const tsql::Expression& value, const Target& target,
                                           const Scope& scope);
    std::optional<Partner> joinedPartner(const tsql::UpdateStatement& statement, const Target& target,
                                         const Scope& scope);
    std::optional<ReachedRows> rowsReached(const Partner& partner, const Table& target);
    std::optional<std::int64_t> valueWithout(const Partner& partner, const tsql::Expression& value,
                                             const Scope& scope);
    std::optional<std::int64_t> valueWith(const Partner& partner, const tsql::Expression& value,
                                          const Scope& scope);
    std::optional<std::int64_t> valueTaking(const Partner& partner, const Fragment& found,
                                            const tsql::Expression& value, const Scope& scope);
    bool failsWithoutPartner(const Partner& partner, const tsql::Expression& value, const Scope& scope);
    std::optional<Fragment> bindTaking(const Partner& partner, const Fragment& found,
                                       const tsql::Expression& value, const Scope& scope);
    static std::vector<UniformColumn> uniformColumns(const BoundQuery& query, const Table& table);
    TranslatedStatement writeUpdate(const tsql::UpdateStatement& statement, const Target& target,
                                    const std::vector<AssignedColumn>& assigned, const std::string& from,
                                    Condition where, const Scope& scope);

    // Function bodies
    std::map<std::string, Fragment> boundParameters(const std::vector<tsql::RoutineParameter>& parameters,
                                                    const std::vector<Fragment>& arguments,
                                                    const std::string& name, const tsql::NodeSpan& span);
    void noteSought(const Fragment& column);
    /// The condition of a query or change, with what follows from it and lets an index find its rows.
    Condition withImplied(const Condition& where, const Scope& scope);
    /// What follows from the condition of an UPDATE of one table: between which row numbers its rows are.
    std::optional<Condition> spanInOriginal(const Condition& where, const Scope& scope);
    /// False when no original can lead to the rows that the SELECT reads.
    bool ledByOriginal(BoundSelect& select, Scope& scope);
    /// Whether an index of the copy, on `ownColumns`, serves as well as one of the original on `columns`, at
    /// less cost.
    bool isServedByItself(const Source& source, const std::vector<std::string>& ownColumns,
                          const std::vector<std::string>& columns);
    OriginalRows searchIn(const Table& original, const Source& source,
                          const std::vector<std::string>& columns,
                          const std::vector<const ColumnTest*>& tests);
    std::vector<ColumnTest> membership(const BoundSelect& select, const std::string& exists);
    std::optional<Condition> flagsSteppedOver(const Condition& where, const Source& source);
    std::optional<OriginalRows> soughtInOriginal(const Condition& where, const Source& source,
                                                 const Scope& scope, bool evenByQuery);
    friend class SeekFrame;
    friend class InlineFrame;
    friend class ScopeFrame;

    BindingContext context_;
    std::string_view text_;
    const Scope* scope_ = nullptr;
    const std::map<std::string, Fragment>* inlined_ = nullptr; ///< parameters of the function being inlined
    int inlineDepth_ = 0;
    int aliases_ = 0;
    int occurrences_ = 0;     ///< of base tables so far
    int soughtBehind_ = 0;    ///< occurrences up to this one cannot be found by the condition being bound
    bool aggregates_ = false; ///< the SELECT being bound has shown an aggregate
    int seeks_ = 0;           ///< parts being bound that an index could serve
    std::vector<Slot> slots_;
    std::vector<Dependency> dependencies_;
    std::vector<Sought> sought_;
    std::vector<CopiedColumn> relies_;
    std::vector<CopyShare> shares_;
    std::vector<UniformColumn> uniform_;
    const tsql::Expression* taken_ = nullptr; ///< the subquery whose value is taken for known
    Fragment takenFor_;                       ///< that value: NULL where it finds nothing, or an unknown one
};

} // namespace veldran::embedded
