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

#include <memory>

namespace
{

/// Asks the media manager for its active source once its thread starts, and ends the test.
class ActiveSourceReader : public MPL::MediaManagerAbstractClient
{
public:
    ActiveSourceReader(MPL::TestFixture* fixture, bool& ran)
        : MediaManagerAbstractClient(MPL_TestEnvironment::CreateMediaManagerProxy(), fixture),
          m_Fixture(fixture),
          m_Ran(ran)
    {
    }

    void RunTest() override
    {
        EXPECT_EQ(GetActiveMediaSource().serviceName, QString()) << "the state was reset before the launch";
        m_Ran = true;
        m_Fixture->QuitTest();
    }

private:
    MPL::TestFixture* m_Fixture;
    bool& m_Ran;
};

class StartWhenServiceAppears : public MPL::MediaSourceTestFixture
{
protected:
    std::unique_ptr<MPL::ServiceChecker> WatchFor(const QString& service)
    {
        std::unique_ptr<MPL::ServiceChecker> checker;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [&] { checker = std::make_unique<MPL::ServiceChecker>(&m_Thread, service); },
            Qt::BlockingQueuedConnection);
        return checker;
    }

    /// The checker ends where it was made.
    static void Release(std::unique_ptr<MPL::ServiceChecker> checker)
    {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [&] { checker.reset(); }, Qt::BlockingQueuedConnection);
    }
};

TEST_F(StartWhenServiceAppears, RunsTheClientOnceTheServiceIsThere)
{
    bool ran = false;
    auto* client = new ActiveSourceReader(this, ran);
    client->moveToThread(&m_Thread);
    auto checker = WatchFor(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME);
    EXPECT_FALSE(m_Thread.isRunning());

    ASSERT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
    m_Thread.wait();
    EXPECT_TRUE(ran);
    Release(std::move(checker));
}

} // namespace
