#include "BusesTest.h"
#include <MPL_TestEnvironment.h>

#include <gtest/gtest-spi.h>

using namespace MPL::Doubles;

namespace
{

const QString kManager = "com.talvex.DBus.MediaPlayer.MediaManagerService";
const QString kManagerObjects = kManager + " com.talvex.DBus.MediaPlayer.MediaManager";
const QString kSources = "com.talvex.DBus.MediaPlayer.MediaSource.";
const QString TEST_SOURCE = "com.talvex.DBus.Examples.MediaSourceTest";
const QString kConfig = "/opt/talvex/etc/mplConfig.json";

const QStringList kReset{"save active source \"\"", "save playback state \"\"",
                         "debug: MPL_TestEnvironment::ClearMPLState result= true"};
const QString kPrefix = "debug: MPL_TestEnvironment::LaunchMediaManagerProcess";
const QString kFailure = "critical: MPL_TestEnvironment::LaunchMediaManagerProcess -- ";
const QString kStartMme = "start /opt/talvex/bin/media_mme";
const QStringList kFinish{"sleep 2000 ms", kPrefix + " -- finished."};
const QString kDatabase = "DB=/var/talvex/media-player/test/DataManagerDb.sqlite";
const QString kStartManager = "start /opt/talvex/bin/media_manager ";

class Launching : public BusesTest
{
protected:
    Launching()
    {
        UseTestBus();
        World().files[kConfig] =
            R"({"config": {"pandora": {"login_config": {"user_name": "u", "password": "p"}}}})";
    }

    static void SourceIsReady(const QString& aName)
    {
        World().owned << kSources + aName;
        World().objects[kSources + aName + " com.talvex.DBus.MediaPlayer.MediaSource"] =
            QStringList{"/" + aName};
    }

    static std::string Started() { return Text(Notes("start")); }
};

TEST_F(Launching, TheManagerStartsTheMountServiceFirst)
{
    World().owned << kManager;
    World().objects[kManagerObjects] = QStringList{"/manager"};
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(false, "extra argument"));
    EXPECT_EQ(Text(Notes()),
              Text(QStringList{kPrefix} + kReset +
                   QStringList{kPrefix + " -- Launching MME Process", kStartMme,
                               kPrefix + " -- Launching MediaManager Process on test dbus.",
                               kStartManager + "extra argument " + kDatabase + " --test-dbus",
                               "debug: MediaManager process launched, waiting for the object to become "
                               "available on d-bus.",
                               "debug: MPL_TestEnvironment::WaitForServiceObjects -- Found 1 service objects "
                               "for \"" +
                                   kManager + "\""} +
                   kFinish));
}

TEST_F(Launching, TheManagerIsToldOfNoBusOnTheSystemBus)
{
    UseSystemBus();
    World().processes["media_mme"] = 1;
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaManagerProcess(false));
    EXPECT_EQ(Started(), Text({kStartManager + kDatabase}));
    EXPECT_TRUE(Notes().contains(kPrefix + " -- Launching MediaManager Process on system dbus."));
    EXPECT_EQ(Text(Notes("critical")), Text({kFailure + "MediaManager process did not start."}));
    EXPECT_EQ(VirtualTime::Slept(), 22000);

    ClearNotes();
    World().owned << kManager;
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaManagerProcess(false));
    EXPECT_EQ(Text(Notes("critical")), Text({kFailure + "MediaManager process did not show up on dbus."}));
    EXPECT_EQ(Notes().mid(Notes().size() - 2), kFinish);
}

TEST_F(Launching, TheManagerTwiceStartsNothingButResetsAndPauses)
{
    World().processes = {{"media_mme", 1}, {"media_manager", 2}};
    World().saveSource = false;
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
    EXPECT_EQ(Text(Notes()), Text(QStringList{kPrefix, "DataManager::StartUp", "save active source \"\"",
                                              "DataManager::ShutDown",
                                              "debug: MPL_TestEnvironment::ClearMPLState result= false"} +
                                  kFinish));
}

