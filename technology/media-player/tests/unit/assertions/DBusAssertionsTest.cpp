// The assertions on calls and signals, on a private bus with a service of the test's own: what passes, and
// what the failures say.
#include "ClientTest.h"
#include <MPL_DBusAssertions.h>
#include <MPL_Proxies.h>
#include <MPL_TestPrinters.h>

#include <gtest/gtest-spi.h>

namespace
{

using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;

constexpr int kShortMs = 50;

class DBusAssertions : public ClientTest
{
protected:
    DBusAssertions() : m_Manager(kServiceName, kPath, MPL_TestEnvironment::GetDbusConnection()) {}

    void Send(const char* aName, const QString& aService, const QString& aPath)
    {
        m_Service.Signal(kPath, QLatin1String(Manager::staticInterfaceName()), QLatin1String(aName),
                         {aService, aPath});
    }

    // A call to the bus daemon and back: whatever the bus passed on before has been heard.
    void RoundTrip()
    {
        MPL_TestEnvironment::GetDbusConnection().interface()->isServiceRegistered(kServiceName);
    }

    Manager m_Manager;
    const MPL::ServiceObject m_Source{QStringLiteral("s.t"), QDBusObjectPath(QStringLiteral("/t"))};
};

TEST_F(DBusAssertions, PassForAnAnsweredCall)
{
    m_Service.Reply(kPath, QStringLiteral("SetActiveMediaSource"), {});
    m_Service.Reply(kPath, QStringLiteral("GetActiveMediaSource"), QVariant::fromValue(m_Source));
    EXPECT_TRUE(MPL::Replied(m_Manager.SetActiveMediaSource(m_Source)));
    EXPECT_EQ(MPL::ValueOf(m_Manager.GetActiveMediaSource()), m_Source);
    EXPECT_EQ(MPL::ValueOf(QDBusReply<MPL::ServiceObject>(m_Manager.GetActiveMediaSource())), m_Source);
    auto reply = m_Manager.GetActiveMediaSource();
    reply.waitForFinished();
    EXPECT_EQ(testing::PrintToString(reply), R"(QDBusPendingReply(ServiceObject("s.t", "/t")))");
    EXPECT_NONFATAL_FAILURE(EXPECT_FALSE(MPL::Replied(m_Manager.GetActiveMediaSource())),
                            "the call was answered");
}

TEST_F(DBusAssertions, SayHowACallFailed)
{
    m_Service.Fail(kPath, QStringLiteral("GetActiveMediaSource"), QStringLiteral("not today"));
    const auto failed = m_Manager.GetActiveMediaSource();
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(MPL::Replied(failed)),
                            R"((Other (com.talvex.Error.Test): "not today"))");
    EXPECT_FALSE(MPL::Replied(QDBusReply<MPL::ServiceObject>(failed)));

    Manager nobody(QStringLiteral("com.talvex.Nobody"), kPath, MPL_TestEnvironment::GetDbusConnection());
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(MPL::Replied(nobody.GetActiveMediaSource())), "ServiceUnknown");
    Manager lost(kServiceName, kPath, QDBusConnection(QStringLiteral("no such connection")));
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(MPL::Replied(lost.GetActiveMediaSource())), "Disconnected");
}

