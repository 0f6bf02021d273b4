#pragma once

#include <string>
#include <vector>

/// The statements of the screen as its database contract words them, written out here once more and on
/// purpose: a text that changes in the screen has to be changed by hand here too.
namespace veldran::test::expected {

/// Lines joined as the screen joins them.
std::string lines(const std::vector<std::string>& texts);
std::string levels(int chart);

// Preparation of the chart's working table, in order.
std::string workingTable(int chart, int levels); ///< from golden/working_table.sql
std::string workingTableKey();
std::string workingTableIndex1();
std::string workingTableIndex2();
std::string activationFlags(const std::string& ditta, int chart);
std::string correlationFlags(const std::string& ditta);

// A filter change, in order.
std::string dropSelection();
std::string select(int filter);
std::string identityInsertOn();
std::string completeSelection(int chart);
std::string selectionKey();
std::vector<std::string> selectionIndexes(int levels);
std::string anyInactive(int nature);
std::string anyAnalytic(int nature);

// The tree.
std::string rootChildren();
std::string analyticChildren();
std::string search(int chart);

// Activation.
std::string header(int levels);
std::string markActivation(bool active, const std::string& pattern, int nature);
std::string writeBack(const std::string& column);

// Correlation.
std::string markCorrelation(int chart); ///< markers: the flag, the account

} // namespace veldran::test::expected
