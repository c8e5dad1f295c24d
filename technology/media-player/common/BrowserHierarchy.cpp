#include "Structures.h"
#include <MPL_BrowserHierarchy.h>

#include <QDBusMetaType>

namespace MPL
{

void BrowserHierarchy::RegisterMetaType()
{
    qRegisterMetaType<BrowserHierarchy>("BrowserHierarchy");
    qRegisterMetaType<QVector<BrowserHierarchy>>("QVector<BrowserHierarchy>");
    qDBusRegisterMetaType<BrowserHierarchy>();
    qDBusRegisterMetaType<QVector<BrowserHierarchy>>();
}

} // namespace MPL

QDBusArgument& operator<<(QDBusArgument& aRgument, const MPL::BrowserHierarchy& aHierarchy)
{
    aRgument.beginStructure();
    aRgument << aHierarchy.name << aHierarchy.label << aHierarchy.index << aHierarchy.count;
    aRgument.endStructure();
    return aRgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aRgument, MPL::BrowserHierarchy& aHierarchy)
{
    aHierarchy = {};
    if (MPL::Detail::OpenStructure(aRgument, {"(ssuu)"})) {
        aRgument >> aHierarchy.name >> aHierarchy.label >> aHierarchy.index >> aHierarchy.count;
        aRgument.endStructure();
    }
    return aRgument;
}
