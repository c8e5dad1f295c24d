/// Reads what happened to processes.
#pragma once

#include "../record/Fact.h"
#include "Run.h"
#include "RunClock.h"

namespace sandbox
{

/// Fills in the processes and the pauses; the run knows its program and status already.
void ReadProcesses(const std::vector<Fact>& aFacts, const RunClock& aClock, Run& aRun);

} // namespace sandbox
