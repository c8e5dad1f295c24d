#include "Speed.h"

#include "Preloading.h"
#include "World.h"

#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

constexpr double kHighestSpeed = 100;

// The one for programs with threads. Where Debian has it, and other distributions.
constexpr const char* kFaketimePlaces[] = {
    "/usr/lib/" MPL_LIBRARY_ARCHITECTURE "/faketime/libfaketimeMT.so.1",
    "/usr/lib/faketime/libfaketimeMT.so.1", "/usr/lib64/faketime/libfaketimeMT.so.1"};

bool IsProgram(const fs::directory_entry& aEntry)
{
    std::error_code error;
    return aEntry.is_regular_file(error) && access(aEntry.path().c_str(), X_OK) == 0 &&
           aEntry.path().string().find(".so") == std::string::npos;
}

} // namespace

double ParseSpeed(const std::string& aText)
{
    double speed = 0;
    const char* end = aText.data() + aText.size();
    const auto [rest, error] = std::from_chars(aText.data(), end, speed, std::chars_format::fixed);
    const bool isNumber = error == std::errc() && rest == end;
    return isNumber && speed >= 1 && speed <= kHighestSpeed ? speed : 0;
}

std::string FindFaketime()
{
    for (const char* place : kFaketimePlaces) {
        if (access(place, R_OK) == 0) {
            return place;
        }
    }
    return {};
}

std::string WhyNotAtSpeed(const std::string& aSpeed)
{
    return ", so it can't run at speed " + aSpeed + ": use --speed 1";
}

std::string ObstacleInStack(const std::string& aStackFolder)
{
    for (const char* part : {"/bin", "/test"}) {
        std::error_code error;
        for (const fs::directory_entry& entry :
             fs::recursive_directory_iterator(aStackFolder + part, error)) {
            const std::string obstacle =
                IsProgram(entry) ? ObstacleToPreloading(entry.path().string()) : std::string();
            if (!obstacle.empty()) {
                return "the stack's program " + entry.path().string() + " " + obstacle;
            }
        }
    }
    return {};
}

} // namespace sandbox
