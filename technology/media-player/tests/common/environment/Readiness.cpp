// Waiting until services are there, and proxies of those that are.
#include "Constants.h"
#include "Helpers.h"
#include <MPL_DBusUtils.h>
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironment.h>

#include <QDebug>
#include <QThread>
#include <QTime>

#include <gtest/gtest.h>

namespace
{

constexpr int kServicePauses = 10;
constexpr unsigned long kSecondsBetweenQuestions = 2;
constexpr int kObjectLookups = 10;
constexpr unsigned long kMillisecondsBetweenLookups = 100;

} // namespace

bool MPL_TestEnvironment::WaitForServiceRunning(const QString& aServiceName)
{
    for (int n = 0;; ++n) {
        const bool running = MPL::IsServiceRunning(aServiceName, GetDbusConnection());
        // The answer after the last pause is not used: see "Kept on purpose" in docs/architecture.md.
        if (n >= kServicePauses) {
            return false;
        }
        if (running) {
            return true;
        }
        qDebug() << "MPL_TestEnvironment::WaitForServiceRunning -- Service" << aServiceName
                 << "not running, pausing for 2 seconds..";
        QThread::sleep(kSecondsBetweenQuestions);
    }
}

bool MPL_TestEnvironment::WaitForServiceObjects(const QString& aServiceName, unsigned int aCount,
                                                const QString& aInterfaceName, QStringList& aPaths)
{
    const QDBusConnection connection = GetDbusConnection();
    for (int attempt = 0; attempt < kObjectLookups; ++attempt) {
        aPaths.clear();
        const bool found =
            MPL::FindServiceObjectPathsByInterface(aServiceName, aInterfaceName, connection, aPaths);
        if (found && static_cast<unsigned int>(aPaths.size()) >= aCount) {
            qDebug() << "MPL_TestEnvironment::WaitForServiceObjects -- Found" << aPaths.size()
                     << "service objects for" << aServiceName;
            return true;
        }
        qDebug() << "MPL_TestEnvironment::WaitForServiceObjects -- Time:"
                 << qPrintable(QTime::currentTime().toString(QStringLiteral("mm:ss.zzz")))
                 << "Service:" << aServiceName << "Source Objects Found:" << aPaths.size() << "objects.";
        QThread::msleep(kMillisecondsBetweenLookups);
    }
    qDebug() << "MPL_TestEnvironment::WaitForServiceObjects timed out. Last found " << aPaths.size()
             << " objects.";
    return false;
}

bool MPL_TestEnvironment::WaitForMediaSourceServiceObjects(const QString& aServiceName, unsigned int aCount)
{
    QStringList paths;
    return WaitForServiceObjects(aServiceName, aCount, MPL::MPL_MEDIA_SOURCE_INTERFACE_NAME, paths);
}

bool MPL_TestEnvironment::AllMediaSourcesAlive()
{
    bool all = true;
    for (const QString& name : MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES) {
        if (MPL::Detail::IsProcessRunning(name)) {
            qDebug() << name << " is alive";
        } else {
            qDebug() << name << " is not alive.";
            all = false;
        }
    }
    return all;
}

bool MPL_TestEnvironment::AllMediaSourcesTerminated()
{
    for (const QString& name : MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES) {
        if (MPL::Detail::IsProcessRunning(name)) {
            qDebug() << name << " not terminated.";
            return false;
        }
    }
    return true;
}

ComTalvexDBusMediaPlayerMediaManagerInterface* MPL_TestEnvironment::CreateMediaManagerProxy()
{
    const QDBusConnection connection = GetDbusConnection();
    if (!MPL::IsServiceRunning(MPL_TEST_MEDIAMANAGER_SERVICE_NAME, connection)) {
        qCritical() << "Service: " << qPrintable(MPL_TEST_MEDIAMANAGER_SERVICE_NAME) << " not running";
        return nullptr;
    }
    QStringList mediaManagerList;
    // The expression keeps its blanks: see "Kept on purpose" in docs/architecture.md.
    // clang-format off
    EXPECT_TRUE( WaitForServiceObjects( MPL_TEST_MEDIAMANAGER_SERVICE_NAME, 1,
                                        MPL::MPL_MEDIA_MANAGER_INTERFACE_NAME, mediaManagerList ) );
    // clang-format on
    if (mediaManagerList.size() != 1) {
        return nullptr;
    }
    return new ComTalvexDBusMediaPlayerMediaManagerInterface(MPL_TEST_MEDIAMANAGER_SERVICE_NAME,
                                                             mediaManagerList.first(), connection, nullptr);
}

ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface* MPL_TestEnvironment::CreateSimulatorProxy()
{
    const QDBusConnection connection = GetDbusConnection();
    if (!MPL::IsServiceRunning(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, connection)) {
        return nullptr;
    }
    QStringList paths;
    MPL::FindServiceObjectPathsByInterface(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME,
                                           MPL_TEST_SIMULATION_INTERFACE_NAME, connection, paths);
    if (paths.size() != 1) {
        // The line names another service: see "Kept on purpose" in docs/architecture.md.
        qCritical() << "Service:" << qPrintable(MPL_TEST_MEDIAMANAGER_SERVICE_NAME) << " has no interface"
                    << qPrintable(MPL_TEST_SIMULATION_INTERFACE_NAME);
        return nullptr;
    }
    return new ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface(
        MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, paths.first(), connection, nullptr);
}
