#pragma once

#include "adapters/embedded/program.h"
#include "adapters/embedded/sqlite.h"
#include "adapters/tsql/ast.h"

#include <cstdint>
#include <list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veldran::embedded {

/// One statement or expression of a text, bound and prepared.
struct Compiled {
    TranslatedStatement translated;
    SqliteStatement statement;     ///< of a Program, and of the direct form of a key update
    std::uint64_t generation = 0;  ///< of the catalogue, when the binding was last found good
    std::string identityInsert;    ///< the setting it was bound under
    std::uint64_t copiesState = 0; ///< of the copies, when the binding was last found good
    std::uint64_t indexState = 0;  ///< of the catalogue, when its indexes were last found built
    int replans = 0;               ///< how often SQLite had planned it anew when last looked at
    SqliteStatement ofRange{};     ///< of a write-back

    const Program& program() const;
};

/// A parameter of a procedure as its calls need it.
struct CalledParameter {
    std::string name; ///< in capitals, with its "@"
    SqlType type;
};

/// A parsed text with what has been bound of it so far. Statements are bound when they first run, as on the
/// server: a text may use what an earlier statement of it creates.
struct Plan {
    std::string text;
    std::string shape; ///< of texts that share the plan: its markers stand for their literals; else empty
    tsql::Batch batch;
    std::vector<SqlType> markers;
    std::unordered_map<const void*, Compiled> compiled; ///< by the syntax node
    // Of a procedure: shared with the catalogue, which may forget it while the plan is kept.
    std::shared_ptr<const Routine> routine;
    std::vector<CalledParameter> parameters; ///< of the procedure, as it declares them

    /// The statements to run: a procedure's body, or the whole text.
    const std::vector<tsql::Statement>& body() const {
        return routine ? routine->procedure().body : batch.statements;
    }
};

/// The texts used last, by text and parameter types, and by shape.
class PlanCache {
public:
    /// Parses the text unless it is known. \throws AdoError with the syntax error and its place
    std::shared_ptr<Plan> plan(std::string_view text, std::vector<SqlType> markers);
    /// The same for a text without parameters, unless one of its shape is known; `values` become those of
    /// the plan's markers.
    std::shared_ptr<Plan> sharedPlan(std::string_view text, std::vector<Stored>& values);
    std::size_t size() const { return plans_.size(); }
    /// How many texts had to be parsed.
    std::size_t parsed() const { return parsed_; }

private:
    /// What a plan is found by; of a plan that is kept, it is the plan's own.
    struct Key {
        std::string_view text;
        std::span<const SqlType> markers;
        bool isShape = false;
        bool operator==(const Key& other) const;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const { return std::hash<std::string_view>{}(key.text); }
    };
    using Plans = std::list<std::shared_ptr<Plan>>; // shared with the statements that are using them
    static Key keyOf(const Plan& plan);
    std::shared_ptr<Plan> find(const Key& key);
    std::shared_ptr<Plan> parse(std::string_view text);
    void keep(const std::shared_ptr<Plan>& fresh);

    Plans plans_; // the latest first
    std::unordered_map<Key, Plans::iterator, KeyHash> byKey_;
    std::size_t parsed_ = 0;
};

} // namespace veldran::embedded
