#include "LifecycleManager.h"
#include "ProcessTable.h"
#include <MPL_ProcessInfo.h>

#include <QByteArrayList>
#include <QDebug>

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

using namespace MPL::Detail;

namespace
{

// Holds on to one process: a signal through it reaches that process or none, even when the id is given to
// another program meanwhile.
class ProcessHandle
{
public:
    explicit ProcessHandle(pid_t aPid)
        : m_Pid(aPid), m_Fd(static_cast<int>(syscall(SYS_pidfd_open, aPid, 0U)))
    {
        m_Gone = m_Fd < 0 && errno == ESRCH;
    }

    ~ProcessHandle()
    {
        if (m_Fd >= 0) {
            close(m_Fd);
        }
    }

    ProcessHandle(const ProcessHandle&) = delete;
    ProcessHandle& operator=(const ProcessHandle&) = delete;

    bool IsGone() const { return m_Gone; }

    // Returns 0 or the error number.
    int Signal(int aNumber) const
    {
        // Kernels before 5.3 have no such handle, and some containers forbid it: there the id has to do.
        const long result = m_Fd >= 0 ? syscall(SYS_pidfd_send_signal, m_Fd, aNumber, nullptr, 0U)
                                      : static_cast<long>(kill(m_Pid, aNumber));
        return result == 0 ? 0 : errno;
    }

private:
    pid_t m_Pid;
    int m_Fd;
    bool m_Gone = false;
};

// Returns 0 when the process was signalled, ESRCH when it is no longer there, otherwise why it was refused.
int SignalProcess(pid_t aPid, const QByteArray& aName, int aNumber)
{
    const ProcessHandle process(aPid);
    // Only what has the name while we hold it is meant; the id was read before.
    if (process.IsGone() || !IsProcess(aPid, aName)) {
        return ESRCH;
    }
    return process.Signal(aNumber);
}

} // namespace

int MPL_ProcessInfo::GetPidFromName(const char* aName)
{
    return FindProcesses(aName, 1).value(0, -1);
}

bool MPL_ProcessInfo::KillProcess(const char* aName, bool aKill)
{
    bool signalled = false;
    QByteArrayList refusals;
    for (const pid_t pid : FindProcesses(aName)) {
        const int error = SignalProcess(pid, aName, aKill ? SIGKILL : SIGTERM);
        if (error == 0) {
            signalled = true;
        } else if (error != ESRCH) {
            refusals << QByteArray::number(pid) + " (" + strerror(error) + ')';
        }
    }
    if (!refusals.isEmpty()) {
        qCritical().noquote() << "MPL_ProcessInfo::KillProcess -- may not signal" << aName << "process"
                              << refusals.join(", ").constData()
                              << "-- run as the user it belongs to, or as root";
    }
    return signalled && refusals.isEmpty();
}

bool MPL_ProcessInfo::SlmStartService(const char* aServiceName)
{
    return RunServiceJob(ServiceJob::Start, aServiceName, kServiceJobBound);
}

bool MPL_ProcessInfo::SlmStopService(const char* aServiceName)
{
    return RunServiceJob(ServiceJob::Stop, aServiceName, kServiceJobBound);
}
