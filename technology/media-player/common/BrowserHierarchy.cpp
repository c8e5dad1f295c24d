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

QDBusArgument& operator<<(QDBusArgument& argument, const MPL::BrowserHierarchy& hierarchy)
{
    argument.beginStructure();
    argument << hierarchy.name << hierarchy.label << hierarchy.index << hierarchy.count;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MPL::BrowserHierarchy& hierarchy)
{
    argument.beginStructure();
    argument >> hierarchy.name >> hierarchy.label >> hierarchy.index >> hierarchy.count;
    argument.endStructure();
    return argument;
}
