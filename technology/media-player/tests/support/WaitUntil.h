// Waiting for a state that announces itself by no event, such as the end of a process that is not ours.
#pragma once

#include <QElapsedTimer>
#include <QThread>

/// Asks `condition` every 10 ms until it holds; false after `timeoutMs`.
template <typename Condition>
bool WaitUntil(Condition condition, int timeoutMs = 5000)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(timeoutMs)) {
            return false;
        }
        QThread::msleep(10);
    }
    return true;
}
