#pragma once

#include "adapters/embedded/fragment.h"
#include "adapters/embedded/program.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veldran::embedded {

struct SourceColumn {
    std::string name;
    Fragment value;
};

/// One table, derived table or function of a FROM list.
struct Source {
    std::string name;                   ///< by which the query may call it
    std::string alias;                  ///< by which the emitted text calls it
    std::shared_ptr<const Table> table; ///< empty unless it is a base table
    std::vector<SourceColumn> columns;
    bool distinct = false; ///< no two of its rows are alike

    /// Of its table in the statement; 0 without columns.
    int occurrence() const { return columns.empty() ? 0 : columns.front().value.occurrence; }
};

/// What names mean at one place of a query; `outer` is the query around it.
struct Scope {
    const Scope* outer = nullptr;
    std::vector<Source> sources;
};

/// The variables that a statement may name: a procedure's, or an inlined function's parameters.
class Variables {
public:
    virtual ~Variables() = default;
    virtual const SqlType* typeOf(const std::string& name) const = 0;
};

struct SelectedItem {
    std::string name;
    Fragment value;
    tsql::NodeSpan span;
    std::string variable; ///< of SELECT @V = value
};

/// The rows of a working table's original that have the numbers of those sought in the copy.
struct OriginalRows {
    std::string number; ///< of such a row
    std::string from;
    std::string where;
    std::vector<std::string> settles; ///< conditions on the copy that hold for the rows it leads to
};

/// One SELECT, bound and not yet written out.
struct BoundSelect {
    bool distinct = false;
    bool grouped = false;
    std::vector<SelectedItem> items;
    std::string from;
    Condition condition; ///< as the statement says it
    std::string where;   ///< as it is written: with what follows from it
    std::string leader;  ///< the original whose rows `where` finds first; empty when there is none
    std::string groupBy;
    std::string having;
    std::string limit;
    const tsql::IdentityFunction* identity = nullptr; ///< of SELECT ... INTO
    std::size_t identityIndex = 0;                    ///< the place of that column among the items
    std::string identityName;
    std::shared_ptr<const Table> onlyTable; ///< set when FROM is one base table
    std::string onlyAlias;                  ///< and by which the emitted text calls it
};

/// A whole query: SELECTs joined by UNION, ordered.
struct BoundQuery {
    std::vector<BoundSelect> arms;
    std::vector<bool> unionAll; ///< between arm i and i + 1
    std::string orderBy;

    std::vector<SelectedItem>& items() { return arms.front().items; }
    const std::vector<SelectedItem>& items() const { return arms.front().items; }
    bool isPlain() const { return arms.size() == 1 && !arms.front().distinct; }
};

/// What a change looks for beside each row of its target, the row's columns being compared with its own.
struct Partner {
    const tsql::Expression* subquery = nullptr; ///< that looks for it; a join has none
    SqlType type;                               ///< of the subquery's value
    std::optional<Fragment> found; ///< that value wherever there is one, if it is always the same
    std::string from;
    Condition condition;
    std::string alias;  ///< by which `condition` calls the target
    int occurrence = 0; ///< of the target there
};

/// The rows of the target that an UPDATE may have to write.
struct RowsToWrite {
    Condition condition;
    std::optional<std::int64_t> value; ///< what they all get, none of them having it yet
};

/// The rows of the target that partners lead to.
struct ReachedRows {
    std::string numbers;               ///< the query for them
    std::vector<std::string> columns;  ///< by which an index finds them
    std::vector<UniformColumn> relies; ///< what the query takes for granted
};

} // namespace veldran::embedded
