#include "Stack.h"

#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

#include <algorithm>

namespace chaos
{
namespace
{

QString Look(QString Program::*aKnown, const QString& aValue, QString Program::*aWanted)
{
    const auto found = std::find_if(Programs().begin(), Programs().end(),
                                    [&](const Program& aProgram) { return aProgram.*aKnown == aValue; });
    return found == Programs().end() ? QString() : (*found).*aWanted;
}

} // namespace

const QVector<Program>& Programs()
{
    static const QVector<Program> kPrograms{
        {MPL_TEST_MEDIAMANAGER_PROCESS_NAME, MPL::MPL_MEDIA_MANAGER_SERVICE_NAME},
        {MPL_TEST_MME_PROCESS_NAME, MPL_TEST_MME_MOUNT_SERVICE_NAME},
        {MPL::MPL_MASS_STORAGE_PROCESS_NAME, MPL::MPL_MASS_STORAGE_SERVICE_NAME},
        {MPL::MPL_APPLE_PROCESS_NAME, MPL::MPL_APPLE_SERVICE_NAME},
        {MPL::MPL_PANDORA_PROCESS_NAME, MPL::MPL_PANDORA_SERVICE_NAME},
        {MPL::MPL_DISC_PROCESS_NAME, MPL::MPL_DISC_SERVICE_NAME},
        {MPL::MPL_SPOTIFY_PROCESS_NAME, MPL::MPL_SPOTIFY_SERVICE_NAME},
        {MPL_TEST_MEDIA_SOURCE_PROCESS_NAME, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME},
        {MPL::MPL_BLUETOOTH_PROCESS_NAME, MPL::MPL_BLUETOOTH_SERVICE_NAME},
        {MPL_TEST_RECOGNITION_SERVER_NAME, {}},
        {QStringLiteral("hmi_main"), {}},
        {QStringLiteral("hmi_cluster"), {}},
        {MPL_TEST_TUNER_PROCESS_NAME_AUDIO_TUNER_MANAGER, {}},
        {MPL_TEST_TUNER_PROCESS_NAME_TUNER_DEVICE_MANAGER, {}}};
    return kPrograms;
}

QString ServiceOf(const QString& aProcess)
{
    return Look(&Program::process, aProcess, &Program::service);
}

QString ProcessOf(const QString& aService)
{
    return Look(&Program::service, aService, &Program::process);
}

QStringList StackProcesses()
{
    QStringList processes{MPL_TEST_MEDIAMANAGER_PROCESS_NAME, MPL_TEST_MME_PROCESS_NAME,
                          MPL_TEST_MEDIA_SOURCE_PROCESS_NAME};
    for (const QString& source : MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES) {
        processes << source;
    }
    return processes;
}

QStringList LifecycleProcesses()
{
    return {MPL_TEST_MEDIAMANAGER_PROCESS_NAME, MPL_TEST_MME_PROCESS_NAME,
            MPL::MPL_MASS_STORAGE_PROCESS_NAME, MPL::MPL_APPLE_PROCESS_NAME,
            MPL::MPL_PANDORA_PROCESS_NAME,      MPL::MPL_SPOTIFY_PROCESS_NAME,
            MPL::MPL_BLUETOOTH_PROCESS_NAME};
}

} // namespace chaos
