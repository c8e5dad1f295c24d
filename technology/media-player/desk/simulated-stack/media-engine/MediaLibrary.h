// What a media source has to offer: its tracks, and the groups into which they fall.
#pragma once

#include "Track.h"

#include <QObject>
#include <QPair>

namespace sim
{

/// Conditions that a track has to meet, each a browse category ("genre", "artist", "album", "song", "folder")
/// and the value that the track must have there. No condition: every track.
using TrackFilter = QVector<QPair<QString, QString>>;

/// The value of a track under a browse category; empty for a category that tracks are not grouped by.
QString ValueOf(const Track& aTrack, const QString& aCategory);

class MediaLibrary : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Replaces the contents; tracks of equal url are kept once. Emits Changed when anything differs.
    void Replace(Tracks aTracks);

    const Tracks& All() const { return m_Tracks; }
    /// The tracks that meet the filter: by folder, artist, album and number on the album.
    Tracks Select(const TrackFilter& aFilter) const;
    /// The different values under a category among the tracks that meet the filter, by name.
    QStringList Values(const QString& aCategory, const TrackFilter& aFilter) const;
    /// The track of that id, or null. The pointer is good until the next Replace.
    const Track* Find(quint64 aId) const;

Q_SIGNALS:
    void Changed();

private:
    Tracks m_Tracks;
};

} // namespace sim
