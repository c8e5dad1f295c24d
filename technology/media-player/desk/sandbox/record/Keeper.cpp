#include "Keeper.h"

#include "../PseudoTerminal.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace sandbox
{

namespace
{

// The end of the sandbox takes the kernel a moment after its last word.
constexpr int kLastWordsLimitMs = 10000;

std::unique_ptr<Relay> MakeRelay(const FactLog& aFacts, size_t aMostBytes, int aTarget, const char* aName,
                                 bool aTakesTerminals)
{
    const bool isTerminal = isatty(aTarget) != 0;
    if (isTerminal && !aTakesTerminals) {
        return {};
    }
    return std::make_unique<Relay>(
        aTarget,
        [aFacts, left = aMostBytes, aName](std::string_view aPiece) mutable {
            if (aPiece.size() <= left) {
                aFacts.Write(fact::kOutput, {aName, std::string(aPiece)});
                left -= aPiece.size();
            } else {
                left = 0;
            }
        },
        isTerminal ? MakePseudoTerminal(aTarget) : MakePipe());
}

} // namespace

bool Keeper::Start(const FactLog& aFacts, size_t aMostBytes, const std::function<void()>& aFinish)
{
    m_IsOne = AreSameFile(STDOUT_FILENO, STDERR_FILENO);
    m_Out = MakeRelay(aFacts, aMostBytes, STDOUT_FILENO, "out", m_TakesTerminals);
    m_Err = m_IsOne ? nullptr : MakeRelay(aFacts, aMostBytes, STDERR_FILENO, "err", m_TakesTerminals);
    Pipe alive = MakePipe();
    Pipe done = MakePipe();
    const pid_t child = alive.read.IsValid() && done.read.IsValid() ? fork() : -1;
    if (child == 0) {
        // Out of the caller's family: who kills that with all its children does not mean this.
        if (fork() != 0) {
            _exit(0);
        }
        alive.write.Close();
        done.read.Close();
        Run(alive.read.Get(), std::move(done.write), aFacts, aFinish);
    }
    for (sandbox::Relay* relay : {m_Out.get(), m_Err.get()}) {
        if (relay != nullptr) {
            relay->CloseExit();
        }
    }
    m_Alive = std::move(alive.write);
    m_Done = std::move(done.read);
    return child > 0 && sandbox::WaitForEnd(child) == 0;
}

void Keeper::WaitForEnd()
{
    if (!m_Alive.IsValid()) {
        return;
    }
    for (const auto& relay : {m_Out.get(), m_Err.get()}) {
        if (relay != nullptr) {
            relay->CloseEntry();
        }
    }
    m_Alive.Close();
    ReadAll(m_Done.Get());
}

void Keeper::Run(int aAlive, UniqueFd aDone, const FactLog& aFacts, const std::function<void()>& aFinish)
{
    prctl(PR_SET_NAME, "mpl-keeper");
    setsid();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) {
        std::signal(signal, SIG_IGN);
    }
    const UniqueFd nowhere(open("/dev/null", O_RDONLY | O_CLOEXEC));
    dup2(nowhere.Get(), STDIN_FILENO);
    Relay(aAlive, aFacts);
    aFinish();
    aDone.Close();
    _exit(0);
}

void Keeper::Relay(int aAlive, const FactLog& aFacts)
{
    std::vector<sandbox::Relay*> relays;
    for (sandbox::Relay* relay : {m_Out.get(), m_Err.get()}) {
        if (relay != nullptr) {
            relay->CloseEntry();
            relays.push_back(relay);
        }
    }
    bool isAlive = true;
    for (bool isOpen = true; isAlive || isOpen;) {
        std::vector<pollfd> events = {{isAlive ? aAlive : -1, POLLIN, 0}};
        for (const sandbox::Relay* relay : relays) {
            events.push_back({relay->Exit(), POLLIN, 0});
        }
        if (poll(events.data(), events.size(), isAlive ? -1 : kLastWordsLimitMs) == 0) {
            return;
        }
        if (isAlive && events[0].revents != 0) {
            isAlive = false;
            aFacts.Write(fact::kLeft, {});
        }
        isOpen = false;
        for (sandbox::Relay* relay : relays) {
            relay->Drain();
            isOpen = isOpen || relay->Exit() >= 0;
        }
    }
}

} // namespace sandbox
