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

QDBusArgument& operator<<(QDBusArgument& aRgument, const MPL::ServiceObject& aObject)
{
    aRgument.beginStructure();
    aRgument << aObject.serviceName << aObject.objectPath.path();
    aRgument.endStructure();
    return aRgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aRgument, MPL::ServiceObject& aObject)
{
    aObject = {};
    // Some peers type the path as an object path; Qt reads every kind of text alike.
    if (MPL::Detail::OpenStructure(aRgument, {"(ss)", "(so)", "(sg)"})) {
        QString path;
        aRgument >> aObject.serviceName >> path;
        aRgument.endStructure();
        // "No object" is an everyday answer; only a text that should be a path and is none deserves Qt's
        // warning.
        aObject.objectPath = path.isEmpty() ? QDBusObjectPath() : QDBusObjectPath(path);
    }
    return aRgument;
}

QDebug operator<<(QDebug aDebug, const MPL::ServiceObject& aObject)
{
    return aDebug << aObject.serviceName << "<>" << aObject.objectPath.path();
}
