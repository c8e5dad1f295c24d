#include "MediaInfoObject.h"

#include "CapabilityTexts.h"
#include "Relay.h"
#include "sim_MediaInfoAdaptor.h"
#include <MPL_MediaPlayerLib.h>

namespace sim
{

MediaInfoObject::MediaInfoObject(Player* aPlayer, PlayQueue* aQueue, QString aStationArt,
                                 const FaultPlan& aFaults, QObject* aParent)
    : Object(aFaults, aParent),
      m_Player(aPlayer),
      m_Queue(aQueue),
      m_StationArt(std::move(aStationArt)),
      m_Adaptor(Adapt<MediaInfoAdaptor>(this)),
      m_Functionalities(GetFunctionalities())
{
    connect(aQueue, &PlayQueue::IndexChanged, this, &MediaInfoObject::OnTrackChanged);
    Relay(aPlayer, &Player::PositionChanged, this, m_Adaptor,
          &MediaInfoAdaptor::SignalTrackCurrentPlayTimeChanged);
}

QVariantMap MediaInfoObject::GetCurrentTrackInfo() const
{
    if (m_Queue->IsEmpty()) {
        return {};
    }
    QVariantMap info = TrackInfo(m_Queue->Current());
    info.insert(MPL::MPL_TRACK_INFO_KEY_NOW_PLAYING_TRACK_INDEX, m_Queue->Index());
    info.insert(MPL::MPL_TRACK_INFO_KEY_TRACK_COUNT, m_Queue->Count());
    return info;
}

QVariantMap MediaInfoObject::GetBufferInfo() const
{
    if (m_Queue->IsEmpty()) {
        return {};
    }
    const uint length = m_Queue->Current().lengthMs;
    return {{QStringLiteral("start"), 0U},
            {QStringLiteral("end"), length},
            {QStringLiteral("total"), length},
            {QStringLiteral("percent"), 100U}};
}

QString MediaInfoObject::GetFunctionalities() const
{
    const bool any = !m_Queue->IsEmpty();
    return FunctionalitiesText({
        {MPL::MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_INFO, any, {}},
        {MPL::MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_TIME,
         any,
         {MPL::MPL_MEDIAINFO_OPTION_PLAYBACK_TIME_ON_TRACK_INFO_UPDATE,
          MPL::MPL_MEDIAINFO_OPTION_RESET_IMMEDIATELY}},
        {MPL::MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_ART, !GetCurrentMediaArt().isEmpty(), {}},
        {MPL::MPL_MEDIAINFO_FUNCTION_MEDIAINFO_STATION_ART, !GetCurrentStationArt().isEmpty(), {}},
        {MPL::MPL_MEDIAINFO_FUNCTION_MEDIAINFO_BUFFER_INFO, any, {}},
    });
}

void MediaInfoObject::OnTrackChanged()
{
    Announce([this, info = GetCurrentTrackInfo(), buffer = GetBufferInfo()] {
        Q_EMIT m_Adaptor->SignalTrackInfoChanged(info);
        Q_EMIT m_Adaptor->SignalBufferInfoChanged(buffer);
    });
    if (Update(m_MediaArt, GetCurrentMediaArt())) {
        Announce([this] { Q_EMIT m_Adaptor->SignalMediaArtChanged(); });
    }
    if (Update(m_CurrentStationArt, GetCurrentStationArt())) {
        Announce([this] { Q_EMIT m_Adaptor->SignalStationArtChanged(); });
    }
    if (Update(m_Functionalities, GetFunctionalities())) {
        Announce([this, text = m_Functionalities] { Q_EMIT m_Adaptor->SignalFunctionalitiesChanged(text); });
    }
}

} // namespace sim
