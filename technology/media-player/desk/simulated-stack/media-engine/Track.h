// One piece of music as the engine knows it.
#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>

namespace sim
{

struct Track {
    quint64 id = 0; ///< the same for the same url in every run
    QString url;    ///< absolute file path, or the catalogue's own address
    QString fileName;
    QString folder; ///< relative to the media folder; "/" for the media folder itself
    QString title;
    QString artist;
    QString albumArtist;
    QString album;
    QString genre;
    QString composer;
    QString art; ///< path or address of the picture; empty when there is none
    uint year = 0;
    uint number = 0; ///< position on its album, 0 when not known
    uint lengthMs = 0;
};

using Tracks = QVector<Track>;

/// A number for a text that is the same in every run and on every machine (qHash is not), never 0.
quint64 StableId(const QString& aText);

/// The track as a track-information record, without the members that depend on a queue.
QVariantMap TrackInfo(const Track& aTrack);

} // namespace sim
