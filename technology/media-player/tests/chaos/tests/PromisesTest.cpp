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

TEST(ReturnsInTime, AllowsWhatTheHeaderStatesAndWhatTheMachineComputes)
{
    OneCall run(Action::KillTestSource);
    run.call().tookMs = 15000;
    EXPECT_EQ(run.Broken(), QStringList());
    run.call().tookMs = 15000 + 20 * (400 + 15 * 20); // what the machine needs, at speed 20
    EXPECT_EQ(run.Broken(), QStringList());
    ++run.call().tookMs;
    EXPECT_EQ(run.Broken(), QStringList("returns in time"));
}

TEST(ReturnsInTime, AllowsUnansweredQuestionsOnlyWhereSomethingMayHang)
{
    OneCall run(Action::GetIndexStatus);
    run.call().after.names << MPL::MPL_MASS_STORAGE_SERVICE_NAME;
    run.call().tookMs = 25000;
    EXPECT_TRUE(run.Breaks("returns in time"));
    run.Plan(Action::Hangs, MPL::MPL_MASS_STORAGE_PROCESS_NAME);
    EXPECT_FALSE(run.Breaks("returns in time"));
    run.call().tookMs = 50000;
    EXPECT_TRUE(run.Breaks("returns in time"));
}

TEST(ReturnsInTime, AllowsAsLongAsTheBusStops)
{
    OneCall run(Action::ProbeBus);
    run.call().tookMs = 30000;
    EXPECT_TRUE(run.Breaks("returns in time"));
    run.Plan(Action::BusStops, {}, 30000);
    EXPECT_FALSE(run.Breaks("returns in time"));
}

TEST(TrueMeansSo, ALaunchedSourceOwnsItsName)
{
    OneCall run(Action::LaunchSource, kDisc);
    EXPECT_EQ(run.Broken(), QStringList("true means so"));
    run.call().after.names << kDiscService;
    EXPECT_EQ(run.Broken(), QStringList());
}

TEST(TrueMeansSo, WhatWasKilledMeanwhileNeedNotBeThere)
{
    OneCall run(Action::LaunchSource, kDisc);
    run.call().disturbed << kManager;
    EXPECT_TRUE(run.Breaks("true means so"));
    run.call().disturbed << kDisc;
    EXPECT_FALSE(run.Breaks("true means so"));
}

TEST(TrueMeansSo, AManagerThatRanBeforeRuns)
{
    OneCall run(Action::LaunchManager);
    run.call().before.processes << Process(kManager);
    EXPECT_TRUE(run.Breaks("true means so"));
    run.call().after.processes << Process(kManager);
    EXPECT_FALSE(run.Breaks("true means so"));
}

TEST(TrueMeansSo, WhatWasKilledIsGoneUnlessStartedAnew)
{
    OneCall run(Action::KillManager);
    run.call().after.processes << Process(MPL_TEST_MME_PROCESS_NAME);
    run.call().disturbed << MPL_TEST_MME_PROCESS_NAME;
    EXPECT_TRUE(run.Breaks("true means so"));
    run.call().disturbed << MPL_TEST_MME_PROCESS_NAME + kAnew;
    EXPECT_FALSE(run.Breaks("true means so"));
}

TEST(TrueMeansSo, FilesAreAsTheCallSays)
{
    OneCall copy(Action::UseFile);
    copy.call().evidence = "half";
    EXPECT_EQ(copy.Broken(), QStringList("true means so"));

    OneCall login(Action::AddPandoraLogin);
    login.call().evidence = MPL_TEST_PANDORA_USER_NAME_2;
    login.call().after.configuration = MPL_TEST_PANDORA_USER_NAME_1;
    EXPECT_EQ(login.Broken(), QStringList("true means so"));

    OneCall reset(Action::ClearState);
    reset.call().after.storedSource = kDiscService;
    EXPECT_EQ(reset.Broken(), QStringList("true means so"));

    OneCall cleaned(Action::SetEnvironment);
    cleaned.call().after.files = 1;
    EXPECT_EQ(cleaned.Broken(), QStringList("true means so"));
}

