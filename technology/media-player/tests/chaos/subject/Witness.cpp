#include "Witness.h"

#include "BusNames.h"
#include "Files.h"
#include "SeenProcesses.h"

namespace chaos
{

Moment LookAround(bool aTestBus)
{
    Moment moment;
    moment.processes = StackProcessesNow();
    const BusSeen testBus = AskBus(kTestBus);
    moment.testBusAnswers = testBus.answers;
    moment.names = aTestBus ? testBus.names : AskBus(qgetenv("DBUS_SYSTEM_BUS_ADDRESS")).names;
    LookAtFiles(moment);
    return moment;
}

} // namespace chaos
