// The media manager client's cycle on a fixture's thread, its hooks and its queries.
#include "ClientTest.h"
#include "WaitUntil.h"

#include <QTimer>

#include <gtest/gtest-spi.h>

using namespace MPL::Doubles;

namespace
{

using Sources = QList<MPL::ServiceObject>;

// Notes what happens, and ends the test when a source is removed.
class Watcher : public MPL::MediaManagerAbstractClient
{
public:
    using MediaManagerAbstractClient::m_Proxy;
    using MediaManagerAbstractClient::MediaManagerAbstractClient;

    void RunTest() override
    {
        const MPL::ServiceObject active = GetActiveMediaSource();
        Note(QStringLiteral("active %1 %2").arg(active.serviceName, active.GetPathString()));
        for (const MPL::ServiceObject& source : GetAvailableMediaSources()) {
            Note("available " + source.serviceName);
        }
        QTimer::singleShot(10000, this, [this] { m_Fixture->QuitTest(); });
        s_Running.release();
    }
    void ActiveMediaSourceChanged(const QString& aService, const QString& aObject) override
    {
        Note(QStringLiteral("changed %1 %2").arg(aService, aObject));
    }
    void MediaSourceAdded(const QString& aService, const QString& aObject) override
    {
        Note(QStringLiteral("added %1 %2").arg(aService, aObject));
    }
    void MediaSourceRemoved(const QString& aService, const QString& aObject) override
    {
        Note(QStringLiteral("removed %1 %2").arg(aService, aObject));
        EXPECT_TRUE(
            WaitUntil("the test waits", [this] { return static_cast<OneTest*>(m_Fixture)->Waits(); }));
        m_Fixture->QuitTest();
    }

    static QSemaphore s_Running;
};

QSemaphore Watcher::s_Running;

class AMediaManagerClient : public ClientTest
{
protected:
    AMediaManagerClient() : m_Source{"s.t", QDBusObjectPath("/t")}
    {
        m_Service.Reply(kPath, "GetActiveMediaSource", QVariant::fromValue(m_Source));
        m_Service.Reply(kPath, "GetAvailableMediaSources", QVariant::fromValue(Sources{m_Source, m_Source}));
    }
    void Signal(const char* aName, const QString& aFirst, const QString& aSecond)
    {
        m_Service.Signal(kPath, "com.talvex.DBus.MediaPlayer.MediaManager", QLatin1String(aName),
                         {aFirst, aSecond});
    }
    const MPL::ServiceObject m_Source;
};

TEST_F(AMediaManagerClient, RunsItsLogicOnTheFixturesThreadUntilItsEndWakesTheTest)
{
    const QString odd = QString::fromUtf8("\xC3\xA4 \"x\"");
    for (int round = 0; round < 50; ++round) {
        ClearNotes();
        OneTest test;
        QPointer<Watcher> client = new Watcher(NewManagerProxy(kServiceName, kPath), &test);
        QPointer<QObject> proxy = client->m_Proxy.data();
        client->moveToThread(&test.m_Thread);
        test.m_Thread.start();
        ASSERT_TRUE(Watcher::s_Running.tryAcquire(1, kLimitMs));
        Signal("MediaSourceAdded", odd, "/a");
        Signal("ActiveMediaSourceChanged", QString(), "/b");
        Signal("MediaSourceRemoved", odd, "/c");
        test.Wait();
        ASSERT_TRUE(test.m_Thread.wait(kLimitMs));
        EXPECT_TRUE(client.isNull());
        EXPECT_TRUE(proxy.isNull());
        ASSERT_EQ(Text(Notes()), Text({"active s.t /t", "available s.t", "available s.t",
                                       QStringLiteral("added %1 /a").arg(odd), "changed  /b",
                                       QStringLiteral("removed %1 /c").arg(odd)}));
    }
}

TEST_F(AMediaManagerClient, LogsFailedQueriesFailsTheTestAndGivesNothing)
{
    m_Service.Fail("/bad", "GetActiveMediaSource", "no");
    m_Service.Fail("/bad", "GetAvailableMediaSources", "no");
    OneTest test;
    Watcher client(NewManagerProxy(kServiceName, "/bad"), &test);
    MPL::ServiceObject active = m_Source;
    Sources sources{m_Source};
    EXPECT_NONFATAL_FAILURE(active = client.GetActiveMediaSource(), "GetActiveMediaSource() failed");
    EXPECT_NONFATAL_FAILURE(sources = client.GetAvailableMediaSources(), "GetAvailableMediaSources() failed");
    EXPECT_TRUE(active.serviceName.isEmpty() && active.GetPathString().isEmpty());
    EXPECT_TRUE(sources.isEmpty());
    const QString line = "debug: %1() error:  QDBusError(\"com.talvex.Error.Test\", \"no\")";
    EXPECT_EQ(Text(Notes()), Text({line.arg("GetActiveMediaSource"), line.arg("GetAvailableMediaSources")}));
}

TEST_F(AMediaManagerClient, IsInertWithoutAProxyAndItsQueriesSaySo)
{
    OneTest test;
    Watcher client(nullptr, &test);
    client.moveToThread(&test.m_Thread);
    test.m_Thread.start();
    test.m_Thread.quit();
    ASSERT_TRUE(test.m_Thread.wait(kLimitMs));
    EXPECT_EQ(Text(Notes()), "");
    EXPECT_NONFATAL_FAILURE(client.GetAvailableMediaSources(), "no media manager proxy");
}

} // namespace
