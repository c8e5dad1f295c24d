/// Qt's log, kept for the observations and passed on to standard error.
#pragma once

#include "Observations.h"

namespace chaos
{

void KeepLog();

/// What was logged since it was asked last; from any thread.
QVector<LogLine> TakeLog();

bool HasLine(const QVector<LogLine>& aLog, const QString& aPart);

} // namespace chaos
