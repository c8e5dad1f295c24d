/// What the kernel says of the processes in /proc, read without a heap block or a needless system call: a
/// look-up asks this of every process of the machine.
#pragma once

#include <sys/types.h>

#include <array>
#include <string_view>
#include <vector>

namespace MPL::Detail
{

class ProcFolder
{
public:
    ProcFolder();
    ~ProcFolder();
    ProcFolder(const ProcFolder&) = delete;
    ProcFolder& operator=(const ProcFolder&) = delete;

    /// All processes that can be seen. Empty when the folder can't be read.
    std::vector<pid_t> Pids() const;

    /// The beginning of a file of the process, or the target of a link, given by its name with a slash before
    /// it. Empty when the process is gone or doesn't show it. Valid until the next call.
    std::string_view Read(pid_t aPid, std::string_view aFile);
    std::string_view ReadLink(pid_t aPid, std::string_view aLink);

private:
    int m_Fd;
    std::array<char, 16384> m_Buffer;
};

} // namespace MPL::Detail
