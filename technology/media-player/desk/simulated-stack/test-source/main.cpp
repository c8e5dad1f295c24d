// test_media_source.
#include "Program.h"
#include "TestSourceFactory.h"
#include <MPL_SourceWords.h>
#include <MPL_TestEnvironmentNames.h>
#include <MPL_TestSourceCapability.h>

#include <memory>
#include <utility>

namespace
{

using Capability = MPL::TestSourceCapability;

QStringList Chosen(uint aOption)
{
    const std::pair<Capability, QString> names[] = {
        {Capability::Browse, MPL::MPL_FUNCTIONALITY_BROWSE},
        {Capability::PlaybackControl, MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL},
        {Capability::Index, MPL::MPL_FUNCTIONALITY_INDEX},
        {Capability::MediaInfo, MPL::MPL_FUNCTIONALITY_MEDIA_INFO},
        {Capability::PlayQueue, MPL::MPL_FUNCTIONALITY_PLAYQUEUE}};
    QStringList chosen;
    for (const auto& [capability, name] : names) {
        if ((aOption & static_cast<uint>(capability)) != 0) {
            chosen.append(name);
        }
    }
    return chosen;
}

} // namespace

int main(int argc, char* argv[])
{
    sim::Options options;
    options.Words("CAPABILITIES", "([12]?[0-9]|3[01])",
                  "sum of 1 browse, 2 playback control, 4 index, 8 media info, 16 play queue");
    options.Flag("default_playqueue", "fill the play queues at the start");
    sim::Program::AddCommonOptions(options);
    if (const auto status = options.Parse(argc, argv)) {
        return *status;
    }
    sim::Program program(argc, argv, options);
    std::unique_ptr<sim::TestSourceFactory> factory;
    return program.Run(
        sim::BusChoice::ByOption, MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, [&](const QDBusConnection& aBus) {
            factory = std::make_unique<sim::TestSourceFactory>(
                program.Faults(), aBus, Chosen(options.Word().toUInt()), options.Has("default_playqueue"));
            return factory->Export();
        });
}
