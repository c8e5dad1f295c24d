/// The process table, found out by other means than those of the host platform, which is among what is
/// judged.
#pragma once

#include "Observations.h"

namespace chaos
{

/// The stack's processes.
QVector<SeenProcess> StackProcessesNow();

/// The processes of that executable, zombies left out.
QVector<int> ProcessesOf(const QString& aProcess);

/// The daemon of the private bus; 0 when there is none.
int TestBusDaemon();

} // namespace chaos
