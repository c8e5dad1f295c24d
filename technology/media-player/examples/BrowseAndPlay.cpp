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
#include <QSignalSpy>
#include <QWaitCondition>

#include <algorithm>
#include <iterator>
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

    /// The same, but living on the fixture's thread, where its signals arrive.
    template <typename Proxy>
    std::unique_ptr<Proxy> MakeListener(const QString& aFunctionality)
    {
        auto proxy = Make<Proxy>(aFunctionality);
        proxy->moveToThread(&m_Thread);
        return proxy;
    }

    QMap<QString, QDBusObjectPath> m_Paths;
};

/// Walks through the source's records. Each request carries an id, and its answer is the signal with that id.
class Walk
{
public:
    Walk(Browser& aBrowser, const Browser& aListener)
        : m_Browser(aBrowser),
          m_Started(&aListener, &Browser::SignalReplyStart),
          m_Selected(&aListener, &Browser::SignalReplySelectRecord),
          m_Records(&aListener, &Browser::SignalReplyRecords),
          m_Playing(&aListener, &Browser::SignalReplyPlayAll)
    {
    }

    void Start() { Answer(m_Started, &Browser::RequestStart); }
    void Select(uint aIndex) { Answer(m_Selected, &Browser::RequestSelectRecord, aIndex); }
    void PlayAll() { Answer(m_Playing, &Browser::RequestPlayAll); }

    QList<MPL::ResultDictionary> Records()
    {
        return Answer(m_Records, &Browser::RequestRecordsByTransactionId, 0U, kAll)
            .value(2)
            .value<QList<MPL::ResultDictionary>>();
    }

private:
    template <typename Request, typename... Arguments>
    QList<QVariant> Answer(QSignalSpy& aReplies, Request aRequest, Arguments... aArguments)
    {
        const MPL::TransactionId id = m_Ids.Create();
        (m_Browser.*aRequest)(id, aArguments...);
        return AnswerTo(id, aReplies);
    }

    Browser& m_Browser;
    MPL::TransactionIdCreator m_Ids{MPL_TestEnvironment::GetDbusConnection().baseService()};
    QSignalSpy m_Started;
    QSignalSpy m_Selected;
    QSignalSpy m_Records;
    QSignalSpy m_Playing;
};

/// Step 1: down to the one album. The top level lists the categories, the album category lists the albums.
void GoToTheAlbum(Walk& aWalk)
{
    aWalk.Start();
    const QList<MPL::ResultDictionary> categories = aWalk.Records();
    const auto album = std::find_if(categories.begin(), categories.end(), [](const auto& aCategory) {
        return aCategory.value(MPL::MPL_RESULT_KEY_TOPLEVEL) == MPL::MPL_BROWSE_CATEGORY_ALBUM;
    });
    aWalk.Select(static_cast<uint>(std::distance(categories.begin(), album)));
    const QList<MPL::ResultDictionary> albums = aWalk.Records();
    ASSERT_EQ(albums.size(), 1);
    EXPECT_EQ(albums.at(0).value(MPL::MPL_RESULT_KEY_ALBUM).toString(), "Three Tones");
    aWalk.Select(0);
    const QList<MPL::ResultDictionary> songs = aWalk.Records();
    ASSERT_EQ(songs.size(), 3);
    EXPECT_EQ(songs.at(2).value(MPL::MPL_RESULT_KEY_SONG).toString(), "Tone 3");
}

/// Step 2: play it, and follow the skip to the next track.
void PlayAndSkip(Walk& aWalk, PlayStates& aPlayback, QSignalSpy& aTrackChanges)
{
    aWalk.PlayAll();
    EXPECT_TRUE(aPlayback.WaitFor(MPL::MPL_PLAY_STATE_PLAYING));
    const int before = aTrackChanges.count();
    EXPECT_TRUE(aPlayback.NextTrack());
    MPL::TestUtils::WaitForSignal(aTrackChanges, static_cast<unsigned>(before + 1), kAnswerTimeMs);
    EXPECT_GT(aTrackChanges.count(), before);
}

/// Step 3: look at what is queued.
void ReadTheQueue(PlayQueue& aQueue, QSignalSpy& aResults)
{
    EXPECT_EQ(aQueue.GetNumberOfTracks().value(), 3U);
    bool accepted = false;
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(aQueue.RequestTrackInfo(0, kAll), accepted));
    EXPECT_TRUE(accepted);
    MPL::TestUtils::WaitForSignal(aResults, 1, kAnswerTimeMs);
    ASSERT_GE(aResults.count(), 1);
    const auto tracks = aResults.at(0).at(0).value<QList<MPL::ResultDictionary>>();
    ASSERT_EQ(tracks.size(), 3);
    EXPECT_EQ(tracks.at(0).value(MPL::MPL_TRACK_INFO_KEY_TRACK_NAME).toString(), "Tone 1");
}

TEST_F(BrowseAndPlay, PlaysAnAlbumFoundByBrowsing)
{
    const auto browser = Make<Browser>(MPL::MPL_FUNCTIONALITY_BROWSE);
    const auto queue = Make<PlayQueue>(MPL::MPL_FUNCTIONALITY_PLAYQUEUE);
    const auto listener = MakeListener<Browser>(MPL::MPL_FUNCTIONALITY_BROWSE);
    const auto queueListener = MakeListener<PlayQueue>(MPL::MPL_FUNCTIONALITY_PLAYQUEUE);
    Walk walk(*browser, *listener);
    QSignalSpy trackChanges(queueListener.get(), &PlayQueue::SignalTrackIndexChanged);
    QSignalSpy results(queueListener.get(), &PlayQueue::SignalResults);
    PlayStates playback(MPL::MPL_MASS_STORAGE_SERVICE_NAME, PathOf(MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL),
                        &m_Thread);
    playback.moveToThread(&m_Thread);
    m_Thread.start();

    GoToTheAlbum(walk);
    PlayAndSkip(walk, playback, trackChanges);
    ReadTheQueue(*queue, results);
    EXPECT_TRUE(playback.Pause());
    EXPECT_TRUE(playback.WaitFor(MPL::MPL_PLAY_STATE_PAUSED));

    // The listeners end before this function does, so their thread ends first.
    QuitTest();
    m_Thread.wait();
}

} // namespace
