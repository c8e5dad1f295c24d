// The private test bus with the real daemon. Each case runs in a world of its own, on the system bus at
// first.
#include "Journal.h"

#include <MPL_DBusUtils.h>
#include <MPL_TestEnvironment.h>

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>

namespace
{

const QString CONFIG = QStringLiteral("/opt/talvex/etc/mpl-dbus.conf");

uint DaemonPid()
{
    return MPL_TestEnvironment::GetDbusConnection().interface()->servicePid("org.freedesktop.DBus");
}

TEST(TestBus, IsStartedOnceAndFoundAliveAfterwards)
{
    ASSERT_FALSE(MPL_TestEnvironment::IsMplTestDbusDaemonAlive());
    ASSERT_TRUE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_EQ(MPL_TestEnvironment::GetDbusConnection().name(), QString("MPLTestDbus"));
    EXPECT_TRUE(MPL::IsServiceRunning("org.freedesktop.DBus", MPL_TestEnvironment::GetDbusConnection()));
    const uint daemon = DaemonPid();

    ASSERT_TRUE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_EQ(DaemonPid(), daemon);
}

TEST(TestBus, FallsBackToTheSystemBusWhenTheDaemonNeverAnswers)
{
    QFile config(CONFIG);
    ASSERT_TRUE(config.open(QIODevice::ReadWrite));
    QByteArray text = config.readAll();
    ASSERT_TRUE(text.contains("/var/talvex/media-player/testDbus"));
    text.replace("/var/talvex/media-player/testDbus", "/var/talvex/media-player/elsewhere");
    config.resize(0);
    config.seek(0);
    config.write(text);
    config.close();

    EXPECT_FALSE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_EQ(MPL::Doubles::Notes("sleep 1000 ms").size(), 30);
    EXPECT_NE(MPL_TestEnvironment::GetDbusConnection().name(), QString("MPLTestDbus"));
    EXPECT_TRUE(MPL_TestEnvironment::GetDbusConnection().isConnected());
}

TEST(TestBus, IsNotStartedWithoutADaemonConfiguration)
{
    ASSERT_TRUE(QFile::remove(CONFIG));
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_TRUE(MPL_TestEnvironment::GetDbusConnection().isConnected());
}

} // namespace
