/// The active source as it is kept from one start of the media manager to the next.
#pragma once

#include <MPL_ServiceObject.h>
#include <MPL_StateStore.h>

#include <QString>

namespace sim
{

class StoredSource
{
public:
    /// With an empty path the source is remembered in memory only.
    explicit StoredSource(const QString& databasePath);

    /// The empty object when none is stored or the database can't be read, which is logged.
    MPL::ServiceObject Load();

    /// On disk when it returns, so that it survives a SIGKILL. A failure is logged and the old content stays.
    void Save(const MPL::ServiceObject& source);

private:
    bool Open(QString& error);

    QString m_DatabasePath;
    MPL::StateStore m_Store;
    MPL::ServiceObject m_InMemory;
};

} // namespace sim
