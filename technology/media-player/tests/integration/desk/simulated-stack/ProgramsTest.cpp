// How the programs of the simulated stack start, fail on purpose and end.
#include "StackFaults.h"
#include "StackFixture.h"
#include <MPL_MMEMountProxy.h>
#include <MPL_ServiceNames.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QTest>

using ProgramsTest = StackTest;

namespace
{

// A call's own callback: a watcher that is late for the reply would report it late.
class OrderOfArrival : public QObject
{
    Q_OBJECT

public:
    QStringList seen;

public Q_SLOTS:
    void Reply() { seen << QStringLiteral("reply"); }
    void Signal() { seen << QStringLiteral("signal"); }
};

} // namespace

TEST_F(ProgramsTest, WrongCommandLinesAreRefusedWithTheReason)
{
    struct Case {
        const char* program;
        QStringList arguments;
        const char* reason;
    };
    const QString testSource = MPL_TEST_MEDIA_SOURCE_PROCESS_PATH;
    const QByteArray testSourcePath = testSource.toUtf8();
    const Case cases[] = {
        {"media_manager", {"--loud"}, "Unknown option 'loud'"},
        {"media_manager", {"DB="}, "\"DB=\" does not fit: expected [DB=FILE]"},
        {"media_mme", {"DB=x"}, "\"DB=x\" does not fit: expected options only"},
        {"media_source_disc", {"--remote="}, "--remote= needs a value"},
        {"media_source_disc", {"--remote=10.0.0.1", "--port=0"}, "--port= needs a port number"},
        {"media_source_apple", {"--ddpport=65536"}, "--ddpport= needs a port number"},
        {"media_source_spotify", {"--remote=10.0.0.1"}, "Unknown option 'remote'"},
        {"media_source_pandora", {"unitTest"}, "\"unitTest\" does not fit: expected [unitTest FILE]"},
        {"media_source_pandora", {"x", "unitTest", "y"}, "\"x unitTest y\" does not fit"},
        {"hmi_main", {"--test-dbus"}, "Unknown option 'test-dbus'"},
        {testSourcePath.constData(), {}, "\"\" does not fit: expected CAPABILITIES"},
        {testSourcePath.constData(), {"3x"}, "\"3x\" does not fit: expected CAPABILITIES"},
        {testSourcePath.constData(), {"32"}, "\"32\" does not fit: expected CAPABILITIES"},
        {testSourcePath.constData(), {"-default_playqueue", "3", "4"}, "\"3 4\" does not fit"}};
    for (const Case& wrong : cases) {
        QProcess& process = Start(QString::fromUtf8(wrong.program), wrong.arguments);
        EXPECT_EQ(ExitStatus(process), 2) << wrong.program;
        const QByteArray text = process.readAllStandardError();
        EXPECT_TRUE(text.contains(wrong.reason) && text.contains("Usage: ")) << text.constData();
    }
}

TEST_F(ProgramsTest, WrongFaultsFilesAreRefusedWithTheReason)
{
    const std::pair<const char*, const char*> cases[] = {
        {"{\"programs\"", "byte"},
        {"[]", "there is no object \"programs\""},
        {R"({"programs": {"media_manger": {}}})", "\"media_manger\" is no program"},
        {R"({"programs": {"media_mme": {"crash": 1}}})", "\"crash\" of \"media_mme\""},
        {R"({"programs": {"media_manager": {"start_delay_ms": "3"}}})", "\"start_delay_ms\" of"},
        {R"({"programs": {"media_manager": {"replies": "never"}}})", "\"replies\" of"},
        {R"({"programs": {"media_mme": {"replies": {"com.talvex.DBus.MediaPlayer.MMEMnt.MountPath": "never"}}}})",
         "\"com.talvex.DBus.MediaPlayer.MMEMnt\" is no interface"},
        {R"({"programs": {"media_mme": {"replies": {"com.talvex.DBus.MediaPlayer.MMEMount.MontPath": "never"}}}})",
         "com.talvex.DBus.MediaPlayer.MMEMount has no method \"MontPath\"; it has Dismount, "},
        {R"({"programs": {"media_mme": {"replies": {"com.talvex.DBus.MediaPlayer.MMEMount.MountPath": "nevr"}}}})",
         "\"nevr\" for com.talvex.DBus.MediaPlayer.MMEMount.MountPath is no fault of a reply; there are die, "
         "error, never, signal_first, wrong_signature"}};
    for (const auto& [content, reason] : cases) {
        StackFaults::WriteFile(content);
        QProcess& process = Start(QStringLiteral("media_manager"), {});
        EXPECT_EQ(ExitStatus(process), 2) << content;
        const QByteArray text = process.readAllStandardError();
        EXPECT_TRUE(text.contains(reason)) << text.constData();
    }
}

