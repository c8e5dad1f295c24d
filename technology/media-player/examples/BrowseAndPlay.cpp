// Puts tagged audio files into the environment, lets the mass-storage source index them, browses to one of
// their albums by transaction id, plays all of it and follows the playback.
//
// Everything is called on the test's own thread; the waiters hear the signals meanwhile.
#include <MPL_DBusAssertions.h>
#include <MPL_Launching.h>
#include <MPL_MediaPlayerLib.h>
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestPrinters.h>

#include <QDir>

#include <algorithm>
#include <iterator>
#include <memory>

namespace
{

using Browser = ComTalvexDBusMediaPlayerBrowserInterface;
using Control = ComTalvexDBusMediaPlayerPlaybackControlInterface;
using PlayQueue = ComTalvexDBusMediaPlayerPlayQueueInterface;
using Records = QList<MPL::ResultDictionary>;

constexpr uint kAll = 100;

class BrowseAndPlay : public MPL::MediaSourceTestFixture
{
protected:
    void SetUp() override
    {
        MPL::MediaSourceTestFixture::SetUp();
        const QDir media("/opt/talvex/test/media/" + TEST_MEDIA_SMALLMUSIC_NAME); // of the simulated stack
        const QStringList files = media.entryList(QDir::Files);
        ASSERT_FALSE(files.isEmpty());
        for (const QString& file : files) {
            ASSERT_TRUE(MPL_TestEnvironment::UseFile(media.filePath(file)));
        }
        ASSERT_TRUE(MPL::LaunchSource(MPL::MPL_MASS_STORAGE_PROCESS_NAME));
        QString sourcePath;
        ASSERT_TRUE(MPL_TestEnvironment::GetMediaSourceCapabilities("USB", m_Paths, sourcePath));
        ASSERT_TRUE(
            MPL_TestEnvironment::WaitForIndexFinished(m_Paths.value(MPL::MPL_FUNCTIONALITY_INDEX).path()));
    }

    /// A proxy of one of the source's capabilities.
    template <typename Proxy>
    std::unique_ptr<Proxy> Make(const QString& aFunctionality) const
    {
        return std::make_unique<Proxy>(MPL::MPL_MASS_STORAGE_SERVICE_NAME,
                                       m_Paths.value(aFunctionality).path(),
                                       MPL_TestEnvironment::GetDbusConnection());
    }

    QMap<QString, QDBusObjectPath> m_Paths;
};

/// Walks through the source's records. Each request carries an id, and its answer is the signal with that id
/// and no error text; other clients' answers arrive as well.
class Walk
{
public:
    explicit Walk(Browser& aBrowser)
        : m_Browser(aBrowser),
          m_Started(aBrowser, &Browser::SignalReplyStart),
          m_Selected(aBrowser, &Browser::SignalReplySelectRecord),
          m_Records(aBrowser, &Browser::SignalReplyRecords),
          m_Playing(aBrowser, &Browser::SignalReplyPlayAll)
    {
    }

    void Start() { Ask(m_Started, &Browser::RequestStart); }
    void Select(uint aIndex) { Ask(m_Selected, &Browser::RequestSelectRecord, aIndex); }
    void PlayAll() { Ask(m_Playing, &Browser::RequestPlayAll); }

    Records List()
    {
        Ask(m_Records, &Browser::RequestRecordsByTransactionId, 0U, kAll);
        return std::get<2>(m_Records.Last());
    }

private:
    template <typename... More>
    using Answer = MPL::SignalWaiter<MPL::TransactionId, const QString&, More...>;

    template <typename Waiter, typename Request, typename... Arguments>
    void Ask(Waiter& aAnswer, Request aRequest, Arguments... aArguments)
    {
        const MPL::TransactionId id = m_Ids.Create();
        EXPECT_TRUE(MPL::Replied((m_Browser.*aRequest)(id, aArguments...)));
        EXPECT_TRUE(aAnswer.Arrives(id, QString()));
    }

    Browser& m_Browser;
    MPL::TransactionIdCreator m_Ids{MPL_TestEnvironment::GetDbusConnection().baseService()};
    Answer<uint> m_Started;
    Answer<> m_Selected;
    Answer<const Records&> m_Records;
    Answer<> m_Playing;
};

uint IndexOf(const Records& aRecords, const QString& aKey, const QString& aValue)
{
    const auto found = std::find_if(aRecords.begin(), aRecords.end(),
                                    [&](const auto& aRecord) { return aRecord.value(aKey) == aValue; });
    EXPECT_NE(found, aRecords.end()) << testing::PrintToString(aValue) << " in "
                                     << testing::PrintToString(aRecords);
    return static_cast<uint>(std::distance(aRecords.begin(), found));
}

/// Step 1: down to one album. The top level lists the categories, the album category lists the albums.
void GoToTheAlbum(Walk& aWalk)
{
    aWalk.Start();
    aWalk.Select(IndexOf(aWalk.List(), MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_ALBUM));
    aWalk.Select(IndexOf(aWalk.List(), MPL::MPL_RESULT_KEY_ALBUM, "Three Tones"));
    const Records songs = aWalk.List();
    ASSERT_EQ(songs.size(), 3);
    EXPECT_EQ(songs.at(2).value(MPL::MPL_RESULT_KEY_SONG), "Tone 3");
}

/// Step 2: look at what is queued.
void ReadTheQueue(PlayQueue& aQueue)
{
    MPL::SignalWaiter results(aQueue, &PlayQueue::SignalResults);
    EXPECT_EQ(MPL::ValueOf(aQueue.GetNumberOfTracks()), 3U);
    EXPECT_TRUE(MPL::ValueOf(aQueue.RequestTrackInfo(0, kAll)));
    ASSERT_TRUE(results.Arrives());
    const Records tracks = std::get<0>(results.Last());
    ASSERT_EQ(tracks.size(), 3);
    EXPECT_EQ(tracks.at(0).value(MPL::MPL_TRACK_INFO_KEY_TRACK_NAME), "Tone 1");
}

TEST_F(BrowseAndPlay, PlaysAnAlbumFoundByBrowsing)
{
    const auto browser = Make<Browser>(MPL::MPL_FUNCTIONALITY_BROWSE);
    const auto control = Make<Control>(MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL);
    const auto queue = Make<PlayQueue>(MPL::MPL_FUNCTIONALITY_PLAYQUEUE);
    MPL::SignalWaiter playState(*control, &Control::SignalPlayStateChanged);
    MPL::SignalWaiter track(*queue, &PlayQueue::SignalTrackIndexChanged);

    Walk walk(*browser);
    GoToTheAlbum(walk);
    walk.PlayAll();
    EXPECT_TRUE(playState.Arrives(MPL::MPL_PLAY_STATE_PLAYING));
    EXPECT_TRUE(MPL::Replied(control->NextTrack()));
    EXPECT_TRUE(track.Arrives(1U));

    ReadTheQueue(*queue);
    EXPECT_TRUE(MPL::Replied(control->Pause()));
    EXPECT_TRUE(playState.Arrives(MPL::MPL_PLAY_STATE_PAUSED));
}

} // namespace
