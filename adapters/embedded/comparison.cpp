#include "adapters/embedded/collation.h"
#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/like.h"
#include "adapters/embedded/numeric.h"
#include "adapters/embedded/operators.h"
#include "adapters/embedded/sqlite.h"

#include <algorithm>
#include <array>

namespace veldran::embedded {

namespace {

using tsql::ComparisonOperator;

const char* symbolOf(ComparisonOperator op) {
    constexpr std::array symbols{"=", "<>", "<", "<=", ">", ">="};
    return symbols[static_cast<std::size_t>(op)];
}

Truth truthOf(ComparisonOperator op, int order) {
    const auto truth = [](bool value) { return value ? Truth::True : Truth::False; };
    switch (op) {
    case ComparisonOperator::Equal:
        return truth(order == 0);
    case ComparisonOperator::NotEqual:
        return truth(order != 0);
    case ComparisonOperator::Less:
        return truth(order < 0);
    case ComparisonOperator::LessOrEqual:
        return truth(order <= 0);
    case ComparisonOperator::Greater:
        return truth(order > 0);
    default:
        return truth(order >= 0);
    }
}

bool isPlainAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}
bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// No case, no marks, no blank at the end: only the very same bytes equal such a text of the same length.
bool comparesByBytes(std::string_view text) {
    return !text.empty() && text.back() != ' ' &&
           std::all_of(text.begin(), text.end(), [](char c) { return isPlainAscii(c) && !isAsciiLetter(c); });
}

// Whether "value = constant" holds by bytes exactly when it holds by the collation.
bool bytesDecide(const Fragment& value, const Fragment& constant) {
    const std::string* text = constant.textConstant();
    return text != nullptr && comparesByBytes(*text) && value.minimumLength == value.type.length &&
           value.type.length == characterCount(*text);
}

Condition infix(ComparisonOperator op, const Fragment& a, const Fragment& b) {
    const std::string symbol = std::string(" ") + symbolOf(op) + " ";
    Condition result{a.operand() + symbol + b.operand(), Condition::Form::Predicate, std::nullopt};
    // What the condition says of a column is noted where an index can order the column.
    const auto isOrdered = [](const Fragment& side) {
        return side.column != nullptr && (side.collated || !side.type.isText());
    };
    const bool equality = op == ComparisonOperator::Equal;
    if (op != ComparisonOperator::NotEqual && isOrdered(a)) {
        result.tests.push_back({a.column, a.occurrence, equality, "", symbol + b.operand(), b.operand()});
    }
    if (op != ComparisonOperator::NotEqual && isOrdered(b)) {
        result.tests.push_back({b.column, b.occurrence, equality, a.operand() + symbol, "", a.operand()});
    }
    return result;
}

Condition compareTexts(ComparisonOperator op, const Fragment& a, const Fragment& b) {
    if (a.textConstant() != nullptr && b.textConstant() != nullptr) {
        return makeKnown(truthOf(op, compareText(*a.textConstant(), *b.textConstant())));
    }
    const bool equality = op == ComparisonOperator::Equal || op == ComparisonOperator::NotEqual;
    if (a.collated || b.collated || (equality && (bytesDecide(a, b) || bytesDecide(b, a)))) {
        return infix(op, a, b);
    }
    return infix(op, collatedText(a), b);
}

// A constant at the other side's scale, where that loses nothing.
std::optional<Fragment> constantAtScale(const Fragment& value, int scale) {
    const auto* constant = value.integerConstant();
    if (constant == nullptr) {
        return std::nullopt;
    }
    const auto rescaled = rescale(*constant, value.type.scale, scale);
    if (!rescaled ||
        !(Decimal{*rescaled, static_cast<std::uint8_t>(scale)} == Decimal{*constant, value.type.scale})) {
        return std::nullopt;
    }
    return makeConstant(*rescaled, decimalType(38, scale));
}

} // namespace

