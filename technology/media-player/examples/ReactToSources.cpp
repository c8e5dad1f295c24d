// A client that reacts to media sources coming and going, on the fixture's own thread, while the test body
// waits.
//
// The test makes the proxies, starts the fixture's thread and waits for its end. The client's RunTest() runs
// on that thread, signals reach its hooks there, and QuitTest() ends the thread. The environment controller
// is called by the test alone; on the fixture's thread only proxies are used.
#include <MPL_Launching.h>
#include <MPL_MediaManagerAbstractClient.h>
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>
#include <MPL_TestUtils.h>

#include <QStringList>

#include <memory>
#include <utility>

namespace
{

const QString kDeviceName = QStringLiteral("USB stick");
const QString kDeviceId = QStringLiteral("00000004");
constexpr unsigned long kTimeMs = 10000;

using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;
using Simulator = ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface;

/// What the client saw; it outlives the client, which deletes itself at the thread's end.
struct Seen {
    QStringList added;
    QStringList removed;
    bool onFixtureThread = true;
};

/// Plugs a device in, waits for its source, pulls it out again and ends the test once the source has gone.
class SourceWatcher : public MPL::MediaManagerAbstractClient
{
public:
    /// Both proxies come to live on the fixture's thread; the client owns the simulator.
    SourceWatcher(Manager* aManager, std::unique_ptr<Simulator> aSimulator, MPL::TestFixture* aFixture,
                  Seen& aSeen)
        : MediaManagerAbstractClient(aManager, aFixture), m_Seen(aSeen), m_Simulator(std::move(aSimulator))
    {
        m_Simulator->moveToThread(m_Thread);
    }

    void RunTest() override
    {
        if (!MPL::TestUtils::WaitForDBusReply(m_Simulator->AddMassStorageDevice(kDeviceName, kDeviceId))) {
            ADD_FAILURE() << "no device could be added";
            m_Fixture->QuitTest();
        }
    }

    void MediaSourceAdded(const QString&, const QString& aPath) override
    {
        m_Seen.added << aPath;
        m_Seen.onFixtureThread &= QThread::currentThread() == m_Thread;
        m_Simulator->RemoveMassStorageDevice(kDeviceName, kDeviceId);
    }

    void MediaSourceRemoved(const QString&, const QString& aPath) override
    {
        m_Seen.removed << aPath;
        m_Fixture->QuitTest();
    }

private:
    Seen& m_Seen;
    std::unique_ptr<Simulator> m_Simulator;
};

class ReactToSources : public MPL::MediaSourceTestFixture
{
};

TEST_F(ReactToSources, SeesADeviceComeAndGo)
{
    ASSERT_TRUE(MPL::LaunchTestSource());
    const QString service = MPL_TEST_MEDIA_SOURCE_SERVICE_NAME;
    ASSERT_TRUE(MPL::ManagerLists({service, service, service})); // it has three

    Seen seen;
    auto* manager = MPL_TestEnvironment::CreateMediaManagerProxy();
    std::unique_ptr<Simulator> simulator(MPL_TestEnvironment::CreateSimulatorProxy());
    ASSERT_NE(manager, nullptr); // a client without a proxy never runs
    ASSERT_NE(simulator, nullptr);
    auto* client = new SourceWatcher(manager, std::move(simulator), this, seen);
    client->moveToThread(&m_Thread);
    m_Thread.start();
    if (!m_Thread.wait(kTimeMs)) {
        QuitTest();
        m_Thread.wait();
        FAIL() << "the device did not come and go within " << kTimeMs << " ms";
    }

    ASSERT_EQ(seen.added.size(), 1);
    EXPECT_EQ(seen.removed, seen.added);
    EXPECT_TRUE(seen.onFixtureThread);
}

} // namespace