TEST_F(ProgramsTest, ServicesEndOnSigtermWithASecondOneAndWithTheirBus)
{
    QProcess& manager = StartManager();
    QProcess& second = Start(QStringLiteral("media_manager"), {QStringLiteral("--test-dbus")});
    EXPECT_EQ(ExitStatus(second), 3);
    EXPECT_EQ(Stop(manager), 0);

    QProcess& source = StartMassStorage();
    QProcess& testSource = StartTestSource();
    m_Daemon.terminate();
    m_Daemon.waitForFinished();
    EXPECT_EQ(ExitStatus(source), 1);
    EXPECT_EQ(ExitStatus(testSource), 1);
    QProcess& late = Start(QStringLiteral("recognition-server"), {QStringLiteral("--test-dbus")});
    EXPECT_EQ(ExitStatus(late), 1);
    EXPECT_TRUE(late.readAllStandardError().contains("can't connect to unix:path=/var/talvex"));
}

TEST_F(ProgramsTest, FaultsOfTheLifeOfAProgramTakeEffect)
{
    SetFaults(R"({"media_manager": {"start_delay_ms": 400, "ignore_sigterm": true},
                  "media_mme": {"never_own_name": true, "crash_after_ms": 300}})");
    QElapsedTimer time;
    time.start();
    QProcess& mount = Start(QStringLiteral("media_mme"), {QStringLiteral("--test-dbus")});
    QProcess& manager = StartManager();
    EXPECT_GE(time.elapsed(), 400);
    EXPECT_EQ(ExitStatus(mount), -1);
    EXPECT_FALSE(m_Bus.interface()->isServiceRegistered(MPL_TEST_MME_MOUNT_SERVICE_NAME));

    manager.terminate();
    EXPECT_TRUE(QDBusReply<MPL::ServiceObject>(Manager().GetActiveMediaSource()).isValid());
    EXPECT_FALSE(manager.waitForFinished(100));
}

TEST_F(ProgramsTest, SignalsFollowTheReplyUnlessTheFaultIsToSignalFirst)
{
    for (const bool signalFirst : {false, true}) {
        SetFaults(signalFirst ? R"({"media_mme": {"replies":
                                   {"com.talvex.DBus.MediaPlayer.MMEMount.MountPath": "signal_first"}}})"
                              : "{}");
        QProcess& mount = StartService(QStringLiteral("media_mme"), MPL_TEST_MME_MOUNT_SERVICE_NAME);
        ComTalvexDBusMediaPlayerMMEMountInterface proxy(
            MPL_TEST_MME_MOUNT_SERVICE_NAME, QStringLiteral("/com/talvex/DBus/MediaPlayer/MMEMount"), m_Bus);
        OrderOfArrival order;
        QObject::connect(&proxy, &ComTalvexDBusMediaPlayerMMEMountInterface::SignalDeviceMounted, &order,
                         &OrderOfArrival::Signal);
        proxy.callWithCallback(QStringLiteral("MountPath"), {QStringLiteral("/opt")}, &order, SLOT(Reply()));
        EXPECT_TRUE(QTest::qWaitFor([&order] { return order.seen.size() == 2; }));
        EXPECT_EQ(order.seen.value(0), signalFirst ? QStringLiteral("signal") : QStringLiteral("reply"));
        Stop(mount);
    }
}

TEST_F(ProgramsTest, TheMountServiceServesBothBusesAndRefusesWhatIsNoFolder)
{
    Start(QStringLiteral("media_mme"), {});
    ASSERT_TRUE(WaitForName(MPL_TEST_MME_MOUNT_SERVICE_NAME));
    EXPECT_TRUE(QTest::qWaitFor([] {
        return QDBusConnection::systemBus().interface()->isServiceRegistered(MPL_TEST_MME_MOUNT_SERVICE_NAME);
    }));
    ComTalvexDBusMediaPlayerMMEMountInterface proxy(
        MPL_TEST_MME_MOUNT_SERVICE_NAME, QStringLiteral("/com/talvex/DBus/MediaPlayer/MMEMount"), m_Bus);
    for (const char* path : {"", "opt", "/no/such/folder", "/opt/talvex/etc/mplConfig.json"}) {
        auto reply = proxy.MountPath(QString::fromLatin1(path));
        reply.waitForFinished();
        EXPECT_TRUE(reply.isError()) << path;
    }
    proxy.MountPath(QStringLiteral("/opt/talvex/")).waitForFinished();
    auto again = proxy.MountPath(QStringLiteral("/opt/talvex"));
    again.waitForFinished();
    EXPECT_TRUE(again.isError());
    EXPECT_EQ(QDBusReply<QList<QVariantMap>>(proxy.GetMountedDeviceList()).value().size(), 1);
    proxy.Dismount(QStringLiteral("/opt/talvex")).waitForFinished();
    EXPECT_TRUE(QDBusReply<QList<QVariantMap>>(proxy.GetMountedDeviceList()).value().isEmpty());
}

#include "ProgramsTest.moc"
