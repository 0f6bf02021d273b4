#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/operators.h"
#include "adapters/embedded/sqlite.h"
#include "adapters/embedded/translator.h"
#include "adapters/tsql/token.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldran::embedded {

namespace {

constexpr std::array<std::string_view, 6> aggregateNames{"COUNT", "COUNT_BIG", "SUM", "AVG", "MIN", "MAX"};

std::string number(int value) {
    return std::to_string(value);
}

Fragment asText(const Fragment& value) {
    return value.type.isText() || value.type.isNull()
               ? value
               : convert(value, textType(TypeKind::NVarChar, 30), ConversionMode::Cast);
}

TypeKind variableKind(const SqlType& type) {
    return type.kind == TypeKind::Char || type.kind == TypeKind::VarChar ? TypeKind::VarChar
                                                                         : TypeKind::NVarChar;
}

bool anyNullable(const std::vector<Fragment>& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const Fragment& f) { return f.nullable; });
}

Fragment substring(const Fragment& text, const Fragment& start, const Fragment& length) {
    const auto* from = start.integerConstant();
    const auto* count = length.integerConstant();
    const bool fixed = from != nullptr && count != nullptr && *from >= 1 && *count >= 0;
    const int most = count == nullptr || *count < 0
                         ? text.type.length
                         : static_cast<int>(std::min<std::int64_t>(*count, text.type.length));
    const SqlType type = textType(variableKind(text.type), std::max(most, 1));
    Fragment result = makeCall(fixed ? "substr" : "ts_substring", {text.sql, start.sql, length.sql}, type,
                               text.nullable || start.nullable || length.nullable);
    if (fixed) {
        const std::int64_t sure = text.minimumLength - (*from - 1);
        result.minimumLength = static_cast<int>(std::clamp<std::int64_t>(sure, 0, *count));
        if (text.column != nullptr) {
            result.composition = std::make_shared<const Composition>(
                Composition{result.sql, text.sql, {start.sql + ", " + length.sql}});
        }
    }
    return result;
}

Fragment leftPart(const Fragment& text, const Fragment& count) {
    const auto* constant = count.integerConstant();
    if (constant != nullptr && *constant >= 0) {
        return substring(text, makeConstant(std::int64_t{1}, integerType(TypeKind::Int)), count);
    }
    return makeCall("ts_left", {text.sql, count.sql}, textType(variableKind(text.type), text.type.length),
                    text.nullable || count.nullable);
}

Fragment isNullFunction(const Fragment& value, const Fragment& fallback) {
    if (!value.nullable) {
        return value;
    }
    const SqlType type = value.type.isNull() ? fallback.type : value.type;
    const Fragment other = convert(fallback, type, ConversionMode::Cast);
    if (value.isNullConstant()) {
        return other;
    }
    Fragment result = makeCall("ifnull", {value.sql, other.sql}, type, other.nullable);
    result.minimumLength = std::min(value.minimumLength, other.minimumLength);
    if (type.isExact() && !other.isNullConstant()) {
        const Range a = value.bounds();
        const Range b = other.bounds();
        result.range = Range{std::min(a.low, b.low), std::max(a.high, b.high)};
    }
    return result;
}

Fragment coalesce(const std::vector<Fragment>& arguments) {
    SqlType type;
    for (const Fragment& argument : arguments) {
        type = commonType(type, argument.type);
    }
    std::vector<std::string> parts;
    bool nullable = true;
    for (const Fragment& argument : arguments) {
        parts.push_back(convert(argument, type, ConversionMode::Cast).sql);
        nullable = nullable && argument.nullable;
    }
    return makeCall("coalesce", parts, type, nullable);
}

Fragment nullIf(const Fragment& a, const Fragment& b) {
    const Condition equal = compare(tsql::ComparisonOperator::Equal, a, b);
    Fragment result = a;
    result.sql = "CASE WHEN " + equal.sql + " THEN NULL ELSE " + a.sql + " END";
    result.nullable = true;
    result.collated = false;
    result.constant.reset();
    result.table = nullptr;
    result.column = nullptr;
    return result;
}

