// The only copy of every word, made of what the headers say. Its text is a literal; nothing is on the heap.
#include <QString>

// NOLINTBEGIN(misc-definitions-in-headers)
// Before any other static object of a program, also where this library is linked statically.
#define MPL_FIRST __attribute__((init_priority(101)))
#define MPL_WORD(NAME, TEXT) MPL_FIRST extern const QString NAME = QStringLiteral(TEXT)
#define MPL_GROUP(NAME, ...)                                                                                 \
    MPL_FIRST extern const decltype(MPL::Detail::GroupOf(__VA_ARGS__)) NAME = {{__VA_ARGS__}}

// NOLINTEND(misc-definitions-in-headers)

#include <MPL_DeviceInfoKeys.h>
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>
