/// What can be done to processes from outside.
#pragma once

#include <QString>

namespace chaos
{

/// Signals all processes of that executable.
void SignalAll(const QString& aProcess, int aSignal);

/// Signals the daemon of the private bus, if there is one.
void SignalBus(int aSignal);

/// Kills the process and starts its command again, as somebody would who looks after it.
void StartAnew(const QString& aProcess);

} // namespace chaos
