// A service checker that starts a client's thread as soon as the service it talks to is on the bus.
//
// The checker's watcher needs a running event loop, and the test's own thread has none while it waits. So the
// checker is made on the application's main thread.
#include <MPL_MediaManagerAbstractClient.h>
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_Proxies.h>
#include <MPL_ServiceChecker.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>

#include <QCoreApplication>
#include <QSemaphore>

#include <memory>

namespace
{

constexpr int kTimeMs = 10000;

/// Asks the media manager for its active source once its thread starts, and ends the test.
class ActiveSourceReader : public MPL::MediaManagerAbstractClient
{
public:
    ActiveSourceReader(ComTalvexDBusMediaPlayerMediaManagerInterface* aManager, MPL::TestFixture* aFixture,
                       QSemaphore& aDone)
        : MediaManagerAbstractClient(aManager, aFixture), m_Done(aDone)
    {
    }

    void RunTest() override
    {
        EXPECT_EQ(GetActiveMediaSource().serviceName, QString()) << "the state was reset before the launch";
        m_Fixture->QuitTest();
        m_Done.release();
    }

private:
    QSemaphore& m_Done;
};

class StartWhenServiceAppears : public MPL::MediaSourceTestFixture
{
protected:
    std::unique_ptr<MPL::ServiceChecker> WatchFor(const QString& aService)
    {
        std::unique_ptr<MPL::ServiceChecker> checker;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [&] { checker = std::make_unique<MPL::ServiceChecker>(&m_Thread, aService); },
            Qt::BlockingQueuedConnection);
        return checker;
    }

    /// The checker ends where it was made.
    static void Release(std::unique_ptr<MPL::ServiceChecker> aChecker)
    {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [&] { aChecker.reset(); }, Qt::BlockingQueuedConnection);
    }
};

TEST_F(StartWhenServiceAppears, RunsTheClientOnceTheServiceIsThere)
{
    QSemaphore done;
    auto* manager = MPL_TestEnvironment::CreateMediaManagerProxy();
    ASSERT_NE(manager, nullptr); // a client without a proxy never runs, and the thread would not end
    auto* client = new ActiveSourceReader(manager, this, done);
    client->moveToThread(&m_Thread);
    auto checker = WatchFor(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME);
    EXPECT_FALSE(m_Thread.isRunning());

    ASSERT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
    // The client may have ended before this thread gets here, so a Wait() for it could come too late.
    ASSERT_TRUE(done.tryAcquire(1, kTimeMs)) << "the client did not run within " << kTimeMs << " ms";
    m_Thread.wait();
    Release(std::move(checker));
}

} // namespace
