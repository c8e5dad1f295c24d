// Ending the stack's processes, by signal or through the lifecycle manager.
#include "Constants.h"
#include "Helpers.h"
#include <MPL_TestEnvironment.h>

#include <QDebug>
#include <QThread>

#include <algorithm>

namespace
{

constexpr int kTermPasses = 10;
constexpr unsigned long kSecondsPerPass = 1;
constexpr unsigned long kSecondsAfterKill = 5;

bool IsRunning(const char* aName)
{
    return MPL_ProcessInfo::GetPidFromName(aName) != -1;
}

bool KillByName(const QString& aName)
{
    return MPL_TestEnvironment::KillMediaProcess(aName.toUtf8().constData());
}

bool SlmStart(const QString& aService)
{
    return MPL_ProcessInfo::SlmStartService(aService.toUtf8().constData());
}

bool SlmStop(const QString& aService)
{
    return MPL_ProcessInfo::SlmStopService(aService.toUtf8().constData());
}

// Gives the process time to end by itself; true when it has.
bool WaitForEnd(const char* aName, int aFirst)
{
    for (int pass = 0; pass < kTermPasses; ++pass) {
        if (!IsRunning(aName)) {
            return true;
        }
        // Somebody has started it anew.
        if (MPL_ProcessInfo::GetPidFromName(aName) != aFirst) {
            MPL_ProcessInfo::KillProcess(aName, false);
        }
        QThread::sleep(kSecondsPerPass);
    }
    return false;
}

} // namespace

bool MPL_TestEnvironment::KillMediaProcess(const char* aName)
{
    qDebug() << "MPL_TestEnvironment::KillMediaProcess " << aName;
    const int first = MPL_ProcessInfo::GetPidFromName(aName);
    MPL_ProcessInfo::KillProcess(aName, false);
    if (WaitForEnd(aName, first)) {
        return true;
    }
    if (IsRunning(aName)) {
        qDebug() << "Couldn't kill process " << aName << " with SIGTERM. Sending SIGKILL instead.";
        MPL_ProcessInfo::KillProcess(aName, true);
        QThread::sleep(kSecondsAfterKill);
    }
    if (IsRunning(aName)) {
        qCritical() << "Failed to kill process " << aName;
        return false;
    }
    return true;
}

bool MPL_TestEnvironment::KillMediaManagerProcess()
{
    qDebug() << "MPL_TestEnvironment::KillMediaManagerProcess";
    bool managerResult = true;
    if (MPL::Detail::IsProcessRunning(MPL_TEST_MEDIAMANAGER_PROCESS_NAME)) {
        managerResult = KillByName(MPL_TEST_MEDIAMANAGER_PROCESS_NAME);
        qDebug() << "MPL_TestEnvironment::KillMediaManagerProcess -- MediaManager result=" << managerResult;
    }
    if (!MPL::Detail::IsProcessRunning(MPL_TEST_MME_PROCESS_NAME)) {
        return managerResult;
    }
    const bool mmeResult = KillByName(MPL_TEST_MME_PROCESS_NAME);
    qDebug() << "MPL_TestEnvironment::KillMediaManagerProcess -- MME result=" << mmeResult;
    return managerResult && mmeResult;
}

bool MPL_TestEnvironment::KillTestMediaSourceProcess()
{
    const bool result = KillByName(MPL_TEST_MEDIA_SOURCE_PROCESS_NAME);
    qDebug() << "MPL_TestEnvironment::KillTestMediaSourceProcess result=" << result;
    return result;
}

bool MPL_TestEnvironment::KillMediaSourceProcess()
{
    const bool result = std::all_of(MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.begin(),
                                    MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.end(), KillByName);
    qDebug() << "MPL_TestEnvironment::KillMediaSourceProcess result=" << result;
    return result;
}

bool MPL_TestEnvironment::KillHmiProcesses()
{
    return KillByName(MPL_TEST_HMI_MAIN_PROCESS_NAME) && KillByName(MPL_TEST_HMI_CLUSTER_PROCESS_NAME);
}

bool MPL_TestEnvironment::LaunchRecognitionServer()
{
    qDebug() << "MPL_TestEnvironment::LaunchRecognitionServer";
    return MPL::Detail::StartCommandDetached(MPL::Detail::MakeBinaryPath(MPL_TEST_RECOGNITION_SERVER_NAME));
}

bool MPL_TestEnvironment::StopRecognitionServerService()
{
    qDebug() << "MPL_TestEnvironment::StopRecognitionServerService";
    MPL_ProcessInfo::KillProcess(MPL_TEST_RECOGNITION_SERVER_NAME.toUtf8().constData(), true);
    return true;
}

bool MPL_TestEnvironment::SlmLaunchMediaServices(bool aActivateDataManager)
{
    qDebug() << "MPL_TestEnvironment::SlmLaunchMediaServices";
    // The manager needs the mount service, so it comes after it; it goes before it when they stop.
    const bool ok =
        ClearMPLState(aActivateDataManager) && SlmStart(MPL_TEST_MME_SLM_NAME) &&
        SlmStart(MPL_TEST_MEDIAMANAGER_SLM_NAME) &&
        std::all_of(MPL_TEST_MEDIA_SOURCE_SLM_NAMES.begin(), MPL_TEST_MEDIA_SOURCE_SLM_NAMES.end(), SlmStart);
    qDebug() << "MPL_TestEnvironment::SlmLaunchMediaServices -- finished.";
    return ok;
}

bool MPL_TestEnvironment::SlmStopMediaServices()
{
    qDebug() << "MPL_TestEnvironment::SlmStopMediaServices";
    return SlmStop(MPL_TEST_MEDIAMANAGER_SLM_NAME) && SlmStop(MPL_TEST_MME_SLM_NAME) &&
           std::all_of(MPL_TEST_MEDIA_SOURCE_SLM_NAMES.begin(), MPL_TEST_MEDIA_SOURCE_SLM_NAMES.end(),
                       SlmStop);
}

bool MPL_TestEnvironment::SlmStopTunerProcesses()
{
    return std::all_of(MPL_TEST_TUNER_PROCESS_NAMES.begin(), MPL_TEST_TUNER_PROCESS_NAMES.end(), SlmStop);
}

bool MPL_TestEnvironment::SlmLaunchTunerProcesses()
{
    return std::all_of(MPL_TEST_TUNER_PROCESS_NAMES.begin(), MPL_TEST_TUNER_PROCESS_NAMES.end(), SlmStart);
}
