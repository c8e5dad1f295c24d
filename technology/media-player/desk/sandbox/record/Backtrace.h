/// Where a thread is, and who called it there.
#pragma once

#include "Libdw.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace sandbox
{

class Backtrace
{
public:
    /// Of a thread that this one traces and that stands still; that takes about a millisecond. Empty where
    /// libdw is missing.
    Backtrace(pid_t aProcess, pid_t aThread);
    ~Backtrace();
    Backtrace(const Backtrace&) = delete;
    Backtrace& operator=(const Backtrace&) = delete;

    bool IsEmpty() const { return m_Frames.empty(); }

    /// Of each frame, innermost first, the file of the program or library, the function or the address in the
    /// file, and the line as "file.cpp:12" when it is known. The process may be gone by now. Reads debug
    /// information, which takes its time.
    std::vector<std::string> Names() const;

private:
    void AppendNames(Dwarf_Addr aAddress, std::vector<std::string>& aNames) const;

    const Libdw* m_Libdw = Libdw::Get();
    Dwfl_Callbacks m_Callbacks = {};
    Dwfl* m_Dwfl = nullptr;
    std::vector<Dwarf_Addr> m_Frames;
};

} // namespace sandbox
