/// @file
/// Buffered state of the current track, as PlaybackControl sends it. The media services give the fields their
/// meaning; this library only carries them.
#pragma once

#include <QDBusArgument>
#include <QMetaType>

namespace MPL
{

/// A plain record: default construction leaves the members uninitialised.
struct BufferedMedia {
    /// @{
    /// The fields in their order on the bus.
    qint64 start;
    qint64 end;
    quint64 total;
    quint32 valueA;
    quint32 valueB;
    /// @}
};

} // namespace MPL

/// @{
/// On the bus `(xxtuu)`. Anything else is read as five zeros.
QDBusArgument& operator<<(QDBusArgument& aArgument, const MPL::BufferedMedia& aMedia);
const QDBusArgument& operator>>(const QDBusArgument& aArgument, MPL::BufferedMedia& aMedia);
/// @}

Q_DECLARE_METATYPE(MPL::BufferedMedia)
