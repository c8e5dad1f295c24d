// The MediaInfo interface of a media source: what is playing.
#pragma once

#include "Object.h"
#include "Player.h"

#include <QVariantMap>

class MediaInfoAdaptor;

namespace sim
{

class MediaInfoObject : public Object
{
    Q_OBJECT
public:
    /// aStationArt is the picture of the station that the source plays, empty for a source without stations.
    MediaInfoObject(Player* aPlayer, PlayQueue* aQueue, QString aStationArt, const FaultPlan& aFaults,
                    QObject* aParent);

    QVariantMap GetCurrentTrackInfo() const; ///< empty when the queue is
    uint GetCurrentPlayTime() const { return m_Player->Position(); }
    QString GetCurrentMediaArt() const { return m_Queue->Current().art; }
    QString GetCurrentStationArt() const { return m_Queue->IsEmpty() ? QString() : m_StationArt; }
    QVariantMap GetBufferInfo() const;
    QString GetFunctionalities() const;

private:
    void OnTrackChanged();

    Player* m_Player;
    PlayQueue* m_Queue;
    QString m_StationArt;
    MediaInfoAdaptor* m_Adaptor;
    // As last announced.
    QString m_MediaArt;
    QString m_CurrentStationArt;
    QString m_Functionalities;
};

} // namespace sim
