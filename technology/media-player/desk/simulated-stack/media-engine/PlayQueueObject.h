// The PlayQueue interface of a media source.
#pragma once

#include "Object.h"
#include "PlayQueue.h"
#include <MPL_Types.h>

class PlayQueueAdaptor;

namespace sim
{

class MediaLibrary;

class PlayQueueObject : public Object
{
    Q_OBJECT
public:
    PlayQueueObject(PlayQueue* aQueue, const MediaLibrary* aLibrary, const FaultPlan& aFaults,
                    QObject* aParent);

    /// PlayQueue::kNone when the queue is empty.
    uint GetCurrentTrackIndex() const { return m_Queue->Index(); }
    uint GetNumberOfTracks() const { return m_Queue->Count(); }
    QString GetFunctionalities() const;
    /// Announces at most aCount records from aIndex on. False and an error signal for an index beyond the
    /// end.
    bool RequestTrackInfo(uint aIndex, uint aCount);
    /// Takes over a queue of another device: "track_results" lists track ids (as `at`, `as` or `av`), and
    /// "now_playing_track_index" may name the current one. False and an error signal when that is not so, or
    /// when the library lacks one of the tracks; then the queue stays as it was.
    bool LoadRemotePlayQueue(const QVariantMap& aMessage);

    void SendEvent(const QString& aType, const QString& aEvent, const QString& aText);

private:
    bool Fail();

    PlayQueue* m_Queue;
    const MediaLibrary* m_Library;
    PlayQueueAdaptor* m_Adaptor;
    QString m_Functionalities; // as last announced
};

} // namespace sim
