#include "Fuzzing.h"

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace fuzz
{

void Promise(bool aHolds, const char* aWhat)
{
    if (!aHolds) {
        std::fprintf(stderr, "broken promise: %s\n", aWhat);
        std::abort();
    }
}

void SilenceLog()
{
    qInstallMessageHandler([](QtMsgType aType, const QMessageLogContext&, const QString& aText) {
        Promise(aType != QtFatalMsg, qPrintable(aText));
    });
}

} // namespace fuzz
