#include "MediaFixture.h"
#include <MPL_MediaPlayerLib.h>

#include <QDir>
#include <QFile>

#include <algorithm>

namespace
{

using Control = ComTalvexDBusMediaPlayerPlaybackControlInterface;
using Indexer = ComTalvexDBusMediaPlayerIndexerInfoInterface;

using AnIndexer = MediaFixture;

TEST_F(AnIndexer, ReadsEveryFormat)
{
    PlayAlbum();
    EXPECT_TRUE(Value(m_Control->Pause()));
    QSignalSpy results(m_Queue.get(), &ComTalvexDBusMediaPlayerPlayQueueInterface::SignalResults);
    EXPECT_TRUE(Value(m_Queue->RequestTrackInfo(0, 4)));
    ASSERT_TRUE(IsSignalled(results));
    for (const MPL::ResultDictionary& track : results[0][0].value<QList<MPL::ResultDictionary>>()) {
        const std::string file = track.value(MPL::MPL_TRACK_INFO_KEY_FILE_NAME).toString().toStdString();
        EXPECT_EQ(track.value(MPL::MPL_TRACK_INFO_KEY_ARTIST_NAME).toString(), "Wave") << file;
        EXPECT_EQ(track.value(MPL::MPL_TRACK_INFO_KEY_GENRE_NAME).toString(), "Ambient") << file;
        EXPECT_EQ(track.value(MPL::MPL_TRACK_INFO_KEY_FOLDER_NAME).toString(), "wave") << file;
        // A frame more or less of the compressed formats.
        EXPECT_NEAR(track.value(MPL::MPL_TRACK_INFO_KEY_TRACK_LENGTH).toInt(), 500, 200) << file;
    }
}

TEST_F(AnIndexer, ReportsItsProgressAndWhatItCantRead)
{
    QFile(Folder() + "no audio.txt").open(QIODevice::WriteOnly);
    QFile bad(Folder() + "bad.mp3");
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly) && bad.write("not a sound") > 0);
    bad.close();
    QSignalSpy progress(m_Indexer.get(), &Indexer::SignalProgressChanged);
    QSignalSpy status(m_Indexer.get(), &Indexer::SignalStatusChanged);
    QSignalSpy events(m_Control.get(), &Control::SignalEvent);
    EXPECT_TRUE(Value(m_Indexer->Reindex()));
    ASSERT_TRUE(IsSignalled(status, 2));
    EXPECT_EQ(status[1][0].toString(), MPL::MPL_INDEX_STATUS_INDEXING_COMPLETED);
    QList<uint> steps;
    for (const QVariantList& arguments : progress) {
        steps.append(arguments.value(0).toUInt());
    }
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
    EXPECT_EQ(steps.value(0), 0U);
    EXPECT_EQ(steps.last(), 100U);
    EXPECT_GT(steps.size(), 3);
    ASSERT_EQ(events.count(), 1);
    EXPECT_TRUE(events[0][0].toString().contains(MPL::MPL_EVENT_UNRECOGNIZED_FORMAT));
    EXPECT_TRUE(events[0][0].toString().contains("bad.mp3"));
}

TEST_F(AnIndexer, HasNothingToDoWithoutAFolder)
{
    ASSERT_TRUE(QDir(Folder()).removeRecursively());
    EXPECT_FALSE(Value(m_Indexer->Reindex()));
    ASSERT_TRUE(QDir().mkpath(Folder()));
    EXPECT_TRUE(Value(m_Indexer->Reindex()));
    Value(m_Browser->Start());
    ASSERT_TRUE(WaitUntil("the index is done", [this] { return Value(m_Indexer->GetProgress()) == 100; }));
    EXPECT_FALSE(Value(m_Browser->PlayAll()));
}

} // namespace
