#pragma once

#include "adapters/tsql/ast.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The front end's parser for callers that speak AdoError.
namespace veldran::embedded {

/// Parses a text. `line` is what its first line is called in messages. \throws AdoError with the syntax error
tsql::Batch parseText(std::string_view text, std::size_t line = 1);

/// A name as OBJECT_ID and procedure calls write it: "TEMPDB.DBO.#T", "[DBO].[T]". Empty for anything else.
std::optional<tsql::QualifiedName> parseObjectName(std::string_view text);

/// The name with dots between its parts.
std::string writtenName(const tsql::QualifiedName& name);

} // namespace veldran::embedded
