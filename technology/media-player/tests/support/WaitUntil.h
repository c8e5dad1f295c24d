// Waiting for a state that announces itself by no event, such as the end of a process that is not ours.
#pragma once

#include <QElapsedTimer>
#include <QThread>

/// Asks `aCondition` every 10 ms until it holds; false after `aTimeoutMs`.
template <typename Condition>
bool WaitUntil(Condition aCondition, int aTimeoutMs = 5000)
{
    QElapsedTimer timer;
    timer.start();
    while (!aCondition()) {
        if (timer.hasExpired(aTimeoutMs)) {
            return false;
        }
        QThread::msleep(10);
    }
    return true;
}
