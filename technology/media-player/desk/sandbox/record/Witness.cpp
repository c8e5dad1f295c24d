#include "Witness.h"

#include "../Posix.h"
#include "../ProcFiles.h"
#include "Ends.h"
#include "SystemCallFacts.h"
#include "SystemCalls.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

namespace sandbox
{

namespace
{

// A message that carries a descriptor to another process.
struct Parcel {
    Parcel()
    {
        message.msg_iov = &data;
        message.msg_iovlen = 1;
        message.msg_control = room;
        message.msg_controllen = sizeof room;
    }

    char byte = '+'; // nothing goes without one
    iovec data = {&byte, 1};
    alignas(cmsghdr) char room[CMSG_SPACE(sizeof(int))] = {};
    msghdr message = {};
};

void Send(int aSocket, int aFd)
{
    Parcel parcel;
    cmsghdr* header = CMSG_FIRSTHDR(&parcel.message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof aFd);
    std::memcpy(CMSG_DATA(header), &aFd, sizeof aFd);
    sendmsg(aSocket, &parcel.message, 0);
}

// Invalid when the other end closes without sending one.
UniqueFd Receive(int aSocket)
{
    Parcel parcel;
    const bool hasCome = recvmsg(aSocket, &parcel.message, MSG_CMSG_CLOEXEC) == 1;
    const cmsghdr* header = hasCome ? CMSG_FIRSTHDR(&parcel.message) : nullptr;
    int fd = -1;
    if (header != nullptr && header->cmsg_type == SCM_RIGHTS) {
        std::memcpy(&fd, CMSG_DATA(header), sizeof fd);
    }
    return UniqueFd(fd);
}

// SIGCHLD as a descriptor.
UniqueFd BlockChildSignal(sigset_t& aBefore)
{
    sigset_t child;
    sigemptyset(&child);
    sigaddset(&child, SIGCHLD);
    sigprocmask(SIG_BLOCK, &child, &aBefore);
    return UniqueFd(signalfd(-1, &child, SFD_CLOEXEC | SFD_NONBLOCK));
}

// Until the first child has ended.
int Watch(pid_t aChild, int aSignals, int aListener, const FactSink& aFacts, CrashWatch& aCrashes)
{
    aCrashes.SetRoot(aChild);
    Ends ends(aFacts, aCrashes, aChild);
    SystemCallFacts calls(aFacts, aCrashes, aListener);
    while (!ends.HasFirstEnded()) {
        std::vector<pollfd> events = {{aListener, POLLIN, 0}, {aSignals, POLLIN, 0}};
        ends.AddTo(events);
        poll(events.data(), events.size(), -1);
        if ((events[0].revents & POLLIN) != 0) {
            for (const pid_t process : calls.TakeOne()) {
                ends.Follow(process);
            }
        }
        signalfd_siginfo ignored = {};
        while (read(aSignals, &ignored, sizeof ignored) > 0) {
        }
        ends.Look(events);
    }
    aCrashes.Finish();
    return ends.FirstStatus();
}

} // namespace

int RunWitnessed(const FactSink& aFacts, CrashWatch& aCrashes, Detail aDetail,
                 const std::function<int()>& aBody)
{
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    sigset_t before = {};
    const UniqueFd signals = BlockChildSignal(before);
    int ends[2] = {-1, -1};
    socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
    UniqueFd here(ends[0]);
    UniqueFd there(ends[1]);
    const bool isLight = aDetail == Detail::Light;
    const Wanted wanted = {!isLight, isLight && isatty(STDOUT_FILENO) != 0,
                           isLight && isatty(STDERR_FILENO) != 0};
    const pid_t child = fork();
    if (child == 0) {
        sigprocmask(SIG_SETMASK, &before, nullptr);
        here.Close();
        if (const UniqueFd listener = TellSystemCalls(wanted); listener.IsValid()) {
            Send(there.Get(), listener.Get());
        }
        there.Close();
        std::exit(aBody());
    }
    there.Close();
    prctl(PR_SET_NAME, "mpl-witness");
    aFacts({MachineNow(), fact::kRoot, {std::to_string(child)}});
    if (child < 0) {
        return aBody();
    }
    // Open to this process' end: when it is closed, the kernel refuses what is asked of it, and what still
    // runs would complain.
    const int listener = Receive(here.Get()).Release();
    return Watch(child, signals.Get(), listener, aFacts, aCrashes);
}

} // namespace sandbox
