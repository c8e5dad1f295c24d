/// @file
/// Starts a thread as soon as a D-Bus service name is registered on the shared connection, so that a client's
/// test logic begins only once the service it talks to exists:
///
///     MPL::ServiceChecker checker(&m_Thread, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME);
///     ASSERT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
///     ASSERT_TRUE(QTest::qWaitFor([this] { return m_Thread.isRunning(); }));
///
/// Only a registration after the checker was made counts. The thread that makes the checker must run an event
/// loop at times, as QTest::qWaitFor() does: without one the registration is never noticed.
#pragma once

#include <QObject>
#include <QString>

class QDBusServiceWatcher;
class QThread;

namespace MPL
{

/// Wakes a test when a service appears on the bus.
class ServiceChecker : public QObject
{
    Q_OBJECT

public:
    /// Makes a checker that waits for nothing.
    ServiceChecker();

    /// Begins to watch for the name. Takes no ownership of the thread. May block for a round trip to the bus.
    ServiceChecker(QThread* aThread, const QString& aServiceName);
    ~ServiceChecker() override;

public Q_SLOTS:
    /// Starts the thread if this is the awaited name and the thread is not running; a thread that has
    /// finished is started again.
    void OnServiceRegistered(const QString& aServiceName);

private:
    QThread* m_Thread = nullptr;
    QString m_ServiceName;
    QDBusServiceWatcher* m_Watcher = nullptr;
};

} // namespace MPL
