// The service checker on a bus where names come and go.
#include "ClientTest.h"
#include <MPL_ServiceChecker.h>

#include <QSignalSpy>

namespace
{

using ServiceCheckerTest = ClientTest;

TEST_F(ServiceCheckerTest, OnlyARegistrationOfTheAwaitedNameStartsAThreadThatDoesNotRun)
{
    const QString awaited = QStringLiteral("com.talvex.Test.Awaited");
    QDBusConnection peer = QDBusConnection::connectToBus(s_Bus->Address(), QStringLiteral("peer"));
    QThread early;
    QThread thread;
    const QSignalSpy earlyStarted(&early, &QThread::started);
    QSignalSpy started(&thread, &QThread::started);
    MPL::ServiceChecker tooLate(&early, kServiceName); // registered already
    MPL::ServiceChecker checker(&thread, awaited);
    MPL::ServiceChecker inert;

    ASSERT_TRUE(peer.registerService(awaited + QStringLiteral("2")));
    ASSERT_TRUE(peer.registerService(awaited));
    ASSERT_TRUE(started.wait(kLimitMs));
    EXPECT_EQ(earlyStarted.count(), 0);

    for (const QString& name : {awaited, awaited.toUpper()}) {
        checker.OnServiceRegistered(name); // it runs
        inert.OnServiceRegistered(QString());
    }
    thread.quit();
    ASSERT_TRUE(thread.wait(kLimitMs));
    checker.OnServiceRegistered(awaited.toUpper());
    EXPECT_FALSE(thread.isRunning());

    ASSERT_TRUE(peer.unregisterService(awaited));
    ASSERT_TRUE(peer.registerService(awaited));
    ASSERT_TRUE(started.wait(kLimitMs)); // again after its end
    EXPECT_EQ(started.count(), 2);
    thread.quit();
    ASSERT_TRUE(thread.wait(kLimitMs));
    QDBusConnection::disconnectFromBus(QStringLiteral("peer"));
}

} // namespace
