// The private test bus with the real daemon, from a program that starts on the system bus.
#include <MPL_DBusUtils.h>
#include <MPL_TestEnvironment.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <gtest/gtest.h>

namespace
{

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

} // namespace
