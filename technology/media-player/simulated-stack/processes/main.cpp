// The programs of the stack that tests only start, stop and look for: recognition server, HMI, tuners.
// SIM_SERVICE_NAME is the bus name the program owns; programs without one just run.
#include "SimProgram.h"

int main(int argc, char* argv[])
{
    sim::Options options;
    const QString serviceName = QStringLiteral(SIM_SERVICE_NAME);
    if (!serviceName.isEmpty()) {
        sim::Program::AddCommonOptions(options);
    }
    if (const auto status = options.Parse(argc, argv)) {
        return *status;
    }
    sim::Program program(argc, argv, options);
    const auto choice = serviceName.isEmpty() ? sim::BusChoice::None : sim::BusChoice::ByOption;
    return program.Run(choice, serviceName, [](const QDBusConnection&) { return true; });
}
