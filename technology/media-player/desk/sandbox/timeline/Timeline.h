/// The time line of the run that mpl-sandbox makes.
#pragma once

#include "../InsideSettings.h"
#include "../record/Keeper.h"
#include "../record/Recording.h"
#include "TimelineFiles.h"

#include <string>
#include <vector>

namespace sandbox
{

class Timeline
{
public:
    enum class Kept { Always, AfterFailure };

    /// Begins to record a run of that command. From then on there is a file that says that the run was cut
    /// off, until a better one takes its place. False, after a message, when that can't be written.
    bool Begin(const TimelineFiles& aFiles, Kept aKept, const std::vector<std::string>& aCommand);

    /// What the half inside has to know. No-op when nothing is recorded.
    void Tell(InsideSettings& aSettings) const;

    /// What the sandbox is to have as stdout and stderr.
    int Out() const { return m_Keeper.Out(); }
    int Err() const { return m_Keeper.Err(); }

    /// The sandbox has ended with that status. Blocks until the time line is written.
    void End(int aStatus);

private:
    void Finish() const;

    TimelineFiles m_Files;
    Kept m_Kept = Kept::Always;
    Recording m_Recording;
    Keeper m_Keeper;
};

/// Writes the time line of a run whose recording was left. The status to end with.
int WriteTimelineFrom(const std::string& aRecording);

} // namespace sandbox
