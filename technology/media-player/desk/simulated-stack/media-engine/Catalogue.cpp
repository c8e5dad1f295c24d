#include "Catalogue.h"

#include <array>

namespace sim
{
namespace
{

struct Album {
    const char* artist;
    const char* title;
    const char* genre;
    uint year;
    std::array<const char*, 3> songs;
};

constexpr std::array<Album, 6> kAlbums{{
    {"Harbour Lights", "Low Tide", "Folk", 1998, {"Driftwood", "Salt and Rope", "The Long Pier"}},
    {"Harbour Lights", "High Water", "Folk", 2001, {"Lanterns", "North Channel", "Safe Return"}},
    {"Nine Volt Choir", "Static", "Electronic", 2012, {"Hum", "Ground Loop", "Capacitor"}},
    {"Nine Volt Choir", "Resonance", "Electronic", 2015, {"Overtone", "Sine", "Feedback Garden"}},
    {"The Orchard Trio", "Windfall", "Jazz", 1974, {"Russet", "Cider House", "Ladder Blues"}},
    {"The Orchard Trio", "Late Harvest", "Jazz", 1979, {"First Frost", "Amber", "Empty Baskets"}},
}};

Track MakeTrack(const Album& aAlbum, uint aNumber)
{
    Track track;
    track.title = QString::fromLatin1(aAlbum.songs.at(aNumber - 1));
    track.artist = QString::fromLatin1(aAlbum.artist);
    track.albumArtist = track.artist;
    track.composer = track.artist;
    track.album = QString::fromLatin1(aAlbum.title);
    track.genre = QString::fromLatin1(aAlbum.genre);
    track.year = aAlbum.year;
    track.number = aNumber;
    track.lengthMs = aNumber * 60000 - 30000 + (aAlbum.year % 10) * 1000;
    track.folder = track.artist % QLatin1Char('/') % track.album;
    track.fileName = track.title % QLatin1String(".mp3");
    track.url = QLatin1String("catalogue:/") % track.folder % QLatin1Char('/') % track.fileName;
    track.art = QLatin1String("catalogue:/") % track.folder % QLatin1String("/cover.png");
    track.id = StableId(track.url);
    return track;
}

} // namespace

Tracks BuiltInCatalogue()
{
    Tracks tracks;
    for (const Album& album : kAlbums) {
        for (uint number = 1; number <= album.songs.size(); ++number) {
            tracks.append(MakeTrack(album, number));
        }
    }
    return tracks;
}

} // namespace sim
