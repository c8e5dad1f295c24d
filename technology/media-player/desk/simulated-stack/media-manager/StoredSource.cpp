#include "StoredSource.h"

#include "Log.h"
#include "ParameterText.h"
#include <MPL_Parameters.h>
#include <MPL_SourceWords.h>

namespace sim
{
namespace
{

QString ToText(const MPL::ServiceObject& aSource)
{
    return MPL::Detail::MakeParameters({{MPL::MPL_DEVICE_RECORD_KEY_SERVICE_NAME, aSource.serviceName},
                                        {MPL::MPL_DEVICE_RECORD_KEY_OBJECT_PATH, aSource.objectPath.path()}});
}

MPL::ServiceObject FromText(const QString& aText)
{
    QMap<QString, QString> parameters;
    MPL::ServiceObject source;
    if (!aText.isEmpty() && MPL::GetParameters(aText, parameters)) {
        source.serviceName = parameters.value(MPL::MPL_DEVICE_RECORD_KEY_SERVICE_NAME);
        source.objectPath = QDBusObjectPath(parameters.value(MPL::MPL_DEVICE_RECORD_KEY_OBJECT_PATH));
    }
    return source;
}

} // namespace

StoredSource::StoredSource(const QString& aDatabasePath) : m_DatabasePath(aDatabasePath) {}

MPL::ServiceObject StoredSource::Load()
{
    return FromText(Read(MPL::Detail::kStateKeyActiveSource));
}

QString StoredSource::LoadPlaybackState()
{
    return Read(MPL::Detail::kStateKeyActiveSourcePlaybackState);
}

void StoredSource::Save(const MPL::ServiceObject& aSource)
{
    Write(MPL::Detail::kStateKeyActiveSource, ToText(aSource));
    Write(MPL::Detail::kStateKeyActiveSourcePlaybackState, QString());
}

void StoredSource::SavePlaybackState(const QString& aState)
{
    Write(MPL::Detail::kStateKeyActiveSourcePlaybackState, aState);
}

// The database is opened at its first use, to keep it out of the program's start.
QString StoredSource::Read(const QString& aKey)
{
    if (m_DatabasePath.isEmpty()) {
        return m_InMemory.value(aKey);
    }
    QString value;
    QString error;
    if (!(m_Store.IsOpen() || m_Store.Open(m_DatabasePath, error)) || !m_Store.Load(aKey, value, error)) {
        Log(QStringLiteral("%1 can't be read: %2").arg(aKey, error));
    }
    return value;
}

void StoredSource::Write(const QString& aKey, const QString& aValue)
{
    if (m_DatabasePath.isEmpty()) {
        m_InMemory.insert(aKey, aValue);
        return;
    }
    QString error;
    if (!(m_Store.IsOpen() || m_Store.Open(m_DatabasePath, error)) || !m_Store.Save(aKey, aValue, error)) {
        Log(QStringLiteral("%1 can't be stored: %2").arg(aKey, error));
    }
}

} // namespace sim
