// A daemon that never answers on the private bus's address, in virtual time: thirty failing probes take no
// half minute.
#include "Journal.h"
#include <MPL_TestEnvironment.h>

#include <QDBusConnection>
#include <QFile>

#include <gtest/gtest.h>

namespace
{

const QString kConfig = QStringLiteral("/opt/talvex/etc/mpl-dbus.conf");

TEST(TestBus, FallsBackToTheSystemBusWhenTheDaemonNeverAnswers)
{
    QFile config(kConfig);
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
    ASSERT_TRUE(QFile::remove(kConfig));
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon());
    EXPECT_TRUE(MPL_TestEnvironment::GetDbusConnection().isConnected());
}

} // namespace
