#include "EndClauses.h"

#include "../Posix.h"
#include "CrashWords.h"
#include "Times.h"

#include <algorithm>
#include <csignal>

namespace sandbox
{

namespace
{

constexpr Moment kTimeToEnd = 2000000000;

std::string SenderOf(const ProcessLife& aLife, const SentSignal& aSignal)
{
    return aSignal.sender == aLife.id    ? "itself"
           : !aSignal.senderName.empty() ? aSignal.senderName
                                         : "the sandbox";
}

const SentSignal* LastSignal(const ProcessLife& aLife, int aNumber)
{
    const auto found = std::find_if(aLife.signals.rbegin(), aLife.signals.rend(),
                                    [&](const SentSignal& aSignal) { return aSignal.number == aNumber; });
    return found != aLife.signals.rend() ? &*found : nullptr;
}

// It had time enough to mind it.
std::string IgnoredClause(const ProcessLife& aLife)
{
    const auto ignored =
        std::find_if(aLife.signals.begin(), aLife.signals.end(), [&](const SentSignal& aSignal) {
            return aSignal.number == SIGTERM && aLife.span.end - aSignal.time > kTimeToEnd;
        });
    return ignored == aLife.signals.end()
               ? std::string()
               : "ignored SIGTERM from " + SenderOf(aLife, *ignored) + " at " + Seconds(ignored->time) + ", ";
}

std::string SignalClause(const ProcessLife& aLife)
{
    const SentSignal* sent = LastSignal(aLife, aLife.end.number);
    const std::string end = SignalText(aLife.end.number) + " at " + Seconds(aLife.span.end);
    return sent != nullptr && sent->sender != aLife.id
               ? "was ended by " + end + " from " + SenderOf(aLife, *sent)
               : "crashed with " + end + (sent != nullptr ? ", which it sent itself" : "") +
                     (aLife.crash.empty() ? "" : ", " + CrashWords(aLife));
}

std::string ExitClause(const ProcessLife& aLife)
{
    const SentSignal* asked = LastSignal(aLife, SIGTERM);
    return "exited with status " + std::to_string(aLife.end.number) + " at " + Seconds(aLife.span.end) +
           (asked != nullptr ? ", as " + SenderOf(aLife, *asked) + " asked" : "");
}

} // namespace

std::string EndClause(const Run&, const Service& aService)
{
    const ProcessLife& life = *aService.life;
    const std::string ignored = IgnoredClause(life);
    if (life.end.how == ProcessEnd::How::Signal) {
        return ignored + SignalClause(life);
    }
    if (life.end.how == ProcessEnd::How::Exit) {
        return ignored + ExitClause(life);
    }
    return ignored + (life.span.isOpen ? "still ran at the end"
                                       : "ended in an unknown way at " + Seconds(life.span.end));
}

std::string UnitClause(const Service& aService)
{
    std::string clause;
    if (aService.job != nullptr) {
        clause = "systemd ended the job of " + aService.job->unit + " at " + Seconds(aService.job->time) +
                 " with the result \"" + aService.job->result + "\"";
    }
    if (aService.unit != nullptr) {
        const Unit& unit = *aService.unit;
        clause +=
            (clause.empty() ? "" : ", ") + ("its unit " + unit.name) +
            (unit.result == "success" ? " is " + unit.state : ": Failed with result '" + unit.result + "'.");
    }
    return clause;
}

} // namespace sandbox
