#include "adapters/tsql/ast.h"

#include <type_traits>

namespace veldran::tsql {

bool isCondition(const Expression& expression) {
    return std::visit(
        [](const auto& node) {
            using Node = std::decay_t<decltype(node)>;
            return std::is_same_v<Node, Comparison> || std::is_same_v<Node, Logical> ||
                   std::is_same_v<Node, Not> || std::is_same_v<Node, Between> ||
                   std::is_same_v<Node, InList> || std::is_same_v<Node, InQuery> ||
                   std::is_same_v<Node, Like> || std::is_same_v<Node, IsNull> || std::is_same_v<Node, Exists>;
        },
        expression.node);
}

} // namespace veldran::tsql
