#include "PlayQueueObject.h"

#include "CapabilityTexts.h"
#include "MediaLibrary.h"
#include "Relay.h"
#include "sim_PlayQueueAdaptor.h"
#include <MPL_MediaPlayerLib.h>

#include <QDBusArgument>

#include <algorithm>

namespace sim
{
namespace
{

// What the bus makes of a list depends on its type: texts and variants arrive as they are, numbers packed.
QVariantList ListOf(const QVariant& aValue)
{
    if (!aValue.canConvert<QDBusArgument>()) {
        return aValue.toList();
    }
    const auto packed = aValue.value<QDBusArgument>();
    QVariantList list;
    if (packed.currentSignature() == QLatin1String("at")) {
        packed.beginArray();
        while (!packed.atEnd()) {
            quint64 number = 0;
            packed >> number;
            list.append(number);
        }
        packed.endArray();
    }
    return list;
}

bool FindTracks(const QVariant& aIds, const MediaLibrary& aLibrary, Tracks& aTracks)
{
    const QVariantList ids = ListOf(aIds);
    for (const QVariant& id : ids) {
        const Track* track = aLibrary.Find(id.toULongLong());
        if (track == nullptr) {
            return false;
        }
        aTracks.append(*track);
    }
    return !aTracks.isEmpty();
}

} // namespace

PlayQueueObject::PlayQueueObject(PlayQueue* aQueue, const MediaLibrary* aLibrary, const FaultPlan& aFaults,
                                 QObject* aParent)
    : Object(aFaults, aParent),
      m_Queue(aQueue),
      m_Library(aLibrary),
      m_Adaptor(Adapt<PlayQueueAdaptor>(this)),
      m_Functionalities(GetFunctionalities())
{
    Relay(aQueue, &PlayQueue::Changed, this, m_Adaptor, &PlayQueueAdaptor::SignalPlayQueueChanged);
    Relay(aQueue, &PlayQueue::IndexChanged, this, m_Adaptor, &PlayQueueAdaptor::SignalTrackIndexChanged);
    connect(aQueue, &PlayQueue::Changed, this, [this] {
        const QString text = GetFunctionalities();
        if (text != m_Functionalities) {
            m_Functionalities = text;
            Announce([this, text] { Q_EMIT m_Adaptor->SignalFunctionalitiesChanged(text); });
        }
    });
}

QString PlayQueueObject::GetFunctionalities() const
{
    const bool any = !m_Queue->IsEmpty();
    return FunctionalitiesText({{MPL::MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_GET_COUNT, true, {}},
                                {MPL::MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_TRACK_INFO, any, {}},
                                {MPL::MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_GET_INDEX, any, {}},
                                {MPL::MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_FUNC, any, {}}});
}

bool PlayQueueObject::RequestTrackInfo(uint aIndex, uint aCount)
{
    if (aIndex >= m_Queue->Count()) {
        return Fail();
    }
    const uint count = std::min(aCount, m_Queue->Count() - aIndex);
    QList<MPL::ResultDictionary> records;
    for (uint index = aIndex; index - aIndex < count; ++index) {
        MPL::ResultDictionary record = TrackInfo(m_Queue->All().at(static_cast<int>(index)));
        record.insert(MPL::MPL_TRACK_INFO_KEY_NOW_PLAYING_TRACK_INDEX, index);
        records.append(record);
    }
    Announce([this, records] { Q_EMIT m_Adaptor->SignalResults(records); });
    return true;
}

bool PlayQueueObject::LoadRemotePlayQueue(const QVariantMap& aMessage)
{
    Tracks tracks;
    if (!FindTracks(aMessage.value(MPL::MPL_RESULT_LIST_KEY_TRACK_RESULTS), *m_Library, tracks)) {
        return Fail();
    }
    const uint index = aMessage.value(MPL::MPL_TRACK_INFO_KEY_NOW_PLAYING_TRACK_INDEX).toUInt();
    m_Queue->Load(tracks, index, true);
    Announce([this, aMessage, title = m_Queue->Current().title] {
        Q_EMIT m_Adaptor->SignalPlayQueuePushReceived(aMessage, title);
    });
    return true;
}

void PlayQueueObject::SendEvent(const QString& aType, const QString& aEvent, const QString& aText)
{
    Announce([this, text = EventText(aType, aEvent, aText)] { Q_EMIT m_Adaptor->SignalEvent(text); });
}

bool PlayQueueObject::Fail()
{
    Announce([this] { Q_EMIT m_Adaptor->SignalPlayQueueError(MPL::MPL_PLAYQUEUE_DATABASE_ERROR_MESSAGE); });
    return false;
}

} // namespace sim
