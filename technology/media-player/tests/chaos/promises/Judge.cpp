#include "Promise.h"

namespace chaos
{

Breaches ProgramEndsWell(const Schedule& /*schedule*/, const Observations& aSeen)
{
    QString what;
    if (aSeen.wasHung) {
        what = QStringLiteral("it hung");
    } else if (!aSeen.isComplete) {
        what = QStringLiteral("it ended with status %1").arg(aSeen.exitStatus);
    } else if (aSeen.exitStatus != 0) {
        what = QStringLiteral("after its last step it ended with status %1").arg(aSeen.exitStatus);
    }
    return what.isEmpty() ? Breaches()
                          : Breaches{{QStringLiteral("program ends well"), aSeen.begun,
                                      what + QStringLiteral("; the last it said:\n") + aSeen.errors}};
}

Breaches Judge(const Schedule& aSchedule, const Observations& aSeen)
{
    Breaches breaches;
    for (const auto promise :
         {ProgramEndsWell, ReturnsInTime, TrueMeansSo, FalseHasAReason, FailureLeavesArguments, NothingIsLeft,
          DatabaseIsWhole, ConfigurationIsOldOrNew}) {
        breaches += promise(aSchedule, aSeen);
    }
    return breaches;
}

} // namespace chaos
