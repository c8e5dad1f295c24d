// The media manager client's cycle on a fixture's thread, its hooks and its queries.
#include "ClientTest.h"

#include <QDeadlineTimer>
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
            Note(QStringLiteral("available ") + source.serviceName);
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
        const QDeadlineTimer deadline(10000);
        while (!static_cast<OneTest*>(m_Fixture)->Waits() && !deadline.hasExpired()) {
            QThread::yieldCurrentThread();
        }
        m_Fixture->QuitTest();
    }

    static QSemaphore s_Running;
};

QSemaphore Watcher::s_Running;

class MediaManagerClientTest : public ClientTest
{
protected:
    MediaManagerClientTest() : m_Source{QStringLiteral("s.t"), QDBusObjectPath(QStringLiteral("/t"))}
    {
        m_Service.Reply(kPath, QStringLiteral("GetActiveMediaSource"), QVariant::fromValue(m_Source));
        m_Service.Reply(kPath, QStringLiteral("GetAvailableMediaSources"),
                        QVariant::fromValue(Sources{m_Source, m_Source}));
    }
    void Signal(const char* aName, const QString& aFirst, const QString& aSecond)
    {
        m_Service.Signal(kPath, QStringLiteral("com.talvex.DBus.MediaPlayer.MediaManager"),
                         QLatin1String(aName), {aFirst, aSecond});
    }
    const MPL::ServiceObject m_Source;
};

TEST_F(MediaManagerClientTest, LogicRunsOnTheFixturesThreadUntilItsEndWakesTheTest)
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
        Signal("MediaSourceAdded", odd, QStringLiteral("/a"));
        Signal("ActiveMediaSourceChanged", QString(), QStringLiteral("/b"));
        Signal("MediaSourceRemoved", odd, QStringLiteral("/c"));
        test.Wait();
        ASSERT_TRUE(test.m_Thread.wait(kLimitMs));
        EXPECT_TRUE(client.isNull());
        EXPECT_TRUE(proxy.isNull());
        ASSERT_EQ(Text(Notes()),
                  Text({QStringLiteral("active s.t /t"), QStringLiteral("available s.t"),
                        QStringLiteral("available s.t"), QStringLiteral("added %1 /a").arg(odd),
                        QStringLiteral("changed  /b"), QStringLiteral("removed %1 /c").arg(odd)}));
    }
}

TEST_F(MediaManagerClientTest, FailedQueriesAreLoggedFailTheTestAndGiveNothing)
{
    m_Service.Fail(QStringLiteral("/bad"), QStringLiteral("GetActiveMediaSource"), QStringLiteral("no"));
    m_Service.Fail(QStringLiteral("/bad"), QStringLiteral("GetAvailableMediaSources"), QStringLiteral("no"));
    OneTest test;
    Watcher client(NewManagerProxy(kServiceName, QStringLiteral("/bad")), &test);
    MPL::ServiceObject active = m_Source;
    Sources sources{m_Source};
    EXPECT_NONFATAL_FAILURE(active = client.GetActiveMediaSource(), "GetActiveMediaSource() failed");
    EXPECT_NONFATAL_FAILURE(sources = client.GetAvailableMediaSources(), "GetAvailableMediaSources() failed");
    EXPECT_TRUE(active.serviceName.isEmpty() && active.GetPathString().isEmpty());
    EXPECT_TRUE(sources.isEmpty());
    const QString line = QStringLiteral("debug: %1() error:  QDBusError(\"com.talvex.Error.Test\", \"no\")");
    EXPECT_EQ(Text(Notes()), Text({line.arg(QStringLiteral("GetActiveMediaSource")),
                                   line.arg(QStringLiteral("GetAvailableMediaSources"))}));
}

TEST_F(MediaManagerClientTest, WithoutAProxyTheClientIsInertAndItsQueriesSaySo)
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
