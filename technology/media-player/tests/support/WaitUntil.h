/// Waiting in a test for a state: of another process, of a service on a bus, or of an object that gets its
/// events on the waiting thread, such as a QSignalSpy. Where a call that blocks would do, that is better.
///
///     EXPECT_TRUE(WaitUntil("the source has a name", [&] { return IsServiceRunning(name, bus); }));
///
/// A wait that ends without the state says so in the failure: "waited 5000 ms until the source has a name".
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <poll.h>

/// Asks `aCondition` every few milliseconds until it holds, and handles the thread's events in between. Fails
/// after `aTimeoutMs`. Real time even where sleeping is free.
template <typename Condition>
testing::AssertionResult WaitUntil(const char* aWhat, Condition aCondition, int aTimeoutMs = 5000)
{
    QElapsedTimer timer;
    timer.start();
    while (!aCondition()) {
        if (timer.hasExpired(aTimeoutMs)) {
            return testing::AssertionFailure() << "waited " << timer.elapsed() << " ms until " << aWhat;
        }
        QCoreApplication::processEvents();
        poll(nullptr, 0, 5);
    }
    return testing::AssertionSuccess();
}
