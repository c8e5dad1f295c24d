// A service checker that starts a client's thread as soon as the service it talks to is on the bus.
//
// The checker notices the service in an event loop of the thread that made it. That is the test's own, which
// runs one while it waits with QTest::qWaitFor().
#include <MPL_Launching.h>
#include <MPL_MediaManagerAbstractClient.h>
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_Proxies.h>
#include <MPL_ServiceChecker.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>

#include <QTest>

#include <atomic>

namespace
{

constexpr int kTimeMs = 10000;

/// Asks the media manager for its active source once its thread starts, and ends the test.
class ActiveSourceReader : public MPL::MediaManagerAbstractClient
{
public:
    ActiveSourceReader(ComTalvexDBusMediaPlayerMediaManagerInterface* aManager, MPL::TestFixture* aFixture,
                       std::atomic<bool>& aDone)
        : MediaManagerAbstractClient(aManager, aFixture), m_Done(aDone)
    {
    }

    void RunTest() override
    {
        EXPECT_EQ(GetActiveMediaSource().serviceName, QString()) << "the state was reset before the launch";
        m_Fixture->QuitTest();
        m_Done = true;
    }

private:
    std::atomic<bool>& m_Done;
};

class StartWhenServiceAppears : public MPL::MediaSourceTestFixture
{
};

TEST_F(StartWhenServiceAppears, RunsTheClientOnceTheServiceIsThere)
{
    std::atomic<bool> done{false};
    auto* manager = MPL_TestEnvironment::CreateMediaManagerProxy();
    ASSERT_NE(manager, nullptr); // a client without a proxy never runs
    auto* client = new ActiveSourceReader(manager, this, done);
    client->moveToThread(&m_Thread);
    const MPL::ServiceChecker checker(&m_Thread, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME);
    EXPECT_FALSE(m_Thread.isRunning());

    EXPECT_TRUE(MPL::LaunchTestSource());
    EXPECT_TRUE(QTest::qWaitFor([&done] { return done.load(); }, kTimeMs))
        << "the client did not run within " << kTimeMs << " ms";
    QuitTest();
    m_Thread.wait();
}

} // namespace
