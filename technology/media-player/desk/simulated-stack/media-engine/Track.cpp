#include "Track.h"

#include <MPL_MediaPlayerLib.h>

namespace sim
{

quint64 StableId(const QString& aText)
{
    // FNV-1a, 64 bits.
    quint64 hash = 14695981039346656037ULL;
    const QByteArray bytes = aText.toUtf8();
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    }
    return hash == 0 ? 1 : hash;
}

QVariantMap TrackInfo(const Track& aTrack)
{
    return {{MPL::MPL_TRACK_INFO_KEY_TRACK_ID, aTrack.id},
            {MPL::MPL_TRACK_INFO_KEY_TRACK_NAME, aTrack.title},
            {MPL::MPL_TRACK_INFO_KEY_ARTIST_NAME, aTrack.artist},
            {MPL::MPL_TRACK_INFO_KEY_ALBUM_ARTIST, aTrack.albumArtist},
            {MPL::MPL_TRACK_INFO_KEY_ALBUM_NAME, aTrack.album},
            {MPL::MPL_TRACK_INFO_KEY_GENRE_NAME, aTrack.genre},
            {MPL::MPL_TRACK_INFO_KEY_COMPOSER_NAME, aTrack.composer},
            {MPL::MPL_TRACK_INFO_KEY_FOLDER_NAME, aTrack.folder},
            {MPL::MPL_TRACK_INFO_KEY_FILE_NAME, aTrack.fileName},
            {MPL::MPL_TRACK_INFO_KEY_TRACK_URL, aTrack.url},
            {MPL::MPL_TRACK_INFO_KEY_ALBUM_ART, aTrack.art},
            {MPL::MPL_TRACK_INFO_KEY_ALBUM_YEAR, aTrack.year},
            {MPL::MPL_TRACK_INFO_KEY_TRACK_NUMBER, aTrack.number},
            {MPL::MPL_TRACK_INFO_KEY_TRACK_LENGTH, aTrack.lengthMs}};
}

} // namespace sim
