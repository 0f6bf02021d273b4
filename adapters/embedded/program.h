#pragma once

#include "adapters/embedded/catalogue.h"
#include "adapters/embedded/row_copies.h"
#include "platform/ado/row_set.h"

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace veldran::embedded {

/// Where a numbered SQLite parameter of an emitted text takes its value from.
struct Slot {
    enum class Kind { Marker, Variable };
    Kind kind = Kind::Marker;
    std::size_t marker = 0; ///< from 0, in the order of the text
    std::string variable;   ///< with its "@"; "@@" names are the session's
    SqlType type;
};

/// What an emitted text was bound to; when one of these has changed, it is bound anew.
struct Dependency {
    tsql::QualifiedName name;
    std::shared_ptr<const Table> table;
    std::shared_ptr<const Routine> routine;
};

/// The columns that a text tests or sorts by where it names a working table: what an index could serve.
struct Sought {
    std::string table;
    int occurrence = 0; ///< a text may name a table several times, each time with conditions of its own
    std::vector<std::string> columns;
};

/// One SQLite statement that stands for a T-SQL query or change.
struct Program {
    std::string sql;
    std::vector<Slot> slots;            ///< slot i is the parameter ?(i + 1)
    std::vector<SqlType> types;         ///< of a query's columns; empty for a change
    ado::SharedColumns columns;         ///< what the client is told of them; empty unless it may see them
    std::vector<std::string> variables; ///< of SELECT @V = ...: one for each column
    std::vector<Dependency> dependencies;
    std::vector<Sought> sought;
    std::vector<CopiedColumn> relies;    ///< what must be alike for the text to find the right rows
    std::vector<CopyShare> shares;       ///< what the way to the rows was chosen by
    std::vector<UniformColumn> uniform;  ///< what every row must have for the text to find the right ones
    std::string changesTable;            ///< the working table that it changes; empty for one of the file
    std::vector<std::string> updates;    ///< of an UPDATE of a working table: the columns it assigns
    std::optional<RowCopy> copies;       ///< of an INSERT
    std::optional<WriteBack> writesBack; ///< of an UPDATE
    bool changesFile = false;            ///< it writes a table of the file, not a working table
    bool inserts = false;                ///< it is an INSERT
    bool numbersRows = false;            ///< into a table with an identity column
    bool sparesRows = false; ///< rows that have their new values already are counted and left as they are
    std::string counts;      ///< counts the rows met, where the text looks at fewer; else empty
};

/// SELECT ... INTO: the table to make, and the statement that fills it.
struct IntoProgram {
    Table table;
    Program fill;
    std::vector<UniformColumn> uniform; ///< what it puts into every row
};

/// An update that moves keys: what to do when rows collide half-way. The statements share the slots of
/// `direct`.
struct KeyUpdateProgram {
    Program direct;
    Table target;
    std::string stage;  ///< keeps the changed rows aside in temp."veldran_stage"
    std::string remove; ///< deletes the rows as they were
    std::string insert; ///< inserts them as they are to be
};

using TranslatedStatement = std::variant<Program, IntoProgram, KeyUpdateProgram>;

} // namespace veldran::embedded
