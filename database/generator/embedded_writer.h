#pragma once

#include "database/generator/demo_model.h"
#include "database/generator/synthetic_script.h"

#include <string>

namespace veldran::chartgen {

/// An embedded database to write into: made when the file is missing, otherwise the companies and charts are
/// added to it. `scriptFolder` holds schema.sql and routines.sql, which are run first.
struct EmbeddedTarget {
    std::string file;
    std::string scriptFolder;
};

/// Writes the demo companies. \throws SourceError, AdoError
void writeDemoDatabase(const DemoModel& model, const EmbeddedTarget& target);

/// Writes the frame and the generated chart; each table is filled in one transaction, a million accounts take
/// seconds. What an earlier run wrote under the same place is replaced.
/// \throws SourceError as generateChart, AdoError
void writeSyntheticDatabase(const SyntheticOptions& options, const SyntheticPlace& place,
                            const EmbeddedTarget& target);

} // namespace veldran::chartgen
