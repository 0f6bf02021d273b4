#pragma once

#include "adapters/embedded/types.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::embedded {

struct Table;
struct Column;

/// A text made of parts of one other text and of constants.
struct Composition {
    std::string sql;                ///< the fragment that it is
    std::string base;               ///< the other text
    std::vector<std::string> parts; ///< "first, count" in characters, or 'constant'
};

/// A T-SQL value rendered as SQLite text, with what the binder knows of it.
struct Fragment {
    std::string sql;
    SqlType type;
    bool nullable = true;
    bool simple = true;    ///< stands as an operand without parentheses
    bool collated = false; ///< SQLite compares it with the text collation by itself
    bool literal = false;  ///< taken out of its text, `minimumLength` characters long: see text_shape.h
    std::optional<Stored> constant;
    std::optional<Range> range;   ///< narrower than the type's, of the stored integer
    int minimumLength = 0;        ///< characters that the text surely has
    const Table* table = nullptr; ///< the base table's column that it stands for, if it does
    const Column* column = nullptr;
    int occurrence = 0;                               ///< of that table in the statement
    std::shared_ptr<const Composition> composition{}; ///< shared by copies; of another `sql` it says nothing

    Range bounds() const { return range ? *range : rangeOf(type); }
    bool isNullConstant() const { return constant && isNull(*constant); }
    const std::int64_t* integerConstant() const {
        return constant ? std::get_if<std::int64_t>(&*constant) : nullptr;
    }
    const std::string* textConstant() const {
        return constant ? std::get_if<std::string>(&*constant) : nullptr;
    }
    /// The text with parentheses where an operand needs them.
    std::string operand() const { return simple ? sql : "(" + sql + ")"; }
};

enum class Truth { False, True, Unknown };

/// A column of a base table beside a value, as a condition compares them: `before` column `after`.
struct ColumnTest {
    const Column* column = nullptr;
    int occurrence = 0;    ///< of its table in the statement
    bool equality = false; ///< otherwise the value is an end of a range
    std::string before;
    std::string after;
    std::string other; ///< the value
    /// When the value may be any of a query's: the query as FROM names it, which may give a value twice, and
    /// the EXISTS, as it is written, that says neither more nor less than this test.
    std::string query{};
    std::string stated{};

    bool byQuery() const { return !query.empty(); }
};

/// A T-SQL condition rendered as SQLite text; `known` when binding already decides it.
struct Condition {
    enum class Form { Predicate, And, Or };
    std::string sql;
    Form form = Form::Predicate;
    std::optional<Truth> known;
    std::vector<std::string> parts{}; ///< of And: see `conjuncts`
    std::vector<ColumnTest> tests{};  ///< comparisons that hold wherever the condition does

    bool isTrue() const { return known == Truth::True; }
    bool isFalse() const { return known == Truth::False; }
    /// What must hold, each fit to be joined by AND.
    std::vector<std::string> conjuncts() const;
};

Fragment makeConstant(const Stored& value, const SqlType& type);
Fragment makeNull();
/// name(arguments), of the type.
Fragment makeCall(std::string_view function, const std::vector<std::string>& arguments, const SqlType& type,
                  bool nullable);
/// The text value with the collation attached, so that DISTINCT, GROUP BY, ORDER BY and unions see it.
Fragment collatedText(Fragment fragment);

Condition makeKnown(Truth truth);
Condition allOf(std::vector<Condition> conditions);
Condition anyOf(std::vector<Condition> conditions);
Condition negationOf(Condition condition);

} // namespace veldran::embedded
