#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The statements of the screen as its database contract words them, written out here once more and on
/// purpose: a text that changes in the screen has to be changed by hand here too.
namespace veldran::test::expected {

/// Lines joined as the screen joins them.
std::string lines(const std::vector<std::string>& texts);
/// The statement with its layout taken out: runs of blanks and line ends become one blank, none stands beside
/// a comma or a parenthesis.
std::string squeezed(std::string_view statement);

std::string levels(int chart);

// Preparation of the chart's working table, in order.
std::vector<std::string> workingTableSelectList(); ///< the ends "AS name" of the big SELECT, in order
std::string workingTableTail(int chart);           ///< from "INTO" to the end, squeezed
std::string workingTableKey();
std::string workingTableIndex1();
std::string workingTableIndex2();
std::string activationFlags(const std::string& ditta, int chart); ///< squeezed
std::string correlationFlags(const std::string& ditta);           ///< squeezed

// A filter change, in order.
std::string dropSelection();
std::string select(int filter); ///< squeezed
std::string identityInsertOn();
std::string completeSelection(int chart); ///< squeezed
std::string selectionKey();
std::vector<std::string> selectionIndexes(int levels);
std::string anyInactive(int nature); ///< squeezed
std::string anyAnalytic(int nature); ///< squeezed

// The tree.
std::string rootChildren();
std::string analyticChildren();
std::string search(int chart); ///< squeezed

// Activation.
std::string header(int levels);
std::string markActivation(bool active, const std::string& pattern, int nature);
std::string writeBack(const std::string& column);

} // namespace veldran::test::expected
