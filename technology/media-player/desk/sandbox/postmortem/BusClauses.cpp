#include "BusClauses.h"

#include "Times.h"

#include <algorithm>

namespace sandbox
{

namespace
{

constexpr Moment kLastPause = 2000000000;  // after which the library does not look again
constexpr Moment kLatestNews = 5000000000; // of a bus, which a machine with much to do hears late
constexpr Moment kLookup = 500000000;      // that begins before the library tells of it

const Connection* ConnectionOn(const Service& aService, Bus aBus)
{
    const auto found = std::find_if(aService.connections.begin(), aService.connections.end(),
                                    [&](const Connection* aKnown) { return aKnown->bus == aBus; });
    return found != aService.connections.end() ? *found : nullptr;
}

// Whose connection it was can't be asked any more once it is gone.
bool MayHaveJoined(const Run& aRun, const ProcessLife& aLife)
{
    // Once the program has ended the recorders themselves connect, to say so.
    const ProcessLife* program = FindProcess(aRun, aRun.program, aRun.end);
    const Moment end =
        std::min(aLife.span.end + kLatestNews, program != nullptr ? program->span.end : aRun.end);
    return std::any_of(aRun.connections.begin(), aRun.connections.end(), [&](const Connection& aConnection) {
        return aConnection.process == 0 && aConnection.span.begin >= aLife.span.begin &&
               aConnection.span.begin <= end;
    });
}

// A bus may forbid to look at what others send.
bool IsSeen(const Run& aRun, Bus aBus)
{
    return std::any_of(aRun.calls.begin(), aRun.calls.end(),
                       [&](const Call& aCall) { return aCall.bus == aBus; });
}

// The last time that this connection asked for the service's name.
const Call* RequestOf(const Run& aRun, const Service& aService, const Connection& aConnection)
{
    const auto found = std::find_if(aRun.calls.rbegin(), aRun.calls.rend(), [&](const Call& aCall) {
        return aCall.bus == aConnection.bus && aCall.from == aConnection.name &&
               aCall.member == "RequestName" && aCall.request.find('"' + aService.busName + '"') == 0;
    });
    return found != aRun.calls.rend() ? &*found : nullptr;
}

const NameOwnership* OwnershipOf(const Run& aRun, const Service& aService, const Connection& aConnection)
{
    const auto found = std::find_if(aRun.names.begin(), aRun.names.end(), [&](const NameOwnership& aName) {
        return aName.bus == aConnection.bus && aName.owner == aConnection.name &&
               aName.name == aService.busName;
    });
    return found != aRun.names.end() ? &*found : nullptr;
}

// "another process", when who it was is not known.
std::string OwnerAt(const Run& aRun, const Service& aService, Moment aTime)
{
    std::string owner;
    for (const NameOwnership& name : aRun.names) {
        if (name.bus == aService.bus && name.name == aService.busName && name.span.begin <= aTime &&
            aTime <= name.span.end) {
            owner = ProcessTitle(aRun, name.process, aTime);
        }
    }
    return owner.empty() ? "another process" : owner;
}

std::string OwnedClause(const Service& aService, const NameOwnership& aName)
{
    std::string owned = "owned " + aService.busName + " from " + Seconds(aName.span.begin);
    const bool isLate = aService.wait != nullptr && aService.wait->what == FailedWait::For::Name;
    if (!isLate) {
        return owned;
    }
    return owned + (aName.span.begin > aService.wait->span.end - kLastPause
                        ? ", too late for the wait that ended at " + Seconds(aService.wait->span.end)
                        : " to " + Seconds(aName.span.end));
}

bool IsIntrospection(const Service& aService, const std::string& aOwner, const Call& aCall)
{
    return aCall.member == "Introspect" && aCall.bus == aService.bus &&
           (aCall.to == aService.busName || aCall.to == aOwner) &&
           aCall.span.begin >= aService.wait->span.begin - kLookup &&
           aCall.span.begin <= aService.wait->span.end;
}

// What became of the questions for its objects, in the worst case.
std::string IntrospectionClause(const Run& aRun, const Service& aService, const std::string& aOwner)
{
    std::string unanswered;
    for (const Call& call : aRun.calls) {
        if (!IsIntrospection(aService, aOwner, call)) {
            continue;
        }
        const bool isUnknown = call.error.find(".UnknownObject") != std::string::npos;
        if (call.state == Call::State::Failed && !isUnknown) {
            return "answered introspection of " + call.path + " with the error " + call.error + ": " +
                   call.reply;
        }
        if (call.state == Call::State::NoReply) {
            unanswered = "no answer of it to introspection of " + call.path + " was seen";
        }
    }
    return unanswered;
}

} // namespace

std::string BusClause(const Run& aRun, const Service& aService)
{
    if (aService.connections.empty()) {
        const bool isKnown = !aRun.connections.empty() && !MayHaveJoined(aRun, *aService.life);
        return isKnown && aService.name != kBusDaemon ? "joined no bus" : std::string();
    }
    const Connection* meant = ConnectionOn(aService, aService.bus);
    const Connection& joined = meant != nullptr ? *meant : *aService.connections.front();
    const bool isWrong = meant == nullptr && aService.wait != nullptr;
    return std::string("joined the ") + WordOf(joined.bus) + " as " + joined.name + " at " +
           Seconds(joined.span.begin) +
           (isWrong ? std::string(" and not the ") + WordOf(aService.bus) + ", where it was waited for"
                    : std::string());
}

std::string NameClause(const Run& aRun, const Service& aService)
{
    const Connection* connection = ConnectionOn(aService, aService.bus);
    if (aService.busName.empty() || connection == nullptr || !IsSeen(aRun, aService.bus)) {
        return {};
    }
    if (const NameOwnership* owned = OwnershipOf(aRun, aService, *connection); owned != nullptr) {
        return OwnedClause(aService, *owned);
    }
    const Call* request = RequestOf(aRun, aService, *connection);
    return request == nullptr ? "never asked for " + aService.busName
                              : "asked for " + aService.busName + " at " + Seconds(request->span.begin) +
                                    ", which " + OwnerAt(aRun, aService, request->span.begin) + " owned";
}

std::string ObjectClause(const Run& aRun, const Service& aService)
{
    const Connection* connection = ConnectionOn(aService, aService.bus);
    const bool isOwner = connection != nullptr && OwnershipOf(aRun, aService, *connection) != nullptr;
    if (aService.wait == nullptr || !isOwner) {
        return {};
    }
    if (aService.wait->what == FailedWait::For::OneObject) {
        return "had " + std::to_string(aService.wait->found) + " objects where there is to be one";
    }
    if (aService.wait->what != FailedWait::For::Object) {
        return {};
    }
    const std::string answer = IntrospectionClause(aRun, aService, connection->name);
    const int found = aService.wait->found;
    return !answer.empty()
               ? answer
               : "had " + (found == 0 ? "none" : std::to_string(found)) +
                     " of the objects that were waited for up to " + Seconds(aService.wait->span.end);
}

} // namespace sandbox
