#include "FunctionalitiesText.h"
#include <MPL_TestUtils.h>

#include <QDBusError>
#include <QDebug>
#include <QSignalSpy>
#include <QThread>

namespace MPL
{
namespace TestUtils
{

unsigned WaitForSignal(const QSignalSpy& aSpy, unsigned aCount, unsigned aTimeoutMs)
{
    constexpr unsigned kPauseMs = 100;
    unsigned elapsed = 0;
    while (elapsed < aTimeoutMs && static_cast<unsigned>(aSpy.count()) < aCount) {
        QThread::msleep(kPauseMs);
        elapsed += kPauseMs;
    }
    return elapsed;
}

bool WaitForDBusReply(QDBusPendingReply<> aReply)
{
    aReply.waitForFinished();
    return !aReply.isError();
}

bool WaitForDBusReply(QDBusPendingReply<bool> aReply, bool& aValue)
{
    aReply.waitForFinished();
    if (aReply.isError()) {
        qDebug() << "TestUtils::WaitForDBusReply -- D-Bus error:" << aReply.error();
        return false;
    }
    aValue = aReply.argumentAt<0>();
    return true;
}

void GetAvailableFunctionMap(const QString& aText, QMap<QString, MPL::Functionality>& aMap)
{
    for (const FunctionalityEntry& entry : ReadFunctionalitiesText(aText)) {
        aMap.insert(entry.name, {entry.name, entry.state, entry.options});
    }
}

} // namespace TestUtils
} // namespace MPL
