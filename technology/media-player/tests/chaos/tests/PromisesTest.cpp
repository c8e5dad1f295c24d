// Each promise is broken on purpose, and seen to be; and what only looks like a breach is none.
#include "OneCall.h"
#include "Stack.h"

#include <gtest/gtest.h>

namespace chaos
{
namespace
{

const QString kManager = MPL_TEST_MEDIAMANAGER_PROCESS_NAME;
const QString kDisc = MPL::MPL_DISC_PROCESS_NAME;
const QString kDiscService = MPL::MPL_DISC_SERVICE_NAME;

SeenProcess Process(const QString& aName)
{
    return {aName, 4242, false};
}

// What the machine needs besides, at speed 20.
constexpr qint64 Computing(qint64 aSeconds)
{
    return 20 * (400 + 20 * aSeconds);
}

TEST(ReturnsInTime, AllowsWhatTheHeaderStatesAndWhatTheMachineComputes)
{
    OneCall run(Action::WaitForService, kDiscService);
    run.TheCall().after.names << kDiscService;
    run.TheCall().tookMs = 20000 + Computing(20);
    EXPECT_EQ(run.Broken(), QStringList());
    ++run.TheCall().tookMs;
    EXPECT_EQ(run.Broken(), QStringList("returns in time"));
}

TEST(ReturnsInTime, AllowsAHardKillOnlyForWhatResists)
{
    OneCall run(Action::KillTestSource);
    run.TheCall().tookMs = 2000 + Computing(2) + 1;
    EXPECT_TRUE(run.Breaks("returns in time"));
    run.Plan(Action::IgnoresSigterm, MPL_TEST_MEDIA_SOURCE_PROCESS_NAME);
    EXPECT_FALSE(run.Breaks("returns in time"));
    run.TheCall().tookMs = 17000 + Computing(17) + 1;
    EXPECT_TRUE(run.Breaks("returns in time"));
}

TEST(ReturnsInTime, AllowsUnansweredQuestionsOnlyWhereSomethingMayHang)
{
    OneCall run(Action::GetIndexStatus);
    run.TheCall().after.names << MPL::MPL_MASS_STORAGE_SERVICE_NAME;
    run.TheCall().tookMs = 25000 + Computing(25);
    EXPECT_TRUE(run.Breaks("returns in time"));
    run.Plan(Action::Hangs, MPL::MPL_MASS_STORAGE_PROCESS_NAME);
    EXPECT_FALSE(run.Breaks("returns in time"));
    ++run.TheCall().tookMs;
    EXPECT_TRUE(run.Breaks("returns in time"));
}

TEST(ReturnsInTime, AllowsAsLongAsTheBusStops)
{
    OneCall run(Action::ProbeBus);
    run.TheCall().tookMs = 30000;
    EXPECT_TRUE(run.Breaks("returns in time"));
    run.Plan(Action::BusStops, {}, 30000);
    EXPECT_FALSE(run.Breaks("returns in time"));
}

TEST(TrueMeansSo, ALaunchedSourceOwnsItsName)
{
    OneCall run(Action::LaunchSource, kDisc);
    EXPECT_EQ(run.Broken(), QStringList("true means so"));
    run.TheCall().after.names << kDiscService;
    EXPECT_EQ(run.Broken(), QStringList());
}

TEST(TrueMeansSo, WhatWasKilledMeanwhileNeedNotBeThere)
{
    OneCall run(Action::LaunchSource, kDisc);
    run.TheCall().disturbed << kManager;
    EXPECT_TRUE(run.Breaks("true means so"));
    run.TheCall().disturbed << kDisc;
    EXPECT_FALSE(run.Breaks("true means so"));
}

TEST(TrueMeansSo, AManagerThatRanBeforeRuns)
{
    OneCall run(Action::LaunchManager);
    run.TheCall().before.processes << Process(kManager);
    EXPECT_TRUE(run.Breaks("true means so"));
    run.TheCall().after.processes << Process(kManager);
    EXPECT_FALSE(run.Breaks("true means so"));
}

TEST(TrueMeansSo, WhatWasKilledIsGoneUnlessStartedAnew)
{
    OneCall run(Action::KillManager);
    run.TheCall().after.processes << Process(MPL_TEST_MME_PROCESS_NAME);
    run.TheCall().disturbed << MPL_TEST_MME_PROCESS_NAME;
    EXPECT_TRUE(run.Breaks("true means so"));
    run.TheCall().disturbed << MPL_TEST_MME_PROCESS_NAME + kAnew;
    EXPECT_FALSE(run.Breaks("true means so"));
}

TEST(TrueMeansSo, FilesAreAsTheCallSays)
{
    OneCall copy(Action::UseFile);
    copy.TheCall().evidence = "half";
    EXPECT_EQ(copy.Broken(), QStringList("true means so"));

    OneCall login(Action::AddPandoraLogin);
    login.TheCall().evidence = MPL_TEST_PANDORA_USER_NAME_2;
    login.TheCall().after.configuration = MPL_TEST_PANDORA_USER_NAME_1;
    EXPECT_EQ(login.Broken(), QStringList("true means so"));

    OneCall reset(Action::ClearState);
    reset.TheCall().after.storedSource = kDiscService;
    EXPECT_EQ(reset.Broken(), QStringList("true means so"));

    OneCall cleaned(Action::SetEnvironment);
    cleaned.TheCall().after.files = 1;
    EXPECT_EQ(cleaned.Broken(), QStringList("true means so"));
    cleaned.TheCall().after.processes << Process(kManager); // may have written it since
    EXPECT_EQ(cleaned.Broken(), QStringList());
}

TEST(TrueMeansSo, TheLifecycleManagersServicesRunOrAreStopped)
{
    OneCall launch(Action::SlmLaunch);
    for (const QString& process : LifecycleProcesses()) {
        EXPECT_TRUE(launch.Breaks("true means so"));
        launch.TheCall().after.processes.append({process, 1, true});
    }
    EXPECT_FALSE(launch.Breaks("true means so"));

    OneCall stop(Action::SlmStop);
    stop.TheCall().after = launch.TheCall().after;
    EXPECT_TRUE(stop.Breaks("true means so"));
}

TEST(FalseHasAReason, InACriticalLineAFailureOrTheHeader)
{
    OneCall silent(Action::LaunchManager);
    silent.TheCall().wasTrue = false;
    silent.Log("debug", "MPL_TestEnvironment::LaunchMediaManagerProcess -- finished.");
    EXPECT_EQ(silent.Broken(), QStringList("false has a reason"));

    OneCall critical = silent;
    critical.Log("critical", "LaunchMediaManagerProcess() failed.");
    EXPECT_EQ(critical.Broken(), QStringList());

    OneCall failing = silent;
    failing.TheCall().failures << "Expected: true";
    EXPECT_EQ(failing.Broken(), QStringList());
}

TEST(FalseHasAReason, AWaitHasMadeAllItsPauses)
{
    OneCall wait(Action::WaitForService, kDiscService);
    wait.TheCall().wasTrue = false;
    for (int pause = 0; pause < 10; ++pause) {
        EXPECT_TRUE(wait.Breaks("false has a reason"));
        wait.Log("debug", "-- Service \"x\" not running, pausing for 2 seconds..");
    }
    EXPECT_FALSE(wait.Breaks("false has a reason"));
}

TEST(FalseHasAReason, AnAnswerNoIsTrue)
{
    OneCall probe(Action::ProbeBus);
    probe.TheCall().wasTrue = false;
    EXPECT_TRUE(probe.Breaks("false has a reason"));
    probe.TheCall().after.testBusAnswers = false;
    EXPECT_FALSE(probe.Breaks("false has a reason"));

    OneCall gone(Action::AllSourcesTerminated);
    gone.TheCall().wasTrue = false;
    EXPECT_TRUE(gone.Breaks("false has a reason"));
    gone.TheCall().before.processes << Process(kDisc);
    EXPECT_FALSE(gone.Breaks("false has a reason"));
}

TEST(FailureLeavesArguments, OfFailedCallsOnly)
{
    OneCall run(Action::GetIndexStatus);
    run.TheCall().changed << "aStatus";
    EXPECT_FALSE(run.Breaks("failure leaves arguments"));
    run.TheCall().wasTrue = false;
    EXPECT_TRUE(run.Breaks("failure leaves arguments"));
}

TEST(NothingIsLeft, OfWhatTheLibraryHadToEnd)
{
    OneCall run(Action::TearDownFixture);
    run.TheCall().wasTrue = false; // said or not
    run.TheCall().after.processes.append({kDisc, 1, true});
    run.TheCall().after.processes.append(Process("hmi_main"));
    EXPECT_FALSE(run.Breaks("nothing is left"));
    run.TheCall().after.processes.append(Process(kDisc));
    EXPECT_TRUE(run.Breaks("nothing is left"));
}

TEST(DatabaseIsWhole, UnlessTheRunHasDamagedIt)
{
    OneCall run(Action::KillHmi);
    run.TheCall().after.database = "damaged";
    EXPECT_EQ(run.Broken(), QStringList("database is whole"));
    run.Plan(Action::DatabaseIsDamaged);
    EXPECT_EQ(run.Broken(), QStringList());
}

TEST(ConfigurationIsOldOrNew, NeverHalf)
{
    OneCall run(Action::LaunchAllSources);
    run.TheCall().wasTrue = false;
    run.TheCall().failures << "Expected: true";
    for (const QString& whole : {QString("absent"), MPL_TEST_PANDORA_USER_NAME_1}) {
        run.TheCall().after.configuration = whole;
        EXPECT_EQ(run.Broken(), QStringList());
    }
    for (const char* broken : {"half", ""}) {
        run.TheCall().after.configuration = broken;
        EXPECT_EQ(run.Broken(), QStringList("configuration is old or new")) << broken;
    }
    run.TheCall().before.configuration = MPL_TEST_PANDORA_USER_NAME_1;
    run.TheCall().after.configuration = "absent";
    EXPECT_EQ(run.Broken(), QStringList("configuration is old or new"));
}

TEST(ProgramEndsWell, NeitherCrashingNorHangingNorFailingAtItsEnd)
{
    OneCall run(Action::KillHmi);
    EXPECT_EQ(run.Broken(), QStringList());
    run.seen.exitStatus = 139;
    EXPECT_EQ(run.Broken(), QStringList("program ends well"));
    run.seen.exitStatus = 0;
    run.seen.isComplete = false;
    EXPECT_EQ(run.Broken(), QStringList("program ends well"));
    run.seen.isComplete = true;
    run.seen.wasHung = true;
    EXPECT_EQ(run.Broken(), QStringList("program ends well"));
}

TEST(Observations, TellARunThatCrashedFromNoRun)
{
    Observations seen;
    seen.exitStatus = 125;
    EXPECT_TRUE(seen.WasNoRun());
    seen.begun = 1;
    EXPECT_FALSE(seen.WasNoRun());
    seen.begun = 0;
    seen.exitStatus = 139;
    EXPECT_FALSE(seen.WasNoRun());
}

} // namespace
} // namespace chaos
