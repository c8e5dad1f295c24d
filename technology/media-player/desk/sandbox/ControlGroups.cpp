#include "ControlGroups.h"

#include "Posix.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

// As the kernel names it in the unified hierarchy: "/user.slice/…".
std::string OwnGroupName()
{
    std::istringstream groups(ReadTextFile("/proc/self/cgroup"));
    for (std::string line; std::getline(groups, line);) {
        if (line.compare(0, 3, "0::") == 0) {
            return line.substr(3);
        }
    }
    return {};
}

// The group's folder below one mount of the hierarchy; empty when this mount shows another part of it.
std::string FolderBelow(const std::string& aMount, const std::string& aGroupName)
{
    // id, parent, device, root, mount point, …
    std::istringstream fields(aMount);
    std::string skipped;
    std::string root;
    std::string point;
    fields >> skipped >> skipped >> skipped >> root >> point;
    const fs::path below = fs::path(aGroupName).lexically_relative(root);
    if (below.empty() || *below.begin() == "..") {
        return {};
    }
    return below == "." ? point : (fs::path(point) / below).string();
}

// Groups are removed from the leaves up; the kernel refuses while a process is left in one.
bool RemoveTree(const std::string& aFolder)
{
    if (rmdir(aFolder.c_str()) == 0 || errno == ENOENT) {
        return true;
    }
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(aFolder, error)) {
        if (entry.is_directory(error)) {
            RemoveTree(entry.path().string());
        }
    }
    return rmdir(aFolder.c_str()) == 0 || errno == ENOENT;
}

} // namespace

std::string OwnGroup()
{
    const std::string name = OwnGroupName();
    std::istringstream mounts(ReadTextFile("/proc/self/mountinfo"));
    std::string folder;
    for (std::string line; !name.empty() && folder.empty() && std::getline(mounts, line);) {
        if (line.find(" - cgroup2 ") != std::string::npos) {
            folder = FolderBelow(line, name);
        }
    }
    return folder;
}

bool EndGroup(const std::string& aFolder, int aLimitMs)
{
    const long long end = NowMs() + aLimitMs;
    WriteTextFile(aFolder + "/cgroup.kill", "1");
    const UniqueFd events(open((aFolder + "/cgroup.events").c_str(), O_RDONLY | O_CLOEXEC));
    bool isEmpty = false;
    while (!RemoveTree(aFolder)) {
        const int obstacle = errno;
        if (isEmpty || NowMs() >= end) {
            errno = obstacle;
            return false;
        }
        // Reading arms the notification; the short limit covers a change between removal and reading.
        lseek(events.Get(), 0, SEEK_SET);
        isEmpty = ReadAll(events.Get()).find("populated 0") != std::string::npos;
        pollfd change = {events.Get(), POLLPRI, 0};
        poll(&change, 1, isEmpty ? 0 : 20);
    }
    return true;
}

} // namespace sandbox
