#pragma once

// The syntax tree of the T-SQL that the system sends: values all the way down, each node with its span.
#include "adapters/embedded/tsql/ast_definitions.h"
#include "adapters/embedded/tsql/ast_expressions.h"
#include "adapters/embedded/tsql/ast_queries.h"
#include "adapters/embedded/tsql/ast_statements.h"
