// Brings up the whole stack for one test case, talks to it and hands it back.
//
// MPL::MediaSourceTestFixture does the bringing up and down, once per test case: it stops the production
// services, resets what they remember, prepares the environment directory and launches the mount service and
// the media manager. Mpl::TestMain supplies main() and the private bus.
#include <MPL_DBusAssertions.h>
#include <MPL_Launching.h>
#include <MPL_MediaPlayerLib.h>
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>
#include <MPL_TestPrinters.h>

#include <memory>

namespace
{

using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;
using Simulator = ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface;

class BringUpStack : public MPL::MediaSourceTestFixture
{
protected:
    void SetUp() override
    {
        MPL::MediaSourceTestFixture::SetUp();
        m_Manager.reset(MPL_TestEnvironment::CreateMediaManagerProxy());
        ASSERT_TRUE(m_Manager);
    }

    std::unique_ptr<Manager> m_Manager;
};

TEST_F(BringUpStack, FindsTheSourcesAndMakesOneActive)
{
    MPL_TestEnvironment::LaunchMediaSourceProcesses(true, true, "", "", "", false);
    ASSERT_FALSE(HasFatalFailure());

    const MPL::ServiceObject pandora = MPL::SourceOf(MPL::MPL_PANDORA_SERVICE_NAME);
    MPL::SignalWaiter active(*m_Manager, &Manager::ActiveMediaSourceChanged);
    ASSERT_TRUE(MPL_TestEnvironment::SetActiveMediaSource(pandora, m_Manager.get()));
    EXPECT_TRUE(active.Arrives(pandora.serviceName, pandora.GetPathString()));
    EXPECT_EQ(MPL::ValueOf(m_Manager->GetActiveMediaSource()), pandora);
}

TEST_F(BringUpStack, SeesADeviceComeAndGo)
{
    MPL::SignalWaiter added(*m_Manager, &Manager::MediaSourceAdded);
    MPL::SignalWaiter removed(*m_Manager, &Manager::MediaSourceRemoved);

    ASSERT_TRUE(MPL::LaunchTestSource());
    for (int i = 0; i < EXPECTED_NUMBER_OF_TEST_MEDIA_SOURCE; ++i) {
        ASSERT_TRUE(added.Arrives(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME));
    }

    const std::unique_ptr<Simulator> simulator(MPL_TestEnvironment::CreateSimulatorProxy());
    ASSERT_TRUE(simulator);
    EXPECT_TRUE(MPL::Replied(simulator->AddMassStorageDevice("USB stick", "00000004")));
    ASSERT_TRUE(added.Arrives());
    const auto [service, path] = added.Last();

    EXPECT_TRUE(MPL::Replied(simulator->RemoveMassStorageDevice("USB stick", "00000004")));
    EXPECT_TRUE(removed.Arrives(service, path));
}

} // namespace
