#include <MPL_TestUtils.h>

#include "FunctionalitiesText.h"

#include <QDBusError>
#include <QDebug>
#include <QSignalSpy>
#include <QThread>

namespace MPL
{
namespace TestUtils
{

unsigned WaitForSignal(const QSignalSpy& spy, unsigned count, unsigned timeoutMs)
{
    constexpr unsigned pauseMs = 100;
    unsigned elapsed = 0;
    while (elapsed < timeoutMs && static_cast<unsigned>(spy.count()) < count) {
        QThread::msleep(pauseMs);
        elapsed += pauseMs;
    }
    return elapsed;
}

bool WaitForDBusReply(QDBusPendingReply<> reply)
{
    reply.waitForFinished();
    return !reply.isError();
}

bool WaitForDBusReply(QDBusPendingReply<bool> reply, bool& value)
{
    reply.waitForFinished();
    if (reply.isError()) {
        qDebug() << "TestUtils::WaitForDBusReply -- D-Bus error:" << reply.error();
        return false;
    }
    value = reply.argumentAt<0>();
    return true;
}

void GetAvailableFunctionMap(const QString& text, QMap<QString, MPL::Functionality>& map)
{
    for (const FunctionalityEntry& entry : ReadFunctionalitiesText(text)) {
        map.insert(entry.name, {entry.name, entry.state, entry.options});
    }
}

} // namespace TestUtils
} // namespace MPL
