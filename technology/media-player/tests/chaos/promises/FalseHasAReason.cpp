#include "CallView.h"
#include "Stack.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

#include <algorithm>

namespace chaos
{
namespace
{

// A wait for a name that ran out of its ten pauses.
bool WaitedInVain(const CallView& aCall)
{
    constexpr int kPauses = 10;
    return std::count_if(aCall.seen.log.begin(), aCall.seen.log.end(), [](const LogLine& aLine) {
               return aLine.text.contains(QLatin1String("not running, pausing for 2 seconds"));
           }) >= kPauses;
}

bool DiskWasFull(const CallView& aCall)
{
    return Has(aCall.schedule, Action::DiskIsFull);
}

bool AnyRuns(const Moment& aMoment)
{
    return std::any_of(MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.begin(), MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.end(),
                       [&aMoment](const QString& aProcess) { return aMoment.Runs(aProcess); });
}

bool AllRun(const Moment& aMoment)
{
    return std::all_of(MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.begin(), MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.end(),
                       [&aMoment](const QString& aProcess) { return aMoment.Runs(aProcess); });
}

// The name was not there for all of the call, or whoever owns it does not show the object.
bool HadNoProxy(const CallView& aCall, const QString& aService)
{
    return !aCall.seen.before.Owns(aService) || !aCall.seen.after.Owns(aService) || aCall.MayHang() ||
           Has(aCall.schedule, Action::ExportsTwoObjects);
}

// Reasons that the header names beside critical lines.
bool IsDocumented(const CallView& aCall)
{
    const Moment& before = aCall.seen.before;
    const Moment& after = aCall.seen.after;
    switch (aCall.step.action) {
    case Action::LaunchBus:
        return aCall.Logged(QStringLiteral("Considering the start-up process failed"));
    case Action::ProbeBus:
        return !before.testBusAnswers || !after.testBusAnswers || aCall.BusWasDisturbed();
    case Action::LaunchSource:
    case Action::LaunchRemoteSource:
        return WaitedInVain(aCall) || ServiceOf(aCall.step.object).isEmpty();
    case Action::WaitForService:
        return WaitedInVain(aCall);
    case Action::WaitForObjects:
        return aCall.Logged(QStringLiteral("WaitForServiceObjects timed out"));
    case Action::AllSourcesAlive:
        return !AllRun(before) || !AllRun(after);
    case Action::AllSourcesTerminated:
        return AnyRuns(before) || AnyRuns(after);
    case Action::CreateManagerProxy:
        return HadNoProxy(aCall, MPL::MPL_MEDIA_MANAGER_SERVICE_NAME);
    case Action::CreateSimulatorProxy:
        return HadNoProxy(aCall, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME);
    case Action::SetEnvironment:
        return after.files < 0 || DiskWasFull(aCall);
    case Action::CleanEnvironment:
        return after.files >= 0;
    case Action::UseFile:
        return aCall.seen.evidence == QLatin1String("was there") || DiskWasFull(aCall) || before.files < 0;
    case Action::ClearState:
        return aCall.Logged(QStringLiteral("ClearMPLState result= false"));
    case Action::SetActiveSource:
        return true; // a source that the manager does not list
    case Action::GetCapabilities:
        return !before.Owns(MPL::MPL_MASS_STORAGE_SERVICE_NAME) || aCall.MayHang() ||
               aCall.BusWasDisturbed() || aCall.WasDisturbed(MPL::MPL_MASS_STORAGE_PROCESS_NAME);
    case Action::WaitForIndex:
        return aCall.seen.tookMs >= 500000;
    default:
        return false;
    }
}

} // namespace

Breaches FalseHasAReason(const Schedule& aSchedule, const Observations& aSeen)
{
    return ForEachCall("false has a reason", aSchedule, aSeen, [](const CallView& aCall) {
        const bool isExplained = aCall.seen.wasTrue || aCall.LoggedCritical() ||
                                 !aCall.seen.failures.isEmpty() || IsDocumented(aCall);
        return isExplained ? QString()
                           : QStringLiteral("false, with no critical line and no documented reason");
    });
}

} // namespace chaos
