#include "Observer.h"

#include "Posix.h"
#include "postmortem/PostMortem.h"
#include "run/RunReader.h"

#include <limits>

namespace sandbox
{

namespace
{

void Print(const std::vector<std::string>& aLines)
{
    std::string text;
    for (const std::string& line : aLines) {
        text += (text.empty() ? "" : "\n  ") + line;
    }
    if (!text.empty()) {
        Say(text);
    }
}

} // namespace

bool Observer::Begin(const Options& aOptions)
{
    if (!aOptions.timeline.recording.empty()) {
        m_Timeline.emplace(aOptions.timeline, aOptions.isTimelineOfFailure ? Timeline::Kept::AfterFailure
                                                                           : Timeline::Kept::Always);
    }
    const bool isMade = m_Recording.Make(aOptions.timeline.recording);
    m_Recording.Facts().Write(fact::kCommand, aOptions.command);
    if (m_Timeline && !m_Timeline->Begin(m_Recording, isMade)) {
        return false;
    }
    if (m_Timeline) {
        m_Keeper.TakeTerminals();
    }
    const size_t most = m_Timeline ? std::numeric_limits<size_t>::max() : kMostOutputInMemory;
    if (isMade && !m_Keeper.Start(m_Recording.Facts(), most, [this] { Finish(); })) {
        m_Recording = Recording();
        return !m_Timeline || Timeline::CantWrite("a process of its own");
    }
    return true;
}

void Observer::Tell(InsideSettings& aSettings) const
{
    aSettings.isLight = !m_Timeline;
    aSettings.factsFd = m_Recording.Facts().Get();
    aSettings.wholeTestFd = m_Recording.TestBus();
    aSettings.wholeSystemFd = m_Recording.SystemBus();
}

void Observer::End(int aStatus)
{
    m_Recording.Facts().Write(fact::kEnd, {std::to_string(aStatus)});
    m_Keeper.WaitForEnd();
}

// Most runs end well, and for those the facts are enough.
void Observer::Finish() const
{
    if (!m_Timeline && !NeedsPostMortem(ReadRun({m_Recording.ReadFacts(), {}, {}}))) {
        return;
    }
    const Run run = ReadRecording(m_Recording);
    const std::vector<std::string> lines = PostMortem(run);
    if (m_Timeline) {
        m_Timeline->Finish(m_Recording, run, lines);
    }
    Print(lines);
}

} // namespace sandbox
