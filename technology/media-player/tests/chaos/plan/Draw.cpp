// A schedule from a seed: the way a test program goes, bring-up to hand-back, and what goes wrong on it.
#include "Dice.h"
#include "DrawFault.h"
#include "Schedule.h"
#include "Stack.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

#include <algorithm>

namespace chaos
{
namespace
{

Step MakeCall(Dice& aDice, Action aAction)
{
    QVector<QString> sources;
    for (const QString& source : MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES) {
        sources << source;
    }
    switch (aAction) {
    case Action::LaunchSource:
    case Action::LaunchRemoteSource:
        return {aAction, aDice.Chance(2) ? QStringLiteral("media_source_unknown") : aDice.Pick(sources)};
    case Action::WaitForService:
    case Action::WaitForObjects:
    case Action::SetActiveSource:
        return {aAction, ServiceOf(aDice.Pick(sources))};
    case Action::SetCredentials:
        return {aAction, MPL_TEST_PANDORA_USER_NAME_2};
    default:
        return {aAction, {}};
    }
}

const QVector<Action>& MiddleCalls()
{
    static const QVector<Action> kCalls{Action::LaunchBus,
                                        Action::ProbeBus,
                                        Action::SetEnvironment,
                                        Action::CleanEnvironment,
                                        Action::UseFile,
                                        Action::UseFile,
                                        Action::SetCredentials,
                                        Action::AddPandoraLogin,
                                        Action::AddPandoraLogin,
                                        Action::ClearState,
                                        Action::LaunchManager,
                                        Action::LaunchManager,
                                        Action::LaunchSource,
                                        Action::LaunchSource,
                                        Action::LaunchSource,
                                        Action::LaunchRemoteSource,
                                        Action::LaunchAllSources,
                                        Action::LaunchTestSource,
                                        Action::LaunchTestSource,
                                        Action::LaunchRecognition,
                                        Action::StopRecognition,
                                        Action::KillManager,
                                        Action::KillSources,
                                        Action::KillTestSource,
                                        Action::KillHmi,
                                        Action::WaitForService,
                                        Action::WaitForObjects,
                                        Action::AllSourcesAlive,
                                        Action::CreateManagerProxy,
                                        Action::CreateSimulatorProxy,
                                        Action::AllSourcesTerminated,
                                        Action::GetIndexStatus,
                                        Action::GetIndexProgress,
                                        Action::WaitForIndex,
                                        Action::GetCapability,
                                        Action::GetCapabilities,
                                        Action::GetActiveStatus,
                                        Action::SetActiveSource,
                                        Action::SetActiveSource,
                                        Action::Sterilize,
                                        Action::SlmLaunch,
                                        Action::SlmStop,
                                        Action::SlmLaunchTuners,
                                        Action::SlmStopTuners};
    return kCalls;
}

QVector<Step> DrawCalls(Dice& aDice)
{
    const bool byFixture = aDice.Chance(50);
    QVector<Action> calls;
    if (aDice.Chance(92)) {
        calls << Action::LaunchBus;
    }
    if (byFixture) {
        calls << Action::SetUpFixture;
    } else {
        calls << Action::SetEnvironment << Action::LaunchManager;
    }
    for (int left = 1 + aDice.Roll(6); left > 0; --left) {
        calls << aDice.Pick(MiddleCalls());
    }
    calls << (byFixture ? Action::TearDownFixture : Action::Sterilize);
    QVector<Step> steps;
    for (const Action call : calls) {
        steps << MakeCall(aDice, call);
    }
    return steps;
}

} // namespace

Schedule DrawSchedule(quint64 aSeed)
{
    Dice dice(aSeed);
    Schedule schedule;
    schedule.seed = aSeed;
    schedule.hasLifecycleManager = dice.Chance(10);
    schedule.steps = DrawCalls(dice);
    for (int left = 1 + dice.Roll(4); left > 0; --left) {
        const Step fault = DrawFault(dice);
        // Never last: behind the hand-back nothing can go wrong any more.
        schedule.steps.insert(dice.Roll(schedule.steps.size()), fault);
    }
    for (int i = 0; i < schedule.steps.size(); ++i) {
        schedule.steps[i].number = i + 1;
    }
    return schedule;
}

} // namespace chaos
