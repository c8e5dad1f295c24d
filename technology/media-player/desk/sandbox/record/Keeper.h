/// A process outside the sandbox that outlives whatever is killed of it.
#pragma once

#include "../Relay.h"
#include "Fact.h"

#include <functional>
#include <memory>

namespace sandbox
{

/// It takes down what the program and its services print, on its way to this process' stdout and stderr, and
/// when nobody is left who could print, does what is to be done at the end of the run.
class Keeper
{
public:
    ~Keeper() { WaitForEnd(); }
    Keeper() = default;
    Keeper(const Keeper&) = delete;
    Keeper& operator=(const Keeper&) = delete;

    /// What goes to a terminal is taken down, too: the program then gets another in its place, which is none
    /// for its shell's job control. Otherwise a terminal is left to it: what it writes there is seen inside.
    void TakeTerminals() { m_TakesTerminals = true; }

    /// Starts it. It takes down so many bytes of each stream, and passes on all; `aFinish` runs in it, with
    /// the standard streams still where they were. False, with errno, when there can be no process.
    bool Start(const FactLog& aFacts, size_t aMostBytes, const std::function<void()>& aFinish);

    /// What the sandbox is to have as stdout and stderr: the same as this process without a Keeper.
    int Out() const { return m_Out ? m_Out->Entry() : STDOUT_FILENO; }
    int Err() const { return m_Err ? m_Err->Entry() : m_Out && m_IsOne ? m_Out->Entry() : STDERR_FILENO; }

    /// To be called when the sandbox has ended: blocks until all is done.
    void WaitForEnd();

private:
    [[noreturn]] void Run(int aAlive, UniqueFd aDone, const FactLog& aFacts,
                          const std::function<void()>& aFinish);
    void Relay(int aAlive, const FactLog& aFacts);

    std::unique_ptr<sandbox::Relay> m_Out;
    std::unique_ptr<sandbox::Relay> m_Err;
    bool m_TakesTerminals = false;
    bool m_IsOne = false; ///< both streams go the same way
    UniqueFd m_Alive;     ///< closes when the caller has no more to say, or is gone
    UniqueFd m_Done;      ///< closes when the Keeper has finished
};

} // namespace sandbox
