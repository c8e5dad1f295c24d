#include "TimelineFiles.h"

#include "../Posix.h"
#include "ChromeTrace.h"
#include "TimelinePage.h"

#include <cstdio>
#include <filesystem>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

constexpr const char* kRecording = ".recording";

bool Replace(const std::string& aFile, const std::string& aText, std::string& aProblemFile)
{
    const std::string next = aFile + ".new";
    if (aFile.empty() || (WriteTextFile(next, aText) && rename(next.c_str(), aFile.c_str()) == 0)) {
        return true;
    }
    aProblemFile = aFile;
    return false;
}

} // namespace

std::string ChooseTimelineFiles(const std::string& aFile, TimelineFiles& aFiles)
{
    std::error_code error;
    const fs::path file = fs::absolute(aFile, error).lexically_normal();
    const std::string extension = file.extension().string();
    if (!file.has_filename()) {
        return "needs the file to write";
    }
    if (extension == ".html") {
        aFiles.page = file.string();
    } else if (extension == ".json") {
        aFiles.trace = file.string();
    } else if (extension.empty()) {
        aFiles.page = file.string() + ".html";
        aFiles.trace = file.string() + ".json";
    } else {
        return "writes a page (FILE.html), a Chrome trace (FILE.json) or both (FILE without an extension), "
               "not " +
               file.filename().string();
    }
    aFiles.recording = file.string() + kRecording;
    return {};
}

std::string TimelineFilesOf(const std::string& aRecording, TimelineFiles& aFiles)
{
    std::error_code error;
    fs::path folder = fs::absolute(aRecording, error).lexically_normal();
    if (!folder.has_filename()) {
        folder = folder.parent_path();
    }
    return folder.extension() == kRecording && fs::is_directory(folder, error)
               ? ChooseTimelineFiles(folder.replace_extension().string(), aFiles)
               : "needs the folder FILE.recording that a run with --timeline FILE has left";
}

bool WriteTimeline(const TimelineFiles& aFiles, const Run& aRun, const std::vector<std::string>& aPostMortem,
                   std::string& aProblemFile)
{
    const std::string trace = ChromeTrace(aRun, aPostMortem);
    return Replace(aFiles.trace, trace, aProblemFile) &&
           Replace(aFiles.page, aFiles.page.empty() ? "" : TimelinePage(trace), aProblemFile);
}

void RemoveTimeline(const TimelineFiles& aFiles)
{
    for (const std::string& file : {aFiles.page, aFiles.trace}) {
        std::error_code error;
        fs::remove(file, error);
    }
}

} // namespace sandbox
