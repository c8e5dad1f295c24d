// The programs of the stack that tests only start, stop and look for: recognition server, HMI, tuners. One
// main function for all; of them only the recognition server is on a bus.
#include "Program.h"
#include <MPL_ServiceNames.h>

#include <cerrno>

int main(int argc, char* argv[])
{
    const bool onBus = QLatin1String(program_invocation_short_name) == QLatin1String("recognition-server");
    sim::Options options;
    if (onBus) {
        sim::Program::AddCommonOptions(options);
    }
    if (const auto status = options.Parse(argc, argv)) {
        return *status;
    }
    sim::Program program(argc, argv, options);
    return program.Run(onBus ? sim::BusChoice::ByOption : sim::BusChoice::None,
                       onBus ? MPL::MPL_RECOGNITION_SERVER_SERVICE_NAME : QString(),
                       [](const QDBusConnection&) { return true; });
}
