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

QDBusArgument& operator<<(QDBusArgument& aArgument, const MPL::BrowserHierarchy& aHierarchy)
{
    aArgument.beginStructure();
    aArgument << aHierarchy.name << aHierarchy.label << aHierarchy.index << aHierarchy.count;
    aArgument.endStructure();
    return aArgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aArgument, MPL::BrowserHierarchy& aHierarchy)
{
    aHierarchy = {};
    if (MPL::Detail::OpenStructure(aArgument, {"(ssuu)"})) {
        aArgument >> aHierarchy.name >> aHierarchy.label >> aHierarchy.index >> aHierarchy.count;
        aArgument.endStructure();
    }
    return aArgument;
}
