// How the programs of the simulated stack start, fail on purpose and end.
#include "StackFaults.h"
#include "StackFixture.h"
#include <MPL_MMEMountProxy.h>
#include <MPL_ServiceNames.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDBusConnectionInterface>
#include <QElapsedTimer>

namespace
{

// A call's own callback: a watcher that is late for the reply would report it late.
class OrderOfArrival : public QObject
{
    Q_OBJECT

public:
    QStringList seen;

public Q_SLOTS:
    void Reply() { seen << "reply"; }
    void Signal() { seen << "signal"; }
};

using Mount = ComTalvexDBusMediaPlayerMMEMountInterface;
const QString kMountPath = "/com/talvex/DBus/MediaPlayer/MMEMount";

} // namespace

using SimulatedPrograms = StackFixture;
using SimulatedMountService = StackFixture;

const struct {
    QString program;
    QStringList arguments;
    const char* reason;
} kWrongCommandLines[] = {
    {"media_manager", {"--loud"}, "Unknown option 'loud'"},
    {"media_manager", {"DB="}, "\"DB=\" does not fit: expected [DB=FILE]"},
    {"media_mme", {"DB=x"}, "\"DB=x\" does not fit: expected options only"},
    {"media_source_disc", {"--remote="}, "--remote= needs a value"},
    {"media_source_disc", {"--remote=10.0.0.1", "--port=0"}, "--port= needs a port number"},
    {"media_source_apple", {"--ddpport=65536"}, "--ddpport= needs a port number"},
    {"media_source_pandora", {"unitTest"}, "\"unitTest\" does not fit: expected [unitTest FILE]"},
    {"media_source_pandora", {"x", "unitTest", "y"}, "\"x unitTest y\" does not fit"},
    {MPL_TEST_MEDIA_SOURCE_PROCESS_PATH, {}, "\"\" does not fit: expected CAPABILITIES"},
    {MPL_TEST_MEDIA_SOURCE_PROCESS_PATH, {"32"}, "\"32\" does not fit: expected CAPABILITIES"},
    {MPL_TEST_MEDIA_SOURCE_PROCESS_PATH, {"-default_playqueue", "3", "4"}, "\"3 4\" does not fit"}};

TEST_F(SimulatedPrograms, RefuseWrongCommandLinesWithTheReason)
{
    for (const auto& wrong : kWrongCommandLines) {
        QProcess& process = Start(wrong.program, wrong.arguments);
        EXPECT_EQ(ExitStatus(process), 2) << qPrintable(wrong.program);
        const QByteArray text = process.readAllStandardError();
        EXPECT_TRUE(text.contains(wrong.reason) && text.contains("Usage: ")) << text.constData();
    }
}

const std::pair<const char*, const char*> kWrongFaults[] = {
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

TEST_F(SimulatedPrograms, RefuseWrongFaultsFilesWithTheReason)
{
    const StackFaults none("{}");
    for (const auto& [content, reason] : kWrongFaults) {
        StackFaults::WriteFile(content);
        QProcess& process = Start("media_manager", {});
        EXPECT_EQ(ExitStatus(process), 2) << content;
        const QByteArray text = process.readAllStandardError();
        EXPECT_TRUE(text.contains(reason)) << text.constData();
    }
}

TEST_F(SimulatedPrograms, EndOnSigtermBesideAnotherAndWithTheirBus)
{
    QProcess& manager = StartManager();
    QProcess& second = Start("media_manager", {"--test-dbus"});
    EXPECT_EQ(ExitStatus(second), 3);
    EXPECT_EQ(Stop(manager), 0);

    QProcess& source = StartMassStorage();
    QProcess& testSource = StartTestSource();
    m_Daemon.terminate();
    m_Daemon.waitForFinished();
    EXPECT_EQ(ExitStatus(source), 1);
    EXPECT_EQ(ExitStatus(testSource), 1);
    QProcess& late = Start("recognition-server", {"--test-dbus"});
    EXPECT_EQ(ExitStatus(late), 1);
    EXPECT_TRUE(late.readAllStandardError().contains("can't connect to unix:path=/var/talvex"));
}

TEST_F(SimulatedPrograms, LiveAsTheirFaultsSay)
{
    const StackFaults faults(R"({"media_manager": {"start_delay_ms": 400, "ignore_sigterm": true},
                  "media_mme": {"never_own_name": true, "crash_after_ms": 300}})");
    QElapsedTimer time;
    time.start();
    QProcess& mount = Start("media_mme", {"--test-dbus"});
    QProcess& manager = StartManager();
    EXPECT_GE(time.elapsed(), 400);
    EXPECT_EQ(ExitStatus(mount), -1);
    EXPECT_FALSE(IsOwned(MPL_TEST_MME_MOUNT_SERVICE_NAME));

    manager.terminate();
    EXPECT_EQ(Active(), "");
    EXPECT_FALSE(manager.waitForFinished(100));
}

