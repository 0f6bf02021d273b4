#include "adapters/embedded/collation.h"
#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/numeric.h"
#include "adapters/embedded/operators.h"
#include "adapters/embedded/overloaded.h"
#include "adapters/embedded/translator.h"

#include <algorithm>
#include <charconv>

namespace veldran::embedded {

namespace {

Fragment textLiteral(const std::string& value, TypeKind kind) {
    return makeConstant(value, textType(kind, std::max(characterCount(value), 1)));
}

struct Branch {
    Condition condition;
    std::string when; // of the simple form: the value to compare with
    Fragment value;
};

struct WrittenBranch {
    std::vector<std::string> parts; // of its condition
    std::string value;
};

// How long a value may be that is written twice.
constexpr std::size_t shortValue = 40;

std::string joinedByAnd(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : " AND ") + part;
    }
    return text;
}

// The searched form. A part that every condition begins with is tested once for all of them, because SQLite
// would compute it again for each. `otherwise` is empty where no ELSE is needed.
std::string searchedCase(const std::vector<WrittenBranch>& branches, const std::string& otherwise) {
    const std::string ending = (otherwise.empty() ? "" : " ELSE " + otherwise) + " END";
    const std::string& common = branches.front().parts.front();
    const bool shared =
        branches.size() > 1 && otherwise.size() <= shortValue && otherwise.find('(') == std::string::npos &&
        std::all_of(branches.begin(), branches.end(),
                    [&](const WrittenBranch& branch) { return branch.parts.front() == common; });
    if (!shared) {
        std::string sql = "CASE";
        for (const WrittenBranch& branch : branches) {
            sql += " WHEN " + joinedByAnd(branch.parts) + " THEN " + branch.value;
        }
        return sql + ending;
    }
    std::vector<WrittenBranch> inner;
    std::string innerOtherwise = otherwise;
    for (const WrittenBranch& branch : branches) {
        if (branch.parts.size() == 1) {
            innerOtherwise = branch.value;
            break;
        }
        inner.push_back({{branch.parts.begin() + 1, branch.parts.end()}, branch.value});
    }
    return "CASE WHEN " + common + " THEN " +
           (inner.empty() ? innerOtherwise : searchedCase(inner, innerOtherwise)) + ending;
}

} // namespace

Fragment Translator::expression(const tsql::Expression& node) {
    return std::visit(
        Overloaded{
            [&](const tsql::Literal& n) { return literal(n); },
            [&](const tsql::ColumnReference& n) { return column(n.name); },
            [&](const tsql::Variable& n) { return variable(n, node.span); },
            [&](const tsql::ParameterMarker& n) { return marker(n); },
            [&](const tsql::Unary& n) { return unary(n, node.span); },
            [&](const tsql::Arithmetic& n) { return arithmetic(n); },
            [&](const tsql::ScalarSubquery& n) {
                return taken_ == &node ? takenFor_ : scalarSubquery(n, node.span);
            },
            [&](const tsql::Case& n) { return caseValue(n); },
            [&](const tsql::Cast& n) { return castValue(n, node.span); },
            [&](const tsql::Collate& n) { return expression(*n.operand); },
            [&](const tsql::FunctionCall& n) { return call(n, node.span); },
            [&](const tsql::IdentityFunction&) -> Fragment {
                fail(177, "42000",
                     "La funzione IDENTITY può essere utilizzata solo in un'istruzione SELECT con INTO.");
            },
            [&](const tsql::DefaultValue&) -> Fragment {
                refuse(node.span, "DEFAULT non è ammesso in questo punto");
            },
            [&](const auto&) -> Fragment { refuse(node.span, "Una condizione non è un valore"); },
        },
        node.node);
}

std::vector<Fragment> Translator::expressions(const std::vector<tsql::Expression>& nodes) {
    std::vector<Fragment> result;
    for (const tsql::Expression& node : nodes) {
        result.push_back(expression(node));
    }
    return result;
}

