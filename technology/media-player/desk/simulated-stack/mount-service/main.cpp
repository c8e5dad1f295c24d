// media_mme. It is started without arguments whichever bus the tests use, so it serves every bus that runs:
// the system bus, where the lifecycle manager waits for its name, and the private test bus.
#include "MountService.h"
#include "Program.h"
#include <MPL_TestEnvironmentNames.h>

int main(int argc, char* argv[])
{
    sim::Options options;
    sim::Program::AddCommonOptions(options);
    if (const auto status = options.Parse(argc, argv)) {
        return *status;
    }
    sim::Program program(argc, argv, options);
    sim::MountService service(program.Faults());
    const auto choice = options.Has("test-dbus") ? sim::BusChoice::ByOption : sim::BusChoice::WhateverRuns;
    return program.Run(choice, MPL_TEST_MME_MOUNT_SERVICE_NAME,
                       [&service](const QDBusConnection& aBus) { return service.Export(aBus); });
}