// The result has the type of the base, as on the server.
std::optional<Fragment> power(const Fragment& base, const Fragment& exponent) {
    const SqlType type =
        base.type.isInteger() ? commonType(base.type, integerType(TypeKind::Int)) : base.type;
    if (base.integerConstant() != nullptr && exponent.integerConstant() != nullptr &&
        type.kind == TypeKind::Int && base.type.isInteger() && exponent.type.isInteger()) {
        const double result = std::pow(static_cast<double>(*base.integerConstant()),
                                       static_cast<double>(*exponent.integerConstant()));
        if (std::abs(result) <= INT32_MAX) {
            return makeConstant(static_cast<std::int64_t>(result), type);
        }
    }
    const SqlType real = integerType(TypeKind::Float);
    const std::string to = convert(exponent, real, ConversionMode::Cast).sql;
    const bool nullable = base.nullable || exponent.nullable;
    if (type.isInteger()) {
        return makeCall("ts_power_int", {base.sql, to, number(static_cast<int>(type.kind))}, type, nullable);
    }
    if (type.kind == TypeKind::Float) {
        return makeCall("ts_power_real", {base.sql, to}, type, nullable);
    }
    return std::nullopt;
}

std::optional<Fragment> rounded(const Fragment& value, const Fragment& places) {
    const auto* constant = places.integerConstant();
    if (constant == nullptr || std::abs(*constant) > 18) {
        return std::nullopt;
    }
    if (value.type.isExact()) {
        return makeCall("ts_round", {value.sql, number(value.type.scale), places.sql}, value.type,
                        value.nullable);
    }
    if (value.type.kind == TypeKind::Float && *constant >= 0) {
        return makeCall("round", {value.sql, places.sql}, value.type, value.nullable);
    }
    return std::nullopt;
}

} // namespace

Fragment Translator::call(const tsql::FunctionCall& node, const tsql::NodeSpan& span) {
    if (node.name.parts.size() > 1) {
        return userFunction(node, span);
    }
    const std::string name = tsql::toUpper(node.name.last());
    if (std::find(aggregateNames.begin(), aggregateNames.end(), name) != aggregateNames.end()) {
        return aggregate(name, node, span);
    }
    if (name == "ROW_NUMBER") {
        return rowNumber(node, span);
    }
    if (node.distinct || node.star || node.over) {
        refuse(span, "La funzione " + name + " non ammette DISTINCT, * o OVER");
    }
    const std::vector<Fragment> arguments = expressions(node.arguments);
    if (auto result = textFunction(name, arguments, span)) {
        return *result;
    }
    if (auto result = otherFunction(name, arguments, span)) {
        return *result;
    }
    fail(195, "42000", "'" + node.name.last() + "' non è un nome di funzione predefinita riconosciuto.");
}