TEST_F(Launching, TheManagerEndsAtAProgramThatDoesNotStart)
{
    Starts().failing << "/opt/talvex/bin/media_mme"
                     << "/opt/talvex/bin/media_manager";
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaManagerProcess(false));
    EXPECT_EQ(Text(Notes()), Text(QStringList{kPrefix} + kReset +
                                  QStringList{kPrefix + " -- Launching MME Process", kStartMme,
                                              kFailure + "Launch MME Process() failed."} +
                                  kFinish));

    World().processes["media_mme"] = 1;
    ClearNotes();
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaManagerProcess(false));
    EXPECT_EQ(Text(Notes("critical")), "critical: LaunchMediaManagerProcess() failed.");
    EXPECT_EQ(Notes().mid(Notes().size() - 2), kFinish);
}

TEST_F(Launching, ASourceWaitsForItsOwnName)
{
    SourceIsReady("Spotify");
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMediaSourceProcess(false, "media_source_spotify", true, true));
    EXPECT_EQ(
        Text(Notes()),
        Text(QStringList{"debug: MPL_TestEnvironment::LaunchMediaSourceProcess \"media_source_spotify\""} +
             kReset +
             QStringList{"debug: LaunchMediaSourceProcess:  \"media_source_spotify\"  on the test dbus.",
                         "start /opt/talvex/bin/media_source_spotify --verbose --test-dbus"}));
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaSourceProcess(false, "media_source_disc", false, false));
    EXPECT_EQ(World().questions.last(), "owned " + kSources + "Disc on MPLTestDbus");
}

TEST_F(Launching, ASourceThatIsUnknownOrDoesNotStartFails)
{
    for (const char* name : {"media_source_btmedia", "Media_source_disc", ""}) {
        EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaSourceProcess(false, name, false, false)) << name;
    }
    EXPECT_EQ(Notes().size(), 3);

    ClearNotes();
    UseSystemBus();
    Starts().failing << "/opt/talvex/bin/media_source_disc";
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaSourceProcess(false, "media_source_disc", false, false));
    EXPECT_EQ(Text(Notes()),
              Text({"debug: MPL_TestEnvironment::LaunchMediaSourceProcess \"media_source_disc\"",
                    "debug: LaunchMediaSourceProcess:  \"media_source_disc\"  on the system dbus.",
                    "start /opt/talvex/bin/media_source_disc",
                    "critical: LaunchMediaSourceProcess() failed with  media_source_disc",
                    "critical: Attempted to start:  /opt/talvex/bin/media_source_disc"}));
}

TEST_F(Launching, ThePandoraSourceGetsItsLogin)
{
    SourceIsReady("Pandora");
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMediaSourceProcess(false, "media_source_pandora", false, true));
    EXPECT_EQ(Started(), "start /opt/talvex/bin/media_source_pandora unitTest "
                         "/var/talvex/media-player/mplUnitConfig.json --verbose --test-dbus");

    ClearNotes();
    World().files.clear();
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaSourceProcess(false, "media_source_pandora", false, true));
    EXPECT_EQ(Started(), "");
    EXPECT_EQ(Notes("critical").last(), "critical: MPL_TestEnvironment::LaunchMediaSourceProcess -- Failed "
                                        "to create login config for Pandora");
}

TEST_F(Launching, TheTestSourcePassesItsOptions)
{
    World().owned << TEST_SOURCE;
    EXPECT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 3, false, true));
    EXPECT_EQ(
        Text(Notes()),
        Text({"debug: MPL_TestEnvironment::LaunchTestMediaSourceProcess -- aActivateDataManager: true "
              "aCapabilitiesOption: 3 aResetActiveMediaSource: false aCreatePlayQueue: true",
              "debug: MPL_TestEnvironment::LaunchTestMediaSourceProcess - Using the TEST dbus.",
              "debug: MPL_TestEnvironment::LaunchTestMediaSourceProcess -- Test source service not running, "
              "attempt to launch: \"/opt/talvex/test/test_media_source/test_media_source\" "
              "(\"3\", \"-default_playqueue\", \"--test-dbus\")",
              "start /opt/talvex/test/test_media_source/test_media_source 3 -default_playqueue --test-dbus",
              "debug: MediaTestSource process launched, waiting for the object to become available on "
              "d-bus."}));
}

