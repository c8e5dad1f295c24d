// The playback client's calls, slots and hooks.
#include "ClientTest.h"
#include <MPL_PlaybackClient.h>
#include <MPL_TestUtils.h>

#include <functional>

using namespace MPL::Doubles;

namespace
{

const QString kInterfaceName = QStringLiteral("com.talvex.DBus.MediaPlayer.PlaybackControl");

class Listener : public MPL::PlaybackClient
{
public:
    using PlaybackClient::m_Functionalities;
    using PlaybackClient::m_FunctionalityUpdatesDisabled;
    using PlaybackClient::m_Proxy;
    using PlaybackClient::PlaybackClient;

    void HandleError(const QString& aText) override
    {
        Hook("error", aText);
        PlaybackClient::HandleError(aText);
    }
    void HandleFunctionalitiesChanged(const QString& aText) override { Hook("functionalities", aText); }
    void HandlePlayStateChanged(const QString& aText) override { Hook("play state", aText); }
    void HandleRepeatModeChanged(const QString& aText) override { Hook("repeat", aText); }
    void HandleShuffleModeChanged(const QString& aText) override { Hook("shuffle", aText); }
    void HandleSpeedModeChanged(const QString& aText) override { Hook("speed", aText); }

    QSemaphore m_Hooks;

private:
    void Hook(const char* aName, const QString& aText)
    {
        Note(QStringLiteral("hook %1 %2").arg(QLatin1String(aName), aText));
        m_Hooks.release();
    }
};

class PlaybackClientTest : public ClientTest
{
protected:
    ~PlaybackClientTest() override
    {
        m_Thread.start(); // its end disposes of the proxies
        m_Thread.quit();
        m_Thread.wait();
    }
    QThread m_Thread;
};

using Client = MPL::PlaybackClient;

// A query as an operation; what it delivered is in `aOut`.
template <bool (Client::*Query)(QString&)>
bool Get(Client& aClient, QString& aOut)
{
    return (aClient.*Query)(aOut);
}

bool GetSpeeds(Client& aClient, QString& aOut)
{
    QStringList modes{aOut};
    const bool ok = aClient.GetAllSpeedModes(modes);
    aOut = modes.join(QLatin1Char(' '));
    return ok;
}

TEST_F(PlaybackClientTest, OperationsCallTheSourceAndReportMissingProxiesAndErrors)
{
    const QString odd = QString::fromUtf8("a \"\xE2\x82\xAC\"\n");
    const QVariant no(false); // the source's own verdict is not the operation's result
    const struct {
        const char* name;
        std::function<bool(Client&, QString&)> run;
        QVariantList sent;
        QVariant reply;
        QString delivered = QStringLiteral("before");
    } operations[] = {
        {"NextTrack", [](Client& aC, QString&) { return aC.NextTrack(); }, {}, no},
        {"PreviousTrack", [](Client& aC, QString&) { return aC.PreviousTrack(); }, {}, no},
        {"Pause", [](Client& aC, QString&) { return aC.Pause(); }, {}, no},
        {"Resume", [](Client& aC, QString&) { return aC.Resume(); }, {}, no},
        {"SeekTrack", [&](Client& aC, QString&) { return aC.SeekTrack(odd); }, {odd}, no},
        {"SeekToTime", [](Client& aC, QString&) { return aC.SeekToTime(4294967295U); }, {4294967295U}, {}},
        {"Jump", [](Client& aC, QString&) { return aC.Jump(-5000); }, {-5000}, {}},
        {"SetTrackIndex", [](Client& aC, QString&) { return aC.SetTrackIndex(7U); }, {7U}, no},
        {"SetRepeatMode", [&](Client& aC, QString&) { return aC.SetRepeatMode(odd); }, {odd}, no},
        {"SetShuffleMode", [&](Client& aC, QString&) { return aC.SetShuffleMode(odd); }, {odd}, no},
        {"SetSpeedMode", [&](Client& aC, QString&) { return aC.SetSpeedMode(odd); }, {odd}, no},
        {"GetAllSpeedModes",
         GetSpeeds,
         {},
         QStringList{QStringLiteral("x"), odd},
         QStringLiteral("x ") + odd},
        {"GetFunctionalities", Get<&Client::GetFunctionalities>, {}, odd, odd},
        {"GetPlayState", Get<&Client::GetPlayState>, {}, odd, odd},
        {"GetRepeatMode", Get<&Client::GetRepeatMode>, {}, odd, odd},
        {"GetShuffleMode", Get<&Client::GetShuffleMode>, {}, odd, odd},
        {"GetSpeedMode", Get<&Client::GetSpeedMode>, {}, odd, odd},
    };
    Client inert(&m_Thread);
    Client refused(kServiceName, QStringLiteral("/refused"), &m_Thread);
    Client served(kServiceName, kPath, &m_Thread);
    for (const auto& operation : operations) {
        SCOPED_TRACE(operation.name);
        const QString name = QLatin1String(operation.name);
        QString out = QStringLiteral("before");
        ClearNotes();
        EXPECT_FALSE(operation.run(inert, out));
        m_Service.Fail(QStringLiteral("/refused"), name, QStringLiteral("broken"));
        EXPECT_FALSE(operation.run(refused, out));
        EXPECT_EQ(out, QStringLiteral("before"));
        EXPECT_EQ(Text(Notes()), Text({QStringLiteral("critical: %1 Invalid PlaybackControl Proxy").arg(name),
                                       QStringLiteral("critical: %1 DBus error "
                                                      "QDBusError(\"com.talvex.Error.Test\", \"broken\")")
                                           .arg(name)}));
        m_Service.Reply(kPath, name, operation.reply);
        EXPECT_TRUE(operation.run(served, out));
        EXPECT_EQ(out, operation.delivered);
        EXPECT_EQ(m_Service.Calls().last(), QStringLiteral("%1 %2.%3").arg(kPath, kInterfaceName, name));
        EXPECT_EQ(m_Service.LastArguments(), operation.sent);
        EXPECT_EQ(Notes().size(), 2);
    }
    m_Service.Reply(QStringLiteral("/mistyped"), QStringLiteral("GetPlayState"), 5);
    QString state;
    EXPECT_FALSE(Client(kServiceName, QStringLiteral("/mistyped"), &m_Thread).GetPlayState(state));
}

TEST_F(PlaybackClientTest, WithoutAThreadThereIsNoProxy)
{
    Listener client(kServiceName, kPath, nullptr);
    EXPECT_TRUE(client.m_Proxy.isNull());
    EXPECT_EQ(
        Text(Notes()),
        Text({QStringLiteral("critical: PlaybackClient::PlaybackClient Invalid PlaybackControl proxy")}));
}

TEST_F(PlaybackClientTest, SignalsReachTheHooksUnchangedInTheirOrder)
{
    Listener client(kServiceName, kPath, &m_Thread);
    client.moveToThread(&m_Thread);
    m_Thread.start();
    const QString odd = QString::fromUtf8("event_type=ERROR;text=\xC3\xA4 \"\xF0\x9F\x8E\xB5\"\t");
    const char* const names[] = {"SignalEvent",
                                 "SignalFunctionalitiesChanged",
                                 "SignalPlayStateChanged",
                                 "SignalRepeatModeChanged",
                                 "SignalShuffleModeChanged",
                                 "SignalSpeedModeChanged"};
    for (const char* name : names) {
        m_Service.Signal(kPath, kInterfaceName, QLatin1String(name), {odd});
    }
    ASSERT_TRUE(client.m_Hooks.tryAcquire(6, kLimitMs)) << Text(Notes());
    QStringList expected;
    for (const char* hook : {"error", "functionalities", "play state", "repeat", "shuffle", "speed"}) {
        expected << QStringLiteral("hook %1 %2").arg(QLatin1String(hook), odd);
    }
    EXPECT_EQ(Text(Notes(QStringLiteral("hook"))), Text(expected));
    m_Thread.quit();
    ASSERT_TRUE(m_Thread.wait(kLimitMs));
    EXPECT_TRUE(client.m_Proxy.isNull());
    EXPECT_FALSE(client.Pause());
}

void Send(Listener& aClient, const char* aSlot, const QString& aText)
{
    ASSERT_TRUE(QMetaObject::invokeMethod(&aClient, aSlot, Qt::DirectConnection, Q_ARG(QString, aText)));
}

TEST_F(PlaybackClientTest, EveryEventIsLoggedAndOnlyErrorsAreHandled)
{
    Listener client(nullptr);
    const QString error = QStringLiteral("event=X;event_type=ERROR");
    for (const QString& event : {error, QStringLiteral("event_type=INFO"), QStringLiteral("event_type=error"),
                                 QStringLiteral("other=ERROR"), QString()}) {
        ClearNotes();
        Send(client, "Event", event);
        QStringList expected{QStringLiteral("critical: PlaybackClient::Event -- \"%1\"").arg(event)};
        if (event == error) {
            expected << QStringLiteral("hook error ") + event
                     << QStringLiteral("debug: PlaybackClient::HandleError -- Error not handled: \"%1\"")
                            .arg(event);
        }
        EXPECT_EQ(Text(Notes()), Text(expected));
    }
}

TEST_F(PlaybackClientTest, FirstTextWithBothModesResetsThemOnceEvenWhileUpdatesAreDisabled)
{
    Listener client(kServiceName, kPath, &m_Thread);
    m_Service.Fail(kPath, QStringLiteral("SetRepeatMode"), QStringLiteral("no")); // the result is ignored
    m_Service.Reply(kPath, QStringLiteral("SetShuffleMode"), true);
    const QString text = QStringLiteral(R"({"available_functionalities": {"%1": {"options": ["%2"]}}})");
    const QString both =
        text.arg(QStringLiteral("B"), QStringLiteral("REPEAT_MODE_ONE\", \"SHUFFLE_MODE_OFF"));
    Send(client, "FunctionalitiesChanged", text.arg(QStringLiteral("A"), QStringLiteral("REPEAT_MODE_ONE")));
    Send(client, "FunctionalitiesChanged", both.toLower());
    EXPECT_TRUE(m_Service.Calls().isEmpty());
    Send(client, "FunctionalitiesChanged", text.arg(QStringLiteral("A"), QStringLiteral("SHUFFLE_MODE_OFF")));

    client.m_FunctionalityUpdatesDisabled = true;
    ClearNotes();
    Send(client, "FunctionalitiesChanged", both);
    const QString member = kPath + QLatin1Char(' ') + kInterfaceName + QLatin1Char('.');
    EXPECT_EQ(m_Service.Calls(), QStringList({member + QStringLiteral("SetRepeatMode"),
                                              member + QStringLiteral("SetShuffleMode")}));
    EXPECT_EQ(m_Service.LastArguments(), QVariantList{QStringLiteral("SHUFFLE_MODE_OFF")});
    EXPECT_EQ(Notes().value(0), QStringLiteral("debug: Resetting PlaybackControl state."));
    EXPECT_EQ(Notes(QStringLiteral("hook")), QStringList());
    EXPECT_EQ(client.m_Functionalities.keys(), QStringList(QStringLiteral("A")));

    client.m_FunctionalityUpdatesDisabled = false;
    Send(client, "FunctionalitiesChanged", both);
    EXPECT_EQ(m_Service.Calls().size(), 2);
    EXPECT_EQ(client.m_Functionalities.keys(), QStringList(QStringLiteral("B")));
    EXPECT_EQ(Notes(QStringLiteral("hook")), QStringList(QStringLiteral("hook functionalities ") + both));
}

TEST_F(PlaybackClientTest, WaitForDBusReplyTellsSuccessAndKeepsTheValueOnFailure)
{
    ComTalvexDBusMediaPlayerPlaybackControlInterface proxy(kServiceName, kPath,
                                                           MPL_TestEnvironment::GetDbusConnection());
    m_Service.Reply(kPath, QStringLiteral("Jump"), {});
    m_Service.Reply(kPath, QStringLiteral("Pause"), true);
    m_Service.Fail(kPath, QStringLiteral("SeekToTime"), QStringLiteral("no"));
    m_Service.Fail(kPath, QStringLiteral("Resume"), QStringLiteral("no"));
    m_Service.Reply(kPath, QStringLiteral("NextTrack"), QStringLiteral("no boolean"));
    bool value = false;
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(proxy.Jump(1)));
    EXPECT_FALSE(MPL::TestUtils::WaitForDBusReply(proxy.SeekToTime(1)));
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(proxy.Pause(), value));
    EXPECT_TRUE(value);
    EXPECT_EQ(Text(Notes()), "");
    EXPECT_FALSE(MPL::TestUtils::WaitForDBusReply(proxy.Resume(), value));
    EXPECT_FALSE(MPL::TestUtils::WaitForDBusReply(proxy.NextTrack(), value));
    EXPECT_TRUE(value);
    const QString line = QStringLiteral("debug: TestUtils::WaitForDBusReply -- D-Bus error: QDBusError(\"%1");
    EXPECT_EQ(Notes().value(0), line.arg(QStringLiteral("com.talvex.Error.Test\", \"no\")")));
    EXPECT_TRUE(Notes().value(1).startsWith(
        line.arg(QStringLiteral("org.freedesktop.DBus.Error.InvalidSignature\""))))
        << Text(Notes());
}

} // namespace
