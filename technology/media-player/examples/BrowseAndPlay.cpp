// Puts three tagged audio files into the environment, lets the mass-storage source index them, browses to
// their album by transaction id, plays all of it and follows the playback.
//
// Signals arrive on the fixture's thread, where the listening proxies live. Calls go out on the test's own
// thread through proxies of its own, since a proxy belongs to one thread.
#include <MPL_MediaPlayerLib.h>
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_PlaybackClient.h>
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestUtils.h>

#include <QDir>
#include <QMutex>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QWaitCondition>

#include <memory>

namespace
{

using Browser = ComTalvexDBusMediaPlayerBrowserInterface;
using PlayQueue = ComTalvexDBusMediaPlayerPlayQueueInterface;

constexpr unsigned kAnswerTimeMs = 5000;
constexpr uint kAll = 100;

/// Keeps the play states that the source signals. Its hooks run on the thread that it lives on.
class PlayStates : public MPL::PlaybackClient
{
public:
    using PlaybackClient::PlaybackClient;

    void HandlePlayStateChanged(const QString& aState) override
    {
        const QMutexLocker locker(&m_Mutex);
        m_States << aState;
        m_Changed.wakeAll();
    }

    /// Waits until the source has signalled that state.
    bool WaitFor(const QString& aState)
    {
        const QMutexLocker locker(&m_Mutex);
        while (!m_States.contains(aState)) {
            if (!m_Changed.wait(&m_Mutex, kAnswerTimeMs)) {
                return false;
            }
        }
        return true;
    }

private:
    QMutex m_Mutex;
    QWaitCondition m_Changed;
    QStringList m_States;
};

/// Waits for the reply signal that carries this id and returns its arguments; other clients' answers arrive
/// as well.
QList<QVariant> AnswerTo(const MPL::TransactionId& aId, QSignalSpy& aReplies)
{
    for (int i = 0;; ++i) {
        MPL::TestUtils::WaitForSignal(aReplies, static_cast<unsigned>(i + 1), kAnswerTimeMs);
        if (aReplies.count() <= i) {
            ADD_FAILURE() << "no answer to request " << aId.GetRequestId();
            return {};
        }
        if (aReplies.at(i).at(0).value<MPL::TransactionId>() == aId) {
            EXPECT_EQ(aReplies.at(i).at(1).toString(), QString())
                << "error text of request " << aId.GetRequestId();
            return aReplies.at(i);
        }
    }
}

class BrowseAndPlay : public MPL::MediaSourceTestFixture
{
protected:
    void SetUp() override
    {
        MPL::MediaSourceTestFixture::SetUp();
        const QDir media(QStringLiteral(EXAMPLE_MEDIA_DIR));
        const QStringList files = media.entryList({"*.flac"}, QDir::Files);
        for (const QString& file : files) {
            ASSERT_TRUE(MPL_TestEnvironment::UseFile(media.filePath(file)));
        }
        ASSERT_TRUE(
            MPL_TestEnvironment::LaunchMediaSourceProcess(true, "media_source_mass_storage", true, false));
        QString sourcePath;
        ASSERT_TRUE(MPL_TestEnvironment::GetMediaSourceCapabilities("USB", m_Paths, sourcePath));
        ASSERT_TRUE(MPL_TestEnvironment::WaitForIndexFinished(PathOf(MPL::MPL_FUNCTIONALITY_INDEX)));
    }

    QString PathOf(const QString& aFunctionality) const { return m_Paths.value(aFunctionality).path(); }

    /// A proxy of one of the source's capabilities that lives on the test's thread.
    template <typename Proxy>
    std::unique_ptr<Proxy> Make(const QString& aFunctionality) const
    {
        return std::make_unique<Proxy>(MPL::MPL_MASS_STORAGE_SERVICE_NAME, PathOf(aFunctionality),
                                       MPL_TestEnvironment::GetDbusConnection());
    }

