#include "Structures.h"
#include <MPL_BufferedMedia.h>

QDBusArgument& operator<<(QDBusArgument& aArgument, const MPL::BufferedMedia& aMedia)
{
    aArgument.beginStructure();
    aArgument << aMedia.start << aMedia.end << aMedia.total << aMedia.valueA << aMedia.valueB;
    aArgument.endStructure();
    return aArgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aArgument, MPL::BufferedMedia& aMedia)
{
    aMedia = {};
    if (MPL::Detail::OpenStructure(aArgument, {"(xxtuu)"})) {
        aArgument >> aMedia.start >> aMedia.end >> aMedia.total >> aMedia.valueA >> aMedia.valueB;
        aArgument.endStructure();
    }
    return aArgument;
}
