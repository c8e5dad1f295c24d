#include "Shown.h"

#include "Stack.h"

namespace chaos
{

QString Owned(const CallView& aCall, const QString& aService)
{
    const bool holds =
        aCall.seen.after.Owns(aService) || aCall.WasDisturbed(ProcessOf(aService)) || aCall.BusWasDisturbed();
    return holds ? QString() : QStringLiteral("true, but nobody owns %1").arg(aService);
}

QString Gone(const CallView& aCall, const QStringList& aProcesses)
{
    for (const QString& process : aProcesses) {
        if (aCall.seen.after.Runs(process) && !aCall.WasStartedAnew(process)) {
            return QStringLiteral("true, but %1 runs").arg(process);
        }
    }
    return {};
}

// A process that ran before is not waited for; another must have its name.
QString Up(const CallView& aCall, const QString& aProcess)
{
    const bool stillRuns = aCall.seen.before.Runs(aProcess) && aCall.seen.after.Runs(aProcess);
    return stillRuns ? QString() : Owned(aCall, ServiceOf(aProcess));
}

QString Running(const CallView& aCall, const QStringList& aProcesses)
{
    for (const QString& process : aProcesses) {
        if (!aCall.seen.after.Runs(process) && !aCall.WasDisturbed(process)) {
            return QStringLiteral("true, but %1 does not run").arg(process);
        }
    }
    return {};
}

QString Stopped(const CallView& aCall, const QStringList& aProcesses)
{
    for (const SeenProcess& process : aCall.seen.after.processes) {
        if (process.byLifecycleManager && aProcesses.contains(process.name)) {
            return QStringLiteral("true, but the lifecycle manager's %1 runs").arg(process.name);
        }
    }
    return {};
}

QString Reset(const CallView& aCall)
{
    const Moment& after = aCall.seen.after;
    // A database that somebody has locked meanwhile can't be looked into, nor one that nobody could write.
    if (after.database == QLatin1String("locked")) {
        return {};
    }
    return after.database == QLatin1String("whole") && after.storedSource.isEmpty()
               ? QString()
               : QStringLiteral("true, but the database is %1 and holds the source \"%2\"")
                     .arg(after.database, after.storedSource);
}

QString Either(const QString& aOne, const QString& aOther)
{
    return aOne.isEmpty() ? aOther : aOne;
}

QString AllOwned(const CallView& aCall, const QStringList& aServices)
{
    QString problem;
    for (const QString& service : aServices) {
        problem = Either(problem, Owned(aCall, service));
    }
    return problem;
}

QString FilesAre(const CallView& aCall, int aNumber)
{
    return aCall.seen.after.files == aNumber
               ? QString()
               : QStringLiteral("true, but the environment directory has %1 files")
                     .arg(aCall.seen.after.files);
}

// What runs may have written something since.
QString IsEmptied(const CallView& aCall)
{
    const Moment& after = aCall.seen.after;
    return after.files >= 0 && !after.processes.isEmpty() ? QString() : FilesAre(aCall, 0);
}

} // namespace chaos