TEST_F(DBusAssertions, SayWhyThereIsNoValueWhereItWasAskedFor)
{
    m_Service.Reply(kPath, QStringLiteral("GetActiveMediaSource"), 0.5);
    testing::TestPartResultArray results;
    MPL::ServiceObject value;
    {
        const testing::ScopedFakeTestPartResultReporter recorder(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        value = MPL::ValueOf(m_Manager.GetActiveMediaSource());
    }
    const int line = __LINE__ - 2;
    ASSERT_EQ(results.size(), 1);
    const testing::TestPartResult& failure = results.GetTestPartResult(0);
    EXPECT_TRUE(failure.nonfatally_failed());
    EXPECT_STREQ(failure.file_name(), __FILE__);
    EXPECT_EQ(failure.line_number(), line);
    EXPECT_NE(std::string(failure.message()).find("there is no value: InvalidSignature"), std::string::npos)
        << failure.message();
    EXPECT_EQ(value, MPL::ServiceObject());
}

TEST_F(DBusAssertions, HearASignalWhileTheTestBlocks)
{
    MPL::SignalWaiter added(m_Manager, &Manager::MediaSourceAdded);
    Send("MediaSourceAdded", QStringLiteral("a"), QStringLiteral("/1"));
    EXPECT_TRUE(added.Arrives());
    EXPECT_EQ(added.Last(), std::make_tuple(QString("a"), QString("/1")));
}

TEST_F(DBusAssertions, FindEachSignalOnceInAnyOrder)
{
    MPL::SignalWaiter added(m_Manager, &Manager::MediaSourceAdded, kShortMs);
    Send("MediaSourceAdded", QStringLiteral("a"), QStringLiteral("/1"));
    Send("MediaSourceAdded", QStringLiteral("a"), QStringLiteral("/2"));
    RoundTrip();
    EXPECT_TRUE(added.Arrives("a", "/2"));
    EXPECT_TRUE(added.Arrives("a"));
    EXPECT_EQ(std::get<1>(added.Last()), "/1");
    EXPECT_FALSE(added.Arrives());
}

// A service may send anything; the bus carries it.
TEST_F(DBusAssertions, ReadWhatTheSenderTypedOtherwiseAsDefaultValues)
{
    using Browser = ComTalvexDBusMediaPlayerBrowserInterface;
    const Browser browser(kServiceName, kPath, MPL_TestEnvironment::GetDbusConnection());
    MPL::SignalWaiter status(browser, &Browser::SignalBrowseStatus);
    MPL::SignalWaiter results(browser, &Browser::SignalBrowsingResults, kShortMs);
    const QVariant other = QVariant::fromValue(m_Source);
    for (const char* name : {"SignalBrowseStatus", "SignalBrowsingResults"}) {
        m_Service.Signal(kPath, QLatin1String(Browser::staticInterfaceName()), QLatin1String(name),
                         {other, other});
    }
    ASSERT_TRUE(status.Arrives());
    EXPECT_EQ(status.Last(), std::make_tuple(0U, PresetDictionary()));
    ASSERT_TRUE(results.Arrives());
    EXPECT_EQ(results.Last(), std::make_tuple(QList<QVariantMap>(), 0U));
}

TEST_F(DBusAssertions, ReadTheStacksTypesInSignals)
{
    using Browser = ComTalvexDBusMediaPlayerBrowserInterface;
    const Browser browser(kServiceName, kPath, MPL_TestEnvironment::GetDbusConnection());
    MPL::SignalWaiter started(browser, &Browser::SignalReplyStart);
    const auto answer = [this](uint aNumber, const char* aError) {
        m_Service.Signal(kPath, QLatin1String(Browser::staticInterfaceName()),
                         QStringLiteral("SignalReplyStart"),
                         {QVariant::fromValue(MPL::TransactionId(":1.7", aNumber)), QString(aError), 1U});
    };
    answer(1, "another's");
    answer(2, "mine");
    ASSERT_TRUE(started.Arrives(MPL::TransactionId(":1.7", 2)));
    EXPECT_EQ(std::get<1>(started.Last()), "mine");
}

TEST_F(DBusAssertions, SayWhatArrivedInsteadOfASignal)
{
    MPL::SignalWaiter active(m_Manager, &Manager::ActiveMediaSourceChanged, kShortMs);
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(active.Arrives("s.t")),
                            "ActiveMediaSourceChanged(\"s.t\") did not arrive within 50 ms from "
                            "com.talvex.Test.Clients /object\nno other signal arrived either");
    Send("MediaSourceAdded", QStringLiteral("a"), QStringLiteral("/1"));
    Send("ActiveMediaSourceChanged", QStringLiteral("b"), QStringLiteral("/2"));
    MPL::SignalWaiter last(m_Manager, &Manager::MediaSourceRemoved);
    Send("MediaSourceRemoved", QStringLiteral("a"), QStringLiteral("/1"));
    ASSERT_TRUE(last.Arrives());
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(active.Arrives("s.t")),
                            "arrived instead:\n  MediaSourceAdded(\"a\", \"/1\")\n"
                            "  ActiveMediaSourceChanged(\"b\", \"/2\")");
}

TEST_F(DBusAssertions, SayThatNobodyCanSendASignal)
{
    const Manager nobody(QStringLiteral("com.talvex.Nobody"), kPath,
                         MPL_TestEnvironment::GetDbusConnection());
    MPL::SignalWaiter added(nobody, &Manager::MediaSourceAdded, kShortMs);
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(added.Arrives()), "nobody owns that name on the bus now");
    const Manager lost(kServiceName, kPath, QDBusConnection(QStringLiteral("no such connection")));
    MPL::SignalWaiter unheard(lost, &Manager::MediaSourceAdded);
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(unheard.Arrives()), "the proxy has no connection to a bus");
}

} // namespace
