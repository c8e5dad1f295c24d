/// The time line of the run that mpl-sandbox makes.
#pragma once

#include "../record/Recording.h"
#include "../run/Run.h"
#include "TimelineFiles.h"

#include <string>
#include <vector>

namespace sandbox
{

class Timeline
{
public:
    enum class Kept { Always, AfterFailure };

    Timeline(TimelineFiles aFiles, Kept aKept) : m_Files(std::move(aFiles)), m_Kept(aKept) {}

    /// From then on there is a file that says that the run was cut off, until a better one takes its place.
    /// False, after a message, when that can't be written, or when the recording could not be made.
    bool Begin(const Recording& aRecording, bool aIsMade) const;

    /// Writes what is to be kept of the run that has ended, and then removes its recording.
    void Finish(const Recording& aRecording, const Run& aRun,
                const std::vector<std::string>& aPostMortem) const;

    /// Says so, with errno. False.
    static bool CantWrite(const std::string& aFile);

private:
    TimelineFiles m_Files;
    Kept m_Kept = Kept::Always;
};

/// Whatever is there of it.
Run ReadRecording(const Recording& aRecording);

/// Writes the time line of a run whose recording was left. The status to end with.
int WriteTimelineFrom(const std::string& aRecording);

} // namespace sandbox
