// The simulated media sources as their options and the simulation object make them.
#include "StackFixture.h"
#include "StateStore.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_MediaSourceFactorySimulationProxy.h>
#include <MPL_MediaSourceProxy.h>
#include <MPL_PlayQueueProxy.h>
#include <MPL_PlaybackControlProxy.h>
#include <MPL_TestEnvironmentNames.h>

#include <QFile>

using Control = ComTalvexDBusMediaPlayerPlaybackControlInterface;
using Queue = ComTalvexDBusMediaPlayerPlayQueueInterface;
using Simulation = ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface;
using Source = ComTalvexDBusMediaPlayerMediaSourceInterface;

namespace
{

const QString kTestSourcePath = "/com/talvex/DBus/Examples/MediaSourceTest/Device_00000001";
const QString kSimulationPath = "/com/talvex/DBus/Examples/MediaSourceTest/Simulation";

} // namespace

using SimulatedSources = StackFixture;

TEST_F(SimulatedSources, OfTheTestOfferTheCapabilitiesOfTheirOption)
{
    QProcess& process = StartTestSource({"18", "-default_playqueue"});
    Source source(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, kTestSourcePath, m_Bus);
    EXPECT_EQ(Value(source.GetCapabilities()),
              (QStringList{MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL, MPL::MPL_FUNCTIONALITY_PLAYQUEUE}));
    EXPECT_FALSE(Succeeds(source.GetCapability(MPL::MPL_FUNCTIONALITY_BROWSE)));
    const QDBusObjectPath path = Value(source.GetCapability(MPL::MPL_FUNCTIONALITY_PLAYQUEUE));
    Queue queue(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, path.path(), m_Bus);
    EXPECT_TRUE(WaitUntil("the queue is filled", [&] { return Value(queue.GetNumberOfTracks()) > 2; }));

    Simulation simulation(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, kSimulationPath, m_Bus);
    EXPECT_TRUE(Succeeds(simulation.ChangePlayQueue(2)));
    EXPECT_EQ(Value(queue.GetCurrentTrackIndex()), 2U);
    EXPECT_FALSE(Succeeds(simulation.ChangePlayQueue(1000)));
    Stop(process);

    StartTestSource({"0"});
    EXPECT_TRUE(Value(source.GetCapabilities()).isEmpty());
}

TEST_F(SimulatedSources, OfTheTestHaveOnePresetThatTheSimulationDrives)
{
    StartTestSource();
    Source source(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, kTestSourcePath, m_Bus);
    Simulation simulation(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, kSimulationPath, m_Bus);
    QSignalSpy published(&source, &Source::SignalNewPresetContext);
    QSignalSpy updated(&source, &Source::SignalUpdatePresetContext);
    QSignalSpy activated(&source, &Source::SignalPresetActivated);
    EXPECT_TRUE(Succeeds(simulation.PublishPresetData()));
    EXPECT_TRUE(Succeeds(simulation.UpdatePresetStateData("one", "x")));
    EXPECT_TRUE(Succeeds(simulation.UpdatePresetStateData("two", "y")));
    EXPECT_TRUE(Succeeds(simulation.UpdatePresetSecondaryData("z")));
    ASSERT_TRUE(IsSignalled(updated, 3));
    EXPECT_EQ(published.count(), 1);
    EXPECT_EQ(published.value(0).value(0).toString(), kTestSourcePath);
    EXPECT_EQ(updated.at(1).at(1).toString(), "one") << "the state before the second update";
    const auto preset = Value(source.GetPresetContext());
    EXPECT_EQ(preset.value("state_data"), "two");
    EXPECT_EQ(preset.value("secondary_data"), "z");

    EXPECT_EQ(Value(source.ActivatePreset({})), 1U);
    EXPECT_EQ(Value(source.ActivatePreset(preset)), 0U);
    EXPECT_TRUE(IsSignalled(activated));
}

TEST_F(SimulatedSources, OfPandoraAreReadyOnlyWithAnAccount)
{
    QFile login("/var/talvex/media-player/login.json");
    ASSERT_TRUE(login.open(QIODevice::WriteOnly));
    login.write(R"({"config": {"pandora": {"login_config": {"user_name": "a", "password": "b"}}}})");
    login.close();
    const std::pair<QStringList, const char*> cases[] = {
        {{}, "source_state=ERROR;error_type=CREDENTIALS_MISSING"},
        {{"unitTest", "/none"}, "source_state=ERROR;error_type=INITIALIZATION_FAILED"},
        {{"unitTest", login.fileName()}, "source_state=READY"}};
    for (const auto& [arguments, status] : cases) {
        QProcess& process = StartService("media_source_pandora", MPL::MPL_PANDORA_SERVICE_NAME, arguments);
        Source source(MPL::MPL_PANDORA_SERVICE_NAME, "/com/talvex/DBus/MediaPlayer/MediaSource/Pandora/1",
                      m_Bus);
        EXPECT_EQ(Value(source.GetMediaSourceStatus()), "active_state=INACTIVE;" + QLatin1String(status));
        Stop(process);
    }
    login.remove();
}

// The catalogue of the test source plays; the manager remembers that it did.
TEST_F(SimulatedSources, PlayOnWhenTheManagerResumesThem)
{
    QProcess& manager = StartManager(kDatabase);
    StartTestSource({"31", "-default_playqueue"});
    Control control(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME,
                    kTestSourcePath + MPL::MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL, m_Bus);
    const auto plays = [&control] { return Value(control.GetPlayState()) == MPL::MPL_PLAY_STATE_PLAYING; };
    const MPL::ServiceObject source{MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, QDBusObjectPath(kTestSourcePath)};
    EXPECT_TRUE(Activate(source));
    EXPECT_TRUE(WaitUntil("there is something to play", [&control] { return Value(control.Resume()); }));
    EXPECT_TRUE(WaitUntil("the manager has stored that it plays", [] {
        MPL::Detail::StateStore store;
        QString state;
        QString error;
        return store.Open(kDatabaseFile, error) &&
               store.Load(MPL::Detail::kStateKeyActiveSourcePlaybackState, state, error) &&
               state == MPL::MPL_PLAY_STATE_PLAYING;
    }));
    Stop(manager);
    EXPECT_TRUE(WaitUntil("it stops with the manager", [&plays] { return !plays(); }));
    StartManager(kDatabase);
    EXPECT_TRUE(WaitUntil("it plays on", plays));
}
