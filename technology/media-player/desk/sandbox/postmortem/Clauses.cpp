#include "Clauses.h"

#include "../Posix.h"
#include "BusClauses.h"
#include "EndClauses.h"
#include "Times.h"

#include <algorithm>

namespace sandbox
{

namespace
{

std::string Title(const Service& aService)
{
    const std::string start = aService.starts > 1 ? ", start " + std::to_string(aService.start) + " of " +
                                                        std::to_string(aService.starts)
                                                  : std::string();
    return aService.name + " (pid " + std::to_string(aService.life->id) + start + ")";
}

std::string Beginning(const Service& aService)
{
    if (aService.life == nullptr) {
        return (aService.name.empty() ? "a program for " + aService.busName : aService.name) +
               " was never started";
    }
    const std::string time = " at " + Seconds(aService.life->span.begin);
    return aService.life->problem.empty() ? Title(aService) + " started" + time
                                          : aService.name + " could not be run" + time + ": " +
                                                aService.life->problem + " (" + aService.life->path + ")";
}

// Nothing to be said of a program that never ran.
template <typename Function>
void AddOfRunning(const Run& aRun, const Service& aService, Function aClause, std::string& aLine)
{
    const bool hasRun = aService.life != nullptr && aService.life->problem.empty();
    if (const std::string clause = hasRun ? aClause(aRun, aService) : std::string(); !clause.empty()) {
        aLine += ", " + clause;
    }
}

std::string LastLine(const Run& aRun, const Service& aService)
{
    constexpr size_t kLongest = 200;
    const ProcessLife& life = *aService.life;
    const auto last = std::find_if(aRun.log.rbegin(), aRun.log.rend(), [&](const LogLine& aLine) {
        return aLine.process == life.service && aLine.time >= life.span.begin &&
               FindProcess(aRun, life.id, aLine.time) == &life;
    });
    if (last == aRun.log.rend()) {
        return {};
    }
    const size_t name = last->text.find(": ");
    const std::string text = name == std::string::npos ? last->text : last->text.substr(name + 2);
    return "; its last line: \"" + text.substr(0, kLongest) + (text.size() > kLongest ? "…\"" : "\"");
}

} // namespace

// In the order in which a service comes up and goes.
std::string WordsFor(const Run& aRun, const Service& aService)
{
    std::string line = Beginning(aService);
    for (const auto& clause : {BusClause, NameClause, ObjectClause, EndClause}) {
        AddOfRunning(aRun, aService, clause, line);
    }
    if (const std::string unit = UnitClause(aService); !unit.empty()) {
        line += ", " + unit;
    }
    return line + (aService.life != nullptr ? LastLine(aRun, aService) : std::string());
}

} // namespace sandbox
