// The service checker on a bus where names come and go.
#include "ClientTest.h"
#include <MPL_ServiceChecker.h>

#include <QSignalSpy>

namespace
{

using AServiceChecker = ClientTest;

const QString kAwaited = "com.talvex.Test.Awaited";

TEST_F(AServiceChecker, StartsItsThreadAtEachRegistrationOfTheAwaitedNameOnly)
{
    QDBusConnection peer = QDBusConnection::connectToBus(MPL::Doubles::SharedBus().Address(), "peer");
    QThread early;
    QThread thread;
    const QSignalSpy earlyStarted(&early, &QThread::started);
    QSignalSpy started(&thread, &QThread::started);
    MPL::ServiceChecker tooLate(&early, kServiceName); // registered already
    MPL::ServiceChecker checker(&thread, kAwaited);
    ASSERT_TRUE(peer.registerService(kAwaited + "2"));
    for (int round = 1; round <= 2; ++round) {
        ASSERT_TRUE(peer.registerService(kAwaited));
        ASSERT_TRUE(started.wait(kLimitMs));
        thread.quit();
        ASSERT_TRUE(thread.wait(kLimitMs));
        ASSERT_TRUE(peer.unregisterService(kAwaited));
    }
    EXPECT_EQ(earlyStarted.count(), 0);
    EXPECT_EQ(started.count(), 2);
    QDBusConnection::disconnectFromBus("peer");
}

TEST_F(AServiceChecker, LeavesARunningThreadAndOtherNamesAlone)
{
    QThread thread;
    MPL::ServiceChecker checker(&thread, kAwaited);
    MPL::ServiceChecker().OnServiceRegistered("");
    checker.OnServiceRegistered(kAwaited.toUpper());
    EXPECT_FALSE(thread.isRunning());
    checker.OnServiceRegistered(kAwaited);
    checker.OnServiceRegistered(kAwaited); // it runs
    EXPECT_TRUE(thread.isRunning());
    thread.quit();
    EXPECT_TRUE(thread.wait(kLimitMs));
}

} // namespace
