#include "Alarm.h"

#include "../Posix.h"
#include "StackProgram.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace sandbox
{

namespace
{

const std::string& Field(const Fact& aFact, size_t aIndex)
{
    static const std::string kNone;
    return aIndex < aFact.fields.size() ? aFact.fields[aIndex] : kNone;
}

constexpr int kAskToEnd[] = {SIGTERM, SIGKILL, SIGINT, SIGQUIT, SIGHUP};

} // namespace

void Alarm::Take(const Fact& aFact)
{
    const auto service = m_Services.find(Field(aFact, aFact.kind == fact::kKill ? 1 : 0));
    if (aFact.kind == fact::kRoot) {
        m_Root = Field(aFact, 0);
    } else if (aFact.kind == fact::kExec) {
        TakeExec(aFact);
    } else if (service == m_Services.end()) {
        return;
    } else if (aFact.kind == fact::kKill) {
        if (Field(aFact, 0) != Field(aFact, 1)) {
            service->second.signals.insert(std::atoi(Field(aFact, 2).c_str()));
        }
    } else if (aFact.kind == fact::kExit) {
        service->second.exitStatus = Field(aFact, 1);
    } else if (aFact.kind == fact::kGone) {
        TakeEnd(service->first, Field(aFact, 1), Field(aFact, 2));
        m_Services.erase(service);
    }
}

// What a service becomes is still that service.
void Alarm::TakeExec(const Fact& aFact)
{
    const std::string name = ServiceOf(aFact);
    if (!name.empty() && Field(aFact, 1) != m_Root) {
        m_Services.insert({Field(aFact, 0), {name, {}, {}}});
    }
}

bool Alarm::WasAsked(const Service& aService, int aSignal)
{
    return aService.signals.count(aSignal) != 0 ||
           std::any_of(std::begin(kAskToEnd), std::end(kAskToEnd),
                       [&](int aAsking) { return aService.signals.count(aAsking) != 0; });
}

// Its parent may have been told before anybody could look.
void Alarm::TakeEnd(const std::string& aProcess, const std::string& aHow, const std::string& aNumber)
{
    const Service& service = m_Services[aProcess];
    const bool hasExited = aHow == "exit" || (aHow.empty() && !service.exitStatus.empty());
    const std::string status = aHow == "exit" ? aNumber : service.exitStatus;
    const int signal = aHow == "signal" ? std::atoi(aNumber.c_str()) : 0;
    if (WasAsked(service, signal) || (hasExited && status == "0")) {
        return;
    }
    const std::string how =
        hasExited ? "with exit status " + status : "by " + (signal != 0 ? SignalText(signal) : "a signal");
    m_Say(service.name + " (pid " + aProcess + ") ended " + how + ", and nobody had asked it to");
}

} // namespace sandbox
