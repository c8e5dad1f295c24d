// What a call or a run leaves behind: arguments, processes, files.
#include "CallView.h"
#include "Stack.h"

#include <QStringList>

namespace chaos
{
namespace
{

QString LeftAfter(const CallView& aCall)
{
    const QStringList toEnd = StackProcesses();
    for (const SeenProcess& process : aCall.seen.after.processes) {
        if (toEnd.contains(process.name) && !process.byLifecycleManager &&
            !aCall.WasStartedAnew(process.name)) {
            return QStringLiteral("%1 still runs as %2").arg(process.name).arg(process.pid);
        }
    }
    return {};
}

bool IsHandBack(Action aAction)
{
    return aAction == Action::TearDownFixture || aAction == Action::Sterilize;
}

} // namespace

Breaches FailureLeavesArguments(const Schedule& aSchedule, const Observations& aSeen)
{
    return ForEachCall("failure leaves arguments", aSchedule, aSeen, [](const CallView& aCall) {
        return aCall.seen.wasTrue || aCall.seen.changed.isEmpty()
                   ? QString()
                   : QStringLiteral("false, but changed %1")
                         .arg(aCall.seen.changed.join(QLatin1String(", ")));
    });
}

Breaches NothingIsLeft(const Schedule& aSchedule, const Observations& aSeen)
{
    return ForEachCall("nothing is left", aSchedule, aSeen, [](const CallView& aCall) {
        return IsHandBack(aCall.step.action) ? LeftAfter(aCall) : QString();
    });
}

Breaches DatabaseIsWhole(const Schedule& aSchedule, const Observations& aSeen)
{
    const bool wasDamaged = Has(aSchedule, Action::DatabaseIsDamaged);
    return ForEachCall("database is whole", aSchedule, aSeen, [wasDamaged](const CallView& aCall) {
        const bool isDamaged = aCall.seen.before.database == QLatin1String("damaged") ||
                               aCall.seen.after.database == QLatin1String("damaged");
        return isDamaged && !wasDamaged ? QStringLiteral("SQLite finds it damaged") : QString();
    });
}

Breaches ConfigurationIsOldOrNew(const Schedule& aSchedule, const Observations& aSeen)
{
    return ForEachCall("configuration is old or new", aSchedule, aSeen, [](const CallView& aCall) {
        const QString& after = aCall.seen.after.configuration;
        const bool isOld = after == aCall.seen.before.configuration;
        const bool isNew = after.contains(QLatin1Char('@'));
        return (isOld || isNew) && after != QLatin1String("half") && !after.isEmpty()
                   ? QString()
                   : QStringLiteral("it was %1 and is %2").arg(aCall.seen.before.configuration, after);
    });
}

} // namespace chaos
