#include "Structures.h"
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

QDBusArgument& operator<<(QDBusArgument& aArgument, const MPL::ServiceObject& aObject)
{
    aArgument.beginStructure();
    aArgument << aObject.serviceName << aObject.objectPath.path();
    aArgument.endStructure();
    return aArgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aArgument, MPL::ServiceObject& aObject)
{
    aObject = {};
    // Some peers type the path as an object path; Qt reads every kind of text alike.
    if (MPL::Detail::OpenStructure(aArgument, {"(ss)", "(so)", "(sg)"})) {
        QString path;
        aArgument >> aObject.serviceName >> path;
        aArgument.endStructure();
        // "No object" is an everyday answer; only a text that should be a path and is none deserves Qt's
        // warning.
        aObject.objectPath = path.isEmpty() ? QDBusObjectPath() : QDBusObjectPath(path);
    }
    return aArgument;
}

QDebug operator<<(QDebug aDebug, const MPL::ServiceObject& aObject)
{
    return aDebug << aObject.serviceName << "<>" << aObject.objectPath.path();
}
