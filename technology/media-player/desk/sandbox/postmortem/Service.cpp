#include "Service.h"

#include <algorithm>
#include <cctype>
#include <csignal>

namespace sandbox
{

namespace
{

constexpr int kWell = 2;

// Programs, units and bus names spell the same words in different ways.
std::string Letters(const std::string& aText)
{
    std::string letters;
    for (const char byte : aText.substr(0, aText.find(".service"))) {
        if (std::isalnum(static_cast<unsigned char>(byte)) != 0) {
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
        }
    }
    return letters;
}

bool AreAlike(const std::string& aProgram, const std::string& aName)
{
    return !aProgram.empty() && Letters(aName).find(Letters(aProgram)) != std::string::npos;
}

class Services
{
public:
    Services(const Run& aRun, const std::vector<FailedWait>& aWaits) : m_Run(aRun)
    {
        for (const ProcessLife& life : aRun.processes) {
            if (!life.service.empty() && !life.path.empty()) {
                ByName(life.service).starts++;
            }
        }
        for (const FailedWait& wait : aWaits) {
            m_LastWait = &wait;
            TakeWait(wait);
        }
        for (Service& service : m_Services) {
            ChooseLife(service);
            FindConnections(service);
            FindUnit(service);
        }
    }

    std::vector<Service> Sorted()
    {
        m_Services.erase(
            std::remove_if(m_Services.begin(), m_Services.end(),
                           [this](const Service& aService) { return IsBesideThePoint(aService); }),
            m_Services.end());
        std::stable_sort(
            m_Services.begin(), m_Services.end(),
            [](const Service& aLeft, const Service& aRight) { return Rank(aLeft) < Rank(aRight); });
        return m_Services;
    }

private:
    static int Rank(const Service& aService)
    {
        const bool isUnwell = aService.unit != nullptr || aService.job != nullptr ||
                              (aService.life != nullptr && EndedByItself(*aService.life));
        return aService.wait != nullptr ? 0 : isUnwell ? 1 : kWell;
    }

    // A bus that did what it is for is no service of its own; and what came up well after the last wait, as
    // in a tear-down, explains nothing.
    bool IsBesideThePoint(const Service& aService) const
    {
        const bool isLater = m_LastWait != nullptr && aService.life != nullptr &&
                             aService.life->span.begin > m_LastWait->span.end;
        return Rank(aService) == kWell && (isLater || aService.name == kBusDaemon);
    }

    Service& ByName(const std::string& aName)
    {
        const auto found = std::find_if(m_Services.begin(), m_Services.end(),
                                        [&](const Service& aService) { return aService.name == aName; });
        if (found != m_Services.end()) {
            return *found;
        }
        m_Services.emplace_back();
        m_Services.back().name = aName;
        return m_Services.back();
    }

    void TakeWait(const FailedWait& aWait)
    {
        const bool isOfProgram =
            aWait.what == FailedWait::For::Program || aWait.what == FailedWait::For::PrivateBus;
        Service& service = isOfProgram ? ByProgram(aWait.about) : ByBusName(aWait);
        if (service.wait != nullptr) {
            return;
        }
        service.wait = &aWait;
        if (!isOfProgram) {
            service.busName = aWait.about;
            service.bus = BusOf(aWait);
        }
    }

    Service& ByProgram(const std::string& aName)
    {
        const auto found = std::find_if(m_Services.begin(), m_Services.end(), [&](const Service& aService) {
            return Letters(aService.name) == Letters(aName);
        });
        return found != m_Services.end() ? *found : ByName(aName);
    }

    // Whose program is called alike; else who asked for that name; else who was started last.
    Service& ByBusName(const FailedWait& aWait)
    {
        const auto known = std::find_if(m_Services.begin(), m_Services.end(), [&](const Service& aService) {
            return aService.busName == aWait.about || AreAlike(aService.name, aWait.about);
        });
        if (known != m_Services.end()) {
            return *known;
        }
        const std::string asker = AskerFor(aWait.about);
        const std::string name = asker.empty() ? LastStarted(aWait) : asker;
        if (!name.empty()) {
            return ByName(name);
        }
        m_Services.emplace_back();
        return m_Services.back();
    }

