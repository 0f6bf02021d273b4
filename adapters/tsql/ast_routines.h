#pragma once

#include "adapters/tsql/ast_queries.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace veldran::tsql {

struct Statement;

struct RoutineParameter {
    NodeSpan span;
    std::string name; // with its at-sign
    DataType type;
    std::optional<Expression> defaultValue;
    bool output = false;

    bool operator==(const RoutineParameter&) const = default;
};

enum class DefinitionMode { Create, CreateOrAlter, Alter };

// The body runs to the end of the batch. The span of the whole statement is the source text to be stored.
struct CreateProcedure {
    DefinitionMode mode = DefinitionMode::Create;
    QualifiedName name;
    std::vector<RoutineParameter> parameters;
    std::vector<Statement> body;
    NodeSpan bodySpan;

    bool operator==(const CreateProcedure&) const = default;
};

// RETURNS type AS BEGIN ... END
struct ScalarFunctionBody {
    DataType returns;
    std::vector<Statement> statements;

    bool operator==(const ScalarFunctionBody&) const = default;
};

// RETURNS TABLE AS RETURN (SELECT ...)
struct InlineTableBody {
    Query query;

    bool operator==(const InlineTableBody&) const = default;
};

struct CreateFunction {
    DefinitionMode mode = DefinitionMode::Create;
    QualifiedName name;
    std::vector<RoutineParameter> parameters;
    bool schemaBinding = false;
    std::variant<ScalarFunctionBody, InlineTableBody> body;
    NodeSpan bodySpan;

    bool operator==(const CreateFunction&) const = default;
};

} // namespace veldran::tsql
