#include "Log.h"

#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace chaos
{
namespace
{

// In the order of QtMsgType.
constexpr const char* kLevels[] = {"debug", "warning", "critical", "fatal", "info"};

struct Kept {
    QMutex mutex;
    QVector<LogLine> lines;
};

Kept& TheLog()
{
    static Kept& s_Kept = *new Kept; // outlives whoever logs last
    return s_Kept;
}

void Keep(QtMsgType aType, const QMessageLogContext& /*context*/, const QString& aText)
{
    Kept& log = TheLog();
    const QMutexLocker lock(&log.mutex);
    log.lines.append({QLatin1String(kLevels[aType]), aText});
    std::fprintf(stderr, "%s: %s\n", kLevels[aType], qPrintable(aText));
}

} // namespace

void KeepLog()
{
    qInstallMessageHandler(Keep);
}

QVector<LogLine> TakeLog()
{
    Kept& log = TheLog();
    const QMutexLocker lock(&log.mutex);
    return std::exchange(log.lines, {});
}

bool HasLine(const QVector<LogLine>& aLog, const QString& aPart)
{
    return std::any_of(aLog.begin(), aLog.end(),
                       [&aPart](const LogLine& aLine) { return aLine.text.contains(aPart); });
}

} // namespace chaos
