// The shared connection and the private bus daemon.
#include "Constants.h"
#include <MPL_TestEnvironment.h>

#include <QDBusError>
#include <QDebug>
#include <QProcess>
#include <QThread>

namespace
{

constexpr int kProbes = 30;
constexpr unsigned long kSecondsBetweenProbes = 1;

bool WaitForDaemon()
{
    for (int n = 0; n < kProbes; ++n) {
        if (MPL_TestEnvironment::IsMplTestDbusDaemonAlive()) {
            qDebug() << "MPL_TestEnvironment::LaunchMPLTestDbusDaemon - Successfully connected to newly "
                        "started daemon after "
                     << n << " seconds.";
            return true;
        }
        QThread::sleep(kSecondsBetweenProbes);
    }
    return false;
}

bool StartDaemon()
{
    qDebug() << "MPL_TestEnvironment::LaunchMPLTestDbusDaemon - Launching DBus Daemon on MPL Test Port..";
    if (!QProcess::startDetached(MPL_TEST_DBUS_DAEMON_PATH,
                                 {QStringLiteral("--config-file"), MPL_TEST_DBUS_CONFIG_FILE})) {
        qCritical() << "MPL_TestEnvironment::LaunchMPLTestDbusDaemon - Failed to launch dbus-daemon process.";
        return false;
    }
    if (!WaitForDaemon()) {
        qDebug() << "MPL_TestEnvironment::LaunchMPLTestDbusDaemon - Failed to connect to newly started "
                    "daemon. Considering the start-up process failed.";
        return false;
    }
    return true;
}

} // namespace

QDBusConnection& MPL_TestEnvironment::GetDbusConnection()
{
    if (!m_TestDbusConnection.isConnected()) {
        qDebug() << "MPL_TestEnvironment::GetDbusConnection - No Dbus instance created. Defaulting to "
                    "system bus.";
        m_TestDbusConnection = QDBusConnection::systemBus();
    }
    return m_TestDbusConnection;
}

bool MPL_TestEnvironment::IsMplTestDbusDaemonAlive()
{
    qDebug() << "Attempting to connect to '" << MPL_TEST_DBUS_ADDRESS << "'.";
    const QDBusConnection connection =
        QDBusConnection::connectToBus(MPL_TEST_DBUS_ADDRESS, MPL_TEST_DBUS_CONNECTION_NAME);
    const QDBusError error = connection.lastError();
    if (error.isValid()) {
        qDebug() << "Failed. Error=" << error.name();
    }
    const bool connected = connection.isConnected();
    if (!connected) {
        // The name is free again, so that the next probe opens a connection instead of finding this one.
        QDBusConnection::disconnectFromBus(MPL_TEST_DBUS_CONNECTION_NAME);
    }
    return connected;
}

bool MPL_TestEnvironment::LaunchMPLTestDbusDaemon()
{
    if (IsMplTestDbusDaemonAlive()) {
        qDebug() << "MPL_TestEnvironment::LaunchMPLTestDbusDaemon - Test DBus is already active. Returning.";
    } else if (!StartDaemon()) {
        return false;
    }
    m_TestDbusConnection =
        QDBusConnection::connectToBus(MPL_TEST_DBUS_ADDRESS, MPL_TEST_DBUS_CONNECTION_NAME);
    return true;
}