std::optional<Fragment> Translator::textFunction(const std::string& name,
                                                 const std::vector<Fragment>& arguments,
                                                 const tsql::NodeSpan& span) {
    struct Arity {
        std::string_view name;
        std::size_t least;
        std::size_t most;
    };
    constexpr std::array<Arity, 12> arities{{{"SUBSTRING", 3, 3},
                                             {"LEFT", 2, 2},
                                             {"RIGHT", 2, 2},
                                             {"LEN", 1, 1},
                                             {"RTRIM", 1, 1},
                                             {"LTRIM", 1, 1},
                                             {"UPPER", 1, 1},
                                             {"LOWER", 1, 1},
                                             {"REPLACE", 3, 3},
                                             {"CHARINDEX", 2, 3},
                                             {"REPLICATE", 2, 2},
                                             {"SPACE", 1, 1}}};
    const auto arity =
        std::find_if(arities.begin(), arities.end(), [&](const Arity& a) { return a.name == name; });
    if (arity == arities.end()) {
        return std::nullopt;
    }
    if (arguments.size() < arity->least || arguments.size() > arity->most) {
        fail(174, "42000",
             "La funzione " + name + " richiede " + std::to_string(arity->least) + " argomenti (riga " +
                 std::to_string(span.begin.line) + ").");
    }
    for (const Fragment& argument : arguments) {
        if (argument.isNullConstant()) {
            return makeConstant(std::monostate{}, textType(TypeKind::NVarChar, 1));
        }
    }
    const bool nullable = anyNullable(arguments);
    if (name == "SPACE") {
        return makeCall("ts_replicate", {"' '", arguments[0].sql}, textType(TypeKind::VarChar, 8000),
                        nullable);
    }
    const Fragment text = asText(name == "CHARINDEX" ? arguments[1] : arguments[0]);
    const SqlType open = textType(variableKind(text.type), text.type.length);
    const auto whole = [&](std::size_t argument) {
        return convert(arguments[argument], integerType(TypeKind::BigInt), ConversionMode::Cast);
    };
    if (name == "SUBSTRING") {
        return substring(text, whole(1), whole(2));
    }
    if (name == "LEFT") {
        return leftPart(text, whole(1));
    }
    if (name == "RIGHT") {
        return makeCall("ts_right", {text.sql, whole(1).sql}, open, nullable);
    }
    if (name == "LEN") {
        Fragment result =
            makeCall("length", {"rtrim(" + text.sql + ")"}, integerType(TypeKind::Int), nullable);
        result.range = Range{0, text.type.length};
        return result;
    }
    if (name == "RTRIM" || name == "LTRIM") {
        return makeCall(name == "RTRIM" ? "rtrim" : "ltrim", {text.sql}, open, nullable);
    }
    if (name == "UPPER" || name == "LOWER") {
        Fragment result =
            makeCall(name == "UPPER" ? "ts_upper" : "ts_lower", {text.sql}, text.type, nullable);
        result.minimumLength = text.minimumLength;
        return result;
    }
    if (name == "REPLACE") {
        const SqlType widest =
            textType(variableKind(text.type), variableKind(text.type) == TypeKind::VarChar ? 8000 : 4000);
        return makeCall("ts_replace", {text.sql, asText(arguments[1]).sql, asText(arguments[2]).sql}, widest,
                        nullable);
    }
    if (name == "CHARINDEX") {
        const std::string start = arguments.size() > 2 ? arguments[2].sql : "1";
        Fragment result = makeCall("ts_charindex", {asText(arguments[0]).sql, text.sql, start},
                                   integerType(TypeKind::Int), nullable);
        result.range = Range{0, text.type.length};
        return result;
    }
    return makeCall(
        "ts_replicate", {text.sql, arguments[1].sql},
        textType(variableKind(text.type), variableKind(text.type) == TypeKind::VarChar ? 8000 : 4000), true);
}

std::optional<Fragment> Translator::otherFunction(const std::string& name,
                                                  const std::vector<Fragment>& arguments,
                                                  const tsql::NodeSpan& span) {
    const auto wants = [&](std::size_t count) {
        if (arguments.size() != count) {
            fail(174, "42000",
                 "La funzione " + name + " richiede " + std::to_string(count) + " argomenti (riga " +
                     std::to_string(span.begin.line) + ").");
        }
    };
    if (name == "ISNULL") {
        wants(2);
        return isNullFunction(arguments[0], arguments[1]);
    }
    if (name == "COALESCE" && arguments.size() >= 2) {
        return coalesce(arguments);
    }
    if (name == "NULLIF") {
        wants(2);
        return nullIf(arguments[0], arguments[1]);
    }
    if (name == "POWER") {
        wants(2);
        if (auto result = power(arguments[0], arguments[1])) {
            return result;
        }
        refuse(span, "POWER su un valore DECIMAL non è disponibile");
    }
    if (name == "ROUND") {
        wants(2);
        if (auto result = rounded(arguments[0], arguments[1])) {
            return result;
        }
        refuse(span, "ROUND è disponibile solo con un numero costante di decimali");
    }
    if (name == "ABS") {
        wants(1);
        Fragment value = arguments[0].type.isText()
                             ? convert(arguments[0], integerType(TypeKind::Float), ConversionMode::Cast)
                             : arguments[0];
        return makeCall("abs", {value.sql}, value.type, value.nullable);
    }
    if (name == "OBJECT_ID" && (arguments.size() == 1 || arguments.size() == 2)) {
        std::vector<std::string> texts;
        for (const Fragment& argument : arguments) {
            texts.push_back(asText(argument).sql);
        }
        return makeCall("ts_object_id", texts, integerType(TypeKind::Int), true);
    }
    if (name == "SCOPE_IDENTITY") {
        wants(0);
        return slot({Slot::Kind::Variable, 0, "@@IDENTITY", decimalType(18, 0)});
    }
    return std::nullopt;
}

