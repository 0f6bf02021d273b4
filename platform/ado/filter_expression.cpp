#include "platform/ado/filter_expression.h"

#include "platform/ado/raise.h"
#include "platform/ado/value_conversion.h"
#include "platform/text.h"

#include <compare>
#include <optional>
#include <string>

namespace veldran::ado {

namespace {

enum class Operator { Equal, Unequal, Less, LessOrEqual, Greater, GreaterOrEqual, Like };

bool holds(Operator op, int order) {
    switch (op) {
    case Operator::Equal:
        return order == 0;
    case Operator::Unequal:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::LessOrEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    case Operator::GreaterOrEqual:
        return order >= 0;
    case Operator::Like:
        break;
    }
    return false;
}

template<class T>
int order(const T& a, const T& b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

int orderOf(const Value& cell, const Value& literal) {
    if (cell.asText() != nullptr) {
        return compareBlindly(*cell.asText(), literal.toText());
    }
    if (cell.asInteger() != nullptr && literal.asInteger() != nullptr) {
        return order(*cell.asInteger(), *literal.asInteger());
    }
    if (cell.asBool() != nullptr) {
        return order(*cell.asBool(), literal.toBool());
    }
    return order(cell.toDouble(), literal.toDouble());
}

bool like(std::string_view text, std::string_view pattern) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos; // the last wildcard met, and the text it is tried to end at
    std::size_t resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = t;
        } else if (p < pattern.size() && pattern[p] == text[t]) {
            ++p;
            ++t;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') {
        ++p;
    }
    return p == pattern.size();
}

class Comparison final : public FilterExpression {
public:
    Comparison(std::size_t column, Operator op, Value literal)
        : column_(column), operator_(op), literal_(std::move(literal)) {
        if (op == Operator::Like) {
            pattern_ =
                withFoldedCase(replaceAll(std::string(withoutTrailingBlanks(literal_.toText())), "%", "*"));
        }
    }
    bool matches(const ValueOf& valueOf) const override {
        const Value& cell = valueOf(column_);
        if (cell.isNull()) {
            return false;
        }
        return operator_ == Operator::Like ? like(withFoldedCase(nullSafeText(cell)), pattern_)
                                           : holds(operator_, orderOf(cell, literal_));
    }

private:
    std::size_t column_;
    Operator operator_;
    Value literal_;
    std::string pattern_;
};

class NullTest final : public FilterExpression {
public:
    NullTest(std::size_t column, bool wanted) : column_(column), wanted_(wanted) {}
    bool matches(const ValueOf& valueOf) const override { return valueOf(column_).isNull() == wanted_; }

private:
    std::size_t column_;
    bool wanted_;
};

class Junction final : public FilterExpression {
public:
    Junction(bool all, std::vector<std::unique_ptr<FilterExpression>> terms)
        : all_(all), terms_(std::move(terms)) {}
    bool matches(const ValueOf& valueOf) const override {
        for (const auto& term : terms_) {
            if (term->matches(valueOf) != all_) {
                return !all_;
            }
        }
        return all_;
    }

private:
    bool all_;
    std::vector<std::unique_ptr<FilterExpression>> terms_;
};

class Parser {
public:
    Parser(std::string_view text, const std::vector<ColumnInfo>& columns) : text_(text), columns_(columns) {}

    std::unique_ptr<FilterExpression> whole() {
        auto expression = condition();
        skipBlanks();
        if (at_ != text_.size()) {
            refuse("fine del filtro, AND oppure OR");
        }
        return expression;
    }

private:
    static constexpr int deepest = 100;

    [[noreturn]] void refuse(const std::string& expected) const {
        raise(adErrInvalidArgument, "(filtro \"" + std::string(text_) + "\", posizione " +
                                        std::to_string(at_ + 1) + ": atteso " + expected + ")");
    }

    std::unique_ptr<FilterExpression> condition() {
        return junction("OR", false, [this] { return junction("AND", true, [this] { return term(); }); });
    }

    template<class Part>
    std::unique_ptr<FilterExpression> junction(std::string_view word, bool all, Part part) {
        std::vector<std::unique_ptr<FilterExpression>> parts;
        do {
            parts.push_back(part());
        } while (takeWord(word));
        return parts.size() == 1 ? std::move(parts.front())
                                 : std::make_unique<Junction>(all, std::move(parts));
    }

