#include "adapters/tsql/printer.h"

#include "adapters/tsql/text_writer.h"

namespace veldran::tsql {

namespace {

template<typename Node>
std::string written(const Node& node) {
    TextWriter writer;
    writer.write(node);
    return writer.take();
}

} // namespace

std::string toText(const Expression& expression) {
    return written(expression);
}
std::string toText(const Query& query) {
    return written(query);
}
std::string toText(const Batch& batch) {
    return written(batch.statements);
}

} // namespace veldran::tsql
