#include "MediaFixture.h"
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

class APlayer : public MediaFixture
{
protected:
    // Plays all there is: two tracks of ten seconds first, then the four short ones.
    void PlayEverything()
    {
        Value(m_Browser->Start());
        EXPECT_TRUE(Value(m_Browser->PlayAll()));
    }
    uint At() { return Value(m_Info->GetCurrentPlayTime()); }
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

QList<uint> Sorted(QList<uint> aNumbers)
{
    std::sort(aNumbers.begin(), aNumbers.end());
    return aNumbers;
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
    ASSERT_TRUE(IsSignalled(finished));

    EXPECT_EQ(Numbers(indexes), (QList<uint>{0, 1, 2, 3}));
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
}

TEST_F(APlayer, ShufflesTheWholeQueue)
{
    EXPECT_TRUE(Value(m_Control->SetShuffleMode(MPL::MPL_SHUFFLE_MODE_SHUFFLE_MODE_ON)));
    EXPECT_TRUE(Value(m_Control->SetSpeedMode(MPL::MPL_PLAYBACK_SPEED_SPEED_4X)));
    QSignalSpy indexes(m_Queue.get(), &Queue::SignalTrackIndexChanged);
    QSignalSpy finished(m_Control.get(), &Control::SignalPlaybackFinished);
    PlayAlbum();
    ASSERT_TRUE(IsSignalled(finished));
    EXPECT_EQ(Sorted(Numbers(indexes)), (QList<uint>{0, 1, 2, 3}))
        << "the first track must not leave any out";
}

TEST_F(APlayer, RepeatsAndShuffles)
{
    PlayAlbum();
    EXPECT_TRUE(Value(m_Control->SetSpeedMode(MPL::MPL_PLAYBACK_SPEED_SPEED_4X)));
    EXPECT_TRUE(Value(m_Control->SetRepeatMode(MPL::MPL_REPEAT_MODE_REPEAT_MODE_ALL)));
    QSignalSpy indexes(m_Queue.get(), &Queue::SignalTrackIndexChanged);
    ASSERT_TRUE(WaitUntil("it begins again",
                          [&] { return Numbers(indexes).indexOf(0, Numbers(indexes).indexOf(3)) > 0; }));

    EXPECT_TRUE(Value(m_Control->SetShuffleMode(MPL::MPL_SHUFFLE_MODE_SHUFFLE_MODE_ON)));
    Forget(indexes);
    ASSERT_TRUE(IsSignalled(indexes, 4));
    EXPECT_EQ(Sorted(Numbers(indexes).mid(0, 4)), (QList<uint>{0, 1, 2, 3}));

    EXPECT_TRUE(Value(m_Control->SetRepeatMode(MPL::MPL_REPEAT_MODE_REPEAT_MODE_ONE)));
    QSignalSpy times(m_Info.get(), &Info::SignalTrackCurrentPlayTimeChanged);
    Forget(indexes);
    ASSERT_TRUE(WaitUntil("it plays the track again", [&] { return Numbers(times).count(0) >= 3; }));
    EXPECT_TRUE(indexes.isEmpty());
}

template <typename Words>
QStringList ListOf(const Words& aWords)
{
    return QStringList(QList<QString>(aWords.begin(), aWords.end()));
}

struct Mode {
    const char* name;
    const char* changed;
    QStringList words;
};

class APlayersMode : public APlayer, public testing::WithParamInterface<Mode>
{
protected:
    bool Set(const QString& aWord)
    {
        return Value<bool>(m_Control->asyncCall(QStringLiteral("Set%1Mode").arg(GetParam().name), aWord));
    }
    QString Get()
    {
        return Value<QString>(m_Control->asyncCall(QStringLiteral("Get%1Mode").arg(GetParam().name)));
    }
};

TEST_P(APlayersMode, TakesOnlyItsWords)
{
    QSignalSpy changed(m_Control.get(), GetParam().changed);
    QSignalSpy events(m_Control.get(), &Control::SignalEvent);
    // Ending with the mode that is set, so that each word is a change.
    QStringList words = GetParam().words;
    words.removeAll(Get());
    words.append(Get());
    for (const QString& word : words) {
        EXPECT_TRUE(Set(word)) << word.toStdString();
        EXPECT_EQ(Get(), word);
        EXPECT_TRUE(Set(word)); // no change
    }
    for (const QString& word : QStringList{"NONSENSE", words.first().toLower(), ""}) {
        EXPECT_FALSE(Set(word)) << word.toStdString();
    }
    EXPECT_EQ(Get(), words.last());
    ASSERT_TRUE(IsSignalled(events, 3));
    EXPECT_EQ(changed.count(), words.size());
    EXPECT_TRUE(events[0][0].toString().startsWith("event_type=ERROR;event="));
}

INSTANTIATE_TEST_SUITE_P(
    Of, APlayersMode,
    testing::Values(Mode{"Repeat", SIGNAL(SignalRepeatModeChanged(QString)), ListOf(MPL::MPL_REPEAT_MODES)},
                    Mode{"Shuffle", SIGNAL(SignalShuffleModeChanged(QString)),
                         ListOf(MPL::MPL_SHUFFLE_MODES)},
                    Mode{"Speed", SIGNAL(SignalSpeedModeChanged(QString)), ListOf(MPL::MPL_PLAYBACK_SPEEDS)}),
    [](const auto& aInfo) { return std::string(aInfo.param.name); });

TEST_F(APlayer, SeeksAndJumpsWithinATrack)
{
    PlayEverything();
    EXPECT_TRUE(Value(m_Control->Pause()));
    EXPECT_TRUE(Succeeds(m_Control->SeekToTime(6000)));
    EXPECT_EQ(At(), 6000U);
    for (const auto& [by, to] : {std::pair{-2500, 3500U}, {-5000, 0U}, {2147483647, 10000U}}) {
        EXPECT_TRUE(Succeeds(m_Control->Jump(by)));
        EXPECT_EQ(At(), to);
    }
    QSignalSpy events(m_Control.get(), &Control::SignalEvent);
    EXPECT_TRUE(Succeeds(m_Control->SeekToTime(10001)));
    ASSERT_TRUE(IsSignalled(events, 1));
    EXPECT_EQ(At(), 10000U);
}

TEST_F(APlayer, MovesByChapters)
{
    PlayEverything();
    QSignalSpy events(m_Control.get(), &Control::SignalEvent);
    QSignalSpy chapters(m_Control.get(), &Control::SignalChapterChanged);
    EXPECT_TRUE(Value(m_Control->SeekTitleChapter(1, 3))); // plays
    EXPECT_TRUE(Value(m_Control->Pause()));
    EXPECT_EQ(Value(m_Control->GetCurrentChapter()), 3U);
    EXPECT_TRUE(Value(m_Control->PreviousChapter()));
    EXPECT_EQ(At(), 2500U);
    EXPECT_EQ(Value(m_Control->GetCurrentChapter()), 2U);
    EXPECT_FALSE(Value(m_Control->SeekTitleChapter(1, 5)));
    EXPECT_FALSE(Value(m_Control->SeekTitleChapter(0, 1)));
    EXPECT_FALSE(Value(m_Control->SetTrackIndex(6)));
    EXPECT_EQ(At(), 2500U);
    ASSERT_TRUE(IsSignalled(events, 3) && IsSignalled(chapters, 2));
}

TEST_F(APlayer, WindsBothWaysAndThenPlays)
{
    QSignalSpy indexes(m_Queue.get(), &Queue::SignalTrackIndexChanged);
    PlayEverything();
    ASSERT_TRUE(IsSignalled(indexes));
    Forget(indexes);
    // Eight times as fast as playing: ten seconds are over soon.
    EXPECT_TRUE(Value(m_Control->SeekTrack(MPL::MPL_SEEK_MODE_SEEK_MODE_FAST_FORWARD)));
    EXPECT_EQ(Value(m_Control->GetPlayState()), MPL::MPL_PLAY_STATE_FAST_FORWARDING);
    ASSERT_TRUE(IsSignalled(indexes));
    EXPECT_EQ(Value(m_Control->GetPlayState()), MPL::MPL_PLAY_STATE_PLAYING);
    EXPECT_TRUE(Value(m_Control->SeekTrack(MPL::MPL_SEEK_MODE_SEEK_MODE_REWIND)));
    ASSERT_TRUE(WaitUntil("it plays from the beginning", [this] {
        return Value(m_Control->GetPlayState()) == MPL::MPL_PLAY_STATE_PLAYING;
    }));
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
    ASSERT_TRUE(WaitUntil("the last signal says what the query does", [&] {
        return !changed.isEmpty() && changed.last()[0].toString() == Value(m_Control->GetFunctionalities());
    }));
}

TEST_F(APlayer, HasAllOfAFileBuffered)
{
    PlayEverything();
    const MPL::BufferedMedia buffered = Value(m_Control->GetBufferedInfo());
    EXPECT_EQ(buffered.start, 0);
    EXPECT_EQ(buffered.end, 10000);
}

TEST_F(APlayer, ShowsItsQueue)
{
    QSignalSpy results(m_Queue.get(), &Queue::SignalResults);
    QSignalSpy errors(m_Queue.get(), &Queue::SignalPlayQueueError);
    EXPECT_FALSE(Value(m_Queue->RequestTrackInfo(0, 1)));
    PlayEverything();
    EXPECT_FALSE(Value(m_Queue->RequestTrackInfo(6, 1)));
    EXPECT_TRUE(Value(m_Queue->RequestTrackInfo(4, 4294967295U)));
    ASSERT_TRUE(IsSignalled(results) && IsSignalled(errors, 2));
    EXPECT_EQ(errors[0][0].toString(), MPL::MPL_PLAYQUEUE_DATABASE_ERROR_MESSAGE);
    const auto records = results[0][0].value<QList<MPL::ResultDictionary>>();
    EXPECT_EQ(Column(records, MPL::MPL_TRACK_INFO_KEY_TRACK_NAME), (QStringList{"Neap", "Spring"}));
}

TEST_F(APlayer, TakesAQueueOfTracksThatAreThere)
{
    PlayEverything();
    QSignalSpy results(m_Queue.get(), &Queue::SignalResults);
    EXPECT_TRUE(Value(m_Queue->RequestTrackInfo(4, 2)));
    ASSERT_TRUE(IsSignalled(results));
    QSignalSpy pushed(m_Queue.get(), &Queue::SignalPlayQueuePushReceived);
    QSignalSpy distributed(m_Control.get(), &Control::SignalDistributedPlaybackChanged);
    const auto records = results[0][0].value<QList<MPL::ResultDictionary>>();
    const QStringList ids = Column(records, MPL::MPL_TRACK_INFO_KEY_TRACK_ID);
    QVariantMap message{{MPL::MPL_RESULT_LIST_KEY_TRACK_RESULTS, ids},
                        {MPL::MPL_TRACK_INFO_KEY_NOW_PLAYING_TRACK_INDEX, 1U}};
    EXPECT_TRUE(Value(m_Queue->LoadRemotePlayQueue(message)));
    EXPECT_EQ(Value(m_Queue->GetNumberOfTracks()), 2U);
    ASSERT_TRUE(IsSignalled(pushed) && IsSignalled(distributed));
    EXPECT_EQ(pushed[0][1].toString(), "Spring");
    message[MPL::MPL_RESULT_LIST_KEY_TRACK_RESULTS] =
        QVariant::fromValue(QList<qulonglong>{ids[0].toULongLong(), 1});
    EXPECT_FALSE(Value(m_Queue->LoadRemotePlayQueue(message))) << "one of the tracks is not there";
    EXPECT_FALSE(Value(m_Queue->LoadRemotePlayQueue(QVariantMap())));
    EXPECT_EQ(Value(m_Queue->GetNumberOfTracks()), 2U);
    EXPECT_TRUE(Value(m_Control->IsDistributedPlayback()));
}

} // namespace