Fragment Translator::literal(const tsql::Literal& node) {
    switch (node.kind) {
    case tsql::LiteralKind::Null:
        return makeNull();
    case tsql::LiteralKind::String:
        return textLiteral(node.value, TypeKind::VarChar);
    case tsql::LiteralKind::NationalString:
        return textLiteral(node.value, TypeKind::NVarChar);
    case tsql::LiteralKind::Float:
        if (const auto number = parseDouble(node.value)) {
            return makeConstant(*number, integerType(TypeKind::Float));
        }
        break;
    case tsql::LiteralKind::Integer:
    case tsql::LiteralKind::Decimal: {
        const auto number = parseDecimal(node.value);
        if (!number) {
            break;
        }
        const bool isInt = node.kind == tsql::LiteralKind::Integer && number->coefficient <= INT32_MAX;
        const int digits = static_cast<int>(std::to_string(number->coefficient).size());
        return makeConstant(number->coefficient,
                            isInt ? integerType(TypeKind::Int)
                                  : decimalType(std::max(digits, number->scale + 0), number->scale));
    }
    case tsql::LiteralKind::Binary:
        fail(errorNotSupported, "42000", "Le costanti binarie non sono disponibili: 0x" + node.value + ".");
    }
    fail(1007, "22003", "Il numero '" + node.value + "' non rientra nell'intervallo rappresentabile.");
}

Fragment Translator::variable(const tsql::Variable& node, const tsql::NodeSpan& span) {
    const std::string key = toUpper(std::string_view(node.name));
    if (inlined_ != nullptr) {
        const auto found = inlined_->find(key);
        if (found != inlined_->end()) {
            return found->second;
        }
    } else if (const SqlType* type = context_.variables.typeOf(key)) {
        return slot({Slot::Kind::Variable, 0, key, *type});
    }
    if (key.starts_with("@@")) {
        refuse(span, "La variabile globale non è disponibile nel database incorporato");
    }
    fail(137, "42000", "La variabile scalare \"" + node.name + "\" deve essere dichiarata.");
}

Fragment Translator::marker(const tsql::ParameterMarker& node) {
    if (node.ordinal > context_.markers.size()) {
        fail(8178, "07002",
             "Manca il valore del parametro per il marcatore numero " + std::to_string(node.ordinal) + ".");
    }
    Fragment value = slot({Slot::Kind::Marker, node.ordinal - 1, {}, context_.markers[node.ordinal - 1]});
    if (context_.ofShape) {
        value.literal = true;
        value.nullable = false;
        value.minimumLength = value.type.length;
    }
    return value;
}

Fragment Translator::unary(const tsql::Unary& node, const tsql::NodeSpan& span) {
    Fragment operand = expression(*node.operand);
    switch (node.op) {
    case tsql::UnaryOperator::Plus:
        return operand;
    case tsql::UnaryOperator::Minus:
        return negated(operand);
    case tsql::UnaryOperator::BitNot:
        break;
    }
    refuse(span, "L'operatore ~ non è disponibile");
}

Fragment Translator::arithmetic(const tsql::Arithmetic& node) {
    Fragment result = expression(*node.first);
    for (const tsql::ArithmeticStep& step : node.steps) {
        result = applyArithmetic(step.op, result, expression(*step.operand));
    }
    return result;
}

Fragment Translator::scalarSubquery(const tsql::ScalarSubquery& node, const tsql::NodeSpan& span) {
    BoundQuery bound = query(*node.query, scope_);
    if (bound.items().size() != 1) {
        fail(
            116, "42000",
            "È possibile specificare una sola espressione nell'elenco di selezione di una sottoquery (riga " +
                std::to_string(span.begin.line) + ").");
    }
    BoundSelect& first = bound.arms.front();
    const Fragment inner = first.items.front().value;
    // More than one row is an error that SQLite would not notice: an aggregate of ours watches over it.
    const bool oneRow = bound.arms.size() == 1 && (first.limit == " LIMIT 1" || first.from.empty() ||
                                                   (first.grouped && first.groupBy.empty()));
    std::string sql;
    if (oneRow) {
        sql = write(bound, false, false);
    } else if (bound.isPlain() && !first.grouped && first.limit.empty()) {
        first.items.front().value.sql = "ts_single(" + inner.sql + ")";
        bound.orderBy.clear();
        sql = write(bound, false, false);
    } else {
        first.items.front().name = "v";
        sql = "SELECT ts_single(\"v\") FROM (" + write(bound, true, true) + ")";
    }
    Fragment result;
    result.sql = "(" + sql + ")";
    result.type = inner.type;
    result.range = inner.range;
    if (result.type.isExact() && !result.range) {
        result.range = inner.bounds();
    }
    result.minimumLength = inner.minimumLength;
    return result;
}

