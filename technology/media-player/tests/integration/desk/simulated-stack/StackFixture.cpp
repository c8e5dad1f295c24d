#include "StackFixture.h"

#include "Require.h"
#include <MPL_ServiceNames.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDBusConnectionInterface>
#include <QDir>

namespace
{

const testing::Environment* const kSandbox = RequireSandbox();
const QString kFolder = MPL_TEST_MEDIA_PLAYER_DIRECTORY + "test/";

} // namespace

const QString StackFixture::kBus = "unix:path=/var/talvex/media-player/testDbus";
const QString StackFixture::kDatabaseFile = kFolder + "DataManagerDb.sqlite";
const QStringList StackFixture::kDatabase{"DB=" + kDatabaseFile};

void StackFixture::SetUp()
{
    MPL::RegisterAllMetaTypes();
    m_Daemon.start("/usr/bin/dbus-daemon",
                   {"--config-file=/opt/talvex/etc/mpl-dbus.conf", "--nofork", "--print-address"});
    ASSERT_TRUE(m_Daemon.waitForReadyRead(5000)) << m_Daemon.readAllStandardError().constData();
    m_Bus = QDBusConnection::connectToBus(kBus, "test");
    ASSERT_TRUE(m_Bus.isConnected());
}

void StackFixture::TearDown()
{
    for (const std::unique_ptr<QProcess>& program : m_Programs) {
        program->kill();
        program->waitForFinished();
    }
    QDBusConnection::disconnectFromBus(m_Bus.name());
    m_Daemon.kill();
    m_Daemon.waitForFinished();
    QDir(kFolder).removeRecursively();
}

QProcess& StackFixture::Start(const QString& aProgram, const QStringList& aArguments)
{
    m_Programs.push_back(std::make_unique<QProcess>());
    QProcess& process = *m_Programs.back();
    process.start(QDir("/opt/talvex/bin").absoluteFilePath(aProgram), aArguments);
    EXPECT_TRUE(process.waitForStarted());
    return process;
}

QProcess& StackFixture::StartService(const QString& aProgram, const QString& aName, QStringList aArguments)
{
    QProcess& process = Start(aProgram, aArguments << "--test-dbus");
    EXPECT_TRUE(WaitUntil("the service has its name", [&] { return IsOwned(aName); }))
        << process.readAllStandardError().constData();
    return process;
}

QProcess& StackFixture::StartManager(const QStringList& aArguments)
{
    return StartService("media_manager", MPL::MPL_MEDIA_MANAGER_SERVICE_NAME, aArguments);
}

QProcess& StackFixture::StartMassStorage()
{
    return StartService(MPL::MPL_MASS_STORAGE_PROCESS_NAME, MPL::MPL_MASS_STORAGE_SERVICE_NAME);
}

QProcess& StackFixture::StartTestSource(const QStringList& aArguments)
{
    return StartService(MPL_TEST_MEDIA_SOURCE_PROCESS_PATH, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, aArguments);
}

bool StackFixture::IsOwned(const QString& aName) const
{
    return m_Bus.interface()->isServiceRegistered(aName);
}

int StackFixture::ExitStatus(QProcess& aProcess)
{
    if (aProcess.state() != QProcess::NotRunning && !aProcess.waitForFinished(5000)) {
        return -2;
    }
    return aProcess.exitStatus() == QProcess::NormalExit ? aProcess.exitCode() : -1;
}

int StackFixture::Stop(QProcess& aProcess)
{
    aProcess.terminate();
    return ExitStatus(aProcess);
}

const MPL::ServiceObject& StackFixture::MassStorage()
{
    static const MPL::ServiceObject kSource{
        MPL::MPL_MASS_STORAGE_SERVICE_NAME,
        QDBusObjectPath("/com/talvex/DBus/MediaPlayer/MediaSource/MassStorage/1")};
    return kSource;
}

ManagerProxy& StackFixture::Manager()
{
    if (!m_Manager) {
        m_Manager = std::make_unique<ManagerProxy>(MPL::MPL_MEDIA_MANAGER_SERVICE_NAME,
                                                   MPL::MPL_MEDIA_MANAGER_OBJECT_PATH, m_Bus);
    }
    return *m_Manager;
}

QList<MPL::ServiceObject> StackFixture::Available()
{
    return Value(Manager().GetAvailableMediaSources());
}

QString StackFixture::Active()
{
    return Value(Manager().GetActiveMediaSource()).GetPathString();
}

testing::AssertionResult StackFixture::Activate(const MPL::ServiceObject& aSource)
{
    return Succeeds(Manager().SetActiveMediaSource(aSource));
}
