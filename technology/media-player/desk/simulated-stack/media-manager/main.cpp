// media_manager.
#include "MediaManager.h"
#include "Program.h"
#include <MPL_ServiceNames.h>

#include <memory>

int main(int argc, char* argv[])
{
    sim::Options options;
    options.Words("[DB=FILE]", "(?:DB=(.+))?", "keep the active source in this database");
    sim::Program::AddCommonOptions(options);
    if (const auto status = options.Parse(argc, argv)) {
        return *status;
    }
    sim::Program program(argc, argv, options);
    std::unique_ptr<sim::MediaManager> manager;
    return program.Run(
        sim::BusChoice::ByOption, MPL::MPL_MEDIA_MANAGER_SERVICE_NAME, [&](const QDBusConnection& aBus) {
            manager = std::make_unique<sim::MediaManager>(program.Faults(), aBus, options.Word());
            return manager->Export();
        });
}
