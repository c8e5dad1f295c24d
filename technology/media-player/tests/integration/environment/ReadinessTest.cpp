// Services that are slow or ambiguous when a test waits for them.
#include <MPL_Proxies.h>
#include <MPL_SimulatedFaults.h>
#include <MPL_TestEnvironment.h>
#include <MPL_Types.h>

#include <gtest/gtest.h>

#include <memory>

namespace
{

using ManagerProxy = std::unique_ptr<ComTalvexDBusMediaPlayerMediaManagerInterface>;

class WaitingForTheManager : public testing::Test
{
protected:
    static void SetUpTestSuite() { MPL::RegisterAllMetaTypes(); }
    void TearDown() override { EXPECT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess()); }
};

TEST_F(WaitingForTheManager, SucceedsWhenItOnlyStartsLate)
{
    MPL::SimulatedFaults faults;
    ASSERT_TRUE(faults.StartDelay("media_manager", 3000));
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
    EXPECT_TRUE(ManagerProxy(MPL_TestEnvironment::CreateMediaManagerProxy()));
}

TEST_F(WaitingForTheManager, GivesNoProxyWhenItExportsTwoObjects)
{
    MPL::SimulatedFaults faults;
    ASSERT_TRUE(faults.ManagerObjects(2));
    EXPECT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
    EXPECT_FALSE(ManagerProxy(MPL_TestEnvironment::CreateMediaManagerProxy()));
}

} // namespace
