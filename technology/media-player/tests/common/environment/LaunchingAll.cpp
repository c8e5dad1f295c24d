// Starting all media sources at once.
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironment.h>

#include <QDebug>

#include <gtest/gtest.h>

void MPL_TestEnvironment::LaunchMediaSourceProcesses(bool aActivateDataManager, bool aResetActiveMediaSource,
                                                     const QString& aRemoteIP, const QString& aPort,
                                                     const QString& aDdpPort, bool aVerbose)
{
    qDebug() << "MPL_TestEnvironment::LaunchMediaSourceProcesses --" << aRemoteIP << aPort << aDdpPort
             << aVerbose;
    if (aResetActiveMediaSource) {
        ClearMPLState(aActivateDataManager);
    }

    QStringList mediaSourcesToLaunch;
    QStringList mediaServicesToWaitFor;
    // Without a remote computer mass storage still takes the remote way: see "Kept on purpose" in
    // docs/architecture.md.
    int indexOfLastRemoteSource = static_cast<int>(aRemoteIP.length());
    if (aRemoteIP.isEmpty()) {
        qDebug() << "MPL_TestEnvironment::LaunchMediaSourceProcesses -- Not using the remote computer for "
                    "apple and disc functionality, don't launch the processes";
    } else {
        qDebug() << "MPL_TestEnvironment::LaunchMediaSourceProcesses -- Using the remote computer for "
                    "apple and disc functionality, include those processes";
        mediaSourcesToLaunch << MPL::MPL_APPLE_PROCESS_NAME << MPL::MPL_DISC_PROCESS_NAME;
        mediaServicesToWaitFor << MPL::MPL_APPLE_SERVICE_NAME << MPL::MPL_DISC_SERVICE_NAME;
        indexOfLastRemoteSource = 2;
    }
    mediaSourcesToLaunch << MPL::MPL_MASS_STORAGE_PROCESS_NAME << MPL::MPL_PANDORA_PROCESS_NAME
                         << MPL::MPL_SPOTIFY_PROCESS_NAME;
    mediaServicesToWaitFor << MPL::MPL_MASS_STORAGE_SERVICE_NAME << MPL::MPL_PANDORA_SERVICE_NAME
                           << MPL::MPL_SPOTIFY_SERVICE_NAME;

    // The expressions below keep their blanks: see "Kept on purpose" in docs/architecture.md.
    // clang-format off
    ASSERT_TRUE( mediaSourcesToLaunch.size() == mediaServicesToWaitFor.size() );
    ASSERT_TRUE( indexOfLastRemoteSource < mediaSourcesToLaunch.size() );
    for (int k = 0; k < mediaSourcesToLaunch.size(); ++k) {
        const QString& procName = mediaSourcesToLaunch.at(k);
        const QString& serviceName = mediaServicesToWaitFor.at(k);
        qDebug() << "MPL_TestEnvironment::LaunchMediaSourceProcesses -- Launching process" << procName
                 << " (" << serviceName << ")";
        // Every launch resets the persisted state: see "Kept on purpose" in docs/architecture.md.
        if (k <= indexOfLastRemoteSource) {
            ASSERT_TRUE( MPL_TestEnvironment::LaunchRemoteMediaSourceProcess(
                true, procName, aRemoteIP, aPort, aDdpPort, aVerbose, true ) );
        } else {
            ASSERT_TRUE( MPL_TestEnvironment::LaunchMediaSourceProcess( true, procName, true, aVerbose ) );
        }
        ASSERT_TRUE( MPL_TestEnvironment::WaitForServiceRunning( serviceName ) );
        ASSERT_TRUE( MPL_TestEnvironment::WaitForMediaSourceServiceObjects( serviceName, 1 ) );
    }
    // clang-format on
}
