#pragma once

#include "adapters/tsql/source.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldran::tsql {

// One batch of a script: its text, where that begins in the script, and how often it is to be run (GO 3).
struct ScriptBatch {
    std::string text;
    SourcePosition origin;
    int repetitions = 1;
};

// Cuts a script at its GO lines. A GO inside a string or a comment is text; batches without any statement are
// left out.
// \throws SyntaxError where a string or comment is not closed, or a GO line carries anything but a count.
std::vector<ScriptBatch> splitScript(std::string_view script);

} // namespace veldran::tsql