    QMap<QString, QDBusObjectPath> m_Paths;
};

TEST_F(BrowseAndPlay, PlaysAnAlbumFoundByBrowsing)
{
    const auto browser = Make<Browser>(MPL::MPL_FUNCTIONALITY_BROWSE);
    const auto listener = Make<Browser>(MPL::MPL_FUNCTIONALITY_BROWSE);
    const auto queue = Make<PlayQueue>(MPL::MPL_FUNCTIONALITY_PLAYQUEUE);
    const auto queueListener = Make<PlayQueue>(MPL::MPL_FUNCTIONALITY_PLAYQUEUE);
    QSignalSpy started(listener.get(), &Browser::SignalReplyStart);
    QSignalSpy selected(listener.get(), &Browser::SignalReplySelectRecord);
    QSignalSpy records(listener.get(), &Browser::SignalReplyRecords);
    QSignalSpy playing(listener.get(), &Browser::SignalReplyPlayAll);
    QSignalSpy trackChanges(queueListener.get(), &PlayQueue::SignalTrackIndexChanged);
    QSignalSpy queueRecords(queueListener.get(), &PlayQueue::SignalResults);
    listener->moveToThread(&m_Thread);
    queueListener->moveToThread(&m_Thread);
    PlayStates playback(MPL::MPL_MASS_STORAGE_SERVICE_NAME, PathOf(MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL),
                        &m_Thread);
    playback.moveToThread(&m_Thread);
    m_Thread.start();
    const auto endThread = qScopeGuard([this] {
        QuitTest();
        m_Thread.wait();
    });

    // Down to the one album: the top level lists the categories, the album category lists the albums.
    MPL::TransactionIdCreator ids(MPL_TestEnvironment::GetDbusConnection().baseService());
    const auto recordsOfLevel = [&] {
        const MPL::TransactionId id = ids.Create();
        browser->RequestRecordsByTransactionId(id, 0, kAll);
        return AnswerTo(id, records).value(2).value<QList<MPL::ResultDictionary>>();
    };
    const auto select = [&](uint aIndex) {
        const MPL::TransactionId id = ids.Create();
        browser->RequestSelectRecord(id, aIndex);
        AnswerTo(id, selected);
    };
    const MPL::TransactionId start = ids.Create();
    browser->RequestStart(start);
    AnswerTo(start, started);

    uint albums = 0;
    for (const MPL::ResultDictionary& category : recordsOfLevel()) {
        if (category.value(MPL::MPL_RESULT_KEY_TOPLEVEL) == MPL::MPL_BROWSE_CATEGORY_ALBUM) {
            break;
        }
        ++albums;
    }
    select(albums);
    const QList<MPL::ResultDictionary> foundAlbums = recordsOfLevel();
    ASSERT_EQ(foundAlbums.size(), 1);
    EXPECT_EQ(foundAlbums.at(0).value(MPL::MPL_RESULT_KEY_ALBUM).toString(), "Three Tones");
    select(0);
    const QList<MPL::ResultDictionary> songs = recordsOfLevel();
    ASSERT_EQ(songs.size(), 3);
    EXPECT_EQ(songs.at(2).value(MPL::MPL_RESULT_KEY_SONG).toString(), "Tone 3");

    // Play it and follow: skip to the next track.
    const MPL::TransactionId playAll = ids.Create();
    browser->RequestPlayAll(playAll);
    AnswerTo(playAll, playing);
    EXPECT_TRUE(playback.WaitFor(MPL::MPL_PLAY_STATE_PLAYING));
    const int before = trackChanges.count();
    EXPECT_TRUE(playback.NextTrack());
    MPL::TestUtils::WaitForSignal(trackChanges, static_cast<unsigned>(before + 1), kAnswerTimeMs);
    EXPECT_GT(trackChanges.count(), before);

    EXPECT_EQ(queue->GetNumberOfTracks().value(), 3U);
    bool accepted = false;
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(queue->RequestTrackInfo(0, kAll), accepted));
    EXPECT_TRUE(accepted);
    MPL::TestUtils::WaitForSignal(queueRecords, 1, kAnswerTimeMs);
    ASSERT_GE(queueRecords.count(), 1);
    const auto tracks = queueRecords.at(0).at(0).value<QList<MPL::ResultDictionary>>();
    ASSERT_EQ(tracks.size(), 3);
    EXPECT_EQ(tracks.at(0).value(MPL::MPL_TRACK_INFO_KEY_TRACK_NAME).toString(), "Tone 1");
    EXPECT_TRUE(playback.Pause());
    EXPECT_TRUE(playback.WaitFor(MPL::MPL_PLAY_STATE_PAUSED));
}

} // namespace
