/// What one media source can do: its library, indexer, play queue and player, and the D-Bus objects through
/// which clients use them.
///
///     sim::SourceSetup setup;
///     setup.objectPath = "/com/talvex/…/1";
///     setup.capabilities << MPL::MPL_FUNCTIONALITY_BROWSE;
///     sim::SourceCapabilities capabilities(faults, bus, setup);
///     if (capabilities.Export()) { …capabilities.Paths()… }
///
/// Everything works on the event loop of the thread that made it.
#pragma once

#include "Faults.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QMap>
#include <QObject>
#include <QStringList>

#include <memory>

namespace sim
{

struct SourceSetup {
    /// Of the media source; a capability's object lies below it.
    QString objectPath;
    /// The folder whose audio files are the source's media; empty: a built-in catalogue.
    QString mediaFolder;
    /// Picture of the station, for a source that plays stations.
    QString stationArt;
    /// Which of "BROWSE", "PLAYBACK_CONTROL", "INDEX", "MEDIA_INFO" and "PLAYQUEUE" to offer; other words
    /// are passed over.
    QStringList capabilities;
    /// Fill the play queue with all there is as soon as the media have been indexed.
    bool defaultPlayQueue = false;
};

class SourceCapabilities : public QObject
{
    Q_OBJECT
public:
    /// `aFaults` must outlive it.
    SourceCapabilities(const FaultPlan& aFaults, const QDBusConnection& aBus, SourceSetup aSetup);
    /// Withdraws the objects.
    ~SourceCapabilities() override;

    /// Puts the objects on the bus and starts indexing. Returns false, and leaves none there, when one of
    /// the paths is taken.
    bool Export();
    void Withdraw();

    /// The exported objects by capability.
    QMap<QString, QDBusObjectPath> Paths() const;

    /// Loads all tracks of the source into the queue, with aIndex as the current one. Returns false, and
    /// changes nothing, when there is no such track.
    bool ChangePlayQueue(uint aIndex);
    /// Pauses what is playing, for a source that is no longer the active one.
    void Pause();

private:
    struct Engine;

    QDBusConnection m_Bus;
    SourceSetup m_Setup;
    std::unique_ptr<Engine> m_Engine;
    QMap<QString, QString> m_Exported; // path by capability
};

} // namespace sim
