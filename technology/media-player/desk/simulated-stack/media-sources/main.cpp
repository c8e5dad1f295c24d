// media_source_mass_storage, …_apple, …_pandora, …_disc, …_spotify and …_btmedia.
#include "Log.h"
#include "MediaSource.h"
#include "Program.h"
#include "SourceProgram.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

#include <memory>

namespace
{

QString EnvironmentFolder()
{
    return MPL_TEST_MEDIA_PLAYER_DIRECTORY + QStringLiteral("test/");
}

void AddOptions(const sim::SourceProgram& aSource, sim::Options& aOptions)
{
    if (aSource.login) {
        aOptions.Words("[unitTest FILE]", "(?:unitTest (.+))?",
                       "log in with the account of this media-player configuration");
    }
    sim::Program::AddCommonOptions(aOptions);
    if (aSource.remote) {
        aOptions.Value("remote", "IP", "use the devices of this remote computer");
        aOptions.Port("port", "its port");
        aOptions.Port("ddpport", "the port of its device discovery");
    }
}

// Mass storage plays the files of the environment directory, the others a built-in catalogue.
sim::SourceSetup MakeMedia(const sim::SourceProgram& aSource)
{
    sim::SourceSetup media;
    media.capabilities << MPL::MPL_FUNCTIONALITY_BROWSE << MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL
                       << MPL::MPL_FUNCTIONALITY_MEDIA_INFO << MPL::MPL_FUNCTIONALITY_PLAYQUEUE;
    if (aSource.index) {
        media.capabilities.append(MPL::MPL_FUNCTIONALITY_INDEX);
    }
    if (aSource.serviceName == MPL::MPL_MASS_STORAGE_SERVICE_NAME) {
        media.mediaFolder = EnvironmentFolder();
    }
    if (aSource.login) {
        media.stationArt = QStringLiteral("catalogue:/station.png");
    }
    return media;
}

QString DevicePath(const sim::SourceProgram& aSource, const sim::Options& aOptions)
{
    if (aSource.serviceName == MPL::MPL_MASS_STORAGE_SERVICE_NAME) {
        return EnvironmentFolder();
    }
    if (aSource.serviceName == MPL::MPL_APPLE_SERVICE_NAME) {
        const QString port = aOptions.Get("ddpport");
        return MPL::MPL_APPLE_DEVICE_LABEL.arg(aOptions.Get("remote"),
                                               port.isEmpty() ? port : QLatin1Char(':') + port);
    }
    return aOptions.Get("remote");
}

sim::SourceIdentity MakeIdentity(const sim::SourceProgram& aSource, const sim::Options& aOptions)
{
    const QString path =
        QLatin1Char('/') + QString(aSource.serviceName).replace(QLatin1Char('.'), QLatin1Char('/'));
    sim::SourceIdentity identity;
    identity.serviceName = aSource.serviceName;
    identity.objectPath = path + QStringLiteral("/1");
    identity.name = aSource.sourceName;
    identity.type = sim::SourceType(aSource);
    identity.deviceId = aSource.sourceName + QStringLiteral("-1");
    identity.devicePath = DevicePath(aSource, aOptions);
    identity.busNumber = QStringLiteral("1");
    return identity;
}

} // namespace

int main(int argc, char* argv[])
{
    const sim::SourceProgram* source = sim::FindSourceProgram();
    if (source == nullptr) {
        sim::Log(QStringLiteral("no media source is called like this; keep the executable's own name"));
        return sim::Options::kUsageError;
    }
    sim::Options options;
    AddOptions(*source, options);
    if (const auto status = options.Parse(argc, argv)) {
        return *status;
    }
    sim::Program program(argc, argv, options);
    std::unique_ptr<sim::MediaSource> object;
    return program.Run(sim::BusChoice::ByOption, source->serviceName, [&](const QDBusConnection& aBus) {
        object = std::make_unique<sim::MediaSource>(program.Faults(), aBus, MakeIdentity(*source, options),
                                                    MakeMedia(*source));
        if (source->login) {
            const QString given = options.Word();
            object->SetError(
                sim::LoginError(given.isEmpty() ? QStringLiteral("/opt/talvex/etc/mplConfig.json") : given));
        }
        return object->Export();
    });
}
