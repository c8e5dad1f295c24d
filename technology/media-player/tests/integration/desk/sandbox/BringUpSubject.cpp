// A test program that brings the stack up, in the ways that can fail.
#include <MPL_MediaPlayerLib.h>
#include <MPL_ProcessInfo.h>
#include <MPL_TestEnvironment.h>

#include <QThread>

#include <gtest/gtest.h>

#include <memory>

TEST(BringUp, OfTheManager)
{
    const bool isUp = MPL_TestEnvironment::LaunchMediaManagerProcess(false);
    QThread::sleep(8); // for what comes too late
    ASSERT_TRUE(isUp);
    const std::unique_ptr<ComTalvexDBusMediaPlayerMediaManagerInterface> manager(
        MPL_TestEnvironment::CreateMediaManagerProxy());
    EXPECT_TRUE(manager);
}

TEST(BringUp, AndEndOfTheManager)
{
    const bool isUp = MPL_TestEnvironment::LaunchMediaManagerProcess(false);
    MPL_TestEnvironment::KillMediaManagerProcess();
    EXPECT_TRUE(isUp);
}

TEST(BringUp, IsExpectedToFail)
{
    EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaManagerProcess(false));
}

TEST(BringUp, OfTheManagersUnit)
{
    EXPECT_TRUE(MPL_ProcessInfo::SlmStartService("media-manager"));
}

TEST(BringUp, AndCrash)
{
    ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(false));
    volatile int* nowhere = nullptr;
    *nowhere = 1;
}

TEST(BringUp, HasNothingToDoWithAFailure)
{
    ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(false));
    FAIL();
}