Fragment Translator::aggregate(const std::string& name, const tsql::FunctionCall& node,
                               const tsql::NodeSpan& span) {
    if (node.over) {
        refuse(span, "Le funzioni di aggregazione con OVER non sono disponibili");
    }
    const SqlType countType = integerType(name == "COUNT_BIG" ? TypeKind::BigInt : TypeKind::Int);
    if (node.star) {
        aggregates_ = true;
        Fragment result = makeCall("count", {"*"}, countType, false);
        result.range = Range{0, rangeOf(countType).high};
        return result;
    }
    if (node.arguments.size() != 1) {
        fail(174, "42000", "La funzione " + name + " richiede 1 argomento.");
    }
    const Fragment value = expression(node.arguments.front());
    aggregates_ = true;
    const std::string distinct = node.distinct ? "DISTINCT " : "";
    const std::string argument = distinct + collatedText(value).sql;
    if (name == "COUNT" || name == "COUNT_BIG") {
        Fragment result = makeCall("count", {argument}, countType, false);
        result.range = Range{0, rangeOf(countType).high};
        return result;
    }
    if (value.type.kind == TypeKind::Bit || (value.type.isText() && (name == "SUM" || name == "AVG"))) {
        fail(8117, "42000",
             "Il tipo di dati dell'operando " + typeName(value.type) + " non è valido per l'operatore " +
                 name + ".");
    }
    if (name == "MIN" || name == "MAX") {
        Fragment result =
            makeCall(name == "MIN" ? "min" : "max", {collatedText(value).sql}, value.type, true);
        result.range = value.range;
        result.minimumLength = value.minimumLength;
        return result;
    }
    if (value.type.kind == TypeKind::Float) {
        return makeCall(name == "SUM" ? "sum" : "avg", {argument}, value.type, true);
    }
    if (value.type.kind == TypeKind::Decimal) {
        const int scale = name == "SUM" ? value.type.scale : std::max<int>(value.type.scale, 6);
        const SqlType type = decimalType(38, scale);
        if (name == "SUM") {
            return makeCall("sum", {argument}, type, true);
        }
        return makeCall(
            "ts_decimal_divide",
            {"sum(" + argument + ")", "nullif(count(" + argument + "), 0)", number(scale - value.type.scale)},
            type, true);
    }
    const SqlType type = commonType(value.type, integerType(TypeKind::Int));
    Fragment sum = makeCall("sum", {argument}, integerType(TypeKind::BigInt), true);
    if (name == "AVG") {
        sum.sql += " / count(" + argument + ")";
        sum.simple = false;
        sum.type = type;
        return sum;
    }
    return convert(sum, type, ConversionMode::Assign);
}

Fragment Translator::rowNumber(const tsql::FunctionCall& node, const tsql::NodeSpan& span) {
    if (!node.over || node.over->orderBy.empty() || !node.arguments.empty()) {
        refuse(span, "ROW_NUMBER richiede OVER con ORDER BY");
    }
    std::string over;
    for (const tsql::Expression& item : node.over->partitionBy) {
        over += (over.empty() ? "PARTITION BY " : ", ") + collatedText(expression(item)).sql;
    }
    bool first = true;
    for (const tsql::OrderItem& item : node.over->orderBy) {
        over += first ? (over.empty() ? "ORDER BY " : " ORDER BY ") : ", ";
        over += collatedText(expression(*item.expression)).sql + (item.descending ? " DESC" : "");
        first = false;
    }
    Fragment result;
    result.sql = "row_number() OVER (" + over + ")";
    result.type = integerType(TypeKind::BigInt);
    result.nullable = false;
    return result;
}

} // namespace veldran::embedded
