// The simulated media manager and the sources it finds.
#include "FakeService.h"
#include "StackFixture.h"
#include <MPL_MediaSourceFactorySimulationProxy.h>
#include <MPL_MediaSourceProxy.h>
#include <MPL_TestEnvironmentNames.h>

#include <QElapsedTimer>

#include <atomic>

using Simulation = ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface;
using Source = ComTalvexDBusMediaPlayerMediaSourceInterface;

using SimulatedManager = StackFixture;

TEST_F(SimulatedManager, ListsWhatIsOnTheBusBeforeTheQuestion)
{
    StartTestSource();
    StartManager();
    EXPECT_EQ(Available().size(), 3) << "there before the manager";
    StartMassStorage();
    EXPECT_EQ(Available().size(), 4) << "came later";

    Simulation simulation(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME,
                          "/com/talvex/DBus/Examples/MediaSourceTest/Simulation", m_Bus);
    const QString name = "Stick";
    const QString id = "#1/ä";
    EXPECT_TRUE(Succeeds(simulation.AddMassStorageDevice(name, id)));
    EXPECT_FALSE(Succeeds(simulation.AddMassStorageDevice(name, id)));
    ASSERT_EQ(Available().size(), 5);
    Source source(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, Available().last().GetPathString(), m_Bus);
    EXPECT_EQ(Value(source.GetDeviceId()), id);
    EXPECT_TRUE(Succeeds(simulation.RemoveMassStorageDevice(name, id)));
    EXPECT_FALSE(Succeeds(simulation.RemoveMassStorageDevice(name, id)));
    EXPECT_EQ(Available().size(), 4);
}

TEST_F(SimulatedManager, SignalsSourcesThatComeAndGoAndTheActiveOne)
{
    StartManager();
    QSignalSpy added(&Manager(), &ManagerProxy::MediaSourceAdded);
    QSignalSpy removed(&Manager(), &ManagerProxy::MediaSourceRemoved);
    QSignalSpy changed(&Manager(), &ManagerProxy::ActiveMediaSourceChanged);
    QProcess& massStorage = StartMassStorage();
    EXPECT_TRUE(IsSignalled(added));
    MPL::ServiceObject unknown = MassStorage();
    unknown.objectPath = QDBusObjectPath("/1");
    EXPECT_FALSE(Activate(unknown));
    EXPECT_TRUE(Activate(MassStorage()));
    EXPECT_TRUE(Activate(MassStorage()));
    EXPECT_EQ(Active(), MassStorage().GetPathString());
    Stop(massStorage);
    EXPECT_TRUE(IsSignalled(changed, 2));
    EXPECT_EQ(Active(), "");
    const QVariantList source{MassStorage().serviceName, MassStorage().GetPathString()};
    EXPECT_EQ(added, QList<QVariantList>{source});
    EXPECT_EQ(removed, QList<QVariantList>{source});
    EXPECT_EQ(changed, (QList<QVariantList>{source, {QString(), QString()}}));
}

TEST_F(SimulatedManager, TellsTheSourceThatItIsActiveUntilTheManagerIsGone)
{
    QProcess& manager = StartManager();
    StartMassStorage();
    Source source(MassStorage().serviceName, MassStorage().GetPathString(), m_Bus);
    QSignalSpy status(&source, &Source::SignalStatusChanged);
    EXPECT_TRUE(Activate(MassStorage()));
    EXPECT_TRUE(IsSignalled(status));
    Stop(manager);
    EXPECT_TRUE(IsSignalled(status, 2));
    EXPECT_EQ(status, (QList<QVariantList>{{"active_state=ACTIVE;source_state=READY"},
                                           {"active_state=INACTIVE;source_state=READY"}}));
}

TEST_F(SimulatedManager, ResumesAfterAKillASourceThatComesLater)
{
    QProcess& manager = StartManager(kDatabase);
    QProcess& massStorage = StartMassStorage();
    EXPECT_TRUE(Activate(MassStorage()));
    manager.kill();
    ExitStatus(manager);
    Stop(massStorage);

    StartManager(kDatabase);
    Available();
    EXPECT_EQ(Active(), "") << "the source is not there yet";
    StartMassStorage();
    EXPECT_TRUE(WaitUntil("it is active", [this] { return Active() == MassStorage().GetPathString(); }));
}

TEST_F(SimulatedManager, GoesOnWithoutADatabaseItCanNotUse)
{
    QProcess& manager = StartManager({"DB=/proc/none/db"});
    StartMassStorage();
    EXPECT_TRUE(Activate(MassStorage()));
    EXPECT_EQ(Active(), MassStorage().GetPathString());
    Stop(manager);
    EXPECT_TRUE(manager.readAllStandardError().contains("active_source can't be stored"));
}

TEST_F(SimulatedManager, WaitsABoundedTimeForASourceThatNeverAnswers)
{
    StartManager();
    const MPL::Doubles::FakeService mute(kBus, "com.talvex.DBus.MediaPlayer.MediaSource.Mute",
                                         [](const QDBusMessage&, QDBusConnection&) {});
    StartMassStorage();
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(Available().size(), 1);
    EXPECT_LT(time.elapsed(), 4000);
}

TEST_F(SimulatedManager, FindsASourceThatAnswersOnlyWhenAskedAgain)
{
    StartManager();
    QSignalSpy added(&Manager(), &ManagerProxy::MediaSourceAdded);
    const QString name = "com.talvex.DBus.MediaPlayer.MediaSource.Slow";
    std::atomic<int> asked{0};
    const MPL::Doubles::FakeService slow(kBus, name, [&](const QDBusMessage& aCall, QDBusConnection& aBus) {
        if (++asked > 1) {
            aBus.send(aCall.createReply(
                "<node><interface name='com.talvex.DBus.MediaPlayer.MediaSource'/></node>"));
        }
    });
    EXPECT_TRUE(Available().isEmpty());
    EXPECT_TRUE(IsSignalled(added));
    EXPECT_EQ(added, (QList<QVariantList>{{name, "/"}}));
    EXPECT_EQ(asked, 2);
}
