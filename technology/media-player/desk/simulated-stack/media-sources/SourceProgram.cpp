#include "SourceProgram.h"

#include "Json.h"
#include "Log.h"
#include <MPL_MediaPlayerLib.h>

#include <QFileInfo>

#include <array>
#include <cerrno>

namespace sim
{
namespace
{

QString LastWord(const QString& aName)
{
    return aName.mid(aName.lastIndexOf(QLatin1Char('.')) + 1);
}

} // namespace

const SourceProgram* FindSourceProgram()
{
    using namespace MPL;
    static const std::array<SourceProgram, 6> kPrograms{{
        {MPL_MASS_STORAGE_PROCESS_NAME, MPL_MASS_STORAGE_SERVICE_NAME, MPL_MASS_STORAGE_DEVICE_LABEL, true,
         false, true},
        // The label of this one is no name: a device path is made from it.
        {MPL_APPLE_PROCESS_NAME, MPL_APPLE_SERVICE_NAME, LastWord(MPL_APPLE_SERVICE_NAME), true, false, true},
        {MPL_PANDORA_PROCESS_NAME, MPL_PANDORA_SERVICE_NAME, MPL_PANDORA_DEVICE_LABEL, false, true, false},
        {MPL_DISC_PROCESS_NAME, MPL_DISC_SERVICE_NAME, MPL_DISC_DEVICE_LABEL, true, false, true},
        {MPL_SPOTIFY_PROCESS_NAME, MPL_SPOTIFY_SERVICE_NAME, MPL_SPOTIFY_DEVICE_LABEL, false, false, false},
        {MPL_BLUETOOTH_PROCESS_NAME, MPL_BLUETOOTH_SERVICE_NAME, LastWord(MPL_BLUETOOTH_SERVICE_NAME), false,
         false, false},
    }};
    for (const SourceProgram& program : kPrograms) {
        if (program.processName == QLatin1String(program_invocation_short_name)) {
            return &program;
        }
    }
    return nullptr;
}

QString SourceType(const SourceProgram& aProgram)
{
    return LastWord(aProgram.serviceName);
}

QString LoginError(const QString& aConfigurationFile)
{
    QJsonObject configuration;
    QString error;
    if (!ReadJsonFile(aConfigurationFile, configuration, error)) {
        Log(QStringLiteral("%1 can't be read: %2").arg(aConfigurationFile, error));
        return QFileInfo(aConfigurationFile).isReadable() ? MPL::MPL_SOURCE_ERROR_TYPE_CREDENTIALS_MISSING
                                                          : MPL::MPL_SOURCE_ERROR_TYPE_INITIALIZATION_FAILED;
    }
    const QJsonObject login = configuration.value(MPL::MPL_CONFIG_KEY_CONFIG)
                                  .toObject()
                                  .value(QLatin1String("pandora"))
                                  .toObject()
                                  .value(QLatin1String("login_config"))
                                  .toObject();
    for (const char* key : {"user_name", "password"}) {
        if (login.value(QLatin1String(key)).toString().isEmpty()) {
            Log(QStringLiteral("%1 has no \"%2\" to log in with, so this source reports missing credentials: "
                               "normal unless a test launched it")
                    .arg(aConfigurationFile, QLatin1String(key)));
            return MPL::MPL_SOURCE_ERROR_TYPE_CREDENTIALS_MISSING;
        }
    }
    return QString();
}

} // namespace sim
