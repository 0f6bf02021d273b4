#pragma once

#include "database/generator/demo_model.h"
#include "database/generator/insert_writer.h"

#include <ostream>
#include <string_view>

namespace veldran::chartgen {

/// Writes the demo companies as a T-SQL script that removes what an earlier run left and inserts everything
/// anew. The text depends on the model alone.
void writeDemoScript(const DemoModel& model, std::ostream& out);

/// The three stretches of such a script, for accounts that are not held in the model: removal, charts,
/// companies and causali; one row of the chart of accounts; activations and correlations.
void writeDemoHead(const DemoModel& model, std::ostream& out);
InsertWriter ledgerAccountWriter(std::ostream& out);
void writeLedgerAccount(InsertWriter& writer, int chart, std::string_view code, std::string_view description,
                        int nature);
void writeDemoTail(const DemoModel& model, std::ostream& out);

} // namespace veldran::chartgen
