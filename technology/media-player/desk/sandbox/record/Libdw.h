/// elfutils' reader of stacks and debug information, loaded when something has crashed: each sandbox would
/// pay for it at its start otherwise.
#pragma once

#include <elfutils/libdwfl.h>

namespace sandbox
{

/// The functions of it that are used, under their own names without the prefix.
struct Libdw {
    decltype(&dwfl_begin) begin;
    decltype(&dwfl_end) end;
    decltype(&dwfl_linux_proc_report) linuxProcReport;
    decltype(&dwfl_report_end) reportEnd;
    decltype(&dwfl_linux_proc_attach) linuxProcAttach;
    decltype(&dwfl_linux_proc_find_elf) linuxProcFindElf;
    decltype(&dwfl_standard_find_debuginfo) standardFindDebuginfo;
    decltype(&dwfl_getthread_frames) getthreadFrames;
    decltype(&dwfl_frame_pc) framePc;
    decltype(&dwfl_addrmodule) addrmodule;
    decltype(&dwfl_module_info) moduleInfo;
    decltype(&dwfl_module_addrname) moduleAddrname;
    decltype(&dwfl_module_getsrc) moduleGetsrc;
    decltype(&dwfl_lineinfo) lineinfo;

    /// nullptr where it is not installed.
    static const Libdw* Get();
};

} // namespace sandbox
