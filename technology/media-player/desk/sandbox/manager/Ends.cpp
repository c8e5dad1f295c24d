// Tells the sandbox how the lifecycle manager's services have ended: the kernel tells that to their parent
// alone.
#include "../record/EndsSocket.h"

#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace
{

// Nobody listens where nothing is recorded.
void Tell(const siginfo_t& aEnd)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, sandbox::kEndsSocket, sizeof address.sun_path - 1);
    char text[64];
    const int length =
        std::snprintf(text, sizeof text, "%d %d %d", aEnd.si_pid, aEnd.si_code, aEnd.si_status);
    const int end = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sendto(end, text, static_cast<size_t>(length), 0, reinterpret_cast<const sockaddr*>(&address),
           sizeof address);
    close(end);
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's names are reserved ones.
extern "C" int waitid(idtype_t aWhich, id_t aId, siginfo_t* aEnd, int aOptions)
{
    const long result = syscall(SYS_waitid, aWhich, aId, aEnd, aOptions, nullptr);
    if (result == 0 && aEnd != nullptr && aEnd->si_pid != 0 && (aOptions & WNOWAIT) == 0) {
        const int error = errno;
        Tell(*aEnd);
        errno = error;
    }
    return static_cast<int>(result);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
