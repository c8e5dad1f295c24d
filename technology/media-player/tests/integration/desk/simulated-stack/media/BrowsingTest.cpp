#include "MediaTest.h"
#include <MPL_MediaPlayerLib.h>

#include <QFile>

namespace
{

using Browser = ComTalvexDBusMediaPlayerBrowserInterface;
using Tid = MPL::TransactionId;

class ABrowser : public MediaTest
{
protected:
    void SetUp() override
    {
        MediaTest::SetUp();
        if (!HasFatalFailure() && !IsSkipped()) {
            StartSource();
        }
    }
    // The arguments of the answer to a request, which must echo its id and carry that error text.
    QVariantList Answer(QSignalSpy& aSpy, const Tid& aTid, const QString& aError = {})
    {
        EXPECT_TRUE(Wait([&] { return !aSpy.isEmpty(); })) << aSpy.signal().constData();
        const QVariantList arguments = aSpy.isEmpty() ? QVariantList() : aSpy.takeFirst();
        EXPECT_TRUE(aTid == arguments.value(0).value<Tid>());
        EXPECT_EQ(aError, arguments.value(1).toString());
        return arguments.mid(2);
    }
    MPL::TransactionIdCreator m_Ids{QDBusConnection::systemBus().baseService()};
};

TEST_F(ABrowser, LeadsToAnAlbumByTransactionIds)
{
    QSignalSpy started(m_Browser.get(), &Browser::SignalReplyStart);
    QSignalSpy status(m_Browser.get(), &Browser::SignalBrowseStatus);
    QSignalSpy records(m_Browser.get(), &Browser::SignalReplyRecords);
    QSignalSpy selected(m_Browser.get(), &Browser::SignalReplySelectRecord);
    QSignalSpy counted(m_Browser.get(), &Browser::SignalReplyNumberOfRecords);
    QSignalSpy way(m_Browser.get(), &Browser::SignalReplyBrowserHierarchy);
    QSignalSpy played(m_Browser.get(), &Browser::SignalReplyPlayAll);
    const auto fetch = [&] {
        const Tid tid = m_Ids.Create();
        Done(m_Browser->RequestRecordsByTransactionId(tid, 0, 50));
        return Answer(records, tid).value(0).value<QList<MPL::ResultDictionary>>();
    };
    const auto select = [&](const QString& aKey, const QString& aText) {
        const Tid tid = m_Ids.Create();
        Done(m_Browser->RequestSelectRecord(tid, static_cast<uint>(Column(fetch(), aKey).indexOf(aText))));
        Answer(selected, tid);
    };

    Tid tid = m_Ids.Create();
    Done(m_Browser->RequestStart(tid));
    const uint session = Answer(started, tid).value(0).toUInt();
    EXPECT_EQ(session, status.value(0).value(0).toUInt());
    EXPECT_EQ(Column(fetch(), MPL::MPL_RESULT_KEY_TOPLEVEL),
              (QStringList{"genre", "artist", "album", "song", "folder"}));

    select(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_ALBUM);
    EXPECT_EQ(Column(fetch(), MPL::MPL_RESULT_KEY_ALBUM), (QStringList{"Minerals", "Tides"}));
    select(MPL::MPL_RESULT_KEY_ALBUM, QStringLiteral("Tides"));
    EXPECT_EQ(Column(fetch(), MPL::MPL_RESULT_KEY_SONG), (QStringList{"Ebb", "Flöd", "Neap", "Spring"}));

    tid = m_Ids.Create();
    Done(m_Browser->RequestNumberOfRecords(tid));
    EXPECT_EQ(Answer(counted, tid).value(0).toUInt(), 4U);
    tid = m_Ids.Create();
    Done(m_Browser->RequestBrowserHierarchy(tid));
    const auto levels = Answer(way, tid).value(0).value<QVector<MPL::BrowserHierarchy>>();
    ASSERT_EQ(levels.size(), 3);
    EXPECT_EQ(levels[1].index, 1U);
    EXPECT_EQ(levels[1].count, 2U);
    EXPECT_EQ(levels[2].label, QStringLiteral("Tides"));
    EXPECT_EQ(Value(m_Browser->GetCurrentBrowseHierarchyUrl()), QStringLiteral("browse:/album/Tides"));

    tid = m_Ids.Create();
    Done(m_Browser->RequestPlayAll(tid));
    Answer(played, tid);
    EXPECT_EQ(Value(m_Queue->GetNumberOfTracks()), 4U);
    EXPECT_EQ(Value(m_Control->GetPlayState()), MPL::MPL_PLAY_STATE_PLAYING);
}

TEST_F(ABrowser, EchoesEveryIdToEveryListener)
{
    const QDBusConnection otherBus =
        QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("other"));
    Browser other(m_Browser->service(), m_Browser->path(), otherBus);
    MPL::TransactionIdCreator otherIds(otherBus.baseService());
    QSignalSpy mine(m_Browser.get(), &Browser::SignalReplyNumberOfRecords);
    QSignalSpy others(&other, &Browser::SignalReplyNumberOfRecords);
    Value(m_Browser->Start());

