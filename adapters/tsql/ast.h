#pragma once

// The syntax tree of the T-SQL that the system sends: values all the way down, each node with its span.
#include "adapters/tsql/ast_definitions.h"
#include "adapters/tsql/ast_expressions.h"
#include "adapters/tsql/ast_queries.h"
#include "adapters/tsql/ast_statements.h"
