#include "SimStoredSource.h"

#include "SimLog.h"

#include <MPL_ParameterText.h>
#include <MPL_Parameters.h>
#include <MPL_SourceWords.h>

#include <QMap>

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
    if (m_DatabasePath.isEmpty()) {
        return m_InMemory;
    }
    QString text;
    QString error;
    if (!Open(error) || !m_Store.Load(MPL::STATE_KEY_ACTIVE_SOURCE, text, error)) {
        Log(QStringLiteral("the active source can't be read: %1").arg(error));
    }
    return FromText(text);
}

void StoredSource::Save(const MPL::ServiceObject& source)
{
    m_InMemory = source;
    QString error;
    if (!m_DatabasePath.isEmpty() &&
        (!Open(error) || !m_Store.Save(MPL::STATE_KEY_ACTIVE_SOURCE, ToText(source), error))) {
        Log(QStringLiteral("the active source can't be stored: %1").arg(error));
    }
}

// At the first use, to keep the database out of the program's start.
bool StoredSource::Open(QString& error)
{
    return m_Store.IsOpen() || m_Store.Open(m_DatabasePath, error);
}

} // namespace sim
