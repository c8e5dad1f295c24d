#include "StoredSource.h"

#include "Log.h"

#include "ParameterText.h"
#include <MPL_Parameters.h>
#include <MPL_SourceWords.h>

namespace sim
{
namespace
{

QString ToText(const MPL::ServiceObject& source)
{
    return MPL::MakeParameters({{MPL::MPL_DEVICE_RECORD_KEY_SERVICE_NAME, source.serviceName},
                                {MPL::MPL_DEVICE_RECORD_KEY_OBJECT_PATH, source.objectPath.path()}});
}

MPL::ServiceObject FromText(const QString& text)
{
    QMap<QString, QString> parameters;
    MPL::ServiceObject source;
    if (!text.isEmpty() && MPL::GetParameters(text, parameters)) {
        source.serviceName = parameters.value(MPL::MPL_DEVICE_RECORD_KEY_SERVICE_NAME);
        source.objectPath = QDBusObjectPath(parameters.value(MPL::MPL_DEVICE_RECORD_KEY_OBJECT_PATH));
    }
    return source;
}

} // namespace

StoredSource::StoredSource(const QString& databasePath) : m_DatabasePath(databasePath) {}

MPL::ServiceObject StoredSource::Load()
{
    return FromText(Read(MPL::STATE_KEY_ACTIVE_SOURCE));
}

QString StoredSource::LoadPlaybackState()
{
    return Read(MPL::STATE_KEY_ACTIVE_SOURCE_PLAYBACK_STATE);
}

void StoredSource::Save(const MPL::ServiceObject& source)
{
    Write(MPL::STATE_KEY_ACTIVE_SOURCE, ToText(source));
    Write(MPL::STATE_KEY_ACTIVE_SOURCE_PLAYBACK_STATE, QString());
}

void StoredSource::SavePlaybackState(const QString& state)
{
    Write(MPL::STATE_KEY_ACTIVE_SOURCE_PLAYBACK_STATE, state);
}

// The database is opened at its first use, to keep it out of the program's start.
QString StoredSource::Read(const QString& key)
{
    if (m_DatabasePath.isEmpty()) {
        return m_InMemory.value(key);
    }
    QString value;
    QString error;
    if (!(m_Store.IsOpen() || m_Store.Open(m_DatabasePath, error)) || !m_Store.Load(key, value, error)) {
        Log(QStringLiteral("%1 can't be read: %2").arg(key, error));
    }
    return value;
}

void StoredSource::Write(const QString& key, const QString& value)
{
    if (m_DatabasePath.isEmpty()) {
        m_InMemory.insert(key, value);
        return;
    }
    QString error;
    if (!(m_Store.IsOpen() || m_Store.Open(m_DatabasePath, error)) || !m_Store.Save(key, value, error)) {
        Log(QStringLiteral("%1 can't be stored: %2").arg(key, error));
    }
}

} // namespace sim