    QList<Tid> asked;
    for (int i = 0; i < 10; ++i) { // equal counters, so only the bus names tell the two apart
        asked.append(m_Ids.Create());
        m_Browser->RequestNumberOfRecords(asked.last());
        asked.append(otherIds.Create());
        other.RequestNumberOfRecords(asked.last());
    }
    for (QSignalSpy* spy : {&mine, &others}) {
        ASSERT_TRUE(Wait([&] { return spy->count() >= asked.size(); }));
        EXPECT_EQ(asked.size(), spy->count());
        for (const Tid& tid : asked) {
            int echoes = 0;
            for (const QVariantList& arguments : *spy) {
                echoes += arguments.value(0).value<Tid>() == tid ? 1 : 0;
            }
            EXPECT_EQ(echoes, 1);
        }
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
}

TEST_F(ABrowser, RefusesWhatMakesNoSense)
{
    QSignalSpy events(m_Browser.get(), &Browser::SignalEvent);
    QSignalSpy back(m_Browser.get(), &Browser::SignalReplyBack);
    QSignalSpy records(m_Browser.get(), &Browser::SignalReplyRecords);
    QSignalSpy selected(m_Browser.get(), &Browser::SignalReplySelectRecord);
    QSignalSpy searched(m_Browser.get(), &Browser::SignalReplySearchFor);

    EXPECT_FALSE(Value(m_Browser->SelectRecord(0))); // no session yet
    EXPECT_FALSE(Value(m_Browser->PlayAll()));
    EXPECT_FALSE(Value(m_Browser->RequestRecords(0, 1, 1)));
    Value(m_Browser->Start());
    EXPECT_FALSE(Value(m_Browser->SetCurrentResultsSortMode(QStringLiteral("by colour"))));
    ASSERT_TRUE(Wait([&] { return events.count() == 4; }));
    for (const QVariantList& event : events) {
        EXPECT_TRUE(event.value(0).toString().startsWith(QLatin1String("event_type=ERROR;event=")));
    }

    const Tid tid = m_Ids.Create();
    m_Browser->RequestBack(tid);
    Answer(back, tid, MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION);
    m_Browser->RequestRecordsByTransactionId(tid, 0, 0);
    Answer(records, tid, MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO);
    m_Browser->RequestRecordsByTransactionId(tid, 5, 1);
    Answer(records, tid, MPL::MPL_BROWSE_ERROR_MESSAGE_FETCHING_RESULTS);
    m_Browser->RequestRecordsByTransactionId(tid, 4, 4294967295U); // clipped, not wrapped around
    EXPECT_EQ(Answer(records, tid).value(0).value<QList<MPL::ResultDictionary>>().size(), 1);
    m_Browser->RequestSelectRecord(tid, 5);
    Answer(selected, tid, MPL::MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX_OUT_OF_RANGE);
    m_Browser->RequestSearchFor(tid, QStringLiteral("Ebb"), {QStringLiteral("colour")}, 0, QString());
    Answer(searched, tid, MPL::MPL_BROWSE_ERROR_MESSAGE_CATEGORIES_NOT_SUPPORTED);
    m_Browser->RequestSearchFor(tid, QStringLiteral("Ebb"), QStringList(), 0, QStringLiteral("by colour"));
    Answer(searched, tid, MPL::MPL_BROWSE_ERROR_MESSAGE_SORT_METHODS_NOT_SUPPORTED);
    m_Browser->RequestSearchFor(tid, QStringLiteral("nowhere"), QStringList(), 0, QString());
    EXPECT_EQ(Answer(searched, tid, MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO), QVariantList{false});
    EXPECT_EQ(Value(m_Browser->GetNumberOfRecords()), 5U); // and nothing has moved
}

TEST_F(ABrowser, FindsSortsAndIndexes)
{
    Value(m_Browser->Start());
    EXPECT_TRUE(Value(m_Browser->SearchFor(QStringLiteral("TIDES"), QStringList(), 0, QString())));
    QList<MPL::ResultDictionary> hits = Records();
    EXPECT_EQ(Column(hits, MPL::MPL_RESULT_KEY_RESULT_TYPE), (QStringList{"ALBUM", "SONG"}));
    EXPECT_GT(hits.value(0).value(MPL::MPL_RESULT_KEY_SCORE).toUInt(),
              hits.value(1).value(MPL::MPL_RESULT_KEY_SCORE).toUInt());
    EXPECT_TRUE(Value(m_Browser->Back()));
    EXPECT_TRUE(
        Value(m_Browser->SearchFor(QStringLiteral("a"), {MPL::MPL_BROWSE_CATEGORY_SONG}, 2, QString())));
    EXPECT_EQ(Value(m_Browser->GetNumberOfRecords()), 2U);
    EXPECT_TRUE(Value(m_Browser->Back()));

    ASSERT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_SONG));
    QSignalSpy changed(m_Browser.get(), &Browser::SignalCurrentResultsSortModeChanged);
    EXPECT_TRUE(Value(m_Browser->SetCurrentResultsSortMode(QStringLiteral("SORT_NAME_DESCENDING"))));
    EXPECT_EQ(Column(Records(), MPL::MPL_RESULT_KEY_SONG),
              (QStringList{"Spring", "Neap", "Flöd", "Ebb", "Basalt", "Alpha Tides"}));
    EXPECT_EQ(changed.count(), 1);
    const QList<MPL::ResultDictionary> index = Value(m_Browser->GetCharacterIndex());
    EXPECT_EQ(Column(index, QStringLiteral("character")), (QStringList{"S", "N", "F", "E", "B", "A"}));
    EXPECT_EQ(index.value(5).value(QStringLiteral("index")).toUInt(), 5U);
}

