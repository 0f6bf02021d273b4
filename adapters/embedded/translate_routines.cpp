#include "adapters/embedded/collation.h"
#include "adapters/embedded/conversion.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/translator.h"
#include "adapters/embedded/translator_frames.h"

namespace veldran::embedded {

namespace {

constexpr int maximumInlining = 32;

// The expression of a body that is nothing but RETURN expression.
const tsql::Expression* returnedExpression(const std::vector<tsql::Statement>& statements) {
    if (statements.size() != 1) {
        return nullptr;
    }
    if (const auto* block = std::get_if<tsql::Block>(&statements.front().node)) {
        return returnedExpression(block->statements);
    }
    const auto* result = std::get_if<tsql::ReturnStatement>(&statements.front().node);
    return result != nullptr && result->value ? &*result->value : nullptr;
}

} // namespace

InlineFrame::InlineFrame(Translator& translator, const Routine& routine,
                         const std::map<std::string, Fragment>& parameters)
    : translator_(translator), text_(translator.text_), scope_(translator.scope_),
      inlined_(translator.inlined_) {
    if (translator.inlineDepth_ >= maximumInlining) {
        fail(217, "42000", "È stato superato il livello massimo di annidamento delle funzioni (32).");
    }
    ++translator_.inlineDepth_;
    translator_.text_ = routine.text;
    translator_.scope_ = nullptr;
    translator_.inlined_ = &parameters;
}

InlineFrame::~InlineFrame() {
    --translator_.inlineDepth_;
    translator_.text_ = text_;
    translator_.scope_ = scope_;
    translator_.inlined_ = inlined_;
}

std::map<std::string, Fragment>
Translator::boundParameters(const std::vector<tsql::RoutineParameter>& parameters,
                            const std::vector<Fragment>& arguments, const std::string& name,
                            const tsql::NodeSpan& span) {
    if (arguments.size() != parameters.size()) {
        fail(arguments.size() < parameters.size() ? 313 : 8144, "42000",
             "Il numero di argomenti della funzione '" + name + "' non è " +
                 std::to_string(parameters.size()) + " (riga " + std::to_string(span.begin.line) + ").");
    }
    std::map<std::string, Fragment> bound;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const SqlType type = resolveType(parameters[i].type);
        bound[toUpper(std::string_view(parameters[i].name))] =
            convert(arguments[i], type, ConversionMode::Cast, parameters[i].name);
    }
    return bound;
}

Fragment Translator::userFunction(const tsql::FunctionCall& node, const tsql::NodeSpan& span) {
    const auto found = routine(node.name);
    if (!found || found->kind != RoutineKind::Function) {
        fail(4121, "42000",
             "Impossibile trovare la colonna \"DBO\" o la funzione definita dall'utente \"" +
                 node.name.last() + "\".");
    }
    const auto* body = std::get_if<tsql::ScalarFunctionBody>(&found->function().body);
    if (body == nullptr) {
        refuse(span, "Una funzione con valori di tabella non è un valore");
    }
    const tsql::Expression* returned = returnedExpression(body->statements);
    if (returned == nullptr) {
        refuse(span,
               "La funzione '" + found->name + "' ha un corpo diverso da un solo RETURN e non è disponibile");
    }
    const auto parameters =
        boundParameters(found->function().parameters, expressions(node.arguments), found->name, span);
    const InlineFrame frame(*this, *found, parameters);
    Fragment result = convert(expression(*returned), resolveType(body->returns), ConversionMode::Cast);
    result.table = nullptr;
    result.column = nullptr;
    return result;
}

} // namespace veldran::embedded
