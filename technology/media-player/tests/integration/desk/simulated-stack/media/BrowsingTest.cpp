#include "MediaFixture.h"
#include <MPL_MediaPlayerLib.h>

#include <QFile>

#include <algorithm>

namespace
{

using Browser = ComTalvexDBusMediaPlayerBrowserInterface;
using Tid = MPL::TransactionId;

class ABrowser : public MediaFixture
{
protected:
    // Asks by a transaction of its own. The answer must echo it and carry that error text; returns what
    // follows.
    template <typename Request, typename Signal, typename... Arguments>
    QVariantList AskInVain(const QString& aError, Request aRequest, Signal aSignal,
                           const Arguments&... aArguments)
    {
        QSignalSpy answers(m_Browser.get(), aSignal);
        const Tid tid = m_Ids.Create();
        EXPECT_TRUE(Succeeds((m_Browser.get()->*aRequest)(tid, aArguments...)));
        EXPECT_TRUE(IsSignalled(answers));
        const QVariantList answer = answers.value(0);
        EXPECT_TRUE(answer.value(0).value<Tid>() == tid);
        EXPECT_EQ(answer.value(1).toString(), aError);
        return answer.mid(2);
    }

    template <typename Request, typename Signal, typename... Arguments>
    QVariant Ask(Request aRequest, Signal aSignal, const Arguments&... aArguments)
    {
        return AskInVain("", aRequest, aSignal, aArguments...).value(0);
    }

    QStringList Fetch(const QString& aKey)
    {
        const QVariant records =
            Ask(&Browser::RequestRecordsByTransactionId, &Browser::SignalReplyRecords, 0U, 50U);
        return Column(records.value<QList<MPL::ResultDictionary>>(), aKey);
    }

    void Select(const QString& aKey, const QString& aText)
    {
        const uint index = static_cast<uint>(Fetch(aKey).indexOf(aText));
        Ask(&Browser::RequestSelectRecord, &Browser::SignalReplySelectRecord, index);
    }

