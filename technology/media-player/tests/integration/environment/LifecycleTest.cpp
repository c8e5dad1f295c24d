// Handing the stack to the real service manager and taking it back.
#include "Require.h"
#include <MPL_DBusUtils.h>
#include <MPL_ProcessInfo.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDir>
#include <QMutex>
#include <QObject>
#include <QStringList>

#include <gtest/gtest.h>

namespace
{

const QString kService = "org.freedesktop.systemd1";
const QString kPath = "/org/freedesktop/systemd1";
const QString kInterface = "org.freedesktop.systemd1.Manager";

/// Records the jobs that systemd is given, in order. Listens on the application's main thread, so the test's
/// thread may block.
class JobRecorder : public QObject
{
    Q_OBJECT

public:
    JobRecorder();

    /// The lifecycle-manager names of the media services that got a job since the last call, in order. Every
    /// job that was there before the call is in it.
    QStringList TakeServices();

public Q_SLOTS:
    void OnJobNew(uint aId, const QDBusObjectPath& aJob, const QString& aUnit);

private:
    QMutex m_Mutex;
    QStringList m_Services;
};

JobRecorder::JobRecorder()
{
    moveToThread(QCoreApplication::instance()->thread());
    QDBusConnection bus = QDBusConnection::systemBus();
    EXPECT_TRUE(bus.connect(kService, kPath, kInterface, "JobNew", this,
                            SLOT(OnJobNew(uint, QDBusObjectPath, QString))));
    bus.call(QDBusMessage::createMethodCall(kService, kPath, kInterface, "Subscribe"));
}

QStringList JobRecorder::TakeServices()
{
    // An answer from systemd comes after the signals it sent before, and an event of our own after theirs.
    QDBusConnection::systemBus().call(
        QDBusMessage::createMethodCall(kService, kPath, "org.freedesktop.DBus.Peer", "Ping"));
    QMetaObject::invokeMethod(
        this, [] {}, Qt::BlockingQueuedConnection);
    const QMutexLocker locker(&m_Mutex);
    QStringList services;
    services.swap(m_Services);
    return services;
}

void JobRecorder::OnJobNew(uint, const QDBusObjectPath&, const QString& aUnit)
{
    const QMutexLocker locker(&m_Mutex);
    if (aUnit.startsWith("media-")) {
        m_Services << QString(aUnit).remove(".service");
    }
}

class LifecycleManager : public testing::Test
{
protected:
    void SetUp() override { RequireLifecycleManager(); }

    static std::string InOneLine(const QStringList& aServices) { return aServices.join(' ').toStdString(); }
};

TEST_F(LifecycleManager, StartsTheMountServiceFirstAndStopsTheManagerFirst)
{
    JobRecorder jobs;
    ASSERT_TRUE(MPL_TestEnvironment::SlmLaunchMediaServices(true));
    EXPECT_EQ(InOneLine(jobs.TakeServices()),
              "media-mme media-manager media-source-mass-storage media-source-apple media-source-pandora "
              "media-source-spotify media-source-btmedia");
    EXPECT_TRUE(MPL::IsServiceRunning(MPL::MPL_MEDIA_MANAGER_SERVICE_NAME, QDBusConnection::systemBus()));
    EXPECT_NE(MPL_ProcessInfo::GetPidFromName("media_source_btmedia"), -1);

    ASSERT_TRUE(MPL_TestEnvironment::SlmStopMediaServices());
    EXPECT_EQ(InOneLine(jobs.TakeServices()),
              "media-manager media-mme media-source-mass-storage media-source-apple media-source-pandora "
              "media-source-spotify media-source-btmedia");
    EXPECT_TRUE(MPL_TestEnvironment::AllMediaSourcesTerminated());
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("media_manager"), -1);
}

TEST_F(LifecycleManager, StartsNothingWhenTheStateCannotBeReset)
{
    // A folder where the store should be, or was made by a test before this one.
    QFile::remove(kMPLDataManagerDb);
    ASSERT_TRUE(QDir().mkpath(kMPLDataManagerDb));
    EXPECT_FALSE(MPL_TestEnvironment::SlmLaunchMediaServices(true));
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("media_mme"), -1);
    EXPECT_TRUE(QDir().rmdir(kMPLDataManagerDb));
}

TEST_F(LifecycleManager, StopsAndStartsTheTuners)
{
    ASSERT_TRUE(MPL_TestEnvironment::SlmLaunchTunerProcesses());
    EXPECT_NE(MPL_ProcessInfo::GetPidFromName("audio-tuner-manager"), -1);
    EXPECT_NE(MPL_ProcessInfo::GetPidFromName("tuner-device-manager"), -1);
    ASSERT_TRUE(MPL_TestEnvironment::SlmStopTunerProcesses());
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("tuner-device-manager"), -1);
}

} // namespace

#include "LifecycleTest.moc"
