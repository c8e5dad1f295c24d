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
        running.release();
    }
    void ActiveMediaSourceChanged(const QString& service, const QString& object) override
    {
        Note(QStringLiteral("changed %1 %2").arg(service, object));
    }
    void MediaSourceAdded(const QString& service, const QString& object) override
    {
        Note(QStringLiteral("added %1 %2").arg(service, object));
    }
    void MediaSourceRemoved(const QString& service, const QString& object) override
    {
        Note(QStringLiteral("removed %1 %2").arg(service, object));
        const QDeadlineTimer deadline(10000);
        while (!static_cast<OneTest*>(m_Fixture)->Waits() && !deadline.hasExpired()) {
            QThread::yieldCurrentThread();
        }
        m_Fixture->QuitTest();
    }

    static QSemaphore running;
};

QSemaphore Watcher::running;

class MediaManagerClientTest : public ClientTest
{
protected:
    MediaManagerClientTest() : m_Source{QStringLiteral("s.t"), QDBusObjectPath(QStringLiteral("/t"))}
    {
        m_Service.Reply(path, QStringLiteral("GetActiveMediaSource"), QVariant::fromValue(m_Source));
        m_Service.Reply(path, QStringLiteral("GetAvailableMediaSources"),
                        QVariant::fromValue(Sources{m_Source, m_Source}));
    }
    void Signal(const char* name, const QString& first, const QString& second)
    {
        m_Service.Signal(path, QStringLiteral("com.talvex.DBus.MediaPlayer.MediaManager"),
                         QLatin1String(name), {first, second});
    }
    const MPL::ServiceObject m_Source;
};

TEST_F(MediaManagerClientTest, LogicRunsOnTheFixturesThreadUntilItsEndWakesTheTest)
{
    const QString odd = QString::fromUtf8("\xC3\xA4 \"x\"");
    for (int round = 0; round < 50; ++round) {
        ClearNotes();
        OneTest test;
        QPointer<Watcher> client = new Watcher(NewManagerProxy(serviceName, path), &test);
        QPointer<QObject> proxy = client->m_Proxy.data();
        client->moveToThread(&test.m_Thread);
        test.m_Thread.start();
        ASSERT_TRUE(Watcher::running.tryAcquire(1, limitMs));
        Signal("MediaSourceAdded", odd, QStringLiteral("/a"));
        Signal("ActiveMediaSourceChanged", QString(), QStringLiteral("/b"));
        Signal("MediaSourceRemoved", odd, QStringLiteral("/c"));
        test.Wait();
        ASSERT_TRUE(test.m_Thread.wait(limitMs));
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
    Watcher client(NewManagerProxy(serviceName, QStringLiteral("/bad")), &test);
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
    ASSERT_TRUE(test.m_Thread.wait(limitMs));
    EXPECT_EQ(Text(Notes()), "");
    EXPECT_NONFATAL_FAILURE(client.GetAvailableMediaSources(), "no media manager proxy");
}

} // namespace
