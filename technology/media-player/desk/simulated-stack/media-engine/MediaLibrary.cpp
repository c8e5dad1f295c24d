#include "MediaLibrary.h"

#include <MPL_MediaPlayerLib.h>

#include <algorithm>
#include <tuple>

namespace sim
{
namespace
{

bool Matches(const Track& aTrack, const TrackFilter& aFilter)
{
    return std::all_of(aFilter.begin(), aFilter.end(), [&aTrack](const QPair<QString, QString>& aCondition) {
        return ValueOf(aTrack, aCondition.first) == aCondition.second;
    });
}

bool InPlayingOrder(const Track& aLeft, const Track& aRight)
{
    return std::tie(aLeft.folder, aLeft.artist, aLeft.album, aLeft.number, aLeft.fileName, aLeft.url) <
           std::tie(aRight.folder, aRight.artist, aRight.album, aRight.number, aRight.fileName, aRight.url);
}

} // namespace

QString ValueOf(const Track& aTrack, const QString& aCategory)
{
    if (aCategory == MPL::MPL_BROWSE_CATEGORY_GENRE) {
        return aTrack.genre;
    }
    if (aCategory == MPL::MPL_BROWSE_CATEGORY_ARTIST) {
        return aTrack.artist;
    }
    if (aCategory == MPL::MPL_BROWSE_CATEGORY_ALBUM) {
        return aTrack.album;
    }
    if (aCategory == MPL::MPL_BROWSE_CATEGORY_SONG) {
        return aTrack.title;
    }
    return aCategory == MPL::MPL_BROWSE_CATEGORY_FOLDER ? aTrack.folder : QString();
}

void MediaLibrary::Replace(Tracks aTracks)
{
    std::sort(aTracks.begin(), aTracks.end(), InPlayingOrder);
    const auto sameUrl = [](const Track& aLeft, const Track& aRight) { return aLeft.url == aRight.url; };
    aTracks.erase(std::unique(aTracks.begin(), aTracks.end(), sameUrl), aTracks.end());

    const auto same = [](const Track& aLeft, const Track& aRight) {
        return TrackInfo(aLeft) == TrackInfo(aRight);
    };
    const bool unchanged = std::equal(m_Tracks.begin(), m_Tracks.end(), aTracks.begin(), aTracks.end(), same);
    m_Tracks = std::move(aTracks);
    if (!unchanged) {
        Q_EMIT Changed();
    }
}

Tracks MediaLibrary::Select(const TrackFilter& aFilter) const
{
    Tracks found;
    std::copy_if(m_Tracks.begin(), m_Tracks.end(), std::back_inserter(found),
                 [&aFilter](const Track& aTrack) { return Matches(aTrack, aFilter); });
    return found;
}

QStringList MediaLibrary::Values(const QString& aCategory, const TrackFilter& aFilter) const
{
    QStringList values;
    for (const Track& track : m_Tracks) {
        if (Matches(track, aFilter)) {
            values.append(ValueOf(track, aCategory));
        }
    }
    values.removeDuplicates();
    values.sort(Qt::CaseInsensitive);
    return values;
}

const Track* MediaLibrary::Find(quint64 aId) const
{
    const auto found = std::find_if(m_Tracks.begin(), m_Tracks.end(),
                                    [aId](const Track& aTrack) { return aTrack.id == aId; });
    return found == m_Tracks.end() ? nullptr : &*found;
}

} // namespace sim
