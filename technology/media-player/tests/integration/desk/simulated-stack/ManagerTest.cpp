// The simulated media manager and the sources it finds.
#include "StackFixture.h"
#include <MPL_MediaManagerProxy.h>
#include <MPL_MediaSourceFactorySimulationProxy.h>
#include <MPL_MediaSourceProxy.h>
#include <MPL_ServiceNames.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using Simulation = ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface;
using Source = ComTalvexDBusMediaPlayerMediaSourceInterface;

namespace
{

// A service whose objects never answer.
class Mute : public QDBusVirtualObject
{
public:
    QString introspect(const QString& /*path*/) const override { return QString(); }
    bool handleMessage(const QDBusMessage& aMessage, const QDBusConnection& /*connection*/) override
    {
        aMessage.setDelayedReply(true);
        return true;
    }
};

} // namespace

using ManagerTest = StackTest;

TEST_F(ManagerTest, ListsWhatIsOnTheBusBeforeTheQuestion)
{
    StartTestSource();
    StartManager();
    EXPECT_EQ(Available().size(), 3) << "there before the manager";
    StartMassStorage();
    EXPECT_EQ(Available().size(), 4) << "came later";

    Simulation simulation(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME,
                          QStringLiteral("/com/talvex/DBus/Examples/MediaSourceTest/Simulation"), m_Bus);
    const QString name = QStringLiteral("Stick");
    const QString id = QStringLiteral("#1/\u00e4");
    EXPECT_TRUE(QDBusReply<void>(simulation.AddMassStorageDevice(name, id)).isValid());
    EXPECT_FALSE(QDBusReply<void>(simulation.AddMassStorageDevice(name, id)).isValid());
    ASSERT_EQ(Available().size(), 5);
    Source source(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, Available().last().GetPathString(), m_Bus);
    EXPECT_EQ(QDBusReply<QString>(source.GetDeviceId()).value(), id);
    EXPECT_TRUE(QDBusReply<void>(simulation.RemoveMassStorageDevice(name, id)).isValid());
    EXPECT_FALSE(QDBusReply<void>(simulation.RemoveMassStorageDevice(name, id)).isValid());
    EXPECT_EQ(Available().size(), 4);
}

TEST_F(ManagerTest, SignalsSourcesThatComeAndGoAndTheActiveOne)
{
    StartManager();
    QSignalSpy added(&Manager(), &ManagerProxy::MediaSourceAdded);
    QSignalSpy removed(&Manager(), &ManagerProxy::MediaSourceRemoved);
    QSignalSpy changed(&Manager(), &ManagerProxy::ActiveMediaSourceChanged);
    QProcess& massStorage = StartMassStorage();
    EXPECT_TRUE(added.count() == 1 || added.wait());
    MPL::ServiceObject unknown = MassStorage();
    unknown.objectPath = QDBusObjectPath(QStringLiteral("/1"));
    EXPECT_FALSE(Activate(unknown));
    EXPECT_TRUE(Activate(MassStorage()));
    EXPECT_TRUE(Activate(MassStorage()));
    EXPECT_EQ(Active(), MassStorage().GetPathString());
    Stop(massStorage);
    EXPECT_TRUE(QTest::qWaitFor([&changed] { return changed.count() == 2; }));
    EXPECT_EQ(Active(), QString());
    const QList<QVariant> source{MassStorage().serviceName, MassStorage().GetPathString()};
    EXPECT_EQ(added, QList<QList<QVariant>>{source});
    EXPECT_EQ(removed, QList<QList<QVariant>>{source});
    EXPECT_EQ(changed, (QList<QList<QVariant>>{source, {QString(), QString()}}));
}

TEST_F(ManagerTest, TellsTheSourceThatItIsActiveUntilTheManagerIsGone)
{
    QProcess& manager = StartManager();
    StartMassStorage();
    Source source(MassStorage().serviceName, MassStorage().GetPathString(), m_Bus);
    QSignalSpy status(&source, &Source::SignalStatusChanged);
    EXPECT_TRUE(Activate(MassStorage()));
    EXPECT_TRUE(status.wait());
    EXPECT_EQ(status.takeFirst().value(0).toString(),
              QStringLiteral("active_state=ACTIVE;source_state=READY"));
    Stop(manager);
    EXPECT_TRUE(status.wait());
    EXPECT_EQ(status.takeFirst().value(0).toString(),
              QStringLiteral("active_state=INACTIVE;source_state=READY"));
}

TEST_F(ManagerTest, ResumesAfterAKillASourceThatComesLater)
{
    QProcess& manager = StartManager(kDatabase);
    QProcess& massStorage = StartMassStorage();
    EXPECT_TRUE(Activate(MassStorage()));
    manager.kill();
    ExitStatus(manager);
    Stop(massStorage);

    StartManager(kDatabase);
    Available();
    EXPECT_EQ(Active(), QString()) << "the source is not there yet";
    StartMassStorage();
    EXPECT_TRUE(BecomesActive(MassStorage().GetPathString()));
}

TEST_F(ManagerTest, GoesOnWithoutADatabaseItCanNotUse)
{
    QProcess& manager = StartManager({QStringLiteral("DB=/proc/none/db")});
    StartMassStorage();
    EXPECT_TRUE(Activate(MassStorage()));
    EXPECT_EQ(Active(), MassStorage().GetPathString());
    Stop(manager);
    EXPECT_TRUE(manager.readAllStandardError().contains("active_source can't be stored"));
}

TEST_F(ManagerTest, ASourceThatNeverAnswersHoldsTheOthersUpForABoundedTime)
{
    StartManager();
    Mute mute;
    QDBusConnection other = QDBusConnection::connectToBus(
        QStringLiteral("unix:path=/var/talvex/media-player/testDbus"), QStringLiteral("mute"));
    ASSERT_TRUE(other.registerVirtualObject(QStringLiteral("/"), &mute, QDBusConnection::SubPath));
    ASSERT_TRUE(other.registerService(QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.Mute")));
    StartMassStorage();
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(Available().size(), 1);
    EXPECT_LT(time.elapsed(), 4000);
    QDBusConnection::disconnectFromBus(other.name());
}
