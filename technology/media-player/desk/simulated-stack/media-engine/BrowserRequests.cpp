// The requests whose answers travel as signals.
#include "BrowserObject.h"
#include "PlayQueue.h"
#include "sim_BrowserAdaptor.h"
#include <MPL_MediaPlayerLib.h>

namespace sim
{

bool BrowserObject::RequestRecords(uint aIndex, uint aCount, uint aTransactionId)
{
    QList<MPL::ResultDictionary> records;
    if (!Explain(m_Session.Records(aIndex, aCount, records))) {
        return false;
    }
    Announce([=] { Q_EMIT m_Adaptor->SignalBrowsingResults(records, aTransactionId); });
    return true;
}

// Where in the current level the playing track stands; -1 when it is not there.
void BrowserObject::RequestCurrentPlayingIndex()
{
    int index = -1;
    const BrowseRecords records = m_Session.Current();
    for (int place = 0; place < records.size() && !m_Queue->IsEmpty(); ++place) {
        if (records.at(place).id == m_Queue->Current().id) {
            index = place;
            break;
        }
    }
    Announce([=] { Q_EMIT m_Adaptor->SignalCurrentPlayingIndex(index); });
}

void BrowserObject::RequestStart(const MPL::TransactionId& aTid)
{
    const uint id = Start();
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyStart(aTid, QString(), id); });
}

void BrowserObject::RequestBack(const MPL::TransactionId& aTid)
{
    const QString error = DoBack();
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyBack(aTid, error); });
}

void BrowserObject::RequestCancel(const MPL::TransactionId& aTid)
{
    const QString error = DoCancel();
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyCancel(aTid, error); });
}

void BrowserObject::RequestBrowserHierarchy(const MPL::TransactionId& aTid)
{
    const QString error = NeedsSession();
    const auto hierarchy = m_Session.Hierarchy();
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyBrowserHierarchy(aTid, error, hierarchy); });
}

void BrowserObject::RequestCharacterIndex(const MPL::TransactionId& aTid)
{
    const QString error = NeedsSession();
    const auto index = m_Session.CharacterIndex();
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyCharacterIndex(aTid, error, index); });
}

void BrowserObject::RequestFunctionalities(const MPL::TransactionId& aTid)
{
    const QString text = GetFunctionalities();
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyFunctionalities(aTid, QString(), text); });
}

void BrowserObject::RequestNumberOfRecords(const MPL::TransactionId& aTid)
{
    const QString error = NeedsSession();
    const uint count = GetNumberOfRecords();
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyNumberOfRecords(aTid, error, count); });
}

void BrowserObject::RequestPlayAll(const MPL::TransactionId& aTid)
{
    const QString error = DoPlayAll();
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyPlayAll(aTid, error); });
}

void BrowserObject::RequestRecordsByTransactionId(const MPL::TransactionId& aTid, uint aIndex, uint aCount)
{
    QList<MPL::ResultDictionary> records;
    const QString error = m_Session.Records(aIndex, aCount, records);
    Announce([=] { Q_EMIT m_Adaptor->SignalReplyRecords(aTid, error, records); });
}

void BrowserObject::RequestSearchFor(const MPL::TransactionId& aTid, const QString& aText,
                                     const QStringList& aCategories, uint aMaximum, const QString& aSort)
{
    const QString error = DoSearch({aText, aCategories, aMaximum}, aSort);
    Announce([=] { Q_EMIT m_Adaptor->SignalReplySearchFor(aTid, error, error.isEmpty()); });
}

void BrowserObject::RequestSelectRecord(const MPL::TransactionId& aTid, uint aIndex)
{
    const QString error = DoSelect(aIndex);
    Announce([=] { Q_EMIT m_Adaptor->SignalReplySelectRecord(aTid, error); });
}

} // namespace sim
