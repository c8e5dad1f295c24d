#include "Timeline.h"

#include "../Posix.h"
#include "../postmortem/PostMortem.h"
#include "../run/RunReader.h"

#include <cerrno>

namespace sandbox
{

namespace
{

std::string HowToFinish(const TimelineFiles& aFiles)
{
    return "mpl-sandbox --timeline-from " + aFiles.recording;
}

} // namespace

Run ReadRecording(const Recording& aRecording)
{
    return ReadRun({aRecording.ReadFacts(), Recording::Content(aRecording.TestBus()),
                    Recording::Content(aRecording.SystemBus())});
}

bool Timeline::CantWrite(const std::string& aFile)
{
    Say(WithErrno("the time line can't be written to " + aFile, errno));
    return false;
}

bool Timeline::Begin(const Recording& aRecording, bool aIsMade) const
{
    if (!aIsMade) {
        return CantWrite(m_Files.recording);
    }
    std::string file;
    if (!WriteTimeline(m_Files, ReadRecording(aRecording),
                       {"What was seen of the run is still to be written here: " + HowToFinish(m_Files)},
                       file)) {
        aRecording.Remove();
        return CantWrite(file);
    }
    return true;
}

void Timeline::Finish(const Recording& aRecording, const Run& aRun,
                      const std::vector<std::string>& aPostMortem) const
{
    std::string file;
    if (m_Kept == Kept::AfterFailure && aRun.result == RunResult::Passed) {
        RemoveTimeline(m_Files);
    } else if (!WriteTimeline(m_Files, aRun, aPostMortem, file)) {
        CantWrite(file);
        Say("what was seen of the run is kept; when there is room, run " + HowToFinish(m_Files));
        return;
    }
    aRecording.Remove();
}

int WriteTimelineFrom(const std::string& aRecording)
{
    TimelineFiles files;
    if (const std::string problem = TimelineFilesOf(aRecording, files); !problem.empty()) {
        Say("--timeline-from " + problem + "; see mpl-sandbox --help");
        return kExitBadUsage;
    }
    Recording recording;
    std::string file = files.recording;
    if (!recording.Open(files.recording)) {
        Say(WithErrno("the recording " + files.recording + " can't be read", errno));
        return kExitNoSandbox;
    }
    const Run run = ReadRecording(recording);
    if (!WriteTimeline(files, run, PostMortem(run), file)) {
        Timeline::CantWrite(file);
        return kExitNoSandbox;
    }
    recording.Remove();
    return 0;
}

} // namespace sandbox
