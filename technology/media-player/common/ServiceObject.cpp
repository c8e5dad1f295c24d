#include <MPL_ServiceObject.h>

#include <QDBusMetaType>

namespace MPL
{

QString ServiceObject::GetPathString() const
{
    return objectPath.path();
}

void ServiceObject::RegisterMetaType()
{
    qDBusRegisterMetaType<ServiceObject>();
    qDBusRegisterMetaType<QList<ServiceObject>>();
    qRegisterMetaType<ServiceObject>("ServiceObject");
    qRegisterMetaType<QList<ServiceObject>>("QList<ServiceObject>");
}

} // namespace MPL

QDBusArgument& operator<<(QDBusArgument& argument, const MPL::ServiceObject& object)
{
    argument.beginStructure();
    argument << object.serviceName << object.objectPath.path();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MPL::ServiceObject& object)
{
    QString path;
    argument.beginStructure();
    argument >> object.serviceName >> path;
    argument.endStructure();
    // "No object" is an everyday answer; only a text that should be a path and is none deserves Qt's warning.
    object.objectPath = path.isEmpty() ? QDBusObjectPath() : QDBusObjectPath(path);
    return argument;
}

QDebug operator<<(QDebug debug, const MPL::ServiceObject& object)
{
    return debug << object.serviceName << "<>" << object.objectPath.path();
}