    MPL::TransactionIdCreator m_Ids{"mine"};
};

TEST_F(ABrowser, LeadsToAnAlbumByTransactionIds)
{
    QSignalSpy status(m_Browser.get(), &Browser::SignalBrowseStatus);
    const QVariant session = Ask(&Browser::RequestStart, &Browser::SignalReplyStart);
    EXPECT_EQ(status.value(0).value(0), session);
    EXPECT_EQ(Fetch(MPL::MPL_RESULT_KEY_TOPLEVEL),
              (QStringList{"genre", "artist", "album", "song", "folder"}));
    Select(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_ALBUM);
    EXPECT_EQ(Fetch(MPL::MPL_RESULT_KEY_ALBUM), (QStringList{"Minerals", "Tides"}));
    Select(MPL::MPL_RESULT_KEY_ALBUM, "Tides");
    EXPECT_EQ(Fetch(MPL::MPL_RESULT_KEY_SONG), (QStringList{"Ebb", "Flöd", "Neap", "Spring"}));
    EXPECT_EQ(Ask(&Browser::RequestNumberOfRecords, &Browser::SignalReplyNumberOfRecords).toUInt(), 4U);
    EXPECT_EQ(Value(m_Browser->GetCurrentBrowseHierarchyUrl()), "browse:/album/Tides");

    Ask(&Browser::RequestPlayAll, &Browser::SignalReplyPlayAll);
    EXPECT_EQ(Value(m_Queue->GetNumberOfTracks()), 4U);
    EXPECT_EQ(Value(m_Control->GetPlayState()), MPL::MPL_PLAY_STATE_PLAYING);
}

TEST_F(ABrowser, KnowsTheWayToWhereItIs)
{
    Ask(&Browser::RequestStart, &Browser::SignalReplyStart);
    Select(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_ALBUM);
    Select(MPL::MPL_RESULT_KEY_ALBUM, "Tides");
    const QVariant way = Ask(&Browser::RequestBrowserHierarchy, &Browser::SignalReplyBrowserHierarchy);
    const auto levels = way.value<QVector<MPL::BrowserHierarchy>>();
    ASSERT_EQ(levels.size(), 3);
    EXPECT_EQ(levels[1].index, 1U);
    EXPECT_EQ(levels[1].count, 2U);
    EXPECT_EQ(levels[2].label, "Tides");
}

int CountEchoes(const QSignalSpy& aSpy, const Tid& aTid)
{
    return static_cast<int>(std::count_if(aSpy.begin(), aSpy.end(), [&aTid](const QVariantList& aArguments) {
        return aArguments.value(0).value<Tid>() == aTid;
    }));
}

TEST_F(ABrowser, EchoesEveryIdToEveryListener)
{
    Browser other(m_Browser->service(), m_Browser->path(), QDBusConnection::connectToBus(kBus, "other"));
    MPL::TransactionIdCreator otherIds("other");
    QSignalSpy mine(m_Browser.get(), &Browser::SignalReplyNumberOfRecords);
    QSignalSpy others(&other, &Browser::SignalReplyNumberOfRecords);
    Value(m_Browser->Start());
    QList<Tid> asked;
    for (int i = 0; i < 10; ++i) { // equal counters, so only the names tell the two apart
        asked << m_Ids.Create() << otherIds.Create();
        m_Browser->RequestNumberOfRecords(asked.at(2 * i));
        other.RequestNumberOfRecords(asked.at(2 * i + 1));
    }
    ASSERT_TRUE(IsSignalled(mine, asked.size()) && IsSignalled(others, asked.size()));
    for (const Tid& tid : asked) {
        EXPECT_EQ(CountEchoes(mine, tid), 1);
        EXPECT_EQ(CountEchoes(others, tid), 1);
    }
    QDBusConnection::disconnectFromBus("other");
}

TEST_F(ABrowser, RefusesWithAnEventWhatMakesNoSense)
{
    QSignalSpy events(m_Browser.get(), &Browser::SignalEvent);
    EXPECT_FALSE(Value(m_Browser->SelectRecord(0))); // no session yet
    EXPECT_FALSE(Value(m_Browser->PlayAll()));
    EXPECT_FALSE(Value(m_Browser->RequestRecords(0, 1, 1)));
    Value(m_Browser->Start());
    EXPECT_FALSE(Value(m_Browser->SetCurrentResultsSortMode("by colour")));
    ASSERT_TRUE(IsSignalled(events, 4));
    for (const QVariantList& event : events) {
        EXPECT_TRUE(event.value(0).toString().startsWith("event_type=ERROR;event="));
    }
}

TEST_F(ABrowser, AnswersWithAnErrorWhatMakesNoSense)
{
    const auto records = [this](const QString& aError, uint aStart, uint aCount) {
        return AskInVain(aError, &Browser::RequestRecordsByTransactionId, &Browser::SignalReplyRecords,
                         aStart, aCount);
    };
    const auto search = [this](const QString& aError, const QString& aText, const QStringList& aCategories,
                               const QString& aOrder) {
        return AskInVain(aError, &Browser::RequestSearchFor, &Browser::SignalReplySearchFor, aText,
                         aCategories, 0U, aOrder);
    };
    Value(m_Browser->Start());
    AskInVain(MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION, &Browser::RequestBack,
              &Browser::SignalReplyBack);
    records(MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO, 0, 0);
    records(MPL::MPL_BROWSE_ERROR_MESSAGE_FETCHING_RESULTS, 5, 1);
    AskInVain(MPL::MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX_OUT_OF_RANGE, &Browser::RequestSelectRecord,
              &Browser::SignalReplySelectRecord, 5U);
    search(MPL::MPL_BROWSE_ERROR_MESSAGE_CATEGORIES_NOT_SUPPORTED, "Ebb", {"colour"}, "");
    search(MPL::MPL_BROWSE_ERROR_MESSAGE_SORT_METHODS_NOT_SUPPORTED, "Ebb", {}, "by colour");
    EXPECT_EQ(search(MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO, "nowhere", {}, ""),
              QVariantList{false});
    EXPECT_EQ(Value(m_Browser->GetNumberOfRecords()), 5U);         // and nothing has moved
    const QVariant clipped = records("", 4, 4294967295U).value(0); // not wrapped around
    EXPECT_EQ(clipped.value<QList<MPL::ResultDictionary>>().size(), 1);
}

TEST_F(ABrowser, FindsSortsAndIndexes)
{
    Value(m_Browser->Start());
    EXPECT_TRUE(Value(m_Browser->SearchFor("TIDES", QStringList(), 0, QString())));
    QList<MPL::ResultDictionary> hits = Records();
    EXPECT_EQ(Column(hits, MPL::MPL_RESULT_KEY_RESULT_TYPE), (QStringList{"ALBUM", "SONG"}));
    EXPECT_GT(hits.value(0).value(MPL::MPL_RESULT_KEY_SCORE).toUInt(),
              hits.value(1).value(MPL::MPL_RESULT_KEY_SCORE).toUInt());
    EXPECT_TRUE(Value(m_Browser->Back()));
    EXPECT_TRUE(Value(m_Browser->SearchFor("a", {MPL::MPL_BROWSE_CATEGORY_SONG}, 2, QString())));
    EXPECT_EQ(Value(m_Browser->GetNumberOfRecords()), 2U);
    EXPECT_TRUE(Value(m_Browser->Back()));

    ASSERT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_SONG));
    QSignalSpy changed(m_Browser.get(), &Browser::SignalCurrentResultsSortModeChanged);
    EXPECT_TRUE(Value(m_Browser->SetCurrentResultsSortMode("SORT_NAME_DESCENDING")));
    EXPECT_EQ(Column(Records(), MPL::MPL_RESULT_KEY_SONG),
              (QStringList{"Spring", "Neap", "Flöd", "Ebb", "Basalt", "Alpha Tides"}));
    EXPECT_EQ(changed.count(), 1);
    const QList<MPL::ResultDictionary> index = Value(m_Browser->GetCharacterIndex());
    EXPECT_EQ(Column(index, "character"), (QStringList{"S", "N", "F", "E", "B", "A"}));
    EXPECT_EQ(index.value(5).value("index").toUInt(), 5U);
}

