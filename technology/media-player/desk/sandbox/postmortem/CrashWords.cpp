#include "CrashWords.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>

namespace sandbox
{

namespace
{

constexpr size_t kMostFrames = 3;

bool IsNamed(const Frame& aFrame)
{
    return aFrame.function.rfind("0x", 0) != 0;
}

// What only passes a call on.
bool IsMachinery(const Frame& aFrame)
{
    const std::string name = aFrame.function.substr(aFrame.function.rfind("void ", 0) == 0 ? 5 : 0);
    constexpr const char* kSpaces[] = {"std::", "QtPrivate::", "testing::"};
    return std::any_of(std::begin(kSpaces), std::end(kSpaces),
                       [&](const char* aSpace) { return name.rfind(aSpace, 0) == 0; });
}

// The best kind of frames that there is.
std::vector<Frame> Tellable(const ProcessLife& aLife)
{
    const auto isOwn = [&](const Frame& aFrame) {
        return std::filesystem::path(aFrame.file).filename() == aLife.name && !IsMachinery(aFrame);
    };
    const std::function<bool(const Frame&)> kinds[] = {
        [&](const Frame& aFrame) { return isOwn(aFrame) && !aFrame.place.empty(); },
        [&](const Frame& aFrame) { return isOwn(aFrame) && IsNamed(aFrame); }, IsNamed,
        [](const Frame&) { return true; }};
    for (const auto& isMeant : kinds) {
        std::vector<Frame> frames;
        std::copy_if(aLife.crash.begin(), aLife.crash.end(), std::back_inserter(frames), isMeant);
        if (!frames.empty()) {
            return frames;
        }
    }
    return {};
}

// A test case is called by nobody who matters.
bool EndsTale(const Frame& aFrame)
{
    return aFrame.function.find("::TestBody()") != std::string::npos;
}

} // namespace

std::string CrashWords(const ProcessLife& aLife)
{
    const std::vector<Frame> frames = Tellable(aLife);
    std::string words;
    for (size_t i = 0; i < frames.size() && i < kMostFrames; ++i) {
        words += (words.empty() ? "in " : ", from ") + FrameText(frames[i]);
        if (EndsTale(frames[i])) {
            break;
        }
    }
    return words;
}

} // namespace sandbox
