#include "adapters/embedded/fragment.h"

#include "adapters/embedded/collation.h"
#include "adapters/embedded/sqlite.h"

#include <charconv>

namespace veldran::embedded {

namespace {

std::string realText(double value) {
    char buffer[40];
    std::string text(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
    if (text.find_first_of(".en") == std::string::npos) {
        text += ".0";
    }
    return text;
}

std::string inParentheses(const std::string& text) {
    return "(" + text + ")";
}

// Joins the operands that binding does not decide. `absorbing` decides the whole, the other value falls away.
Condition join(std::vector<Condition> conditions, Truth absorbing, Condition::Form form) {
    const Truth neutral = absorbing == Truth::True ? Truth::False : Truth::True;
    std::vector<Condition> open;
    for (Condition& condition : conditions) {
        if (condition.known == absorbing) {
            return makeKnown(absorbing);
        }
        if (condition.known != neutral) {
            open.push_back(std::move(condition));
        }
    }
    if (open.empty()) {
        return makeKnown(neutral);
    }
    if (open.size() == 1) {
        return open.front();
    }
    Condition result;
    result.form = form;
    for (const Condition& condition : open) {
        result.sql += result.sql.empty() ? "" : form == Condition::Form::And ? " AND " : " OR ";
        const bool wrapped = form == Condition::Form::And && condition.form == Condition::Form::Or;
        result.sql += wrapped ? inParentheses(condition.sql) : condition.sql;
        if (form == Condition::Form::And) {
            result.tests.insert(result.tests.end(), condition.tests.begin(), condition.tests.end());
        }
        if (form == Condition::Form::And) {
            const std::vector<std::string> parts = condition.conjuncts();
            result.parts.insert(result.parts.end(), parts.begin(), parts.end());
        }
    }
    return result;
}

} // namespace

std::vector<std::string> Condition::conjuncts() const {
    if (!parts.empty()) {
        return parts;
    }
    return isTrue() ? std::vector<std::string>()
                    : std::vector<std::string>{form == Form::Or ? inParentheses(sql) : sql};
}

Fragment makeConstant(const Stored& value, const SqlType& type) {
    Fragment result;
    result.type = type;
    result.nullable = isNull(value);
    result.constant = value;
    if (const auto* text = std::get_if<std::string>(&value)) {
        result.sql = quoteText(*text);
        result.minimumLength = characterCount(*text);
    } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        result.sql = std::to_string(*integer);
        result.range = Range{*integer, *integer};
        result.simple = *integer >= 0;
    } else if (const auto* number = std::get_if<double>(&value)) {
        result.sql = realText(*number);
        result.simple = *number >= 0;
    } else {
        result.sql = "NULL";
    }
    return result;
}

Fragment makeNull() {
    return makeConstant(std::monostate{}, {});
}

Fragment makeCall(std::string_view function, const std::vector<std::string>& arguments, const SqlType& type,
                  bool nullable) {
    Fragment result;
    result.sql = std::string(function) + "(";
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        result.sql += (i == 0 ? "" : ", ") + arguments[i];
    }
    result.sql += ")";
    result.type = type;
    result.nullable = nullable;
    return result;
}

Fragment collatedText(Fragment fragment) {
    if (fragment.type.isText() && !fragment.collated) {
        fragment.sql = fragment.operand() + " COLLATE " + collationName;
        fragment.simple = false;
        fragment.collated = true;
    }
    return fragment;
}

Condition makeKnown(Truth truth) {
    return {truth == Truth::True    ? "1"
            : truth == Truth::False ? "0"
                                    : "NULL",
            Condition::Form::Predicate, truth};
}

Condition allOf(std::vector<Condition> conditions) {
    return join(std::move(conditions), Truth::False, Condition::Form::And);
}

Condition anyOf(std::vector<Condition> conditions) {
    return join(std::move(conditions), Truth::True, Condition::Form::Or);
}

Condition negationOf(Condition condition) {
    if (condition.known) {
        return makeKnown(condition.isTrue()    ? Truth::False
                         : condition.isFalse() ? Truth::True
                                               : Truth::Unknown);
    }
    return {"NOT (" + condition.sql + ")", Condition::Form::Predicate, std::nullopt};
}

} // namespace veldran::embedded
