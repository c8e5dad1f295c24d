#include "LifecycleManager.h"

#include "FakeService.h"
#include "Journal.h"
#include "LogRecorder.h"
#include "PrivateBus.h"
#include <MPL_ProcessInfo.h>

#include <QDBusError>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <memory>

namespace
{

using namespace MPL::Detail;
using namespace MPL::Doubles;
using namespace std::chrono_literals;

// A stand-in for the manager, for what a real one can hardly be made to do.
class LifecycleManager : public testing::Test
{
protected:
    LifecycleManager() { qputenv("DBUS_SYSTEM_BUS_ADDRESS", SharedBus().Address().toUtf8()); }

    void Offer(const FakeService::Script& aJob)
    {
        m_Manager.reset();
        m_Manager = std::make_unique<FakeService>(
            SharedBus().Address(), "org.freedesktop.systemd1",
            [aJob](const QDBusMessage& aCall, QDBusConnection& aConnection) {
                Note(aCall.member() + ' ' + aCall.arguments().value(0).toString() + ' ' +
                     aCall.arguments().value(1).toString());
                aJob(aCall, aConnection);
            });
    }

    static void Accept(const QDBusMessage& aCall, QDBusConnection& aConnection)
    {
        aConnection.send(aCall.createReply(QVariant::fromValue(QDBusObjectPath("/job/2"))));
    }

    static void End(QDBusConnection& aConnection, unsigned int aJob, const QString& aResult)
    {
        QDBusMessage signal = QDBusMessage::createSignal("/org/freedesktop/systemd1",
                                                         "org.freedesktop.systemd1.Manager", "JobRemoved");
        signal << aJob << QVariant::fromValue(QDBusObjectPath(QStringLiteral("/job/%1").arg(aJob)))
               << "media-manager.service" << aResult;
        aConnection.send(signal);
    }

    // The one log line of a start that fails.
    static std::string FailedStart(std::chrono::milliseconds aBound = 5000ms)
    {
        ClearNotes();
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(RunServiceJob(ServiceJob::Start, "media-manager", aBound));
        EXPECT_LT(timer.elapsed(), 4000);
        const QString begin = "critical: MPL_ProcessInfo::SlmStartService -- can't start media-manager -- ";
        const QStringList log = Notes("critical: ");
        EXPECT_EQ(log.size(), 1) << Text(log);
        return log.value(0).remove(begin).toStdString();
    }

    LogRecorder m_Log;
    std::unique_ptr<FakeService> m_Manager;
};

TEST_F(LifecycleManager, IsWaitedForUntilTheJobIsDone)
{
    Offer([](const QDBusMessage& aCall, QDBusConnection& aConnection) {
        Accept(aCall, aConnection);
        End(aConnection, 1, "failed");
        End(aConnection, 2, "done");
    });
    EXPECT_TRUE(MPL_ProcessInfo::SlmStartService("media-manager"));
    // The end of the job may even come before the reply that names it.
    Offer([](const QDBusMessage& aCall, QDBusConnection& aConnection) {
        End(aConnection, 2, "done");
        Accept(aCall, aConnection);
    });
    EXPECT_TRUE(MPL_ProcessInfo::SlmStopService("media-manager"));
    EXPECT_EQ(Text(Notes()),
              "StartUnit media-manager.service replace\nStopUnit media-manager.service replace");
}

TEST_F(LifecycleManager, IsWaitedForThroughSignalsOfOtherKinds)
{
    // Such as the end of a child, which Qt handles on whatever thread it reaches.
    struct sigaction handler {
    };
    struct sigaction before {
    };
    handler.sa_handler = [](int) {};
    sigaction(SIGUSR1, &handler, &before);
    const pthread_t waiting = pthread_self();
    Offer([waiting](const QDBusMessage& aCall, QDBusConnection& aConnection) {
        const auto interrupt = [waiting] {
            for (int i = 0; i < 50; ++i) {
                pthread_kill(waiting, SIGUSR1);
                sched_yield();
            }
        };
        interrupt();
        Accept(aCall, aConnection);
        interrupt();
        End(aConnection, 2, "done");
    });
    EXPECT_TRUE(MPL_ProcessInfo::SlmStartService("media-manager")) << Text(Notes());
    m_Manager.reset();
    sigaction(SIGUSR1, &before, nullptr);
}

TEST_F(LifecycleManager, ThatDoesntDoTheJobIsReportedInOneLine)
{
    EXPECT_EQ(FailedStart(), "no systemd on the system bus: run where it is the lifecycle manager");

    Offer([](const QDBusMessage& aCall, QDBusConnection& aConnection) {
        aConnection.send(aCall.createErrorReply(QDBusError::AccessDenied, "Because."));
    });
    EXPECT_EQ(FailedStart(), "systemd refused: Because.");

    Offer([](const QDBusMessage& aCall, QDBusConnection& aConnection) {
        Accept(aCall, aConnection);
        End(aConnection, 2, "timeout");
    });
    EXPECT_EQ(FailedStart(), "systemd ended the job with the result \"timeout\"");

    Offer([](const QDBusMessage& aCall, QDBusConnection& aConnection) { Accept(aCall, aConnection); });
    EXPECT_EQ(FailedStart(200ms), "the job was not done in 200 ms");

    Offer([](const QDBusMessage&, QDBusConnection&) {});
    EXPECT_EQ(FailedStart(200ms), "systemd has not answered in 200 ms");
}

TEST_F(LifecycleManager, IsOutOfReachBehindABusThatDoesntAnswer)
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    EXPECT_EQ(FailedStart(), "the system bus can't be reached: No such file or directory");

    const QTemporaryDir folder;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, qPrintable(folder.filePath("mute")), sizeof(address.sun_path));
    const int mute = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(mute, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(listen(mute, 1), 0);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", QByteArray("unix:path=") + address.sun_path);
    EXPECT_EQ(FailedStart(200ms), "the system bus has not answered in 200 ms");
    close(mute);
}

} // namespace
