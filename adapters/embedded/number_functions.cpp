#include "adapters/embedded/errors.h"
#include "adapters/embedded/function_call.h"
#include "adapters/embedded/numeric.h"

#include <array>
#include <cmath>

namespace veldran::embedded {

namespace {

const SqlType bigInt = integerType(TypeKind::BigInt);

void refuseDivision(FunctionCall& call) {
    call.refuse(8134, "22012", "Errore di divisione per zero.");
}

void refuseConversion(FunctionCall& call, const SqlType& type, int number) {
    call.refuse(number, "22018", conversionText(call.text(0), typeName(type)));
}

void range(FunctionCall& call) {
    call.setChecked(call.integer(0), integerType(call.kind(1)));
}

template<typename Operation>
void checked(FunctionCall& call, Operation operation) {
    std::int64_t result = 0;
    if (operation(call.integer(0), call.integer(1), &result)) {
        call.refuseOverflow(bigInt);
    } else {
        call.set(result);
    }
}

void add(FunctionCall& call) {
    checked(call,
            [](std::int64_t a, std::int64_t b, std::int64_t* r) { return __builtin_add_overflow(a, b, r); });
}

void subtract(FunctionCall& call) {
    checked(call,
            [](std::int64_t a, std::int64_t b, std::int64_t* r) { return __builtin_sub_overflow(a, b, r); });
}

void multiply(FunctionCall& call) {
    checked(call,
            [](std::int64_t a, std::int64_t b, std::int64_t* r) { return __builtin_mul_overflow(a, b, r); });
}

void divide(FunctionCall& call) {
    if (call.integer(1) == 0) {
        return refuseDivision(call);
    }
    call.setChecked(divideShifted(call.integer(0), call.integer(1), 0), bigInt);
}

void modulo(FunctionCall& call) {
    if (call.integer(1) == 0) {
        return refuseDivision(call);
    }
    call.set(call.integer(1) == -1 ? std::int64_t{0} : call.integer(0) % call.integer(1));
}

void realDivide(FunctionCall& call) {
    if (call.real(1) == 0) {
        return refuseDivision(call);
    }
    call.set(call.real(0) / call.real(1));
}

void decimalDivide(FunctionCall& call) {
    if (call.integer(1) == 0) {
        return refuseDivision(call);
    }
    call.setChecked(divideShifted(call.integer(0), call.integer(1), call.smallInteger(2)),
                    decimalType(38, 0));
}

// (number, its scale, wanted scale, wanted precision)
void decimal(FunctionCall& call) {
    call.setChecked(rescale(call.integer(0), call.smallInteger(1), call.smallInteger(2)),
                    decimalType(call.smallInteger(3), call.smallInteger(2)));
}

void decimalToInteger(FunctionCall& call) {
    call.setChecked(divideShifted(call.integer(0), 1, -call.smallInteger(1)), integerType(call.kind(2)));
}

void realToDecimal(FunctionCall& call) {
    const SqlType type = decimalType(call.smallInteger(1), call.smallInteger(2));
    call.setChecked(doubleToCoefficient(call.real(0), type.scale), type);
}

void realToInteger(FunctionCall& call) {
    const double whole = std::trunc(call.real(0));
    constexpr double limit = 9223372036854775808.0; // 2^63
    const bool fits = whole >= -limit && whole < limit;
    call.setChecked(fits ? std::optional(static_cast<std::int64_t>(whole)) : std::nullopt,
                    integerType(call.kind(1)));
}

void textToInteger(FunctionCall& call) {
    const SqlType type = integerType(call.kind(1));
    if (const auto parsed = parseInteger(call.text(0))) {
        call.setChecked(parsed, type);
    } else {
        refuseConversion(call, type, 245);
    }
}

void textToBit(FunctionCall& call) {
    const std::string_view text = withoutTrailingBlanks(call.text(0));
    const auto word = [&](const char* spelling) {
        return sqlite3_stricmp(std::string(text).c_str(), spelling) == 0;
    };
    if (word("true") || word("false")) {
        return call.set(std::int64_t{word("true") ? 1 : 0});
    }
    if (const auto parsed = parseInteger(text)) {
        call.set(std::int64_t{*parsed != 0 ? 1 : 0});
    } else {
        refuseConversion(call, integerType(TypeKind::Bit), 245);
    }
}

void textToDecimal(FunctionCall& call) {
    const SqlType type = decimalType(call.smallInteger(1), call.smallInteger(2));
    if (const auto parsed = parseDecimal(call.text(0))) {
        call.setChecked(rescale(parsed->coefficient, parsed->scale, type.scale), type);
    } else {
        refuseConversion(call, type, 8114);
    }
}

void textToReal(FunctionCall& call) {
    if (const auto parsed = parseDouble(call.text(0))) {
        call.set(*parsed);
    } else {
        refuseConversion(call, integerType(TypeKind::Float), 8114);
    }
}

void powerInteger(FunctionCall& call) {
    const double result = std::trunc(std::pow(call.real(0), call.real(1)));
    const SqlType type = integerType(call.kind(2));
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!std::isfinite(result) || result < -limit || result >= limit) {
        return call.refuseOverflow(type);
    }
    call.setChecked(static_cast<std::int64_t>(result), type);
}

void powerReal(FunctionCall& call) {
    const double result = std::pow(call.real(0), call.real(1));
    if (!std::isfinite(result)) {
        return call.refuse(3623, "42000", "Operazione in virgola mobile non valida.");
    }
    call.set(result);
}

// (number, its scale, places to keep): the number keeps its scale, the places behind become zeros.
void round(FunctionCall& call) {
    const int scale = call.smallInteger(1);
    const int places = call.smallInteger(2);
    if (places >= scale) {
        return call.pass(0);
    }
    const auto shortened = rescale(call.integer(0), scale, places);
    call.setChecked(shortened ? rescale(*shortened, places, scale) : std::nullopt, bigInt);
}

constexpr std::array<FunctionEntry, 19> entries{{
    {"ts_range", 2, &range},
    {"ts_add", 2, &add},
    {"ts_subtract", 2, &subtract},
    {"ts_multiply", 2, &multiply},
    {"ts_divide", 2, &divide},
    {"ts_modulo", 2, &modulo},
    {"ts_real_divide", 2, &realDivide},
    {"ts_decimal_divide", 3, &decimalDivide},
    {"ts_decimal", 4, &decimal},
    {"ts_decimal_to_int", 3, &decimalToInteger},
    {"ts_real_to_decimal", 3, &realToDecimal},
    {"ts_real_to_int", 2, &realToInteger},
    {"ts_text_to_int", 2, &textToInteger},
    {"ts_text_to_bit", 1, &textToBit},
    {"ts_text_to_decimal", 3, &textToDecimal},
    {"ts_text_to_real", 1, &textToReal},
    {"ts_power_int", 3, &powerInteger},
    {"ts_power_real", 2, &powerReal},
    {"ts_round", 3, &round},
}};

} // namespace

std::span<const FunctionEntry> numberFunctions() {
    return entries;
}

} // namespace veldran::embedded