    std::unique_ptr<FilterExpression> term() {
        if (take("(")) {
            if (++depth_ > deepest) {
                refuse("un filtro meno annidato");
            }
            auto inner = condition();
            if (!take(")")) {
                refuse("\")\"");
            }
            --depth_;
            return inner;
        }
        const std::size_t column = takeColumn();
        if (takeWord("IS")) {
            const bool negated = takeWord("NOT");
            if (!takeWord("NULL")) {
                refuse("NULL");
            }
            return std::make_unique<NullTest>(column, !negated);
        }
        const Operator op = takeOperator();
        if (takeWord("NULL")) {
            if (op != Operator::Equal && op != Operator::Unequal) {
                refuse("un valore diverso da NULL");
            }
            return std::make_unique<NullTest>(column, op == Operator::Equal);
        }
        return std::make_unique<Comparison>(column, op, takeLiteral(columns_[column], op));
    }

    std::size_t takeColumn() {
        skipBlanks();
        std::string_view name;
        if (take("[")) {
            const std::size_t end = text_.find(']', at_);
            if (end == std::string_view::npos) {
                refuse("\"]\"");
            }
            name = text_.substr(at_, end - at_);
            at_ = end + 1;
        } else {
            name = takeRun(isNamePart);
        }
        if (name.empty()) {
            refuse("il nome di un campo");
        }
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            if (equalsIgnoringAsciiCase(columns_[column].name, name)) {
                return column;
            }
        }
        raise(adErrItemNotFound, "(filtro \"" + std::string(text_) + "\": campo " + std::string(name) + ")");
    }

    Operator takeOperator() {
        if (take("<>")) {
            return Operator::Unequal;
        }
        if (take("<=")) {
            return Operator::LessOrEqual;
        }
        if (take(">=")) {
            return Operator::GreaterOrEqual;
        }
        if (take("<")) {
            return Operator::Less;
        }
        if (take(">")) {
            return Operator::Greater;
        }
        if (take("=")) {
            return Operator::Equal;
        }
        if (takeWord("LIKE")) {
            return Operator::Like;
        }
        refuse("un operatore di confronto");
    }

    Value takeLiteral(const ColumnInfo& column, Operator op) {
        Value literal;
        if (take("'")) {
            literal = takeQuoted();
        } else if (takeWord("TRUE")) {
            literal = true;
        } else if (takeWord("FALSE")) {
            literal = false;
        } else {
            literal = takeNumber();
        }
        const bool text = literal.asText() != nullptr;
        if (op == Operator::Like ? !text : text != isText(column.type)) {
            raise(adErrDataConversion, "(filtro \"" + std::string(text_) + "\": campo " + column.name + ")");
        }
        return literal;
    }

    std::string takeQuoted() {
        std::string content;
        while (at_ < text_.size()) {
            if (text_[at_] != '\'') {
                content += text_[at_++];
            } else if (text_.substr(at_).starts_with("''")) {
                content += '\'';
                at_ += 2;
            } else {
                ++at_;
                return content;
            }
        }
        refuse("la chiusura del testo tra apici");
    }

    Value takeNumber() {
        skipBlanks();
        const std::size_t start = at_;
        const std::string number(
            takeRun([](char c) { return isNamePart(c) || c == '.' || c == '-' || c == '+'; }));
        try {
            return number.find_first_of(".eE") == std::string::npos ? Value(Value(number).toInteger())
                                                                    : Value(Value(number).toDouble());
        } catch (const std::exception&) {
            at_ = start;
            refuse("un valore");
        }
    }

    static bool isNamePart(char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
               c == '#' || c == '$' || c == '@' || (static_cast<unsigned char>(c) >= 0x80);
    }

    template<class Predicate>
    std::string_view takeRun(Predicate belongs) {
        const std::size_t start = at_;
        while (at_ < text_.size() && belongs(text_[at_])) {
            ++at_;
        }
        return text_.substr(start, at_ - start);
    }

    void skipBlanks() {
        while (at_ < text_.size() &&
               (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\r' || text_[at_] == '\n')) {
            ++at_;
        }
    }

    bool take(std::string_view symbol) {
        skipBlanks();
        if (!text_.substr(at_).starts_with(symbol)) {
            return false;
        }
        at_ += symbol.size();
        return true;
    }

    bool takeWord(std::string_view word) {
        skipBlanks();
        const std::string_view rest = text_.substr(at_);
        if (!equalsIgnoringAsciiCase(rest.substr(0, word.size()), word) ||
            (rest.size() > word.size() && isNamePart(rest[word.size()]))) {
            return false;
        }
        at_ += word.size();
        return true;
    }

    std::string_view text_;
    const std::vector<ColumnInfo>& columns_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

} // namespace

std::unique_ptr<FilterExpression> FilterExpression::parse(std::string_view text,
                                                          const std::vector<ColumnInfo>& columns) {
    return Parser(text, columns).whole();
}

} // namespace veldran::ado
