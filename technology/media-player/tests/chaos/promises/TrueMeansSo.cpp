#include "Shown.h"
#include "Stack.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

namespace chaos
{
namespace
{

QString TestBusIsThere(const CallView& aCall)
{
    return aCall.seen.after.testBusAnswers || aCall.BusWasDisturbed()
               ? QString()
               : QStringLiteral("true, but the private bus does not answer");
}

QStringList Sources()
{
    return {MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.begin(), MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.end()};
}

// Started, though nobody has waited for its name when the test failed for it.
QString TestSourceIsUp(const CallView& aCall)
{
    return aCall.seen.failures.isEmpty() ? Up(aCall, MPL_TEST_MEDIA_SOURCE_PROCESS_NAME) : QString();
}

QString LoginIsWritten(const CallView& aCall)
{
    return aCall.seen.after.configuration == aCall.seen.evidence
               ? QString()
               : QStringLiteral("true, but the configuration is %1").arg(aCall.seen.after.configuration);
}

QString CopyIsWhole(const CallView& aCall)
{
    return aCall.seen.evidence == QLatin1String("whole")
               ? QString()
               : QStringLiteral("true, but the copy is %1").arg(aCall.seen.evidence);
}

// The simulated manager stores a source before it answers, unless it is made to answer without doing
// anything: any answer but an error counts as done.
QString IsActive(const CallView& aCall)
{
    const bool lies = Has(aCall.schedule, Action::AnswersWrongly);
    const bool canStore =
        aCall.seen.after.database == QLatin1String("whole") && !Has(aCall.schedule, Action::DiskIsFull) &&
        !Has(aCall.schedule, Action::DatabaseIsLocked) && !Has(aCall.schedule, Action::DatabaseIsDamaged);
    return lies || !canStore || aCall.seen.after.storedSource == aCall.step.object
               ? Owned(aCall, MPL::MPL_MEDIA_MANAGER_SERVICE_NAME)
               : QStringLiteral("true, but the active source is \"%1\"").arg(aCall.seen.after.storedSource);
}

QString Sterile(const CallView& aCall)
{
    return Either(Gone(aCall, StackProcesses()), Reset(aCall));
}

QString Problem(const CallView& aCall)
{
    switch (aCall.step.action) {
    case Action::LaunchBus:
    case Action::ProbeBus:
        return TestBusIsThere(aCall);
    case Action::SetUpFixture:
    case Action::LaunchManager:
        return Up(aCall, MPL_TEST_MEDIAMANAGER_PROCESS_NAME);
    case Action::LaunchSource:
    case Action::LaunchRemoteSource:
        return Owned(aCall, ServiceOf(aCall.step.object));
    case Action::LaunchAllSources:
        return AllOwned(aCall, {MPL::MPL_MASS_STORAGE_SERVICE_NAME, MPL::MPL_PANDORA_SERVICE_NAME,
                                MPL::MPL_SPOTIFY_SERVICE_NAME});
    case Action::LaunchTestSource:
        return TestSourceIsUp(aCall);
    case Action::WaitForService:
    case Action::WaitForObjects:
        return Owned(aCall, aCall.step.object);
    case Action::CreateManagerProxy:
        return Owned(aCall, MPL::MPL_MEDIA_MANAGER_SERVICE_NAME);
    case Action::CreateSimulatorProxy:
        return Owned(aCall, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME);
    case Action::GetIndexStatus:
    case Action::GetIndexProgress:
    case Action::WaitForIndex:
    case Action::GetCapability:
    case Action::GetCapabilities:
    case Action::GetActiveStatus:
        return Owned(aCall, MPL::MPL_MASS_STORAGE_SERVICE_NAME);
    case Action::SetActiveSource:
        return IsActive(aCall);
    case Action::KillManager:
        return Gone(aCall, {MPL_TEST_MEDIAMANAGER_PROCESS_NAME, MPL_TEST_MME_PROCESS_NAME});
    case Action::KillSources:
    case Action::AllSourcesTerminated:
        return Gone(aCall, Sources());
    case Action::KillTestSource:
        return Gone(aCall, {MPL_TEST_MEDIA_SOURCE_PROCESS_NAME});
    case Action::KillHmi:
        return Gone(aCall, {QStringLiteral("hmi_main"), QStringLiteral("hmi_cluster")});
    case Action::AllSourcesAlive:
        return Running(aCall, Sources());
    case Action::SlmLaunch:
        return Running(aCall, LifecycleProcesses());
    case Action::SlmStop:
        return Stopped(aCall, LifecycleProcesses());
    case Action::SetEnvironment:
        return IsEmptied(aCall);
    case Action::CleanEnvironment:
        return FilesAre(aCall, -1);
    case Action::UseFile:
        return CopyIsWhole(aCall);
    case Action::AddPandoraLogin:
        return LoginIsWritten(aCall);
    case Action::ClearState:
        return Reset(aCall);
    case Action::Sterilize:
        return Sterile(aCall);
    default:
        return {};
    }
}

} // namespace

Breaches TrueMeansSo(const Schedule& aSchedule, const Observations& aSeen)
{
    return ForEachCall("true means so", aSchedule, aSeen,
                       [](const CallView& aCall) { return aCall.seen.wasTrue ? Problem(aCall) : QString(); });
}

} // namespace chaos
