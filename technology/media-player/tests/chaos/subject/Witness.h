/// What the bus, the process table and the files show at a moment, found out by other means than those of the
/// host platform, which is among what is judged.
#pragma once

#include "Observations.h"

namespace chaos
{

/// Takes a while when the bus hangs. `aTestBus`: the library uses the private bus.
Moment LookAround(bool aTestBus);

} // namespace chaos
