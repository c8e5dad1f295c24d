// Brings up the whole stack for one test case, talks to it and hands it back.
//
// MPL::MediaSourceTestFixture does the bringing up and down, once per test case: it stops the production
// services, resets what they remember, prepares the environment directory and launches the mount service and
// the media manager. Mpl::TestMain supplies main() and the private bus.
#include <MPL_MediaPlayerLib.h>
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>
#include <MPL_TestUtils.h>

#include <QSignalSpy>

#include <memory>

namespace
{

using ManagerProxy = std::unique_ptr<ComTalvexDBusMediaPlayerMediaManagerInterface>;
using SimulatorProxy = std::unique_ptr<ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface>;

class BringUpStack : public MPL::MediaSourceTestFixture
{
};

TEST_F(BringUpStack, FindsTheSourcesAndMakesOneActive)
{
    MPL_TestEnvironment::LaunchMediaSourceProcesses(true, true, "", "", "", false);
    ASSERT_FALSE(HasFatalFailure());

    const ManagerProxy manager(MPL_TestEnvironment::CreateMediaManagerProxy());
    ASSERT_TRUE(manager);
    auto available = manager->GetAvailableMediaSources();
    available.waitForFinished();
    ASSERT_FALSE(available.isError()) << qPrintable(available.error().message());

    const MPL::ServiceObject* pandora = nullptr;
    const QList<MPL::ServiceObject> sources = available.value();
    for (const MPL::ServiceObject& source : sources) {
        if (source.serviceName == MPL::MPL_PANDORA_SERVICE_NAME) {
            pandora = &source;
        }
    }
    ASSERT_NE(pandora, nullptr);

    ASSERT_TRUE(MPL_TestEnvironment::SetActiveMediaSource(*pandora, manager.get()));
    auto active = manager->GetActiveMediaSource();
    active.waitForFinished();
    EXPECT_EQ(active.value().serviceName, pandora->serviceName);
    EXPECT_EQ(active.value().objectPath, pandora->objectPath);
}

TEST_F(BringUpStack, SeesADeviceComeAndGo)
{
    const ManagerProxy manager(MPL_TestEnvironment::CreateMediaManagerProxy());
    ASSERT_TRUE(manager);

    // Signals arrive on the fixture's thread while this one waits.
    QSignalSpy added(manager.get(), &ComTalvexDBusMediaPlayerMediaManagerInterface::MediaSourceAdded);
    QSignalSpy removed(manager.get(), &ComTalvexDBusMediaPlayerMediaManagerInterface::MediaSourceRemoved);
    manager->moveToThread(&m_Thread);
    m_Thread.start();

    ASSERT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
    const int sources = EXPECTED_NUMBER_OF_TEST_MEDIA_SOURCE;
    MPL::TestUtils::WaitForSignal(added, unsigned(sources), 5000);
    EXPECT_EQ(added.count(), sources);

    const SimulatorProxy simulator(MPL_TestEnvironment::CreateSimulatorProxy());
    ASSERT_TRUE(simulator);
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(simulator->AddMassStorageDevice("USB stick", "00000004")));
    MPL::TestUtils::WaitForSignal(added, unsigned(sources + 1), 5000);
    EXPECT_EQ(added.count(), sources + 1);

    EXPECT_TRUE(
        MPL::TestUtils::WaitForDBusReply(simulator->RemoveMassStorageDevice("USB stick", "00000004")));
    MPL::TestUtils::WaitForSignal(removed, 1, 5000);
    EXPECT_EQ(removed.count(), 1);

    QuitTest();
    m_Thread.wait();
}

} // namespace
