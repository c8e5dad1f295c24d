// What a service says of its objects.
#include "Fuzzing.h"
#include "IntrospectionText.h"

#include <QDBusObjectPath>

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    fuzz::SilenceLog();
    const auto read = MPL::Detail::ReadIntrospection(fuzz::ToText(aData, aSize));
    if (read) {
        for (const QString& child : read->children) {
            fuzz::Promise(!QDBusObjectPath("/" + child).path().isEmpty(), "a child has a path");
        }
    }
    return 0;
}
