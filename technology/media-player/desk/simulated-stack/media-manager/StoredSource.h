/// The active source and its playback state as they are kept from one start of the media manager to the next.
#pragma once

#include "StateStore.h"
#include <MPL_ServiceObject.h>

#include <QMap>
#include <QString>

namespace sim
{

class StoredSource
{
public:
    /// With an empty path everything is kept in memory only.
    explicit StoredSource(const QString& aDatabasePath);

    /// The empty object when none is stored or the database can't be read, which is logged.
    MPL::ServiceObject Load();

    /// The playback state saved last for the stored source; empty when there is none.
    QString LoadPlaybackState();

    /// Stores a source whose playback state is not known yet. On disk when it returns, so that it survives a
    /// SIGKILL. A failure is logged and the old content stays.
    void Save(const MPL::ServiceObject& aSource);
    /// The same for a word of MPL_PLAY_STATES.
    void SavePlaybackState(const QString& aState);

private:
    QString Read(const QString& aKey);
    void Write(const QString& aKey, const QString& aValue);

    QString m_DatabasePath;
    MPL::Detail::StateStore m_Store;
    QMap<QString, QString> m_InMemory;
};

} // namespace sim
