#pragma once

#include "tests/tsql/screen_statements.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldran::tsql::test {

// The levels of the chart and its working table.
std::vector<ScreenStatement> chartStatements();
// The accounts that a filter has selected, and what is marked on them.
std::vector<ScreenStatement> selectionStatements();
// The tree of the accounts, the search and the activation.
std::vector<ScreenStatement> treeStatements();
// The correlations of an account, their causali and both clipboards.
std::vector<ScreenStatement> correlationStatements();

// The screen joins the lines of a statement with carriage return and line feed.
std::string sent(std::string_view lines);

} // namespace veldran::tsql::test
