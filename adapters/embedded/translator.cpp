#include "adapters/embedded/translator.h"

#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/operators.h"
#include "adapters/embedded/parsing.h"
#include "adapters/embedded/translator_frames.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::embedded {

namespace {

constexpr std::size_t maximumExcerpt = 60;

} // namespace

std::string Translator::excerpt(const tsql::NodeSpan& span) const {
    const std::size_t begin = std::min(span.begin.offset, text_.size());
    const std::size_t end = std::clamp(span.end.offset, begin, text_.size());
    std::string quote;
    for (const char c : text_.substr(begin, end - begin)) {
        const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        if (!blank || (!quote.empty() && quote.back() != ' ')) {
            quote += blank ? ' ' : c;
        }
    }
    if (quote.size() > maximumExcerpt) {
        std::size_t cut = maximumExcerpt;
        while (cut > 0 && (quote[cut] & 0xC0) == 0x80) {
            --cut;
        }
        quote = quote.substr(0, cut) + "…";
    }
    return quote;
}

void Translator::refuse(const tsql::NodeSpan& span, std::string_view what) const {
    fail(errorNotSupported, "42000",
         std::string(what) + " (riga " + std::to_string(span.begin.line) + ", colonna " +
             std::to_string(span.begin.column) + ", in '" + excerpt(span) + "').");
}

std::shared_ptr<const Table> Translator::table(const tsql::QualifiedName& name) {
    auto found = context_.catalogue.table(name);
    dependencies_.push_back({name, found, nullptr});
    return found;
}

std::shared_ptr<const Routine> Translator::routine(const tsql::QualifiedName& name) {
    auto found = context_.catalogue.findRoutine(name);
    if (found) {
        dependencies_.push_back({name, nullptr, found});
    }
    return found;
}

Fragment Translator::slot(Slot slot) {
    const auto same = [&](const Slot& other) {
        return other.kind == slot.kind && other.marker == slot.marker &&
               equalsIgnoringAsciiCase(other.variable, slot.variable);
    };
    auto found = std::find_if(slots_.begin(), slots_.end(), same);
    if (found == slots_.end()) {
        slots_.push_back(std::move(slot));
        found = std::prev(slots_.end());
    }
    Fragment result;
    result.sql = "?" + std::to_string(found - slots_.begin() + 1);
    result.type = found->type;
    result.minimumLength = found->type.isFixedText() ? found->type.length : 0;
    return result;
}

Program Translator::finish(std::string sql) {
    Program program;
    program.sql = std::move(sql);
    program.slots = slots_;
    program.dependencies = dependencies_;
    program.sought = sought_;
    program.relies = relies_;
    program.shares = shares_;
    program.uniform = uniform_;
    return program;
}

void Translator::noteSought(const Fragment& column) {
    if (seeks_ == 0 || column.column == nullptr || !column.table->isTemporary() ||
        column.occurrence <= soughtBehind_) {
        return;
    }
    auto entry = std::find_if(sought_.begin(), sought_.end(),
                              [&](const Sought& other) { return other.occurrence == column.occurrence; });
    if (entry == sought_.end()) {
        entry = sought_.insert(sought_.end(), Sought{column.table->name, column.occurrence, {}});
    }
    const std::string& name = column.column->name;
    if (std::find(entry->columns.begin(), entry->columns.end(), name) == entry->columns.end()) {
        entry->columns.push_back(name);
    }
}

Fragment Translator::column(const tsql::QualifiedName& name) {
    const bool qualified = name.parts.size() > 1;
    const std::string qualifier = qualified ? name.parts[name.parts.size() - 2] : std::string();
    for (const Scope* scope = scope_; scope != nullptr; scope = scope->outer) {
        const SourceColumn* found = nullptr;
        bool tableSeen = false;
        for (const Source& source : scope->sources) {
            if (qualified && !equalsIgnoringAsciiCase(source.name, qualifier)) {
                continue;
            }
            tableSeen = true;
            for (const SourceColumn& column : source.columns) {
                if (!equalsIgnoringAsciiCase(column.name, name.last())) {
                    continue;
                }
                if (found != nullptr) {
                    fail(209, "42000", "Il nome di colonna '" + writtenName(name) + "' è ambiguo.");
                }
                found = &column;
            }
        }
        if (found != nullptr) {
            if (scope == scope_) { // to a subquery, what the query around it shows is a value like any other
                noteSought(found->value);
            }
            return found->value;
        }
        if (qualified && tableSeen) {
            failUnknownColumn(name.last());
        }
    }
    if (qualified) {
        fail(4104, "42000", "Impossibile associare l'identificatore composto \"" + writtenName(name) + "\".");
    }
    failUnknownColumn(name.last());
}

Program Translator::value(const tsql::Expression& node, const SqlType* type, std::string_view target) {
    Fragment result = expression(node);
    if (type != nullptr) {
        result = convert(result, *type, ConversionMode::Cast, target);
    }
    Program program = finish("SELECT " + result.sql);
    program.types.push_back(result.type);
    return program;
}

Program Translator::condition(const tsql::Expression& node) {
    const Condition result = truth(node);
    Program program = finish("SELECT " + (result.known ? std::string(result.isTrue() ? "1" : "0")
                                                       : "(" + result.sql + ") IS TRUE"));
    program.types.push_back(integerType(TypeKind::Int));
    return program;
}

} // namespace veldran::embedded
