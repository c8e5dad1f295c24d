#include "ServiceBuses.h"

#include "World.h"
#include "record/Recording.h"
#include "record/StackProgram.h"
#include "run/RunReader.h"

namespace sandbox
{

ServiceBuses::ServiceBuses(const InsideSettings& aSettings)
{
    if (aSettings.isLight && aSettings.recordFd < 0) {
        m_Facts = aSettings.factsFd;
        m_TestFile = aSettings.wholeTestFd;
        m_SystemFile = aSettings.wholeSystemFd;
    }
}

void ServiceBuses::Take(const Fact& aFact)
{
    if (m_Facts < 0 || aFact.kind != fact::kExec || (m_System && m_Test)) {
        return;
    }
    const std::string service = ServiceOf(aFact);
    if (!service.empty()) {
        Begin(m_System, BusSocket(), m_SystemFile);
    }
    if (service == "dbus-daemon") {
        Begin(m_Test, kTestBusSocket, m_TestFile);
    }
}

void ServiceBuses::Begin(std::optional<BusRecorder>& aRecorder, const std::string& aSocket, int aFile) const
{
    if (!aRecorder) {
        const Clock clock = ClockOf(ParseFacts(Recording::Content(m_Facts)));
        aRecorder.emplace(aSocket, BusRecord{PcapFile(-1, clock), PcapFile(aFile, clock), true});
    }
}

void ServiceBuses::End(bool aIsInnocent)
{
    for (std::optional<BusRecorder>* recorder : {&m_Test, &m_System}) {
        if (*recorder && aIsInnocent) {
            (*recorder)->Leave();
        }
        recorder->reset();
    }
}

} // namespace sandbox
