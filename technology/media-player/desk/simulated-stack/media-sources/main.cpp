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

sim::Options MakeOptions(const sim::SourceProgram& aSource)
{
    sim::Options options;
    if (aSource.login) {
        options.LeadingWord("unitTest", "FILE", "log in with the account of this media-player configuration");
    }
    sim::Program::AddCommonOptions(options);
    if (aSource.remote) {
        options.Value("--remote=", "IP", "use the devices of this remote computer");
        options.Port("--port=", "its port");
        options.Port("--ddpport=", "the port of its device discovery");
    }
    return options;
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
        const QString port = aOptions.Get("--ddpport=");
        return MPL::MPL_APPLE_DEVICE_LABEL.arg(aOptions.Get("--remote="),
                                               port.isEmpty() ? port : QLatin1Char(':') + port);
    }
    return aOptions.Get("--remote=");
}

sim::SourceIdentity MakeIdentity(const sim::SourceProgram& aSource, const sim::Options& aOptions)
{
    const QString path =
        QLatin1Char('/') + QString(aSource.serviceName).replace(QLatin1Char('.'), QLatin1Char('/'));
    return {aSource.serviceName,
            path + QStringLiteral("/1"),
            aSource.sourceName,
            sim::SourceType(aSource),
            aSource.sourceName + QStringLiteral("-1"),
            DevicePath(aSource, aOptions),
            QStringLiteral("1")};
}

} // namespace

int main(int argc, char* argv[])
{
    const sim::SourceProgram* source = sim::FindSourceProgram();
    if (source == nullptr) {
        sim::Log(QStringLiteral("no media source is called like this; keep the executable's own name"));
        return sim::Options::kUsageError;
    }
    sim::Options options = MakeOptions(*source);
    if (const auto status = options.Parse(argc, argv)) {
        return *status;
    }
    sim::Program program(argc, argv, options);
    std::unique_ptr<sim::MediaSource> object;
    return program.Run(sim::BusChoice::ByOption, source->serviceName, [&](const QDBusConnection& aBus) {
        object = std::make_unique<sim::MediaSource>(program.Faults(), aBus, MakeIdentity(*source, options),
                                                    MakeMedia(*source));
        if (source->login) {
            const QString given = options.Get("unitTest");
            object->SetError(
                sim::LoginError(given.isEmpty() ? QStringLiteral("/opt/talvex/etc/mplConfig.json") : given));
        }
        return object->Export();
    });
}
