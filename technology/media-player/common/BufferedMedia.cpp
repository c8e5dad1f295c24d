#include <MPL_BufferedMedia.h>

QDBusArgument& operator<<(QDBusArgument& argument, const MPL::BufferedMedia& media)
{
    argument.beginStructure();
    argument << media.start << media.end << media.total << media.valueA << media.valueB;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MPL::BufferedMedia& media)
{
    argument.beginStructure();
    argument >> media.start >> media.end >> media.total >> media.valueA >> media.valueB;
    argument.endStructure();
    return argument;
}