    std::string AskerFor(const std::string& aBusName) const
    {
        for (const Call& call : m_Run.calls) {
            if (call.member != "RequestName" || call.request.find('"' + aBusName + '"') != 0) {
                continue;
            }
            const ProcessLife* asker = ProcessBehind(m_Run, call.bus, call.from, call.span.begin);
            if (asker != nullptr && !asker->service.empty()) {
                return asker->service;
            }
        }
        return {};
    }

    std::string LastStarted(const FailedWait& aWait) const
    {
        std::string name;
        for (const ProcessLife& life : m_Run.processes) {
            if (!life.service.empty() && life.service != kBusDaemon && life.span.begin <= aWait.span.begin) {
                name = life.service;
            }
        }
        const auto taken = std::find_if(m_Services.begin(), m_Services.end(),
                                        [&](const Service& aService) { return aService.name == name; });
        return taken != m_Services.end() && taken->busName.empty() ? name : std::string();
    }

    Bus BusOf(const FailedWait& aWait) const
    {
        for (const Call& call : m_Run.calls) {
            if ((call.member == "NameHasOwner" || call.member == "Introspect") &&
                (call.to == aWait.about || call.request == '"' + aWait.about + '"') &&
                call.span.begin <= aWait.span.end) {
                return call.bus;
            }
        }
        return Bus::Private;
    }

    // The last one that the wait was for; else one that ended by itself; else the last.
    void ChooseLife(Service& aService) const
    {
        int count = 0;
        for (const ProcessLife& life : m_Run.processes) {
            if (life.service != aService.name || life.service.empty() || life.path.empty()) {
                continue;
            }
            ++count;
            const bool isMeant = aService.wait != nullptr
                                     ? life.span.begin <= aService.wait->span.end
                                     : aService.life == nullptr || !EndedByItself(*aService.life);
            if (aService.life == nullptr || isMeant) {
                aService.life = &life;
                aService.start = count;
            }
        }
    }

    void FindConnections(Service& aService) const
    {
        for (const Connection& connection : m_Run.connections) {
            if (aService.life != nullptr && connection.process == aService.life->id &&
                FindProcess(m_Run, connection.process, connection.span.begin) == aService.life) {
                aService.connections.push_back(&connection);
            }
        }
        if (aService.wait == nullptr && !aService.connections.empty()) {
            aService.bus = aService.connections.front()->bus;
        }
        for (const NameOwnership& name : m_Run.names) {
            const bool isOwn = std::any_of(
                aService.connections.begin(), aService.connections.end(),
                [&](const Connection* aOwn) { return aOwn->bus == name.bus && aOwn->name == name.owner; });
            aService.busName = aService.busName.empty() && isOwn ? name.name : aService.busName;
        }
    }

    // What the manager says is about what it has started itself.
    void FindUnit(Service& aService) const
    {
        const bool isOfAnotherStart = aService.wait != nullptr &&
                                      aService.wait->what != FailedWait::For::Program &&
                                      aService.life != nullptr && aService.life->parentName != "systemd";
        if (isOfAnotherStart) {
            return;
        }
        const auto isOwn = [&](const std::string& aUnit) {
            return !aService.name.empty() && Letters(aUnit) == Letters(aService.name);
        };
        for (const Unit& unit : m_Run.units) {
            aService.unit = isOwn(unit.name) ? &unit : aService.unit;
        }
        for (const Job& job : m_Run.jobs) {
            aService.job = isOwn(job.unit) && job.result != "done" ? &job : aService.job;
        }
    }

    const Run& m_Run;
    const FailedWait* m_LastWait = nullptr;
    std::vector<Service> m_Services;
};

} // namespace

bool EndedByItself(const ProcessLife& aLife)
{
    const bool wasAsked =
        std::any_of(aLife.signals.begin(), aLife.signals.end(), [&](const SentSignal& aSignal) {
            return aSignal.sender != aLife.id &&
                   (aSignal.number == SIGTERM || aSignal.number == SIGKILL || aSignal.number == SIGINT ||
                    (aLife.end.how == ProcessEnd::How::Signal && aSignal.number == aLife.end.number));
        });
    return !aLife.problem.empty() || (!aLife.span.isOpen && !wasAsked &&
                                      !(aLife.end.how == ProcessEnd::How::Exit && aLife.end.number == 0));
}

std::vector<Service> ServicesOf(const Run& aRun, const std::vector<FailedWait>& aWaits)
{
    return Services(aRun, aWaits).Sorted();
}

} // namespace sandbox
