// A client that reacts to media sources coming and going, on the fixture's own thread, while the test body
// waits.
//
// The test starts the fixture's thread and blocks in Wait(). The client's RunTest() runs on that thread,
// signals reach its hooks there, and QuitTest() ends the thread, which wakes the test.
#include <MPL_MediaManagerAbstractClient.h>
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestUtils.h>

#include <QStringList>

#include <memory>

namespace
{

const QString kDeviceName = QStringLiteral("USB stick");
const QString kDeviceId = QStringLiteral("00000004");

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
    SourceWatcher(ComTalvexDBusMediaPlayerMediaManagerInterface* aManager, MPL::TestFixture* aFixture,
                  Seen& aSeen)
        : MediaManagerAbstractClient(aManager, aFixture), m_Seen(aSeen)
    {
    }

    void RunTest() override
    {
        m_Simulator.reset(MPL_TestEnvironment::CreateSimulatorProxy());
        if (!m_Simulator ||
            !MPL::TestUtils::WaitForDBusReply(m_Simulator->AddMassStorageDevice(kDeviceName, kDeviceId))) {
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
    std::unique_ptr<ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface> m_Simulator;
};

class ReactToSources : public MPL::MediaSourceTestFixture
{
protected:
    /// Waits until the media manager lists every source of the test source service.
    static bool AllSourcesListed()
    {
        const std::unique_ptr<ComTalvexDBusMediaPlayerMediaManagerInterface> manager(
            MPL_TestEnvironment::CreateMediaManagerProxy());
        for (int attempt = 0; manager && attempt < 50; ++attempt) {
            auto sources = manager->GetAvailableMediaSources();
            sources.waitForFinished();
            if (sources.value().size() == EXPECTED_NUMBER_OF_TEST_MEDIA_SOURCE) {
                return true;
            }
            QThread::msleep(100);
        }
        return false;
    }
};

TEST_F(ReactToSources, SeesADeviceComeAndGo)
{
    ASSERT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
    ASSERT_TRUE(AllSourcesListed());

    Seen seen;
    auto* manager = MPL_TestEnvironment::CreateMediaManagerProxy();
    ASSERT_NE(manager, nullptr); // a client without a proxy never runs, and the wait would not end
    auto* client = new SourceWatcher(manager, this, seen);
    client->moveToThread(&m_Thread);
    m_Thread.start();
    Wait();
    m_Thread.wait();

    ASSERT_EQ(seen.added.size(), 1);
    EXPECT_EQ(seen.removed, seen.added);
    EXPECT_TRUE(seen.onFixtureThread);
}

} // namespace
