/// The program that a sandbox is made for.
#pragma once

#include "InsideSettings.h"
#include "RunningClock.h"

namespace sandbox
{

/// Runs it by that clock to its end, or to the end of its time. The status to end with; where it can't be
/// run, a message says why.
int RunTestProgram(const InsideSettings& aSettings, const RunningClock& aClock);

} // namespace sandbox
