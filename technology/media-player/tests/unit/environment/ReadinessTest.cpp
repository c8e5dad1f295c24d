#include "BusesTest.h"
#include <MPL_TestEnvironment.h>

#include <QRegularExpression>

#include <gtest/gtest-spi.h>

#include <memory>

using namespace MPL::Doubles;

namespace
{

const QString kManager = "com.talvex.DBus.MediaPlayer.MediaManagerService";
const QString kManagerObjects = kManager + " com.talvex.DBus.MediaPlayer.MediaManager";
const QString kSource = "com.talvex.DBus.Examples.MediaSourceTest";
const QString kSourceObjects = kSource + " com.talvex.DBus.MediaPlayer.MediaSource";
const QString kSimulationObjects = kSource + " com.talvex.DBus.MediaPlayer.MediaSourceFactorySimulation";

class ServiceWait : public BusesTest
{
protected:
    ServiceWait() { UseSystemBus(); }

    // The service appears during this pause.
    static void AppearAtPause(int aPause)
    {
        World().owned.clear();
        VirtualTime::Reset();
        VirtualTime::OnSleep([aPause] {
            if (VirtualTime::Slept() == aPause * qint64(2000)) {
                World().owned << kSource;
            }
        });
    }

    // The notes with the time of day, which differs at each run, replaced.
    static std::string TextWithoutTimes()
    {
        QStringList lines = Notes();
        return Text(
            lines.replaceInStrings(QRegularExpression("Time: \\d\\d:\\d\\d\\.\\d\\d\\d "), "Time: T "));
    }
};

TEST_F(ServiceWait, IsSilentWhenTheServiceRuns)
{
    World().owned << kSource;
    EXPECT_TRUE(MPL_TestEnvironment::WaitForServiceRunning(kSource));
    EXPECT_EQ(Text(Notes()), "");
    EXPECT_EQ(Text(World().questions), Text({"owned " + kSource + " on qt_default_system_bus"}));
}

TEST_F(ServiceWait, PausesTenTimesAndIgnoresWhatComesInTheLastPause)
{
    QStringList expected;
    for (int pause = 0; pause < 10; ++pause) {
        expected << "debug: MPL_TestEnvironment::WaitForServiceRunning -- Service \"" + kSource +
                        "\" not running, pausing for 2 seconds.."
                 << "sleep 2000 ms";
    }
    EXPECT_FALSE(MPL_TestEnvironment::WaitForServiceRunning(kSource));
    EXPECT_EQ(Text(Notes()), Text(expected));
    EXPECT_EQ(World().questions.size(), 11);

    AppearAtPause(10);
    EXPECT_FALSE(MPL_TestEnvironment::WaitForServiceRunning(kSource));
    AppearAtPause(9);
    EXPECT_TRUE(MPL_TestEnvironment::WaitForServiceRunning(kSource));
    EXPECT_EQ(VirtualTime::Slept(), 18000);
}

TEST_F(ServiceWait, FindsEnoughObjects)
{
    World().objects[kSourceObjects] = QStringList{"/a", "/b"};
    QStringList paths{"/old"};
    EXPECT_TRUE(MPL_TestEnvironment::WaitForServiceObjects(kSource, 2,
                                                           "com.talvex.DBus.MediaPlayer.MediaSource", paths));
    EXPECT_EQ(paths, (QStringList{"/a", "/b"}));
    EXPECT_EQ(Text(Notes()), Text({"debug: MPL_TestEnvironment::WaitForServiceObjects -- Found 2 service "
                                   "objects for \"" +
                                   kSource + "\""}));
    EXPECT_EQ(Text(World().questions), Text({"objects " + kSourceObjects + " on qt_default_system_bus"}));
}

TEST_F(ServiceWait, KeepsTheLastPathsWhenThereAreTooFewObjects)
{
    World().objects[kSourceObjects] = QStringList{"/a"};
    VirtualTime::OnSleep([] {
        if (VirtualTime::Slept() == 900) {
            World().objects[kSourceObjects] = QStringList{"/b"};
        }
    });
    QStringList expected;
    for (int lookup = 0; lookup < 10; ++lookup) {
        expected << "debug: MPL_TestEnvironment::WaitForServiceObjects -- Time: T Service: \"" + kSource +
                        "\" Source Objects Found: 1 objects."
                 << "sleep 100 ms";
    }
    expected << "debug: MPL_TestEnvironment::WaitForServiceObjects timed out. Last found  1  objects.";
    QStringList paths;
    EXPECT_FALSE(MPL_TestEnvironment::WaitForServiceObjects(
        kSource, 2, "com.talvex.DBus.MediaPlayer.MediaSource", paths));
    EXPECT_EQ(paths, QStringList{"/b"});
    EXPECT_EQ(TextWithoutTimes(), Text(expected));
}

TEST_F(ServiceWait, NeedsAnAnswerEvenForNoObjects)
{
    EXPECT_FALSE(MPL_TestEnvironment::WaitForMediaSourceServiceObjects(kSource, 0));
    World().objects[kSourceObjects] = QStringList{};
    EXPECT_TRUE(MPL_TestEnvironment::WaitForMediaSourceServiceObjects(kSource, 0));
}

TEST_F(ServiceWait, LooksAtAllSourcesForLifeAndAtTheFirstForRest)
{
    World().processes = {
        {"media_source_mass_storage", 1}, {"media_source_disc", 2}, {"media_source_spotify", 3}};
    EXPECT_FALSE(MPL_TestEnvironment::AllMediaSourcesAlive());
    EXPECT_FALSE(MPL_TestEnvironment::AllMediaSourcesTerminated());
    EXPECT_EQ(Text(Notes()),
              Text({"debug: \"media_source_mass_storage\"  is alive",
                    "debug: \"media_source_apple\"  is not alive.",
                    "debug: \"media_source_pandora\"  is not alive.",
                    "debug: \"media_source_disc\"  is alive", "debug: \"media_source_spotify\"  is alive",
                    "debug: \"media_source_mass_storage\"  not terminated."}));
    World().processes["media_source_apple"] = World().processes["media_source_pandora"] = 4;
    EXPECT_TRUE(MPL_TestEnvironment::AllMediaSourcesAlive());
}

TEST_F(ServiceWait, FindsAllSourcesAtRestSilently)
{
    EXPECT_TRUE(MPL_TestEnvironment::AllMediaSourcesTerminated());
    EXPECT_EQ(Text(Notes()), "");
}

using Proxies = ServiceWait;

TEST_F(Proxies, OfTheManagerNeedExactlyOneObject)
{
    EXPECT_EQ(MPL_TestEnvironment::CreateMediaManagerProxy(), nullptr);
    EXPECT_EQ(Text(Notes()), Text({"critical: Service:  " + kManager + "  not running"}));

    World().owned << kManager;
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(MPL_TestEnvironment::CreateMediaManagerProxy(), nullptr),
                            "WaitForServiceObjects( MPL_TEST_MEDIAMANAGER_SERVICE_NAME, 1, "
                            "MPL::MPL_MEDIA_MANAGER_INTERFACE_NAME, mediaManagerList )");
    World().objects[kManagerObjects] = QStringList{"/one", "/two"};
    EXPECT_EQ(MPL_TestEnvironment::CreateMediaManagerProxy(), nullptr);
    EXPECT_EQ(Notes("critical").size(), 1);

