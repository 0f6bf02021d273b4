#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/operators.h"

#include <algorithm>
#include <array>

namespace veldran::embedded {

namespace {

using tsql::ArithmeticOperator;

// A function of SQLite's has a hundred arguments at most.
constexpr std::size_t mostParts = 40;

const char* symbolOf(ArithmeticOperator op) {
    constexpr std::array symbols{"+", "-", "*", "/", "%", "&", "|", "^"};
    return symbols[static_cast<std::size_t>(op)];
}

[[noreturn]] void refuseTypes(ArithmeticOperator op, const SqlType& a, const SqlType& b) {
    fail(402, "42000",
         "I tipi di dati " + typeName(a) + " e " + typeName(b) + " non sono compatibili nell'operatore '" +
             symbolOf(op) + "'.");
}

Fragment infix(ArithmeticOperator op, const Fragment& a, const Fragment& b, const SqlType& type) {
    Fragment result;
    result.sql = a.operand() + " " + symbolOf(op) + " " + b.operand();
    result.type = type;
    result.simple = false;
    result.nullable = a.nullable || b.nullable;
    return result;
}

// SQLite makes a text of its own of each part and each "||". \return null unless both are parts of one text
// or constants
std::shared_ptr<const Composition> composed(const Fragment& a, const Fragment& b) {
    Composition result;
    for (const Fragment* side : {&a, &b}) {
        const Composition* known = side->composition.get();
        if (side->textConstant() != nullptr) {
            result.parts.push_back(side->sql);
        } else if (known != nullptr && known->sql == side->sql &&
                   (result.base.empty() || result.base == known->base)) {
            result.base = known->base;
            result.parts.insert(result.parts.end(), known->parts.begin(), known->parts.end());
        } else {
            return nullptr;
        }
    }
    if (result.parts.size() > mostParts) {
        return nullptr;
    }
    result.sql = "ts_compose(" + result.base;
    for (const std::string& part : result.parts) {
        result.sql.append(", ").append(part);
    }
    result.sql += ")";
    return std::make_shared<const Composition>(std::move(result));
}

Fragment concatenated(const Fragment& a, const Fragment& b) {
    const bool wide = std::max(a.type.kind, b.type.kind) >= TypeKind::NChar;
    const bool fixed = a.type.isFixedText() && b.type.isFixedText();
    const TypeKind kind =
        wide ? (fixed ? TypeKind::NChar : TypeKind::NVarChar) : (fixed ? TypeKind::Char : TypeKind::VarChar);
    const int length = std::min(a.type.length + b.type.length, unlimitedLength);
    const SqlType type = textType(kind, std::max(length, 1));
    if (a.textConstant() != nullptr && b.textConstant() != nullptr) {
        return makeConstant(*a.textConstant() + *b.textConstant(), type);
    }
    Fragment result;
    result.composition = composed(a, b);
    result.sql = result.composition ? result.composition->sql : a.operand() + " || " + b.operand();
    result.type = type;
    result.simple = result.composition != nullptr;
    result.nullable = a.nullable || b.nullable;
    result.minimumLength = a.minimumLength + b.minimumLength;
    return result;
}

Range hull(std::initializer_list<Int128> values) {
    return {std::min(values), std::max(values)};
}

// The bounds of + - * on two bounded numbers. Bounds stay below 2^126: both come from 64-bit numbers.
Range combined(ArithmeticOperator op, const Range& a, const Range& b) {
    switch (op) {
    case ArithmeticOperator::Add:
        return {a.low + b.low, a.high + b.high};
    case ArithmeticOperator::Subtract:
        return {a.low - b.high, a.high - b.low};
    default:
        return hull({a.low * b.low, a.low * b.high, a.high * b.low, a.high * b.high});
    }
}

const char* checkedFunction(ArithmeticOperator op) {
    return op == ArithmeticOperator::Add        ? "ts_add"
           : op == ArithmeticOperator::Subtract ? "ts_subtract"
                                                : "ts_multiply";
}

// + - * on integers that stand for exact numbers of one scale. What the bounds prove safe is plain SQL.
Fragment exactCombination(ArithmeticOperator op, const Fragment& a, const Fragment& b, const SqlType& type) {
    const Range bounds = combined(op, a.bounds(), b.bounds());
    Fragment result;
    if (int64Range.contains(bounds)) {
        result = infix(op, a, b, type);
        result.range = bounds;
        if (a.constant && b.constant && bounds.low == bounds.high) {
            result = makeConstant(static_cast<std::int64_t>(bounds.low), type);
        }
    } else {
        result = makeCall(checkedFunction(op), {a.sql, b.sql}, type, a.nullable || b.nullable);
    }
    if (rangeOf(type).contains(bounds)) {
        return result;
    }
    if (type.kind == TypeKind::Decimal) {
        return type.precision > 18 ? result
                                   : makeCall("ts_decimal",
                                              {result.sql, std::to_string(type.scale),
                                               std::to_string(type.scale), std::to_string(type.precision)},
                                              type, result.nullable);
    }
    return makeCall("ts_range", {result.sql, std::to_string(static_cast<int>(type.kind))}, type,
                    result.nullable);
}

bool neverZero(const Fragment& value) {
    const Range bounds = value.bounds();
    return bounds.low > 0 || bounds.high < 0;
}

Fragment exactDivision(ArithmeticOperator op, const Fragment& a, const Fragment& b, const SqlType& type) {
    const bool divides = op == ArithmeticOperator::Divide;
    // INT64_MIN / -1 is the one quotient that does not fit.
    if (neverZero(b) && (b.bounds().low > 0 || a.bounds().low > INT64_MIN)) {
        Fragment result = infix(op, a, b, type);
        const Range bounds = a.bounds();
        const Int128 limit = std::max(bounds.high, -bounds.low);
        result.range = Range{bounds.low >= 0 && b.bounds().low > 0 ? 0 : -limit, limit};
        return rangeOf(type).contains(*result.range)
                   ? result
                   : makeCall("ts_range", {result.sql, std::to_string(static_cast<int>(type.kind))}, type,
                              result.nullable);
    }
    Fragment result =
        makeCall(divides ? "ts_divide" : "ts_modulo", {a.sql, b.sql}, type, a.nullable || b.nullable);
    return type.kind == TypeKind::BigInt || type.kind == TypeKind::Decimal
               ? result
               : makeCall("ts_range", {result.sql, std::to_string(static_cast<int>(type.kind))}, type,
                          result.nullable);
}

// A whole-number constant counts with the digits it has, not with the ten of its type.
SqlType decimalOperand(const Fragment& value) {
    if (const auto* constant = value.integerConstant(); constant != nullptr && value.type.isInteger()) {
        return decimalType(static_cast<int>(std::to_string(*constant).size()) - (*constant < 0 ? 1 : 0), 0);
    }
    return asDecimal(value.type);
}

Fragment decimalArithmetic(ArithmeticOperator op, const Fragment& a, const Fragment& b) {
    const SqlType x = decimalOperand(a);
    const SqlType y = decimalOperand(b);
    const SqlType type = arithmeticType(op, x, y);
    Fragment left = a;
    Fragment right = b;
    left.type = x;
    right.type = y;
    if (op == ArithmeticOperator::Divide) {
        if (type.scale > 18) {
            fail(errorNotSupported, "42000", "Una divisione con più di 18 decimali non è disponibile.");
        }
        const int shift = type.scale - x.scale + y.scale;
        return makeCall("ts_decimal_divide", {left.sql, right.sql, std::to_string(shift)}, type,
                        a.nullable || b.nullable);
    }
    if (op == ArithmeticOperator::Multiply) {
        const int scale = x.scale + y.scale;
        if (scale > 18) {
            fail(errorNotSupported, "42000", "Un prodotto con più di 18 decimali non è disponibile.");
        }
        Fragment product = exactCombination(op, left, right, decimalType(38, scale));
        if (scale == type.scale) {
            product.type = type;
            return product;
        }
        return convert(product, type, ConversionMode::Cast);
    }
    const SqlType common = decimalType(38, std::max(x.scale, y.scale));
    left = convert(left, common, ConversionMode::Cast);
    right = convert(right, common, ConversionMode::Cast);
    Fragment result = op == ArithmeticOperator::Modulo ? exactDivision(op, left, right, common)
                                                       : exactCombination(op, left, right, common);
    if (type.scale != common.scale) {
        return convert(result, type, ConversionMode::Cast);
    }
    result.type = type;
    return result;
}

Fragment realArithmetic(ArithmeticOperator op, const Fragment& a, const Fragment& b) {
    const SqlType real = integerType(TypeKind::Float);
    const Fragment left = convert(a, real, ConversionMode::Cast);
    const Fragment right = convert(b, real, ConversionMode::Cast);
    if (op == ArithmeticOperator::Modulo) {
        refuseTypes(op, a.type, b.type);
    }
    if (op == ArithmeticOperator::Divide) {
        return makeCall("ts_real_divide", {left.sql, right.sql}, real, a.nullable || b.nullable);
    }
    return infix(op, left, right, real);
}

Fragment bitwise(ArithmeticOperator op, const Fragment& a, const Fragment& b) {
    if (!a.type.isInteger() || !b.type.isInteger()) {
        refuseTypes(op, a.type, b.type);
    }
    const SqlType type = commonType(a.type, b.type);
    if (op != ArithmeticOperator::BitXor) {
        return infix(op, a, b, type);
    }
    // SQLite has no exclusive or.
    Fragment result;
    result.sql = "(" + a.operand() + " | " + b.operand() + ") - (" + a.operand() + " & " + b.operand() + ")";
    result.type = type;
    result.simple = false;
    result.nullable = a.nullable || b.nullable;
    return result;
}

} // namespace

Fragment applyArithmetic(ArithmeticOperator op, const Fragment& a, const Fragment& b) {
    if (a.isNullConstant() || b.isNullConstant()) {
        const SqlType type = commonType(a.type, b.type);
        return makeConstant(std::monostate{}, type);
    }
    if (a.type.isText() && b.type.isText()) {
        if (op != ArithmeticOperator::Add) {
            refuseTypes(op, a.type, b.type);
        }
        return concatenated(a, b);
    }
    // A text beside a number becomes a number of that number's type.
    const Fragment left = a.type.isText() ? convert(a, b.type, ConversionMode::Cast) : a;
    const Fragment right = b.type.isText() ? convert(b, a.type, ConversionMode::Cast) : b;
    if (op == ArithmeticOperator::BitAnd || op == ArithmeticOperator::BitOr ||
        op == ArithmeticOperator::BitXor) {
        return bitwise(op, left, right);
    }
    if (left.type.kind == TypeKind::Bit && right.type.kind == TypeKind::Bit) {
        refuseTypes(op, left.type, right.type);
    }
    const SqlType type = arithmeticType(op, left.type, right.type);
    if (type.kind == TypeKind::Float) {
        return realArithmetic(op, left, right);
    }
    if (type.kind == TypeKind::Decimal) {
        return decimalArithmetic(op, left, right);
    }
    if (op == ArithmeticOperator::Divide || op == ArithmeticOperator::Modulo) {
        return exactDivision(op, left, right, type);
    }
    return exactCombination(op, left, right, type);
}

Fragment negated(const Fragment& value) {
    if (value.type.isText()) {
        fail(8117, "42000",
             "Il tipo di dati " + typeName(value.type) + " non è valido per l'operatore meno.");
    }
    if (const auto* constant = value.integerConstant(); constant != nullptr && *constant != INT64_MIN) {
        Fragment result = makeConstant(-*constant, value.type);
        return result;
    }
    Fragment zero = makeConstant(std::int64_t{0}, integerType(TypeKind::TinyInt));
    Fragment result = applyArithmetic(ArithmeticOperator::Subtract, zero, value);
    return result.type.kind == TypeKind::Decimal ? convert(result, value.type, ConversionMode::Cast) : result;
}

} // namespace veldran::embedded
