// The times that the library's header states, in milliseconds of the program's own clock.
#include "CallView.h"

#include <QHash>

namespace chaos
{
namespace
{

// What each question may cost that nobody answers.
constexpr qint64 kBusQuestion = 5000;
constexpr qint64 kLookUp = 5000;
constexpr qint64 kMethod = 25000;
// The machine computes no faster when time does: what processes need to start and to answer, and how late
// each of the pauses, which mostly last a second, may end.
constexpr double kMachineMs = 400;
constexpr double kMachineMsPerSecond = 20;

struct Limit {
    qint64 stated = 0;
    int busQuestions = 0;
    int lookUps = 0;
    int methods = 0;
};

constexpr qint64 kReset = 1000;         // ClearMPLState: "under half a second more" for each of two accesses
constexpr qint64 kKill = 15000;         // KillMediaProcess
constexpr qint64 kService = 20000;      // WaitForServiceRunning
constexpr qint64 kObjects = 1000;       // WaitForServiceObjects
constexpr qint64 kLifecycleJob = 30000; // one job of the lifecycle manager
constexpr int kServiceQuestions = 11;   // of WaitForServiceRunning
constexpr int kObjectLookUps = 10;      // of WaitForServiceObjects
constexpr Limit kSource{kService + kReset, kServiceQuestions};
constexpr Limit kManager{23000 + kReset, kServiceQuestions, kObjectLookUps};
constexpr qint64 kSterile = 8 * kKill + kReset;

const QHash<int, Limit>& Limits()
{
    static const QHash<int, Limit> kLimits = [] {
        QHash<int, Limit> limits;
        const auto set = [&limits](Action aAction, const Limit& aLimit) {
            limits.insert(static_cast<int>(aAction), aLimit);
        };
        set(Action::LaunchBus, {30000});
        set(Action::SetUpFixture,
            {2 * kKill + 7 * kLifecycleJob + kSterile + kManager.stated, kServiceQuestions, kObjectLookUps});
        set(Action::TearDownFixture, {kSterile + kReset + 7 * kLifecycleJob});
        set(Action::Sterilize, {kSterile});
        set(Action::ClearState, {kReset});
        set(Action::LaunchManager, kManager);
        set(Action::LaunchSource, kSource);
        set(Action::LaunchRemoteSource, kSource);
        set(Action::LaunchTestSource, kSource);
        set(Action::LaunchAllSources, {3 * (41000 + 2 * kReset), 6 * kServiceQuestions, 3 * kObjectLookUps});
        set(Action::KillManager, {2 * kKill});
        set(Action::KillSources, {5 * kKill});
        set(Action::KillTestSource, {kKill});
        set(Action::KillHmi, {2 * kKill});
        set(Action::WaitForService, {kService, kServiceQuestions});
        set(Action::WaitForObjects, {kObjects, 0, kObjectLookUps});
        set(Action::CreateManagerProxy, {kObjects, 1, kObjectLookUps, 1});
        set(Action::CreateSimulatorProxy, {0, 1, 1, 1});
        set(Action::GetIndexStatus, {0, 0, 0, 1});
        set(Action::GetIndexProgress, {0, 0, 0, 1});
        set(Action::WaitForIndex, {500000, 0, 0, 3});
        set(Action::GetCapability, {0, 0, 0, 1});
        set(Action::GetCapabilities, {0, 1, 1, 7});
        set(Action::GetActiveStatus, {0, 0, 0, 1});
        set(Action::SetActiveSource, {0, 0, 0, 2});
        set(Action::SlmLaunch, {kReset + 7 * kLifecycleJob});
        set(Action::SlmStop, {7 * kLifecycleJob});
        set(Action::SlmLaunchTuners, {2 * kLifecycleJob});
        set(Action::SlmStopTuners, {2 * kLifecycleJob});
        return limits;
    }();
    return kLimits;
}

// How long the bus itself was not there, which a probe of it waits for.
qint64 BusStops(const Schedule& aSchedule)
{
    qint64 stops = 0;
    for (const Step& step : aSchedule.steps) {
        const bool isStop = step.action == Action::BusStops || step.action == Action::BusIsSlow;
        stops += isStop ? step.milliseconds : 0;
    }
    return stops;
}

} // namespace

Breaches ReturnsInTime(const Schedule& aSchedule, const Observations& aSeen)
{
    return ForEachCall("returns in time", aSchedule, aSeen, [&](const CallView& aCall) {
        const Limit limit = Limits().value(static_cast<int>(aCall.step.action));
        qint64 allowed = limit.stated + BusStops(aSchedule);
        if (aCall.MayHang()) {
            allowed += limit.busQuestions * kBusQuestion + limit.lookUps * kLookUp + limit.methods * kMethod;
        }
        const double machineMs = kMachineMs + kMachineMsPerSecond * static_cast<double>(allowed) / 1000;
        const auto computing = static_cast<qint64>(machineMs * aSeen.speed);
        return aCall.seen.tookMs <= allowed + computing
                   ? QString()
                   : QStringLiteral("took %1 ms; %2 ms are allowed, and %3 ms for what the machine computes")
                         .arg(aCall.seen.tookMs)
                         .arg(allowed)
                         .arg(computing);
    });
}

} // namespace chaos
