// Handing the stack to the real service manager and taking it back.
#include "JobRecorder.h"
#include "Require.h"
#include <MPL_DBusUtils.h>
#include <MPL_ProcessInfo.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDir>

#include <gtest/gtest.h>

namespace
{

class LifecycleManager : public testing::Test
{
protected:
    void SetUp() override { RequireLifecycleManager(); }

    static std::string InOneLine(const QStringList& aServices) { return aServices.join(' ').toStdString(); }
};

TEST_F(LifecycleManager, StartsTheMountServiceFirstAndStopsTheManagerFirst)
{
    JobRecorder jobs;
    ASSERT_TRUE(MPL_TestEnvironment::SlmLaunchMediaServices(true));
    EXPECT_EQ(InOneLine(jobs.TakeServices()),
              "media-mme media-manager media-source-mass-storage media-source-apple media-source-pandora "
              "media-source-spotify media-source-btmedia");
    EXPECT_TRUE(MPL::IsServiceRunning(MPL::MPL_MEDIA_MANAGER_SERVICE_NAME, QDBusConnection::systemBus()));
    EXPECT_NE(MPL_ProcessInfo::GetPidFromName("media_source_btmedia"), -1);

    ASSERT_TRUE(MPL_TestEnvironment::SlmStopMediaServices());
    EXPECT_EQ(InOneLine(jobs.TakeServices()),
              "media-manager media-mme media-source-mass-storage media-source-apple media-source-pandora "
              "media-source-spotify media-source-btmedia");
    EXPECT_TRUE(MPL_TestEnvironment::AllMediaSourcesTerminated());
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("media_manager"), -1);
}

TEST_F(LifecycleManager, StartsNothingWhenTheStateCannotBeReset)
{
    // A folder where the store should be.
    ASSERT_TRUE(QDir().mkpath(kMPLDataManagerDb));
    EXPECT_FALSE(MPL_TestEnvironment::SlmLaunchMediaServices(true));
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("media_mme"), -1);
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
