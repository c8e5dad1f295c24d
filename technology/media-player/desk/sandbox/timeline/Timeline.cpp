#include "Timeline.h"

#include "../Posix.h"
#include "../run/RunReader.h"

#include <cerrno>

namespace sandbox
{

namespace
{

Run ReadRecording(const Recording& aRecording)
{
    return ReadRun({ParseFacts(Recording::Content(aRecording.Facts().Get())),
                    Recording::Content(aRecording.TestBus()), Recording::Content(aRecording.SystemBus())});
}

bool CantWrite(const std::string& aFile)
{
    Say(WithErrno("the time line can't be written to " + aFile, errno));
    return false;
}

std::string HowToFinish(const TimelineFiles& aFiles)
{
    return "mpl-sandbox --timeline-from " + aFiles.recording;
}

} // namespace

bool Timeline::Begin(const TimelineFiles& aFiles, Kept aKept, const std::vector<std::string>& aCommand)
{
    m_Files = aFiles;
    m_Kept = aKept;
    if (!m_Recording.Make(aFiles.recording)) {
        return CantWrite(aFiles.recording);
    }
    m_Recording.Facts().Write(fact::kCommand, aCommand);
    std::string file;
    if (!WriteTimeline(m_Files, ReadRecording(m_Recording),
                       {"What was seen of the run is still to be written here: " + HowToFinish(m_Files)},
                       file)) {
        m_Recording.Remove();
        return CantWrite(file);
    }
    m_Keeper.TakeTerminals();
    if (!m_Keeper.Start(m_Recording.Facts(), [this] { Finish(); })) {
        m_Recording.Remove();
        return CantWrite("a process of its own");
    }
    return true;
}

void Timeline::Tell(InsideSettings& aSettings) const
{
    aSettings.factsFd = m_Recording.Facts().Get();
    aSettings.wholeTestFd = m_Recording.TestBus();
    aSettings.wholeSystemFd = m_Recording.SystemBus();
}

void Timeline::End(int aStatus)
{
    m_Recording.Facts().Write(fact::kEnd, {std::to_string(aStatus)});
    m_Keeper.WaitForEnd();
}

void Timeline::Finish() const
{
    const Run run = ReadRecording(m_Recording);
    std::string file;
    if (m_Kept == Kept::AfterFailure && run.result == RunResult::Passed) {
        RemoveTimeline(m_Files);
    } else if (!WriteTimeline(m_Files, run, {}, file)) {
        CantWrite(file);
        Say("what was seen of the run is kept; when there is room, run " + HowToFinish(m_Files));
        return;
    }
    m_Recording.Remove();
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
    if (!WriteTimeline(files, ReadRecording(recording), {}, file)) {
        CantWrite(file);
        return kExitNoSandbox;
    }
    recording.Remove();
    return 0;
}

} // namespace sandbox
