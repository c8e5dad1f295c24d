#include "Backtrace.h"

#include <cxxabi.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

namespace sandbox
{

namespace
{

constexpr size_t kMostFrames = 64; // of an endless recursion

struct Walk {
    const Libdw& libdw;
    std::vector<Dwarf_Addr>& frames;
};

// What a caller is to return to is behind the call.
int TakeFrame(Dwfl_Frame* aFrame, void* aWalk)
{
    const Walk& walk = *static_cast<const Walk*>(aWalk);
    Dwarf_Addr address = 0;
    bool isExact = false;
    if (!walk.libdw.framePc(aFrame, &address, &isExact)) {
        return DWARF_CB_ABORT;
    }
    walk.frames.push_back(isExact ? address : address - 1);
    return walk.frames.size() < kMostFrames ? DWARF_CB_OK : DWARF_CB_ABORT;
}

std::string Readable(const char* aSymbol)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(aSymbol, nullptr, nullptr, &status), &std::free);
    return status == 0 ? name.get() : aSymbol;
}

std::string Hexadecimal(Dwarf_Addr aNumber)
{
    char text[32];
    std::snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(aNumber));
    return text;
}

} // namespace

Backtrace::Backtrace(pid_t aProcess, pid_t aThread)
{
    if (m_Libdw == nullptr) {
        return;
    }
    unsetenv("DEBUGINFOD_URLS"); // nothing is fetched
    m_Callbacks.find_elf = m_Libdw->linuxProcFindElf;
    m_Callbacks.find_debuginfo = m_Libdw->standardFindDebuginfo;
    m_Dwfl = m_Libdw->begin(&m_Callbacks);
    Walk walk = {*m_Libdw, m_Frames};
    if (m_Dwfl != nullptr && m_Libdw->linuxProcReport(m_Dwfl, aProcess) == 0 &&
        m_Libdw->reportEnd(m_Dwfl, nullptr, nullptr) == 0 &&
        m_Libdw->linuxProcAttach(m_Dwfl, aProcess, true) == 0) {
        m_Libdw->getthreadFrames(m_Dwfl, aThread, TakeFrame, &walk);
    }
}

Backtrace::~Backtrace()
{
    if (m_Dwfl != nullptr) {
        m_Libdw->end(m_Dwfl);
    }
}

std::vector<std::string> Backtrace::Names() const
{
    std::vector<std::string> names;
    for (const Dwarf_Addr frame : m_Frames) {
        AppendNames(frame, names);
    }
    return names;
}

void Backtrace::AppendNames(Dwarf_Addr aAddress, std::vector<std::string>& aNames) const
{
    Dwfl_Module* module = m_Libdw->addrmodule(m_Dwfl, aAddress);
    if (module == nullptr) {
        aNames.insert(aNames.end(), {"", Hexadecimal(aAddress), ""});
        return;
    }
    Dwarf_Addr start = 0;
    const char* file =
        m_Libdw->moduleInfo(module, nullptr, &start, nullptr, nullptr, nullptr, nullptr, nullptr);
    const char* symbol = m_Libdw->moduleAddrname(module, aAddress);
    Dwfl_Line* line = m_Libdw->moduleGetsrc(module, aAddress);
    int number = 0;
    const char* source =
        line != nullptr ? m_Libdw->lineinfo(line, nullptr, &number, nullptr, nullptr, nullptr) : nullptr;
    aNames.insert(
        aNames.end(),
        {file != nullptr ? file : "", symbol != nullptr ? Readable(symbol) : Hexadecimal(aAddress - start),
         source != nullptr ? std::filesystem::path(source).filename().string() + ":" + std::to_string(number)
                           : ""});
}

} // namespace sandbox
