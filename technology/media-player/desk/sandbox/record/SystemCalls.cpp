#include "SystemCalls.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/ioctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace sandbox
{

namespace
{

constexpr size_t kLongestText = 1024;
constexpr size_t kMostTexts = 64;
constexpr size_t kPage = 4096;

#if defined(__x86_64__)
constexpr uint32_t kArchitecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr uint32_t kArchitecture = AUDIT_ARCH_AARCH64;
#elif defined(__arm__)
constexpr uint32_t kArchitecture = AUDIT_ARCH_ARM;
#elif defined(__i386__)
constexpr uint32_t kArchitecture = AUDIT_ARCH_I386;
#else
constexpr uint32_t kArchitecture = 0; // matches no call
#endif

#ifndef SECCOMP_FILTER_FLAG_WAIT_KILLABLE_RECV
#define SECCOMP_FILTER_FLAG_WAIT_KILLABLE_RECV (1UL << 5)
#endif

std::vector<uint32_t> ToldCalls(bool aWithPauses)
{
    std::vector<uint32_t> calls = {SYS_execve, SYS_execveat, SYS_exit_group,        SYS_kill,
                                   SYS_tkill,  SYS_tgkill,   SYS_pidfd_send_signal, SYS_rt_sigqueueinfo};
    if (aWithPauses) {
        calls.insert(calls.end(), {SYS_nanosleep, SYS_clock_nanosleep});
    }
    return calls;
}

constexpr uint32_t kLowHalf = __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__ ? 4 : 0;

// Tells such a call if its first argument is that. Each block ends with the call's number loaded again.
void AppendForArgument(uint32_t aCall, uint32_t aArgument, std::vector<sock_filter>& aFilter)
{
    const uint32_t argument = offsetof(seccomp_data, args) + kLowHalf;
    aFilter.insert(aFilter.end(), {BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, aCall, 0, 4),
                                   BPF_STMT(BPF_LD | BPF_W | BPF_ABS, argument),
                                   BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, aArgument, 0, 1),
                                   BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF),
                                   BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))});
}

std::vector<sock_filter> MakeFilter(const Wanted& aWanted)
{
    std::vector<sock_filter> filter = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
                                       BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kArchitecture, 1, 0),
                                       BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
                                       BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const uint32_t call : ToldCalls(aWanted.pauses)) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
    }
    for (const uint32_t request : {uint32_t{PTRACE_ATTACH}, uint32_t{PTRACE_SEIZE}}) {
        AppendForArgument(SYS_ptrace, request, filter);
    }
    for (const uint32_t call : {uint32_t{SYS_write}, uint32_t{SYS_writev}}) {
        if (aWanted.out) {
            AppendForArgument(call, STDOUT_FILENO, filter);
        }
        if (aWanted.err) {
            AppendForArgument(call, STDERR_FILENO, filter);
        }
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    return filter;
}

// The last page may be another's: up to the end of the one that the address is in.
size_t UpToPageEnd(uint64_t aAddress)
{
    return kPage - aAddress % kPage;
}

} // namespace

UniqueFd TellSystemCalls(const Wanted& aWanted)
{
    std::vector<sock_filter> filter = MakeFilter(aWanted);
    const sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
    constexpr unsigned long kFlags = SECCOMP_FILTER_FLAG_NEW_LISTENER | SECCOMP_FILTER_FLAG_SPEC_ALLOW;
    const auto install = [&](unsigned long aFlags) {
        return static_cast<int>(syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, aFlags, &program));
    };
    // Kernels before 5.19 interrupt a caller who waits with any signal, and it asks again.
    const int listener = install(kFlags | SECCOMP_FILTER_FLAG_WAIT_KILLABLE_RECV);
    return UniqueFd(listener >= 0 ? listener : install(kFlags));
}

std::optional<SystemCall> ReceiveCall(int aListener)
{
    seccomp_notif told = {};
    if (ioctl(aListener, SECCOMP_IOCTL_NOTIF_RECV, &told) != 0) {
        return {};
    }
    SystemCall call;
    call.id = told.id;
    call.thread = static_cast<pid_t>(told.pid);
    call.number = told.data.nr;
    std::copy(std::begin(told.data.args), std::end(told.data.args), call.arguments.begin());
    return call;
}

bool LetGo(int aListener, const SystemCall& aCall)
{
    seccomp_notif_resp answer = {};
    answer.id = aCall.id;
    answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
    return ioctl(aListener, SECCOMP_IOCTL_NOTIF_SEND, &answer) == 0;
}

std::string ReadMemory(pid_t aProcess, uint64_t aAddress, size_t aSize)
{
    std::string bytes(aSize, '\0');
    const iovec here = {bytes.data(), aSize};
    iovec there = {nullptr, aSize}; // its address is no pointer of this process
    const auto address = static_cast<uintptr_t>(aAddress);
    std::memcpy(&there.iov_base, &address, sizeof address);
    const ssize_t count = process_vm_readv(aProcess, &here, 1, &there, 1, 0);
    bytes.resize(static_cast<size_t>(std::max<ssize_t>(count, 0)));
    return bytes;
}

std::string ReadText(pid_t aProcess, uint64_t aAddress)
{
    std::string text;
    while (text.size() < kLongestText) {
        const uint64_t address = aAddress + text.size();
        const std::string piece =
            ReadMemory(aProcess, address, std::min(UpToPageEnd(address), kLongestText - text.size()));
        text += piece;
        if (piece.empty() || piece.find('\0') != std::string::npos) {
            break;
        }
    }
    return text.substr(0, text.find('\0'));
}

std::vector<std::string> ReadTexts(pid_t aProcess, uint64_t aAddress)
{
    std::vector<std::string> texts;
    for (size_t i = 0; i < kMostTexts; ++i) {
        uintptr_t text = 0;
        const std::string bytes = ReadMemory(aProcess, aAddress + i * sizeof text, sizeof text);
        if (bytes.size() != sizeof text) {
            break;
        }
        std::memcpy(&text, bytes.data(), sizeof text);
        if (text == 0) {
            break;
        }
        texts.push_back(ReadText(aProcess, text));
    }
    return texts;
}

} // namespace sandbox
