#include "DoublesTest.h"
#include <MPL_TestEnvironment.h>

using namespace MPL::Doubles;

namespace
{

QStringList Repeated(const QString& aLine, int aTimes)
{
    QStringList lines;
    for (int n = 0; n < aTimes; ++n) {
        lines << aLine;
    }
    return lines;
}

const QString kKillingMme = "debug: MPL_TestEnvironment::KillMediaProcess  media_mme";
const QString kKillingManager = "debug: MPL_TestEnvironment::KillMediaProcess  media_manager";
const QString kKillingStack = "debug: MPL_TestEnvironment::KillMediaManagerProcess";

using KillMediaProcess = DoublesTest;

TEST_F(KillMediaProcess, SignalsOnceAndDoesNotWaitWhenNothingRuns)
{
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaProcess("media_mme"));
    EXPECT_EQ(Text(Notes()), Text({kKillingMme, "kill media_mme TERM"}));
}

TEST_F(KillMediaProcess, EscalatesAfterTenPassesAndReportsWhatStays)
{
    QStringList expected = QStringList{kKillingMme, "kill media_mme TERM"} + Repeated("sleep 1000 ms", 10) +
                           QStringList{"debug: Couldn't kill process  media_mme  with SIGTERM. Sending "
                                       "SIGKILL instead.",
                                       "kill media_mme KILL", "sleep 5000 ms"};
    World().processes["media_mme"] = 7;
    World().ignoreTerm << "media_mme";
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaProcess("media_mme"));
    EXPECT_EQ(Text(Notes()), Text(expected));

    ClearNotes();
    MakeImmortal("media_mme");
    EXPECT_FALSE(MPL_TestEnvironment::KillMediaProcess("media_mme"));
    expected << "critical: Failed to kill process  media_mme";
    EXPECT_EQ(Text(Notes()), Text(expected));
}

TEST_F(KillMediaProcess, SparesSigkillWhenTheLastPassWasEnough)
{
    World().processes["media_mme"] = 7;
    World().ignoreTerm << "media_mme";
    VirtualTime::OnSleep([] {
        if (VirtualTime::Slept() == 10000) {
            World().processes.clear();
        }
    });
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaProcess("media_mme"));
    EXPECT_EQ(Text(Notes("kill")), "kill media_mme TERM");
    EXPECT_EQ(VirtualTime::Slept(), 10000);
}

TEST_F(KillMediaProcess, SignalsARestartedProcessAgain)
{
    World().processes["media_mme"] = 7;
    World().onKill = [](const QString& aName, bool) {
        if (Notes("kill").size() < 3) {
            World().processes[aName] = 100 + static_cast<int>(Notes("kill").size());
        }
    };
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaProcess("media_mme"));
    EXPECT_EQ(Text(Notes()), Text({kKillingMme, "kill media_mme TERM", "kill media_mme TERM", "sleep 1000 ms",
                                   "kill media_mme TERM", "sleep 1000 ms"}));
}

using KillingTheStack = DoublesTest;

TEST_F(KillingTheStack, TouchesNothingThatDoesNotRun)
{
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess());
    EXPECT_EQ(Text(Notes()), Text({kKillingStack}));
}

TEST_F(KillingTheStack, StopsTheMountServiceEvenWhenTheManagerStays)
{
    World().processes = {{"media_manager", 7}, {"media_mme", 8}};
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess());
    EXPECT_EQ(Text(Notes()),
              Text({kKillingStack, kKillingManager, "kill media_manager TERM",
                    "debug: MPL_TestEnvironment::KillMediaManagerProcess -- MediaManager result= true",
                    kKillingMme, "kill media_mme TERM",
                    "debug: MPL_TestEnvironment::KillMediaManagerProcess -- MME result= true"}));

    ClearNotes();
    MakeImmortal("media_manager");
    World().processes["media_mme"] = 8;
    EXPECT_FALSE(MPL_TestEnvironment::KillMediaManagerProcess());
    EXPECT_EQ(Text(Notes("debug: MPL_TestEnvironment::KillMediaManagerProcess --")),
              Text({"debug: MPL_TestEnvironment::KillMediaManagerProcess -- MediaManager result= false",
                    "debug: MPL_TestEnvironment::KillMediaManagerProcess -- MME result= true"}));
    EXPECT_EQ(World().processes.keys(), QStringList{"media_manager"});
}

TEST_F(KillingTheStack, EndsAtTheFirstSourceThatStays)
{
    MakeImmortal("media_source_apple");
    EXPECT_FALSE(MPL_TestEnvironment::KillMediaSourceProcess());
    EXPECT_EQ(Text(Notes("kill")), Text({"kill media_source_mass_storage TERM",
                                         "kill media_source_apple TERM", "kill media_source_apple KILL"}));
    EXPECT_EQ(Notes().last(), "debug: MPL_TestEnvironment::KillMediaSourceProcess result= false");

    ClearNotes();
    World().processes.clear();
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaSourceProcess());
    EXPECT_EQ(Text(Notes("kill")), Text({"kill media_source_mass_storage TERM",
                                         "kill media_source_apple TERM", "kill media_source_pandora TERM",
                                         "kill media_source_disc TERM", "kill media_source_spotify TERM"}));
    EXPECT_EQ(Notes().last(), "debug: MPL_TestEnvironment::KillMediaSourceProcess result= true");
}

