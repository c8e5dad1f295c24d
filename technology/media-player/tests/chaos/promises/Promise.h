/// What a run promises whatever goes wrong in it. Each promise is one function over what was planned and what
/// was seen; it returns where the promise was broken.
#pragma once

#include "Observations.h"
#include "Schedule.h"

#include <QVector>

namespace chaos
{

struct Breach {
    QString promise; ///< its name, "returns in time"
    int number = 0;  ///< of the step that broke it; 0 for the run as a whole
    QString what;
};

using Breaches = QVector<Breach>;

/// Every call returns within the time that its header states.
Breaches ReturnsInTime(const Schedule& aSchedule, const Observations& aSeen);
/// What a call reported as done the bus, the process table and the files show.
Breaches TrueMeansSo(const Schedule& aSchedule, const Observations& aSeen);
/// What a call reported as failed has a critical line, a failure of the running test or a documented reason.
Breaches FalseHasAReason(const Schedule& aSchedule, const Observations& aSeen);
/// No out-argument of a failed call has changed.
Breaches FailureLeavesArguments(const Schedule& aSchedule, const Observations& aSeen);
/// After the hand-back no process of the stack runs that the library had to end.
Breaches NothingIsLeft(const Schedule& aSchedule, const Observations& aSeen);
/// The database is whole, unless the run has damaged it.
Breaches DatabaseIsWhole(const Schedule& aSchedule, const Observations& aSeen);
/// The test configuration is the old one or the new one, never half.
Breaches ConfigurationIsOldOrNew(const Schedule& aSchedule, const Observations& aSeen);
/// The program neither crashes nor hangs.
Breaches ProgramEndsWell(const Schedule& aSchedule, const Observations& aSeen);

/// All of them.
Breaches Judge(const Schedule& aSchedule, const Observations& aSeen);

} // namespace chaos
