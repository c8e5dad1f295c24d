#include "MediaTest.h"
#include <MPL_MediaPlayerLib.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace
{

using Control = ComTalvexDBusMediaPlayerPlaybackControlInterface;
using Queue = ComTalvexDBusMediaPlayerPlayQueueInterface;
using Info = ComTalvexDBusMediaPlayerMediaInfoInterface;

class APlayer : public MediaTest
{
protected:
    void SetUp() override
    {
        MediaTest::SetUp();
        if (!HasFatalFailure() && !IsSkipped()) {
            StartSource();
        }
    }
    // Plays all there is: two tracks of ten seconds first, then the four short ones.
    void PlayEverything()
    {
        Value(m_Browser->Start());
        EXPECT_TRUE(Value(m_Browser->PlayAll()));
    }
    QJsonObject Functionality(const QString& aName)
    {
        return QJsonDocument::fromJson(Value(m_Control->GetFunctionalities()).toUtf8())
            .object()[MPL::MPL_FUNCTIONALITY_JSON_KEY_AVAILABLE_FUNCTIONALITIES]
            .toObject()[aName]
            .toObject();
    }
};

QList<uint> Numbers(const QSignalSpy& aSpy)
{
    QList<uint> numbers;
    for (const QVariantList& arguments : aSpy) {
        numbers.append(arguments.value(0).toUInt());
    }
    return numbers;
}

// Drops what has been signalled so far, also what has arrived and waits for its delivery.
void Forget(QSignalSpy& aSpy)
{
    QCoreApplication::processEvents();
    aSpy.clear();
}

TEST_F(APlayer, PlaysTheQueueToItsEnd)
{
    QSignalSpy indexes(m_Queue.get(), &Queue::SignalTrackIndexChanged);
    QSignalSpy tracks(m_Info.get(), &Info::SignalTrackInfoChanged);
    QSignalSpy states(m_Control.get(), &Control::SignalPlayStateChanged);
    QSignalSpy finished(m_Control.get(), &Control::SignalPlaybackFinished);
    PlayAlbum();
    ASSERT_TRUE(Wait([&] { return !finished.isEmpty(); }));

    EXPECT_EQ((QList<uint>{0, 1, 2, 3}), Numbers(indexes));
    QStringList names;
    for (const QVariantList& arguments : tracks) {
        names.append(
            arguments.value(0).value<QVariantMap>().value(MPL::MPL_TRACK_INFO_KEY_TRACK_NAME).toString());
    }
    EXPECT_EQ(names, (QStringList{"Ebb", "Flöd", "Neap", "Spring"}));
    ASSERT_EQ(states.count(), 2);
    EXPECT_EQ(states[0][0].toString(), MPL::MPL_PLAY_STATE_PLAYING);
    EXPECT_EQ(states[1][0].toString(), MPL::MPL_PLAY_STATE_STOPPED);
    EXPECT_EQ(Value(m_Info->GetCurrentPlayTime()), 0U);

    EXPECT_TRUE(Value(m_Control->Resume())); // from the beginning again
    EXPECT_EQ(Value(m_Queue->GetCurrentTrackIndex()), 0U);

    EXPECT_TRUE(Value(m_Control->Pause()));
    EXPECT_TRUE(Value(m_Control->SetShuffleMode(MPL::MPL_SHUFFLE_MODE_SHUFFLE_MODE_ON)));
    EXPECT_TRUE(Value(m_Control->SetSpeedMode(MPL::MPL_PLAYBACK_SPEED_SPEED_4X)));
    Forget(indexes);
    finished.clear();
    PlayAlbum();
    ASSERT_TRUE(Wait([&] { return !finished.isEmpty(); }));
    QList<uint> shuffled = Numbers(indexes);
    std::sort(shuffled.begin(), shuffled.end());
    EXPECT_EQ((QList<uint>{0, 1, 2, 3}), shuffled) << "the first track must not leave any out";
}

TEST_F(APlayer, RepeatsAndShuffles)
{
    PlayAlbum();
    EXPECT_TRUE(Value(m_Control->SetSpeedMode(MPL::MPL_PLAYBACK_SPEED_SPEED_4X)));
    EXPECT_TRUE(Value(m_Control->SetRepeatMode(MPL::MPL_REPEAT_MODE_REPEAT_MODE_ALL)));
    QSignalSpy indexes(m_Queue.get(), &Queue::SignalTrackIndexChanged);
    ASSERT_TRUE(Wait([&] { return Numbers(indexes).indexOf(0, Numbers(indexes).indexOf(3)) > 0; }))
        << "does not begin again";

    EXPECT_TRUE(Value(m_Control->SetShuffleMode(MPL::MPL_SHUFFLE_MODE_SHUFFLE_MODE_ON)));
    Forget(indexes);
    ASSERT_TRUE(Wait([&] { return indexes.count() >= 4; }));
    QList<uint> round = Numbers(indexes).mid(0, 4);
    std::sort(round.begin(), round.end());
    EXPECT_EQ((QList<uint>{0, 1, 2, 3}), round);

    EXPECT_TRUE(Value(m_Control->SetRepeatMode(MPL::MPL_REPEAT_MODE_REPEAT_MODE_ONE)));
    QSignalSpy times(m_Info.get(), &Info::SignalTrackCurrentPlayTimeChanged);
    Forget(indexes);
    ASSERT_TRUE(Wait([&] { return Numbers(times).count(0) >= 3; })) << "does not play the track again";
    EXPECT_TRUE(indexes.isEmpty());
}

TEST_F(APlayer, TakesOnlyTheWordsOfEachMode)
{
    struct Mode {
        const char* set;
        const char* get;
        const char* changed;
        QStringList words;
    };
    const auto list = [](const auto& aWords) {
        QStringList words;
        std::copy(aWords.begin(), aWords.end(), std::back_inserter(words));
        return words;
    };
    for (const Mode& mode : {Mode{"SetRepeatMode", "GetRepeatMode", SIGNAL(SignalRepeatModeChanged(QString)),
                                  list(MPL::MPL_REPEAT_MODES)},
                             Mode{"SetShuffleMode", "GetShuffleMode",
                                  SIGNAL(SignalShuffleModeChanged(QString)), list(MPL::MPL_SHUFFLE_MODES)},
                             Mode{"SetSpeedMode", "GetSpeedMode", SIGNAL(SignalSpeedModeChanged(QString)),
                                  list(MPL::MPL_PLAYBACK_SPEEDS)}}) {
        const auto set = [&](const QString& aWord) {
            return Value<bool>(m_Control->asyncCall(QString::fromLatin1(mode.set), aWord));
        };
        const auto get = [&] { return Value<QString>(m_Control->asyncCall(QString::fromLatin1(mode.get))); };
        QSignalSpy changed(m_Control.get(), mode.changed);
        QSignalSpy events(m_Control.get(), &Control::SignalEvent);
        // Beginning and ending with the mode that is set, so that each word but the first is a change.
        QStringList words = mode.words;
        words.removeAll(get());
        words.append(get());
        for (const QString& word : words) {
            EXPECT_TRUE(set(word)) << word.toStdString();
            EXPECT_EQ(word, get());
            EXPECT_TRUE(set(word)); // no change
        }
        for (const QString& word : {QStringLiteral("NONSENSE"), words.first().toLower(), QString()}) {
            EXPECT_FALSE(set(word)) << word.toStdString();
        }
        EXPECT_EQ(words.last(), get());
        ASSERT_TRUE(Wait([&] { return events.count() >= 3; })) << mode.set;
        EXPECT_EQ(words.size(), changed.count()) << mode.set;
        EXPECT_TRUE(events[0][0].toString().startsWith(QLatin1String("event_type=ERROR;event=")));
    }
}

TEST_F(APlayer, MovesWithinATrack)
{
    PlayEverything();
    EXPECT_TRUE(Value(m_Control->Pause()));
    const auto at = [this] { return Value(m_Info->GetCurrentPlayTime()); };
    Done(m_Control->SeekToTime(6000));
    EXPECT_EQ(at(), 6000U);
    Done(m_Control->Jump(-2500));
    EXPECT_EQ(at(), 3500U);
    Done(m_Control->Jump(-5000));
    EXPECT_EQ(at(), 0U);
    Done(m_Control->Jump(2147483647));
    EXPECT_EQ(at(), 10000U);

    QSignalSpy events(m_Control.get(), &Control::SignalEvent);
    Done(m_Control->SeekToTime(10001));
    ASSERT_TRUE(Wait([&] { return events.count() == 1; }));
    EXPECT_EQ(at(), 10000U);

    QSignalSpy chapters(m_Control.get(), &Control::SignalChapterChanged);
    EXPECT_TRUE(Value(m_Control->SeekTitleChapter(1, 3))); // plays
    EXPECT_TRUE(Value(m_Control->Pause()));
    EXPECT_EQ(Value(m_Control->GetCurrentChapter()), 3U);
    EXPECT_TRUE(Value(m_Control->PreviousChapter()));
    EXPECT_EQ(at(), 2500U);
    EXPECT_EQ(Value(m_Control->GetCurrentChapter()), 2U);
    EXPECT_FALSE(Value(m_Control->SeekTitleChapter(1, 5)));
    EXPECT_FALSE(Value(m_Control->SeekTitleChapter(0, 1)));
    EXPECT_FALSE(Value(m_Control->SetTrackIndex(6)));
    EXPECT_EQ(at(), 2500U);
    ASSERT_TRUE(Wait([&] { return events.count() == 4 && chapters.count() >= 2; }));

    // Eight times as fast as playing: ten seconds are over soon.
    QSignalSpy indexes(m_Queue.get(), &Queue::SignalTrackIndexChanged);
    EXPECT_TRUE(Value(m_Control->SeekTrack(MPL::MPL_SEEK_MODE_SEEK_MODE_FAST_FORWARD)));
    EXPECT_EQ(Value(m_Control->GetPlayState()), MPL::MPL_PLAY_STATE_FAST_FORWARDING);
    ASSERT_TRUE(Wait([&] { return !indexes.isEmpty(); }));
    EXPECT_EQ(Value(m_Control->GetPlayState()), MPL::MPL_PLAY_STATE_PLAYING);
    EXPECT_TRUE(Value(m_Control->SeekTrack(MPL::MPL_SEEK_MODE_SEEK_MODE_REWIND)));
    ASSERT_TRUE(Wait([&] { return Value(m_Control->GetPlayState()) == MPL::MPL_PLAY_STATE_PLAYING; }));
    EXPECT_EQ(Value(m_Queue->GetCurrentTrackIndex()), 1U);
}

TEST_F(APlayer, ExplainsWhatItCanDo)
{
    const auto enabled = [this](const QString& aName) {
        return Functionality(aName)[MPL::MPL_FUNCTIONALITY_JSON_KEY_FUNCTIONALITY_STATE].toString() ==
               MPL::MPL_FUNCTIONALITY_STATE_ENABLED;
    };
    EXPECT_FALSE(Value(m_Control->Resume())); // the queue is empty
    EXPECT_FALSE(Value(m_Control->NextTrack()));
    EXPECT_FALSE(enabled(MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_NEXT));
    EXPECT_EQ(
        Functionality(MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_REPEAT)[MPL::MPL_FUNCTIONALITY_JSON_KEY_OPTIONS]
            .toArray()
            .size(),
        3);

    QSignalSpy changed(m_Control.get(), &Control::SignalFunctionalitiesChanged);
    PlayEverything();
    EXPECT_TRUE(enabled(MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_NEXT));
    EXPECT_TRUE(Value(m_Control->SetTrackIndex(5)));
    EXPECT_FALSE(enabled(MPL::MPL_PLAYBACK_FUNCTION_PLAYBACK_NEXT));
    EXPECT_FALSE(Value(m_Control->NextTrack()));
    EXPECT_TRUE(Value(m_Control->SetRepeatMode(MPL::MPL_REPEAT_MODE_REPEAT_MODE_ALL)));
    EXPECT_TRUE(Value(m_Control->NextTrack()));
    EXPECT_EQ(Value(m_Queue->GetCurrentTrackIndex()), 0U);
    EXPECT_TRUE(Value(m_Control->Pause()));
    ASSERT_TRUE(Wait([&] {
        return !changed.isEmpty() && changed.last()[0].toString() == Value(m_Control->GetFunctionalities());
    }));

    const MPL::BufferedMedia buffered = Value(m_Control->GetBufferedInfo());
    EXPECT_EQ(buffered.start, 0);
    EXPECT_EQ(buffered.end, 10000);
}

TEST_F(APlayer, ShowsAndTakesAQueue)
{
    QSignalSpy results(m_Queue.get(), &Queue::SignalResults);
    QSignalSpy errors(m_Queue.get(), &Queue::SignalPlayQueueError);
    EXPECT_FALSE(Value(m_Queue->RequestTrackInfo(0, 1)));
    PlayEverything();
    EXPECT_FALSE(Value(m_Queue->RequestTrackInfo(6, 1)));
    EXPECT_TRUE(Value(m_Queue->RequestTrackInfo(4, 4294967295U)));
    ASSERT_TRUE(Wait([&] { return !results.isEmpty() && errors.count() == 2; }));
    EXPECT_EQ(errors[0][0].toString(), MPL::MPL_PLAYQUEUE_DATABASE_ERROR_MESSAGE);
    const auto records = results[0][0].value<QList<MPL::ResultDictionary>>();
    EXPECT_EQ(Column(records, MPL::MPL_TRACK_INFO_KEY_TRACK_NAME), (QStringList{"Neap", "Spring"}));

    QSignalSpy pushed(m_Queue.get(), &Queue::SignalPlayQueuePushReceived);
    QSignalSpy distributed(m_Control.get(), &Control::SignalDistributedPlaybackChanged);
    const QStringList ids = Column(records, MPL::MPL_TRACK_INFO_KEY_TRACK_ID);
    QVariantMap message{{MPL::MPL_RESULT_LIST_KEY_TRACK_RESULTS, ids},
                        {MPL::MPL_TRACK_INFO_KEY_NOW_PLAYING_TRACK_INDEX, 1U}};
    EXPECT_TRUE(Value(m_Queue->LoadRemotePlayQueue(message)));
    EXPECT_EQ(Value(m_Queue->GetNumberOfTracks()), 2U);
    ASSERT_TRUE(Wait([&] { return !pushed.isEmpty() && !distributed.isEmpty(); }));
    EXPECT_EQ(pushed[0][1].toString(), QStringLiteral("Spring"));
    message[MPL::MPL_RESULT_LIST_KEY_TRACK_RESULTS] =
        QVariant::fromValue(QList<qulonglong>{ids[0].toULongLong(), 1});
    EXPECT_FALSE(Value(m_Queue->LoadRemotePlayQueue(message))) << "one of the tracks is not there";
    EXPECT_FALSE(Value(m_Queue->LoadRemotePlayQueue(QVariantMap())));
    EXPECT_EQ(Value(m_Queue->GetNumberOfTracks()), 2U);
    EXPECT_TRUE(Value(m_Control->IsDistributedPlayback()));
}

} // namespace
