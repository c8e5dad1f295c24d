#include "StackFixture.h"

#include "Require.h"
#include "StackFaults.h"
#include <MPL_ServiceNames.h>
#include <MPL_TestEnvironmentNames.h>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QSignalSpy>
#include <QTest>

const QString StackTest::kManagerService = MPL::MPL_MEDIA_MANAGER_SERVICE_NAME;
const QString StackTest::kManagerPath = MPL::MPL_MEDIA_MANAGER_OBJECT_PATH;

const QString StackTest::kDatabaseFile = QStringLiteral("/var/talvex/media-player/test/DataManagerDb.sqlite");
const QStringList StackTest::kDatabase{QStringLiteral("DB=") + kDatabaseFile};

void StackTest::SetUp()
{
    RequireSandbox();
    if (HasFatalFailure() || IsSkipped()) {
        return;
    }
    MPL::RegisterAllMetaTypes();
    m_Daemon.start(QStringLiteral("/usr/bin/dbus-daemon"),
                   {QStringLiteral("--config-file=/opt/talvex/etc/mpl-dbus.conf"), QStringLiteral("--nofork"),
                    QStringLiteral("--print-address")});
    ASSERT_TRUE(m_Daemon.waitForReadyRead(5000)) << m_Daemon.readAllStandardError().constData();
    static int s_Count = 0;
    m_Bus = QDBusConnection::connectToBus(QString::fromUtf8(m_Daemon.readLine().trimmed()),
                                          QStringLiteral("test %1").arg(++s_Count));
    ASSERT_TRUE(m_Bus.isConnected());
}

void StackTest::TearDown()
{
    for (const std::unique_ptr<QProcess>& program : m_Programs) {
        program->kill();
        program->waitForFinished();
    }
    m_Programs.clear();
    m_Manager.reset();
    StackFaults::RemoveFile();
    QDBusConnection::disconnectFromBus(m_Bus.name());
    m_Daemon.kill();
    m_Daemon.waitForFinished();
    QDir(MPL_TEST_MEDIA_PLAYER_DIRECTORY + QStringLiteral("test")).removeRecursively();
}

void StackTest::SetFaults(const QByteArray& aPrograms)
{
    StackFaults::WriteFile("{\"programs\": " + aPrograms + "}");
}

QProcess& StackTest::Start(const QString& aProgram, const QStringList& aArguments)
{
    m_Programs.push_back(std::make_unique<QProcess>());
    QProcess& process = *m_Programs.back();
    process.start(QDir(QStringLiteral("/opt/talvex/bin")).absoluteFilePath(aProgram), aArguments);
    EXPECT_TRUE(process.waitForStarted());
    return process;
}

QProcess& StackTest::StartService(const QString& aProgram, const QString& aName, QStringList aArguments)
{
    QProcess& process = Start(aProgram, aArguments << QStringLiteral("--test-dbus"));
    EXPECT_TRUE(WaitForName(aName)) << process.readAllStandardError().constData();
    return process;
}

QProcess& StackTest::StartManager(const QStringList& aArguments)
{
    return StartService(QStringLiteral("media_manager"), kManagerService, aArguments);
}

QProcess& StackTest::StartMassStorage()
{
    return StartService(QStringLiteral("media_source_mass_storage"), MPL::MPL_MASS_STORAGE_SERVICE_NAME);
}

QProcess& StackTest::StartTestSource(const QStringList& aArguments)
{
    return StartService(MPL_TEST_MEDIA_SOURCE_PROCESS_PATH, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, aArguments);
}

bool StackTest::WaitForName(const QString& aName, int aTimeoutMs)
{
    QDBusServiceWatcher watcher(aName, m_Bus, QDBusServiceWatcher::WatchForRegistration);
    QSignalSpy registered(&watcher, &QDBusServiceWatcher::serviceRegistered);
    return m_Bus.interface()->isServiceRegistered(aName) || registered.wait(aTimeoutMs);
}

int StackTest::ExitStatus(QProcess& aProcess)
{
    if (aProcess.state() != QProcess::NotRunning && !aProcess.waitForFinished(5000)) {
        return -2;
    }
    return aProcess.exitStatus() == QProcess::NormalExit ? aProcess.exitCode() : -1;
}

int StackTest::Stop(QProcess& aProcess)
{
    aProcess.terminate();
    return ExitStatus(aProcess);
}

const MPL::ServiceObject& StackTest::MassStorage()
{
    static const MPL::ServiceObject kSource{
        MPL::MPL_MASS_STORAGE_SERVICE_NAME,
        QDBusObjectPath(QStringLiteral("/com/talvex/DBus/MediaPlayer/MediaSource/MassStorage/1"))};
    return kSource;
}

ManagerProxy& StackTest::Manager()
{
    if (!m_Manager) {
        m_Manager = std::make_unique<ManagerProxy>(kManagerService, kManagerPath, m_Bus);
    }
    return *m_Manager;
}

QList<MPL::ServiceObject> StackTest::Available()
{
    return QDBusReply<QList<MPL::ServiceObject>>(Manager().GetAvailableMediaSources()).value();
}

QString StackTest::Active()
{
    return QDBusReply<MPL::ServiceObject>(Manager().GetActiveMediaSource()).value().GetPathString();
}

bool StackTest::BecomesActive(const QString& aPath)
{
    return QTest::qWaitFor([&] { return Active() == aPath; });
}

bool StackTest::Activate(const MPL::ServiceObject& aSource)
{
    return QDBusReply<void>(Manager().SetActiveMediaSource(aSource)).isValid();
}
