#include "BusesTest.h"
#include <MPL_TestEnvironment.h>

using namespace MPL::Doubles;

namespace
{

const QString kAddress = "unix:path=/var/talvex/media-player/testDbus";
const QString kNowhere = "unix:path=/nonexistent/bus";

const QString kPrefix = "MPL_TestEnvironment::LaunchMPLTestDbusDaemon - ";
const QString kLaunching = "debug: " + kPrefix + "Launching DBus Daemon on MPL Test Port..";
const QString kAttempt =
    "debug: Attempting to connect to ' \"unix:path=/var/talvex/media-player/testDbus\" '.";
const QString kFailed = "debug: Failed. Error= \"org.freedesktop.DBus.Error.FileNotFound\"";
const QString kStart = "start /usr/bin/dbus-daemon --config-file /opt/talvex/etc/mpl-dbus.conf";

class TestBus : public BusesTest
{
protected:
    TestBus()
    {
        QDBusConnection::disconnectFromBus("MPLTestDbus");
        PrivateBus::Redirect(kAddress, kNowhere);
    }
    ~TestBus() override
    {
        PrivateBus::Redirect({}, {});
        QDBusConnection::disconnectFromBus("MPLTestDbus");
    }
};

TEST_F(TestBus, IsNotStartedWhenOneIsAlive)
{
    PrivateBus::Redirect(kAddress, SharedBus().Address());
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_EQ(Text(Notes()),
              Text({kAttempt, "debug: " + kPrefix + "Test DBus is already active. Returning."}));
    EXPECT_EQ(MPL_TestEnvironment::GetDbusConnection().name(), "MPLTestDbus");
    EXPECT_TRUE(MPL_TestEnvironment::GetDbusConnection().isConnected());
}

TEST_F(TestBus, IsProbedUntilItAnswers)
{
    Starts().onStart = [](const QString&, const QStringList&) {
        VirtualTime::OnSleep([] {
            if (VirtualTime::Slept() == 2000) {
                PrivateBus::Redirect(kAddress, SharedBus().Address());
            }
        });
    };
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_EQ(Text(Notes()), Text({kAttempt, kFailed, kLaunching, kStart, kAttempt, kFailed, "sleep 1000 ms",
                                   kAttempt, kFailed, "sleep 1000 ms", kAttempt,
                                   "debug: " + kPrefix +
                                       "Successfully connected to newly started daemon after  2  seconds."}));
    EXPECT_EQ(MPL_TestEnvironment::GetDbusConnection().name(), "MPLTestDbus");
}

TEST_F(TestBus, IsGivenUpAfterThirtyProbes)
{
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    QStringList expected{kAttempt, kFailed, kLaunching, kStart};
    for (int probe = 0; probe < 30; ++probe) {
        expected << kAttempt << kFailed << "sleep 1000 ms";
    }
    expected << "debug: " + kPrefix +
                    "Failed to connect to newly started daemon. Considering the start-up process failed.";
    EXPECT_EQ(Text(Notes()), Text(expected));
    EXPECT_FALSE(MPL_TestEnvironment::m_TestDbusConnection.isConnected());
}

TEST_F(TestBus, IsGivenUpAtOnceWhenItsDaemonCannotBeStarted)
{
    Starts().failing << "/usr/bin/dbus-daemon";
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_EQ(Text(Notes()), Text({kAttempt, kFailed, kLaunching, kStart,
                                   "critical: " + kPrefix + "Failed to launch dbus-daemon process."}));
    EXPECT_FALSE(MPL_TestEnvironment::m_TestDbusConnection.isConnected());
}

TEST_F(TestBus, IsReplacedByTheSystemBusUntilItIsLaunched)
{
    EXPECT_TRUE(MPL_TestEnvironment::GetDbusConnection().isConnected());
    EXPECT_EQ(MPL_TestEnvironment::GetDbusConnection().name(), QDBusConnection::systemBus().name());
    EXPECT_EQ(Text(Notes()), "debug: MPL_TestEnvironment::GetDbusConnection - No Dbus instance "
                             "created. Defaulting to system bus.");
    PrivateBus::Redirect(kAddress, SharedBus().Address());
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_EQ(MPL_TestEnvironment::GetDbusConnection().name(), "MPLTestDbus");
}

} // namespace
