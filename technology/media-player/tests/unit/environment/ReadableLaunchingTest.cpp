// Launches with named options, and the sources that the media manager lists, on a private bus.
#include "ClientTest.h"
#include "PlatformDoubles.h"
#include <MPL_Launching.h>
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestPrinters.h>

#include <gtest/gtest-spi.h>

using namespace MPL::Doubles;

namespace
{

using Capability = MPL::TestSourceCapability;
using Sources = QList<MPL::ServiceObject>;

const QString kManagerName = "com.talvex.DBus.MediaPlayer.MediaManagerService";

class ReadableLaunching : public ClientTest
{
protected:
    ReadableLaunching() : m_ManagerService(SharedBus().Address(), kManagerName)
    {
        const QString interface = MPL::MPL_MEDIA_MANAGER_INTERFACE_NAME;
        World().owned << kManagerName << MPL::MPL_DISC_SERVICE_NAME << MPL_TEST_MEDIA_SOURCE_SERVICE_NAME;
        World().objects[kManagerName + ' ' + interface] = QStringList{kPath};
    }

    void List(const Sources& aSources)
    {
        m_ManagerService.Reply(kPath, "GetAvailableMediaSources", QVariant::fromValue(aSources));
    }

    static bool IsReset() { return !Notes("save").isEmpty(); }

    FakeService m_ManagerService;
    const MPL::ServiceObject m_Disc{MPL::MPL_DISC_SERVICE_NAME, QDBusObjectPath("/disc/1")};
};

TEST_F(ReadableLaunching, StartsASourceWithDefaultsThatReset)
{
    EXPECT_TRUE(MPL::LaunchSource("media_source_disc"));
    EXPECT_EQ(Notes("start"), QStringList("start /opt/talvex/bin/media_source_disc --test-dbus"));
    EXPECT_TRUE(IsReset());

    ClearNotes();
    MPL::LaunchOptions options;
    options.verbose = true;
    options.resetActiveSource = false;
    EXPECT_TRUE(MPL::LaunchSource("media_source_disc", options));
    EXPECT_EQ(Notes("start"), QStringList("start /opt/talvex/bin/media_source_disc --verbose --test-dbus"));
    EXPECT_FALSE(IsReset());
}

TEST_F(ReadableLaunching, SaysWhichSourcesThereAre)
{
    EXPECT_NONFATAL_FAILURE(
        EXPECT_TRUE(MPL::LaunchSource("media_source_disk")),
        "\"media_source_disk\" is no media source; there are { \"media_source_mass_storage\"");
    EXPECT_TRUE(Notes("start").isEmpty());
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(MPL::LaunchSource("media_source_apple")),
                            "its bus name did not appear");
}

TEST_F(ReadableLaunching, NamesWhatTheTestSourceCanDo)
{
    EXPECT_TRUE(MPL::LaunchTestSource());
    MPL::TestSourceOptions options;
    options.capabilities = Capability::PlaybackControl | Capability::PlayQueue;
    options.createPlayQueue = true;
    options.resetActiveSource = false;
    World().processes.clear();
    EXPECT_TRUE(MPL::LaunchTestSource(options));
    EXPECT_EQ(Notes("start"), (QStringList{"start " + MPL_TEST_MEDIA_SOURCE_PROCESS_PATH + " 0 --test-dbus",
                                           "start " + MPL_TEST_MEDIA_SOURCE_PROCESS_PATH +
                                               " 18 -default_playqueue --test-dbus"}));
    EXPECT_EQ(static_cast<unsigned>(Capability::All), 31U);
}

TEST_F(ReadableLaunching, WaitsUntilTheManagerListsTheSources)
{
    const MPL::ServiceObject test{MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, QDBusObjectPath("/test/1")};
    List({});
    List({test});
    List({test, m_Disc});
    EXPECT_TRUE(MPL::ManagerLists({MPL::MPL_DISC_SERVICE_NAME, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME}));
    EXPECT_EQ(MPL::SourceOf(MPL::MPL_DISC_SERVICE_NAME), m_Disc);
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(MPL::ManagerLists({m_Disc.serviceName, m_Disc.serviceName}, 10)),
                            "after 10 ms the media manager lists no source of { "
                            "\"com.talvex.DBus.MediaPlayer.MediaSource.Disc\" }; it lists { "
                            "ServiceObject(\"com.talvex.DBus.Examples.MediaSourceTest\", \"/test/1\")");
}

TEST_F(ReadableLaunching, SaysWhyThereAreNoSources)
{
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(MPL::ManagerLists({m_Disc.serviceName})), "UnknownMethod");
    World().owned.clear();
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(MPL::SourceOf(m_Disc.serviceName), MPL::ServiceObject()),
                            "there is no value: no media manager is on the bus");
}

} // namespace
