#include "ProcFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <memory>

namespace MPL::Detail
{

namespace
{

struct CloseFolder {
    void operator()(DIR* aFolder) const { closedir(aFolder); }
};

// A file of a process as a path below /proc.
class Path
{
public:
    Path(pid_t aPid, std::string_view aFile)
    {
        char* end = std::to_chars(m_Text.begin(), m_Text.end(), aPid).ptr;
        *std::copy(aFile.begin(), aFile.end(), end) = '\0';
    }

    const char* Text() const { return m_Text.data(); }

private:
    std::array<char, 32> m_Text;
};

} // namespace

ProcFolder::ProcFolder() : m_Fd(open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

ProcFolder::~ProcFolder()
{
    if (m_Fd >= 0) {
        close(m_Fd);
    }
}

std::vector<pid_t> ProcFolder::Pids() const
{
    std::vector<pid_t> pids;
    const std::unique_ptr<DIR, CloseFolder> folder(opendir("/proc"));
    while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
        const std::string_view name(entry->d_name);
        pid_t pid = -1;
        if (std::from_chars(name.begin(), name.end(), pid).ec == std::errc()) {
            pids.push_back(pid);
        }
    }
    return pids;
}

std::string_view ProcFolder::Read(pid_t aPid, std::string_view aFile)
{
    const int fd = openat(m_Fd, Path(aPid, aFile).Text(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return {};
    }
    const ssize_t size = read(fd, m_Buffer.data(), m_Buffer.size());
    close(fd);
    return {m_Buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

std::string_view ProcFolder::ReadLink(pid_t aPid, std::string_view aLink)
{
    const ssize_t size = readlinkat(m_Fd, Path(aPid, aLink).Text(), m_Buffer.data(), m_Buffer.size());
    return {m_Buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

} // namespace MPL::Detail