TEST_F(ABrowser, SelectsByIdsOf64Bits)
{
    Value(m_Browser->Start());
    ASSERT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_SONG));
    const MPL::ResultDictionary song = Records().value(1);
    const qulonglong id = song.value(MPL::MPL_RESULT_KEY_ENTRY_ID).toULongLong();
    ASSERT_GT(id, 0xFFFFFFFFULL);
    EXPECT_TRUE(Value(m_Browser->SelectRecordById(id)));
    EXPECT_EQ(Value(m_Info->GetCurrentTrackInfo()).value(MPL::MPL_TRACK_INFO_KEY_TRACK_NAME),
              song.value(MPL::MPL_RESULT_KEY_SONG));
    EXPECT_FALSE(Value(m_Browser->SelectRecordById(id & 0xFFFFFFFFULL)));
}

TEST_F(ABrowser, PointsAtWhatPlaysWhereItIsListed)
{
    QSignalSpy playing(m_Browser.get(), &Browser::SignalCurrentPlayingIndex);
    Value(m_Browser->Start());
    ASSERT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_SONG));
    EXPECT_TRUE(Value(m_Browser->SelectRecord(1)));
    EXPECT_TRUE(Succeeds(m_Browser->RequestCurrentPlayingIndex()));
    EXPECT_TRUE(Value(m_Browser->Back()));
    EXPECT_TRUE(Succeeds(m_Browser->RequestCurrentPlayingIndex()));
    ASSERT_TRUE(IsSignalled(playing, 2));
    EXPECT_EQ(playing, (QList<QVariantList>{{1}, {-1}}));
}

TEST_F(ABrowser, FollowsTheIndexWhileItIsOpen)
{
    Value(m_Browser->Start());
    ASSERT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_SONG));
    QSignalSpy results(m_Browser.get(), &Browser::SignalBrowsingResultsChanged);
    QSignalSpy item(m_Browser.get(), &Browser::SignalBrowseResultItemMetadataChanged);

    ASSERT_TRUE(SetTitle(Folder() + "wave/3.mp3", "Renamed"));
    EXPECT_TRUE(Value(m_Indexer->Reindex()));
    ASSERT_TRUE(IsSignalled(item));
    EXPECT_EQ(
        item.value(0).value(2).value<MPL::ResultDictionary>().value(MPL::MPL_RESULT_KEY_SONG).toString(),
        "Renamed");
    EXPECT_EQ(item.count(), 1);
    EXPECT_TRUE(results.isEmpty());

    ASSERT_TRUE(QFile::remove(Folder() + "wave/3.mp3"));
    EXPECT_TRUE(Value(m_Indexer->Reindex()));
    ASSERT_TRUE(IsSignalled(results));
    EXPECT_EQ(Value(m_Browser->GetNumberOfRecords()), 5U);
}

} // namespace
