// Handing the stack to the real service manager and taking it back.
#include "Require.h"
#include <MPL_DBusUtils.h>
#include <MPL_ProcessInfo.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDBusConnection>
#include <QDir>

#include <gtest/gtest.h>

namespace
{

class LifecycleManager : public testing::Test
{
protected:
    void SetUp() override { RequireLifecycleManager(); }
};

TEST_F(LifecycleManager, StartsAndStopsTheWholeStack)
{
    ASSERT_TRUE(MPL_TestEnvironment::SlmLaunchMediaServices(true));
    EXPECT_TRUE(MPL::IsServiceRunning(MPL::MPL_MEDIA_MANAGER_SERVICE_NAME, QDBusConnection::systemBus()));
    for (const char* name : {"media_mme", "media_source_mass_storage", "media_source_btmedia"}) {
        EXPECT_NE(MPL_ProcessInfo::GetPidFromName(name), -1) << name;
    }
    ASSERT_TRUE(MPL_TestEnvironment::SlmStopMediaServices());
    EXPECT_TRUE(MPL_TestEnvironment::AllMediaSourcesTerminated());
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("media_manager"), -1);
}

TEST_F(LifecycleManager, StartsNothingWhenTheStateCannotBeReset)
{
    // A folder where the store should be, which a test before this one may have made.
    QFile::remove(kMPLDataManagerDb);
    ASSERT_TRUE(QDir().mkpath(kMPLDataManagerDb));
    EXPECT_FALSE(MPL_TestEnvironment::SlmLaunchMediaServices(true));
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("media_mme"), -1);
    EXPECT_TRUE(QDir().rmdir(kMPLDataManagerDb));
}

TEST_F(LifecycleManager, StopsAndStartsTheTuners)
{
    ASSERT_TRUE(MPL_TestEnvironment::SlmLaunchTunerProcesses());
    EXPECT_NE(MPL_ProcessInfo::GetPidFromName("audio-tuner-manager"), -1);
    EXPECT_NE(MPL_ProcessInfo::GetPidFromName("tuner-device-manager"), -1);
    ASSERT_TRUE(MPL_TestEnvironment::SlmStopTunerProcesses());
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("tuner-device-manager"), -1);
}

} // namespace
