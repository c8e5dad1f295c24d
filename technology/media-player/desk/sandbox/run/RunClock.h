/// From the clock of a record to the moments of a run.
#pragma once

#include "../clock/Clock.h"
#include "TestCase.h"

namespace sandbox
{

struct RunClock {
    Clock clock;
    long long zero = 0; ///< of the run, on the sandbox's clock

    Moment At(long long aMachineTime) const { return clock.FromMachine(aMachineTime) - zero; }
};

} // namespace sandbox
