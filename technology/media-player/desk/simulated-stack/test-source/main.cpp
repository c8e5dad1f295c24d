// test_media_source.
#include "Program.h"
#include "TestSourceFactory.h"
#include <MPL_SourceWords.h>
#include <MPL_TestEnvironmentNames.h>

#include <array>
#include <memory>

namespace
{

// Bit i of the capabilities option stands for the i-th of these.
const std::array<QString, 5>& Capabilities()
{
    static const std::array<QString, 5> kNames{
        MPL::MPL_FUNCTIONALITY_BROWSE, MPL::MPL_FUNCTIONALITY_PLAYBACK_CONTROL, MPL::MPL_FUNCTIONALITY_INDEX,
        MPL::MPL_FUNCTIONALITY_MEDIA_INFO, MPL::MPL_FUNCTIONALITY_PLAYQUEUE};
    return kNames;
}

QStringList Chosen(uint aOption)
{
    QStringList chosen;
    for (size_t i = 0; i < Capabilities().size(); ++i) {
        if ((aOption >> i & 1U) != 0) {
            chosen.append(Capabilities().at(i));
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
