// The playback client's calls, slots and hooks.
#include "ClientTest.h"
#include <MPL_PlaybackClient.h>
#include <MPL_TestUtils.h>

#include <functional>

using namespace MPL::Doubles;

namespace
{

const QString kInterfaceName = "com.talvex.DBus.MediaPlayer.PlaybackControl";

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

class APlaybackClient : public ClientTest
{
protected:
    ~APlaybackClient() override
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
    aOut = modes.join(' ');
    return ok;
}

const QString kOdd = QString::fromUtf8("a \"\xE2\x82\xAC\"\n");
const QVariant kNo(false); // the source's own verdict is not the operation's result
const struct {
    const char* name;
    std::function<bool(Client&, QString&)> run;
    QVariantList sent;
    QVariant reply;
    QString delivered = "before";
} kOperations[] = {
    {"NextTrack", [](Client& aC, QString&) { return aC.NextTrack(); }, {}, kNo},
    {"PreviousTrack", [](Client& aC, QString&) { return aC.PreviousTrack(); }, {}, kNo},
    {"Pause", [](Client& aC, QString&) { return aC.Pause(); }, {}, kNo},
    {"Resume", [](Client& aC, QString&) { return aC.Resume(); }, {}, kNo},
    {"SeekTrack", [](Client& aC, QString&) { return aC.SeekTrack(kOdd); }, {kOdd}, kNo},
    {"SeekToTime", [](Client& aC, QString&) { return aC.SeekToTime(4294967295U); }, {4294967295U}, {}},
    {"Jump", [](Client& aC, QString&) { return aC.Jump(-5000); }, {-5000}, {}},
    {"SetTrackIndex", [](Client& aC, QString&) { return aC.SetTrackIndex(7U); }, {7U}, kNo},
    {"SetRepeatMode", [](Client& aC, QString&) { return aC.SetRepeatMode(kOdd); }, {kOdd}, kNo},
    {"SetShuffleMode", [](Client& aC, QString&) { return aC.SetShuffleMode(kOdd); }, {kOdd}, kNo},
    {"SetSpeedMode", [](Client& aC, QString&) { return aC.SetSpeedMode(kOdd); }, {kOdd}, kNo},
    {"GetAllSpeedModes", GetSpeeds, {}, QStringList{"x", kOdd}, "x " + kOdd},
    {"GetFunctionalities", Get<&Client::GetFunctionalities>, {}, kOdd, kOdd},
    {"GetPlayState", Get<&Client::GetPlayState>, {}, kOdd, kOdd},
    {"GetRepeatMode", Get<&Client::GetRepeatMode>, {}, kOdd, kOdd},
    {"GetShuffleMode", Get<&Client::GetShuffleMode>, {}, kOdd, kOdd},
    {"GetSpeedMode", Get<&Client::GetSpeedMode>, {}, kOdd, kOdd},
};

TEST_F(APlaybackClient, CallsTheSourceAndReportsMissingProxiesAndErrors)
{
    Client inert(&m_Thread);
    Client refused(kServiceName, "/refused", &m_Thread);
    Client served(kServiceName, kPath, &m_Thread);
    for (const auto& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        const QString name = QLatin1String(operation.name);
        QString out = "before";
        ClearNotes();
        EXPECT_FALSE(operation.run(inert, out));
        m_Service.Fail("/refused", name, "broken");
        EXPECT_FALSE(operation.run(refused, out));
        EXPECT_EQ(out, "before");
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
}

TEST_F(APlaybackClient, TakesAReplyOfTheWrongTypeForAnError)
{
    m_Service.Reply(kPath, "GetPlayState", 5);
    QString state;
    EXPECT_FALSE(Client(kServiceName, kPath, &m_Thread).GetPlayState(state));
}

TEST_F(APlaybackClient, HasNoProxyWithoutAThread)
{
    Listener client(kServiceName, kPath, nullptr);
    EXPECT_TRUE(client.m_Proxy.isNull());
    EXPECT_EQ(Text(Notes()), "critical: PlaybackClient::PlaybackClient Invalid PlaybackControl proxy");
}

TEST_F(APlaybackClient, PassesSignalsToTheHooksUnchangedInTheirOrder)
{
    Listener client(kServiceName, kPath, &m_Thread);
    client.moveToThread(&m_Thread);
    m_Thread.start();
    const QString odd = QString::fromUtf8("event_type=ERROR;text=\xC3\xA4 \"\xF0\x9F\x8E\xB5\"\t");
    const QVector<QPair<QString, QString>> hooks{{"Event", "error"},
                                                 {"FunctionalitiesChanged", "functionalities"},
                                                 {"PlayStateChanged", "play state"},
                                                 {"RepeatModeChanged", "repeat"},
                                                 {"ShuffleModeChanged", "shuffle"},
                                                 {"SpeedModeChanged", "speed"}};
    QStringList expected;
    for (const auto& [signal, hook] : hooks) {
        m_Service.Signal(kPath, kInterfaceName, "Signal" + signal, {odd});
        expected << "hook " + hook + ' ' + odd;
    }
    ASSERT_TRUE(client.m_Hooks.tryAcquire(6, kLimitMs)) << Text(Notes());
    EXPECT_EQ(Text(Notes("hook")), Text(expected));
    m_Thread.quit();
    ASSERT_TRUE(m_Thread.wait(kLimitMs));
    EXPECT_TRUE(client.m_Proxy.isNull());
    EXPECT_FALSE(client.Pause());
}

void Send(Listener& aClient, const char* aSlot, const QString& aText)
{
    ASSERT_TRUE(QMetaObject::invokeMethod(&aClient, aSlot, Qt::DirectConnection, Q_ARG(QString, aText)));
}

TEST_F(APlaybackClient, LogsEveryEventAndHandlesErrorsOnly)
{
    Listener client(nullptr);
    const QString error = "event=X;event_type=ERROR";
    for (const QString& event :
         QStringList{error, "event_type=INFO", "event_type=error", "other=ERROR", ""}) {
        ClearNotes();
        Send(client, "Event", event);
        QStringList expected{QStringLiteral("critical: PlaybackClient::Event -- \"%1\"").arg(event)};
        if (event == error) {
            expected << "hook error " + event
                     << QStringLiteral("debug: PlaybackClient::HandleError -- Error not handled: \"%1\"")
                            .arg(event);
        }
        EXPECT_EQ(Text(Notes()), Text(expected));
    }
}

TEST_F(APlaybackClient, ResetsBothModesOnceByTheFirstTextThatHasThemEvenWhileUpdatesAreDisabled)
{
    Listener client(kServiceName, kPath, &m_Thread);
    m_Service.Fail(kPath, "SetRepeatMode", "no"); // the result is ignored
    m_Service.Reply(kPath, "SetShuffleMode", true);
    const QString text = R"({"available_functionalities": {"%1": {"options": ["%2"]}}})";
    const QString both = text.arg("B", "REPEAT_MODE_ONE\", \"SHUFFLE_MODE_OFF");
    Send(client, "FunctionalitiesChanged", text.arg("A", "REPEAT_MODE_ONE"));
    Send(client, "FunctionalitiesChanged", both.toLower());
    EXPECT_TRUE(m_Service.Calls().isEmpty());
    Send(client, "FunctionalitiesChanged", text.arg("A", "SHUFFLE_MODE_OFF"));

    client.m_FunctionalityUpdatesDisabled = true;
    ClearNotes();
    Send(client, "FunctionalitiesChanged", both);
    const QString member = kPath + ' ' + kInterfaceName + '.';
    EXPECT_EQ(m_Service.Calls(), QStringList({member + "SetRepeatMode", member + "SetShuffleMode"}));
    EXPECT_EQ(m_Service.LastArguments(), QVariantList{"SHUFFLE_MODE_OFF"});
    EXPECT_EQ(Notes().value(0), "debug: Resetting PlaybackControl state.");
    EXPECT_EQ(Notes("hook"), QStringList());
    EXPECT_EQ(client.m_Functionalities.keys(), QStringList("A"));

    client.m_FunctionalityUpdatesDisabled = false;
    Send(client, "FunctionalitiesChanged", both);
    EXPECT_EQ(m_Service.Calls().size(), 2);
    EXPECT_EQ(client.m_Functionalities.keys(), QStringList("B"));
    EXPECT_EQ(Notes("hook"), QStringList("hook functionalities " + both));
}

using WaitForDBusReply = ClientTest;

TEST_F(WaitForDBusReply, TellsSuccessAndKeepsTheValueOnFailure)
{
    ComTalvexDBusMediaPlayerPlaybackControlInterface proxy(kServiceName, kPath,
                                                           MPL_TestEnvironment::GetDbusConnection());
    m_Service.Reply(kPath, "Jump", {});
    m_Service.Reply(kPath, "Pause", true);
    m_Service.Fail(kPath, "SeekToTime", "no");
    m_Service.Fail(kPath, "Resume", "no");
    m_Service.Reply(kPath, "NextTrack", "no boolean");
    bool value = false;
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(proxy.Jump(1)));
    EXPECT_FALSE(MPL::TestUtils::WaitForDBusReply(proxy.SeekToTime(1)));
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(proxy.Pause(), value));
    EXPECT_TRUE(value);
    EXPECT_EQ(Text(Notes()), "");
    EXPECT_FALSE(MPL::TestUtils::WaitForDBusReply(proxy.Resume(), value));
    EXPECT_FALSE(MPL::TestUtils::WaitForDBusReply(proxy.NextTrack(), value));
    EXPECT_TRUE(value);
    const QString line = "debug: TestUtils::WaitForDBusReply -- D-Bus error: QDBusError(\"%1";
    EXPECT_EQ(Notes().value(0), line.arg("com.talvex.Error.Test\", \"no\")"));
    EXPECT_TRUE(Notes().value(1).startsWith(line.arg("org.freedesktop.DBus.Error.InvalidSignature\"")))
        << Text(Notes());
}

} // namespace
