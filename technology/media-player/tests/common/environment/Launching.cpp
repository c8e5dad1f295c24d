// Starting the stack's programs and waiting until they are there.
#include "Constants.h"
#include "Helpers.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironment.h>

#include <QDebug>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

// What a media manager does after its object is there can't be watched from outside.
constexpr unsigned long kSecondsToSettle = 2;

const QString TEST_DBUS_OPTION = QStringLiteral("--test-dbus");
const QString kVerboseOption = QStringLiteral("--verbose");

bool OnTestBus()
{
    return MPL_TestEnvironment::GetDbusConnection().name() == MPL_TEST_DBUS_CONNECTION_NAME;
}

// The bus name of one of the sources that can be launched; null for any other process.
const QString* ServiceOfSource(const QString& aProcess)
{
    const auto begin = MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.begin();
    const auto end = MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.end();
    const auto found = std::find(begin, end, aProcess);
    return found == end ? nullptr : MPL_TEST_MEDIA_SOURCE_SERVICE_NAMES.begin() + (found - begin);
}

bool LaunchMme()
{
    if (MPL::Detail::IsProcessRunning(MPL_TEST_MME_PROCESS_NAME)) {
        return true;
    }
    qDebug() << "MPL_TestEnvironment::LaunchMediaManagerProcess -- Launching MME Process";
    if (!MPL::Detail::StartCommandDetached(MPL_TEST_MME_PROCESS_PATH)) {
        qCritical() << "MPL_TestEnvironment::LaunchMediaManagerProcess -- Launch MME Process() failed.";
        return false;
    }
    return true;
}

bool StartMediaManager(const char* aExtraArgument)
{
    QStringList arguments;
    if (aExtraArgument != nullptr) {
        arguments << QString::fromUtf8(aExtraArgument);
    }
    arguments << QStringLiteral("DB=") + kMPLDataManagerDb;
    if (OnTestBus()) {
        qDebug() << "MPL_TestEnvironment::LaunchMediaManagerProcess -- Launching MediaManager Process on "
                    "test dbus.";
        arguments << TEST_DBUS_OPTION;
    } else {
        qDebug() << "MPL_TestEnvironment::LaunchMediaManagerProcess -- Launching MediaManager Process on "
                    "system dbus.";
    }
    return QProcess::startDetached(MPL_TEST_MEDIAMANAGER_PROCESS_PATH, arguments);
}

bool WaitForMediaManager()
{
    qDebug() << "MediaManager process launched, waiting for the object to become available on d-bus.";
    if (!MPL_TestEnvironment::WaitForServiceRunning(MPL_TEST_MEDIAMANAGER_SERVICE_NAME)) {
        qCritical() << "MPL_TestEnvironment::LaunchMediaManagerProcess -- MediaManager process did not "
                       "start.";
        return false;
    }
    QStringList paths;
    if (!MPL_TestEnvironment::WaitForServiceObjects(MPL_TEST_MEDIAMANAGER_SERVICE_NAME, 1,
                                                    MPL::MPL_MEDIA_MANAGER_INTERFACE_NAME, paths)) {
        qCritical() << "MPL_TestEnvironment::LaunchMediaManagerProcess -- MediaManager process did not "
                       "show up on dbus.";
        return false;
    }
    return true;
}

bool LaunchMediaManager(const char* aExtraArgument)
{
    if (MPL::Detail::IsProcessRunning(MPL_TEST_MEDIAMANAGER_PROCESS_NAME)) {
        return true;
    }
    if (!StartMediaManager(aExtraArgument)) {
        qCritical() << "LaunchMediaManagerProcess() failed.";
        return false;
    }
    return WaitForMediaManager();
}

// The programs that know how to delegate to a remote computer.
bool IsRemoteCapable(const QString& aProcess)
{
    return aProcess == MPL::MPL_MASS_STORAGE_PROCESS_NAME || aProcess == MPL::MPL_DISC_PROCESS_NAME ||
           aProcess == MPL::MPL_APPLE_PROCESS_NAME;
}

} // namespace

bool MPL_TestEnvironment::LaunchMediaManagerProcess(bool aActivateDataManager, const char* aExtraArgument)
{
    qDebug() << "MPL_TestEnvironment::LaunchMediaManagerProcess";
    ClearMPLState(aActivateDataManager);
    const bool result = LaunchMme() && LaunchMediaManager(aExtraArgument);
    QThread::sleep(kSecondsToSettle);
    qDebug() << "MPL_TestEnvironment::LaunchMediaManagerProcess -- finished.";
    return result;
}

