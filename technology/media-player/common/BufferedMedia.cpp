#include "Structures.h"
#include <MPL_BufferedMedia.h>

QDBusArgument& operator<<(QDBusArgument& aRgument, const MPL::BufferedMedia& aMedia)
{
    aRgument.beginStructure();
    aRgument << aMedia.start << aMedia.end << aMedia.total << aMedia.valueA << aMedia.valueB;
    aRgument.endStructure();
    return aRgument;
}

const QDBusArgument& operator>>(const QDBusArgument& aRgument, MPL::BufferedMedia& aMedia)
{
    aMedia = {};
    if (MPL::Detail::OpenStructure(aRgument, {"(xxtuu)"})) {
        aRgument >> aMedia.start >> aMedia.end >> aMedia.total >> aMedia.valueA >> aMedia.valueB;
        aRgument.endStructure();
    }
    return aRgument;
}
