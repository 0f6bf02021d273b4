#pragma once

#include "benchmarks/chart_file.h"
#include "tests/support/test_host.h"

#include <memory>

namespace veldran::bench {

/// A host on a generated company, whose lookup service knows the codes that the benchmarks key.
std::unique_ptr<test::TestHost> makeHost(const ChartFile& file);

/// What the user was told that he should not have been. \throws std::runtime_error
void requireNoErrors(const test::TestHost& host);

/// The tree's node at a place whose parents have been expanded. \throws std::runtime_error
controls::TreeNode& nodeAt(test::TestHost& host, const Place& place);

/// Keys a row of a correlation as its views report it, without confirming it.
void keyRow(test::TestHost& host, const CorrelationRow& row);

} // namespace veldran::bench