Fragment Translator::caseValue(const tsql::Case& node) {
    std::optional<Fragment> operand;
    if (node.operand) {
        operand = expression(**node.operand);
    }
    std::vector<Branch> branches;
    Fragment otherwise = makeNull();
    bool decided = false; // a branch that is always taken hides the ones behind it
    bool simpleForm = operand.has_value();
    SqlType type;
    for (const tsql::CaseBranch& branch : node.branches) {
        Condition condition;
        std::string when;
        if (operand) {
            const Fragment wanted = expression(*branch.when);
            condition = compare(tsql::ComparisonOperator::Equal, *operand, wanted);
            const auto [left, right] = comparable(*operand, wanted);
            simpleForm = simpleForm && (condition.known || left.sql == operand->sql);
            when = right.sql;
        } else {
            condition = truth(*branch.when);
        }
        Fragment value = expression(*branch.then);
        type = commonType(type, value.type);
        if (decided || (condition.known && !condition.isTrue())) {
            continue;
        }
        if (condition.isTrue()) {
            decided = true;
            otherwise = std::move(value);
        } else {
            branches.push_back({std::move(condition), std::move(when), std::move(value)});
        }
    }
    if (node.otherwise) {
        Fragment value = expression(**node.otherwise);
        type = commonType(type, value.type);
        if (!decided) {
            otherwise = std::move(value);
        }
    }
    otherwise = convert(otherwise, type, ConversionMode::Cast);
    otherwise.table = nullptr;
    otherwise.column = nullptr;
    if (branches.empty()) {
        return otherwise;
    }
    Fragment result;
    result.type = type;
    result.nullable = otherwise.nullable;
    result.minimumLength = otherwise.isNullConstant() ? type.length : otherwise.minimumLength;
    std::optional<Range> range;
    const auto widen = [&](const Fragment& value) {
        if (!type.isExact() || value.isNullConstant()) {
            return;
        }
        const Range bounds = value.bounds();
        range = range ? Range{std::min(range->low, bounds.low), std::max(range->high, bounds.high)} : bounds;
    };
    widen(otherwise);
    std::vector<WrittenBranch> written;
    for (const Branch& branch : branches) {
        const Fragment value = convert(branch.value, type, ConversionMode::Cast);
        const Condition& condition = branch.condition;
        written.push_back({simpleForm                ? std::vector{branch.when}
                           : condition.parts.empty() ? std::vector{condition.sql}
                                                     : condition.parts,
                           value.sql});
        result.nullable = result.nullable || value.nullable;
        if (!value.isNullConstant()) {
            result.minimumLength = std::min(result.minimumLength, value.minimumLength);
        }
        widen(value);
    }
    const std::string last = otherwise.isNullConstant() ? std::string() : otherwise.sql;
    if (simpleForm) {
        result.sql = "CASE " + (operand->type.isText() ? collatedText(*operand) : *operand).operand();
        for (const WrittenBranch& branch : written) {
            result.sql += " WHEN " + branch.parts.front() + " THEN " + branch.value;
        }
        result.sql += (last.empty() ? "" : " ELSE " + last) + " END";
    } else {
        result.sql = searchedCase(written, last);
    }
    result.range = range;
    return result;
}

Fragment Translator::castValue(const tsql::Cast& node, const tsql::NodeSpan& span) {
    if (node.style) {
        refuse(span, "CONVERT con uno stile non è disponibile");
    }
    SqlType type = resolveType(node.type);
    if (type.isText() && node.type.arguments.empty() && !node.type.max) {
        type.length = 30; // what CAST takes for an unsized text type
    }
    Fragment result = convert(expression(*node.operand), type, ConversionMode::Cast);
    result.table = nullptr;
    result.column = nullptr;
    return result;
}

} // namespace veldran::embedded
