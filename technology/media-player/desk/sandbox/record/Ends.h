/// How processes end.
#pragma once

#include "../Posix.h"
#include "CrashWatch.h"
#include "Fact.h"

#include <poll.h>

#include <map>
#include <vector>

namespace sandbox
{

/// Puts down the end of each process that is followed, with its status where the kernel tells it to somebody
/// here: of own children always, of the lifecycle manager's by what that is told, of others when nobody has
/// asked before.
class Ends
{
public:
    /// `aFirst` is a child, and the one whose end is awaited.
    Ends(const FactSink& aFacts, CrashWatch& aCrashes, pid_t aFirst);

    void Follow(pid_t aProcess);

    bool HasFirstEnded() const { return m_HasFirstEnded; }
    /// As a shell counts it.
    int FirstStatus() const { return m_FirstStatus; }

    void AddTo(std::vector<pollfd>& aEvents) const;
    /// To be called after the events were waited for, with those that came.
    void Look(const std::vector<pollfd>& aEvents);

private:
    void Reap();
    void TakeManagersWord();
    void NoteStranger(pid_t aProcess);
    void Note(pid_t aProcess, const char* aHow, int aNumber);

    FactSink m_Facts;
    CrashWatch& m_Crashes;
    pid_t m_First;
    bool m_HasFirstEnded = false;
    int m_FirstStatus = 0;
    UniqueFd m_Manager; ///< what the lifecycle manager tells
    std::map<pid_t, UniqueFd> m_Followed;
};

} // namespace sandbox
