/// What the bus, the process table and the files show at a moment, found out by other means than those of the
/// host platform, which is among what is judged.
#pragma once

#include "Observations.h"

namespace chaos
{

/// Takes a while when the bus hangs. `aTestBus`: the library uses the private bus.
Moment LookAround(bool aTestBus);

/// The stack's processes.
QVector<SeenProcess> StackProcessesNow();

/// The processes of that executable, zombies left out.
QVector<int> ProcessesOf(const QString& aProcess);

/// The daemon of the private bus; 0 when there is none.
int TestBusDaemon();

} // namespace chaos