TEST_F(ABrowser, SelectsByIdsOf64Bits)
{
    Value(m_Browser->Start());
    ASSERT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_SONG));
    const MPL::ResultDictionary song = Records().value(1);
    const qulonglong id = song.value(MPL::MPL_RESULT_KEY_ENTRY_ID).toULongLong();
    ASSERT_GT(id, 0xFFFFFFFFULL);
    EXPECT_TRUE(Value(m_Browser->SelectRecordById(id)));
    EXPECT_EQ(song.value(MPL::MPL_RESULT_KEY_SONG),
              Value(m_Info->GetCurrentTrackInfo()).value(MPL::MPL_TRACK_INFO_KEY_TRACK_NAME));
    QSignalSpy playing(m_Browser.get(), &Browser::SignalCurrentPlayingIndex);
    Done(m_Browser->RequestCurrentPlayingIndex());
    ASSERT_TRUE(Wait([&] { return !playing.isEmpty(); }));
    EXPECT_EQ(playing.value(0).value(0).toInt(), 1);
    EXPECT_FALSE(Value(m_Browser->SelectRecordById(id & 0xFFFFFFFFULL)));
    EXPECT_TRUE(Value(m_Browser->Back()));
    Done(m_Browser->RequestCurrentPlayingIndex());
    ASSERT_TRUE(Wait([&] { return playing.count() == 2; }));
    EXPECT_EQ(playing.value(1).value(0).toInt(), -1);
}

TEST_F(ABrowser, FollowsTheIndexWhileItIsOpen)
{
    Value(m_Browser->Start());
    ASSERT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_SONG));
    QSignalSpy results(m_Browser.get(), &Browser::SignalBrowsingResultsChanged);
    QSignalSpy item(m_Browser.get(), &Browser::SignalBrowseResultItemMetadataChanged);

    ASSERT_TRUE(SetTitle(Folder() + QStringLiteral("wave/3.mp3"), QStringLiteral("Renamed")));
    EXPECT_TRUE(Value(m_Indexer->Reindex()));
    ASSERT_TRUE(Wait([&] { return !item.isEmpty(); }));
    EXPECT_EQ(
        item.value(0).value(2).value<MPL::ResultDictionary>().value(MPL::MPL_RESULT_KEY_SONG).toString(),
        QStringLiteral("Renamed"));
    EXPECT_EQ(item.count(), 1);
    EXPECT_TRUE(results.isEmpty());

    ASSERT_TRUE(QFile::remove(Folder() + QStringLiteral("wave/3.mp3")));
    EXPECT_TRUE(Value(m_Indexer->Reindex()));
    ASSERT_TRUE(Wait([&] { return !results.isEmpty(); }));
    EXPECT_EQ(Value(m_Browser->GetNumberOfRecords()), 5U);
}

} // namespace