std::pair<Fragment, Fragment> comparable(const Fragment& a, const Fragment& b) {
    if (a.type.isNull() || b.type.isNull() || (a.type.isText() && b.type.isText())) {
        return {a, b};
    }
    if (a.type.isText() || b.type.isText()) {
        const SqlType& wanted = a.type.isText() ? b.type : a.type;
        return {convert(a, wanted, ConversionMode::Cast), convert(b, wanted, ConversionMode::Cast)};
    }
    if (a.type.kind == TypeKind::Float || b.type.kind == TypeKind::Float) {
        const SqlType real = integerType(TypeKind::Float);
        return {convert(a, real, ConversionMode::Cast), convert(b, real, ConversionMode::Cast)};
    }
    if (a.type.scale == b.type.scale) {
        return {a, b};
    }
    // The constant moves, so that the column stays bare and its index serves.
    if (const auto moved = constantAtScale(a, b.type.scale)) {
        return {*moved, b};
    }
    if (const auto moved = constantAtScale(b, a.type.scale)) {
        return {a, *moved};
    }
    const SqlType common = decimalType(38, std::max(a.type.scale, b.type.scale));
    return {convert(a, common, ConversionMode::Cast), convert(b, common, ConversionMode::Cast)};
}

Condition compare(ComparisonOperator op, const Fragment& a, const Fragment& b) {
    if (a.isNullConstant() || b.isNullConstant()) {
        return makeKnown(Truth::Unknown);
    }
    const auto [left, right] = comparable(a, b);
    if (left.type.isText()) {
        return compareTexts(op, left, right);
    }
    if (left.integerConstant() != nullptr && right.integerConstant() != nullptr) {
        const std::int64_t x = *left.integerConstant();
        const std::int64_t y = *right.integerConstant();
        return makeKnown(truthOf(op, x < y ? -1 : x > y ? 1 : 0));
    }
    return infix(op, left, right);
}

Condition isAmong(const Fragment& value, const std::vector<Fragment>& list, bool negate) {
    std::vector<Condition> equals;
    std::vector<std::string> members;
    for (const Fragment& member : list) {
        const Condition equal = compare(ComparisonOperator::Equal, value, member);
        equals.push_back(equal);
        const auto [left, right] = comparable(value, member);
        if (left.sql == value.sql && !member.isNullConstant() && !equal.known) {
            members.push_back(right.sql);
        }
    }
    if (members.size() < list.size() || list.size() == 1) {
        Condition any = anyOf(std::move(equals));
        return negate ? negationOf(std::move(any)) : any;
    }
    Condition result;
    result.sql = collatedText(value).operand() + (negate ? " NOT IN (" : " IN (");
    for (std::size_t i = 0; i < members.size(); ++i) {
        result.sql += (i == 0 ? "" : ", ") + members[i];
    }
    result.sql += ")";
    return result;
}

Condition isLike(const Fragment& value, const Fragment& pattern, const std::optional<Fragment>& escape,
                 bool negate) {
    if (value.isNullConstant() || pattern.isNullConstant() || (escape && escape->isNullConstant())) {
        return makeKnown(Truth::Unknown);
    }
    const SqlType open = textType(TypeKind::NVarChar, unlimitedLength);
    const Fragment text = value.type.isText() ? value : convert(value, open, ConversionMode::Cast);
    const Fragment wanted = pattern.type.isText() ? pattern : convert(pattern, open, ConversionMode::Cast);
    std::vector<Condition> conditions;
    bool decided = false;
    if (wanted.textConstant() != nullptr && !escape && text.column != nullptr && !negate) {
        const LikePattern::Prefix prefix = LikePattern::prefixOf(*wanted.textConstant());
        if (prefix.whole && text.minimumLength == text.type.length && comparesByBytes(prefix.text) &&
            characterCount(prefix.text) == text.type.length) {
            return compare(ComparisonOperator::Equal, text, wanted);
        }
        if (!prefix.whole && !prefix.text.empty()) {
            // What begins with the prefix lies between it and itself followed by the last character there is,
            // so that an index can serve. The lower end is below every continuation, blanks included.
            const auto end = [&](const char* character) {
                Fragment result = makeConstant(std::string(prefix.text), open);
                result.sql += std::string(" || ") + character;
                return result;
            };
            conditions.push_back(infix(ComparisonOperator::GreaterOrEqual, text, end("char(1)")));
            conditions.push_back(infix(ComparisonOperator::LessOrEqual, text, end("char(1114111)")));
            decided = prefix.open && comparesByBytes(prefix.text);
        }
    }
    if (!decided) {
        std::string call = "ts_like(" + wanted.sql + ", " + text.sql;
        if (escape) {
            call += ", " + escape->sql;
        }
        conditions.push_back({call + ")", Condition::Form::Predicate, std::nullopt});
    }
    Condition result = allOf(std::move(conditions));
    return negate ? negationOf(std::move(result)) : result;
}

} // namespace veldran::embedded