TEST_F(Launching, TheTestSourceThatRunsIsOnlyReset)
{
    World().processes["test_media_source"] = 1;
    EXPECT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(false, 0, true, false));
    EXPECT_EQ(Notes().mid(1), kReset);
}

TEST_F(Launching, TheTestSourceThatNeverShowsUpFailsTheTestOnly)
{
    UseSystemBus();
    EXPECT_NONFATAL_FAILURE(
        EXPECT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(false, 4294967295U, false, false)),
        "WaitForServiceRunning( MPL_TEST_MEDIA_SOURCE_SERVICE_NAME )");
    EXPECT_EQ(Started(), "start /opt/talvex/test/test_media_source/test_media_source 4294967295");
    EXPECT_TRUE(Notes().contains(
        "debug: MPL_TestEnvironment::LaunchTestMediaSourceProcess - Using the system dbus."));

    Starts().failing << "/opt/talvex/test/test_media_source/test_media_source";
    EXPECT_FALSE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(false, 0, false, false));
    EXPECT_EQ(Notes().last(), "critical: LaunchTestMediaSourceProcess() failed.");
}

const QString kRemotePrefix = "debug: MPL_TestEnvironment::LaunchRemoteMediaSourceProcess -- ";

TEST_F(Launching, ARemoteSourceIsToldOfTheComputer)
{
    SourceIsReady("Apple");
    EXPECT_TRUE(MPL_TestEnvironment::LaunchRemoteMediaSourceProcess(false, "media_source_apple", "10.0.0.1",
                                                                    "99", "98", true, true));
    EXPECT_EQ(
        Text(Notes()),
        Text(QStringList{kRemotePrefix +
                         "Process: \"media_source_apple\" Activate DM: false Server: "
                         "\"10.0.0.1\" \"99\" \"98\" Verbose: true Reset active source: true"} +
             kReset +
             QStringList{kRemotePrefix + "Launching \"media_source_apple\"",
                         "start /opt/talvex/bin/media_source_apple --verbose --remote=10.0.0.1 --port=99 "
                         "--ddpport=98 --test-dbus",
                         kRemotePrefix + "Returning true"}));
}

bool LaunchRemotely(const char* aName, const char* aComputer)
{
    return MPL_TestEnvironment::LaunchRemoteMediaSourceProcess(false, aName, aComputer, "99", "98", false,
                                                               false);
}

TEST_F(Launching, ARemoteSourceIsStartedPlainlyWithoutAComputerThatItCanUse)
{
    UseSystemBus();
    for (const char* name : {"Spotify", "Pandora", "Disc"}) {
        SourceIsReady(name);
    }
    EXPECT_TRUE(LaunchRemotely("media_source_spotify", "10.0.0.1"));
    EXPECT_TRUE(LaunchRemotely("media_source_pandora", "10.0.0.1"));
    EXPECT_TRUE(LaunchRemotely("media_source_disc", ""));
    EXPECT_EQ(Started(), Text({"start /opt/talvex/bin/media_source_spotify",
                               "start /opt/talvex/bin/media_source_pandora",
                               "start /opt/talvex/bin/media_source_disc"}));
}

TEST_F(Launching, ARemoteSourceThatIsUnknownOrDoesNotStartFailsWithoutComplaint)
{
    Starts().failing << "/opt/talvex/bin/media_source_disc";
    for (const char* name : {"media_source_btmedia", "media_source_disc"}) {
        EXPECT_FALSE(LaunchRemotely(name, ""));
        EXPECT_EQ(Notes().last(), kRemotePrefix + "Returning false");
    }
    EXPECT_EQ(Notes("start").size(), 1);
    EXPECT_EQ(Notes("critical").size(), 0);
}