TEST_F(SimulatedPrograms, KeepTheirNameAndAnswerNothingOnceTheyHang)
{
    const StackFaults faults(R"({"media_mme": {"hang_after_ms": 200}})");
    QProcess& mount = StartService("media_mme", MPL_TEST_MME_MOUNT_SERVICE_NAME);
    Mount proxy(MPL_TEST_MME_MOUNT_SERVICE_NAME, kMountPath, m_Bus);
    proxy.setTimeout(200);
    EXPECT_TRUE(WaitUntil("it hangs", [&proxy] {
        auto list = proxy.GetMountedDeviceList();
        list.waitForFinished();
        return list.error().type() == QDBusError::NoReply;
    }));
    EXPECT_TRUE(IsOwned(MPL_TEST_MME_MOUNT_SERVICE_NAME));

    mount.terminate();
    EXPECT_FALSE(mount.waitForFinished(300));
    mount.kill();
    EXPECT_EQ(ExitStatus(mount), -1);
}

TEST_F(SimulatedPrograms, SignalAfterTheReplyUnlessTheFaultIsToSignalFirst)
{
    for (const bool signalFirst : {false, true}) {
        const StackFaults faults(signalFirst ? R"({"media_mme": {"replies":
                                   {"com.talvex.DBus.MediaPlayer.MMEMount.MountPath": "signal_first"}}})"
                                             : "{}");
        QProcess& mount = StartService("media_mme", MPL_TEST_MME_MOUNT_SERVICE_NAME);
        Mount proxy(MPL_TEST_MME_MOUNT_SERVICE_NAME, kMountPath, m_Bus);
        OrderOfArrival order;
        QObject::connect(&proxy, &Mount::SignalDeviceMounted, &order, &OrderOfArrival::Signal);
        proxy.callWithCallback("MountPath", {"/opt"}, &order, SLOT(Reply()));
        EXPECT_TRUE(WaitUntil("both arrived", [&order] { return order.seen.size() == 2; }));
        EXPECT_EQ(order.seen.value(0), signalFirst ? "signal" : "reply");
        Stop(mount);
    }
}

TEST_F(SimulatedMountService, ServesBothBusesAndRefusesWhatIsNoFolder)
{
    Start("media_mme", {});
    EXPECT_TRUE(WaitUntil("it serves both buses", [this] {
        return IsOwned(MPL_TEST_MME_MOUNT_SERVICE_NAME) &&
               QDBusConnection::systemBus().interface()->isServiceRegistered(MPL_TEST_MME_MOUNT_SERVICE_NAME);
    }));
    Mount proxy(MPL_TEST_MME_MOUNT_SERVICE_NAME, kMountPath, m_Bus);
    for (const char* path : {"", "opt", "/no/such/folder", "/opt/talvex/etc/mplConfig.json"}) {
        EXPECT_FALSE(Succeeds(proxy.MountPath(path))) << path;
    }
    EXPECT_TRUE(Succeeds(proxy.MountPath("/opt/talvex/")));
    EXPECT_FALSE(Succeeds(proxy.MountPath("/opt/talvex")));
    EXPECT_EQ(Value(proxy.GetMountedDeviceList()).size(), 1);
    EXPECT_TRUE(Succeeds(proxy.Dismount("/opt/talvex")));
    EXPECT_TRUE(Value(proxy.GetMountedDeviceList()).isEmpty());
}

#include "ProgramsTest.moc"
