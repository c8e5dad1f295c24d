// The simulated media sources as their options and the simulation object make them.
#include "StackFixture.h"
#include "StateStore.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_MediaSourceFactorySimulationProxy.h>
#include <MPL_MediaSourceProxy.h>
#include <MPL_PlayQueueProxy.h>
#include <MPL_PlaybackControlProxy.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDBusReply>
#include <QSignalSpy>
#include <QTest>

using Control = ComTalvexDBusMediaPlayerPlaybackControlInterface;
using Queue = ComTalvexDBusMediaPlayerPlayQueueInterface;
using Simulation = ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface;
using Source = ComTalvexDBusMediaPlayerMediaSourceInterface;

namespace
{

const QString kTestSourcePath = QStringLiteral("/com/talvex/DBus/Examples/MediaSourceTest/Device_00000001");
const QString kSimulationPath = QStringLiteral("/com/talvex/DBus/Examples/MediaSourceTest/Simulation");

template <class Reply>
bool Succeeds(Reply aReply)
{
    aReply.waitForFinished();
    return !aReply.isError();
}

} // namespace

using SourcesTest = StackTest;

TEST_F(SourcesTest, TheTestSourceOffersTheCapabilitiesOfItsOption)
{
    QProcess& process = StartTestSource({QStringLiteral("18"), QStringLiteral("-default_playqueue")});
    Source source(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, kTestSourcePath, m_Bus);
    EXPECT_EQ(QDBusReply<QStringList>(source.GetCapabilities()).value(),
              (QStringList{MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL, MPL::MPL_FUNCTIONALITY_PLAYQUEUE}));
    EXPECT_FALSE(Succeeds(source.GetCapability(MPL::MPL_FUNCTIONALITY_BROWSE)));
    const auto path = QDBusReply<QDBusObjectPath>(source.GetCapability(MPL::MPL_FUNCTIONALITY_PLAYQUEUE));
    Queue queue(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, path.value().path(), m_Bus);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QDBusReply<uint>(queue.GetNumberOfTracks()).value() > 2; }));

    Simulation simulation(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, kSimulationPath, m_Bus);
    EXPECT_TRUE(Succeeds(simulation.ChangePlayQueue(2)));
    EXPECT_EQ(QDBusReply<uint>(queue.GetCurrentTrackIndex()).value(), 2U);
    EXPECT_FALSE(Succeeds(simulation.ChangePlayQueue(1000)));
    Stop(process);

    StartTestSource({QStringLiteral("0")});
    EXPECT_TRUE(QDBusReply<QStringList>(source.GetCapabilities()).value().isEmpty());
}

TEST_F(SourcesTest, TheSimulationDrivesThePresetOfTheFirstSource)
{
    StartTestSource();
    Source source(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, kTestSourcePath, m_Bus);
    Simulation simulation(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, kSimulationPath, m_Bus);
    QSignalSpy published(&source, &Source::SignalNewPresetContext);
    QSignalSpy updated(&source, &Source::SignalUpdatePresetContext);
    QSignalSpy activated(&source, &Source::SignalPresetActivated);
    EXPECT_TRUE(Succeeds(simulation.PublishPresetData()));
    EXPECT_TRUE(Succeeds(simulation.UpdatePresetStateData(QStringLiteral("one"), QStringLiteral("x"))));
    EXPECT_TRUE(Succeeds(simulation.UpdatePresetStateData(QStringLiteral("two"), QStringLiteral("y"))));
    EXPECT_TRUE(Succeeds(simulation.UpdatePresetSecondaryData(QStringLiteral("z"))));
    ASSERT_TRUE(QTest::qWaitFor([&] { return updated.count() == 3; }));
    EXPECT_EQ(published.count(), 1);
    EXPECT_EQ(published.value(0).value(0).toString(), kTestSourcePath);
    EXPECT_EQ(updated.at(1).at(1).toString(), QStringLiteral("one")) << "the state before the second update";
    const auto preset = QDBusReply<QMap<QString, QString>>(source.GetPresetContext()).value();
    EXPECT_EQ(preset.value(QStringLiteral("state_data")), QStringLiteral("two"));
    EXPECT_EQ(preset.value(QStringLiteral("secondary_data")), QStringLiteral("z"));

    EXPECT_EQ(QDBusReply<uint>(source.ActivatePreset({})).value(), 1U);
    EXPECT_EQ(QDBusReply<uint>(source.ActivatePreset(preset)).value(), 0U);
    EXPECT_TRUE(activated.count() == 1 || activated.wait());
}

TEST_F(SourcesTest, PandoraIsReadyOnlyWithAnAccount)
{
    QFile login(QStringLiteral("/var/talvex/media-player/login.json"));
    ASSERT_TRUE(login.open(QIODevice::WriteOnly));
    login.write(R"({"config": {"pandora": {"login_config": {"user_name": "a", "password": "b"}}}})");
    login.close();
    const std::pair<QStringList, const char*> cases[] = {
        {{}, "source_state=ERROR;error_type=CREDENTIALS_MISSING"},
        {{"unitTest", "/none"}, "source_state=ERROR;error_type=INITIALIZATION_FAILED"},
        {{"unitTest", login.fileName()}, "source_state=READY"}};
    for (const auto& [arguments, status] : cases) {
        QProcess& process =
            StartService(QStringLiteral("media_source_pandora"), MPL::MPL_PANDORA_SERVICE_NAME, arguments);
        Source source(MPL::MPL_PANDORA_SERVICE_NAME,
                      QStringLiteral("/com/talvex/DBus/MediaPlayer/MediaSource/Pandora/1"), m_Bus);
        EXPECT_EQ(QDBusReply<QString>(source.GetMediaSourceStatus()).value(),
                  QStringLiteral("active_state=INACTIVE;") + QLatin1String(status));
        Stop(process);
    }
    login.remove();
}

// The catalogue of the test source plays; the manager remembers that it did.
TEST_F(SourcesTest, PlaybackGoesOnWhenTheManagerResumesTheSource)
{
    QProcess& manager = StartManager(kDatabase);
    StartTestSource({QStringLiteral("31"), QStringLiteral("-default_playqueue")});
    Control control(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME,
                    kTestSourcePath + MPL::MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL, m_Bus);
    const auto plays = [&control] {
        return QDBusReply<QString>(control.GetPlayState()).value() == MPL::MPL_PLAY_STATE_PLAYING;
    };
    const MPL::ServiceObject source{MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, QDBusObjectPath(kTestSourcePath)};
    EXPECT_TRUE(Activate(source));
    EXPECT_TRUE(QTest::qWaitFor([&control] { return QDBusReply<bool>(control.Resume()).value(); }));
    EXPECT_TRUE(QTest::qWaitFor([] {
        MPL::Detail::StateStore store;
        QString state;
        QString error;
        return store.Open(kDatabaseFile, error) &&
               store.Load(MPL::Detail::kStateKeyActiveSourcePlaybackState, state, error) &&
               state == MPL::MPL_PLAY_STATE_PLAYING;
    }));
    Stop(manager);
    EXPECT_TRUE(QTest::qWaitFor([&plays] { return !plays(); }));
    StartManager(kDatabase);
    EXPECT_TRUE(QTest::qWaitFor(plays));
}
