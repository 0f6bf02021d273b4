#include "adapters/tsql/parser.h"
#include "adapters/tsql/printer.h"
#include "tests/tsql/expression_generator.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veldran::tsql::test {
namespace {

constexpr int depth = 3;

RC_GTEST_PROP(TsqlRoundTrip, AValuePrintsAsATextThatParsesToIt, ()) {
    const Expression value = *rc::gen::noShrink(arbitraryValue(depth));
    const std::string text = toText(value);
    RC_LOG() << text;
    RC_ASSERT(parseExpression(text) == value);
}

RC_GTEST_PROP(TsqlRoundTrip, AConditionPrintsAsATextThatParsesToIt, ()) {
    const Expression condition = *rc::gen::noShrink(arbitraryCondition(depth));
    const std::string text = toText(condition);
    RC_LOG() << text;
    RC_ASSERT(parseExpression(text) == condition);
    RC_ASSERT(isCondition(condition));
}

RC_GTEST_PROP(TsqlRoundTrip, AQueryPrintsAsATextThatParsesToIt, ()) {
    const Query query = *rc::gen::noShrink(arbitraryQuery(2));
    const std::string text = toText(query);
    RC_LOG() << text;
    const Batch batch = parseBatch(text);
    RC_ASSERT(batch.statements.size() == 1U);
    RC_ASSERT(std::get<SelectStatement>(batch.statements[0].node).query == query);
}

RC_GTEST_PROP(TsqlRoundTrip, PrintingIsCanonical, ()) {
    const Query query = *rc::gen::noShrink(arbitraryQuery(2));
    const std::string text = toText(query);
    RC_ASSERT(toText(parseBatch(text)) == text);
}

} // namespace
} // namespace veldran::tsql::test