    World().objects[kManagerObjects] = QStringList{"/one"};
    const std::unique_ptr<QDBusAbstractInterface> proxy(MPL_TestEnvironment::CreateMediaManagerProxy());
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->service() + proxy->path(), kManager + "/one");
    EXPECT_EQ(proxy->connection().name(), "qt_default_system_bus");
    EXPECT_EQ(proxy->parent(), nullptr);
}

TEST_F(Proxies, OfTheSimulatorNeedExactlyOneObjectAndDoNotWait)
{
    EXPECT_EQ(MPL_TestEnvironment::CreateSimulatorProxy(), nullptr);
    EXPECT_EQ(Text(Notes()), "");

    World().owned << kSource;
    World().objects[kSimulationObjects] = QStringList{"/one", "/two"};
    EXPECT_EQ(MPL_TestEnvironment::CreateSimulatorProxy(), nullptr);
    EXPECT_EQ(Text(Notes()),
              "critical: Service: com.talvex.DBus.MediaPlayer.MediaManagerService  has no interface "
              "com.talvex.DBus.MediaPlayer.MediaSourceFactorySimulation");

    World().objects[kSimulationObjects] = QStringList{"/one"};
    const std::unique_ptr<QDBusAbstractInterface> proxy(MPL_TestEnvironment::CreateSimulatorProxy());
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->service() + proxy->path(), kSource + "/one");
    EXPECT_EQ(proxy->parent(), nullptr);
}

} // namespace
