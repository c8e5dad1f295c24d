/// The files that a run's time line is written to.
#pragma once

#include "../run/Run.h"

#include <string>
#include <vector>

namespace sandbox
{

struct TimelineFiles {
    std::string page;      ///< empty: none
    std::string trace;     ///< empty: none
    std::string recording; ///< the folder with what is seen of a run, while it goes on
};

/// FILE.html is a page, FILE.json a Chrome trace, FILE without an extension stands for both. What is wrong
/// with the name otherwise; empty when nothing is.
std::string ChooseTimelineFiles(const std::string& aFile, TimelineFiles& aFiles);

/// Those whose recording that folder is. What is wrong otherwise; empty when nothing is.
std::string TimelineFilesOf(const std::string& aRecording, TimelineFiles& aFiles);

/// Each file is there as a whole or as it was. False, with errno and the file that it is about.
bool WriteTimeline(const TimelineFiles& aFiles, const Run& aRun, const std::vector<std::string>& aPostMortem,
                   std::string& aProblemFile);

void RemoveTimeline(const TimelineFiles& aFiles);

} // namespace sandbox