TEST(TrueMeansSo, TheLifecycleManagersServicesRunOrAreStopped)
{
    OneCall launch(Action::SlmLaunch);
    for (const QString& process : LifecycleProcesses()) {
        EXPECT_TRUE(launch.Breaks("true means so"));
        launch.call().after.processes.append({process, 1, true});
    }
    EXPECT_FALSE(launch.Breaks("true means so"));

    OneCall stop(Action::SlmStop);
    stop.call().after = launch.call().after;
    EXPECT_TRUE(stop.Breaks("true means so"));
}

TEST(FalseHasAReason, InACriticalLineAFailureOrTheHeader)
{
    OneCall silent(Action::LaunchManager);
    silent.call().wasTrue = false;
    silent.Log("debug", "MPL_TestEnvironment::LaunchMediaManagerProcess -- finished.");
    EXPECT_EQ(silent.Broken(), QStringList("false has a reason"));

    OneCall critical = silent;
    critical.Log("critical", "LaunchMediaManagerProcess() failed.");
    EXPECT_EQ(critical.Broken(), QStringList());

    OneCall failing = silent;
    failing.call().failures << "Expected: true";
    EXPECT_EQ(failing.Broken(), QStringList());
}

TEST(FalseHasAReason, AWaitHasMadeAllItsPauses)
{
    OneCall wait(Action::WaitForService, kDiscService);
    wait.call().wasTrue = false;
    for (int pause = 0; pause < 10; ++pause) {
        EXPECT_TRUE(wait.Breaks("false has a reason"));
        wait.Log("debug", "-- Service \"x\" not running, pausing for 2 seconds..");
    }
    EXPECT_FALSE(wait.Breaks("false has a reason"));
}

TEST(FalseHasAReason, AnAnswerNoIsTrue)
{
    OneCall probe(Action::ProbeBus);
    probe.call().wasTrue = false;
    EXPECT_TRUE(probe.Breaks("false has a reason"));
    probe.call().after.testBusAnswers = false;
    EXPECT_FALSE(probe.Breaks("false has a reason"));

    OneCall gone(Action::AllSourcesTerminated);
    gone.call().wasTrue = false;
    EXPECT_TRUE(gone.Breaks("false has a reason"));
    gone.call().before.processes << Process(kDisc);
    EXPECT_FALSE(gone.Breaks("false has a reason"));
}

TEST(FailureLeavesArguments, OfFailedCallsOnly)
{
    OneCall run(Action::GetIndexStatus);
    run.call().changed << "aStatus";
    EXPECT_FALSE(run.Breaks("failure leaves arguments"));
    run.call().wasTrue = false;
    EXPECT_TRUE(run.Breaks("failure leaves arguments"));
}

TEST(NothingIsLeft, OfWhatTheLibraryHadToEnd)
{
    OneCall run(Action::TearDownFixture);
    run.call().wasTrue = false; // said or not
    run.call().after.processes.append({kDisc, 1, true});
    run.call().after.processes.append(Process("hmi_main"));
    EXPECT_FALSE(run.Breaks("nothing is left"));
    run.call().after.processes.append(Process(kDisc));
    EXPECT_TRUE(run.Breaks("nothing is left"));
}

TEST(DatabaseIsWhole, UnlessTheRunHasDamagedIt)
{
    OneCall run(Action::KillHmi);
    run.call().after.database = "damaged";
    EXPECT_EQ(run.Broken(), QStringList("database is whole"));
    run.Plan(Action::DatabaseIsDamaged);
    EXPECT_EQ(run.Broken(), QStringList());
}

TEST(ConfigurationIsOldOrNew, NeverHalf)
{
    OneCall run(Action::LaunchAllSources);
    run.call().wasTrue = false;
    run.call().failures << "Expected: true";
    for (const QString& whole : {QString("absent"), MPL_TEST_PANDORA_USER_NAME_1}) {
        run.call().after.configuration = whole;
        EXPECT_EQ(run.Broken(), QStringList());
    }
    for (const char* broken : {"half", ""}) {
        run.call().after.configuration = broken;
        EXPECT_EQ(run.Broken(), QStringList("configuration is old or new")) << broken;
    }
    run.call().before.configuration = MPL_TEST_PANDORA_USER_NAME_1;
    run.call().after.configuration = "absent";
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

} // namespace
} // namespace chaos