TEST_F(KillingTheStack, AsksTheOthersOnceAndTheRecognitionServerNever)
{
    EXPECT_TRUE(MPL_TestEnvironment::KillTestMediaSourceProcess());
    EXPECT_TRUE(MPL_TestEnvironment::StopRecognitionServerService());
    EXPECT_TRUE(MPL_TestEnvironment::LaunchRecognitionServer());
    Starts().failing << "/opt/talvex/bin/recognition-server";
    EXPECT_FALSE(MPL_TestEnvironment::LaunchRecognitionServer());
    EXPECT_EQ(Text(Notes()),
              Text({"debug: MPL_TestEnvironment::KillMediaProcess  test_media_source",
                    "kill test_media_source TERM",
                    "debug: MPL_TestEnvironment::KillTestMediaSourceProcess result= true",
                    "debug: MPL_TestEnvironment::StopRecognitionServerService",
                    "kill recognition-server KILL", "debug: MPL_TestEnvironment::LaunchRecognitionServer",
                    "start /opt/talvex/bin/recognition-server",
                    "debug: MPL_TestEnvironment::LaunchRecognitionServer",
                    "start /opt/talvex/bin/recognition-server"}));
}

TEST_F(KillingTheStack, EndsTheDisplayProcessesUpToTheFirstThatStays)
{
    EXPECT_TRUE(MPL_TestEnvironment::KillHmiProcesses());
    MakeImmortal("hmi_main");
    EXPECT_FALSE(MPL_TestEnvironment::KillHmiProcesses());
    EXPECT_EQ(Text(Notes("kill")), Text({"kill hmi_main TERM", "kill hmi_cluster TERM", "kill hmi_main TERM",
                                         "kill hmi_main KILL"}));
}

using LifecycleManager = DoublesTest;

TEST_F(LifecycleManager, StartsTheServicesAfterTheReset)
{
    const QString started = "debug: MPL_TestEnvironment::SlmLaunchMediaServices";
    EXPECT_TRUE(MPL_TestEnvironment::SlmLaunchMediaServices(true));
    EXPECT_EQ(Text(Notes()),
              Text({started, "DataManager::StartUp", "save active source \"\"", "save playback state \"\"",
                    "DataManager::ShutDown", "debug: MPL_TestEnvironment::ClearMPLState result= true",
                    "slm start media-mme", "slm start media-manager", "slm start media-source-mass-storage",
                    "slm start media-source-apple", "slm start media-source-pandora",
                    "slm start media-source-spotify", "slm start media-source-btmedia",
                    started + " -- finished."}));

    ClearNotes();
    World().slmRefuses << "media-source-apple";
    EXPECT_FALSE(MPL_TestEnvironment::SlmLaunchMediaServices(false));
    EXPECT_EQ(Notes("slm").last(), "slm start media-source-apple");
    EXPECT_EQ(Notes().last(), started + " -- finished.");
}

TEST_F(LifecycleManager, StartsNothingWhenTheResetFails)
{
    World().savePlaybackState = false;
    EXPECT_FALSE(MPL_TestEnvironment::SlmLaunchMediaServices(false));
    EXPECT_EQ(Notes("slm").size(), 0);
    EXPECT_EQ(Notes().last(), "debug: MPL_TestEnvironment::SlmLaunchMediaServices -- finished.");
}

TEST_F(LifecycleManager, StopsTheManagerBeforeTheMountService)
{
    QStringList expected{"debug: MPL_TestEnvironment::SlmStopMediaServices",
                         "slm stop media-manager",
                         "slm stop media-mme",
                         "slm stop media-source-mass-storage",
                         "slm stop media-source-apple",
                         "slm stop media-source-pandora",
                         "slm stop media-source-spotify",
                         "slm stop media-source-btmedia"};
    EXPECT_TRUE(MPL_TestEnvironment::SlmStopMediaServices());
    EXPECT_EQ(Text(Notes()), Text(expected));

    ClearNotes();
    World().slmRefuses << "media-mme";
    EXPECT_FALSE(MPL_TestEnvironment::SlmStopMediaServices());
    EXPECT_EQ(Text(Notes()), Text(expected.mid(0, 3)));
}

TEST_F(LifecycleManager, HandlesTheTunersSilently)
{
    EXPECT_TRUE(MPL_TestEnvironment::SlmStopTunerProcesses());
    EXPECT_TRUE(MPL_TestEnvironment::SlmLaunchTunerProcesses());
    World().slmRefuses << "audio-tuner-manager";
    EXPECT_FALSE(MPL_TestEnvironment::SlmStopTunerProcesses());
    EXPECT_FALSE(MPL_TestEnvironment::SlmLaunchTunerProcesses());
    EXPECT_EQ(Text(Notes()), Text({"slm stop audio-tuner-manager", "slm stop tuner-device-manager",
                                   "slm start audio-tuner-manager", "slm start tuner-device-manager",
                                   "slm stop audio-tuner-manager", "slm start audio-tuner-manager"}));
}

} // namespace