bool MPL_TestEnvironment::LaunchMediaSourceProcess(bool aActivateDataManager, const QString& aProcess,
                                                   bool aResetActiveMediaSource, bool aVerbose)
{
    qDebug() << "MPL_TestEnvironment::LaunchMediaSourceProcess" << aProcess;
    if (aResetActiveMediaSource) {
        ClearMPLState(aActivateDataManager);
    }
    const QString* service = ServiceOfSource(aProcess);
    if (service == nullptr) {
        return false;
    }
    QStringList arguments;
    if (aProcess == MPL::MPL_PANDORA_PROCESS_NAME) {
        if (!AddPandoraLogin()) {
            qCritical() << "MPL_TestEnvironment::LaunchMediaSourceProcess -- Failed to create login config "
                           "for Pandora";
            return false;
        }
        arguments << QStringLiteral("unitTest") << MPL_TEST_UNIT_CONFIG_FILE;
    }
    if (aVerbose) {
        arguments << kVerboseOption;
    }
    if (OnTestBus()) {
        qDebug() << "LaunchMediaSourceProcess: " << aProcess << " on the test dbus.";
        arguments << TEST_DBUS_OPTION;
    } else {
        qDebug() << "LaunchMediaSourceProcess: " << aProcess << " on the system dbus.";
    }
    const QString path = MPL::Detail::MakeBinaryPath(aProcess);
    if (!QProcess::startDetached(path, arguments)) {
        qCritical() << "LaunchMediaSourceProcess() failed with " << qPrintable(aProcess);
        qCritical() << "Attempted to start: " << qPrintable(path);
        return false;
    }
    return WaitForServiceRunning(*service);
}

bool MPL_TestEnvironment::LaunchTestMediaSourceProcess(bool aActivateDataManager,
                                                       unsigned int aCapabilitiesOption,
                                                       bool aResetActiveMediaSource, bool aCreatePlayQueue)
{
    qDebug() << "MPL_TestEnvironment::LaunchTestMediaSourceProcess -- aActivateDataManager:"
             << aActivateDataManager << "aCapabilitiesOption:" << aCapabilitiesOption
             << "aResetActiveMediaSource:" << aResetActiveMediaSource
             << "aCreatePlayQueue:" << aCreatePlayQueue;
    if (aResetActiveMediaSource) {
        ClearMPLState(aActivateDataManager);
    }
    if (MPL::Detail::IsProcessRunning(MPL_TEST_MEDIA_SOURCE_PROCESS_NAME)) {
        return true;
    }
    QStringList arguments{QString::number(aCapabilitiesOption)};
    if (aCreatePlayQueue) {
        arguments << QStringLiteral("-default_playqueue");
    }
    if (OnTestBus()) {
        qDebug() << "MPL_TestEnvironment::LaunchTestMediaSourceProcess - Using the TEST dbus.";
        arguments << TEST_DBUS_OPTION;
    } else {
        qDebug() << "MPL_TestEnvironment::LaunchTestMediaSourceProcess - Using the system dbus.";
    }
    qDebug() << "MPL_TestEnvironment::LaunchTestMediaSourceProcess -- Test source service not running, "
                "attempt to launch:"
             << MPL_TEST_MEDIA_SOURCE_PROCESS_PATH << MPL::Detail::LogText(arguments).constData();
    if (!QProcess::startDetached(MPL_TEST_MEDIA_SOURCE_PROCESS_PATH, arguments)) {
        qCritical() << "LaunchTestMediaSourceProcess() failed.";
        return false;
    }
    qDebug() << "MediaTestSource process launched, waiting for the object to become available on d-bus.";
    // A source that never shows up fails the running test, not this call: see "Kept on purpose" in
    // docs/architecture.md.
    // clang-format off
    EXPECT_TRUE( WaitForServiceRunning( MPL_TEST_MEDIA_SOURCE_SERVICE_NAME ) );
    // clang-format on
    return true;
}

bool MPL_TestEnvironment::LaunchRemoteMediaSourceProcess(
    bool aActivateDataManager, const QString& aProcess,
    // NOLINTNEXTLINE(performance-unnecessary-value-param)
    QString aRemoteIP, QString aPort, QString aDdpPort, bool aVerbose, bool aResetActiveMediaSource)
{
    qDebug() << "MPL_TestEnvironment::LaunchRemoteMediaSourceProcess -- Process:" << aProcess
             << "Activate DM:" << aActivateDataManager << "Server:" << aRemoteIP << aPort << aDdpPort
             << "Verbose:" << aVerbose << "Reset active source:" << aResetActiveMediaSource;
    if (aResetActiveMediaSource) {
        ClearMPLState(aActivateDataManager);
    }
    bool result = false;
    if (const QString* service = ServiceOfSource(aProcess)) {
        QStringList arguments;
        if (aVerbose) {
            arguments << kVerboseOption;
        }
        if (IsRemoteCapable(aProcess) && !aRemoteIP.isEmpty()) {
            arguments << QStringLiteral("--remote=") + aRemoteIP << QStringLiteral("--port=") + aPort
                      << QStringLiteral("--ddpport=") + aDdpPort;
        }
        if (OnTestBus()) {
            arguments << TEST_DBUS_OPTION;
        }
        qDebug() << "MPL_TestEnvironment::LaunchRemoteMediaSourceProcess -- Launching" << aProcess;
        result = QProcess::startDetached(MPL::Detail::MakeBinaryPath(aProcess), arguments) &&
                 WaitForServiceRunning(*service);
    }
    qDebug() << "MPL_TestEnvironment::LaunchRemoteMediaSourceProcess -- Returning" << result;
    return result;
}