TEST_F(Launching, AllSourcesWithoutARemoteComputerAreThree)
{
    for (const char* name : {"MassStorage", "Pandora", "Spotify"}) {
        SourceIsReady(name);
    }
    const QString prefix = "debug: MPL_TestEnvironment::LaunchMediaSourceProcesses --";
    MPL_TestEnvironment::LaunchMediaSourceProcesses(false, false, "", "1", "2", true);
    EXPECT_EQ(
        Text(Notes(prefix)),
        Text(
            {prefix + " \"\" \"1\" \"2\" true",
             prefix + " Not using the remote computer for apple and disc functionality, don't launch "
                      "the processes",
             prefix + " Launching process \"media_source_mass_storage\"  ( \"" + kSources + "MassStorage\" )",
             prefix + " Launching process \"media_source_pandora\"  ( \"" + kSources + "Pandora\" )",
             prefix + " Launching process \"media_source_spotify\"  ( \"" + kSources + "Spotify\" )"}));
    EXPECT_EQ(Started(), Text({"start /opt/talvex/bin/media_source_mass_storage --verbose --test-dbus",
                               "start /opt/talvex/bin/media_source_pandora unitTest "
                               "/var/talvex/media-player/mplUnitConfig.json --verbose --test-dbus",
                               "start /opt/talvex/bin/media_source_spotify --verbose --test-dbus"}));
    // Each launch resets on its own, with the data manager started, though none was asked for.
    EXPECT_EQ(Notes("DataManager::StartUp").size(), 3);
    EXPECT_EQ(Notes(kRemotePrefix + "Launching").size(), 1);
}

TEST_F(Launching, AllSourcesWithARemoteComputerBeginWithTheRemoteOnes)
{
    for (const char* name : {"MassStorage", "Apple", "Pandora", "Disc", "Spotify"}) {
        SourceIsReady(name);
    }
    MPL_TestEnvironment::LaunchMediaSourceProcesses(true, true, "ip", "1", "2", false);
    const QString remote = " --remote=ip --port=1 --ddpport=2 --test-dbus";
    EXPECT_EQ(Started(), Text({"start /opt/talvex/bin/media_source_apple" + remote,
                               "start /opt/talvex/bin/media_source_disc" + remote,
                               "start /opt/talvex/bin/media_source_mass_storage" + remote,
                               "start /opt/talvex/bin/media_source_pandora unitTest "
                               "/var/talvex/media-player/mplUnitConfig.json --test-dbus",
                               "start /opt/talvex/bin/media_source_spotify --test-dbus"}));
    EXPECT_EQ(Notes("DataManager::StartUp").size(), 6);
    EXPECT_TRUE(Notes().contains(
        "debug: MPL_TestEnvironment::LaunchMediaSourceProcesses -- Using the remote computer for apple and "
        "disc functionality, include those processes"));
}

TEST_F(Launching, AllSourcesEndsFatallyAtTheFirstThatIsMissing)
{
    EXPECT_FATAL_FAILURE(
        MPL_TestEnvironment::LaunchMediaSourceProcesses(false, false, "", "", "", false),
        "MPL_TestEnvironment::LaunchRemoteMediaSourceProcess( true, procName, aRemoteIP, aPort, aDdpPort, "
        "aVerbose, true )");
    EXPECT_EQ(Notes("start").size(), 1);

    World().owned << kSources + "MassStorage";
    EXPECT_FATAL_FAILURE(MPL_TestEnvironment::LaunchMediaSourceProcesses(false, false, "", "", "", false),
                         "MPL_TestEnvironment::WaitForMediaSourceServiceObjects( serviceName, 1 )");
    SourceIsReady("MassStorage");
    EXPECT_FATAL_FAILURE(MPL_TestEnvironment::LaunchMediaSourceProcesses(false, false, "", "", "", false),
                         "MPL_TestEnvironment::LaunchMediaSourceProcess( true, procName, true, aVerbose )");
}

} // namespace
