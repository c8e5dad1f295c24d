// When proxies and clients go. What goes twice, too early or never is for the sanitizers to see.
#include "ClientTest.h"
#include <MPL_PlaybackClient.h>
#include <MPL_ServiceChecker.h>

#include <QSemaphore>

using namespace MPL::Doubles;

namespace
{

class Idle : public MPL::MediaManagerAbstractClient
{
public:
    using MediaManagerAbstractClient::MediaManagerAbstractClient;
    void RunTest() override {}
};

class Player : public MPL::PlaybackClient
{
public:
    using PlaybackClient::m_Proxy;
    using PlaybackClient::PlaybackClient;
};

using ClientLifetime = ClientTest;

TEST_F(ClientLifetime, ManagerProxyGoesWithTheClientOrTheThreadWhicheverIsFirst)
{
    enum Moment { BeforeTheThread, WhileItRuns, WhileItEnds, AfterIt };
    for (int round = 0; round < 200; ++round) {
        const auto moment = static_cast<Moment>(round % 4);
        OneTest test;
        QPointer<QObject> proxy = NewManagerProxy(kServiceName, kPath);
        auto client = std::make_unique<Idle>(
            static_cast<ComTalvexDBusMediaPlayerMediaManagerInterface*>(proxy.data()), &test);
        if (moment == BeforeTheThread) {
            client.reset();
            EXPECT_TRUE(proxy.isNull());
        }
        test.m_Thread.start();
        if (moment == WhileItRuns) {
            // Signals keep arriving while it goes.
            m_Service.Signal(kPath, "com.talvex.DBus.MediaPlayer.MediaManager", "MediaSourceAdded",
                             {QString(), QString()});
            client.reset();
        }
        test.QuitTest();
        if (moment == WhileItEnds) {
            client.reset();
        }
        ASSERT_TRUE(test.m_Thread.wait(kLimitMs));
        EXPECT_TRUE(proxy.isNull()) << moment;
    }
}

TEST_F(ClientLifetime, AClientDeletedOnItsOwnRunningThreadLeavesTheProxyToTheThreadsEnd)
{
    OneTest test;
    auto* proxy = NewManagerProxy(kServiceName, kPath);
    const QPointer<QObject> watchedProxy = proxy;
    auto* client = new Idle(proxy, &test);
    client->moveToThread(&test.m_Thread);
    QSemaphore gone;
    QObject::connect(client, &QObject::destroyed, [&gone] { gone.release(); });
    test.m_Thread.start();
    client->deleteLater(); // by that thread
    ASSERT_TRUE(gone.tryAcquire(1, kLimitMs));
    EXPECT_FALSE(watchedProxy.isNull());
    test.QuitTest();
    ASSERT_TRUE(test.m_Thread.wait(kLimitMs));
    EXPECT_TRUE(watchedProxy.isNull());
}

TEST_F(ClientLifetime, PlaybackProxyOutlivesTheClientUntilTheThreadEnds)
{
    for (int round = 0; round < 50; ++round) {
        QThread thread;
        QPointer<QObject> proxy;
        {
            const Player client(kServiceName, kPath, &thread);
            proxy = client.m_Proxy.data();
            thread.start();
        }
        EXPECT_FALSE(proxy.isNull());
        thread.quit();
        ASSERT_TRUE(thread.wait(kLimitMs));
        EXPECT_TRUE(proxy.isNull());
    }
}

TEST_F(ClientLifetime, AThousandClientsOfEachKindLeaveNothing)
{
    OneTest test;
    QList<QPointer<QObject>> proxies;
    for (int round = 0; round < 1000; ++round) {
        auto* proxy = NewManagerProxy(kServiceName, kPath);
        const Idle idle(proxy, &test);
        const Player player(kServiceName, kPath, &test.m_Thread);
        const MPL::ServiceChecker checker(&test.m_Thread, kServiceName);
        proxies << proxy << player.m_Proxy.data();
    }
    test.m_Thread.start();
    test.QuitTest();
    ASSERT_TRUE(test.m_Thread.wait(kLimitMs));
    for (const QPointer<QObject>& proxy : qAsConst(proxies)) {
        ASSERT_TRUE(proxy.isNull());
    }
}

} // namespace
