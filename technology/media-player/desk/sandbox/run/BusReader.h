/// Reads what passed on a bus.
#pragma once

#include "Run.h"

#include <string>

namespace sandbox
{

/// Adds the connections, names, calls, signals and jobs of a bus; `aPcap` may end anywhere. Its times are the
/// sandbox's, `aZero` among them is the run's start.
void ReadBus(const std::string& aPcap, Bus aBus, long long aZero, Run& aRun);

} // namespace sandbox
