// The times that the library's header states, in milliseconds of the program's own clock.
#include "CallView.h"

#include <QHash>
#include <QSet>

namespace chaos
{
namespace
{

// The machine computes no faster when time does: what processes need to start and to answer, and how late
// each of the pauses, which mostly last a second, may end.
constexpr double kMachineMs = 400;
constexpr double kMachineMsPerSecond = 20;

constexpr qint64 kReset = 1000;         // ClearMPLState, when the database is locked
constexpr qint64 kService = 20000;      // WaitForServiceRunning
constexpr qint64 kObjects = 1000;       // WaitForServiceObjects
constexpr qint64 kManager = 23000;      // LaunchMediaManagerProcess
constexpr qint64 kAllSources = 123000;  // LaunchMediaSourceProcesses
constexpr qint64 kEasyKill = 2000;      // of a process that heeds SIGTERM
constexpr qint64 kHardKill = 15000;     // of one that resists
constexpr qint64 kLifecycleJob = 30000; // one job of the lifecycle manager
constexpr qint64 kBusQuestion = 5000;   // that nobody answers
constexpr qint64 kLookUp = 5000;        // that nobody answers
constexpr qint64 kMethod = 25000;       // that nobody answers
constexpr int kServiceQuestions = 11;   // of WaitForServiceRunning
constexpr int kObjectLookUps = 10;      // of WaitForServiceObjects

// What the time of a call is made of.
struct Parts {
    qint64 stated = 0;
    int kills = 0;
    int jobs = 0;
    int busQuestions = 0;
    int lookUps = 0;
    int methods = 0;
};

const QHash<int, Parts>& AllParts()
{
    static const QHash<int, Parts> kParts = [] {
        QHash<int, Parts> parts;
        const auto set = [&parts](Action aAction, const Parts& aParts) {
            parts.insert(static_cast<int>(aAction), aParts);
        };
        set(Action::LaunchBus, {30000});
        set(Action::SetUpFixture, {kManager + 2 * kReset, 10, 7, kServiceQuestions, kObjectLookUps});
        set(Action::TearDownFixture, {2 * kReset, 8, 7});
        set(Action::Sterilize, {kReset, 8});
        set(Action::ClearState, {kReset});
        set(Action::LaunchManager, {kManager + kReset, 0, 0, kServiceQuestions, kObjectLookUps});
        for (const Action launch :
             {Action::LaunchSource, Action::LaunchRemoteSource, Action::LaunchTestSource}) {
            set(launch, {kService + kReset, 0, 0, kServiceQuestions});
        }
        set(Action::LaunchAllSources,
            {kAllSources + 4 * kReset, 0, 0, 6 * kServiceQuestions, 3 * kObjectLookUps});
        set(Action::KillManager, {0, 2});
        set(Action::KillSources, {0, 5});
        set(Action::KillTestSource, {0, 1});
        set(Action::KillHmi, {0, 2});
        set(Action::WaitForService, {kService, 0, 0, kServiceQuestions});
        set(Action::WaitForObjects, {kObjects, 0, 0, 0, kObjectLookUps});
        set(Action::CreateManagerProxy, {kObjects, 0, 0, 1, kObjectLookUps, 1});
        set(Action::CreateSimulatorProxy, {0, 0, 0, 1, 1, 1});
        set(Action::WaitForIndex, {500000, 0, 0, 0, 0, 3});
        for (const Action query : {Action::GetIndexStatus, Action::GetIndexProgress, Action::GetCapability,
                                   Action::GetActiveStatus}) {
            set(query, {0, 0, 0, 0, 0, 1});
        }
        set(Action::GetCapabilities, {0, 0, 0, 1, 1, 7});
        set(Action::SetActiveSource, {0, 0, 0, 0, 0, 2});
        set(Action::SlmLaunch, {kReset, 0, 7});
        set(Action::SlmStop, {0, 0, 7});
        set(Action::SlmLaunchTuners, {0, 0, 2});
        set(Action::SlmStopTuners, {0, 0, 2});
        return parts;
    }();
    return kParts;
}

// How many programs SIGTERM may not end.
int Resisting(const Schedule& aSchedule)
{
    QSet<QString> programs;
    for (const Step& step : aSchedule.steps) {
        const bool resists = step.action == Action::IgnoresSigterm || step.action == Action::Hangs ||
                             step.action == Action::IsStopped || step.action == Action::IsStartedAnew;
        if (resists) {
            programs.insert(step.object);
        }
    }
    return static_cast<int>(programs.size());
}

// Whoever asks the bus, or is asked to end while he does, waits as long as it stops.
qint64 BusStops(const Schedule& aSchedule)
{
    qint64 stops = 0;
    for (const Step& step : aSchedule.steps) {
        const bool isStop = step.action == Action::BusStops || step.action == Action::BusIsSlow;
        stops += isStop ? step.milliseconds : 0;
    }
    return stops;
}

// A manager that says nothing ends the first job's time, and with that the call.
int JobsThatTakeTime(const Schedule& aSchedule, int aJobs)
{
    return aSchedule.hasLifecycleManager
               ? aJobs
               : qMin(aJobs, Has(aSchedule, Action::LifecycleManagerIsMute) ? 1 : 0);
}

qint64 Allowed(const CallView& aCall)
{
    const Parts parts = AllParts().value(static_cast<int>(aCall.step.action));
    const Schedule& schedule = aCall.schedule;
    qint64 allowed = parts.stated + parts.kills * kEasyKill +
                     qMin(parts.kills, Resisting(schedule)) * kHardKill +
                     JobsThatTakeTime(schedule, parts.jobs) * kLifecycleJob + BusStops(schedule);
    if (aCall.MayHang()) {
        allowed += parts.busQuestions * kBusQuestion + parts.lookUps * kLookUp + parts.methods * kMethod;
    }
    return allowed;
}

qint64 Computing(qint64 aAllowed, double aSpeed)
{
    const double machineMs = kMachineMs + kMachineMsPerSecond * static_cast<double>(aAllowed) / 1000;
    return static_cast<qint64>(machineMs * aSpeed);
}

} // namespace

Breaches ReturnsInTime(const Schedule& aSchedule, const Observations& aSeen)
{
    return ForEachCall("returns in time", aSchedule, aSeen, [&aSeen](const CallView& aCall) {
        const qint64 allowed = Allowed(aCall);
        const qint64 computing = Computing(allowed, aSeen.speed);
        return aCall.seen.tookMs <= allowed + computing
                   ? QString()
                   : QStringLiteral("took %1 ms; %2 ms are allowed, and %3 ms for what the machine computes")
                         .arg(aCall.seen.tookMs)
                         .arg(allowed)
                         .arg(computing);
    });
}

} // namespace chaos
