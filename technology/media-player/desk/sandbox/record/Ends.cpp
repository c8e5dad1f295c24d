#include "Ends.h"

#include "../ProcFiles.h"
#include "EndsSocket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <cstring>

namespace sandbox
{

namespace
{

UniqueFd ListenToManager()
{
    UniqueFd listener(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, kEndsSocket, sizeof address.sun_path - 1);
    if (bind(listener.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        listener.Close();
    }
    return listener;
}

const char* HowEnded(int aCode)
{
    return aCode == CLD_EXITED ? "exit" : "signal";
}

} // namespace

Ends::Ends(const FactSink& aFacts, CrashWatch& aCrashes, pid_t aFirst)
    : m_Facts(aFacts), m_Crashes(aCrashes), m_First(aFirst), m_Manager(ListenToManager())
{
}

void Ends::Follow(pid_t aProcess)
{
    if (m_Followed.count(aProcess) == 0) {
        if (UniqueFd handle = HandleOf(aProcess); handle.IsValid()) {
            m_Followed.emplace(aProcess, std::move(handle));
        }
    }
}

void Ends::AddTo(std::vector<pollfd>& aEvents) const
{
    aEvents.push_back({m_Manager.Get(), POLLIN, 0});
    for (const auto& [process, handle] : m_Followed) {
        aEvents.push_back({handle.Get(), POLLIN, 0});
    }
}

void Ends::Look(const std::vector<pollfd>& aEvents)
{
    Reap();
    TakeManagersWord();
    for (const pollfd& event : aEvents) {
        const auto found = std::find_if(m_Followed.begin(), m_Followed.end(), [&](const auto& aFollowed) {
            return event.revents != 0 && aFollowed.second.Get() == event.fd;
        });
        if (found != m_Followed.end()) {
            NoteStranger(found->first);
        }
    }
}

void Ends::Reap()
{
    siginfo_t ended = {};
    while (waitid(P_ALL, 0, &ended, WEXITED | WNOHANG) == 0 && ended.si_pid != 0) {
        if (ended.si_pid == m_First) {
            m_HasFirstEnded = true;
            m_FirstStatus = (ended.si_code == CLD_EXITED ? 0 : 128) + ended.si_status;
        } else if (!m_Crashes.Take(ended)) {
            Note(ended.si_pid, HowEnded(ended.si_code), ended.si_status);
        }
        ended = {};
    }
}

void Ends::TakeManagersWord()
{
    char text[64];
    for (ssize_t size = 0; (size = recv(m_Manager.Get(), text, sizeof text - 1, 0)) > 0;) {
        text[size] = '\0';
        int process = 0;
        int code = 0;
        int number = 0;
        if (std::strcmp(text, kSomebodyComes) == 0) {
            m_Crashes.LetAllGo();
        } else if (std::sscanf(text, "%d %d %d", &process, &code, &number) == 3) {
            Note(process, HowEnded(code), number);
        }
    }
}

// Another process' child: its status is there to be seen until that asks for it.
void Ends::NoteStranger(pid_t aProcess)
{
    const ProcessStatus status = StatusOf(aProcess);
    if (status.state != 'Z' || status.waitStatus == 0) {
        Note(aProcess, "", 0);
    } else if (WIFSIGNALED(status.waitStatus)) {
        Note(aProcess, "signal", WTERMSIG(status.waitStatus));
    } else {
        Note(aProcess, "exit", WEXITSTATUS(status.waitStatus));
    }
}

void Ends::Note(pid_t aProcess, const char* aHow, int aNumber)
{
    m_Facts({MachineNow(), fact::kGone, {std::to_string(aProcess), aHow, std::to_string(aNumber)}});
    m_Followed.erase(aProcess);
}

} // namespace sandbox
