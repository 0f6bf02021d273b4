#pragma once

#include "tests/module/scripted_driver.h"
#include "tests/support/work_areas.h"

namespace veldran::test {

/// Stands before the work areas, which it outlives.
struct ScriptedDatabaseBase {
    ScriptedDatabase database;
};

/// The work areas over a scripted database: chart 7 of company "31", four levels.
class ScriptedWorkAreas : public ScriptedDatabaseBase, public WorkAreas {
public:
    ScriptedWorkAreas() : WorkAreas(connectTo(database), {"scritto=1", "31", 7, 4}) {}
};

} // namespace veldran::test
